#include "tabbar/FrameEventsFixture.h"

namespace qx {
namespace {

const char16_t* const kSubscribed[] = {u"TabGroup.Changed",
                                       u"TabBarControl.Update",
                                       u"TabBarControl.UpdateTab",
                                       u"BookmarkManagerV3.Update",
                                       u"Browser.Changed",
                                       u"Client.Initialized",
                                       u"action",
                                       u"HoldAndGo.Start",
                                       u"ChromiumEngine.ThumbnailCreated",
                                       u"MainWindow.ActiveChanged",
                                       u"XmlWidget.Update",
                                       u"XmlWidget.UpdateNow",
                                       u"Tab.Changed",
                                       u"Cabinet.DragAndDrop",
                                       u"Cabinet.CreateBlurImage",
                                       u"QxCabinetDataManager.Cabinet.Enter",
                                       u"QxCabinetDataManager.Cabinet.Exit",
                                       u"TabManager.Changed",
                                       u"XmlWidget.MenuHide",
                                       u"TabGroupBar.EditTitle",
                                       u"Tab.LoadingStop",
                                       u"TabGroupBar.TogglePrivate"};

TEST_F(FrameEventsTest, EverySubscriptionLivesExactlyAsLongAsTheFrame) {
  MakeFrame();
  for (const char16_t* id : kSubscribed) EXPECT_EQ(host_.Events().ListenerCount(id), 1u) << ToUtf8(id);
  frame_.reset();
  for (const char16_t* id : kSubscribed) EXPECT_EQ(host_.Events().ListenerCount(id), 0u) << ToUtf8(id);
  // Raised after the frame went, the events find nobody.
  Open(u"https://late.example/");
  for (const char16_t* id : kSubscribed) host_.Events().FireFromHost(id, {{u"tab-id", u"x"}});
  EXPECT_EQ(SharedQueue(), 0u);
}

TEST_F(FrameEventsTest, GroupEventsCountOnlyForTheShownGroupAfterTimingAfter) {
  TFakeTab* first = Open(u"https://a.example/");
  TTabbarFrame& frame = MakeFrame();
  // Before the host is up, a selection is left alone, but a plain update still syncs.
  host_.Events().FireFromHost(u"TabBarControl.Update", {});
  EXPECT_EQ(MirrorText(), HostText());
  TFakeTab* second = Open(u"https://b.example/", -1, false);
  host_.Model().Activate(second);
  EXPECT_EQ(frame.TabImageCount(), 1);
  EXPECT_EQ(frame.ActiveTab(), ImageOf(first));
  host_.Events().FireFromHost(u"Client.Initialized", {});
  EXPECT_EQ(frame.ActiveTab(), ImageOf(second));
  EXPECT_EQ(MirrorText(), HostText());

  // A tab added to a group that isn't shown changes nothing in the strip.
  ComPtr<TFakeTabGroup> other = host_.Model().AddGroup(u"other");
  TFakeOpenTab how;
  how.Group = other.get();
  how.Activate = false;
  host_.Model().OpenTab(u"https://c.example/", how);
  EXPECT_EQ(MirrorText(), HostText());
  EXPECT_EQ(frame.TabImageCount(), 2);

  // Only the "after" phase acts, and the group's id compares without regard to case.
  std::u16string lowerId = group_->GuidText();
  for (char16_t& c : lowerId)
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + 32);
  host_.Events().FireFromHost(u"TabGroup.Changed", {{u"id", lowerId},
                                                    {u"event", u"SetActiveTab"},
                                                    {u"timing", u"before"},
                                                    {u"new-tab-id", GuidOf(first)}});
  EXPECT_EQ(frame.ActiveTab(), ImageOf(second));
  host_.Events().FireFromHost(
      u"TabGroup.Changed",
      {{u"id", lowerId}, {u"event", u"SetActiveTab"}, {u"timing", u"after"}, {u"new-tab-id", GuidOf(first)}});
  EXPECT_EQ(frame.ActiveTab(), ImageOf(first));
}

TEST_F(FrameEventsTest, RemoveTabDropsOnlyThatTabsCachedPicture) {
  TTabbarFrame& frame = Initialized();
  TFakeTab* kept = Open(u"https://a.example/");
  TFakeTab* closed = Open(u"https://b.example/");
  TBitmap picture(96, 47);
  picture.Clear(0xFF102030);
  frame.TabImageCacheMgr()->UpdateCache(GuidOf(kept), &picture);
  frame.TabImageCacheMgr()->UpdateCache(GuidOf(closed), &picture);
  const std::u16string closedId = GuidOf(closed);
  host_.Model().CloseTab(closed);
  EXPECT_EQ(frame.TabImageCacheMgr()->Count(), 1u);
  EXPECT_NE(frame.TabImageCacheMgr()->GetCache(GuidOf(kept)), nullptr);
  EXPECT_EQ(frame.TabImageCacheMgr()->GetCache(closedId), nullptr);
  EXPECT_EQ(MirrorText(), HostText());
}

TEST_F(FrameEventsTest, LoadingStartsAndStopsTheBusyIndicatorFromEachOfItsEvents) {
  TTabbarFrame& frame = Initialized();
  TFakeTab* tab = Open(u"https://a.example/");
  TTabImage* image = ImageOf(tab);
  auto busy = [&] { return image->ProgressAnimation()->Running(); };
  host_.Model().NavigateTab(tab, u"https://b.example/");
  EXPECT_TRUE(busy());
  host_.Model().FinishLoading(tab);
  EXPECT_FALSE(busy());

  host_.Model().NavigateTab(tab, u"https://c.example/");
  ASSERT_TRUE(busy());
  host_.Events().FireFromHost(u"action", {{u"action", u"Back"}});
  EXPECT_TRUE(busy());
  host_.Events().FireFromHost(u"action", {{u"action", u"Stop"}});
  EXPECT_FALSE(busy());

  host_.Model().NavigateTab(tab, u"https://d.example/");
  ASSERT_TRUE(busy());
  host_.Events().FireFromHost(u"Tab.LoadingStop", {{u"tab-id", GuidOf(tab)}});
  EXPECT_FALSE(busy());
  EXPECT_EQ(frame.ActiveTab(), image);
}

TEST_F(FrameEventsTest, MissingOrWrongKeysAndMissingDictionariesAreIgnored) {
  TTabbarFrame& frame = Initialized();
  Open(u"https://a.example/");
  Open(u"https://b.example/");
  const std::u16string mirror = MirrorText();
  TTabImage* active = frame.ActiveTab();
  ComPtr<IQxIStringArray> results;
  for (const char16_t* id : kSubscribed) {
    host_.Events().Fire(id, nullptr, results.put());
    host_.Events().FireFromHost(id, {});
    host_.Events().FireFromHost(id, {{u"tab-id", u"{no such tab}"},
                                     {u"browser-id", u"7"},
                                     {u"event", u"AddTab"},
                                     {u"id", u"{no such group}"},
                                     {u"timing", u"after"},
                                     {u"action", u"Stop"}});
  }
  EXPECT_EQ(MirrorText(), mirror);
  EXPECT_EQ(frame.ActiveTab(), active);

  // The active flag is the text "true" and nothing else.
  host_.Events().FireFromHost(u"MainWindow.ActiveChanged", {{u"active", u"true"}});
  EXPECT_TRUE(frame.MainWindowIsActive());
  host_.Events().FireFromHost(u"MainWindow.ActiveChanged", {{u"active", u"TRUE"}});
  EXPECT_FALSE(frame.MainWindowIsActive());
}

TEST_F(FrameEventsTest, ActionsGoBackAtOnceOrDeferredWithTheirKeysInOrder) {
  TTabbarFrame& frame = Initialized();
  Open(u"https://a.example/");
  host_.SetHostReactions(false);
  host_.Events().ClearEventLog();
  TTabImage* tab = frame.GetTabImages(0);
  frame.SendCloseTab(tab, true);
  frame.SendCabinetToggle();
  frame.SendNewTab();
  frame.SendCloseTab(tab, false);
  TTabImage nameless;  // no host tab: nothing is sent for it
  frame.SendCloseTab(&nameless, false);
  host_.Events().RunPosted();

  std::vector<std::u16string> seen;
  for (const TFakeEventRecord& record : host_.Events().EventLog()) {
    if (record.FromHost) continue;
    const bool posted = record.Delivery == TFakeEventRecord::EDelivery::Posted;
    seen.push_back((posted ? u"post " : u"fire ") + record.Id + u" " + record.Value(u"tab-id"));
  }
  const std::u16string id = tab->TabGuid();
  const std::vector<std::u16string> expected = {u"post TabBar.CloseTab " + id,
                                                u"post QxCabinetDataManager.Cabinet ", u"fire TabBar.NewTab ",
                                                u"fire TabBar.CloseTab " + id};
  EXPECT_EQ(seen, expected);
}

}  // namespace
}  // namespace qx
