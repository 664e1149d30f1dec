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
  if (std::find(FAniList.begin(), FAniList.end(), animation) == FAniList.end()) FAniList.push_back(animation);
  // No long jump on the first tick after a pause.
  if (!Enabled() && !FAniList.empty()) FTime = FTimerService->GetTick();
  SetEnabled(!FAniList.empty());
}

void TAniThread::RemoveAnimation(TAnimation* animation) {
  std::erase(FAniList, animation);
  SetEnabled(!FAniList.empty());
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
  if (FTimerTick <= 0 || FAniList.empty()) return;
  auto last = [this] { return static_cast<std::ptrdiff_t>(FAniList.size()) - 1; };
  std::ptrdiff_t i = last();
  while (i >= 0) {
    TAnimation* animation = FAniList[static_cast<std::size_t>(i)];
    if (animation->Running()) {
      if (!animation->StyleName.empty() && SameText(animation->StyleName, u"caret")) {
        animation->Tag += 1;
        if (animation->Tag % kCaretDivider == 0) animation->ProcessTick(FTime, FTimerTick);
      } else {
        animation->ProcessTick(FTime, FTimerTick);
      }
    }
    // A tick may have removed animations from the list.
    --i;
    if (i > last()) i = last();
  }
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
