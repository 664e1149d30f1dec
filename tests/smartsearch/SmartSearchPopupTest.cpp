#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "SmartSearchFixture.h"
#include "fakehost/FakeXmlElement.h"
#include "host/HostKeys.h"
#include "smartsearch/SmartSearchForm.h"
#include "smartsearch/SmartSearchMain.h"
#include "toolkit/Application.h"
#include "toolkit/RegularExpression.h"
#include "toolkit/TimerService.h"

namespace qx {
namespace {

std::vector<std::uint8_t> PngBytes() {
  TBitmap bitmap(16, 16);
  bitmap.Clear(0xFF3366CCu);
  std::ostringstream out;
  bitmap.SaveToStream(out);
  const std::string text = out.str();
  return {text.begin(), text.end()};
}

// The trigger over a fake browser whose browser area is 0,85 to 1280,800.
class SmartSearchPopupTest : public SmartSearchFixture {
 protected:
  SmartSearchPopupTest() {
    TToolkit::Finalize();
    // A real main window: the fake's default handle only names a window by the luck of
    // being the first one this process makes.
    host_.HostWindows().CreateMainWindow(TRect{0, 0, 1280, 800});
    SetProperty(prop_key::SearchBarShowSmartSearch, u"true");
    SetProperty(prop_key::SearchBarCount, u"3");
    SetProperty(prop_key::SearchBarSmartSearchCustomButtonCount, u"1");
    SetProperty(u"client.SearchBarSetting-Item0",
                uR"({"ActionName":"QuillmarSearch","Request":"d?q={searchTerms}"})");
    SetProperty(
        u"client.SearchBarSetting-Item1",
        uR"({"ActionName":"wiki","Request":"w?q={searchTerms}","Guid":"{W}","Name":"Wiki","Icon":"Wiki.ico"})");
    SetProperty(u"client.SearchBarSetting-Item2",
                uR"({"ActionName":"maps","Request":"m?q={searchTerms}","Guid":"{M}","Name":"Maps"})");
    host_.Favicons().StoreDefaultIcon(PngBytes());
    host_.Widgets().SetWidgetRect(u"BrowserAreaWidget", 0, 85, 1280, 800);
    search_ = std::make_unique<TSmartSearch>(wrap_.get());
  }
  ~SmartSearchPopupTest() override {
    search_.reset();
    TToolkit::Finalize();
  }

  // The page's selection after a left button release at (x, y), and the task that reads it.
  void SelectAndRelease(TFakeTab* tab, std::u16string_view text, int x, int y) {
    tab->Browser()->Page().Selection = text;
    Input(u"#LU " + IntToStr(x) + u" " + IntToStr(y));
    os_.Os().ProcessMessages();  // the queued task arrives
    for (int i = 0; i < 5; ++i) os_.Os().AdvanceClock(20);
    os_.Os().ProcessMessages();
  }
  TFakeTab* OpenPage(std::u16string_view uri) { return Open(uri, WithEngine(kChromiumEngineClassGuid)); }
  void Input(std::u16string_view action) {
    host_.Events().FireFromHost(u"QxInputHandler.IPC", {{u"Action", std::u16string(action)}});
  }
  TSmartSearchForm* Form() const { return search_->Form(); }
  bool Showing() const { return Form() && Form()->Visible(); }

