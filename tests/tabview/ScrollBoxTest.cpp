#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "platform/portable/ScopedPortableOs.h"
#include "runtime/MMTimerService.h"
#include "tabview/TalvokScrollBox.h"
#include "toolkit/Application.h"
#include "toolkit/Form.h"
#include "toolkit/Frame.h"
#include "toolkit/PlatformServices.h"

namespace qx {
namespace {

using BaseBox = ScrollBoxExUnit::TScrollBoxEx;
using StripBox = TalvokScrollBoxUnit::TTalvokScrollBox;

class ScrollBoxTest : public ::testing::Test {
 protected:
  void SetUp() override { TToolkit::Finalize(); }
  void TearDown() override { TToolkit::Finalize(); }

  // A box of 200 x 100 holding one child of the given size.
  template <class Box>
  static TLayout* Fill(Box& box, float width, float height) {
    box.SetBounds(0, 0, 200, 100);
    auto* child = new TLayout(&box);
    child->SetBounds(0, 0, width, height);
    child->SetParent(&box);
    box.PerfectRefresh();
    return child;
  }

  // A strip of 200 x 100 over content of the given width, animated and tracking touch sideways.
  static TAniCalculations& Glider(StripBox& box, float width) {
    Fill(box, width, 100);
    TAniCalculations& ani = box.AniCalculations();
    ani.Animation = true;
    ani.TouchTracking = ttrack::Horizontal;
    return ani;
  }

  void Tick(int times, int ms = 10) {
    for (int i = 0; i < times; ++i) os_->AdvanceClock(static_cast<std::uint64_t>(ms));
  }

