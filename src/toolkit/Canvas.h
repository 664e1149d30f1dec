#pragma once

// Software canvas drawing into a TBitmap. Everything is premultiplied
// source-over blending; positions are rounded to whole pixels and bitmaps
// scale bilinearly, so pictures come out the same on every platform.

#include <string>
#include <vector>

#include "base/Rect.h"
#include "toolkit/Bitmap.h"
#include "toolkit/Types.h"

namespace qx {

enum class TBrushKind { None, Solid };

struct TBrush {
  TBrushKind Kind = TBrushKind::Solid;
  TAlphaColor Color = TAlphaColors::Black;
};

enum class TFontStyle { Bold = 1, Italic = 2, Underline = 4, StrikeOut = 8 };
using TFontStyles = unsigned;

struct TFont {
  std::u16string Family = u"Segoe UI";
  float Size = 12;
  TFontStyles Style = 0;
  bool operator==(const TFont&) const = default;
};

enum class TTextAlign { Center, Leading, Trailing };
enum class TTextTrimming { None, Character, Word };

class TCanvas {
 public:
  explicit TCanvas(TBitmap* bitmap);

  TBitmap* Bitmap() const { return FBitmap; }
  int Width() const { return FBitmap->Width(); }
  int Height() const { return FBitmap->Height(); }

  // A scene may nest; state (offset, clip) is reset by the outermost BeginScene.
  bool BeginScene();
  void EndScene();

  TBrush Fill;
  TFont Font;

  void Clear(TAlphaColor color);
  void FillRect(const TRectF& rect, float opacity);
  void FillRect(const TRectF& rect, TAlphaColor color, float opacity);
  void FillRoundRect(const TRectF& rect, float radius, TAlphaColor color, float opacity);
  void DrawBitmap(const TBitmap& bitmap, const TRectF& source, const TRectF& target, float opacity,
                  bool highSpeed = false);

  // Text in the Fill colour and the canvas Font.
  void FillText(const TRectF& rect, const std::u16string& text, bool wordWrap, float opacity,
                TTextAlign horzAlign = TTextAlign::Leading, TTextAlign vertAlign = TTextAlign::Center,
                TTextTrimming trimming = TTextTrimming::None);
  float TextWidth(const std::u16string& text);
  float TextHeight(const std::u16string& text);

  // Translation of all drawing, in pixels; the scene graph sets it per control.
  TPointF Offset() const { return FOffset; }
  void SetOffset(TPointF offset) { FOffset = offset; }
  // Clip in canvas coordinates (before the offset). Empty clip draws nothing.
  TRectF ClipRect() const { return FClip; }
  void SetClipRect(const TRectF& clip);
  void IntersectClipRect(const TRectF& rect);  // rect relative to the offset
  void ResetClip();

  struct TState {
    TPointF Offset;
    TRectF Clip;
  };
  TState SaveState() const { return {FOffset, FClip}; }
  void RestoreState(const TState& state) {
    FOffset = state.Offset;
    FClip = state.Clip;
  }

  // Blends a coverage mask (0..255 per pixel) at a pixel position in canvas coordinates.
  void BlendMask(int x, int y, int width, int height, const std::uint8_t* mask, int maskPitch,
                 TAlphaColor color, float opacity);

 private:
  TRect ToPixels(const TRectF& rect) const;

  TBitmap* FBitmap;
  TPointF FOffset;
  TRectF FClip;
  int FSceneDepth = 0;
};

}  // namespace qx
