#include "runtime/ReplaceAniThread.h"

#include <algorithm>

#include "base/Text.h"
#include "runtime/MMTimerService.h"

namespace qx {

namespace {
constexpr int kAniInterval = 10;
// A caret blinks on one tick in this many.
constexpr std::intptr_t kCaretDivider = 12;
}  // namespace

TAniThread::TAniThread() {
  FTimerService = CurrentTimerService();
  if (!FTimerService) throw EUnsupportedPlatformService("IFMXTimerService");
  SetInterval(kAniInterval);
  SetOnTimer([this](TFmxObject*) { DoSyncTimer(); });
  FTime = FTimerService->GetTick();
  SetEnabled(false);
}

TAniThread::~TAniThread() {
  if (FInstalled == this) FInstalled = nullptr;
}

void TAniThread::AddAnimation(TAnimation* animation) {
  FAniList.Add(animation);
  // No long jump on the first tick after a pause.
  if (!Enabled()) FTime = FTimerService->GetTick();
  SetEnabled(true);
}

void TAniThread::RemoveAnimation(TAnimation* animation) {
  FAniList.Remove(animation);
  SetEnabled(!FAniList.Empty());
}

void TAniThread::Timer() {
  TTimer::Timer();
  SetInterval(kAniInterval);
  if (Interval() == 0) SetInterval(1);
}

void TAniThread::DoSyncTimer() {
  double now = FTimerService->GetTick();
  FTimerTick = now - FTime;
  FTime = now;
  if (FTimerTick <= 0 || FAniList.Empty()) return;
  // A tick may remove animations from the list.
  FAniList.ForEachLatestFirst([this](TAnimation* animation) {
    if (!animation->Running()) return;
    if (!animation->StyleName.empty() && SameText(animation->StyleName, u"caret")) {
      animation->Tag += 1;
      if (animation->Tag % kCaretDivider == 0) animation->ProcessTick(FTime, FTimerTick);
    } else {
      animation->ProcessTick(FTime, FTimerTick);
    }
  });
}

TAnimationReplaceTimer::TAnimationReplaceTimer(TFmxObject* owner, std::unique_ptr<TAniThreadBase> thread)
    : TAnimation(owner) {
  SetAniThread(std::move(thread));
}

void InstallAnimationThread() {
  if (TAnimation::AniThreadAssigned()) throw EAnimationInstallError();
  TMMTimerServiceScope scope;
  auto thread = std::make_unique<TAniThread>();
  TAniThread* installed = thread.get();
  { TAnimationReplaceTimer replace(nullptr, std::move(thread)); }
  TAniThread::FInstalled = installed;
  scope.Restore();
}

}  // namespace qx
