// The cabinet screen as the strip sees it: entering and leaving, and the page's drags
// turned into the floating drag window.

#include <fstream>
#include <string>

#include "CabinetFixture.h"
#include "base/Text.h"
#include "cabinet/CabinetDnDForm.h"
#include "cabinet/CabinetDragImage.h"
#include "module/PreviewStripExtension.h"
#include "tabbar/TabbarForm.h"
#include "tabbar/TabbarParentForm.h"

namespace qx::test {
namespace {

class DragWindowTest : public CabinetTest {
 protected:
  DragWindowTest() {
    images_ = root_ / "user/temp/chrome/cabinet/img";
    WritePicture(images_ / "CabinetTabLargeShadow.png", 8, 8, 0x40000000u);
    WritePicture(images_ / "CabinetTabLargeBackShadow.png", 8, 8, 0x20000000u);
    Open(u"https://one.example/");
    CreateStrip();
  }
  TTabbarParentForm& Parent() { return *static_cast<TPrevewStripPluginImpl*>(strip_.get())->TabbarForm(); }
  TTabbarFrame& Strip() { return *Parent().TabbarChildFrame(); }
  TCabinetDnDForm* Window() { return static_cast<TCabinetDnDForm*>(Strip().CabinetDnDWindow()); }

  std::u16string Src(const std::string& name) { return u"file://" + FromUtf8((images_ / name).string()); }
  // One drag report; images is the JSON array text.
  void Report(const std::u16string& event, const std::u16string& source, const std::u16string& dest,
              const std::u16string& images = u"[]", const std::u16string& id = u"tab-1") {
    host_.ReportCabinetDrag(u"{\"event\":\"" + event +
                            u"\",\"offset_x\":20,\"offset_y\":10,\"dest_x\":5,\"dest_y\":6," + u"\"id\":\"" +
                            id + u"\",\"source\":\"" + source + u"\",\"dest\":\"" + dest +
                            u"\",\"cancel\":false,\"image\":" + images + u"}");
  }
  std::u16string OneImage(const std::string& name) {
    return u"[{\"src\":\"" + Src(name) + u"\",\"left\":0,\"top\":0,\"width\":208,\"height\":156}]";
  }
  void PointAt(TPoint screen) { os_->SetCursorPos(screen.X, screen.Y); }

  std::filesystem::path images_;
};

TEST_F(DragWindowTest, EnteringAndLeavingTheCabinetSwapsTheStripForTheGroupBar) {
  host_.SetInCabinet(true);
  EXPECT_TRUE(Parent().ShowingTabgroupBar());
  host_.SetInCabinet(false);
  EXPECT_FALSE(Parent().ShowingTabgroupBar());

  // A click that opens the screen is followed by a poll that finds it open and stops by itself.
  host_.SetHostReactions(false);
  host_.SetInCabinet(true);
  Parent().HideTabGroupbar();
  Strip().StartCabinetCheckTimer();
  Advance(600);
  EXPECT_TRUE(Parent().ShowingTabgroupBar());
  Advance(600 * 60);
  EXPECT_FALSE(Strip().tmCheckCabinetMode()->Enabled());
  EXPECT_EQ(Strip().CabinetCheckTimerCounter(), 50);

  // A browser that starts on the cabinet screen: the strip's first look at the tabs puts
  // the group bar up, before the host says it is up.
  strip_->DestroyControl();
  host_.Properties().SetProperty(u"client.Cabinet-StartupScreen", u"true");
  strip_ = CreateControl(0, 24, 53);
  ASSERT_FALSE(Parent().ShowingTabgroupBar());
  host_.Events().FireFromHost(u"TabBarControl.Update", {});
  EXPECT_TRUE(Parent().ShowingTabgroupBar());
}

TEST_F(DragWindowTest, MissingAndDamagedPicturesLeaveTheShadowsAndTheSizeFollowsTheTarget) {
  std::filesystem::create_directories(images_);
  { std::ofstream(images_ / "broken.png") << "not a picture"; }
  host_.SetInCabinet(true);
  PointAt({400, 300});
  Report(u"dragstart", u"opentabs", u"", OneImage("broken.png"));
  ASSERT_TRUE(Window());
  ASSERT_TRUE(Window()->Showing());
  const TBitmap* picture = Window()->DragImageBitmap();
  ASSERT_TRUE(picture);
  // The picture is left out, its shadow is drawn: the top image's middle is shadow only.
  EXPECT_EQ(picture->PixelColor(picture->Width() / 2, picture->Height() / 2), TAlphaColor(0x40000000u));

  // A picture that loads fills its own frame, whatever the grip: the badge's half reaches
  // 16 pixels beyond the top picture's corner. Green under the quarter-dark shadow.
  WritePicture(images_ / "tab.png", 208, 156, 0xFF00FF00u);
  Report(u"dragstart", u"opentabs", u"", OneImage("tab.png"));
  picture = Window()->DragImageBitmap();
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->PixelColor(16, 16), TAlphaColor(0xFF00BF00u));
  EXPECT_EQ(picture->PixelColor(16 + 207, 16 + 155), TAlphaColor(0xFF00BF00u));