  TScopedPortableOs os_;
};

TEST_F(ScrollBoxTest, ChildrenLiveInTheContentAndReportLeaving) {
  BaseBox box;
  TLayout* child = Fill(box, 1000, 100);
  EXPECT_EQ(child->Parent(), box.Content());
  EXPECT_EQ(box.ContentBounds(), TRectF(0, 0, 1000, 100));
  EXPECT_EQ(box.ClientWidth(), 200);
  EXPECT_EQ(box.ClientHeight(), 100);
  std::vector<TFmxObject*> removed;
  box.OnNotification = [&](TFmxObject*, TFmxObject* object, ScrollBoxExUnit::TContentNotification op) {
    if (op == ScrollBoxExUnit::TContentNotification::Removed) removed.push_back(object);
  };
  // A moved child counts once the cached bounds are dropped.
  child->SetWidth(1500);
  EXPECT_EQ(box.ContentBounds().Width(), 1000);
  box.PerfectRefresh();
  EXPECT_EQ(box.ContentBounds().Width(), 1500);
  EXPECT_EQ(box.AniCalculations().MaxTarget().X, 1300);
  delete child;
  EXPECT_EQ(removed, std::vector<TFmxObject*>{child});
  EXPECT_EQ(box.ContentBounds(), TRectF(0, 0, 200, 100));
  EXPECT_EQ(box.AniCalculations().MaxTarget().X, 0);
}

TEST_F(ScrollBoxTest, ScrollToMovesBarsByTheDeltaAndCenterHalvesTheRange) {
  BaseBox box;
  Fill(box, 1000, 100);
  TScrollBar* h = box.HScrollBar();
  ASSERT_NE(h, nullptr);
  EXPECT_TRUE(h->Visible());
  EXPECT_FALSE(box.VScrollBar()->Visible());  // nothing to scroll upright
  h->SetValue(50);
  EXPECT_EQ(box.AniCalculations().ViewportPosition().X, 50);
  EXPECT_EQ(box.Content()->Position().X(), -50);
  box.ScrollTo(10, 0);
  EXPECT_EQ(h->Value(), 40);
  EXPECT_EQ(box.Content()->Position().X(), -40);
  box.ScrollTo(-25, 5);
  EXPECT_EQ(h->Value(), 65);
  box.Center();
  EXPECT_EQ(h->Value(), 400);
  EXPECT_EQ(box.AniCalculations().ViewportPosition().X, 400);
  // Hidden bars take no part: with the bars off, ScrollTo moves nothing.
  box.SetShowScrollBars(false);
  box.ScrollTo(10, 0);
  EXPECT_EQ(box.AniCalculations().ViewportPosition().X, 400);
}

TEST_F(ScrollBoxTest, BarValuesAreSnappedToDevicePixels) {
  BaseBox box;
  Fill(box, 1000, 100);
  int changes = 0;
  box.OnHScrollChange = [&](TFmxObject*) { ++changes; };
  box.HScrollBar()->SetValue(33.4f);
  EXPECT_EQ(box.AniCalculations().ViewportPosition().X, 33);
  EXPECT_EQ(box.HScrollBar()->Value(), 33);
  EXPECT_GE(changes, 1);
}

TEST_F(ScrollBoxTest, SetHorzPositionStaysWithinRange) {
  StripBox box;
  Fill(box, 1000, 100);
  EXPECT_EQ(box.MaxHorzPosition(), 800);
  box.SetHorzPosition(5000);
  EXPECT_EQ(box.HorzPosition(), 800);
  EXPECT_EQ(box.CurrentScrollOrigin(), -800);
  box.SetHorzPosition(-30);
  EXPECT_EQ(box.HorzPosition(), 0);
  box.SetHorzPosition(120.6f);
  EXPECT_EQ(box.HorzPosition(), 121);

  StripBox narrow;
  Fill(narrow, 50, 100);
  EXPECT_EQ(narrow.MaxHorzPosition(), 0);
  narrow.SetHorzPosition(40);
  EXPECT_EQ(narrow.HorzPosition(), 0);
}

TEST_F(ScrollBoxTest, StripCalculationsRunOnTheMultimediaClock) {
  IFMXTimerService* registered = CurrentTimerService().get();
  StripBox box;
  EXPECT_EQ(CurrentTimerService().get(), registered);
  auto* calculations = dynamic_cast<TalvokScrollBoxUnit::TMyScrollCalculations*>(&box.AniCalculations());
  ASSERT_NE(calculations, nullptr);
  EXPECT_EQ(calculations->Interval(), 5);
  EXPECT_NE(dynamic_cast<TMMTimerService*>(calculations->Timer().TimerService()), nullptr);
}

TEST_F(ScrollBoxTest, CalculationsRefuseAnOwnerThatIsNoScrollBox) {
  TLayout notABox;
  EXPECT_THROW(ScrollBoxExUnit::TScrollCalculations calculations(&notABox), std::invalid_argument);
  EXPECT_THROW(ScrollBoxExUnit::TScrollCalculations calculations(nullptr), std::invalid_argument);
}

TEST_F(ScrollBoxTest, WheelTurnsSidewaysOnTheStrip) {
  StripBox strip;
  BaseBox plain;
  Fill(strip, 1000, 400);
  Fill(plain, 1000, 400);
  int after = 0;
  strip.OnAfterMouseWheel = [&](TFmxObject*, TShiftState, int, bool& handled) {
    ++after;
    EXPECT_TRUE(handled);
  };
  bool handled = false;
  strip.MouseWheel(0, -120, handled);
  EXPECT_EQ(after, 1);
  EXPECT_EQ(strip.AniCalculations().ViewportPosition().X, 60);
  EXPECT_EQ(strip.AniCalculations().ViewportPosition().Y, 0);
  handled = false;
  plain.MouseWheel(0, -120, handled);
  EXPECT_EQ(plain.AniCalculations().ViewportPosition().X, 0);
  EXPECT_EQ(plain.AniCalculations().ViewportPosition().Y, 60);
  // Wheel up at the start goes nowhere.
  handled = false;
  strip.MouseWheel(0, 240, handled);
  EXPECT_EQ(strip.AniCalculations().ViewportPosition().X, 0);
}

TEST_F(ScrollBoxTest, AnimatedWheelGlidesToItsGoal) {
  StripBox box;
  Fill(box, 1000, 100);
  box.AniCalculations().Animation = true;
  int stops = 0;
  box.AniCalculations().OnStop = [&](TFmxObject*) { ++stops; };
  bool handled = false;
  box.MouseWheel(0, -120, handled);
  handled = false;
  box.MouseWheel(0, -120, handled);  // a second notch adds to the goal
  EXPECT_EQ(box.AniCalculations().ViewportPosition().X, 0);
  Tick(2, 5);
  double x = box.AniCalculations().ViewportPosition().X;
  EXPECT_GT(x, 0);
  EXPECT_LT(x, 120);
  Tick(200, 5);
  EXPECT_EQ(box.AniCalculations().ViewportPosition().X, 120);
  EXPECT_FALSE(box.AniCalculations().Moving());
  EXPECT_EQ(stops, 1);
}

// Drags from x = 150 to the left by step pixels every 10 ms, then lets go.
template <class Box>
void Fling(Box& box, TScopedPortableOs& os, int moves, float step) {
  float x = 150;
  box.MouseDown(TMouseButton::mbLeft, 0, x, 50);
  for (int i = 0; i < moves; ++i) {
    os->AdvanceClock(10);
    x -= step;
    box.MouseMove(ss::Left, x, 50);
  }
  box.MouseUp(TMouseButton::mbLeft, 0, x, 50);
}

TEST_F(ScrollBoxTest, InertiaDecaysToRestWithinBounds) {
  StripBox box;
  TAniCalculations& ani = Glider(box, 3000);
  ani.BoundsAnimation = false;
  int starts = 0, stops = 0, aniMoves = 0;
  ani.OnStart = [&](TFmxObject*) { ++starts; };
  ani.OnStop = [&](TFmxObject*) { ++stops; };
  box.OnAniMouseMove = [&](TFmxObject*, TShiftState, float, float) { ++aniMoves; };
  Fling(box, os_, 5, 20);  // 2000 pixels a second
  EXPECT_EQ(ani.ViewportPosition().X, 100);
  EXPECT_EQ(aniMoves, 5);
  EXPECT_TRUE(ani.Inertia());
  EXPECT_NEAR(ani.CurrentVelocity().X, 2000, 1e-6);
  EXPECT_EQ(ani.CurrentVelocity().Y, 0);
  double last = ani.ViewportPosition().X, lastStep = 1e9;
  for (int i = 0; i < 1000 && ani.Inertia(); ++i) {
    Tick(1, 5);
    double x = ani.ViewportPosition().X;
    EXPECT_GE(x, last);
    // It slows down.
    EXPECT_LE(x - last, lastStep + 1e-9);
    lastStep = x - last;
    last = x;
  }
  EXPECT_FALSE(ani.Inertia());
  EXPECT_FALSE(ani.Moving());
  EXPECT_EQ(starts, 1);
  EXPECT_EQ(stops, 1);
  // The glide: about v / DecelerationRate beyond the release point.
  EXPECT_NEAR(last, 100 + 2000 / TAniCalculations::DecelerationRateNormal, 30);
  EXPECT_EQ(box.Content()->Position().X(), -static_cast<float>(last));
  EXPECT_EQ(box.HScrollBar()->Value(), static_cast<float>(last));

  // A fling past the end stops at the end.
  box.SetHorzPosition(2700);
  Fling(box, os_, 5, 40);
  Tick(400, 5);
  EXPECT_FALSE(ani.Inertia());
  EXPECT_EQ(ani.ViewportPosition().X, 2800);
}

TEST_F(ScrollBoxTest, SlowReleaseAndRestingFingerDoNotGlide) {
  StripBox box;
  TAniCalculations& ani = Glider(box, 3000);
  Fling(box, os_, 3, 0.02f);
  EXPECT_FALSE(ani.Inertia());
  EXPECT_FALSE(ani.Moving());
  double start = ani.ViewportPosition().X;
  // Fast moves, then a rest longer than the storage time before letting go.
  box.MouseDown(TMouseButton::mbLeft, 0, 150, 50);
  for (int i = 0; i < 5; ++i) {
    os_->AdvanceClock(10);
    box.MouseMove(ss::Left, 150 - 20.0f * static_cast<float>(i + 1), 50);
  }
  os_->AdvanceClock(400);
  box.MouseUp(TMouseButton::mbLeft, 0, 50, 50);
  EXPECT_FALSE(ani.Inertia());
  EXPECT_NEAR(ani.ViewportPosition().X, start + 100, 1e-9);
}

TEST_F(ScrollBoxTest, DragPastTheBoundsPullsAndSpringsBack) {
  StripBox box;
  TAniCalculations& ani = Glider(box, 1000);
  ani.BoundsAnimation = true;
  // Drag right by 300 at the start: the view would go to -300.
  box.MouseDown(TMouseButton::mbLeft, 0, 10, 50);
  os_->AdvanceClock(10);
  box.MouseMove(ss::Left, 310, 50);
  double pulled = ani.ViewportPosition().X;
  EXPECT_LT(pulled, 0);
  EXPECT_GT(pulled, -ani.Elasticity);
  os_->AdvanceClock(300);  // rest, then let go
  box.MouseUp(TMouseButton::mbLeft, 0, 310, 50);
  EXPECT_TRUE(ani.Inertia());
  Tick(200, 5);
  EXPECT_FALSE(ani.Inertia());
  EXPECT_EQ(ani.ViewportPosition().X, 0);
}

TEST_F(ScrollBoxTest, GlideEndsOnTheNearestRestingTarget) {
  StripBox box;
  TAniCalculations& ani = Glider(box, 3000);
  std::vector<TAniTarget> targets = ani.GetTargets();
  targets.push_back({TAniTargetType::Other, {500, 0}});
  targets.push_back({TAniTargetType::Other, {1500, 0}});
  ani.SetTargets(targets);
  EXPECT_EQ(ani.GetTargets().size(), 4u);
  // Left alone the glide would rest near 1125; the nearer target wins.
  Fling(box, os_, 5, 20);
  Tick(1000, 10);
  EXPECT_FALSE(ani.Inertia());
  EXPECT_EQ(ani.ViewportPosition().X, 1500);
  // A slow release rests on the target nearest to where it is.
  box.SetHorzPosition(700);
  Fling(box, os_, 2, 0.01f);
  Tick(200, 10);
  EXPECT_EQ(ani.ViewportPosition().X, 500);
}

TEST_F(ScrollBoxTest, UpdateCountHoldsBackChangeNotifications) {
  BaseBox box;
  Fill(box, 1000, 100);
  TAniCalculations& ani = box.AniCalculations();
  int changes = 0;
  ani.OnChanged = [&](TFmxObject*) { ++changes; };
  int saved = ani.UpdateCount();
  ani.SetUpdateCount(1);
  ani.SetViewportPosition({70, 0});
  ani.SetUpdateCount(saved);
  EXPECT_EQ(changes, 0);
  ani.BeginUpdate();
  ani.SetViewportPosition({80, 0});
  EXPECT_EQ(changes, 0);
  ani.EndUpdate();
  EXPECT_EQ(changes, 1);
}

TEST_F(ScrollBoxTest, TouchOnTheFormsWindowPansTheBoxAndOtherGesturesGoToTheBase) {
  TForm form;
  form.SetBounds(0, 0, 300, 150);
  StripBox box;
  box.SetParent(&form);
  Fill(box, 1000, 100);
  box.Position().SetPoint({20, 10});
  TAniCalculations& ani = box.AniCalculations();
  ani.TouchTracking = ttrack::Horizontal;
  std::vector<TPointF> touches;
  box.OnTouchMouseDown = [&](TFmxObject*, float x, float y) { touches.push_back({x, y}); };
  int otherGestures = 0;
  box.OnGesture = [&](TFmxObject*, const TGestureEventInfo& info, bool& handled) {
    otherGestures += info.GestureID;
    handled = true;
  };
  form.Show();
  HWnd hwnd = form.Handle();
  ASSERT_TRUE(os_->RegisterTouchWindow(hwnd, 0));
  auto touch = [&](int x, std::uint32_t flags) {
    TouchInput point;
    point.x = x * 100;
    point.y = 60 * 100;
    point.dwFlags = flags | win::TOUCHEVENTF_PRIMARY;
    os_->InjectTouch(hwnd, {point});
  };
  touch(170, win::TOUCHEVENTF_DOWN);
  touch(160, win::TOUCHEVENTF_MOVE);
  // The pan begins where it is recognised, in the box's own coordinates.
  EXPECT_TRUE(ani.Down());
  EXPECT_EQ(touches, (std::vector<TPointF>{{140, 50}}));
  touch(110, win::TOUCHEVENTF_MOVE);
  EXPECT_EQ(ani.ViewportPosition().X, 50);
  touch(110, win::TOUCHEVENTF_UP);
  EXPECT_FALSE(ani.Down());
  // Other gestures go to the base and are kept; the next pan clears them.
  TGestureEventInfo zoom;
  zoom.GestureID = 261;
  box.CMGesture(zoom);
  EXPECT_EQ(otherGestures, 261);
  EXPECT_EQ(box.GestureState().GestureID, 261);
  TGestureEventInfo pan;
  pan.GestureID = 260;
  pan.Flags = gf::End;
  box.CMGesture(pan);
  EXPECT_EQ(box.GestureState().GestureID, 0);
  EXPECT_TRUE(box.Touch().Has(TInteractiveGesture::Pan));
  EXPECT_TRUE(box.TouchEnabled());
}

TEST_F(ScrollBoxTest, MouseUpEventsWrapTheBaseAndSizeChangesAreTold) {
  StripBox box;
  Fill(box, 1000, 100);
  std::vector<std::string> calls;
  box.OnBeforeMouseUp = [&](TFmxObject*, TMouseButton, TShiftState, float, float) {
    calls.push_back(box.AniCalculations().Down() ? "before:down" : "before:up");
  };
  box.OnAfterMouseUp = [&](TFmxObject*, TMouseButton, TShiftState, float, float) {
    calls.push_back(box.AniCalculations().Down() ? "after:down" : "after:up");
  };
  box.OnAfterSizeChanged = [&](TFmxObject*, TSizeF size) {
    calls.push_back("size " + std::to_string(static_cast<int>(size.cx)));
  };
  box.MouseDown(TMouseButton::mbLeft, 0, 10, 10);
  box.MouseUp(TMouseButton::mbLeft, 0, 10, 10);
  box.SetWidth(300);
  EXPECT_EQ(calls, (std::vector<std::string>{"before:down", "after:up", "size 300"}));
  EXPECT_EQ(box.MaxHorzPosition(), 700);
}

TEST_F(ScrollBoxTest, SortAndTabListUseTheContent) {
  BaseBox box;
  box.SetBounds(0, 0, 200, 100);
  std::vector<TLayout*> children;
  for (int i = 0; i < 3; ++i) {
    auto* c = new TLayout(&box);
    c->Tag = 3 - i;
    c->TabOrder = i;
    c->SetParent(&box);
    children.push_back(c);
  }
  box.Sort([](TFmxObject* a, TFmxObject* b) { return a->Tag < b->Tag; });
  EXPECT_EQ(box.Content()->Children(0), children[2]);
  EXPECT_EQ(box.Content()->Children(2), children[0]);
  std::vector<TControl*> tabs = box.GetTabList();
  ASSERT_EQ(tabs.size(), 3u);
  EXPECT_EQ(tabs[0], children[0]);
}

TEST_F(ScrollBoxTest, StoredLayoutDropsLegacyProperties) {
  StripBox::RegisterClass();
  const char* text = R"(object F: TFrame
  Width = 300
  object Box: TScrollBox
    UseSmallScrollBars = True
    MouseTracking = False
    ShowScrollBars = False
    Size.Width = 120
    Size.Height = 40
    object Inner: TLayout
      Size.Width = 500
      Size.Height = 40
    end
  end
end
)";
  TFrame frame(nullptr, text);
  auto* box = FindComponentAs<StripBox>(&frame, u"Box");
  ASSERT_NE(box, nullptr);
  EXPECT_FALSE(box->ShowScrollBars());
  auto* inner = FindComponentAs<TLayout>(&frame, u"Inner");
  EXPECT_EQ(inner->Parent(), box->Content());
  box->PerfectRefresh();
  EXPECT_EQ(box->MaxHorzPosition(), 380);
  TComponentRegistry::UnregisterClass("TScrollBox");
}

class TFixedBehaviour : public TInterfacedObject<IFMXSystemInformationService> {
 public:
  TScrollingBehaviours GetScrollingBehaviour() override { return sbh::Animation | sbh::Bounces; }
};

TEST_F(ScrollBoxTest, ScrollingBehaviourComesFromStyleThenPlatform) {
  TForm form;
  {
    BaseBox box;
    EXPECT_EQ(box.GetScrollingBehaviours(), 0u);
    EXPECT_FALSE(box.AniCalculations().Animation);
    EXPECT_EQ(box.AniCalculations().TouchTracking, 0u);
  }
  TPlatformServices::Current().AddPlatformService(
      ComPtr<IFMXSystemInformationService>(MakeCom<TFixedBehaviour>()));
  StripBox box;
  EXPECT_EQ(box.GetScrollingBehaviours(), sbh::Animation | sbh::Bounces);
  EXPECT_TRUE(box.AniCalculations().Animation);
  EXPECT_TRUE(box.AniCalculations().BoundsAnimation);
  SetStyleDescriptionTargetFunc(
      [](const TFmxObject*) { return std::u16string(u"Win [METROPOLISUI] Modern"); });
  // Without a scene the style description does not count.
  EXPECT_EQ(box.GetScrollingBehaviours(), sbh::Animation | sbh::Bounces);
  box.SetParent(&form);
  EXPECT_EQ(box.GetScrollingBehaviours(), sbh::TouchTracking);
  box.SetParent(nullptr);
  SetStyleDescriptionTargetFunc(nullptr);
}

// ---- input source

struct TInputProbe {
  static inline std::vector<bool> Answers;
  static LResult QX_STDCALL Proc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
    if (msg == win::WM_LBUTTONDOWN) Answers.push_back(IsTouchInput());
    return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
  }
};

