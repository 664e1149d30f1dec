#pragma once

// The timer service the toolkit's timers and animations run on. The default is
// a manual clock: time moves only when Advance is called, and due timers fire
// in order on the calling thread. A host replaces it through TPlatformServices.

#include <cstdint>
#include <functional>
#include <vector>

#include "base/ComObject.h"
#include "base/Unknown.h"

namespace qx {

using TFmxHandle = std::uintptr_t;
using TTimerProc = std::function<void()>;

struct IFMXTimerService : IUnknown {
  static constexpr TGUID IID = MakeGuid("856E938B-FF7B-4E13-85D4-3414A6A9FF2F");
  // Milliseconds; returns 0 when the timer cannot be made.
  virtual TFmxHandle CreateTimer(int interval, TTimerProc timerFunc) = 0;
  virtual bool DestroyTimer(TFmxHandle timer) = 0;
  // Seconds since some fixed point.
  virtual double GetTick() = 0;
};

class TManualTimerService final : public TInterfacedObject<IFMXTimerService> {
 public:
  TFmxHandle CreateTimer(int interval, TTimerProc timerFunc) override;
  bool DestroyTimer(TFmxHandle timer) override;
  double GetTick() override { return static_cast<double>(FNowMs) / 1000.0; }

  // Moves the clock forward, firing each due timer at its due time.
  void Advance(std::int64_t milliseconds);
  std::int64_t NowMs() const { return FNowMs; }
  std::size_t TimerCount() const { return FTimers.size(); }

 private:
  struct TTimerEntry {
    TFmxHandle Handle;
    int Interval;
    std::int64_t Due;
    TTimerProc Func;
  };
  std::vector<TTimerEntry> FTimers;
  std::int64_t FNowMs = 0;
  TFmxHandle FNextHandle = 0;
};

// The registered timer service; installs the manual one if none stands.
ComPtr<IFMXTimerService> CurrentTimerService();
// The manual service when it is the registered one, else null (tests use it to drive time).
TManualTimerService* ManualTimerService();

}  // namespace qx
