#include <gtest/gtest.h>

#include <sstream>

#include "host/HostKeys.h"
#include "tabview/TabImage.h"
#include "tabview/TabImageCacheMgr.h"
#include "tabview/TabImageFixture.h"
#include "tabview/TabViewLayoutAttributes.h"
#include "toolkit/Application.h"
#include "toolkit/TimerService.h"

namespace qx {
namespace {

namespace fs = std::filesystem;

// Every picture the tab asks for, each in a colour of its own.
struct TSkinPicture {
  const char* Key;
  int Width, Height;
  TAlphaColor Color;
};
constexpr TSkinPicture kSkin[] = {
    {"TabBlank", 96, 47, 0xFFEEEEEE},
    {"TabBoundHovered", 98, 49, 0x803070F0},
    {"TabClose", 22, 22, 0xFF800000},
    {"TabCloseHovered", 22, 22, 0xFF900000},
    {"TabClosePressed", 22, 22, 0xFFA00000},
    {"TabBadgeProtected", 16, 16, 0xFF008000},
    {"TabBadgeBookmarked", 16, 16, 0xFF000080},
    {"TabBadgeBookmarkedProtected", 16, 16, 0xFF008080},
    {"TabBadgeProtectedReady", 22, 22, 0xFF00A000},
    {"TabBadgeProtectedHovered", 22, 22, 0xFF00B000},
    {"TabBadgeProtectedPressed", 22, 22, 0xFF00C000},
    {"TabBadgeBookmarkedReady", 22, 22, 0xFF0000A0},
    {"TabBadgeBookmarkedHovered", 22, 22, 0xFF0000B0},
    {"TabBadgeBookmarkedPressed", 22, 22, 0xFF0000C0},
    {"TabProgress", 24 * 4, 24, 0xFFFFFF00},
};

// The scroll box as the tab sees it: a control for coordinates, and a record of calls.
class TFakeScrollBox : public ITabImageScrollBox {
 public:
  TFakeScrollBox() { control.SetBounds(30, 0, 500, 60); }
  TControl* ScrollBoxControl() override { return &control; }
  bool MouseInScrollBox() override { return mouseInside; }
  void PerfectRefresh() override { ++refreshes; }
  void AniMouseDown(float x, float y) override { downs.push_back({x, y}); }
  void AniMouseMove(float x, float y) override { moves.push_back({x, y}); }
  void AniMouseUp(float x, float y) override { ups.push_back({x, y}); }
  void AniMouseLeave() override { ++leaves; }

  TLayout control;
  bool mouseInside = true;
  int refreshes = 0;
  int leaves = 0;
  std::vector<TPointF> downs, moves, ups;
};

class TabImageTest : public TabImageHostFixture {
 protected:
  TabImageTest() {
    TToolkit::Finalize();
    TTabImage::ReleaseBlankPicture();
    skinDir_ = dir_ / "skin";
    fs::create_directories(skinDir_);
    for (const TSkinPicture& picture : kSkin) {
      MakeThumbnail(picture.Color, picture.Width, picture.Height)
          ->SaveToFile(skinDir_ / (std::string(picture.Key) + ".png"));
    }
    imageRes_ = std::make_unique<TTabbarImageRes>(skinDir_.u16string());
    thumbDir_ = dir_ / "thumbnail";
    fs::create_directories(thumbDir_);
  }
  ~TabImageTest() override {
    TTabImage::ReleaseBlankPicture();
    TToolkit::Finalize();
  }

  std::unique_ptr<TTabImage> MakeTab(TFakeTab* hostTab, bool active = false) {
    const std::int32_t id = hostTab ? wrap_->TabIdOf(hostTab) : 0;
    auto tab = std::make_unique<TTabImage>(nullptr, imageRes_.get(), wrap_.get(), id);
    tab->SetOnGetActive([active](const TTabImageItem&) { return active; });
    return tab;
  }
  void Advance(std::int64_t ms) { ManualTimerService()->Advance(ms); }
  static ComPtr<ITabViewLayoutAttributes> Attributes(bool hidden) {
    auto attributes = MakeCom<TTabViewLayoutAttributesImpl>();
    attributes->SetHidden(hidden);
    return ComPtr<ITabViewLayoutAttributes>(attributes.get());
  }
  static TAlphaColor Center(const TBitmap& bitmap) {
    return bitmap.PixelColor(bitmap.Width() / 2, bitmap.Height() / 2);
  }
  void SetLocked(TFakeTab* tab, bool locked) {
    ASSERT_EQ(host_.Model().SetTabText(tab, tab_key::StatusNaviLock, locked ? u"locked" : u"unlocked"), kOk);
  }