TEST_F(ScrollBoxTest, TouchInputFromSourceOrExtraInfo) {
  EXPECT_EQ(InputSourceFromExtraInfo(0), kInputSourceMouse);
  EXPECT_EQ(InputSourceFromExtraInfo(static_cast<LParam>(0xFF515780u)), kInputSourceTouch);
  EXPECT_EQ(InputSourceFromExtraInfo(static_cast<LParam>(0xFF51578Fu)), kInputSourceTouch);
  EXPECT_EQ(InputSourceFromExtraInfo(static_cast<LParam>(0xFF515700u)), kInputSourcePen);
  EXPECT_EQ(InputSourceFromExtraInfo(static_cast<LParam>(0xFF515701u)), kInputSourcePen);
  EXPECT_EQ(InputSourceFromExtraInfo(static_cast<LParam>(0x12345680u)), kInputSourceMouse);

  os_->RegisterClassW(u"InputProbe", &TInputProbe::Proc);
  HWnd window = os_->CreateWindowExW(0, u"InputProbe", u"", win::WS_POPUP | win::WS_VISIBLE, 0, 0, 100, 100,
                                     nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  TInputProbe::Answers.clear();
  auto press = [&](LParam extra) {
    os_->InjectMouse(window, win::WM_LBUTTONDOWN, 5, 5, win::MK_LBUTTON, extra);
    os_->InjectMouse(window, win::WM_LBUTTONUP, 5, 5, 0, extra);
  };
  const auto touch = static_cast<LParam>(0xFF515780u);
  const auto pen = static_cast<LParam>(0xFF515700u);
  // With the input source: a finger's press, made by the system from touch points.
  TouchInput point;
  point.x = 500;
  point.y = 500;
  point.dwFlags = win::TOUCHEVENTF_DOWN | win::TOUCHEVENTF_PRIMARY;
  os_->InjectTouch(window, {point});
  press(0);
  // Without it: the extra info decides, on 6.1 and later only.
  os_->SetInputMessageSourceAvailable(false);
  press(0);
  press(touch);
  press(pen);
  os_->SetWin32Version(6, 0);
  press(touch);
  EXPECT_EQ(TInputProbe::Answers, (std::vector<bool>{true, false, false, true, false, false}));
  os_->DestroyWindow(window);
  os_->UnregisterClassW(u"InputProbe");
}

}  // namespace
}  // namespace qx
