#include <gtest/gtest.h>

#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/portable/ScopedPortableOs.h"
#include "runtime/DelayExec.h"

namespace qx {
namespace {

TEST(DelayExecThreadedTest, TasksFromManyThreadsRunOnTheMainThreadInPerThreadOrder) {
  TScopedPortableOs os;
  TDelayTaskList list;
  list.SetInterval(1);
  constexpr int kThreads = 4, kPerThread = 250;
  std::vector<std::pair<int, int>> ran;
  std::vector<std::thread::id> runners;
  {
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
      threads.emplace_back([&list, &ran, &runners, t] {
        for (int i = 0; i < kPerThread; ++i)
          list.AddAnonTask(u"t", [&ran, &runners, t, i] {
            ran.emplace_back(t, i);
            runners.push_back(std::this_thread::get_id());
          });
      });
    for (auto& thread : threads) thread.join();
  }
  os->AdvanceClock(10 * (kThreads * kPerThread + 1));
  ASSERT_EQ(ran.size(), static_cast<std::size_t>(kThreads * kPerThread));
  std::map<int, int> next;
  for (const auto& [thread, index] : ran) EXPECT_EQ(index, next[thread]++);
  for (const auto& id : runners) EXPECT_EQ(id, std::this_thread::get_id());
}

}  // namespace
}  // namespace qx
