#include <gtest/gtest.h>

#include <functional>

#include "fakehost/FakeDictionary.h"
#include "fakehost/FakeEventService.h"
#include "fakehost/FakeListener.h"
#include "fakehost/FakeStringDictionary.h"

namespace qx {
namespace {

class FakeEventServiceTest : public ::testing::Test {
 protected:
  ComPtr<TFakeListener> Listener(std::string name, std::function<void()> also = {}) {
    return MakeCom<TFakeListener>([this, name, also](const std::u16string&, const TFakeParams&) {
      calls_.push_back(name);
      if (also) also();
    });
  }

  ComPtr<TFakeEventService> events_ = MakeCom<TFakeEventService>();
  std::vector<std::string> calls_;
};

TEST_F(FakeEventServiceTest, FireDeliversInRegistrationOrderWithTheParameters) {
  TFakeParams seen;
  auto first = Listener("first");
  auto second = MakeCom<TFakeListener>([&](const std::u16string& id, const TFakeParams& params) {
    calls_.push_back("second:" + ToUtf8(id));
    seen = params;
  });
  ASSERT_EQ(events_->AddListener(u"TabGroup.Changed", first.get(), 0), kOk);
  ASSERT_EQ(events_->AddListener(u"TabGroup.Changed", second.get(), 0), kOk);
  events_->AddListener(u"Other", Listener("other").get(), 0);

  auto parameters = MakeCom<TFakeStringDictionary>(TFakeParams{{u"event", u"AddTab"}, {u"timing", u"after"}});
  ASSERT_EQ(events_->Fire(u"tabgroup.changed", parameters.get(), nullptr), kOk);  // ids ignore case
  EXPECT_EQ(calls_, (std::vector<std::string>{"first", "second:tabgroup.changed"}));
  EXPECT_EQ(ParamValue(seen, u"timing"), u"after");
  const auto log = events_->EventLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_FALSE(log[0].FromHost);
  EXPECT_EQ(log[0].Value(u"event"), u"AddTab");
}

TEST_F(FakeEventServiceTest, ListenerRemovingItselfAndAnotherDuringDelivery) {
  ComPtr<TFakeListener> a, b, c;
  IQxIEventListener* self = nullptr;
  a = Listener("a", [&] {
    events_->RemoveListener(u"E", self);
    events_->RemoveListener(u"E", b.get());
  });
  b = Listener("b");
  c = Listener("c", [&] { events_->AddListener(u"E", Listener("late").get(), 0); });
  for (auto* l : {a.get(), b.get(), c.get()}) events_->AddListener(u"E", l, 0);
  self = a.get();
  a.reset();  // only the service holds it now: it must survive its own removal
  events_->Fire(u"E", nullptr, nullptr);
  EXPECT_EQ(calls_, (std::vector<std::string>{"a", "c"}));
  calls_.clear();
  events_->Fire(u"E", nullptr, nullptr);
  EXPECT_EQ(calls_, (std::vector<std::string>{"c", "late"}));
  EXPECT_EQ(events_->ListenerCount(u"E"), 3u);
}

TEST_F(FakeEventServiceTest, RemovalNeedsTheSameListenerAndIdAndClearReleasesListeners) {
  auto a = Listener("a");
  events_->AddListener(u"XmlWidget.MenuHide", a.get(), 0);
  EXPECT_EQ(events_->RemoveListener(u"XmlWidget.MenuHide", Listener("other").get()), kFail);
  EXPECT_EQ(events_->RemoveListener(u"Another.Event", a.get()), kFail);
  EXPECT_EQ(events_->RemoveListener(u"XMLWidget.MenuHide", a.get()), kOk);
  EXPECT_EQ(events_->RemoveListener(u"XmlWidget.MenuHide", a.get()), kFail);
  EXPECT_EQ(events_->RemoveListener(nullptr, a.get()), kInvalidArg);
  EXPECT_EQ(events_->AddListener(u"E", nullptr, 0), kInvalidArg);
  EXPECT_EQ(events_->Fire(nullptr, nullptr, nullptr), kInvalidArg);

  events_->AddListener(u"E", a.get(), 0);
  const auto before = a->RefCount();
  events_->Clear();
  EXPECT_EQ(a->RefCount(), before - 1);
  events_->Fire(u"E", nullptr, nullptr);
  EXPECT_TRUE(calls_.empty());
}

TEST_F(FakeEventServiceTest, FireCollectsTheHostsAnswers) {
  events_->AddHostHandler(u"BrowserEngine.GetUserAgentBase",
                          [](const std::u16string&, IQxIStringDictionary*,
                             std::vector<std::u16string>& results) { results.push_back(u"Agent/1.0"); });
  ComPtr<IQxIStringArray> results;
  ASSERT_EQ(events_->Fire(u"BrowserEngine.GetUserAgentBase", nullptr, results.put()), kOk);
  std::int32_t count = 0;
  results->GetCount(&count);
  ASSERT_EQ(count, 1);
  ComPtr<IQxIString> first;
  results->GetItem(0, first.put());
  EXPECT_EQ(ReadString(first.get()), u"Agent/1.0");
  ASSERT_EQ(events_->Fire(u"Nobody.Listens", nullptr, results.put()), kOk);
  results->GetCount(&count);
  EXPECT_EQ(count, 0);
}

TEST_F(FakeEventServiceTest, PostWaitsForRunPostedAndKeepsOrder) {
  events_->AddListener(u"A", Listener("A", [&] { events_->Post(u"C", nullptr, nullptr, 0, 0, 0); }).get(), 0);
  events_->AddListener(u"B", Listener("B").get(), 0);
  events_->AddListener(u"C", Listener("C").get(), 0);
  events_->Post(u"A", u"", nullptr, 0, 0, 0);
  events_->Post(u"B", u"target", nullptr, 1, 0, 0);
  EXPECT_TRUE(calls_.empty());
  EXPECT_EQ(events_->PendingPosts(), 2u);
  EXPECT_EQ(events_->RunPosted(), 3u);
  EXPECT_EQ(calls_, (std::vector<std::string>{"A", "B", "C"}));
  const auto log = events_->EventLog();
  ASSERT_EQ(log.size(), 3u);
  EXPECT_EQ(log[1].Delivery, TFakeEventRecord::EDelivery::Posted);
  EXPECT_EQ(log[1].Target, u"target");
}

TEST_F(FakeEventServiceTest, EventIdPointersStayValid) {
  Text kept = nullptr;
  auto listener = MakeCom<TFakeListener>(nullptr);
  struct TKeep : TInterfacedObject<IQxIEventListener> {
    explicit TKeep(Text* slot) : slot_(slot) {}
    HResult QX_STDCALL OnEvent(Text id, IQxIEvent*) override {
      *slot_ = id;
      return kOk;
    }
    Text* slot_;
  };
  auto keeper = MakeCom<TKeep>(&kept);
  events_->AddListener(u"Some.Event", keeper.get(), 0);
  {
    std::u16string temporary = u"Some.Event";
    events_->Fire(temporary.c_str(), nullptr, nullptr);
  }
  events_.reset();
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(std::u16string(kept), u"Some.Event");
}

TEST_F(FakeEventServiceTest, ParametersOfAnotherKindAreNotReadAsTextDictionary) {
  TFakeParams seen{{u"x", u"y"}};
  auto listener =
      MakeCom<TFakeListener>([&](const std::u16string&, const TFakeParams& params) { seen = params; });
  events_->AddListener(u"E", listener.get(), 0);
  auto dictionary = MakeCom<TFakeDictionary>();
  dictionary->SetValue(u"k", nullptr);
  auto* wrongKind = reinterpret_cast<IQxIStringDictionary*>(static_cast<IQxIDictionary*>(dictionary.get()));
  ASSERT_EQ(events_->Fire(u"E", wrongKind, nullptr), kOk);
  EXPECT_TRUE(seen.empty());
  EXPECT_TRUE(events_->EventLog().back().Parameters.empty());
}

}  // namespace
}  // namespace qx