  // Over the archives the image takes their smaller size, over the group buttons the strip's.
  Report(u"drag", u"opentabs", u"archives");
  Advance(400);
  EXPECT_FLOAT_EQ(Window()->DragImageRatio(), 144.0f / 208.0f);
  EXPECT_FLOAT_EQ(Window()->imgClose()->Opacity(), 1.0f);
  Report(u"drag", u"opentabs", u"left-group-button");
  Advance(400);
  EXPECT_FLOAT_EQ(Window()->DragImageRatio(), 96.0f / 208.0f);
  EXPECT_FLOAT_EQ(Window()->imgClose()->Opacity(), 0.0f);
  EXPECT_NEAR(Window()->Image()->Width(), picture->Width() * 96.0f / 208.0f, 1);

  // A picture file that vanished before the drop: the drop still ends the drag window.
  std::filesystem::remove(images_ / "CabinetTabLargeShadow.png");
  Report(u"drop", u"opentabs", u"somewhere", OneImage("gone.png"));
  Advance(1200);
  EXPECT_FALSE(Window()->Showing());
}

TEST_F(DragWindowTest, ADragReleasedOutsideAnyTargetShrinksAwayAfterTheButtonComesUp) {
  WritePicture(images_ / "tab.png", 208, 156, 0xFF00FF00u);
  PointAt({400, 300});
  os_->SetKeyState(win::VK_LBUTTON, true);
  Report(u"dragstart", u"topSites", u"", OneImage("tab.png"));
  ASSERT_TRUE(Window() && Window()->Showing());
  TRect rect{};
  Platform().GetWindowRect(Window()->FormHandle(), &rect);
  // The grip point stays under the pointer.
  EXPECT_EQ(rect.Left, 400 - 20);
  EXPECT_EQ(rect.Top, 300 - 10);
  Advance(5000);
  EXPECT_TRUE(Window()->Showing()) << "the button is still down";
  os_->SetKeyState(win::VK_LBUTTON, false);
  Advance(2800);
  EXPECT_TRUE(Window()->Showing());
  Advance(400);
  EXPECT_FALSE(Window()->Showing());
  // "drop" without a window that shows changes nothing and tells no one.
  Report(u"drop", u"topSites", u"archives");
  EXPECT_FALSE(Window()->Showing());
}

TEST_F(DragWindowTest, ADropOnAnotherGroupsTabGoesBackToThePageByteForByte) {
  host_.Model().AddGroup(u"second");
  host_.SetInCabinet(true);
  Parent().UpdateGroupbarLayout();
  const TRectF tab = Parent().GetGroupTabRect(1);
  const TPointF middle =
      Parent().ClientToScreen(TPointF((tab.Left + tab.Right) / 2, (tab.Top + tab.Bottom) / 2));
  const TPoint at{static_cast<int>(middle.X), static_cast<int>(middle.Y)};
  WritePicture(images_ / "tab.png", 208, 156, 0xFF00FF00u);
  PointAt({400, 300});
  const std::u16string id = u"tab-\u00e9\\\"x";
  Report(u"dragstart", u"opentabs", u"", OneImage("tab.png"), id);
  PointAt(at);
  Report(u"drag", u"opentabs", u"anything", u"[]", id);
  EXPECT_TRUE(Parent().DragOverLayout(1)->Visible());
  host_.Events().ClearEventLog();
  Report(u"drop", u"opentabs", u"anything", u"[]", id);
  host_.Events().RunPosted();
  bool sent = false;
  for (const TFakeEventRecord& record : host_.Events().EventLog()) {
    if (record.Id != u"BrowserExternalAPI.talvokPrivateAPI") continue;
    sent = true;
    EXPECT_EQ(record.Delivery, TFakeEventRecord::EDelivery::Posted);
    EXPECT_EQ(record.Value(u"p1"), u"tab-\u00e9\"x");
    EXPECT_EQ(record.Value(u"p2"), u"1");
    EXPECT_EQ(record.Value(u"funcname"), u"Cabinet.changeGroupOfTabs");
  }
  EXPECT_TRUE(sent);
  EXPECT_FALSE(Parent().DragOverLayout(1)->Visible());
}

}  // namespace
}  // namespace qx::test
