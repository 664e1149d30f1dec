#include "toolkit/TimerService.h"

#include <algorithm>

#include "toolkit/PlatformServices.h"
#include "toolkit/Types.h"

namespace qx {

TFmxHandle TManualTimerService::CreateTimer(int interval, TTimerProc timerFunc) {
  if (interval < 1 || !timerFunc) return 0;
  FNextHandle += 16;
  FTimers.push_back({FNextHandle, interval, FNowMs + interval, std::move(timerFunc)});
  return FNextHandle;
}

bool TManualTimerService::DestroyTimer(TFmxHandle timer) {
  return std::erase_if(FTimers, [timer](const TTimerEntry& t) { return t.Handle == timer; }) > 0;
}

void TManualTimerService::Advance(std::int64_t milliseconds) {
  const std::int64_t target = FNowMs + std::max<std::int64_t>(0, milliseconds);
  for (;;) {
    // Earliest due timer; among equals, the one made first.
    auto next = std::min_element(FTimers.begin(), FTimers.end(),
                                 [](const TTimerEntry& a, const TTimerEntry& b) { return a.Due < b.Due; });
    if (next == FTimers.end() || next->Due > target) break;
    FNowMs = next->Due;
    next->Due += next->Interval;
    TTimerProc func = next->Func;  // the call may destroy the timer
    func();
  }
  FNowMs = target;
}

void InstallDefaultPlatformServices(TPlatformServices& services) {
  services.AddPlatformService(MakeCom<TManualTimerService>(), "IFMXTimerService");
}

ComPtr<IFMXTimerService> CurrentTimerService() {
  return TPlatformServices::Current().GetPlatformService<IFMXTimerService>();
}

TManualTimerService* ManualTimerService() {
  ComPtr<IFMXTimerService> service = CurrentTimerService();
  return dynamic_cast<TManualTimerService*>(service.get());
}

}  // namespace qx
