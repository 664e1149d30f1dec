#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

#include "tests/platform/TestWindows.h"

namespace qx::test {
namespace {

using namespace win;

using ThreadedMessages = PlatformTest;

TEST_F(ThreadedMessages, PostsFromManyThreadsArriveInPerThreadOrderWithNoneLost) {
  HWnd hwnd = MakeWindow();
  Log().clear();
  constexpr int kThreads = 4;
  constexpr int kPerThread = 2000;
  std::vector<std::thread> threads;
  std::atomic<int> failures{0};
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < kPerThread; ++i) {
        if (!Platform().PostMessageW(hwnd, WM_USER + static_cast<std::uint32_t>(t), static_cast<WParam>(i), 0)) {
          ++failures;
        }
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);
  EXPECT_EQ(Os().ProcessMessages(), static_cast<std::size_t>(kThreads * kPerThread));
  std::map<std::uint32_t, WParam> next;
  for (const TRecord& r : Log()) {
    ASSERT_EQ(r.hwnd, hwnd);
    EXPECT_EQ(r.wParam, next[r.msg]) << "thread " << (r.msg - WM_USER);
    next[r.msg] = r.wParam + 1;
    EXPECT_EQ(r.threadId, P().GetCurrentThreadId());
  }
  ASSERT_EQ(next.size(), static_cast<std::size_t>(kThreads));
  for (const auto& [msg, count] : next) EXPECT_EQ(count, static_cast<WParam>(kPerThread));
}

TEST_F(ThreadedMessages, GetMessageWakesWhenAnotherThreadPosts) {
  HWnd hwnd = MakeWindow();
  std::thread poster([&] {
    for (int i = 0; i < 100; ++i) Platform().PostMessageW(hwnd, WM_USER, static_cast<WParam>(i), 0);
    Platform().PostMessageW(hwnd, WM_CLOSE, 0, 0);
  });
  Msg msg;
  int received = 0;
  while (P().GetMessageW(&msg, nullptr, 0, 0) > 0) {
    P().TranslateMessage(&msg);
    P().DispatchMessageW(&msg);
    if (msg.message == WM_USER) {
      EXPECT_EQ(msg.wParam, static_cast<WParam>(received));
      ++received;
    }
    if (!P().IsWindow(hwnd)) break;
  }
  poster.join();
  EXPECT_EQ(received, 100);
  EXPECT_FALSE(P().IsWindow(hwnd));
}

TEST_F(ThreadedMessages, SendMessageFromAnotherThreadRunsOnTheWindowsThread) {
  HWnd hwnd = MakeWindow();
  P().RegisterClassW(u"Second", &SecondProc);
  HWnd answering = P().CreateWindowExW(0, u"Second", u"", 0, 0, 0, 1, 1, nullptr, nullptr);
  Log().clear();
  std::atomic<LResult> result{0};
  std::uint32_t senderThread = 0;
  std::thread sender([&] {
    senderThread = Platform().GetCurrentThreadId();
    Platform().SendMessageW(hwnd, WM_USER + 1, 5, 6);
    result = Platform().SendMessageW(answering, WM_USER + 2, 0, 0);
    Platform().PostMessageW(hwnd, WM_CLOSE, 0, 0);
  });
  Msg msg;
  while (P().IsWindow(hwnd) && P().GetMessageW(&msg, nullptr, 0, 0) > 0) P().DispatchMessageW(&msg);
  sender.join();
  EXPECT_EQ(result.load(), 1000);
  ASSERT_FALSE(Log().empty());
  EXPECT_EQ(Log()[0].msg, WM_USER + 1);
  EXPECT_EQ(Log()[0].wParam, 5u);
  EXPECT_EQ(Log()[0].threadId, P().GetCurrentThreadId());
  EXPECT_NE(Log()[0].threadId, senderThread);
}

TEST_F(ThreadedMessages, WindowsOfAnotherThreadCannotBeDestroyedHere) {
  HWnd hwnd = MakeWindow();
  bool destroyed = true;
  std::thread other([&] { destroyed = Platform().DestroyWindow(hwnd); });
  other.join();
  EXPECT_FALSE(destroyed);
  EXPECT_TRUE(P().IsWindow(hwnd));
}

}  // namespace
}  // namespace qx::test
