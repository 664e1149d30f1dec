#pragma once

// Blur: as a child of a control it blurs what the control paints; on its own
// it blurs a bitmap. Softness 1 spreads over about ten pixels.

#include "toolkit/Bitmap.h"
#include "toolkit/FmxObject.h"

namespace qx {

class TBlurEffect : public TFmxObject {
 public:
  explicit TBlurEffect(TFmxObject* owner = nullptr) : TFmxObject(owner) {}
  std::string ClassName() const override { return "TBlurEffect"; }
  TBlurEffect* AsBlurEffect() override { return this; }

  float Softness() const { return FSoftness; }
  void SetSoftness(float value);
  bool Enabled() const { return FEnabled; }
  void SetEnabled(bool value);

  // Blur radius in pixels for a softness.
  static int RadiusFor(float softness);
  // How far a blur spreads beyond the picture's edges.
  int Spread() const { return RadiusFor(FSoftness) * 2; }

  void ProcessEffect(TBitmap& bitmap) const { BlurBitmap(bitmap, FSoftness); }
  static void BlurBitmap(TBitmap& bitmap, float softness);

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 private:
  void Changed();
  float FSoftness = 0.3f;
  bool FEnabled = true;
};

}  // namespace qx
