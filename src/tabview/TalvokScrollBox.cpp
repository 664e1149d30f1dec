#include "tabview/TalvokScrollBox.h"

#include <algorithm>

#include "toolkit/StoredLayout.h"

namespace qx::TalvokScrollBoxUnit {

TMyScrollCalculations::TMyScrollCalculations(TFmxObject* owner) : ScrollBoxExUnit::TScrollCalculations(owner) {
  FServiceScope.Restore();
  SetInterval(kInterval);
}

TScrollBox::TScrollBox(TFmxObject* owner) : ScrollBoxExUnit::TScrollBox(owner) {
  // The base made its parts with its own factories; now this class's run.
  CreateParts();
}

std::unique_ptr<ScrollBoxExUnit::TScrollCalculations> TScrollBox::CreateAniCalculations() {
  return std::make_unique<TMyScrollCalculations>(this);
}

float TScrollBox::CurrentScrollOrigin() const { return Content() ? Content()->Position().X() : 0; }

float TScrollBox::HorzPosition() const { return static_cast<float>(AniCalculations().ViewportPosition().X); }

float TScrollBox::MaxHorzPosition() const {
  float contentWidth = Content() ? Content()->Width() : 0;
  return std::max(0.0f, contentWidth - Width());
}

void TScrollBox::SetHorzPosition(float x) {
  x = std::clamp(x, MinHorzPosition(), std::max(MinHorzPosition(), MaxHorzPosition()));
  ViewPoint({x, AniCalculations().ViewportPosition().Y});
}

void TScrollBox::MouseUp(TMouseButton button, TShiftState shift, float x, float y) {
  if (OnBeforeMouseUp) OnBeforeMouseUp(this, button, shift, x, y);
  ScrollBoxExUnit::TScrollBox::MouseUp(button, shift, x, y);
  if (OnAfterMouseUp) OnAfterMouseUp(this, button, shift, x, y);
}

void TScrollBox::MouseWheel(TShiftState shift, int wheelDelta, bool& handled) {
  // The strip scrolls sideways.
  ScrollBoxExUnit::TScrollBox::MouseWheel(shift | ss::Horizontal, wheelDelta, handled);
  if (OnAfterMouseWheel) OnAfterMouseWheel(this, shift, wheelDelta, handled);
}

void TScrollBox::TouchEventDown(float x, float y) {
  ScrollBoxExUnit::TScrollBox::TouchEventDown(x, y);
  if (OnTouchMouseDown) OnTouchMouseDown(this, x, y);
}

void TScrollBox::Resize() {
  ScrollBoxExUnit::TScrollBox::Resize();
  if (OnAfterSizeChanged) OnAfterSizeChanged(this, TSizeF{Width(), Height()});
}

void TScrollBox::RegisterClass() {
  TComponentRegistry::RegisterClass("TScrollBox", [](TFmxObject* owner) { return new TScrollBox(owner); },
                                    {"UseSmallScrollBars", "MouseTracking"});
}

}  // namespace qx::TalvokScrollBoxUnit
