// The live window's SDL events as the emulated window system delivers them, and as the
// recorder writes them down; no display needed.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "LiveInput.h"
#include "LiveRecorder.h"
#include "base/Text.h"
#include "platform/portable/ScopedPortableOs.h"
#include "text/JSONLibrary.h"

namespace qx::test {
namespace {

struct TSeen {
  std::uint32_t Msg = 0;
  WParam WParamValue = 0;
  TPoint Point{};
  LParam ExtraInfo = 0;
};

std::vector<TSeen>& Seen() {
  static std::vector<TSeen> seen;
  return seen;
}

LResult QX_STDCALL SeeingProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  TSeen seen{msg,
             wParam,
             {static_cast<std::int16_t>(lParam & 0xFFFF), static_cast<std::int16_t>((lParam >> 16) & 0xFFFF)},
             Platform().GetMessageExtraInfo()};
  if (msg == win::WM_TOUCH) {
    TouchInput input;
    Platform().GetTouchInputInfo(reinterpret_cast<HTouchInput>(lParam), 1, &input, sizeof input);
    seen.Point = {input.x, input.y};
  }
  if (msg == win::WM_TOUCH || (msg >= win::WM_MOUSEMOVE && msg <= win::WM_MOUSEWHEEL)) Seen().push_back(seen);
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

SDL_Event Motion(int x, int y, std::uint32_t which = 0) {
  SDL_Event event{};
  event.type = SDL_MOUSEMOTION;
  event.motion.which = which;
  event.motion.x = x;
  event.motion.y = y;
  return event;
}

SDL_Event Button(bool down, int x, int y, std::uint8_t button = SDL_BUTTON_LEFT) {
  SDL_Event event{};
  event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
  event.button.button = button;
  event.button.x = x;
  event.button.y = y;
  return event;
}

SDL_Event Wheel(int x, int y, int notches, bool flipped = false) {
  SDL_Event event{};
  event.type = SDL_MOUSEWHEEL;
  event.wheel.y = notches;
  event.wheel.mouseX = x;
  event.wheel.mouseY = y;
  event.wheel.direction = flipped ? SDL_MOUSEWHEEL_FLIPPED : SDL_MOUSEWHEEL_NORMAL;
  return event;
}

SDL_Event Finger(std::uint32_t type, SDL_FingerID id, float x, float y) {
  SDL_Event event{};
  event.type = type;
  event.tfinger.fingerId = id;
  event.tfinger.x = x;
  event.tfinger.y = y;
  return event;
}

// The host window 500 by 200 at screen point (40, 30), the same size as the SDL window.
class LiveInputTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Seen().clear();
    Platform().RegisterClassW(u"QxLiveSeeing", &SeeingProc);
    window_ = Platform().CreateWindowExW(0, u"QxLiveSeeing", u"", win::WS_POPUP | win::WS_VISIBLE, 40, 30,
                                         500, 200, nullptr, nullptr);
    input_ = std::make_unique<TLiveInput>(window_, window_, 500, 200);
  }
  void TearDown() override { Seen().clear(); }

  // Maps and plays every event; answers the steps they stood for.
  std::vector<TLiveStep> Feed(const std::vector<SDL_Event>& events) {
    std::vector<TLiveStep> steps;
    for (const SDL_Event& event : events)
      if (auto step = input_->Map(event)) {
        input_->Apply(*step);
        steps.push_back(*step);
      }
    return steps;
  }

  TScopedPortableOs os_;
  HWnd window_ = nullptr;
  std::unique_ptr<TLiveInput> input_;
};

TEST_F(LiveInputTest, TheMouseReachesTheWindowAtItsOwnPixelsWithTheButtonState) {
  Feed({Motion(10, 20), Button(true, 12, 22), Motion(30, 22), Button(false, 31, 23),
        Button(true, 5, 5, SDL_BUTTON_RIGHT), Motion(99, 99, SDL_TOUCH_MOUSEID)});
  ASSERT_EQ(Seen().size(), 4u);
  EXPECT_EQ(Seen()[0].Msg, win::WM_MOUSEMOVE);
  EXPECT_EQ(Seen()[0].Point, (TPoint{10, 20}));
  EXPECT_EQ(Seen()[1].Msg, win::WM_LBUTTONDOWN);
  EXPECT_EQ(Seen()[1].Point, (TPoint{12, 22}));
  EXPECT_EQ(Seen()[2].Msg, win::WM_MOUSEMOVE);
  EXPECT_EQ(Seen()[2].WParamValue & win::MK_LBUTTON, win::MK_LBUTTON) << "a move with the button held drags";
  EXPECT_EQ(Seen()[3].Msg, win::WM_LBUTTONUP);
  EXPECT_EQ(Seen()[3].Point, (TPoint{31, 23}));
}