  fs::path skinDir_, thumbDir_;
  std::unique_ptr<TTabbarImageRes> imageRes_;
};

TEST_F(TabImageTest, BuildsItsLayersInOrderAtTheFixedSize) {
  auto tab = MakeTab(nullptr);
  EXPECT_EQ(TTabImage::size(), TSizeD(98, 49));
  EXPECT_EQ(tab->Width(), 98);
  EXPECT_EQ(tab->Height(), 49);
  EXPECT_EQ(tab->Index(), -1);
  EXPECT_EQ(tab->SectionIndex(), -1);
  EXPECT_EQ(tab->Section(), nullptr);
  EXPECT_EQ(tab->DragOffset(), 0);
  EXPECT_FALSE(tab->Positioned());

  const std::vector<TControl*> layers = tab->Content()->Controls();
  const std::vector<TControl*> expected{tab->Base(), tab->Thumbnail(), tab->HoverBound(), tab->Badge(),
                                        tab->Dim(),  tab->Progress(),  tab->CloseButton()};
  EXPECT_EQ(layers, expected);

  tab->Content()->Realign();
  EXPECT_EQ(tab->Thumbnail()->BoundsRect(), TRectF(1, 1, 97, 48));
  EXPECT_EQ(tab->Base()->BoundsRect(), TRectF(0, 0, 98, 49));
  EXPECT_EQ(Center(tab->Base()->Bitmap()), TTabImage::kBaseColor);
  EXPECT_EQ(Center(tab->Dim()->Bitmap()), TTabImage::kDimColor);
  EXPECT_EQ(tab->CloseButton()->BoundsRect(), TRectF(76, 1, 98, 23));
  EXPECT_EQ(tab->CloseButton()->Opacity(), 0);
  EXPECT_FALSE(tab->CloseButtonVisible());
  EXPECT_EQ(tab->Progress()->BoundsRect(), TRectF(37, 12.5f, 61, 36.5f));
  EXPECT_EQ(tab->ProgressAnimation()->AnimationCount, 4);
  EXPECT_FALSE(tab->Progress()->Visible());
  EXPECT_FALSE(tab->HoverBound()->Visible());
  EXPECT_EQ(tab->Badge()->Width(), 16);
  EXPECT_EQ(tab->LeftAnimation()->Duration, 0.3f);
  EXPECT_EQ(tab->CloseAnimation()->Duration, 0.15f);
  EXPECT_EQ(tab->DragOffsetAnimation()->Duration, 0.15f);
  EXPECT_EQ(tab->ThumbnailAnimation()->Duration, 0.2f);
  EXPECT_EQ(tab->ProgressAnimation()->Duration, 0.8f);
  EXPECT_TRUE(tab->ProgressAnimation()->Loop);
}

TEST_F(TabImageTest, TabsShareOneBlankPicture) {
  EXPECT_EQ(TTabImage::BlankPicture(), nullptr);
  auto first = MakeTab(nullptr);
  const TBitmap* blank = TTabImage::BlankPicture();
  ASSERT_NE(blank, nullptr);
  EXPECT_EQ(blank->Width(), 96);
  EXPECT_EQ(blank->Height(), 47);
  EXPECT_EQ(Center(*blank), 0xFFEEEEEEu);
  auto second = MakeTab(nullptr);
  EXPECT_EQ(TTabImage::BlankPicture(), blank);
  EXPECT_EQ(Center(second->Thumbnail()->Bitmap()), 0xFFEEEEEEu);
  EXPECT_FALSE(second->HasThumbnail());
  first.reset();
  EXPECT_EQ(TTabImage::BlankPicture(), blank);  // lives on until the module ends
}

TEST_F(TabImageTest, TabImageLeftIsTheLeftInsideTheContentInset) {
  auto tab = MakeTab(nullptr);
  tab->SetTabImageLeft(0);
  EXPECT_EQ(tab->Position().X(), 200);
  tab->Position().SetX(350);
  EXPECT_EQ(tab->TabImageLeft(), 150);
  const TFloatPropertyInfo* left = tab->Properties().FindFloat("TabImageLeft");
  ASSERT_NE(left, nullptr);
  left->Set(tab.get(), 10);
  EXPECT_EQ(tab->Position().X(), 210);
  ASSERT_NE(tab->Properties().FindFloat("DragOffset"), nullptr);
}

TEST_F(TabImageTest, FirstPlacementIsImmediateAndLaterMovesSlide) {
  auto tab = MakeTab(nullptr);
  tab->SetHorzPosition(true, TInterpolationType::Linear, 0.3f, 100);
  EXPECT_TRUE(tab->Positioned());
  EXPECT_FALSE(tab->LeftAnimation()->Running());
  EXPECT_EQ(tab->TabImageLeft(), 100);

  tab->SetHorzPosition(true, TInterpolationType::Linear, 0.3f, 160);
  EXPECT_TRUE(tab->LeftAnimation()->Running());
  Advance(150);
  EXPECT_NEAR(tab->TabImageLeft(), 130, 4.0);  // within one frame of the animation thread
  // The same goal while sliding leaves the slide as it is.
  tab->SetHorzPosition(true, TInterpolationType::Linear, 0.3f, 160);
  EXPECT_NEAR(tab->LeftAnimation()->CurrentTime(), 0.15, 0.02);
  Advance(160);
  EXPECT_FALSE(tab->LeftAnimation()->Running());
  EXPECT_EQ(tab->TabImageLeft(), 160);

  // Not animated: straight there.
  tab->SetHorzPosition(false, TInterpolationType::Linear, 0.3f, 40);
  EXPECT_FALSE(tab->LeftAnimation()->Running());
  EXPECT_EQ(tab->TabImageLeft(), 40);
}

TEST_F(TabImageTest, FinalPositionRectangleUsesTheSlidesGoal) {
  TFakeScrollBox box;
  auto tab = MakeTab(nullptr);
  tab->SetScrollBox(&box);
  tab->SetHorzPosition(false, TInterpolationType::Linear, 0.3f, 0);
  tab->Position().SetY(5);
  TRectF rect;
  tab->TabImageAbsoluteRect(false, rect);
  EXPECT_EQ(rect, TRectF(200, 5, 298, 54));
  tab->SetHorzPosition(true, TInterpolationType::Linear, 0.3f, 100);
  Advance(30);
  tab->TabImageAbsoluteRect(true, rect);
  EXPECT_EQ(rect, TRectF(300, 5, 398, 54));
  tab->TabImageAbsoluteRect(false, rect);
  EXPECT_LT(rect.Left, 300);
  EXPECT_EQ(tab->TabImageParentedRectD(),
            TRectD(TPointD(tab->Position().X(), 5), TPointD(tab->Position().X() + 98, 54)));
  // The scroll box stands at x 30 of the same parent-less space.
  EXPECT_EQ(tab->GetScrollLeft(2), tab->Position().X() - 30 + 2);
  EXPECT_EQ(tab->GetScrollRight(0), tab->Position().X() - 30 + 98);
  EXPECT_EQ(tab->TabImageAbsoluteToLocal(TPointF(tab->Position().X() + 4, 9)), TPointF(4, 4));
  tab->SetDragOffset(7);
  EXPECT_EQ(tab->AbsoluteRectNoDragOffset().Left, tab->Position().X() + 7);
}

TEST_F(TabImageTest, HiddenTabStaysVisibleUntilItsSlideEnds) {
  auto tab = MakeTab(nullptr);
  tab->SetAttributes(Attributes(false).get());
  tab->SetHorzPosition(true, TInterpolationType::Linear, 0.3f, 0);
  EXPECT_TRUE(tab->Visible());

  tab->SetAttributes(Attributes(true).get());
  tab->SetHorzPosition(true, TInterpolationType::Linear, 0.3f, 50);
  Advance(200);
  EXPECT_TRUE(tab->Visible());
  Advance(150);
  EXPECT_FALSE(tab->Visible());

  // Shown again by the next layout that finds it uncovered.
  tab->SetAttributes(Attributes(false).get());
  tab->SetHorzPosition(true, TInterpolationType::Linear, 0.3f, 0);
  EXPECT_TRUE(tab->Visible());

  // Placed without a slide, a covered tab hides at once.
  auto other = MakeTab(nullptr);
  other->SetAttributes(Attributes(true).get());
  other->SetHorzPosition(true, TInterpolationType::Linear, 0.3f, 10);
  EXPECT_FALSE(other->Visible());
}

TEST_F(TabImageTest, DimLevelsFollowActivityHoverAndProgress) {
  auto inactive = MakeTab(nullptr, false);
  auto active = MakeTab(nullptr, true);
  EXPECT_FLOAT_EQ(inactive->DimOpacity(false), 0.12f);
  EXPECT_FLOAT_EQ(inactive->DimOpacity(true), 0);
  EXPECT_FLOAT_EQ(active->DimOpacity(false), 0);

  inactive->UpdateDimAndShadow(false, true);
  EXPECT_FLOAT_EQ(inactive->Dim()->Opacity(), 0.12f);
  inactive->UpdateDimAndShadow(true, false);
  EXPECT_TRUE(inactive->DimAnimation()->Running());
  Advance(250);
  EXPECT_FLOAT_EQ(inactive->Dim()->Opacity(), 0);

  inactive->StartProgress(true);
  EXPECT_TRUE(inactive->Progress()->Visible());
  EXPECT_FLOAT_EQ(inactive->DimOpacity(true), 0.32f);
  EXPECT_FLOAT_EQ(inactive->DimOpacity(false), 0.32f);
  Advance(250);
  EXPECT_FLOAT_EQ(inactive->Dim()->Opacity(), 0.32f);
  EXPECT_TRUE(inactive->ProgressAnimation()->Running());  // it loops

  inactive->StopProgress(false);
  EXPECT_FALSE(inactive->Progress()->Visible());
  Advance(250);
  EXPECT_FLOAT_EQ(inactive->Dim()->Opacity(), 0.12f);
}

TEST_F(TabImageTest, CloseButtonFadesAndAnnouncesItself) {
  auto tab = MakeTab(nullptr);
  int shown = 0;
  tab->OnCloseButtonShown = [&](TFmxObject*) { ++shown; };
  tab->ProcessMouseEnter(false);
  EXPECT_EQ(shown, 1);
  EXPECT_TRUE(tab->CloseAnimation()->Running());
  EXPECT_TRUE(tab->CloseButtonVisible());
  Advance(200);
  EXPECT_FLOAT_EQ(tab->CloseButton()->Opacity(), 1);
  EXPECT_FLOAT_EQ(tab->Dim()->Opacity(), 0);

  TFakeScrollBox box;
  tab->SetScrollBox(&box);
  box.mouseInside = false;
  tab->ProcessMouseLeave(false);
  EXPECT_EQ(box.leaves, 1);
  EXPECT_EQ(shown, 1);
  Advance(200);
  EXPECT_FLOAT_EQ(tab->CloseButton()->Opacity(), 0);
  EXPECT_FALSE(tab->CloseButtonVisible());
  box.mouseInside = true;
  tab->ProcessMouseLeave(true);
  EXPECT_EQ(box.leaves, 1);
}

TEST_F(TabImageTest, BadgeAndCloseButtonTradePlacesAtOnce) {
  TFakeTab* hostTab = Open(u"https://locked.example/");
  SetLocked(hostTab, true);
  auto tab = MakeTab(hostTab);
  tab->UpdateTabStatus();
  ASSERT_TRUE(tab->Badge()->HasBadge());
  EXPECT_TRUE(tab->Badge()->Visible());

  tab->ProcessMouseEnter(false);
  EXPECT_FALSE(tab->Badge()->Visible());
  EXPECT_FALSE(tab->CloseAnimation()->Running());
  EXPECT_FLOAT_EQ(tab->CloseButton()->Opacity(), 1);

  tab->ProcessMouseLeave(false);
  EXPECT_TRUE(tab->Badge()->Visible());
  EXPECT_FLOAT_EQ(tab->CloseButton()->Opacity(), 0);
}

TEST_F(TabImageTest, UpdateTabStatusAppliesProtectedThenBookmarked) {
  TFakeTab* hostTab = Open(u"https://status.example/");
  auto tab = MakeTab(hostTab);
  bool bookmarked = false;
  tab->OnGetBookmarked = [&](TTabImage&) { return bookmarked; };
  auto closeColour = [&] { return Center(tab->CloseButton()->NormalBitmap()); };
  EXPECT_EQ(closeColour(), 0xFF800000u);

  SetLocked(hostTab, true);
  tab->UpdateTabStatus();
  EXPECT_TRUE(tab->Badge()->Pinned());
  EXPECT_EQ(closeColour(), 0xFF00A000u);
  EXPECT_EQ(Center(tab->CloseButton()->HoverBitmap()), 0xFF00B000u);
  EXPECT_EQ(Center(tab->CloseButton()->PushedBitmap()), 0xFF00C000u);

  bookmarked = true;
  tab->UpdateTabStatus();
  EXPECT_TRUE(tab->Badge()->Bookmarked());
  EXPECT_EQ(closeColour(), 0xFF0000A0u);

  // The bookmark goes off on a protected tab: the plain set comes back.
  bookmarked = false;
  tab->UpdateTabStatus();
  EXPECT_TRUE(tab->Badge()->Pinned());
  EXPECT_FALSE(tab->Badge()->Bookmarked());
  EXPECT_EQ(closeColour(), 0xFF800000u);

  // Nothing changed: nothing applied.
  tab->UpdateTabStatus();
  EXPECT_EQ(closeColour(), 0xFF800000u);

  // Both change in one call: the later one wins the button.
  SetLocked(hostTab, false);
  bookmarked = true;
  tab->UpdateTabStatus();
  EXPECT_FALSE(tab->Badge()->Pinned());
  EXPECT_EQ(closeColour(), 0xFF0000A0u);
}

TEST_F(TabImageTest, NewPictureCrossFadesUnlessImmediate) {
  auto tab = MakeTab(nullptr);
  auto red = MakeThumbnail(0xFFFF0000);
  tab->UpdateTabImage(red.get(), true);
  EXPECT_TRUE(tab->HasThumbnail());
  EXPECT_EQ(Center(tab->Thumbnail()->Bitmap()), 0xFFFF0000u);

  auto blue = MakeThumbnail(0xFF0000FF);
  tab->UpdateTabImage(blue.get(), false);
  EXPECT_TRUE(tab->ThumbnailAnimation()->Running());
  Advance(100);
  const TAlphaColor middle = Center(tab->Thumbnail()->Bitmap());
  EXPECT_NE(middle, 0xFFFF0000u);
  EXPECT_NE(middle, 0xFF0000FFu);
  Advance(150);
  EXPECT_FALSE(tab->ThumbnailAnimation()->Running());
  EXPECT_EQ(Center(tab->Thumbnail()->Bitmap()), 0xFF0000FFu);

  std::ostringstream stream(std::ios::binary);
  EXPECT_TRUE(tab->SaveImageToStream(stream));
  std::istringstream back(stream.str(), std::ios::binary);
  EXPECT_EQ(Center(*TBitmap::CreateFromStream(back)), 0xFF0000FFu);
}

TEST_F(TabImageTest, CachedPictureShowsAtOnceAndDamagedOneLeavesTheBlank) {
  TFakeTab* good = Open(u"https://good.example/");
  TFakeTab* broken = Open(u"https://broken.example/");
  TTabImageCacheMgr cache(wrap_.get(), thumbDir_.u16string());
  MakeThumbnail(0xFF336699)->SaveToFile(thumbDir_ / fs::path(GuidOf(good) + u".png"));
  std::vector<std::uint8_t> bytes = ReadBytes(thumbDir_ / fs::path(GuidOf(good) + u".png"));
  bytes.resize(bytes.size() - 20);
  WriteBytes(thumbDir_ / fs::path(GuidOf(broken) + u".png"), bytes);

  auto tabGood = MakeTab(good);
  tabGood->LoadCacheImage(cache);
  EXPECT_TRUE(tabGood->HasThumbnail());
  EXPECT_FALSE(tabGood->ThumbnailAnimation()->Running());
  EXPECT_EQ(Center(tabGood->Thumbnail()->Bitmap()), 0xFF336699u);

  auto tabBroken = MakeTab(broken);
  tabBroken->LoadCacheImage(cache);
  EXPECT_FALSE(tabBroken->HasThumbnail());
  EXPECT_EQ(Center(tabBroken->Thumbnail()->Bitmap()), 0xFFEEEEEEu);
  // The strip goes on working: a capture still lands.
  tabBroken->UpdateTabImage(MakeThumbnail(0xFF00FF00).get(), true);
  EXPECT_EQ(Center(tabBroken->Thumbnail()->Bitmap()), 0xFF00FF00u);

  // A tab that already shows a picture keeps it.
  cache.UpdateCache(GuidOf(good), MakeThumbnail(0xFF111111).get());
  tabGood->LoadCacheImage(cache);
  EXPECT_EQ(Center(tabGood->Thumbnail()->Bitmap()), 0xFF336699u);

  // Without a host nothing is asked.
  TTabImage hostless(nullptr, imageRes_.get());
  hostless.SetTabGuid(GuidOf(good));
  hostless.LoadCacheImage(cache);
  EXPECT_FALSE(hostless.HasThumbnail());
}

TEST_F(TabImageTest, GuidComesFromTheHostOnce) {
  TFakeTab* hostTab = Open(u"https://guid.example/");
  auto tab = MakeTab(hostTab);
  const std::u16string guid = tab->TabGuid();
  EXPECT_EQ(guid, GuidOf(hostTab));
  EXPECT_FALSE(guid.empty());
  ASSERT_EQ(host_.Model().CloseTab(hostTab), kOk);
  EXPECT_EQ(tab->TabGuid(), guid);
  auto unknown = MakeTab(nullptr);
  EXPECT_EQ(unknown->TabGuid(), u"");
}

TEST_F(TabImageTest, DragOffsetRefreshesAndAnimatesHome) {
  TFakeScrollBox box;
  auto tab = MakeTab(nullptr);
  tab->SetScrollBox(&box);
  tab->SetDragOffset(0);
  EXPECT_EQ(box.refreshes, 0);
  tab->SetDragOffset(12);
  EXPECT_EQ(box.refreshes, 1);
  tab->SetDragOffset(12);
  EXPECT_EQ(box.refreshes, 1);

  int finished = 0;
  tab->OnDragOffsetAnimationFinish = [&](TFmxObject* sender) {
    EXPECT_EQ(sender, tab.get());
    ++finished;
  };
  tab->StartDragOffsetAnimation();
  Advance(75);
  EXPECT_GT(tab->DragOffset(), 0);
  EXPECT_LT(tab->DragOffset(), 12);
  Advance(100);
  EXPECT_EQ(tab->DragOffset(), 0);
  EXPECT_EQ(finished, 1);
}

TEST_F(TabImageTest, PressesOnTheBaseFeedTheScrollBoxInertia) {
  TFakeScrollBox box;
  auto tab = MakeTab(nullptr);
  tab->SetScrollBox(&box);
  tab->Position().SetX(100);
  tab->Base()->MouseDown(TMouseButton::mbLeft, {}, 3, 4);
  tab->Base()->MouseMove({}, 5, 4);
  tab->Base()->MouseUp(TMouseButton::mbLeft, {}, 6, 4);
  ASSERT_EQ(box.downs.size(), 1u);
  EXPECT_EQ(box.downs[0], TPointF(73, 4));
  ASSERT_EQ(box.moves.size(), 1u);
  EXPECT_EQ(box.moves[0], TPointF(75, 4));
  ASSERT_EQ(box.ups.size(), 1u);
  EXPECT_EQ(box.ups[0], TPointF(76, 4));

  EXPECT_TRUE(tab->PtInTabImage(TPointF(101, 1)));
  EXPECT_FALSE(tab->PtInTabImage(TPointF(99, 1)));
  EXPECT_TRUE(tab->PtInCloseButton(TPointF(190, 5)));
  EXPECT_FALSE(tab->PtInCloseButton(TPointF(150, 5)));
}

TEST_F(TabImageTest, TabWithoutImageSetStillWorks) {
  TTabImage bare;
  EXPECT_EQ(TTabImage::BlankPicture(), nullptr);
  bare.UpdateDimAndShadow(false, true);
  bare.StartProgress(false);
  bare.StopProgress(false);
  bare.ProcessMouseEnter(true);
  bare.UpdateTabStatus();
  EXPECT_FLOAT_EQ(bare.CloseButton()->Opacity(), 1);
  std::ostringstream stream;
  EXPECT_FALSE(bare.SaveImageToStream(stream));
}

TEST_F(TabImageTest, DestroyedWhileSlidingStopsCleanly) {
  auto tab = MakeTab(nullptr);
  tab->SetAttributes(Attributes(true).get());
  tab->SetHorzPosition(false, TInterpolationType::Linear, 0.3f, 0);
  tab->SetHorzPosition(true, TInterpolationType::Linear, 0.3f, 80);
  tab->StartProgress(false);
  tab->ProcessMouseEnter(false);
  tab.reset();
  Advance(500);
}

}  // namespace
}  // namespace qx
