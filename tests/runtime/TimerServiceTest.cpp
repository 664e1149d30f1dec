#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "platform/portable/ScopedPortableOs.h"
#include "runtime/MMTimerFMX.h"
#include "runtime/MMTimerService.h"
#include "runtime/ReplaceAniThread.h"
#include "toolkit/Application.h"
#include "toolkit/Layout.h"
#include "toolkit/PlatformServices.h"

namespace qx {
namespace {

class TimerServiceTest : public ::testing::Test {
 protected:
  void SetUp() override { TToolkit::Finalize(); }
  void TearDown() override { TToolkit::Finalize(); }
  IFMXTimerService* Registered() { return CurrentTimerService().get(); }
  TScopedPortableOs os_;
};

// Counts the ticks it is given.
class TCountingAnimation : public TAnimation {
 public:
  using TAnimation::TAnimation;
  void ProcessTick(double time, double deltaTime) override {
    ++Ticks;
    LastDelta = deltaTime;
    TAnimation::ProcessTick(time, deltaTime);
    if (OnTick) OnTick();
  }
  int Ticks = 0;
  double LastDelta = 0;
  std::function<void()> OnTick;

 protected:
  void ProcessAnimation() override {}
};

TEST_F(TimerServiceTest, TimersTickThroughTheHiddenWindow) {
  auto service = MakeCom<TMMTimerService>();
  EXPECT_TRUE(os_->IsWindow(service->Window()));
  int a = 0, b = 0;
  EXPECT_EQ(service->CreateTimer(0, [&] { ++a; }), 0u);
  EXPECT_EQ(service->CreateTimer(10, nullptr), 0u);
  EXPECT_EQ(service->TimerCount(), 0u);
  TFmxHandle ha = service->CreateTimer(10, [&] { ++a; });
  TFmxHandle hb = service->CreateTimer(25, [&] { ++b; });
  EXPECT_EQ(ha, 144u);
  EXPECT_EQ(hb, 160u);
  os_->AdvanceClock(50);
  EXPECT_EQ(a, 5);
  EXPECT_EQ(b, 2);
  EXPECT_DOUBLE_EQ(service->GetTick(), os_->timeGetTime() / 1000.0);
  EXPECT_TRUE(service->DestroyTimer(ha));
  EXPECT_FALSE(service->DestroyTimer(ha));
  os_->AdvanceClock(50);
  EXPECT_EQ(a, 5);
  EXPECT_EQ(b, 4);
  service->DestroyTimers();
  EXPECT_EQ(service->TimerCount(), 0u);
  EXPECT_FALSE(service->DestroyTimer(hb));
  // Ticks posted for timers that have died are ignored.
  for (WParam id = 0; id < 8; ++id) os_->PostMessageW(service->Window(), kMMTimerMessage, id, 0);
  os_->ProcessMessages();
  os_->AdvanceClock(100);
  EXPECT_EQ(a, 5);
  EXPECT_EQ(b, 4);
}

TEST_F(TimerServiceTest, FailingTickIsDroppedAndTheServiceEndsCleanly) {
  std::size_t windows = os_->WindowCount();
  {
    auto service = MakeCom<TMMTimerService>();
    int calls = 0;
    service->CreateTimer(10, [&] {
      ++calls;
      throw std::runtime_error("tick failed");
    });
    EXPECT_NO_THROW(os_->AdvanceClock(30));
    EXPECT_EQ(calls, 3);
    // Other messages go to the default procedure.
    EXPECT_EQ(os_->SendMessageW(service->Window(), win::WM_USER + 7, 0, 0), 0);
  }
  EXPECT_EQ(os_->WindowCount(), windows);
  os_->AdvanceClock(50);  // the killed timer posts nothing more
  EXPECT_EQ(os_->PendingMessageCount(), 0u);
}

TEST_F(TimerServiceTest, MMTimerRunsOnAPrivateServiceAndLeavesTheRegisteredOne) {
  IFMXTimerService* before = Registered();
  TMMTimer timer;
  EXPECT_EQ(Registered(), before);
  EXPECT_NE(timer.TimerService(), before);
  EXPECT_NE(dynamic_cast<TMMTimerService*>(timer.TimerService()), nullptr);
  TTimer plain;
  EXPECT_EQ(plain.TimerService(), before);
  int ticks = 0;
  timer.SetInterval(20);
  timer.SetOnTimer([&](TFmxObject*) { ++ticks; });
  ManualTimerService()->Advance(100);  // the toolkit's clock does not drive it
  EXPECT_EQ(ticks, 0);
  os_->AdvanceClock(100);
  EXPECT_EQ(ticks, 5);
}

TEST_F(TimerServiceTest, RemovedServiceLeavesTimersUnsupported) {
  Registered();
  TPlatformServices::Current().RemovePlatformService(IFMXTimerService::IID);
  EXPECT_THROW(TMMTimer timer, EUnsupportedPlatformService);
  EXPECT_FALSE(TPlatformServices::Current().SupportsPlatformService(IFMXTimerService::IID));
  try {
    TAniThread thread;
    FAIL() << "no error";
  } catch (const EUnsupportedPlatformService& e) {
    EXPECT_NE(std::string(e.what()).find("IFMXTimerService"), std::string::npos);
  }
  // A service put back is used again.
  auto replacement = MakeCom<TMMTimerService>();
  TPlatformServices::Current().AddPlatformService(ComPtr<IFMXTimerService>(replacement));
  TTimer timer;
  EXPECT_EQ(timer.TimerService(), static_cast<IFMXTimerService*>(replacement.get()));
}

TEST_F(TimerServiceTest, TenMillisecondTickReachesEveryRunningAnimation) {
  IFMXTimerService* before = Registered();
  InstallAnimationThread();
  EXPECT_EQ(Registered(), before);
  TAniThread* thread = TAniThread::Installed();
  ASSERT_NE(thread, nullptr);
  EXPECT_EQ(TAnimation::AniThread(), thread);
  EXPECT_FALSE(thread->Enabled());
  EXPECT_EQ(thread->Handle(), 0u);

  TLayout a, b, c;
  std::vector<TFloatAnimation*> animations;
  for (TLayout* target : {&a, &b, &c}) {
    auto* animation = new TFloatAnimation(target);
    animation->SetParent(target);
    animation->PropertyName = "Position.X";
    animation->StartValue = 0;
    animation->StopValue = 100;
    animation->Duration = 1;
    animations.push_back(animation);
  }
  animations[2]->Duration = 0.05f;
  for (TFloatAnimation* animation : animations) animation->Start();
  EXPECT_EQ(thread->Count(), 3u);
  EXPECT_TRUE(thread->Enabled());
  EXPECT_EQ(thread->Interval(), 10);

  ManualTimerService()->Advance(100);  // not the animations' clock
  EXPECT_EQ(a.Position().X(), 0);

  os_->AdvanceClock(10);
  for (TFloatAnimation* animation : animations) EXPECT_NEAR(animation->CurrentTime(), 0.01, 1e-9);
  EXPECT_NEAR(a.Position().X(), 1, 1e-4);
  os_->AdvanceClock(40);
  EXPECT_FALSE(animations[2]->Running());
  EXPECT_EQ(c.Position().X(), 100);
  EXPECT_EQ(thread->Count(), 2u);
  EXPECT_NEAR(a.Position().X(), 5, 1e-4);
  os_->AdvanceClock(950);
  EXPECT_EQ(a.Position().X(), 100);
  EXPECT_EQ(b.Position().X(), 100);
  // With nothing running no timer exists.
  EXPECT_EQ(thread->Count(), 0u);
  EXPECT_FALSE(thread->Enabled());
  EXPECT_EQ(thread->Handle(), 0u);
}

TEST_F(TimerServiceTest, FirstTickAfterAPauseHasNoLongJump) {
  InstallAnimationThread();
  TCountingAnimation animation;
  animation.Duration = 10;
  os_->AdvanceClock(5000);
  animation.Start();
  os_->AdvanceClock(10);
  EXPECT_EQ(animation.Ticks, 1);
  EXPECT_NEAR(animation.LastDelta, 0.01, 1e-9);
}

TEST_F(TimerServiceTest, CaretTicksOnceInTwelve) {
  InstallAnimationThread();
  TCountingAnimation caret, other;
  caret.StyleName = u"Caret";
  caret.Duration = other.Duration = 100;
  caret.Start();
  other.Start();
  os_->AdvanceClock(240);
  EXPECT_EQ(other.Ticks, 24);
  EXPECT_EQ(caret.Ticks, 2);
  EXPECT_EQ(caret.Tag, 24);
  // The caret's tick carries one tick's time only.
  EXPECT_NEAR(caret.LastDelta, 0.01, 1e-9);
}

TEST_F(TimerServiceTest, AnimationsRemovedDuringATickAreSkipped) {
  InstallAnimationThread();
  TCountingAnimation first, second, third;
  for (TCountingAnimation* a : {&first, &second, &third}) a->Duration = 100;
  first.Start();
  second.Start();
  third.Start();
  // The last in the list ticks first and stops the two before it. The index is
  // pulled back to the end of the shorter list, so it ticks once more in that round.
  third.OnTick = [&] {
    first.StopAtCurrent();
    second.StopAtCurrent();
  };
  os_->AdvanceClock(10);
  EXPECT_EQ(third.Ticks, 2);
  EXPECT_EQ(first.Ticks + second.Ticks, 0);
  os_->AdvanceClock(10);
  EXPECT_EQ(third.Ticks, 3);
}

TEST_F(TimerServiceTest, SecondInstallFailsAndLeavesEverythingInPlace) {
  InstallAnimationThread();
  IFMXTimerService* registered = Registered();
  TAniThread* thread = TAniThread::Installed();
  try {
    InstallAnimationThread();
    FAIL() << "no error";
  } catch (const std::exception& e) {
    EXPECT_STREQ(e.what(), "Failed to initialize animation!!");
  }
  EXPECT_EQ(Registered(), registered);
  EXPECT_EQ(TAniThread::Installed(), thread);
  EXPECT_EQ(TAnimation::AniThread(), thread);
  // After the toolkit's teardown a new install works.
  TToolkit::Finalize();
  EXPECT_EQ(TAniThread::Installed(), nullptr);
  EXPECT_NO_THROW(InstallAnimationThread());
}

TEST_F(TimerServiceTest, InstallFailsOnceTheToolkitsOwnThreadStands) {
  EXPECT_FALSE(TAnimation::AniThreadAssigned());
  // An animation started before the install brings up the toolkit's default thread.
  TCountingAnimation early;
  early.Duration = 1;
  early.Start();
  ASSERT_TRUE(TAnimation::AniThreadAssigned());
  TAniThreadBase* standing = TAnimation::AniThread();
  IFMXTimerService* registered = Registered();
  EXPECT_THROW(InstallAnimationThread(), EAnimationInstallError);
  EXPECT_EQ(TAniThread::Installed(), nullptr);
  EXPECT_EQ(TAnimation::AniThread(), standing);
  EXPECT_EQ(Registered(), registered);
}

}  // namespace
}  // namespace qx
