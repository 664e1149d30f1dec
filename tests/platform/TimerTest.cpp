#include <gtest/gtest.h>

#include <vector>

#include "tests/platform/TestWindows.h"

namespace qx::test {
namespace {

using namespace win;

using TimerTest = PlatformTest;

// The timer id of each tick, in the order they came.
std::vector<WParam> TickIds(HWnd hwnd) {
  std::vector<WParam> ids;
  for (const TRecord& r : Log()) {
    EXPECT_EQ(r.hwnd, hwnd);
    if (r.msg == WM_TIMER) ids.push_back(r.wParam);
  }
  return ids;
}

std::vector<std::uint32_t> gTickTimes;
LResult QX_STDCALL TimeRecordingProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  if (msg == WM_TIMER) {
    gTickTimes.push_back(Platform().GetTickCount());
    Log().push_back(TRecord{hwnd, msg, wParam, lParam, 0});
  }
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

// A window recording its ticks, with the record of earlier ones cleared.
HWnd MakeTimeWindow() {
  gTickTimes.clear();
  if (!Platform().GetClassInfoW(u"TimeRecording", nullptr))
    Platform().RegisterClassW(u"TimeRecording", &TimeRecordingProc);
  return Platform().CreateWindowExW(0, u"TimeRecording", u"", 0, 0, 0, 1, 1, nullptr, nullptr);
}

TEST_F(TimerTest, ManualClockStandsStillUntilAdvanced) {
  EXPECT_EQ(P().GetTickCount(), 0u);
  EXPECT_EQ(P().timeGetTime(), 0u);
  P().Sleep(100);
  EXPECT_EQ(P().GetTickCount(), 0u);
  Os().AdvanceClock(250);
  EXPECT_EQ(P().GetTickCount(), 250u);
  EXPECT_EQ(P().timeGetTime(), 250u);
  EXPECT_EQ(Os().Now(), 250u);
}

TEST_F(TimerTest, WindowTimerFiresAtEachPeriodWithTheClockSetToItsDueTime) {
  HWnd hwnd = MakeTimeWindow();
  EXPECT_EQ(P().SetTimer(hwnd, 7, 10), 7u);
  Os().AdvanceClock(9);
  EXPECT_TRUE(gTickTimes.empty());
  Os().AdvanceClock(26);
  EXPECT_EQ(gTickTimes, (std::vector<std::uint32_t>{10, 20, 30}));
  EXPECT_EQ(P().GetTickCount(), 35u);
  EXPECT_EQ(TickIds(hwnd), (std::vector<WParam>{7, 7, 7}));
}

TEST_F(TimerTest, ShortIntervalsAreRaisedToTheMinimum) {
  HWnd hwnd = MakeTimeWindow();
  P().SetTimer(hwnd, 1, 1);
  Os().AdvanceClock(25);
  EXPECT_EQ(gTickTimes, (std::vector<std::uint32_t>{10, 20}));
}

TEST_F(TimerTest, TimersInterleaveInTimeOrder) {
  HWnd hwnd = MakeTimeWindow();
  P().SetTimer(hwnd, 1, 15);
  P().SetTimer(hwnd, 2, 10);
  Os().AdvanceClock(30);
  // At 30 both are due; the one that was set up first goes first.
  EXPECT_EQ(TickIds(hwnd), (std::vector<WParam>{2, 1, 2, 1, 2}));
  EXPECT_EQ(gTickTimes, (std::vector<std::uint32_t>{10, 15, 20, 30, 30}));
}

TEST_F(TimerTest, SettingAnExistingTimerRestartsIt) {
  HWnd hwnd = MakeTimeWindow();
  P().SetTimer(hwnd, 1, 10);
  Os().AdvanceClock(8);
  P().SetTimer(hwnd, 1, 20);
  Os().AdvanceClock(30);
  EXPECT_EQ(gTickTimes, (std::vector<std::uint32_t>{28}));
}

TEST_F(TimerTest, KillTimerOrDestroyingTheWindowStopsIt) {
  HWnd hwnd = MakeTimeWindow();
  P().SetTimer(hwnd, 1, 10);
  P().SetTimer(hwnd, 2, 10);
  Os().AdvanceClock(10);
  EXPECT_TRUE(P().KillTimer(hwnd, 1));
  EXPECT_FALSE(P().KillTimer(hwnd, 1));
  EXPECT_FALSE(P().KillTimer(hwnd, 99));
  Os().AdvanceClock(20);
  EXPECT_EQ(TickIds(hwnd), (std::vector<WParam>{1, 2, 2, 2}));
  // Destroying the window kills the timer still running.
  P().DestroyWindow(hwnd);
  gTickTimes.clear();
  Os().AdvanceClock(100);
  EXPECT_TRUE(gTickTimes.empty());
  EXPECT_FALSE(P().KillTimer(hwnd, 2));
}

int gSelfKillCount = 0;
LResult QX_STDCALL OneShotProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  if (msg == WM_TIMER) {
    ++gSelfKillCount;
    Platform().KillTimer(hwnd, wParam);
  }
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

TEST_F(TimerTest, ATimerCanKillItselfFromItsTick) {
  P().RegisterClassW(u"OneShot", &OneShotProc);
  HWnd hwnd = P().CreateWindowExW(0, u"OneShot", u"", 0, 0, 0, 1, 1, nullptr, nullptr);
  gSelfKillCount = 0;
  P().SetTimer(hwnd, 3, 10);
  Os().AdvanceClock(100);
  EXPECT_EQ(gSelfKillCount, 1);
}

}  // namespace
}  // namespace qx::test
