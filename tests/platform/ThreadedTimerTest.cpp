#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

#include "tests/platform/TestWindows.h"

namespace qx::test {
namespace {

using namespace win;

using MultimediaTimerTest = PlatformTest;

constexpr std::uint32_t kTimerMessage = 32769;

struct TCall {
  std::uint32_t id;
  std::uint32_t threadId;
  std::uint32_t time;
  bool windowAlive;
};

std::mutex gCallsLock;
std::vector<TCall> gCalls;

std::vector<TCall> Calls() {
  std::lock_guard<std::mutex> guard(gCallsLock);
  return gCalls;
}

// The timer service's callback: check the window, post, touch nothing else.
void QX_STDCALL PostingCallback(std::uint32_t id, std::uint32_t, ULongPtr user, ULongPtr, ULongPtr) {
  HWnd hwnd = reinterpret_cast<HWnd>(user);
  const bool alive = Platform().IsWindow(hwnd);
  {
    std::lock_guard<std::mutex> guard(gCallsLock);
    gCalls.push_back(TCall{id, Platform().GetCurrentThreadId(), Platform().timeGetTime(), alive});
  }
  if (alive) Platform().PostMessageW(hwnd, kTimerMessage, id, 0);
}

void QX_STDCALL SelfKillingCallback(std::uint32_t id, std::uint32_t, ULongPtr, ULongPtr, ULongPtr) {
  {
    std::lock_guard<std::mutex> guard(gCallsLock);
    gCalls.push_back(TCall{id, Platform().GetCurrentThreadId(), Platform().timeGetTime(), true});
  }
  Platform().timeKillEvent(id);
}

std::atomic<LResult> gSentResult{0};
void QX_STDCALL SendingCallback(std::uint32_t, std::uint32_t, ULongPtr user, ULongPtr, ULongPtr) {
  gSentResult = Platform().SendMessageW(reinterpret_cast<HWnd>(user), WM_USER + 9, 0, 0);
}

class MultimediaTimers : public MultimediaTimerTest {
 protected:
  MultimediaTimers() {
    std::lock_guard<std::mutex> guard(gCallsLock);
    gCalls.clear();
  }
};

TEST_F(MultimediaTimers, CallbacksRunOnTheirOwnThreadAndPostToTheWindow) {
  HWnd hwnd = MakeWindow();
  const std::uint32_t id =
      P().timeSetEvent(10, 0, &PostingCallback, reinterpret_cast<ULongPtr>(hwnd), TIME_PERIODIC | TIME_CALLBACK_FUNCTION);
  ASSERT_NE(id, 0u);
  Log().clear();
  Os().AdvanceClock(30);
  const std::vector<TCall> calls = Calls();
  ASSERT_EQ(calls.size(), 3u);
  for (std::size_t i = 0; i < calls.size(); ++i) {
    EXPECT_EQ(calls[i].id, id);
    EXPECT_NE(calls[i].threadId, P().GetCurrentThreadId());
    EXPECT_EQ(calls[i].threadId, calls[0].threadId);
    EXPECT_EQ(calls[i].time, 10u * (i + 1));
    EXPECT_TRUE(calls[i].windowAlive);
  }
  // Each posted tick was dispatched on this thread before the next callback ran.
  ASSERT_EQ(Log().size(), 3u);
  for (const TRecord& r : Log()) {
    EXPECT_EQ(r.msg, kTimerMessage);
    EXPECT_EQ(r.wParam, id);
    EXPECT_EQ(r.threadId, P().GetCurrentThreadId());
  }
  EXPECT_EQ(P().timeKillEvent(id), TIMERR_NOERROR);
  Os().AdvanceClock(100);
  EXPECT_EQ(Calls().size(), 3u);
  EXPECT_EQ(Log().size(), 3u);
}

TEST_F(MultimediaTimers, ACallbackSendingToTheMainThreadIsAnsweredWhileTheClockWaits) {
  P().RegisterClassW(u"Second", &SecondProc);
  HWnd hwnd = P().CreateWindowExW(0, u"Second", u"", 0, 0, 0, 1, 1, nullptr, nullptr);
  gSentResult = 0;
  const std::uint32_t id = P().timeSetEvent(10, 0, &SendingCallback, reinterpret_cast<ULongPtr>(hwnd), TIME_ONESHOT);
  ASSERT_NE(id, 0u);
  Os().AdvanceClock(10);
  EXPECT_EQ(gSentResult.load(), 1000);
}

TEST_F(MultimediaTimers, UnknownOrBadArgumentsFail) {
  EXPECT_EQ(P().timeSetEvent(0, 0, &PostingCallback, 0, TIME_PERIODIC), 0u);
  EXPECT_EQ(P().timeSetEvent(10, 0, nullptr, 0, TIME_PERIODIC), 0u);
  EXPECT_EQ(P().timeSetEvent(10, 0, &PostingCallback, 0, 0x10), 0u);  // event callbacks are not offered
  EXPECT_EQ(P().timeKillEvent(12345), MMSYSERR_INVALPARAM);
  Os().AdvanceClock(50);
  EXPECT_TRUE(Calls().empty());
}

TEST_F(MultimediaTimers, OneShotFiresOnce) {
  HWnd hwnd = MakeWindow();
  const std::uint32_t id = P().timeSetEvent(25, 0, &PostingCallback, reinterpret_cast<ULongPtr>(hwnd), TIME_ONESHOT);
  Os().AdvanceClock(100);
  ASSERT_EQ(Calls().size(), 1u);
  EXPECT_EQ(Calls()[0].time, 25u);
  EXPECT_EQ(P().timeKillEvent(id), MMSYSERR_INVALPARAM);
}

TEST_F(MultimediaTimers, ACallbackCanKillItsOwnTimer) {
  P().timeSetEvent(10, 0, &SelfKillingCallback, 0, TIME_PERIODIC);
  Os().AdvanceClock(100);
  EXPECT_EQ(Calls().size(), 1u);
}

TEST_F(MultimediaTimers, TimersOfBothKindsFireInTimeOrder) {
  HWnd hwnd = MakeWindow();
  const std::uint32_t mm = P().timeSetEvent(10, 0, &PostingCallback, reinterpret_cast<ULongPtr>(hwnd), TIME_PERIODIC);
  P().SetTimer(hwnd, 77, 15);
  Log().clear();
  // At 30 both are due: the window timer was re-armed (at 15) before the other (at 20).
  Os().AdvanceClock(30);
  std::vector<std::pair<std::uint32_t, WParam>> seen;
  for (const TRecord& r : Log()) seen.emplace_back(r.msg, r.wParam);
  const std::vector<std::pair<std::uint32_t, WParam>> expected{
      {kTimerMessage, mm}, {WM_TIMER, 77}, {kTimerMessage, mm}, {WM_TIMER, 77}, {kTimerMessage, mm}};
  EXPECT_EQ(seen, expected);
}

TEST_F(MultimediaTimers, TicksForADestroyedWindowAreDropped) {
  HWnd hwnd = MakeWindow();
  const std::uint32_t id = P().timeSetEvent(10, 0, &PostingCallback, reinterpret_cast<ULongPtr>(hwnd), TIME_PERIODIC);
  Os().AdvanceClock(10);
  P().DestroyWindow(hwnd);
  Os().AdvanceClock(20);
  const std::vector<TCall> calls = Calls();
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_TRUE(calls[0].windowAlive);
  EXPECT_FALSE(calls[1].windowAlive);
  EXPECT_FALSE(calls[2].windowAlive);
  EXPECT_EQ(Os().PendingMessageCount(), 0u);
  P().timeKillEvent(id);
}

TEST(MultimediaTimersRealClock, FireOnTheRealClockWithoutAdvancing) {
  TScopedPortableOs os(TClockMode::Real);
  {
    std::lock_guard<std::mutex> guard(gCallsLock);
    gCalls.clear();
  }
  Log().clear();
  HWnd hwnd = MakeWindow();
  const std::uint32_t id = Platform().timeSetEvent(1, 0, &PostingCallback, reinterpret_cast<ULongPtr>(hwnd), TIME_PERIODIC);
  // The pump blocks until the timer thread posts: no sleeping, no polling.
  Msg msg;
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(Platform().GetMessageW(&msg, nullptr, kTimerMessage, kTimerMessage), 1);
    EXPECT_EQ(msg.wParam, id);
  }
  EXPECT_EQ(Platform().timeKillEvent(id), TIMERR_NOERROR);
  EXPECT_GE(Calls().size(), 3u);
  EXPECT_NE(Calls()[0].threadId, Platform().GetCurrentThreadId());
  Log().clear();
}

TEST(WindowTimersRealClock, GetMessageWaitsForTheTimer) {
  TScopedPortableOs os(TClockMode::Real);
  Log().clear();
  HWnd hwnd = MakeWindow();
  const std::uint32_t start = Platform().GetTickCount();
  Platform().SetTimer(hwnd, 5, 10);
  Msg msg;
  ASSERT_EQ(Platform().GetMessageW(&msg, nullptr, WM_TIMER, WM_TIMER), 1);
  EXPECT_EQ(msg.hwnd, hwnd);
  EXPECT_EQ(msg.wParam, 5u);
  EXPECT_GE(Platform().GetTickCount() - start, 10u);
  Log().clear();
}

using WindowTimerThreads = PlatformTest;

TEST_F(WindowTimerThreads, PeekMessageProducesDueTimersWhenTheClockMovedElsewhere) {
  HWnd hwnd = MakeWindow();
  P().SetTimer(hwnd, 4, 10);
  Msg msg;
  EXPECT_FALSE(P().PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
  // Another thread moving the clock leaves this thread's timers for its own pump.
  std::thread other([&] { Os().AdvanceClock(35); });
  other.join();
  ASSERT_TRUE(P().PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(msg.message, WM_TIMER);
  EXPECT_EQ(msg.wParam, 4u);
  // Missed periods merge into one message.
  EXPECT_FALSE(P().PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
  Os().AdvanceClock(10);
  EXPECT_EQ(Messages(hwnd).back(), WM_TIMER);
}

}  // namespace
}  // namespace qx::test
