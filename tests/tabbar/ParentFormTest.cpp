#include <fstream>

#include "tabbar/ParentFormFixture.h"
#include "tabbar/TabGroupbarLayout.h"

namespace qx {
namespace {

TEST(GroupbarLayoutTest, GroupWidthsShareWhatIsLeftDownToTheMinimum) {
  // 828: the room is capped at 683, the others get (683 - 133) / 5.
  TGroupbarMetrics wide = CalcGroupbarLayout(36, 828, 2);
  EXPECT_EQ(wide.InactiveWidth, 110);
  EXPECT_EQ(wide.Slots[0].SeparatorX, 45);
  EXPECT_EQ(wide.Slots[0].X, 46);
  EXPECT_EQ(wide.Slots[1].X, 46 + 110 + 1);
  EXPECT_EQ(wide.GroupButtonLayoutWidth, 36 + 23 + 110 + 5 * 110);
  // 600: 540 left, trunc(407 / 5) = 81, the total fits.
  TGroupbarMetrics middle = CalcGroupbarLayout(36, 600, 2);
  EXPECT_EQ(middle.InactiveWidth, 81);
  EXPECT_EQ(middle.Slots[2].Width, 110);
  EXPECT_EQ(middle.Slots[3].X, 46 + 81 + 1 + 81 + 1 + 110 + 1);
  EXPECT_TRUE(middle.Slots[0].NameVisible);
  EXPECT_EQ(middle.GroupButtonLayoutWidth, 36 + 23 + 110 + 5 * 81);
  // Under 363 pixels for the groups (the form at 380 below): 46 each, even with no active group.
  EXPECT_EQ(CalcGroupbarLayout(36, 300, -1).Slots[0].Width, 46);
}

TEST_F(ParentFormTest, TheFormPlacesTheGroupsAtItsWidthAroundTheActiveOne) {
  TTabbarParentForm& form = MakeForm(380);
  form.ShowTabGroupbar();
  EXPECT_EQ(form.CurrentGroupIndex(), 1);
  EXPECT_EQ(form.GroupLayout(1)->Width(), 110);
  EXPECT_EQ(form.GroupLayout(0)->Width(), 46);
  EXPECT_EQ(form.GroupLayout(2)->Position().X(), 46 + 46 + 1 + 110 + 1);
  EXPECT_FALSE(form.lbGroupNameShadow(0)->Visible());
  EXPECT_TRUE(form.lbGroupNameShadow(1)->Visible());
  EXPECT_TRUE(form.btnGroupMenu(1)->Visible());
  EXPECT_FALSE(form.btnGroupMenu(0)->Visible());
  EXPECT_EQ(form.GroupButtonLayout()->Width(), 380);
  // Wider: the names come back.
  form.SetBounds(0, 0, 828, 54);
  EXPECT_EQ(form.GroupLayout(0)->Width(), 110);
  EXPECT_TRUE(form.lbGroupNameShadow(0)->Visible());
  EXPECT_EQ(form.lbGroupName(1)->TextSettings.FontColor, 0xFF989898u);
  EXPECT_EQ(form.lbGroupNameShadow(1)->TextSettings.FontColor, 0x6B000000u);
  EXPECT_EQ(form.lbGroupNameShadow(0)->TextSettings.FontColor, 0x38000000u);
}

TEST_F(ParentFormTest, GroupLabelsTakeTheSystemFontInBoldAndGrowWithIt) {
  // 16 device pixels at 120 dpi is 13.
  os_->SetMessageFont(u"DejaVu Serif", -16);
  os_->SetLogPixelsY(120);
  TTabbarParentForm& form = MakeForm();
  form.ShowTabGroupbar();
  for (int i = 0; i < 6; ++i)
    for (TLabel* label : {form.lbGroupNameShadow(i), form.lbGroupName(i)}) {
      EXPECT_EQ(label->TextSettings.Font.Family, u"DejaVu Serif");
      EXPECT_EQ(label->TextSettings.Font.Size, 13);
      EXPECT_TRUE(label->TextSettings.Font.Style & static_cast<TFontStyles>(TFontStyle::Bold));
    }
  // The labels were measured in the new font, not in the design's.
  TTextPainter designFont = *form.lbGroupNameShadow(0);
  designFont.TextSettings.Font.Size = 12;
  if (designFont.Text.empty()) designFont.Text = u"あ";
  EXPECT_GT(form.lbGroupNameShadow(0)->Height(), designFont.TextSize(0).cy + 4);
}

TEST_F(ParentFormTest, HitTestsPassThroughEmptyPlacesOnly) {
  TTabbarParentForm& form = MakeForm();
  form.ShowTabGroupbar();
  const TRectF exitArea = form.TabGroupbarExitButtonBackLayout()->AbsoluteRect();
  EXPECT_EQ(HitTest({exitArea.Left + 1, exitArea.Top + 2}), win::HTTRANSPARENT);
  EXPECT_NE(HitTest(Centre(form.btnExitCabinet())), win::HTTRANSPARENT);
  EXPECT_NE(HitTest(Centre(form.GroupLayout(3))), win::HTTRANSPARENT);
  // Between the bar's ends and the form's edge nothing is hit.
  EXPECT_EQ(HitTest({form.GroupButtonLayout()->AbsoluteRect().Right + 2, 20}), win::HTTRANSPARENT);
}

TEST_F(ParentFormTest, TheWheelOverTheStripReachesItWhicheverWindowHasTheFocus) {
  TTabbarParentForm& form = MakeForm();
  form.ShowTabGroupbar();
  int wheels = 0;
  form.GroupLayout(2)->OnMouseWheel = [&](TFmxObject*, TShiftState, int delta, bool&) { wheels += delta; };
  const TPoint over = Screen(Centre(form.GroupLayout(2)));
  os_->InjectMouseAtScreen(win::WM_MOUSEMOVE, over, 0);
  os_->SetFocus(hostWindow_);
  HostMessages().clear();
  os_->PostMessageW(hostWindow_, win::WM_MOUSEWHEEL, static_cast<WParam>(120) << 16,
                    static_cast<LParam>((over.Y << 16) | over.X));
  os_->ProcessMessages();
  EXPECT_EQ(wheels, 120);
  // A wheel over the host's own window stays there.
  const TPoint outside{kHostX + 10, kHostY + 150};
  os_->PostMessageW(hostWindow_, win::WM_MOUSEWHEEL, static_cast<WParam>(120) << 16,
                    static_cast<LParam>((outside.Y << 16) | outside.X));
  os_->ProcessMessages();
  EXPECT_EQ(wheels, 120);
  EXPECT_GE(std::count(HostMessages().begin(), HostMessages().end(), win::WM_MOUSEWHEEL), 1);
}

TEST_F(ParentFormTest, TitleEditEscapeKeepsTheTitleAndLosingTheFocusCommits) {
  host_.Model().SetGroupValue(host_.Model().Groups()[1].get(), u"title", u"Work");
  TTabbarParentForm& form = MakeForm();
  form.ShowTabGroupbar();
  EXPECT_EQ(form.lbGroupName(1)->Text, u"Work");
  // Only the active group's name opens the editor.
  form.lbGroupName(0)->Click();
  EXPECT_FALSE(form.EditingGroupTitle());
  os_->SetFocus(hostWindow_);
  Click(form.lbGroupName(1));
  ASSERT_TRUE(form.EditingGroupTitle());
  EXPECT_EQ(os_->GetFocus(), form.FormHandle());
  os_->SendMessageW(form.FormHandle(), win::WM_CHAR, u'X', 0);
  EXPECT_EQ(form.TitleInplaceEdit()->Text(), u"WorkX");
  os_->InjectKey(form.FormHandle(), win::WM_KEYDOWN, win::VK_ESCAPE);
  EXPECT_FALSE(form.EditingGroupTitle());
  TString title;
  wrap_->GetTabGroupProperty(host_.Model().Groups()[1].get(), u"title", title);
  EXPECT_EQ(title, u"Work");
  EXPECT_EQ(form.lbGroupName(1)->Text, u"Work");
  // The focus went back where it was.
  EXPECT_EQ(os_->GetFocus(), hostWindow_);

  Click(form.lbGroupName(1));
  os_->SendMessageW(form.FormHandle(), win::WM_CHAR, u'!', 0);
  os_->SetFocus(hostWindow_);
  EXPECT_FALSE(form.EditingGroupTitle());
  wrap_->GetTabGroupProperty(host_.Model().Groups()[1].get(), u"title", title);
  EXPECT_EQ(title, u"Work!");
  EXPECT_EQ(form.lbGroupName(1)->Text, u"Work!");
  EXPECT_EQ(form.lbGroupNameShadow(1)->Text, u"Work!");
}

TEST_F(ParentFormTest, AClickOnAnotherGroupSelectsItAndOnTheActiveOneNothing) {
  TTabbarParentForm& form = MakeForm();
  form.ShowTabGroupbar();
  host_.Events().ClearEventLog();
  Click(form.GroupLayout(1));
  EXPECT_EQ(ActiveGroupIndex(), 1);
  EXPECT_TRUE(host_.Events().EventLog().empty());
  Click(form.GroupLayout(4));
  EXPECT_EQ(ActiveGroupIndex(), 4);
  EXPECT_EQ(form.CurrentGroupIndex(), 4);
}

TEST_F(ParentFormTest, GroupMenusOpenWithTheirDictionaries) {
  const auto menuFolder = host_.Resources().MenuRoot() / "toolbar/TabGroupBar";
  std::filesystem::create_directories(menuFolder);
  std::ofstream(menuFolder / "TabGroupPopupMenu.xml") << "<menu><item id=\"rename\"/></menu>";
  TTabbarParentForm& form = MakeForm();
  // The group bar's set-up at the form's first layout registers the group menu with the host.
  ASSERT_NE(host_.Popups().Popup(u"tabgroupbar-popup-menu"), nullptr);
  form.ShowTabGroupbar();
  host_.Events().ClearEventLog();
  Click(form.GroupLayout(0), true);  // not the active group: no menu
  Click(form.GroupLayout(1), true);
  Click(form.btnGroupMenu(1));
  std::vector<TFakeEventRecord> opens;
  for (const TFakeEventRecord& e : host_.Events().EventLog())
    if (e.Id == u"XmlWidget.MenuOpen") opens.push_back(e);
  ASSERT_EQ(opens.size(), 2u);
  const TPoint at = Screen(Centre(form.GroupLayout(1)));
  EXPECT_EQ(opens[0].Parameters, (TFakeParams{{u"window-id", u"MainWindow"},
                                              {u"menu-id", u"tabgroupbar-popup-menu"},
                                              {u"screen-x", FromUtf8(std::to_string(at.X + 5))},
                                              {u"screen-y", FromUtf8(std::to_string(at.Y + 5))}}));
  const long left = std::lround(form.btnGroupMenu(1)->AbsoluteRect().Left);
  EXPECT_EQ(opens[1].Parameters, (TFakeParams{{u"window-id", u"MainWindow"},
                                              {u"menu-id", u"tabgroupbar-popup-menu"},
                                              {u"menu-owner-id", u"TabBarControl"},
                                              {u"offset-y", u"-20"},
                                              {u"offset-x", FromUtf8(std::to_string(left))}}));
}

TEST_F(ParentFormTest, ToolTipsFollowTheBarAndTheWindowsVisibility) {
  TTabbarParentForm& form = MakeForm();
  ASSERT_TRUE(form.WindowVisible());
  TCustomControlToolTip* tip = form.ToolTip();
  ASSERT_NE(tip, nullptr);
  auto text = [&](std::uint32_t id) {
    const int index = form.ToolTip()->FindTool(id);
    return index < 0 ? TString(u"(none)") : form.ToolTip()->GetTools(index)->HintText();
  };
  EXPECT_EQ(text(101), u"お気にタブを表示（右ダブルクリックでも入ります）");
  EXPECT_EQ(text(102), u"新規タブを追加");
  form.ShowTabGroupbar();
  EXPECT_EQ(text(101), u"キャビネット画面を閉じる");
  EXPECT_EQ(text(102), u"(none)");
  const TRectF exit = form.btnExitCabinet()->AbsoluteRect();
  EXPECT_EQ(tip->GetTools(tip->FindTool(101))->ItemRect().Left, std::lround(exit.Left));
  os_->ShowWindow(form.FormHandle(), win::SW_HIDE);
  EXPECT_EQ(form.ToolTip(), nullptr);
}

TEST_F(ParentFormTest, RebarBordersComeFromTheBottomRowOfTheTopBarBackground) {
  // A background whose last row differs from the rest.
  TBitmap background(6, 3);
  background.Clear(0xFF102030u);
  for (int x = 0; x < 6; ++x) background.Bits()[2 * 6 + x] = 0xFFA0B0C0u;  // opaque: premultiplied alike
  const auto folder = host_.Resources().SkinRoot() / "widget/toolbar/PreviewStrip";
  std::filesystem::create_directories(folder);
  background.SaveToFile(folder / "TopBarBackground.png");
  TTabbarParentForm& form = MakeForm();
  ASSERT_NE(form.RebarBorderBitmap(), nullptr);
  EXPECT_EQ(form.RebarBorderBitmap()->Width(), 6);
  EXPECT_EQ(form.RebarBorderBitmap()->Height(), 1);
  EXPECT_EQ(form.RebarBorderBitmapLight()->PixelColor(3, 0), 0xFFA0B0C0u);
  EXPECT_EQ(form.TabbarChildFrame()->TabbarBottomImage()->Bitmap().PixelColor(0, 0), 0xFFA0B0C0u);
}

}  // namespace
}  // namespace qx
