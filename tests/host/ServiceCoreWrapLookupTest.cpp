#include "WrapFixture.h"
#include "host/HostKeys.h"

namespace qx {
namespace {

class ServiceCoreWrapLookupTest : public WrapFixture {
 protected:
  std::vector<std::u16string> CommandsOf(TFakeTab* tab) {
    std::vector<std::u16string> out;
    for (const auto& command : host_.Model().Commands())
      if (command.TabId == tab->GuidText()) out.push_back(command.Command);
    return out;
  }
};

TEST_F(ServiceCoreWrapLookupTest, SecurityFlagsLiveInPageDataAndNotifyOnlyChromiumBrowsers) {
  TFakeTab* chromium = Open(u"http://a/", WithEngine(std::u16string(kChromiumEngineClassGuid)));
  TFakeTab* other = Open(u"http://b/", WithEngine(u"{00000000-0000-0000-0000-000000000001}"));
  EXPECT_EQ(wrap_->TabEngineKind(chromium), 1);
  EXPECT_EQ(wrap_->TabEngineKind(other), 0);
  EXPECT_EQ(wrap_->BrowserEngineKind(nullptr), 0);
  std::int32_t flags = -1;
  EXPECT_FALSE(wrap_->GetSecurityOfTab(chromium, flags));
  EXPECT_EQ(flags, 0);
  EXPECT_TRUE(wrap_->SetSecurityOfTab(chromium, 12));
  EXPECT_TRUE(wrap_->GetSecurityOfTab(chromium, flags));
  EXPECT_EQ(flags, 12);
  EXPECT_TRUE(wrap_->SetSecurityOfTab(other, 3));
  EXPECT_EQ(CommandsOf(chromium), (std::vector<std::u16string>{u"UpdateSecurity"}));
  EXPECT_TRUE(CommandsOf(other).empty());  // setting tests the engine
  EXPECT_TRUE(wrap_->ClearSecurityOfTab(other, true));
  EXPECT_EQ(CommandsOf(other), (std::vector<std::u16string>{u"UpdateSecurity"}));  // clearing does not
  EXPECT_FALSE(wrap_->GetSecurityOfTab(other, flags));
}

TEST_F(ServiceCoreWrapLookupTest, TabsAndBrowsersFindEachOtherAndCarryCommandsAndValues) {
  TFakeTab* tab = Open(u"http://a/");
  ComPtr<IQxIBrowser> browser;
  wrap_->BrowserOfTab(tab, browser);
  ASSERT_TRUE(browser);
  ComPtr<IQxITab> back;
  wrap_->TabOfBrowser(browser.get(), back);
  EXPECT_TRUE(SameInterface(back.get(), Tab(tab)));
  ComPtr<IQxITab> byGuid;
  wrap_->TabByGuid(tab->GuidText(), byGuid);
  EXPECT_TRUE(SameInterface(byGuid.get(), Tab(tab)));
  ComPtr<IQxITab> byId;
  wrap_->TabById(wrap_->TabIdOf(tab), byId);
  EXPECT_TRUE(SameInterface(byId.get(), Tab(tab)));
  EXPECT_EQ(wrap_->TabGuidOfBrowserIdText(wrap_->BrowserIdTextOfBrowser(browser.get())), tab->GuidText());
  ComPtr<IQxITab> none;
  wrap_->TabOfBrowser(nullptr, none);
  EXPECT_FALSE(none);

  host_.Model().SetTabText(tab, tab_key::StatusNaviLock, u"locked");
  EXPECT_FALSE(wrap_->IsTabNaviLocked(tab));
  host_.Properties().Set(prop_key::TabLockWithNavigationLock, u"true");
  EXPECT_TRUE(wrap_->IsTabNaviLocked(tab));
  host_.Properties().Set(prop_key::TabLockWithNavigationLock, u"True");
  EXPECT_FALSE(wrap_->IsTabNaviLocked(tab));  // compared exactly
  EXPECT_FALSE(wrap_->IsBrowserNaviLocked(nullptr));

  EXPECT_TRUE(wrap_->ExecuteJavascript(browser.get(), u"1+1", true, u"id_1"));
  const auto& script = host_.Model().Commands().back();
  EXPECT_EQ(script.Command, u"ExecuteJavascript");
  EXPECT_EQ(ParamValue(script.Parameters, u"code"), u"1+1");
  EXPECT_EQ(ParamValue(script.Parameters, u"script-id"), u"id_1");
  EXPECT_EQ(ParamValue(script.Parameters, u"force-enable-script"), u"true");
  EXPECT_FALSE(wrap_->ExecuteJavascript(nullptr, u"1", false, u"x"));
  // A navigation posts only with a body.
  wrap_->NavigateBrowser(browser.get(), u"http://b/", u"");
  EXPECT_EQ(wrap_->BrowserUri(browser.get()), u"http://b/");
  wrap_->NavigateBrowser(browser.get(), u"http://c/", u"q=1");
  const auto& post = host_.Model().Commands().back();
  EXPECT_EQ(post.Command, u"post");
  EXPECT_EQ(ParamValue(post.Parameters, u"post"), u"q=1");

  EXPECT_EQ(wrap_->ZoomRatioOfBrowser(nullptr), 100);
  host_.Model().SetBrowserText(tab->Browser(), browser_key::ZoomRatio, u"150");
  EXPECT_EQ(wrap_->ZoomRatioOfBrowser(browser.get()), 150);
  host_.Model().SetBrowserText(tab->Browser(), browser_key::WindowHandle, u"4660");
  EXPECT_EQ(wrap_->WindowHandleOfBrowser(browser.get()), 4660u);
  EXPECT_EQ(wrap_->WindowHandleOfTab(tab), 4660u);
}

TEST_F(ServiceCoreWrapLookupTest, SiteUpdatesBookmarksPrivateGroupsAndEventConveniences) {
  EXPECT_TRUE(wrap_->IsSiteUpdatesPage(u"file:///C:\\dir\\SiteUpdates.html"));
  EXPECT_TRUE(wrap_->IsSiteUpdatesPage(u"siteupdates.html"));
  EXPECT_FALSE(wrap_->IsSiteUpdatesPage(u"http://x/siteupdates.html?x"));

  EXPECT_TRUE(wrap_->IsBookmarkConnected());
  host_.Bookmarks().SetStatus(u"status", u"Connected");
  EXPECT_FALSE(wrap_->IsBookmarkConnected());
  EXPECT_FALSE(wrap_->IsPrivateTabGroup(nullptr));
  host_.Model().SetPrivate(host_.Model().ActiveGroup(), true);
  EXPECT_TRUE(wrap_->IsPrivateTabGroup(host_.Model().ActiveGroup()));

  EXPECT_FALSE(wrap_->ChromiumUserAgent().empty());
  host_.Events().ClearEventLog();
  wrap_->FireEventWithStrings(u"Some.Event", {u"a"}, {u"1", u"2"});
  EXPECT_TRUE(host_.Events().EventLog().empty());
  wrap_->FireEventWithStrings(u"Some.Event", {u"a", u"b"}, {u"1", u"2"});
  ASSERT_EQ(host_.Events().EventLog().size(), 1u);
}

TEST_F(ServiceCoreWrapLookupTest, BrowserAreaIsTheWidgetOnScreenOrInFullScreenTheMainWindow) {
  host_.HostWindows().CreateMainWindow(TRect{100, 50, 1380, 850});
  EXPECT_FALSE(wrap_->IsMainWindowFullscreen());
  TRect rect;
  ASSERT_TRUE(wrap_->WidgetRectByName(u"BrowserAreaWidget", rect));
  EXPECT_EQ(rect, (TRect{100, 135, 1380, 850}));
  EXPECT_FALSE(wrap_->WidgetRectByName(u"NoSuchWidget", rect));
  EXPECT_EQ(rect, TRect{});
  EXPECT_EQ(wrap_->BrowserAreaRect(), (TRect{100, 135, 1380, 850}));

  host_.HostWindows().SetFullscreen(true);
  EXPECT_TRUE(wrap_->IsMainWindowFullscreen());
  EXPECT_EQ(wrap_->BrowserAreaRect(), (TRect{100, 50, 1380, 850}));
  host_.Properties().Set(prop_key::FullScreenToolbarPinned, u"true");
  EXPECT_EQ(wrap_->BrowserAreaRect(), (TRect{100, 93, 1380, 850}));
  EXPECT_EQ(wrap_->BrowserAreaInnerRect(), (TRect{100, 93, 1380, 786}));
}

TEST_F(ServiceCoreWrapLookupTest, FindWidgetIdByAttributeIsDepthFirstAndIgnoresCase) {
  host_.Widgets().SetWidgetRect(u"Extra", 1, 2, 3, 4);
  EXPECT_EQ(wrap_->FindWidgetIdByAttribute(u"rect", u"0,85,1280,800"), u"BrowserAreaWidget");
  EXPECT_EQ(wrap_->FindWidgetIdByAttribute(u"id", u"tabbarwidget"), u"TabBarWidget");
  EXPECT_TRUE(wrap_->FindWidgetIdByAttribute(u"rect", u"9,9,9,9").empty());
}

}  // namespace
}  // namespace qx
