#include <gtest/gtest.h>

#include "fakehost/FakeFileDate.h"
#include "fakehost/FakeListener.h"
#include "fakehost/FakeStringDictionary.h"
#include "fakehost/FakeTestUtil.h"
#include "host/HostKeys.h"

namespace qx {
namespace {

using test::Steps;
using TSteps = std::vector<std::string>;

// A tab-group change: the group's "before", the manager's, then the group's "after".
TSteps Around(const std::string& event) {
  return {"TabGroup.Changed:" + event + ":before", "TabManager.Changed:" + event,
          "TabGroup.Changed:" + event + ":after"};
}
const TSteps kAdd = Around("AddTab"), kInsert = Around("InsertTab"), kSelect = Around("SetActiveTab"),
             kRemove = Around("RemoveTab"), kRemoveSection = Around("RemoveTabSection"),
             kMove = Around("SetTabIndex");

TSteps Join(std::initializer_list<TSteps> parts) {
  TSteps all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

class FakeTabModelEvents : public ::testing::Test {
 protected:
  std::vector<TFakeEventRecord> Take() {
    auto log = browser_.EventLog();
    browser_.ClearEventLog();
    return log;
  }
  std::vector<std::u16string> Uris(TFakeTabGroup* group = nullptr) {
    std::vector<std::u16string> uris;
    for (const auto& tab : (group ? group : browser_.ActiveGroup())->FlatTabs())
      uris.push_back(tab->TextValue(tab_key::Uri));
    return uris;
  }

  TFakeBrowser browser_;
};

TEST_F(FakeTabModelEvents, OpeningTabsRaisesAddSelectAndBrowse) {
  browser_.ClearEventLog();
  auto a = browser_.OpenTab(u"https://a.example/");
  auto log = Take();
  EXPECT_EQ(Steps(log), Join({kAdd, kSelect, {"Browser.Changed:OnBrowseBegin"}}));
  const auto group = browser_.ActiveGroup()->GuidText();
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(log[i].Value(u"id"), group);
    EXPECT_EQ(log[i].Value(u"tab-id"), a->GuidText());
    EXPECT_EQ(log[i].Value(u"index"), u"0");
  }
  EXPECT_EQ(log[3].Value(u"tab-id"), u"");  // no active tab before
  EXPECT_EQ(log[3].Value(u"new-tab-id"), a->GuidText());
  EXPECT_EQ(log[6].Value(u"browser-id"), a->Browser()->GuidText());
  EXPECT_EQ(log[6].Value(u"uri"), u"https://a.example/");

  auto b = browser_.OpenTab(u"https://b.example/");
  log = Take();
  EXPECT_EQ(Steps(log), Join({kAdd, kSelect, {"Browser.Changed:OnBrowseBegin"}}));
  EXPECT_EQ(log[3].Value(u"tab-id"), a->GuidText());
  EXPECT_EQ(log[3].Value(u"new-tab-id"), b->GuidText());

  auto c = browser_.OpenTabAfter(a.get(), u"https://c.example/");
  log = Take();
  EXPECT_EQ(Steps(log), Join({kInsert, kSelect, {"Browser.Changed:OnBrowseBegin"}}));
  EXPECT_EQ(log[0].Value(u"index"), u"1");
  EXPECT_EQ(Uris(), (std::vector<std::u16string>{u"https://a.example/", u"https://c.example/",
                                                 u"https://b.example/"}));

  TFakeOpenTab background;
  background.Activate = false;
  browser_.OpenTab(u"https://d.example/", background);
  EXPECT_EQ(Steps(Take()), Join({kAdd, {"Browser.Changed:OnBrowseBegin"}}));
  EXPECT_EQ(browser_.ActiveTab(), c.get());
}

TEST_F(FakeTabModelEvents, NewTabsCarryCreateTimeAndABrowserWithItsValues) {
  browser_.Model().FileDateClock = [] { return PackFileDate(2024, 5, 6, 7, 8, 10); };
  auto tab = browser_.OpenTab(u"https://a.example/");
  std::int64_t created = 0;
  ASSERT_EQ(tab->Value(tab_key::CreateTime)->AsInt64(&created, 0, 0), kOk);
  EXPECT_EQ(created, (((2024 - 1980) << 9 | 5 << 5 | 6) << 16) | (7 << 11 | 8 << 5 | 5));
  auto* browser = tab->Browser();
  ASSERT_NE(browser, nullptr);
  EXPECT_EQ(browser->TextValue(browser_key::EngineId), kChromiumEngineClassGuid);
  EXPECT_EQ(browser->TextValue(browser_key::BrowserId), browser->GuidText());
  EXPECT_EQ(browser->TextValue(browser_key::ZoomRatio), u"100");
  EXPECT_NE(browser->TextValue(browser_key::WindowHandle), u"0");
  EXPECT_EQ(browser->Tab(), tab.get());
}

TEST_F(FakeTabModelEvents, ClosingTheActiveTabSelectsItsRightNeighbourFirst) {
  auto a = browser_.OpenTab(u"https://a.example/");
  auto b = browser_.OpenTab(u"https://b.example/");
  auto c = browser_.OpenTab(u"https://c.example/");
  browser_.SelectTab(b.get());
  browser_.Host().PageData().SetData(b->GuidText().c_str(), u"client.Security", u"3");
  browser_.ClearEventLog();
  ASSERT_EQ(browser_.CloseTab(b.get()), kOk);
  auto log = Take();
  EXPECT_EQ(Steps(log), Join({kSelect, kRemove}));
  EXPECT_EQ(log[0].Value(u"new-tab-id"), c->GuidText());
  EXPECT_EQ(log[3].Value(u"tab-id"), b->GuidText());
  EXPECT_EQ(browser_.ActiveTab(), c.get());
  EXPECT_EQ(b->Group(), nullptr);
  EXPECT_FALSE(browser_.Host().PageData().Data(b->GuidText(), u"client.Security"));
  EXPECT_EQ(browser_.Model().TabByGuid(b->GuidText()), nullptr);
  EXPECT_EQ(browser_.Model().AllBrowsers().size(), 2u);

  browser_.CloseTab(c.get());  // the last one: the left neighbour takes over
  EXPECT_EQ(browser_.ActiveTab(), a.get());
  browser_.CloseTab(a.get());
  EXPECT_EQ(browser_.ActiveTab(), nullptr);
  EXPECT_EQ(browser_.CloseTab(a.get()), kFail);
}

TEST_F(FakeTabModelEvents, SectionsAreMadeMovedIntoAndRemovedWhenEmpty) {
  auto a = browser_.OpenTab(u"https://a.example/");
  auto b = browser_.OpenTab(u"https://b.example/");
  auto c = browser_.OpenTab(u"https://c.example/");
  browser_.ClearEventLog();
  ASSERT_EQ(browser_.MakeSection(c.get(), 1), kOk);
  auto log = Take();
  EXPECT_EQ(Steps(log), kMove);
  EXPECT_EQ(log[0].Value(u"section-index"), u"1");
  ASSERT_EQ(browser_.ActiveGroup()->Sections().size(), 2u);

  ASSERT_EQ(browser_.MoveTabToSection(b.get(), 1, 0), kOk);
  EXPECT_EQ(Steps(Take()), kMove);
  EXPECT_EQ(Uris(), (std::vector<std::u16string>{u"https://a.example/", u"https://b.example/",
                                                 u"https://c.example/"}));
  EXPECT_EQ(b->Section(), c->Section());

  // The first section, now holding only a, goes when a moves out.
  ASSERT_EQ(browser_.MoveTabToSection(a.get(), 1, 2), kOk);
  EXPECT_EQ(Steps(Take()), Join({kMove, kRemoveSection}));
  ASSERT_EQ(browser_.ActiveGroup()->Sections().size(), 1u);

  // A tab alone in its section: closing it removes the section too.
  browser_.MakeSection(a.get(), 0);
  browser_.ClearEventLog();
  browser_.SelectTab(b.get());
  browser_.ClearEventLog();
  browser_.CloseTab(a.get());
  auto closing = Take();
  EXPECT_EQ(Steps(closing), Join({kRemove, kRemoveSection}));
  EXPECT_EQ(closing[3].Value(u"section-index"), u"0");
}

TEST_F(FakeTabModelEvents, MovingAndSwappingTabs) {
  auto a = browser_.OpenTab(u"a");
  auto b = browser_.OpenTab(u"b");
  auto c = browser_.OpenTab(u"c");
  browser_.ClearEventLog();
  ASSERT_EQ(browser_.MoveTab(a.get(), 2), kOk);
  auto log = Take();
  EXPECT_EQ(Steps(log), kMove);
  EXPECT_EQ(log[0].Value(u"index"), u"2");
  EXPECT_EQ(log[0].Value(u"old-index"), u"0");
  EXPECT_EQ(Uris(), (std::vector<std::u16string>{u"b", u"c", u"a"}));
  ASSERT_EQ(browser_.MoveTab(a.get(), 2), kOk);  // already there
  EXPECT_TRUE(Take().empty());

  ASSERT_EQ(browser_.SwapTabs(b.get(), a.get()), kOk);
  log = Take();
  EXPECT_EQ(Steps(log), Around("SwapTab"));
  EXPECT_EQ(log[0].Value(u"tab-id"), b->GuidText());
  EXPECT_EQ(log[0].Value(u"new-tab-id"), a->GuidText());
  EXPECT_EQ(Uris(), (std::vector<std::u16string>{u"a", u"c", u"b"}));
  EXPECT_EQ(browser_.SwapTabs(a.get(), a.get()), kInvalidArg);
}

TEST_F(FakeTabModelEvents, NavigatingLoadingAndThumbnails) {
  auto tab = browser_.OpenTab(u"https://a.example/");
  browser_.ClearEventLog();
  ASSERT_EQ(browser_.Navigate(tab.get(), u"https://b.example/", u"Bee"), kOk);
  auto log = Take();
  EXPECT_EQ(Steps(log), (TSteps{"Browser.Changed:OnBrowseBegin", "Tab.Changed:SetProperty",
                                "Tab.Changed:SetProperty", "TabBarControl.UpdateTab"}));
  EXPECT_EQ(log[1].Value(u"id"), tab->GuidText());
  EXPECT_EQ(log[1].Value(u"key"), u"uri");
  EXPECT_EQ(log[1].Value(u"old-value"), u"https://a.example/");
  EXPECT_EQ(log[1].Value(u"value"), u"https://b.example/");
  EXPECT_EQ(log[2].Value(u"key"), u"title");
  EXPECT_EQ(log[3].Value(u"tab-id"), tab->GuidText());
  EXPECT_EQ(tab->Browser()->TextValue(browser_key::Title), u"Bee");
  EXPECT_EQ(tab->Browser()->BackHistory(), (std::vector<std::u16string>{u"https://a.example/"}));

  // The back history is an array of string dictionaries with "uri".
  ComPtr<IUnknown> object;
  ASSERT_EQ(tab->Browser()->Value(browser_key::BackHistory)->AsUnknown(object.put()), kOk);
  auto array = object.As<IQxIArray>();
  ASSERT_TRUE(array);
  ComPtr<IUnknown> item;
  ASSERT_EQ(array->GetItem(0, item.put()), kOk);
  auto entry = item.As<IQxIStringDictionary>();
  ASSERT_TRUE(entry);
  ComPtr<IQxIString> uri;
  entry->GetValue(u"uri", uri.put());
  EXPECT_EQ(ReadString(uri.get()), u"https://a.example/");

  browser_.FinishLoading(tab.get());
  log = Take();
  EXPECT_EQ(Steps(log), (TSteps{"Browser.Changed:OnBrowseComplete", "Tab.LoadingStop"}));
  EXPECT_EQ(log[0].Value(u"browser-id"), tab->Browser()->GuidText());
  EXPECT_EQ(log[1].Value(u"tab-id"), tab->GuidText());

  browser_.ThumbnailReady(tab.get());
  log = Take();
  EXPECT_EQ(Steps(log), TSteps{"ChromiumEngine.ThumbnailCreated"});
  EXPECT_EQ(log[0].Value(u"tab-id"), tab->GuidText());
}

TEST_F(FakeTabModelEvents, GroupsSwitchAndSelectingATabOfAnotherGroupSwitchesFirst) {
  auto a = browser_.OpenTab(u"a");
  auto* first = browser_.ActiveGroup();
  browser_.ClearEventLog();
  auto second = browser_.NewGroup(u"Work");
  auto log = Take();
  EXPECT_EQ(Steps(log), TSteps{"TabManager.Changed:AddTabGroup"});
  EXPECT_EQ(log[0].Value(u"id"), second->GuidText());
  ASSERT_EQ(browser_.SwitchGroup(second.get()), kOk);
  log = Take();
  EXPECT_EQ(Steps(log), (TSteps{"TabManager.Changed:SetCurrentGroup", "TabBarControl.Update"}));
  EXPECT_EQ(log[0].Value(u"id"), second->GuidText());
  EXPECT_EQ(log[0].Value(u"old-id"), first->GuidText());

  TFakeOpenTab there;
  there.Group = second.get();
  auto w = browser_.OpenTab(u"w", there);
  EXPECT_EQ(w->Group(), second.get());
  browser_.ClearEventLog();
  ASSERT_EQ(browser_.SelectTab(a.get()), kOk);  // already active in its group
  EXPECT_EQ(Steps(Take()), (TSteps{"TabManager.Changed:SetCurrentGroup", "TabBarControl.Update"}));
  EXPECT_EQ(browser_.ActiveGroup(), first);
}

TEST_F(FakeTabModelEvents, HidingPrivacyFaviconsAndPageInput) {
  auto a = browser_.OpenTab(u"a");
  browser_.ClearEventLog();
  browser_.HideTab(a.get());
  auto log = Take();
  EXPECT_EQ(Steps(log), (TSteps{"Tab.Changed:SetProperty", "TabBarControl.Update"}));
  EXPECT_EQ(log[0].Value(u"key"), u"hidden");
  EXPECT_EQ(browser_.Host().Dock().IsTabHidden(a.get()), 1);
  browser_.ShowTab(a.get());
  EXPECT_EQ(browser_.Host().Dock().IsTabHidden(a.get()), 0);
  Take();

  browser_.SetPrivate(browser_.ActiveGroup(), true);
  log = Take();
  EXPECT_EQ(Steps(log), (TSteps{"TabManager.Changed:SetProperty", "TabGroupBar.TogglePrivate"}));
  EXPECT_EQ(log[0].Value(u"key"), u"private");
  EXPECT_EQ(log[0].Value(u"value"), u"true");
  EXPECT_EQ(browser_.ActiveGroup()->TextValue(group_key::Private), u"true");
  browser_.SetPrivate(browser_.ActiveGroup(), true);
  EXPECT_TRUE(Take().empty());

  browser_.FaviconFails(u"https://a.example/");
  log = Take();
  EXPECT_EQ(Steps(log),
            (TSteps{"FaviconManager.Changed:Request:before", "FaviconManager.Changed:Request:after"}));
  EXPECT_EQ(log[1].Value(u"result"), u"false");
  EXPECT_EQ(log[1].Value(u"uri-id"), u"https://a.example/");

  browser_.ReleaseMouseInPage(10, 20);
  browser_.KeyDownInPage(u"Left");
  log = Take();
  ASSERT_EQ(log.size(), 2u);
  EXPECT_EQ(log[0].Id, u"QxInputHandler.IPC");
  EXPECT_EQ(log[0].Value(u"Action"), u"#LU 10 20");
  EXPECT_EQ(log[1].Value(u"Action"), u"#KD Left");
}

TEST_F(FakeTabModelEvents, ModuleRequestsAreAnsweredByTheHost) {
  auto a = browser_.OpenTab(u"a");
  auto b = browser_.OpenTab(u"b");
  const auto fire = [&](const char16_t* id, TFakeParams params) {
    auto dictionary = MakeCom<TFakeStringDictionary>(std::move(params));
    return browser_.Events().Fire(id, dictionary.get(), nullptr);
  };
  fire(u"TabBar.SelectTab", {{u"tab-id", a->GuidText()}});
  EXPECT_EQ(browser_.ActiveTab(), a.get());
  fire(u"TabBar.CloseTab", {{u"tab-id", a->GuidText()}});
  EXPECT_EQ(a->Group(), nullptr);
  fire(u"TabBar.NewTab", {});
  ASSERT_EQ(browser_.ActiveGroup()->FlatTabs().size(), 2u);
  EXPECT_EQ(browser_.ActiveTab()->TextValue(tab_key::Uri), u"about:blank");
  fire(u"TabBar.CloseTab", {{u"tab-id", u"{00000000-0000-0000-0000-000000000000}"}});  // unknown: ignored
  fire(u"TabBar.CloseTab", {{u"tab-id", u"not a guid"}});

  browser_.ClearEventLog();
  browser_.Events().Post(u"QxCabinetDataManager.Cabinet", u"", nullptr, 0, 0, 0);
  EXPECT_FALSE(browser_.Host().InCabinet());
  browser_.RunPending();
  EXPECT_TRUE(browser_.Host().InCabinet());
  EXPECT_EQ(Steps(Take()), (TSteps{"QxCabinetDataManager.Cabinet", "QxCabinetDataManager.Cabinet.Enter"}));

  auto* from = browser_.ActiveTab();
  fire(u"SearchEngineManager.SearchDirect", {{u"request", u"https://search.example/?q={searchTerms}"},
                                             {u"keyword", u"caf\u00e9 au lait"},
                                             {u"new", u"true"},
                                             {u"activate", u"true"},
                                             {u"from-tab-guid", from->GuidText()}});
  ASSERT_NE(browser_.ActiveTab(), from);
  EXPECT_EQ(browser_.ActiveTab()->TextValue(tab_key::Uri),
            u"https://search.example/?q=caf%C3%A9%20au%20lait");
  EXPECT_EQ(browser_.ActiveGroup()->IndexOf(browser_.ActiveTab()), browser_.ActiveGroup()->IndexOf(from) + 1);
  fire(u"SearchDock.ApplySearchText", {{u"keyword", u"word"}});
  EXPECT_EQ(browser_.Host().SearchBoxText(), u"word");

  browser_.Host().SetHostReactions(false);
  fire(u"TabBar.SelectTab", {{u"tab-id", b->GuidText()}});
  EXPECT_NE(browser_.ActiveTab(), b.get());
}

TEST_F(FakeTabModelEvents, ListenersMayChangeTheModelDuringItsEvents) {
  ComPtr<TFakeTab> victim;
  auto closer = MakeCom<TFakeListener>([&](const std::u16string&, const TFakeParams& params) {
    if (ParamValue(params, u"event") == u"AddTab" && ParamValue(params, u"timing") == u"after" && victim)
      browser_.CloseTab(victim.get());
  });
  auto a = browser_.OpenTab(u"a");
  victim = a;
  browser_.Events().AddListener(u"TabGroup.Changed", closer.get(), 0);
  auto b = browser_.OpenTab(u"b");
  EXPECT_EQ(a->Group(), nullptr);
  EXPECT_EQ(browser_.ActiveTab(), b.get());
  EXPECT_EQ(browser_.ActiveGroup()->FlatTabs().size(), 1u);

  // A tab closed while its own removal is announced is closed only once.
  victim = nullptr;
  auto again = MakeCom<TFakeListener>([&](const std::u16string&, const TFakeParams& params) {
    if (ParamValue(params, u"event") == u"RemoveTab" && ParamValue(params, u"timing") == u"before")
      browser_.CloseTab(b.get());
  });
  browser_.Events().AddListener(u"TabGroup.Changed", again.get(), 0);
  browser_.ClearEventLog();
  browser_.CloseTab(b.get());
  EXPECT_EQ(b->Group(), nullptr);
  EXPECT_EQ(browser_.ActiveGroup()->FlatTabs().size(), 0u);
}

}  // namespace
}  // namespace qx
