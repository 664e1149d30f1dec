#pragma once

// A control showing a bitmap.

#include "toolkit/Bitmap.h"
#include "toolkit/Control.h"

namespace qx {

enum class TImageWrapMode { Original, Fit, Stretch, Tile, Center, Place };

class TImage : public TControl {
 public:
  explicit TImage(TFmxObject* owner = nullptr);
  std::string ClassName() const override { return "TImage"; }

  // Assigning copies the picture; changes repaint the control.
  TBitmap& Bitmap() { return FBitmap; }
  void SetBitmap(const TBitmap* bitmap) { FBitmap.Assign(bitmap); }
  TImageWrapMode WrapMode() const { return FWrapMode; }
  void SetWrapMode(TImageWrapMode mode);
  bool DisableInterpolation = false;

  // Where the picture lands for the wrap mode (Tile: the first tile).
  TRectF ImageRect() const;

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  void Paint(TCanvas& canvas, float opacity) override;

 private:
  TBitmap FBitmap;
  TImageWrapMode FWrapMode = TImageWrapMode::Fit;
};

}  // namespace qx
