#pragma once

// Lines of text laid out in a box: alignment, word wrap, trimming with an
// ellipsis. Set the fields between BeginUpdate and EndUpdate; reading a
// measure or rendering also lays out again when a field has changed.

#include <string>
#include <vector>

#include "toolkit/Canvas.h"
#include "toolkit/Types.h"

namespace qx {

namespace glyphs {
class IFontFace;
}

class TTextLayout {
 public:
  TTextLayout() = default;
  explicit TTextLayout(TCanvas* canvas) : FCanvas(canvas) {}

  void BeginUpdate() { ++FUpdating; }
  void EndUpdate();

  std::u16string Text;
  TFont Font;
  TAlphaColor Color = TAlphaColors::Black;
  TPointF TopLeft;
  TPointF MaxSize{65535, 65535};
  bool WordWrap = false;
  TTextAlign HorizontalAlign = TTextAlign::Leading;
  TTextAlign VerticalAlign = TTextAlign::Leading;
  TTextTrimming Trimming = TTextTrimming::None;
  float Opacity = 1;

  float TextWidth();
  float TextHeight();
  // Bounds of the laid out text, in the coordinates of TopLeft.
  TRectF TextRect();
  int LineCount();
  std::u16string LineText(int index);

  void RenderLayout(TCanvas* canvas);

  static float MeasureWidth(const TFont& font, const std::u16string& text);

 private:
  struct TLine {
    std::u32string Chars;
    float Width = 0;
  };
  struct TInputs {
    std::u16string Text;
    TFont Font;
    TPointF MaxSize;
    bool WordWrap;
    TTextTrimming Trimming;
    bool operator==(const TInputs&) const = default;
  };
  void Ensure();
  void DoLayout();
  float LineLeft(const TLine& line) const;
  float BlockTop() const;

  TCanvas* FCanvas = nullptr;
  int FUpdating = 0;
  bool FValid = false;
  TInputs FLast{};
  std::vector<TLine> FLines;
  float FLineHeight = 0;
  float FAscent = 0;
};

std::u32string DecodeUtf16(const std::u16string& text);
std::u16string EncodeUtf16(const std::u32string& text);

}  // namespace qx
