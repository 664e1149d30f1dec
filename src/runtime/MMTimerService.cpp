#include "runtime/MMTimerService.h"

#include <exception>

#include "runtime/DelayExec.h"
#include "toolkit/PlatformServices.h"

namespace qx {

TMMTimerService::TMMTimerService() { FWindow = AllocateUtilWindow(&TMMTimerService::WindowProc, this); }

TMMTimerService::~TMMTimerService() {
  DestroyTimers();
  DeallocateUtilWindow(FWindow);
  FWindow = nullptr;
}

TFmxHandle TMMTimerService::CreateTimer(int interval, TTimerProc timerFunc) {
  if (interval < 1 || !timerFunc) return 0;
  std::uint32_t id = Platform().timeSetEvent(static_cast<std::uint32_t>(interval), 0, &TMMTimerService::TimerCallback,
                                             reinterpret_cast<ULongPtr>(FWindow), win::TIME_PERIODIC);
  if (id == 0) return 0;
  // The first handle is 144.
  auto handle = static_cast<TFmxHandle>(FNextHandle.fetch_add(16) + 16);
  FTimers.push_back({id, handle, std::move(timerFunc)});
  return handle;
}

bool TMMTimerService::DestroyTimer(TFmxHandle timer) {
  bool result = false;
  for (std::size_t i = FTimers.size(); i-- > 0;) {
    if (FTimers[i].TimerHandle != timer) continue;
    result = Platform().timeKillEvent(FTimers[i].TimerID) == win::TIMERR_NOERROR;
    FTimers.erase(FTimers.begin() + static_cast<std::ptrdiff_t>(i));
  }
  return result;
}

void TMMTimerService::DestroyTimers() {
  for (std::size_t i = FTimers.size(); i-- > 0;) {
    Platform().timeKillEvent(FTimers[i].TimerID);
    FTimers.erase(FTimers.begin() + static_cast<std::ptrdiff_t>(i));
  }
}

double TMMTimerService::GetTick() { return static_cast<double>(Platform().timeGetTime()) / 1000.0; }

void QX_STDCALL TMMTimerService::TimerCallback(std::uint32_t id, std::uint32_t, ULongPtr user, ULongPtr, ULongPtr) {
  // The multimedia thread: post and touch nothing else.
  auto window = reinterpret_cast<HWnd>(user);
  if (Platform().IsWindow(window)) Platform().PostMessageW(window, kMMTimerMessage, id, 0);
}

LResult QX_STDCALL TMMTimerService::WindowProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  if (msg != kMMTimerMessage) return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
  auto* self = reinterpret_cast<TMMTimerService*>(Platform().GetWindowLongPtrW(hwnd, win::GWLP_USERDATA));
  if (self) self->Dispatch(static_cast<std::uint32_t>(wParam));
  return 0;
}

void TMMTimerService::Dispatch(std::uint32_t timerId) {
  for (std::size_t i = FTimers.size(); i-- > 0;) {
    if (FTimers[i].TimerID != timerId) continue;
    // The call may destroy this timer or make others.
    TTimerProc func = FTimers[i].TimerFunc;
    try {
      func();
    } catch (...) {
      // A failing tick must not unwind through the window procedure.
    }
    return;
  }
  // A tick posted before its timer died: nothing to do.
}

TMMTimerServiceScope::TMMTimerServiceScope() {
  TPlatformServices& services = TPlatformServices::Current();
  FFormer = services.GetPlatformService<IFMXTimerService>();
  if (!FFormer) return;
  FFormerName = services.ServiceName(IFMXTimerService::IID);
  services.RemovePlatformService(IFMXTimerService::IID);
  services.AddPlatformService(ComPtr<IFMXTimerService>(MakeCom<TMMTimerService>()), "IFMXTimerService");
}

void TMMTimerServiceScope::Restore() {
  if (!FFormer) return;
  TPlatformServices& services = TPlatformServices::Current();
  services.RemovePlatformService(IFMXTimerService::IID);
  services.AddPlatformService(FFormer, FFormerName);
  FFormer.reset();
}

}  // namespace qx
