#pragma once

// The scroll box the tab strip uses: inertia on the multimedia clock, events
// around mouse-up, wheel and resize, the wheel turned sideways, and a direct
// horizontal position setter.

#include "runtime/MMTimerService.h"
#include "tabview/ScrollBoxEx.h"

namespace qx::TalvokScrollBoxUnit {

namespace detail {
// Comes first among the bases, so the swap stands while the base constructor makes its timer.
struct TMMServiceScopeBase {
  TMMTimerServiceScope FServiceScope;
};
}  // namespace detail

class TMyScrollCalculations : private detail::TMMServiceScopeBase,
                              public ScrollBoxExUnit::TScrollCalculations {
 public:
  static constexpr int kInterval = 5;
  explicit TMyScrollCalculations(TFmxObject* owner);
};

using TSizeChangedEvent = std::function<void(TFmxObject* sender, TSizeF newSize)>;

class TTalvokScrollBox : public ScrollBoxExUnit::TScrollBoxEx {
 public:
  explicit TTalvokScrollBox(TFmxObject* owner = nullptr);
  std::string ClassName() const override { return "TScrollBox"; }

  TMouseEvent OnBeforeMouseUp, OnAfterMouseUp;
  TMouseWheelEvent OnAfterMouseWheel;
  TSizeChangedEvent OnAfterSizeChanged;
  // A press that came in as touch (TouchEventDown), in local coordinates.
  std::function<void(TFmxObject* sender, float x, float y)> OnTouchMouseDown;

  // The content's left edge: minus the horizontal scroll position.
  float CurrentScrollOrigin() const;
  float HorzPosition() const;
  float MinHorzPosition() const { return 0; }
  // Content width less box width, never below 0.
  float MaxHorzPosition() const;
  // Views x, limited to the minimum and maximum, keeping the vertical position.
  void SetHorzPosition(float x);

  void MouseUp(TMouseButton button, TShiftState shift, float x, float y) override;
  void MouseWheel(TShiftState shift, int wheelDelta, bool& handled) override;
  void TouchEventDown(float x, float y) override;

  // Makes TScrollBox in stored layouts this class (with the legacy properties dropped).
  static void RegisterClass();

 protected:
  std::unique_ptr<ScrollBoxExUnit::TScrollCalculations> CreateAniCalculations() override;
  void Resize() override;
};

}  // namespace qx::TalvokScrollBoxUnit
