#include "WrapFixture.h"
#include "host/V3EventTypes.h"

namespace qx {
namespace {

using EventsTest = WrapFixture;

TEST_F(EventsTest, MainThreadEventRunsBeforeFireReturnsAndRemoveAllDropsEveryEventAndAction) {
  int calls = 0;
  TString seen;
  ComPtr<IQxIEventListener> listener;
  wrap_->AddEventHandler(0, u"Tab.Changed", listener, false, [&](const TString& id, IQxIEvent*) {
    ++calls;
    seen = id;
    return kOk;
  });
  ASSERT_TRUE(listener);
  host_.Events().FireFromHost(u"Tab.Changed", {{u"id", u"x"}});
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(seen, u"Tab.Changed");
  EXPECT_EQ(wrap_->EventItemCount(), 1u);

  ComPtr<IQxIEventListener> a, b;
  wrap_->AddEventHandler(0, u"A", a, false, [](const TString&, IQxIEvent*) { return kOk; });
  wrap_->AddEventHandler(0, u"B", b, false, [](const TString&, IQxIEvent*) { return kOk; });
  wrap_->AddActionHandler(u"act", [](IQxIStringDictionary*) { return kOk; });
  EXPECT_EQ(host_.Events().ListenerCount(u"A"), 1u);
  wrap_->RemoveAllHandlers();
  EXPECT_EQ(host_.Events().ListenerCount(u"A"), 0u);
  EXPECT_EQ(host_.Events().ListenerCount(u"B"), 0u);
  EXPECT_EQ(wrap_->ActionCount(), 0u);

  int runs = 0;
  wrap_->AddActionClosure(u"act", [&](IQxIStringDictionary*) { return ++runs, kOk; });
  wrap_->AddActionClosure(u"act", [&](IQxIStringDictionary*) { return ++runs, kOk; });
  EXPECT_EQ(wrap_->ActionCount(), 1u);
  wrap_->RemoveAction(u"act");
  EXPECT_EQ(wrap_->ActionCount(), 0u);
}

TEST_F(EventsTest, MethodWinsOverClosure) {
  int method = 0, closure = 0;
  ComPtr<IQxIEventListener> listener = MakeCom<TEventListenerImpl>(
      [&](const TString&, IQxIEvent*) { return ++method, kOk; },
      [&](const TString&, IQxIEvent*) { return ++closure, kOk; }, nullptr, u"E", false);
  listener->OnEvent(u"E", nullptr);
  EXPECT_EQ(method, 1);
  EXPECT_EQ(closure, 0);
}

TEST_F(EventsTest, V3FormsUseTheEventTable) {
  int calls = 0;
  ComPtr<IQxIEventListener> listener;
  wrap_->AddEventClosureV3(0, kEvTabGroupChanged, listener, false, [&](const TString& id, IQxIEvent*) {
    EXPECT_EQ(id, u"TabGroup.Changed");
    return ++calls, kOk;
  });
  host_.Events().FireFromHost(u"TabGroup.Changed", {});
  EXPECT_EQ(calls, 1);
  wrap_->RemoveEventListenerV3(kEvTabGroupChanged, listener.get());
  host_.Events().FireFromHost(u"TabGroup.Changed", {});
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(wrap_->EventItemCount(), 0u);
}

TEST_F(EventsTest, FailedRegistrationIsNotRecordedButTheListenerIsHandedOut) {
  host_.RemoveService("EventService");
  ComPtr<IQxIEventListener> listener;
  wrap_->AddEventHandler(0, u"X", listener, false, [](const TString&, IQxIEvent*) { return kOk; });
  EXPECT_TRUE(listener);
  EXPECT_EQ(wrap_->EventItemCount(), 0u);
}

TEST_F(EventsTest, RemovalUnderAnotherIdTextKeepsTheRecordForTheFinalSweep) {
  int calls = 0;
  ComPtr<IQxIEventListener> listener;
  wrap_->AddEventHandler(0, u"XmlWidget.MenuHide", listener, false,
                         [&](const TString&, IQxIEvent*) { return ++calls, kOk; });
  wrap_->RemoveEventListener(u"XMLWidget.MenuHide", listener.get());
  EXPECT_EQ(wrap_->EventItemCount(), 1u);
  wrap_->RemoveAllHandlers();
  host_.Events().FireFromHost(u"XmlWidget.MenuHide", {});
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(host_.Events().ListenerCount(u"XmlWidget.MenuHide"), 0u);
}

TEST_F(EventsTest, DestroyingTheWrapperTakesItsListenersDown) {
  ComPtr<IQxIEventListener> listener;
  wrap_->AddEventHandler(0, u"A", listener, false, [](const TString&, IQxIEvent*) { return kOk; });
  wrap_->AddEventHandler(0, u"A", listener, false, [](const TString&, IQxIEvent*) { return kOk; });
  EXPECT_EQ(host_.Events().ListenerCount(u"A"), 2u);
  wrap_ = nullptr;
  EXPECT_EQ(host_.Events().ListenerCount(u"A"), 0u);
}

class DirectEventsTest : public WrapFixture {
 protected:
  DirectEventsTest() : WrapFixture(false) {}
};

TEST_F(DirectEventsTest, WithoutADelayTaskEveryDeliveryIsDirect) {
  EXPECT_EQ(wrap_->EventSharedDelayTask(), nullptr);
  std::thread::id ranOn;
  ComPtr<IQxIEventListener> listener;
  wrap_->AddEventHandler(0, u"E", listener, false, [&](const TString&, IQxIEvent*) {
    ranOn = std::this_thread::get_id();
    return kOk;
  });
  std::thread([&] { listener->OnEvent(u"E", nullptr); }).join();
  EXPECT_NE(ranOn, std::thread::id());
  EXPECT_NE(ranOn, std::this_thread::get_id());
}

}  // namespace
}  // namespace qx
