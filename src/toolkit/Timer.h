#pragma once

// A periodic timer on the timer service that was registered when it was made.

#include <functional>

#include "toolkit/FmxObject.h"
#include "toolkit/TimerService.h"

namespace qx {

class TTimer : public TFmxObject {
 public:
  // Raises EUnsupportedPlatformService when no timer service is registered.
  explicit TTimer(TFmxObject* owner = nullptr);
  ~TTimer() override;
  std::string ClassName() const override { return "TTimer"; }

  bool Enabled() const { return FEnabled; }
  void SetEnabled(bool value);
  int Interval() const { return FInterval; }
  void SetInterval(int value);
  TNotifyEvent OnTimer() const { return FOnTimer; }
  void SetOnTimer(TNotifyEvent handler);

  // The handle the service gave; 0 while no timer runs.
  TFmxHandle Handle() const { return FHandle; }
  IFMXTimerService* TimerService() const { return FTimerService.get(); }

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  // Runs on each tick; the default calls OnTimer.
  virtual void Timer();
  void UpdateTimer();

 private:
  ComPtr<IFMXTimerService> FTimerService;
  TFmxHandle FHandle = 0;
  bool FEnabled = true;
  int FInterval = 1000;
  TNotifyEvent FOnTimer;
};

}  // namespace qx