  std::unique_ptr<TSmartSearch> search_;
};

TEST_F(SmartSearchPopupTest, SelectionShowsThePopupAndTheDefaultSearchOpensTheResult) {
  os_.Os().SetLogPixelsY(120);
  os_.Os().SetMessageFont(u"VL Gothic", -16);
  TFakeTab* tab = OpenPage(u"https://news.example/a");
  SelectAndRelease(tab, u"夏目漱石", 600, 300);
  ASSERT_TRUE(Showing());
  EXPECT_EQ(Form()->Keyword(), u"夏目漱石");
  // The host's UI font, 13 points at 96 DPI, one point larger and bold; the shadow alike.
  const TFont& font = Form()->SearchLabel()->TextSettings.Font;
  EXPECT_EQ(font.Family, u"VL Gothic");
  EXPECT_EQ(font.Size, 14.0f);
  EXPECT_TRUE(font.Style & static_cast<TFontStyles>(TFontStyle::Bold));
  EXPECT_EQ(Form()->SearchLabelShadow()->TextSettings.Font, font);
  // Below and to the left of the point, one engine button, the other engine in the menu.
  EXPECT_EQ(Form()->Left(), 600 - 32);
  EXPECT_EQ(Form()->Top(), 300);
  EXPECT_FALSE(Form()->ShowingUpword());
  ASSERT_EQ(Form()->SearchButtons().size(), 1u);
  EXPECT_EQ(Form()->SearchButtons()[0]->FGuid, u"{W}");
  ASSERT_EQ(Form()->EngineMenuItems().size(), 1u);
  EXPECT_EQ(Form()->EngineMenuItems()[0].Script, u"SmartSearch.MenuSelect({'action':'maps','id':'{M}'})");
  EXPECT_TRUE(Form()->MoreButton()->Visible());
  // The host opens the menu from the document registered with it: one item per engine.
  auto* menu = static_cast<TFakeXmlElement*>(host_.Popups().Popup(kSmartSearchEngineMenuId));
  ASSERT_NE(menu, nullptr);
  ASSERT_EQ(menu->Children().size(), 1u);
  const TFakeXmlElement& item = *menu->Children()[0];
  EXPECT_EQ(item.Name(), u"item");
  EXPECT_EQ(item.Attribute(u"action"), u"maps");
  EXPECT_EQ(item.Attribute(u"icon"), u"skin://widget/module/SearchEngine/QuillmarSearch.ico");
  EXPECT_EQ(item.Attribute(u"text"), u"Maps");
  EXPECT_EQ(item.Attribute(u"script"), u"SmartSearch.MenuSelect({'action':'maps','id':'{M}'})");
  EXPECT_FALSE(Form()->PageSearchButtonLayout()->Visible());
  const float widthWithoutPageSearch = static_cast<float>(Form()->Width());
  EXPECT_EQ(widthWithoutPageSearch, 14 + Form()->DefaultSearchButton()->Width() + 22 + 15 + 17);

  // The same selection released again brings nothing back.
  Form()->Hide();
  SelectAndRelease(tab, u"夏目漱石", 10, 10);
  EXPECT_FALSE(Showing());

  const TRect area = wrap_->BrowserAreaRect();
  SelectAndRelease(tab, u"漱石", area.Left + 10, area.Bottom - 10);
  ASSERT_TRUE(Showing());
  EXPECT_TRUE(Form()->ShowingUpword());  // near the bottom: above the point, shifted in
  EXPECT_EQ(Form()->Left(), area.Left);
  EXPECT_EQ(Form()->Top(), area.Bottom - 10 - 90);

  Form()->DefaultSearchButtonClick();
  EXPECT_FALSE(Showing());
  ASSERT_EQ(host_.SearchEngines().Searches().size(), 1u);
  EXPECT_EQ(host_.SearchEngines().Searches()[0].Keyword, u"漱石");
  EXPECT_EQ(host_.SearchHistory().Keywords(), std::vector<std::u16string>{u"漱石"});
  EXPECT_EQ(wrap_->GetPropertyInteger(u"client.SmartSearch-DefaultSearch", 0), 1);

  // Every engine with a button of its own: the old menu is taken back from the host.
  SetProperty(prop_key::SearchBarSmartSearchCustomButtonCount, u"2");
  host_.Events().FireFromHost(u"Option.Apply", {});
  SelectAndRelease(tab, u"夏目", 600, 300);
  ASSERT_TRUE(Showing());
  EXPECT_FALSE(Form()->MoreButton()->Visible());
  EXPECT_EQ(host_.Popups().Popup(kSmartSearchEngineMenuId), nullptr);
}

TEST_F(SmartSearchPopupTest, PageSearchOpensAResultTabAndCountsThePopupWider) {
  TFakeTab* tab = OpenPage(u"https://shop.example/search?q=shoes");
  SelectAndRelease(tab, u"靴", 600, 300);
  ASSERT_TRUE(Showing());
  EXPECT_EQ(Form()->PageSearchRequest(), u"https://shop.example/search?q={searchTerms}");
  EXPECT_TRUE(Form()->PageSearchButtonLayout()->Visible());
  EXPECT_EQ(Form()->Width(),
            static_cast<int>(14 + Form()->DefaultSearchButton()->Width() + 22 + 15 + 17 + 32));

  const std::size_t tabsBefore = host_.Model().ActiveGroup()->FlatTabs().size();
  Form()->PageSearchClick();
  EXPECT_FALSE(Showing());
  ASSERT_EQ(host_.Model().ActiveGroup()->FlatTabs().size(), tabsBefore + 1);
  EXPECT_EQ(wrap_->ActiveBrowserUri(), u"https://shop.example/search?q=%E9%9D%B4");
}

TEST_F(SmartSearchPopupTest, InputReportsHideOnlyForWheelAndNavigationKeys) {
  TFakeTab* tab = OpenPage(u"https://news.example/a");
  SelectAndRelease(tab, u"word", 600, 300);
  ASSERT_TRUE(Showing());
  Input(u"#KD A");
  EXPECT_TRUE(Showing());
  Input(u"#KD Shift left");
  EXPECT_FALSE(Showing());

  SelectAndRelease(tab, u"other", 600, 300);
  ASSERT_TRUE(Showing());
  Input(u"#WH");
  EXPECT_FALSE(Showing());

  // A cleared selection forgets the old one, so selecting it again shows the popup.
  SelectAndRelease(tab, u"", 600, 300);
  EXPECT_EQ(search_->LastKeyword(), u"");
  SelectAndRelease(tab, u"other", 600, 300);
  EXPECT_TRUE(Showing());

  // With smart search switched off the popup is made but never shown.
  Form()->Hide();
  SetProperty(prop_key::SearchBarShowSmartSearch, u"false");
  SelectAndRelease(tab, u"third", 600, 300);
  EXPECT_FALSE(Showing());
}

TEST_F(SmartSearchPopupTest, MalformedSitePatternEndsThatShowOnly) {
  WriteFile(Folder(dir_key::UserSettingClient) / "site_search_list.json",
            R"([{"query":"https://early.example/s?q={searchTerms}","encode":"utf-8","site_list":["early"]},)"
            R"({"query":"x","encode":"utf-8","site_list":["late\\.example","(unclosed"]}])");
  TFakeTab* tab = OpenPage(u"https://news.example/a");
  // The trigger's task ends with the error; the delay list goes on.
  EXPECT_NO_THROW(SelectAndRelease(tab, u"word", 600, 300));
  ASSERT_NE(Form(), nullptr);
  EXPECT_FALSE(Showing());

  // The later entry matches before its bad pattern is reached.
  host_.Model().NavigateTab(tab, u"https://late.example/");
  Form()->ShowForm(u"word", {600, 300});
  EXPECT_TRUE(Showing());
  EXPECT_EQ(Form()->PageSearchRequest(), u"x");
}

TEST_F(SmartSearchPopupTest, ASiteIconThatNeverArrivesIsAskedForFiveTimes) {
  TSmartSearchFavicons favicons(wrap_.get());
  for (int i = 0; i < 7; ++i) {
    ComPtr<ISharedFMXBitmap> icon;
    favicons.GetFavicon(u"https://silent.example/", icon);
    ASSERT_TRUE(icon) << i;
  }
  EXPECT_EQ(host_.Favicons().Requests().size(), 5u);
  EXPECT_EQ(favicons.Item(u"https://silent.example/")->FRetryCount, 5);
  EXPECT_FALSE(favicons.Item(u"https://silent.example/")->FBitmap);
}

TEST_F(SmartSearchPopupTest, PrivateTabSearchLeavesNoHistory) {
  TFakeTab* tab = OpenPage(u"https://news.example/a");
  host_.Model().SetPrivate(host_.Model().ActiveGroup(), true);
  SelectAndRelease(tab, u"secret", 600, 300);
  ASSERT_TRUE(Showing());
  Form()->SearchButtonClick(Form()->SearchButtons()[0]);
  EXPECT_FALSE(Showing());
  ASSERT_EQ(host_.SearchEngines().Searches().size(), 1u);
  EXPECT_EQ(host_.SearchEngines().Searches()[0].EngineGuid, u"{W}");
  EXPECT_TRUE(host_.SearchHistory().Keywords().empty());
}

// The engine menu's timing, driven by window messages on the manual clock. The host's menu
// is modal, so what happens while it is open runs inside its opening event.
TEST_F(SmartSearchPopupTest, EngineMenuTimingAndClicksThatNeverActivate) {
  TFakeTab* tab = OpenPage(u"https://news.example/a");
  SelectAndRelease(tab, u"word", 600, 300);
  ASSERT_TRUE(Showing());
  IPlatform& os = os_.Os();
  const HWnd window = Form()->FormHandle();
  const TRectF more = Form()->MoreButton()->AbsoluteRect();
  const TPointF inside{(more.Left + more.Right) / 2, (more.Top + more.Bottom) / 2};
  const TPointF screen = Form()->ClientToScreen(inside);
  const LParam at = static_cast<LParam>(static_cast<int>(inside.X) | (static_cast<int>(inside.Y) << 16));
  auto tick = [&](int ms) {
    for (int i = 0; i < ms / 20; ++i) {
      os_.Os().AdvanceClock(20);
      ManualTimerService()->Advance(20);  // the toolkit's own timers
      os.ProcessMessages();
    }
  };
  auto menuHides = [&] {
    std::size_t count = 0;
    for (const auto& record : host_.Events().EventLog())
      if (record.Id == u"XmlWidget.MenuHide" && record.Value(u"id") == kSmartSearchEngineMenuId) ++count;
    return count;
  };
  // A press activates nothing: the page keeps the focus.
  EXPECT_EQ(os.SendMessageW(window, win::WM_MOUSEACTIVATE, 0, 0), 3);

  std::vector<std::uint32_t> openedAt;
  std::function<void()> whileOpen;
  host_.Events().AddHostHandler(
      u"XmlWidget.MenuOpen", [&](const std::u16string&, IQxIStringDictionary*, std::vector<std::u16string>&) {
        openedAt.push_back(os.GetTickCount());
        if (whileOpen) whileOpen();
      });
  const std::uint32_t start = os.GetTickCount();
  os.SetCursorPos(static_cast<int>(screen.X), static_cast<int>(screen.Y));
  whileOpen = [&] {
    EXPECT_TRUE(Form()->ShowingMenu());
    // A press within 300 ms of an opening by hovering keeps the menu.
    tick(200);
    os.SendMessageW(window, win::WM_LBUTTONDOWN, 0, at);
    EXPECT_EQ(menuHides(), 0u);
    // The host asks before hiding: refused within 500 ms while the mouse is on the arrow.
    ComPtr<IQxIStringDictionary> ask;
    wrap_->CreateStringDictionary(ask);
    ComPtr<IQxIStringArray> ignored;
    host_.Events().Fire(u"XmlWidget.DoMenuHide", ask.get(), ignored.put());
    ComPtr<IQxIString> result;
    ask->GetValue(u"result", result.put());
    EXPECT_EQ(StringText(result.get()), u"false");
    // After 300 ms a press closes it.
    tick(200);
    os.SendMessageW(window, win::WM_LBUTTONDOWN, 0, at);
    EXPECT_EQ(menuHides(), 1u);
  };
  os.SendMessageW(window, win::WM_MOUSEMOVE, 0, at);
  tick(580);
  EXPECT_TRUE(openedAt.empty());
  tick(40);
  ASSERT_EQ(openedAt.size(), 1u);  // hovering 600 ms opened it
  EXPECT_GE(openedAt[0] - start, 600u);
  EXPECT_FALSE(Form()->ShowingMenu());

  // Closed by hand, it doesn't open by hovering again until the mouse has left the arrow.
  os.SendMessageW(window, win::WM_MOUSEMOVE, 0, at);
  tick(1000);
  EXPECT_EQ(openedAt.size(), 1u);

  // The popup's end takes its menu back from the host.
  ASSERT_NE(host_.Popups().Popup(kSmartSearchEngineMenuId), nullptr);
  search_.reset();
  EXPECT_EQ(host_.Popups().Popup(kSmartSearchEngineMenuId), nullptr);
}

}  // namespace
}  // namespace qx
