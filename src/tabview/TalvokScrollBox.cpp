#include "tabview/TalvokScrollBox.h"

#include <algorithm>

#include "toolkit/StoredLayout.h"

namespace qx::TalvokScrollBoxUnit {

TMyScrollCalculations::TMyScrollCalculations(TFmxObject* owner)
    : ScrollBoxExUnit::TScrollCalculations(owner) {
  FServiceScope.Restore();
  SetInterval(kInterval);
}

TTalvokScrollBox::TTalvokScrollBox(TFmxObject* owner) : ScrollBoxExUnit::TScrollBoxEx(owner) {
  // The base made its parts with its own factories; now this class's run.
  CreateParts();
}

std::unique_ptr<ScrollBoxExUnit::TScrollCalculations> TTalvokScrollBox::CreateAniCalculations() {
  return std::make_unique<TMyScrollCalculations>(this);
}

float TTalvokScrollBox::CurrentScrollOrigin() const { return Content() ? Content()->Position().X() : 0; }

float TTalvokScrollBox::HorzPosition() const {
  return static_cast<float>(AniCalculations().ViewportPosition().X);
}

float TTalvokScrollBox::MaxHorzPosition() const {
  float contentWidth = Content() ? Content()->Width() : 0;
  return std::max(0.0f, contentWidth - Width());
}

void TTalvokScrollBox::SetHorzPosition(float x) {
  x = std::clamp(x, MinHorzPosition(), std::max(MinHorzPosition(), MaxHorzPosition()));
  ViewPoint({x, AniCalculations().ViewportPosition().Y});
}

void TTalvokScrollBox::MouseUp(TMouseButton button, TShiftState shift, float x, float y) {
  if (OnBeforeMouseUp) OnBeforeMouseUp(this, button, shift, x, y);
  ScrollBoxExUnit::TScrollBoxEx::MouseUp(button, shift, x, y);
  if (OnAfterMouseUp) OnAfterMouseUp(this, button, shift, x, y);
}

void TTalvokScrollBox::MouseWheel(TShiftState shift, int wheelDelta, bool& handled) {
  // The strip scrolls sideways.
  ScrollBoxExUnit::TScrollBoxEx::MouseWheel(shift | ss::Horizontal, wheelDelta, handled);
  if (OnAfterMouseWheel) OnAfterMouseWheel(this, shift, wheelDelta, handled);
}

void TTalvokScrollBox::TouchEventDown(float x, float y) {
  ScrollBoxExUnit::TScrollBoxEx::TouchEventDown(x, y);
  if (OnTouchMouseDown) OnTouchMouseDown(this, x, y);
}

void TTalvokScrollBox::Resize() {
  ScrollBoxExUnit::TScrollBoxEx::Resize();
  if (OnAfterSizeChanged) OnAfterSizeChanged(this, TSizeF{Width(), Height()});
}

void TTalvokScrollBox::RegisterClass() {
  TComponentRegistry::RegisterClass("TScrollBox",
                                    [](TFmxObject* owner) { return new TTalvokScrollBox(owner); },
                                    {"UseSmallScrollBars", "MouseTracking"});
}

}  // namespace qx::TalvokScrollBoxUnit
