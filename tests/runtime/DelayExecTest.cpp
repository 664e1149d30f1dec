#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/portable/ScopedPortableOs.h"
#include "runtime/DelayExec.h"

namespace qx {
namespace {

class DelayExecTest : public ::testing::Test {
 protected:
  TScopedPortableOs os_;
};

TEST_F(DelayExecTest, TasksRunInOrderOnePerTickAndTheTimerStopsOneTickAfterTheLast) {
  TDelayTaskList list;
  list.SetInterval(10);
  std::vector<int> ran;
  for (int i = 0; i < 10; ++i) list.AddAnonTask(u"t", [&ran, i] { ran.push_back(i); });
  os_->ProcessMessages();  // the posted tasks arrive
  EXPECT_EQ(list.Count(), 10u);
  EXPECT_TRUE(ran.empty());
  for (int tick = 1; tick <= 10; ++tick) {
    os_->AdvanceClock(10);
    ASSERT_EQ(ran.size(), static_cast<std::size_t>(tick));
  }
  EXPECT_EQ(ran, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_TRUE(list.TimerEnabled());  // the queue had an item at the last look
  os_->AdvanceClock(10);
  EXPECT_FALSE(list.TimerEnabled());
}

TEST_F(DelayExecTest, RetriedTaskRunsAfterThoseQueuedBehindIt) {
  TDelayTaskList list;
  list.SetInterval(1);
  std::vector<std::string> ran;
  bool retried = false;
  list.AddAnonTask(u"retry", [&] {
    ran.push_back("retry");
    if (!retried) {
      retried = true;
      list.SetRetryFlag();
    }
  });
  list.AddAnonTask(u"b", [&] { ran.push_back("b"); });
  list.AddAnonTask(u"c", [&] { ran.push_back("c"); });
  os_->AdvanceClock(100);
  EXPECT_EQ(ran, (std::vector<std::string>{"retry", "b", "c", "retry"}));
}

TEST_F(DelayExecTest, RemoveTaskByIdTakesEveryMatchAndTasksInFlightAreNotSeen) {
  TDelayTaskList list;
  list.SetInterval(100);
  int runs = 0;
  list.AddAnonTask(u"x", [&] { ++runs; });
  list.AddAnonTask(u"y", [&] { ++runs; });
  list.AddAnonTask(u"x", [&] { ++runs; });
  EXPECT_FALSE(list.TaskExists(u"x"));  // the messages have not been received yet
  os_->ProcessMessages();
  EXPECT_TRUE(list.TaskExists(u"x"));
  list.RemoveTaskById(u"x");
  EXPECT_FALSE(list.TaskExists(u"x"));
  EXPECT_FALSE(list.TaskExists(u"X"));
  EXPECT_TRUE(list.TaskExists(u"y"));
  os_->AdvanceClock(1000);
  EXPECT_EQ(runs, 1);
}

TEST_F(DelayExecTest, ThrowingTaskEndsOnlyItselfAndExecNowQueuesLikeAdd) {
  TDelayTaskList list;
  list.SetInterval(1);
  int after = 0;
  list.AddAnonTask(u"bad", [] { throw std::runtime_error("boom"); });
  list.ExecAnonTaskNow(u"good", [&] { ++after; });
  EXPECT_EQ(after, 0);
  os_->AdvanceClock(50);
  EXPECT_EQ(after, 1);
  EXPECT_EQ(list.Count(), 0u);
}

TEST_F(DelayExecTest, DestroyingDropsQueuedAndInFlightTasks) {
  int runs = 0;
  {
    TDelayTaskList list;
    list.AddAnonTask(u"queued", [&] { ++runs; });
    os_->ProcessMessages();
    list.AddAnonTask(u"in flight", [&] { ++runs; });
  }
  os_->AdvanceClock(2000);
  EXPECT_EQ(runs, 0);
  EXPECT_EQ(os_->WindowCount(), 0u);
}

TEST_F(DelayExecTest, UtilityWindowHasItsClassAndStylesAndTheLastTakesTheClassAlong) {
  auto first = std::make_unique<TDelayTaskList>();
  auto second = std::make_unique<TDelayTaskList>();
  first.reset();
  EXPECT_TRUE(os_->GetClassInfoW(kDefaultUtilWindowClass, nullptr));
  second.reset();
  // A class left behind would keep a procedure of a library that may be unloaded.
  EXPECT_FALSE(os_->GetClassInfoW(kDefaultUtilWindowClass, nullptr));
  TDelayTaskList again;
  char16_t name[64] = {};
  ASSERT_GT(os_->GetClassNameW(again.WindowHandle(), name, 64), 0);
  EXPECT_EQ(std::u16string(name), kDefaultUtilWindowClass);
  EXPECT_EQ(static_cast<std::uint32_t>(os_->GetWindowLongW(again.WindowHandle(), win::GWL_STYLE)),
            win::WS_POPUP);
  EXPECT_EQ(static_cast<std::uint32_t>(os_->GetWindowLongW(again.WindowHandle(), win::GWL_EXSTYLE)),
            win::WS_EX_TOOLWINDOW);
}

TEST_F(DelayExecTest, SharedDelayTaskQueuesAnonymousTasks) {
  ComPtr<ISharedDelayTask> shared = MakeCom<TSharedDelayTaskImpl>();
  shared->SetInterval(1);
  int runs = 0;
  shared->AddTask(u"id", [&] { ++runs; });
  shared->AddTask(u"id", [&] { ++runs; });
  // A window timer never ticks faster than the system's 10 ms minimum.
  os_->AdvanceClock(9);
  EXPECT_EQ(runs, 0);
  os_->AdvanceClock(1);
  EXPECT_EQ(runs, 1);
  os_->AdvanceClock(10);
  EXPECT_EQ(runs, 2);
}

}  // namespace
}  // namespace qx
