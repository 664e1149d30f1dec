#include <gtest/gtest.h>

#include <vector>

#include "tests/platform/TestWindows.h"

namespace qx::test {
namespace {

using namespace win;

using MessageTest = PlatformTest;

std::vector<std::uint32_t> gHookSeen;
HHook gHookA = nullptr;
HHook gHookB = nullptr;

LResult QX_STDCALL CallWndHook(std::int32_t code, WParam wParam, LParam lParam) {
  gHookSeen.push_back(reinterpret_cast<const CwpStruct*>(lParam)->message);
  return Platform().CallNextHookEx(gHookA, code, wParam, lParam);
}

// Blanks wheel messages, the way a hook takes a message away from its window.
LResult QX_STDCALL BlankingGetMessageHook(std::int32_t code, WParam wParam, LParam lParam) {
  auto* msg = reinterpret_cast<Msg*>(lParam);
  gHookSeen.push_back(msg->message);
  if (msg->message == WM_USER + 5) {
    msg->message = 0;
    msg->wParam = 0;
    msg->lParam = 0;
  }
  return Platform().CallNextHookEx(gHookA, code, wParam, lParam);
}

LResult QX_STDCALL ChainFirst(std::int32_t code, WParam wParam, LParam lParam) {
  gHookSeen.push_back(1);
  return Platform().CallNextHookEx(gHookB, code, wParam, lParam) + 10;
}

LResult QX_STDCALL ChainSecond(std::int32_t code, WParam wParam, LParam lParam) {
  gHookSeen.push_back(2);
  return Platform().CallNextHookEx(gHookA, code, wParam, lParam) + 1;
}

LResult QX_STDCALL RepostProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  Log().push_back(TRecord{hwnd, msg, wParam, lParam, 0});
  if (msg == WM_USER && wParam < 3) Platform().PostMessageW(hwnd, WM_USER, wParam + 1, 0);
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

TEST_F(MessageTest, PostedMessagesArriveInOrderThroughThePump) {
  HWnd a = MakeWindow();
  HWnd b = MakeWindow();
  Log().clear();
  EXPECT_TRUE(P().PostMessageW(a, WM_USER + 1, 10, 11));
  EXPECT_TRUE(P().PostMessageW(b, WM_USER + 2, 20, 21));
  EXPECT_TRUE(P().PostMessageW(a, 0x8065, 0, 99));
  EXPECT_TRUE(Log().empty());  // posting never calls the procedure
  EXPECT_EQ(Os().PendingMessageCount(), 3u);
  EXPECT_EQ(Os().ProcessMessages(), 3u);
  ASSERT_EQ(Log().size(), 3u);
  EXPECT_EQ(Log()[0].hwnd, a);
  EXPECT_EQ(Log()[0].msg, WM_USER + 1);
  EXPECT_EQ(Log()[0].wParam, 10u);
  EXPECT_EQ(Log()[0].lParam, 11);
  EXPECT_EQ(Log()[1].hwnd, b);
  EXPECT_EQ(Log()[2].msg, 0x8065u);
  EXPECT_EQ(Log()[2].lParam, 99);
  EXPECT_EQ(Os().PendingMessageCount(), 0u);
}

TEST_F(MessageTest, MessagesPostedWhileDispatchingAreDeliveredInTheSameDrain) {
  P().RegisterClassW(u"Repost", &RepostProc);
  HWnd hwnd = P().CreateWindowExW(0, u"Repost", u"", 0, 0, 0, 1, 1, nullptr, nullptr);
  Log().clear();
  P().PostMessageW(hwnd, WM_USER, 0, 0);
  Os().AdvanceClock(0);
  ASSERT_EQ(Log().size(), 4u);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(Log()[i].wParam, i);
}

TEST_F(MessageTest, DestroyingAWindowDropsItsPendingMessages) {
  HWnd doomed = MakeWindow();
  HWnd other = MakeWindow();
  P().PostMessageW(doomed, WM_USER, 1, 0);
  P().PostMessageW(other, WM_USER, 2, 0);
  P().PostMessageW(doomed, WM_USER, 3, 0);
  P().DestroyWindow(doomed);
  Log().clear();
  EXPECT_EQ(Os().PendingMessageCount(), 1u);
  EXPECT_EQ(Os().ProcessMessages(), 1u);
  ASSERT_EQ(Log().size(), 1u);
  EXPECT_EQ(Log()[0].hwnd, other);
  // A message dispatched by hand to the dead window goes nowhere.
  Msg stale{doomed, WM_USER, 0, 0, 0, {}};
  EXPECT_EQ(P().DispatchMessageW(&stale), 0);
  EXPECT_EQ(Log().size(), 1u);
}

TEST_F(MessageTest, PeekAndGetFollowTheFilters) {
  HWnd a = MakeWindow();
  HWnd b = MakeWindow();
  Msg msg;
  EXPECT_FALSE(P().PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
  P().PostMessageW(a, WM_USER + 1, 0, 0);
  P().PostMessageW(b, WM_USER + 2, 0, 0);
  P().PostMessageW(a, WM_USER + 3, 0, 0);
  ASSERT_TRUE(P().PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE));
  EXPECT_EQ(msg.message, WM_USER + 1);
  ASSERT_TRUE(P().PeekMessageW(&msg, b, 0, 0, PM_REMOVE));
  EXPECT_EQ(msg.message, WM_USER + 2);
  ASSERT_TRUE(P().PeekMessageW(&msg, nullptr, WM_USER + 3, WM_USER + 3, PM_REMOVE));
  EXPECT_EQ(msg.hwnd, a);
  EXPECT_EQ(P().GetMessageW(&msg, nullptr, 0, 0), 1);
  EXPECT_EQ(msg.message, WM_USER + 1);
  EXPECT_FALSE(P().PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
}

TEST_F(MessageTest, QuitEndsGetMessageAndStopsTheDrain) {
  HWnd hwnd = MakeWindow();
  P().PostMessageW(hwnd, WM_USER, 0, 0);
  P().PostQuitMessage(3);
  P().PostMessageW(hwnd, WM_USER + 1, 0, 0);
  Log().clear();
  EXPECT_EQ(Os().ProcessMessages(), 1u);
  EXPECT_EQ(Log().size(), 1u);
  Msg msg;
  EXPECT_EQ(P().GetMessageW(&msg, nullptr, 0, 0), 0);
  EXPECT_EQ(msg.message, WM_QUIT);
  EXPECT_EQ(msg.wParam, 3u);
  EXPECT_EQ(Os().ProcessMessages(), 1u);
}

TEST_F(MessageTest, ThreadMessagesHaveNoWindow) {
  EXPECT_TRUE(P().PostMessageW(nullptr, WM_USER + 9, 1, 2));
  EXPECT_TRUE(P().PostThreadMessageW(P().GetCurrentThreadId(), WM_USER + 10, 0, 0));
  EXPECT_FALSE(P().PostThreadMessageW(0xFFFFFFF0u, WM_USER, 0, 0));
  Msg msg;
  ASSERT_TRUE(P().PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(msg.hwnd, nullptr);
  EXPECT_EQ(msg.message, WM_USER + 9);
  EXPECT_EQ(P().DispatchMessageW(&msg), 0);
  ASSERT_TRUE(P().PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(msg.message, WM_USER + 10);
}

TEST_F(MessageTest, SendMessageCallsTheProcedureAtOnce) {
  P().RegisterClassW(u"Second", &SecondProc);
  HWnd hwnd = P().CreateWindowExW(0, u"Second", u"", 0, 0, 0, 1, 1, nullptr, nullptr);
  EXPECT_EQ(P().SendMessageW(hwnd, WM_USER, 0, 0), 1000);
  EXPECT_EQ(Os().PendingMessageCount(), 0u);
}

TEST_F(MessageTest, HooksSeeSentOrFetchedMessagesCanBlankThemAndChainNewestFirst) {
  HWnd hwnd = MakeWindow();
  gHookSeen.clear();
  gHookA = P().SetWindowsHookExW(WH_CALLWNDPROC, &CallWndHook, nullptr, P().GetCurrentThreadId());
  ASSERT_NE(gHookA, nullptr);
  P().SendMessageW(hwnd, WM_USER + 1, 0, 0);
  P().PostMessageW(hwnd, WM_USER + 2, 0, 0);
  Os().ProcessMessages();
  EXPECT_EQ(gHookSeen, (std::vector<std::uint32_t>{WM_USER + 1}));
  EXPECT_TRUE(P().UnhookWindowsHookEx(gHookA));
  EXPECT_FALSE(P().UnhookWindowsHookEx(gHookA));
  P().SendMessageW(hwnd, WM_USER + 3, 0, 0);
  EXPECT_EQ(gHookSeen.size(), 1u);

  gHookSeen.clear();
  gHookA = P().SetWindowsHookExW(WH_GETMESSAGE, &BlankingGetMessageHook, nullptr, 0);
  P().PostMessageW(hwnd, WM_USER + 4, 0, 0);
  P().PostMessageW(hwnd, WM_USER + 5, 0, 0);
  Log().clear();
  Os().ProcessMessages();
  EXPECT_EQ(gHookSeen, (std::vector<std::uint32_t>{WM_USER + 4, WM_USER + 5}));
  EXPECT_EQ(Messages(hwnd), (std::vector<std::uint32_t>{WM_USER + 4, WM_NULL}));
  P().UnhookWindowsHookEx(gHookA);

  gHookSeen.clear();
  gHookA = P().SetWindowsHookExW(WH_GETMESSAGE, &ChainSecond, nullptr, 0);
  gHookB = P().SetWindowsHookExW(WH_GETMESSAGE, &ChainFirst, nullptr, 0);
  P().PostMessageW(hwnd, WM_USER, 0, 0);
  Msg msg;
  ASSERT_TRUE(P().PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(gHookSeen, (std::vector<std::uint32_t>{1, 2}));
  EXPECT_EQ(P().CallNextHookEx(gHookB, HC_ACTION, 0, 0), 1);  // the next one, then the end of the chain
  EXPECT_EQ(P().CallNextHookEx(gHookA, HC_ACTION, 0, 0), 0);
  EXPECT_EQ(P().SetWindowsHookExW(99, &ChainFirst, nullptr, 0), nullptr);
  EXPECT_EQ(P().SetWindowsHookExW(WH_MOUSE, nullptr, nullptr, 0), nullptr);
}

TEST_F(MessageTest, TranslateMessageMakesCharacters) {
  HWnd hwnd = MakeWindow();
  Msg key{hwnd, WM_KEYDOWN, 'A', 0, 0, {}};
  EXPECT_TRUE(P().TranslateMessage(&key));
  Os().SetKeyState(VK_SHIFT, true);
  EXPECT_TRUE(P().TranslateMessage(&key));
  Msg up{hwnd, WM_KEYUP, 'A', 0, 0, {}};
  EXPECT_FALSE(P().TranslateMessage(&up));
  Msg arrow{hwnd, WM_KEYDOWN, static_cast<WParam>(VK_LEFT), 0, 0, {}};
  EXPECT_FALSE(P().TranslateMessage(&arrow));
  Log().clear();
  Os().ProcessMessages();
  ASSERT_EQ(Log().size(), 2u);
  EXPECT_EQ(Log()[0].msg, WM_CHAR);
  EXPECT_EQ(Log()[0].wParam, static_cast<WParam>(u'a'));
  EXPECT_EQ(Log()[1].wParam, static_cast<WParam>(u'A'));
}

TEST_F(MessageTest, InvalidatedWindowsGetOnePaint) {
  HWnd hwnd = MakeWindow(WS_VISIBLE);
  HWnd hidden = MakeWindow();
  Os().ProcessMessages();
  Log().clear();
  EXPECT_TRUE(P().InvalidateRect(hidden, nullptr, false));
  EXPECT_TRUE(P().UpdateWindow(hidden));
  EXPECT_TRUE(P().InvalidateRect(hwnd, nullptr, false));
  EXPECT_TRUE(P().InvalidateRect(hwnd, nullptr, false));
  P().PostMessageW(hwnd, WM_USER, 0, 0);
  Os().ProcessMessages();
  // Posted messages come before the paint.
  EXPECT_EQ(Messages(hwnd), (std::vector<std::uint32_t>{WM_USER, WM_PAINT}));
  Log().clear();
  P().InvalidateRect(hwnd, nullptr, false);
  EXPECT_TRUE(P().UpdateWindow(hwnd));
  EXPECT_TRUE(P().UpdateWindow(hwnd));
  EXPECT_EQ(Messages(hwnd), (std::vector<std::uint32_t>{WM_PAINT}));
  Os().ProcessMessages();
  EXPECT_EQ(Messages(hwnd).size(), 1u);
  // Hidden windows are not painted.
  EXPECT_TRUE(Messages(hidden).empty());
  P().ShowWindow(hidden, SW_SHOWNA);
  Os().ProcessMessages();
  EXPECT_EQ(MessagesExcept(hidden, {WM_SHOWWINDOW, WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED}),
            (std::vector<std::uint32_t>{WM_PAINT}));
}

TEST_F(MessageTest, CloseDestroysByDefault) {
  HWnd hwnd = MakeWindow();
  P().PostMessageW(hwnd, WM_CLOSE, 0, 0);
  Os().ProcessMessages();
  EXPECT_FALSE(P().IsWindow(hwnd));
}

}  // namespace
}  // namespace qx::test
