#pragma once

// A scroll bar: Value runs from Min to Max − ViewportSize; dragging the thumb
// or clicking the track moves it.

#include "toolkit/Layout.h"

namespace qx {

enum class TOrientation { Horizontal, Vertical };

class TScrollBar : public TStyledControl {
 public:
  explicit TScrollBar(TFmxObject* owner = nullptr) : TStyledControl(owner) {}
  std::string ClassName() const override { return "TScrollBar"; }

  float Value() const { return FValue; }
  void SetValue(float value);
  float Min() const { return FMin; }
  void SetMin(float value);
  float Max() const { return FMax; }
  void SetMax(float value);
  float ViewportSize() const { return FViewportSize; }
  void SetViewportSize(float value);
  float SmallChange = 1;
  TOrientation Orientation = TOrientation::Horizontal;
  TAlphaColor ThumbColor = 0x80000000u;
  TNotifyEvent OnChange;

  TRectF ThumbRect() const;

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

  void MouseDown(TMouseButton button, TShiftState shift, float x, float y) override;
  void MouseMove(TShiftState shift, float x, float y) override;
  void MouseUp(TMouseButton button, TShiftState shift, float x, float y) override;
  void MouseWheel(TShiftState shift, int wheelDelta, bool& handled) override;

 protected:
  void Paint(TCanvas& canvas, float opacity) override;

 private:
  void Clamp();
  float FValue = 0, FMin = 0, FMax = 100, FViewportSize = 0;
  bool FDragging = false;
  float FDragOffset = 0;
};

}  // namespace qx
