#include "toolkit/Timer.h"

namespace qx {

TTimer::TTimer(TFmxObject* owner) : TFmxObject(owner) {
  FTimerService = CurrentTimerService();
  if (!FTimerService) throw EUnsupportedPlatformService("IFMXTimerService");
}

TTimer::~TTimer() {
  if (FHandle) FTimerService->DestroyTimer(FHandle);
  FHandle = 0;
}

void TTimer::SetEnabled(bool value) {
  if (value == FEnabled) return;
  FEnabled = value;
  UpdateTimer();
}

void TTimer::SetInterval(int value) {
  if (value == FInterval) return;
  FInterval = value;
  UpdateTimer();
}

void TTimer::SetOnTimer(TNotifyEvent handler) {
  FOnTimer = std::move(handler);
  UpdateTimer();
}

void TTimer::UpdateTimer() {
  if (FHandle) FTimerService->DestroyTimer(FHandle);
  FHandle = 0;
  // A timer without a handler does not need a platform timer.
  if (FEnabled && FInterval > 0 && FOnTimer)
    FHandle = FTimerService->CreateTimer(FInterval, [this] { Timer(); });
}

void TTimer::Timer() {
  if (FOnTimer) FOnTimer(this);
}

const TPropertyTable& TTimer::ClassProperties() {
  static const TPropertyTable table = [] {
    TPropertyTable t(&TFmxObject::ClassProperties());
    t.Stored("Enabled", [](TFmxObject* o, const TStoredValue& v) {
      static_cast<TTimer*>(o)->SetEnabled(StoredBool(v, "Enabled"));
    });
    t.Stored("Interval", [](TFmxObject* o, const TStoredValue& v) {
      static_cast<TTimer*>(o)->SetInterval(static_cast<int>(StoredFloat(v, "Interval")));
    });
    t.Event("OnTimer", [](TFmxObject* o, const std::any& handler) {
      const auto* fn = std::any_cast<TNotifyEvent>(&handler);
      if (!fn) throw EPropertyError("Handler of the wrong type for event OnTimer");
      static_cast<TTimer*>(o)->SetOnTimer(*fn);
    });
    return t;
  }();
  return table;
}

}  // namespace qx
