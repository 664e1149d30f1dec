#include <gtest/gtest.h>

#include <vector>

#include "tests/platform/TestWindows.h"

namespace qx::test {
namespace {

using namespace win;

using InputTest = PlatformTest;

std::vector<std::uint32_t> gMouseHookSeen;
bool gSwallowClicks = false;
LResult QX_STDCALL MouseHook(std::int32_t code, WParam wParam, LParam lParam) {
  const auto* info = reinterpret_cast<const MouseHookStruct*>(lParam);
  gMouseHookSeen.push_back(static_cast<std::uint32_t>(wParam));
  EXPECT_NE(info->hwnd, nullptr);
  if (gSwallowClicks && wParam == WM_LBUTTONDOWN) return 1;
  return Platform().CallNextHookEx(nullptr, code, wParam, lParam);
}

// Sends wheel input to the window under the cursor, like the strip's message hook.
LResult QX_STDCALL WheelRedirectHook(std::int32_t code, WParam wParam, LParam lParam) {
  auto* msg = reinterpret_cast<Msg*>(lParam);
  if (code == HC_ACTION && wParam == PM_REMOVE && msg->message == WM_MOUSEWHEEL) {
    HWnd under = Platform().WindowFromPoint(msg->pt);
    if (under != msg->hwnd) {
      Platform().SendMessageW(under, msg->message, msg->wParam, msg->lParam);
      msg->message = 0;
      msg->wParam = 0;
      msg->lParam = 0;
    }
  }
  return Platform().CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(InputTest, MouseGoesToTheWindowInItsClientCoordinatesCursorAndDoubleClickTime) {
  HWnd top = MakeWindow(WS_VISIBLE, nullptr, {100, 100, 400, 400});
  HWnd child = MakeWindow(WS_CHILD | WS_VISIBLE, top, {10, 20, 110, 120});
  Log().clear();
  Os().InjectMouse(child, WM_MOUSEMOVE, 5, 6, 0);
  ASSERT_EQ(Log().size(), 1u);
  EXPECT_EQ(Log()[0].hwnd, child);
  EXPECT_EQ(Log()[0].lParam, MakeLParam(5, 6));
  TPoint cursor;
  ASSERT_TRUE(P().GetCursorPos(&cursor));
  EXPECT_EQ(cursor, (TPoint{115, 126}));

  EXPECT_TRUE(P().SetCursorPos(40, 50));
  ASSERT_TRUE(P().GetCursorPos(&cursor));
  EXPECT_EQ(cursor, (TPoint{40, 50}));
  EXPECT_FALSE(P().GetCursorPos(nullptr));
  EXPECT_EQ(P().GetDoubleClickTime(), 500u);
  Os().SetDoubleClickTime(300);
  EXPECT_EQ(P().GetDoubleClickTime(), 300u);
}

TEST_F(InputTest, CaptureRoutesMouseInputToTheCapturingWindowUntilReleasedOrDestroyed) {
  HWnd top = MakeWindow(WS_VISIBLE, nullptr, {0, 0, 400, 400});
  HWnd left = MakeWindow(WS_CHILD | WS_VISIBLE, top, {0, 0, 100, 100});
  HWnd right = MakeWindow(WS_CHILD | WS_VISIBLE, top, {200, 0, 300, 100});
  EXPECT_EQ(P().SetCapture(left), nullptr);
  EXPECT_EQ(P().GetCapture(), left);
  Log().clear();
  Os().InjectMouse(right, WM_MOUSEMOVE, 10, 10, MK_LBUTTON);
  ASSERT_EQ(Log().size(), 1u);
  EXPECT_EQ(Log()[0].hwnd, left);
  EXPECT_EQ(Log()[0].lParam, MakeLParam(210, 10));  // in the capturing window's coordinates
  EXPECT_EQ(Log()[0].wParam, static_cast<WParam>(MK_LBUTTON));
  // Taking the capture away tells the loser.
  EXPECT_EQ(P().SetCapture(right), left);
  EXPECT_EQ(Messages(left).back(), WM_CAPTURECHANGED);
  EXPECT_TRUE(P().ReleaseCapture());
  EXPECT_EQ(Messages(right).back(), WM_CAPTURECHANGED);
  EXPECT_EQ(P().GetCapture(), nullptr);
  Log().clear();
  Os().InjectMouse(right, WM_MOUSEMOVE, 1, 1, 0);
  EXPECT_EQ(Log()[0].hwnd, right);
  // Destroying the capturing window releases the capture.
  P().SetCapture(left);
  P().DestroyWindow(left);
  EXPECT_EQ(P().GetCapture(), nullptr);
  Log().clear();
  Os().InjectMouse(right, WM_LBUTTONDOWN, 1, 1, MK_LBUTTON);
  EXPECT_EQ(Messages(right), (std::vector<std::uint32_t>{WM_LBUTTONDOWN}));
}

TEST_F(InputTest, ButtonsAndKeysSetTheKeyStateAndKeysGoToTheFocus) {
  HWnd hwnd = MakeWindow(WS_VISIBLE);
  EXPECT_EQ(P().GetKeyState(VK_LBUTTON), 0);
  Os().InjectMouse(hwnd, WM_LBUTTONDOWN, 1, 1, MK_LBUTTON);
  EXPECT_LT(P().GetKeyState(VK_LBUTTON), 0);
  Os().InjectMouse(hwnd, WM_RBUTTONDOWN, 1, 1, MK_RBUTTON);
  EXPECT_LT(P().GetKeyState(VK_RBUTTON), 0);
  Os().InjectMouse(hwnd, WM_LBUTTONUP, 1, 1, 0);
  EXPECT_EQ(P().GetKeyState(VK_LBUTTON), 0);
  Os().InjectMouse(hwnd, WM_MBUTTONDOWN, 1, 1, 0);
  Os().InjectMouse(hwnd, WM_MBUTTONUP, 1, 1, 0);
  EXPECT_EQ(P().GetKeyState(VK_MBUTTON), 0);

  Os().SetKeyState(VK_CONTROL, true);
  EXPECT_LT(P().GetKeyState(VK_CONTROL), 0);
  Os().SetKeyState(VK_CONTROL, false, true);
  EXPECT_EQ(P().GetKeyState(VK_CONTROL), 1);
  EXPECT_EQ(P().GetKeyState(-1), 0);
  EXPECT_EQ(P().GetKeyState(300), 0);
  EXPECT_EQ(Os().InjectKey(nullptr, WM_KEYDOWN, VK_ESCAPE), 0);  // nobody has the focus
  P().SetFocus(hwnd);
  Log().clear();
  Os().InjectKey(nullptr, WM_KEYDOWN, VK_SHIFT);
  EXPECT_LT(P().GetKeyState(VK_SHIFT), 0);
  Os().InjectKey(nullptr, WM_KEYDOWN, 'Q');
  Os().InjectKey(nullptr, WM_KEYUP, 'Q');
  Os().InjectKey(nullptr, WM_KEYUP, VK_SHIFT);
  EXPECT_GE(P().GetKeyState(VK_SHIFT), 0);
  Os().ProcessMessages();
  EXPECT_EQ(MessagesExcept(hwnd, {WM_PAINT}),
            (std::vector<std::uint32_t>{WM_KEYDOWN, WM_KEYDOWN, WM_KEYUP, WM_KEYUP, WM_CHAR}));
  // Translated while Shift was down.
  for (const TRecord& r : Log()) {
    if (r.msg == WM_CHAR) {
      EXPECT_EQ(r.wParam, static_cast<WParam>(u'Q'));
    }
  }
}

TEST_F(InputTest, FocusChangesAreAnnounced) {
  HWnd a = MakeWindow();
  HWnd b = MakeWindow();
  Log().clear();
  EXPECT_EQ(P().SetFocus(a), nullptr);
  EXPECT_EQ(P().SetFocus(b), a);
  EXPECT_EQ(P().GetFocus(), b);
  EXPECT_EQ(Messages(a), (std::vector<std::uint32_t>{WM_SETFOCUS, WM_KILLFOCUS}));
  EXPECT_EQ(Messages(b), (std::vector<std::uint32_t>{WM_SETFOCUS}));
  P().DestroyWindow(b);
  EXPECT_EQ(P().GetFocus(), nullptr);
}

TEST_F(InputTest, MouseHookSeesInputFirstAndCanSwallowIt) {
  HWnd hwnd = MakeWindow(WS_VISIBLE);
  gMouseHookSeen.clear();
  gSwallowClicks = true;
  HHook hook = P().SetWindowsHookExW(WH_MOUSE, &MouseHook, nullptr, P().GetCurrentThreadId());
  Log().clear();
  Os().InjectMouse(hwnd, WM_MOUSEMOVE, 1, 1, 0);
  EXPECT_EQ(Os().InjectMouse(hwnd, WM_LBUTTONDOWN, 1, 1, MK_LBUTTON), 0);
  EXPECT_EQ(gMouseHookSeen, (std::vector<std::uint32_t>{WM_MOUSEMOVE, WM_LBUTTONDOWN}));
  EXPECT_EQ(Messages(hwnd), (std::vector<std::uint32_t>{WM_MOUSEMOVE}));
  P().UnhookWindowsHookEx(hook);
  gSwallowClicks = false;
}

TEST_F(InputTest, WheelCarriesScreenCoordinatesCanBeRedirectedAndClimbsToTheParentUnanswered) {
  HWnd focus = MakeWindow(WS_VISIBLE, nullptr, {0, 0, 100, 100});
  HWnd strip = MakeWindow(WS_VISIBLE, nullptr, {300, 300, 500, 400});
  Log().clear();
  const WParam delta = MakeWParam(0, -WHEEL_DELTA);
  Os().InjectMouse(focus, WM_MOUSEWHEEL, 5, 5, delta);
  ASSERT_EQ(Messages(focus), (std::vector<std::uint32_t>{WM_MOUSEWHEEL}));
  EXPECT_EQ(Log()[0].lParam, MakeLParam(5, 5));
  EXPECT_EQ(static_cast<std::int16_t>(HiWord(Log()[0].wParam)), -WHEEL_DELTA);
  HHook hook = P().SetWindowsHookExW(WH_GETMESSAGE, &WheelRedirectHook, nullptr, 0);
  Log().clear();
  // The wheel turns over the strip while the other window has it.
  Os().InjectMouse(focus, WM_MOUSEWHEEL, 350, 320, delta);
  EXPECT_EQ(MessagesExcept(strip, {WM_NCHITTEST}), (std::vector<std::uint32_t>{WM_MOUSEWHEEL}));
  EXPECT_EQ(Messages(focus), (std::vector<std::uint32_t>{WM_NULL}));
  P().UnhookWindowsHookEx(hook);

  HWnd top = MakeWindow(WS_VISIBLE, nullptr, {0, 0, 100, 100});
  HWnd child = MakeWindow(WS_CHILD | WS_VISIBLE, top, {0, 0, 50, 50});
  Log().clear();
  Os().InjectMouse(child, WM_MOUSEWHEEL, 1, 1, MakeWParam(0, WHEEL_DELTA));
  EXPECT_EQ(Messages(child), (std::vector<std::uint32_t>{WM_MOUSEWHEEL}));
  EXPECT_EQ(Messages(top), (std::vector<std::uint32_t>{WM_MOUSEWHEEL}));
}

TEST_F(InputTest, ExtraInfoTellsTouchFromMouse) {
  HWnd hwnd = MakeWindow(WS_VISIBLE);
  Os().InjectMouse(hwnd, WM_LBUTTONDOWN, 1, 1, MK_LBUTTON, static_cast<LParam>(0xFF515780u));
  EXPECT_EQ(static_cast<std::uint32_t>(P().GetMessageExtraInfo()) & ~0x7Fu, 0xFF515780u);
  Os().InjectMouse(hwnd, WM_LBUTTONUP, 1, 1, 0);
  EXPECT_EQ(P().GetMessageExtraInfo(), 0);
  // A posted message carries none.
  Os().InjectMouse(hwnd, WM_MOUSEMOVE, 1, 1, 0, 5);
  P().PostMessageW(hwnd, WM_USER, 0, 0);
  Os().ProcessMessages();
  EXPECT_EQ(P().GetMessageExtraInfo(), 0);
}

TouchInput Point100(std::int32_t x, std::int32_t y, std::uint32_t flags, std::uint32_t id = 1) {
  TouchInput t;
  t.x = x * 100;
  t.y = y * 100;
  t.dwFlags = flags;
  t.dwID = id;
  return t;
}

std::vector<TouchInput> gTouchRead;
bool gTouchReadOk = false;
LResult QX_STDCALL TouchProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  if (msg == WM_TOUCH) {
    gTouchRead.assign(LoWord(wParam), TouchInput{});
    gTouchReadOk =
        Platform().GetTouchInputInfo(reinterpret_cast<HTouchInput>(lParam), LoWord(wParam), gTouchRead.data(),
                                     static_cast<std::int32_t>(sizeof(TouchInput)));
    InputMessageSource source;
    EXPECT_TRUE(Platform().GetCurrentInputMessageSource(&source));
    EXPECT_EQ(source.deviceType, IMDT_TOUCH);
  }
  Log().push_back(TRecord{hwnd, msg, wParam, lParam, 0});
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

TEST_F(InputTest, TouchWindowsGetTouchMessagesWithReadablePoints) {
  P().RegisterClassW(u"Touch", &TouchProc);
  HWnd hwnd = P().CreateWindowExW(0, u"Touch", u"", WS_VISIBLE, 10, 10, 100, 100, nullptr, nullptr);
  std::uint32_t flags = 0;
  EXPECT_FALSE(P().IsTouchWindow(hwnd, &flags));
  ASSERT_TRUE(P().RegisterTouchWindow(hwnd, 3));
  EXPECT_TRUE(P().IsTouchWindow(hwnd, &flags));
  EXPECT_EQ(flags, 3u);
  Log().clear();
  gTouchRead.clear();
  Os().InjectTouch(hwnd, {Point100(20, 30, TOUCHEVENTF_DOWN | TOUCHEVENTF_PRIMARY, 1),
                          Point100(40, 50, TOUCHEVENTF_DOWN, 2)});
  EXPECT_TRUE(gTouchReadOk);
  ASSERT_EQ(gTouchRead.size(), 2u);
  EXPECT_EQ(gTouchRead[0].x, 2000);
  EXPECT_EQ(gTouchRead[1].dwID, 2u);
  ASSERT_EQ(Messages(hwnd), (std::vector<std::uint32_t>{WM_TOUCH}));
  // The default procedure closed the handle.
  TouchInput again;
  EXPECT_FALSE(P().GetTouchInputInfo(reinterpret_cast<HTouchInput>(Log()[0].lParam), 1, &again,
                                     static_cast<std::int32_t>(sizeof(TouchInput))));
  EXPECT_FALSE(P().CloseTouchInputHandle(reinterpret_cast<HTouchInput>(Log()[0].lParam)));
  EXPECT_TRUE(P().UnregisterTouchWindow(hwnd));
  EXPECT_FALSE(P().IsTouchWindow(hwnd, nullptr));
}

TEST_F(InputTest, TouchOnAnOrdinaryWindowBecomesMouseInputMarkedAsTouch) {
  HWnd hwnd = MakeWindow(WS_VISIBLE, nullptr, {10, 10, 110, 110});
  Log().clear();
  Os().InjectTouch(hwnd, {Point100(30, 40, TOUCHEVENTF_DOWN | TOUCHEVENTF_PRIMARY)});
  EXPECT_EQ(static_cast<std::uint32_t>(P().GetMessageExtraInfo()) & ~0x7Fu, MI_WP_TOUCH);
  InputMessageSource source;
  ASSERT_TRUE(P().GetCurrentInputMessageSource(&source));
  EXPECT_EQ(source.deviceType, IMDT_TOUCH);
  Os().InjectTouch(hwnd, {Point100(35, 40, TOUCHEVENTF_MOVE | TOUCHEVENTF_PRIMARY)});
  Os().InjectTouch(hwnd, {Point100(35, 40, TOUCHEVENTF_UP | TOUCHEVENTF_PRIMARY)});
  EXPECT_EQ(Messages(hwnd), (std::vector<std::uint32_t>{WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP}));
  EXPECT_EQ(Log()[0].lParam, MakeLParam(20, 30));
  Os().InjectMouse(hwnd, WM_MOUSEMOVE, 1, 1, 0);
  ASSERT_TRUE(P().GetCurrentInputMessageSource(&source));
  EXPECT_EQ(source.deviceType, IMDT_MOUSE);
  Os().InjectMouse(hwnd, WM_MOUSEMOVE, 1, 1, 0, static_cast<LParam>(MI_WP_SIGNATURE));
  ASSERT_TRUE(P().GetCurrentInputMessageSource(&source));
  EXPECT_EQ(source.deviceType, IMDT_PEN);
  P().PostMessageW(hwnd, WM_USER, 0, 0);
  Os().ProcessMessages();
  ASSERT_TRUE(P().GetCurrentInputMessageSource(&source));
  EXPECT_EQ(source.deviceType, IMDT_UNAVAILABLE);
  // Older systems lack the call.
  Os().SetInputMessageSourceAvailable(false);
  EXPECT_FALSE(P().GetCurrentInputMessageSource(&source));
  EXPECT_EQ(Os().InjectTouch(hwnd, {}), 0);
}

TEST_F(InputTest, MouseLeaveIsPostedWhenTheMouseGoesElsewhere) {
  HWnd a = MakeWindow(WS_VISIBLE, nullptr, {0, 0, 100, 100});
  HWnd b = MakeWindow(WS_VISIBLE, nullptr, {200, 0, 300, 100});
  Os().InjectMouseAtScreen(WM_MOUSEMOVE, {10, 10}, 0);
  TrackMouseEventInfo track;
  track.dwFlags = TME_LEAVE;
  track.hwndTrack = a;
  ASSERT_TRUE(P().TrackMouseEvent(&track));
  Os().InjectMouseAtScreen(WM_MOUSEMOVE, {20, 10}, 0);
  Os().ProcessMessages();
  Log().clear();
  Os().InjectMouseAtScreen(WM_MOUSEMOVE, {250, 10}, 0);
  Os().ProcessMessages();
  EXPECT_EQ(MessagesExcept(a, {WM_NCHITTEST}), (std::vector<std::uint32_t>{WM_MOUSELEAVE}));
  EXPECT_EQ(MessagesExcept(b, {WM_NCHITTEST}), (std::vector<std::uint32_t>{WM_MOUSEMOVE}));
  for (const TRecord& r : Log()) {
    if (r.hwnd == b && r.msg == WM_MOUSEMOVE) {
      EXPECT_EQ(r.lParam, MakeLParam(50, 10));
    }
  }
  // Tracking ends with the leave; leaving to no window at all also tells.
  track.hwndTrack = b;
  ASSERT_TRUE(P().TrackMouseEvent(&track));
  Log().clear();
  EXPECT_EQ(Os().InjectMouseAtScreen(WM_MOUSEMOVE, {250, 500}, 0), 0);
  Os().ProcessMessages();
  EXPECT_EQ(Messages(b), (std::vector<std::uint32_t>{WM_MOUSELEAVE}));
  TPoint cursor;
  P().GetCursorPos(&cursor);
  EXPECT_EQ(cursor, (TPoint{250, 500}));
  // Asking while the cursor is outside gives the leave at once; a cancel stops it.
  ASSERT_TRUE(P().TrackMouseEvent(&track));
  Os().ProcessMessages();
  EXPECT_EQ(Messages(b).size(), 2u);
  Os().InjectMouseAtScreen(WM_MOUSEMOVE, {250, 10}, 0);
  ASSERT_TRUE(P().TrackMouseEvent(&track));
  track.dwFlags = TME_LEAVE | TME_CANCEL;
  ASSERT_TRUE(P().TrackMouseEvent(&track));
  Log().clear();
  Os().InjectMouseAtScreen(WM_MOUSEMOVE, {10, 10}, 0);
  Os().ProcessMessages();
  EXPECT_TRUE(MessagesExcept(b, {WM_NCHITTEST}).empty());
  track.cbSize = 3;
  EXPECT_FALSE(P().TrackMouseEvent(&track));
}

TEST_F(InputTest, ScreenInjectionHonoursCaptureAndTransparency) {
  HWnd a = MakeWindow(WS_VISIBLE, nullptr, {0, 0, 100, 100});
  HWnd b = MakeWindow(WS_VISIBLE, nullptr, {200, 0, 300, 100});
  P().SetCapture(a);
  Log().clear();
  Os().InjectMouseAtScreen(WM_LBUTTONUP, {250, 10}, 0);
  EXPECT_EQ(Messages(a), (std::vector<std::uint32_t>{WM_LBUTTONUP}));
  EXPECT_EQ(Log().back().lParam, MakeLParam(250, 10));
  EXPECT_TRUE(Messages(b).empty());
}

}  // namespace
}  // namespace qx::test
