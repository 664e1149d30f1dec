#pragma once

// The module's animation thread: every running TAnimation ticks from a 10 ms
// multimedia timer whose ticks arrive through the message queue.

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "toolkit/Animation.h"

namespace qx {

class TAniThread : public TAniThreadBase {
 public:
  // Raises EUnsupportedPlatformService when no timer service is registered.
  TAniThread();
  ~TAniThread() override;
  std::string ClassName() const override { return "TAniThread"; }

  void AddAnimation(TAnimation* animation) override;
  void RemoveAnimation(TAnimation* animation) override;

  std::size_t Count() const { return FAniList.Count(); }
  // The thread that InstallAnimationThread put in place, while it lives.
  static TAniThread* Installed() { return FInstalled; }

 protected:
  void Timer() override;

 private:
  friend void InstallAnimationThread();
  void DoSyncTimer();

  TAnimationList FAniList;
  double FTime = 0;
  double FTimerTick = 0;
  ComPtr<IFMXTimerService> FTimerService;
  static inline TAniThread* FInstalled = nullptr;
};

// Exists only so that its constructor may write the toolkit's class-wide thread.
class TAnimationReplaceTimer : public TAnimation {
 public:
  TAnimationReplaceTimer(TFmxObject* owner, std::unique_ptr<TAniThreadBase> thread);
  std::string ClassName() const override { return "TAnimationReplaceTimer"; }

 protected:
  void ProcessAnimation() override {}
};

inline constexpr char kAnimationInstallError[] = "Failed to initialize animation!!";

class EAnimationInstallError : public std::runtime_error {
 public:
  EAnimationInstallError() : std::runtime_error(kAnimationInstallError) {}
};

// Puts a TAniThread on a private multimedia timer service in the toolkit's place.
// Raises EAnimationInstallError when the toolkit's class-wide thread already stands,
// whether the module's or the toolkit's own.
void InstallAnimationThread();

}  // namespace qx
