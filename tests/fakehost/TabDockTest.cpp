#include <gtest/gtest.h>

#include "fakehost/FakeStringDictionary.h"
#include "fakehost/FakeTestUtil.h"
#include "host/HostKeys.h"

namespace qx {
namespace {

class FakeTabDockTest : public ::testing::Test {
 protected:
  ComPtr<IQxITab> Navigate(const char16_t* uri, TFakeParams options, IQxITabGroup* group = nullptr,
                           HResult expected = kOk) {
    auto dictionary = MakeCom<TFakeStringDictionary>(std::move(options));
    ComPtr<IQxITab> tab;
    EXPECT_EQ(dock().Navigate(uri, group, dictionary.get(), tab.put()), expected);
    return tab;
  }
  TFakeTabDock& dock() { return browser_.Host().Dock(); }
  TFakeTab* Fake(const ComPtr<IQxITab>& tab) { return browser_.Model().FindTab(tab.get()); }
  std::size_t TabCount() { return browser_.ActiveGroup()->FlatTabs().size(); }

  TFakeBrowser browser_;
};

TEST_F(FakeTabDockTest, NewTabsOpenAtTheEndOrAfterTheirOpenerActivatedUnlessAsked) {
  auto first = browser_.OpenTab(u"https://first.example/");
  auto tab = Navigate(u"https://new.example/", {{u"new", u"true"}});
  ASSERT_TRUE(tab);
  EXPECT_EQ(TabCount(), 2u);
  EXPECT_EQ(browser_.ActiveTab(), Fake(tab));
  EXPECT_EQ(browser_.TabAt(1), Fake(tab));
  ASSERT_NE(Fake(tab)->Browser(), nullptr);
  EXPECT_EQ(Fake(tab)->Browser()->TextValue(browser_key::Uri), u"https://new.example/");
  ASSERT_EQ(dock().NavigateCalls().size(), 1u);
  EXPECT_EQ(dock().NavigateCalls()[0].Options, (TFakeParams{{u"new", u"true"}}));

  Navigate(u"https://bg.example/", {{u"new", u"true"}, {u"activate", u"false"}});
  EXPECT_EQ(browser_.ActiveTab(), Fake(tab));
  EXPECT_EQ(TabCount(), 3u);
  auto child = Navigate(u"child", {{u"new", u"true"}, {u"from-tab-guid", first->GuidText()}});
  EXPECT_EQ(browser_.TabAt(1), Fake(child));
}

TEST_F(FakeTabDockTest, ReuseBlankTakesABlankActiveTabOnly) {
  auto blank = browser_.OpenTab(u"about:blank");
  auto tab = Navigate(u"https://x.example/", {{u"new", u"true"}, {u"reuseblank", u"true"}});
  EXPECT_EQ(Fake(tab), blank.get());
  EXPECT_EQ(TabCount(), 1u);
  EXPECT_EQ(blank->TextValue(tab_key::Uri), u"https://x.example/");
  auto other = Navigate(u"https://y.example/", {{u"new", u"true"}, {u"reuseblank", u"true"}});
  EXPECT_NE(Fake(other), blank.get());
  EXPECT_EQ(TabCount(), 2u);
  auto emptyUri = browser_.OpenTab(u"http://");
  auto reused = Navigate(u"https://z.example/", {{u"new", u"true"}, {u"reuseblank", u"true"}});
  EXPECT_EQ(Fake(reused), emptyUri.get());
}

TEST_F(FakeTabDockTest, NotNewNavigatesTheActiveTabAndTabGuidNamesATab) {
  auto a = browser_.OpenTab(u"https://a.example/");
  auto b = browser_.OpenTab(u"https://b.example/");
  auto same = Navigate(u"https://c.example/", {{u"new", u"false"}});
  EXPECT_EQ(Fake(same), b.get());
  EXPECT_EQ(b->TextValue(tab_key::Uri), u"https://c.example/");
  auto named = Navigate(u"https://d.example/", {{u"new", u"true"}, {u"tab-guid", a->GuidText()}});
  EXPECT_EQ(Fake(named), a.get());
  EXPECT_EQ(a->TextValue(tab_key::Uri), u"https://d.example/");
  EXPECT_EQ(TabCount(), 2u);

  const std::u16string guid = u"{0F0E0D0C-0B0A-0908-0706-050403020100}";
  auto restored = Navigate(u"https://e.example/", {{u"new", u"true"}, {u"tab-guid", guid}});
  EXPECT_EQ(Fake(restored)->GuidText(), guid);
}

TEST_F(FakeTabDockTest, NoBrowserEngineAndPostOptions) {
  auto bare = Navigate(u"https://a.example/", {{u"new", u"true"}, {u"nobrowser", u"true"}});
  EXPECT_EQ(Fake(bare)->Browser(), nullptr);
  const std::u16string engine = u"{AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE}";
  auto other =
      Navigate(u"https://b.example/",
               {{u"new", u"true"}, {u"browser-guid", engine}, {u"post", u"q=1"}, {u"individual", u"true"}});
  ASSERT_NE(Fake(other)->Browser(), nullptr);
  EXPECT_EQ(Fake(other)->Browser()->TextValue(browser_key::EngineId), engine);
  EXPECT_EQ(Fake(other)->Browser()->TextValue(u"post"), u"q=1");
  EXPECT_EQ(Fake(other)->TextValue(u"individual"), u"true");
}

TEST_F(FakeTabDockTest, GroupArgumentAndNewTabGroup) {
  browser_.OpenTab(u"a");
  auto work = browser_.NewGroup(u"Work");
  ComPtr<IQxITabGroup> group;
  EXPECT_EQ(dock().GetNewTabGroup(group.put()), kFail);
  EXPECT_FALSE(group);
  dock().SetNewTabGroup(work.get());
  ASSERT_EQ(dock().GetNewTabGroup(group.put()), kOk);
  EXPECT_EQ(group.get(), static_cast<IQxITabGroup*>(work.get()));

  auto tab = Navigate(u"https://w.example/", {{u"new", u"true"}}, group.get());
  EXPECT_EQ(Fake(tab)->Group(), work.get());
  EXPECT_EQ(browser_.ActiveGroup(), work.get());  // activating a tab shows its group
  EXPECT_EQ(dock().NavigateCalls().back().GroupId, work->GuidText());
  Navigate(nullptr, {}, nullptr, kInvalidArg);
  auto stranger = MakeCom<TFakeTabGroup>(std::weak_ptr<TFakeTabModel>(), NewGuid());
  Navigate(u"x", {{u"new", u"true"}}, stranger.get(), kInvalidArg);
}

TEST_F(FakeTabDockTest, IdsKindsLockAndContentIndex) {
  auto a = browser_.OpenTab(u"a");
  auto b = browser_.OpenTab(u"b");
  std::int32_t id = 0;
  ASSERT_EQ(dock().TabIdOf(b.get(), &id), kOk);
  ComPtr<IQxITab> found;
  ASSERT_EQ(dock().TabById(id, found.put()), kOk);
  EXPECT_EQ(found.get(), static_cast<IQxITab*>(b.get()));
  EXPECT_EQ(dock().TabById(9999, found.put()), kFail);
  EXPECT_EQ(dock().TabIdOf(nullptr, &id), kFail);

  ASSERT_EQ(dock().TabByBrowserId(b->Browser()->GuidText().c_str(), found.put()), kOk);
  EXPECT_EQ(found.get(), static_cast<IQxITab*>(b.get()));
  EXPECT_EQ(dock().TabByBrowserId(u"{unknown}", found.put()), kFail);

  EXPECT_EQ(dock().GetGroupKind(a.get()), 0);
  browser_.ActiveGroup()->SetKind(1);
  EXPECT_EQ(dock().GetGroupKind(a.get()), 1);
  EXPECT_EQ(dock().GetGroupKind(nullptr), 0);

  std::int32_t index = -1;
  browser_.ActiveGroup()->SetFirstContentIndex(1);
  ASSERT_EQ(dock().FirstContentIndex(browser_.ActiveGroup(), &index), kOk);
  EXPECT_EQ(index, 1);
  EXPECT_EQ(dock().FirstContentIndex(nullptr, &index), kFail);

  std::int32_t kind = 0;
  dock().SetDockKind(2);
  ASSERT_EQ(dock().GetDockKind(&kind), kOk);
  EXPECT_EQ(kind, 2);
  dock().SetLock(2);
  EXPECT_TRUE(dock().Locked());
  dock().SetLock(1);
  EXPECT_FALSE(dock().Locked());
  EXPECT_EQ(dock().LockCalls(), (std::vector<std::int32_t>{2, 1}));
  dock().Refresh(1);
  EXPECT_EQ(dock().RefreshCalls(), (std::vector<std::int32_t>{1}));
}

}  // namespace
}  // namespace qx
