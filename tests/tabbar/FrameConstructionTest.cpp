#include <fstream>

#include "tabbar/FrameFixture.h"
#include "toolkit/StoredLayout.h"

namespace qx {
namespace {

namespace fs = std::filesystem;

TEST_F(FrameTest, BuildsTheDesignTreeWithItsTimersAndFixedGeometry) {
  TTabbarFrame frame(nullptr, imageRes_.get(), nullptr, wrap_.get(), nullptr);
  EXPECT_EQ(frame.Width(), 450);
  EXPECT_EQ(frame.Height(), 54);
  EXPECT_EQ(frame.GroupIndex(), -1);
  EXPECT_EQ(frame.imgTabbarMiddle()->WrapMode(), TImageWrapMode::Tile);
  EXPECT_EQ(frame.btnGroup()->BoundsRect(), TRectF::FromSize(20, 15, 28, 28));
  EXPECT_EQ(frame.btnAddTab()->BoundsRect(), TRectF::FromSize(16, 15, 28, 28));
  EXPECT_TRUE(frame.btnGroup()->EnableRightClick());
  EXPECT_FALSE(frame.btnAddTab()->Animate());
  EXPECT_EQ(frame.TabScrollBox()->Margins().Left(), -8);
  EXPECT_FALSE(frame.TabScrollBox()->ShowScrollBars());
  EXPECT_FALSE(frame.imgActiveTab()->Visible());
  EXPECT_EQ(frame.imgActiveTab()->BoundsRect(), TRectF::FromSize(200, 4, 98, 24));
  EXPECT_EQ(frame.ActiveTabIndicatorFloatAnimation()->Duration, 0.15f);
  EXPECT_EQ(frame.TabbarWidthAnimation()->PropertyName, "TabbarWidth");
  EXPECT_EQ(frame.TabbarWidthAnimation()->Duration, 0.2f);
  const std::pair<const char16_t*, int> timers[] = {{u"HideTitleTimer", 100},
                                                    {u"ShowActiveTabTitleTimer", 10},
                                                    {u"ActiveCenterTimer", 600},
                                                    {u"UpdateCloseBtnTimer", 350},
                                                    {u"tmCheckCabinetMode", 600}};
  for (const auto& [name, interval] : timers) {
    TTimer* timer = FindComponentAs<TTimer>(&frame, name);
    ASSERT_NE(timer, nullptr);
    EXPECT_EQ(timer->Interval(), interval);
    EXPECT_FALSE(timer->Enabled());
  }
  // The strip starts in the inactive look.
  EXPECT_EQ(Colour(frame.imgTabbarLeft()->Bitmap()), ColourOfKey(u"TabbarBackgroundInactiveLeft"));
  // Thumbnails live in a folder of their own under the client settings, made at once.
  const TString dir = frame.ThumbnailDirectory();
  EXPECT_EQ(fs::path(dir), fs::path(wrap_->UserSettingClientDirectory()) / "thumbnail" / "");
  EXPECT_TRUE(fs::is_directory(fs::path(dir)));
  EXPECT_EQ(frame.TabImageCacheMgr()->CacheDir(), dir);
}

TEST_F(FrameTest, ABuiltTitleMenuWidgetStartsTheActiveLookAndTeardownDropsTheNewTabMenu) {
  host_.Widgets().SetWidgetClass(u"TitleMenuWidget", u"TitleMenuWidget");
  host_.Popups().RegisterPopup(u"newtab-popup-menu", MakeCom<TFakeXmlElement>(u"menu").get());
  host_.Popups().RegisterPopup(u"tab-menu", MakeCom<TFakeXmlElement>(u"menu").get());
  {
    TTabbarFrame frame(nullptr, imageRes_.get(), nullptr, wrap_.get(), nullptr);
    EXPECT_EQ(Colour(frame.imgTabbarLeft()->Bitmap()), ColourOfKey(u"TabbarBackgroundLeft"));
    EXPECT_NE(host_.Popups().Popup(u"newtab-popup-menu"), nullptr);
  }
  EXPECT_EQ(host_.Popups().Popup(u"newtab-popup-menu"), nullptr);
  EXPECT_NE(host_.Popups().Popup(u"tab-menu"), nullptr);
}

TEST_F(FrameTest, WithoutServiceCoreTheThumbnailPathStaysEmptyAndTheStripStillSyncsNothing) {
  TTabbarFrame& frame = MakeFrame(nullptr);
  EXPECT_TRUE(frame.ThumbnailDirectory().empty());
  EXPECT_TRUE(frame.TabImageCacheMgr()->CacheDir().empty() || frame.TabImageCacheMgr()->CacheDir() == u"/");
  EXPECT_FALSE(fs::exists(fs::path(wrap_->UserSettingClientDirectory()) / "thumbnail"));
  frame.UpdateTabbar(true, true);
  EXPECT_EQ(frame.TabImageCount(), 0);
}

TEST_F(FrameTest, AFailedThumbnailFolderIsSwallowed) {
  // A file where the folder should be: the folder cannot be made.
  const fs::path client(wrap_->UserSettingClientDirectory());
  fs::create_directories(client);
  std::ofstream(client / "thumbnail") << "in the way";
  TTabbarFrame& frame = MakeFrame();
  Open();
  frame.UpdateTabbar(true, false);
  EXPECT_EQ(frame.TabImageCount(), 1);
}

// Every raw reference the frame keeps of a tab image, set to one tab that then goes away.
TEST_F(FrameTest, ATabFreedWhileReferencedLeavesNoReferenceBehind) {
  Open();
  TFakeTab* doomed = Open();
  Open();
  TTabbarFrame& frame = MakeFrame();
  frame.UpdateTabbar(true, false);
  TTabImage* tab = frame.GetTabImages(1);
  ASSERT_EQ(frame.ActiveTab(), frame.GetTabImages(2));
  frame.SetActiveTabImage(tab, true);
  frame.SetHoveredTab(tab);
  frame.SetDragTarget(tab);
  frame.MarkAfterDrag(tab);
  frame.GetLayout()->startDragging(tab);

  delete tab;
  EXPECT_EQ(frame.ActiveTab(), nullptr);
  EXPECT_EQ(frame.HoveredTab(), nullptr);
  EXPECT_EQ(frame.DragTarget(), nullptr);
  EXPECT_EQ(frame.GetLayout()->draggingTab(), nullptr);
  EXPECT_EQ(frame.TabImageCount(), 2);
  // The strip goes on working with what is left, and the host's close completes the change.
  frame.layoutSubviews(true);
  Advance(500);
  host_.Model().CloseTab(doomed);
  frame.UpdateTabbar(false, true);
  EXPECT_EQ(MirrorText(), HostText());
}

}  // namespace
}  // namespace qx
