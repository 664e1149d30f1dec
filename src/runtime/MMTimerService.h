#pragma once

// Timers on the multimedia clock. A winmm timer fires on its own thread and only
// posts a message to a hidden window; the timer's method then runs there, on the
// user interface thread, so toolkit code never sees another thread.

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "base/ComObject.h"
#include "platform/Platform.h"
#include "toolkit/TimerService.h"

namespace qx {

// The message a multimedia tick posts; wParam is the winmm timer id.
inline constexpr std::uint32_t kMMTimerMessage = 32769;

struct TWin32TimerInfo {
  std::uint32_t TimerID = 0;
  TFmxHandle TimerHandle = 0;
  TTimerProc TimerFunc;
};

class TMMTimerService final : public TInterfacedObject<IFMXTimerService> {
 public:
  TMMTimerService();
  ~TMMTimerService() override;

  TFmxHandle CreateTimer(int interval, TTimerProc timerFunc) override;
  bool DestroyTimer(TFmxHandle timer) override;
  // Kills every timer; not part of the toolkit's contract.
  void DestroyTimers();
  // Seconds of the multimedia clock.
  double GetTick() override;

  HWnd Window() const { return FWindow; }
  std::size_t TimerCount() const { return FTimers.size(); }

 private:
  static void QX_STDCALL TimerCallback(std::uint32_t id, std::uint32_t msg, ULongPtr user, ULongPtr, ULongPtr);
  static LResult QX_STDCALL WindowProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam);
  void Dispatch(std::uint32_t timerId);

  HWnd FWindow = nullptr;
  std::vector<TWin32TimerInfo> FTimers;
  std::atomic<std::int32_t> FNextHandle{128};
};

// While it lives, a fresh TMMTimerService stands in the registry in place of the
// timer service that was registered; Restore (or the destructor) puts that one back.
// When no service was registered, nothing is swapped.
class TMMTimerServiceScope {
 public:
  TMMTimerServiceScope();
  ~TMMTimerServiceScope() { Restore(); }
  TMMTimerServiceScope(const TMMTimerServiceScope&) = delete;
  TMMTimerServiceScope& operator=(const TMMTimerServiceScope&) = delete;
  void Restore();

 private:
  ComPtr<IFMXTimerService> FFormer;
  std::string FFormerName;
};

}  // namespace qx