TEST_F(LiveInputTest, AWheelTurnIsNotchesOfOneHundredTwentyAtTheScreenPoint) {
  Feed({Wheel(100, 50, 2), Wheel(100, 50, 1, true)});
  ASSERT_EQ(Seen().size(), 2u);
  EXPECT_EQ(Seen()[0].Msg, win::WM_MOUSEWHEEL);
  EXPECT_EQ(static_cast<std::int16_t>((Seen()[0].WParamValue >> 16) & 0xFFFF), 240);
  EXPECT_EQ(Seen()[0].Point, (TPoint{140, 80})) << "the wheel's point is a screen point";
  EXPECT_EQ(static_cast<std::int16_t>((Seen()[1].WParamValue >> 16) & 0xFFFF), -120)
      << "a flipped wheel turns back";
}

TEST_F(LiveInputTest, TheFirstFingerMakesTouchAndTouchMadeMouseMessagesOthersAreIgnored) {
  Platform().RegisterTouchWindow(window_, 0);
  Feed({Finger(SDL_FINGERDOWN, 7, 0.5f, 0.25f), Finger(SDL_FINGERDOWN, 8, 0.1f, 0.1f),
        Finger(SDL_FINGERMOTION, 8, 0.2f, 0.2f), Finger(SDL_FINGERMOTION, 7, 0.6f, 0.25f),
        Finger(SDL_FINGERUP, 7, 0.6f, 0.25f)});
  std::vector<std::uint32_t> messages;
  for (const TSeen& seen : Seen()) messages.push_back(seen.Msg);
  EXPECT_EQ(messages, (std::vector<std::uint32_t>{win::WM_TOUCH, win::WM_LBUTTONDOWN, win::WM_TOUCH,
                                                  win::WM_MOUSEMOVE, win::WM_TOUCH, win::WM_LBUTTONUP}));
  ASSERT_EQ(Seen().size(), 6u);
  EXPECT_EQ(Seen()[0].Point, (TPoint{(40 + 250) * 100, (30 + 50) * 100}))
      << "touch points: hundredths of screen pixels";
  EXPECT_EQ(Seen()[1].Point, (TPoint{250, 50}));
  EXPECT_EQ(Seen()[1].ExtraInfo, static_cast<LParam>(win::MI_WP_TOUCH));
  EXPECT_EQ(Seen()[2].Point, (TPoint{(40 + 300) * 100, (30 + 50) * 100}));
}

TEST_F(LiveInputTest, TheRecorderWritesWaitsBetweenStepsAndOneMovePerMoment) {
  TLiveRecorder recorder("a \"drag\"");
  TLiveStep prepare;
  prepare.Kind = TLiveStepKind::PrepareHost;
  recorder.Start(1000, {prepare});
  const auto steps = Feed({Motion(10, 20), Motion(11, 21), Motion(12, 22)});
  recorder.Add(steps[0], 1016);
  recorder.Add(steps[1], 1016);
  recorder.Add(steps[2], 1032);
  for (const auto& step :
       Feed({Button(true, 12, 22), Wheel(12, 22, -1), Finger(SDL_FINGERDOWN, 1, 0.5f, 0.5f)}))
    recorder.Add(step, 1032);
  TLiveStep select;
  select.Kind = TLiveStepKind::Select;
  select.Page = 4;
  recorder.Add(select, 1100);
  recorder.Stop(1200);
  const std::string expected = R"({
  "description": "a \"drag\"",
  "input-ms": 0,
  "steps": [
    {"do": "prepare-host"},
    {"do": "wait", "ms": 16},
    {"do": "move", "x": 11, "y": 21},
    {"do": "wait", "ms": 16},
    {"do": "move", "x": 12, "y": 22},
    {"do": "press", "x": 12, "y": 22},
    {"do": "wheel", "x": 12, "y": 22, "notches": -1},
    {"do": "touch-down", "x": 250, "y": 100},
    {"do": "wait", "ms": 68},
    {"do": "select", "page": 4},
    {"do": "wait", "ms": 100}
  ]
}
)";
  EXPECT_EQ(recorder.Text(), expected);

  ComPtr<IJSONValue> value;
  std::u16string error;
  ASSERT_TRUE(TJSONParser::ParseJSONText(FromUtf8(recorder.Text()), error, value));
  ComPtr<IJSONObject> file = value->AsObject();
  ASSERT_TRUE(file);
  EXPECT_EQ(file->GetCount(), 3);
  EXPECT_EQ(file->GetString(u"description"), u"a \"drag\"");
  ComPtr<IJSONArray> list = file->GetArray(u"steps");
  ASSERT_TRUE(list);
  ASSERT_EQ(list->GetCount(), 11);
  ComPtr<IJSONObject> wheel = list->GetItem(6)->AsObject();
  EXPECT_EQ(wheel->GetString(u"do"), u"wheel");
  EXPECT_EQ(wheel->GetInt(u"notches"), -1);
  EXPECT_EQ(list->GetItem(9)->AsObject()->GetInt(u"page"), 4);
}

}  // namespace
}  // namespace qx::test
