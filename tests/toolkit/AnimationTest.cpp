#include <gtest/gtest.h>

#include <cmath>

#include "ToolkitFixture.h"
#include "toolkit/Animation.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"
#include "toolkit/PlatformServices.h"

namespace qx {
namespace {

class ToolkitAnimation : public test::ToolkitTest {};

// A float animation owned by the target, running from the property's start value.
TFloatAnimation* Animate(TFmxObject& target, const char* property, float stop, float duration) {
  auto* ani = new TFloatAnimation(&target);
  target.AddObject(ani);
  ani->PropertyName = property;
  ani->StopValue = stop;
  ani->Duration = duration;
  return ani;
}

// A control publishing a float of its own, the way module controls do.
class TTabLike : public TLayout {
 public:
  using TLayout::TLayout;
  float TabImageLeft() const { return Position().X() - 200; }
  void SetTabImageLeft(float v) { Position().SetX(v + 200); }
  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties() {
    static const TPropertyTable table = [] {
      TPropertyTable t(&TLayout::ClassProperties());
      t.Float("TabImageLeft",
              {[](TFmxObject* o) { return static_cast<TTabLike*>(o)->TabImageLeft(); },
               [](TFmxObject* o, float v) { static_cast<TTabLike*>(o)->SetTabImageLeft(v); }});
      return t;
    }();
    return table;
  }
};

TEST(ToolkitInterpolation, EndpointsAndMidpoints) {
  for (int i = 0; i <= static_cast<int>(TInterpolationType::Bounce); ++i)
    for (TAnimationType type : {TAnimationType::In, TAnimationType::Out, TAnimationType::InOut}) {
      auto it = static_cast<TInterpolationType>(i);
      EXPECT_DOUBLE_EQ(InterpolateValue(0, it, type), 0) << i;
      EXPECT_DOUBLE_EQ(InterpolateValue(1, it, type), 1) << i;
      // InOut is symmetric about the middle.
      if (type == TAnimationType::InOut) {
        EXPECT_NEAR(InterpolateValue(0.5, it, type), 0.5, 1e-9) << i;
      }
      // Out mirrors In.
      if (type == TAnimationType::Out) {
        EXPECT_NEAR(InterpolateValue(0.3, it, type), 1 - InterpolateValue(0.7, it, TAnimationType::In), 1e-9)
            << i;
      }
    }
  EXPECT_DOUBLE_EQ(InterpolateValue(0.5, TInterpolationType::Linear, TAnimationType::In), 0.5);
  EXPECT_DOUBLE_EQ(InterpolateValue(0.5, TInterpolationType::Quadratic, TAnimationType::In), 0.25);
  EXPECT_DOUBLE_EQ(InterpolateValue(0.5, TInterpolationType::Cubic, TAnimationType::In), 0.125);
  EXPECT_DOUBLE_EQ(InterpolateValue(0.5, TInterpolationType::Quartic, TAnimationType::In), 0.0625);
  EXPECT_DOUBLE_EQ(InterpolateValue(0.5, TInterpolationType::Quintic, TAnimationType::In), 0.03125);
  EXPECT_DOUBLE_EQ(InterpolateValue(0.5, TInterpolationType::Quintic, TAnimationType::Out), 1 - 0.03125);
  EXPECT_NEAR(InterpolateValue(0.5, TInterpolationType::Sinusoidal, TAnimationType::In), 1 - std::sqrt(0.5),
              1e-9);
  EXPECT_NEAR(InterpolateValue(0.5, TInterpolationType::Exponential, TAnimationType::In), 1.0 / 32, 1e-9);
  EXPECT_NEAR(InterpolateValue(0.5, TInterpolationType::Circular, TAnimationType::In), 1 - std::sqrt(0.75),
              1e-9);
  EXPECT_LT(InterpolateValue(0.2, TInterpolationType::Back, TAnimationType::In), 0);      // pulls back first
  EXPECT_GT(InterpolateValue(0.8, TInterpolationType::Elastic, TAnimationType::Out), 1);  // overshoots
  EXPECT_NEAR(InterpolateValue(0.5, TInterpolationType::Bounce, TAnimationType::Out), 0.765625, 1e-9);
}

TEST_F(ToolkitAnimation, HalfDurationGivesTheInterpolatedValue) {
  TLayout target;
  auto* ani = Animate(target, "Position.X", 200, 0.2f);
  ani->StartValue = 100;
  ani->Interpolation = TInterpolationType::Quadratic;
  ani->AnimationType = TAnimationType::Out;
  int finished = 0, processed = 0;
  ani->OnFinish = [&](TFmxObject*) { ++finished; };
  ani->OnProcess = [&](TFmxObject*) { ++processed; };
  ani->Start();
  EXPECT_TRUE(ani->Running());
  EXPECT_FLOAT_EQ(target.Position().X(), 100);
  TAnimation::AniThread()->SetInterval(10);
  Clock().Advance(100);
  EXPECT_NEAR(target.Position().X(), 100 + 100 * 0.75, 0.01);
  Clock().Advance(100);
  EXPECT_FLOAT_EQ(target.Position().X(), 200);
  EXPECT_FALSE(ani->Running());
  EXPECT_EQ(finished, 1);
  EXPECT_GE(processed, 10);
}

TEST_F(ToolkitAnimation, EveryTenMillisecondTickReachesEveryRunningAnimation) {
  TLayout root;
  std::vector<TTabLike*> tabs;
  std::vector<int> ticks(50, 0);
  for (int i = 0; i < 50; ++i) {
    auto* tab = new TTabLike(&root);
    root.AddObject(tab);
    auto* ani = Animate(*tab, i % 2 ? "TabImageLeft" : "Opacity", 1, 1);
    ani->StartValue = 0;
    ani->OnProcess = [&ticks, i](TFmxObject*) { ++ticks[static_cast<std::size_t>(i)]; };
    ani->Start();
    tabs.push_back(tab);
  }
  TAnimation::AniThread()->SetInterval(10);
  Clock().Advance(10);
  for (int t : ticks) EXPECT_EQ(t, 2);  // the first frame at Start, then one tick
  Clock().Advance(10);
  for (int t : ticks) EXPECT_EQ(t, 3);
  EXPECT_NEAR(tabs[1]->Position().X(), 200.02f, 1e-3);
}

TEST_F(ToolkitAnimation, StartFromCurrentDelayAndStopAtCurrent) {
  TLayout target;
  target.SetOpacity(0.4f);
  auto* ani = Animate(target, "opacity", 0, 0.4f);  // names are matched without case
  ani->StartFromCurrent = true;
  ani->Delay = 0.1f;
  ani->Start();
  TAnimation::AniThread()->SetInterval(10);
  Clock().Advance(90);
  EXPECT_FLOAT_EQ(target.Opacity(), 0.4f);  // still waiting
  Clock().Advance(210);
  EXPECT_NEAR(target.Opacity(), 0.4f * (1 - 0.2f / 0.4f), 0.02f);
  int finished = 0;
  ani->OnFinish = [&](TFmxObject*) { ++finished; };
  float now = target.Opacity();
  ani->StopAtCurrent();
  EXPECT_FALSE(ani->Running());
  EXPECT_EQ(finished, 1);
  Clock().Advance(500);
  EXPECT_FLOAT_EQ(target.Opacity(), now);
}

TEST_F(ToolkitAnimation, StopJumpsToTheEndAndZeroDurationIsImmediate) {
  TLayout target;
  auto* ani = Animate(target, "Position.Y", 30, 1);
  ani->Start();
  ani->Stop();
  EXPECT_FLOAT_EQ(target.Position().Y(), 30);
  ani->Duration = 0;
  ani->StopValue = 5;
  int finished = 0;
  ani->OnFinish = [&](TFmxObject*) { ++finished; };
  ani->Start();
  EXPECT_FLOAT_EQ(target.Position().Y(), 5);
  EXPECT_EQ(finished, 1);
  EXPECT_FALSE(ani->Running());
}

TEST_F(ToolkitAnimation, UnknownPropertyRaises) {
  TLayout target;
  auto* ani = Animate(target, "NoSuchThing", 1, 1);
  EXPECT_THROW(ani->Start(), EPropertyError);
  EXPECT_FALSE(ani->Running());
}

TEST_F(ToolkitAnimation, DestroyedControlStopsItsAnimationAndTellsWatchers) {
  auto* target = new TLayout();
  auto* ani = Animate(*target, "Position.X", 100, 1);
  ani->Start();
  struct W : IFreeNotification {
    int told = 0;
    void FreeNotification(TFmxObject*) override { ++told; }
  } w;
  target->AddFreeNotify(&w);
  auto* thread = dynamic_cast<TDefaultAniThread*>(TAnimation::AniThread());
  ASSERT_NE(thread, nullptr);
  EXPECT_EQ(thread->Count(), 1u);
  Clock().Advance(100);
  delete target;
  EXPECT_EQ(w.told, 1);
  EXPECT_EQ(thread->Count(), 0u);
  EXPECT_FALSE(thread->Enabled());  // no running animation: no platform timer
  Clock().Advance(100);             // nothing touches freed memory
}

TEST_F(ToolkitAnimation, HandlerFreeingTheControlDuringATick) {
  TLayout root;
  auto* a = new TLayout(&root);
  root.AddObject(a);
  auto* b = new TLayout(&root);
  root.AddObject(b);
  auto* aniA = Animate(*a, "Opacity", 0, 0.05f);
  auto* aniB = Animate(*b, "Opacity", 0, 0.05f);
  aniB->OnFinish = [&](TFmxObject*) { delete a; };
  aniA->Start();
  aniB->Start();
  Clock().Advance(200);
  EXPECT_EQ(root.ChildrenCount(), 1);
  EXPECT_FLOAT_EQ(b->Opacity(), 0);
}

TEST_F(ToolkitAnimation, BitmapAnimationsCrossFadeAndPlayFrames) {
  TImage image;
  auto* fade = new TBitmapAnimation(&image);
  image.AddObject(fade);
  fade->StartValue().SetSize(2, 2);
  fade->StartValue().Clear(TAlphaColors::Black);
  fade->StopValue().SetSize(2, 2);
  fade->StopValue().Clear(TAlphaColors::White);
  fade->Duration = 0.2f;
  fade->Start();
  TAnimation::AniThread()->SetInterval(10);
  Clock().Advance(100);
  TAlphaColor mid = image.Bitmap().PixelColor(0, 0);
  EXPECT_NEAR(static_cast<int>(mid & 0xFF), 128, 8);
  Clock().Advance(150);
  EXPECT_EQ(image.Bitmap().PixelColor(0, 0), TAlphaColors::White);

  auto* frames = new TBitmapListAnimation(&image);
  image.AddObject(frames);
  frames->AnimationBitmap().SetSize(8, 2);  // four frames of 2 by 2
  const TAlphaColor colours[] = {TAlphaColors::Red, TAlphaColors::Lime, TAlphaColors::Blue,
                                 TAlphaColors::White};
  TCanvas& c = frames->AnimationBitmap().Canvas();
  for (int i = 0; i < 4; ++i) c.FillRect(TRectF::FromSize(static_cast<float>(2 * i), 0, 2, 2), colours[i], 1);
  frames->AnimationCount = 4;
  frames->Duration = 0.8f;
  frames->Loop = true;
  frames->Start();
  EXPECT_EQ(image.Bitmap().Width(), 2);
  EXPECT_EQ(image.Bitmap().PixelColor(0, 0), TAlphaColors::Red);
  Clock().Advance(450);
  EXPECT_EQ(frames->CurrentFrame(), 2);
  EXPECT_EQ(image.Bitmap().PixelColor(1, 1), TAlphaColors::Blue);
  Clock().Advance(400);  // looped round
  EXPECT_EQ(frames->CurrentFrame(), 0);
  EXPECT_TRUE(frames->Running());
}

TEST_F(ToolkitAnimation, TimerFiresOnTheServiceClock) {
  TTimer timer;
  int fired = 0;
  timer.SetInterval(100);
  timer.SetOnTimer([&](TFmxObject* sender) {
    EXPECT_EQ(sender, &timer);
    ++fired;
  });
  Clock().Advance(350);
  EXPECT_EQ(fired, 3);
  timer.SetEnabled(false);
  EXPECT_EQ(timer.Handle(), 0u);
  Clock().Advance(500);
  EXPECT_EQ(fired, 3);
}

// A replacement timer service, as a host installs it.
class TCountingService final : public TInterfacedObject<IFMXTimerService> {
 public:
  TFmxHandle CreateTimer(int interval, TTimerProc proc) override {
    if (interval < 1 || !proc) return 0;
    ++created;
    return next += 16;
  }
  bool DestroyTimer(TFmxHandle) override { return true; }
  double GetTick() override { return 0; }
  int created = 0;
  TFmxHandle next = 128;
};

TEST_F(ToolkitAnimation, TimerServiceCanBeReplaced) {
  TPlatformServices& services = TPlatformServices::Current();
  EXPECT_TRUE(services.SupportsPlatformService(IFMXTimerService::IID));
  ComPtr<IFMXTimerService> former = services.GetPlatformService<IFMXTimerService>();
  auto mine = MakeCom<TCountingService>();
  services.RemovePlatformService(IFMXTimerService::IID);
  EXPECT_FALSE(services.SupportsPlatformService(IFMXTimerService::IID));
  EXPECT_THROW(TTimer{}, EUnsupportedPlatformService);
  services.AddPlatformService(mine, "IFMXTimerService");
  {
    TTimer timer;
    timer.SetOnTimer([](TFmxObject*) {});
    EXPECT_EQ(timer.Handle(), 144u);
    EXPECT_EQ(mine->created, 1);
  }
  services.RemovePlatformService(IFMXTimerService::IID);
  services.AddPlatformService(former);
  EXPECT_EQ(ManualTimerService(), former.get());
}

// A host thread installed in the toolkit's class-wide slot.
class TCaretCountingThread : public TAniThreadBase {
 public:
  void AddAnimation(TAnimation* a) override { list.push_back(a); }
  void RemoveAnimation(TAnimation* a) override { std::erase(list, a); }
  std::vector<TAnimation*> list;
};

class TReplaceThread : public TAnimation {
 public:
  static void Install(std::unique_ptr<TAniThreadBase> t) { SetAniThread(std::move(t)); }

 protected:
  void ProcessAnimation() override {}
};

TEST_F(ToolkitAnimation, HostThreadTakesTheClassWideSlot) {
  auto thread = std::make_unique<TCaretCountingThread>();
  TCaretCountingThread* raw = thread.get();
  TReplaceThread::Install(std::move(thread));
  TLayout target;
  auto* ani = Animate(target, "Opacity", 1, 1);
  ani->Start();
  ASSERT_EQ(raw->list.size(), 1u);
  ani->ProcessTick(0.5, 0.5);
  EXPECT_NEAR(target.Opacity(), 0.5f, 1e-5);
}

}  // namespace
}  // namespace qx
