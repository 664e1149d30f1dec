#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "fakehost/FakeBrowser.h"
#include "fakehost/FakeListener.h"

namespace qx {
namespace {

TEST(FakeEventThreads, SwitchDeliversOnAnotherThreadBeforeFireReturns) {
  TFakeBrowser browser;
  std::thread::id deliveredOn;
  int calls = 0;
  auto listener = MakeCom<TFakeListener>([&](const std::u16string&, const TFakeParams&) {
    deliveredOn = std::this_thread::get_id();
    ++calls;
  });
  browser.Events().AddListener(u"Tab.LoadingStop", listener.get(), 0);
  auto tab = browser.OpenTab(u"https://a.example/");
  browser.Events().SetDeliverOnWorkerThread(true);
  browser.FinishLoading(tab.get());
  EXPECT_EQ(calls, 1);
  EXPECT_NE(deliveredOn, std::this_thread::get_id());
  browser.Events().SetDeliverOnWorkerThread(false);
  browser.FinishLoading(tab.get());
  EXPECT_EQ(deliveredOn, std::this_thread::get_id());
}

TEST(FakeEventThreads, FireFromManyThreadsWhileListenersComeAndGo) {
  auto events = MakeCom<TFakeEventService>();
  std::atomic<int> calls{0};
  auto listener = MakeCom<TFakeListener>([&](const std::u16string&, const TFakeParams&) { ++calls; });
  std::vector<std::thread> firing;
  for (int t = 0; t < 3; ++t)
    firing.emplace_back([&] {
      for (int i = 0; i < 300; ++i) events->Fire(u"E", nullptr, nullptr);
    });
  std::thread churn([&] {
    for (int i = 0; i < 300; ++i) {
      events->AddListener(u"E", listener.get(), 0);
      events->RemoveListener(u"E", listener.get());
    }
  });
  for (auto& thread : firing) thread.join();
  churn.join();
  events->AddListener(u"E", listener.get(), 0);
  const int before = calls;
  events->Fire(u"E", nullptr, nullptr);
  EXPECT_EQ(calls, before + 1);
  EXPECT_EQ(events->EventLog().size(), 901u);
}

}  // namespace
}  // namespace qx
