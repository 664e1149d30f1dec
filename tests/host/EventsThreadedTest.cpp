#include <map>
#include <mutex>
#include <thread>

#include "WrapFixture.h"
#include "runtime/MainThread.h"

namespace qx {
namespace {

class EventsThreadedTest : public WrapFixture {
 protected:
  void SetUp() override { SetMainThreadId(std::this_thread::get_id()); }
};

TEST_F(EventsThreadedTest, OffThreadEventRunsLaterOnTheMainThread) {
  std::thread::id ranOn;
  int calls = 0;
  ComPtr<IQxIEventListener> listener;
  wrap_->AddEventHandler(0, u"E", listener, false, [&](const TString& id, IQxIEvent*) {
    EXPECT_EQ(id, u"E");
    ranOn = std::this_thread::get_id();
    return ++calls, kOk;
  });
  host_.Events().SetDeliverOnWorkerThread(true);
  host_.Events().FireFromHost(u"E", {});
  EXPECT_EQ(calls, 0);
  os_->AdvanceClock(10);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST_F(EventsThreadedTest, SynchronousListenerRunsOnTheFiringThread) {
  std::thread::id ranOn;
  ComPtr<IQxIEventListener> listener;
  wrap_->AddEventHandler(0, u"E", listener, true, [&](const TString&, IQxIEvent*) {
    ranOn = std::this_thread::get_id();
    return kOk;
  });
  host_.Events().SetDeliverOnWorkerThread(true);
  host_.Events().FireFromHost(u"E", {});
  EXPECT_NE(ranOn, std::thread::id());
  EXPECT_NE(ranOn, std::this_thread::get_id());
}

TEST_F(EventsThreadedTest, EventsFromManyThreadsArriveInOrderNoneLost) {
  constexpr int kThreads = 4, kPerThread = 50;
  std::map<int, int> next;
  int total = 0;
  ComPtr<IQxIEventListener> listener;
  wrap_->AddEventHandler(0, u"E", listener, false, [&](const TString&, IQxIEvent* event) {
    ComPtr<IQxIStringDictionaryWrap> parameters = wrap_->EventParameters(event);
    const int thread = static_cast<int>(*TryStrToInt(parameters->Value(u"thread")));
    const int index = static_cast<int>(*TryStrToInt(parameters->Value(u"index")));
    EXPECT_EQ(index, next[thread]++);
    ++total;
    return kOk;
  });
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t)
    threads.emplace_back([&, t] {
      for (int i = 0; i < kPerThread; ++i)
        host_.Events().FireFromHost(u"E", {{u"thread", IntToStr(t)}, {u"index", IntToStr(i)}});
    });
  for (auto& thread : threads) thread.join();
  os_->AdvanceClock(10 * (kThreads * kPerThread + 1));
  EXPECT_EQ(total, kThreads * kPerThread);
}

}  // namespace
}  // namespace qx
