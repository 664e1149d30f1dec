#include "CabinetFixture.h"

namespace qx::test {
namespace {

// One icon alone on a plain layout, with the bar's pictures from the fixture's skin.
class IconTest : public CabinetTest {
 protected:
  IconTest() {
    res_ = std::make_unique<TCabinetIconBarImageRes>(
        (root_ / "rc/skins/current/widget/toolbar/CabinetBar").u16string());
    parent_ = std::make_unique<TLayout>();
    parent_->SetBounds(0, 0, 1000, 24);
    icon_ = new TCabinetIcon2(parent_.get(), u"tab", nullptr, nullptr, res_.get());
    icon_->SetParent(parent_.get());
    icon_->SetHeight(24);
    icon_->SetFont(u"", 11);
  }
  ~IconTest() override {
    parent_.reset();
    res_.reset();
  }
  void Place(float left, float width) {
    icon_->SetvisibleArea(TRectF::FromSize(left, 0, width, 24));
    icon_->SetcompoundVisibleArea(TRectF::FromSize(left, 0, width, 24));
    icon_->AnimationSetWidth(false, 0, 0, width);
    icon_->UpdateLayout();
  }

  std::unique_ptr<TCabinetIconBarImageRes> res_;
  std::unique_ptr<TLayout> parent_;
  TCabinetIcon2* icon_ = nullptr;
};

TEST_F(IconTest, WhatTheIconShowsInTheWidthItGets) {
  icon_->SetTitle(u"A rather long site title");
  const float base = icon_->IconBaseWidth();
  ASSERT_EQ(base, kFaviconBase);
  const float titleFloor = 4 + base + 3 + 25 + 4;
  // Wide: wires and title.
  Place(0, 600);
  EXPECT_TRUE(icon_->TitleVisible());
  EXPECT_TRUE(icon_->LeftLineVisible());
  EXPECT_TRUE(icon_->RightLineVisible());
  // Over one tab a title that fills the tab's right half still leaves both wires their
  // least length.
  icon_->SetTitle(u"Sites");
  Place(0, 100);
  ASSERT_TRUE(icon_->RightLineVisible());
  EXPECT_GE(icon_->RightLineWidth(), TCabinetIcon2::kIconEdge);
  EXPECT_GE(icon_->LeftLineWidth(), TCabinetIcon2::kIconEdge);
  icon_->SetTitle(u"A rather long site title");
  // Just the title's least width: a trimmed title, no wires.
  Place(0, titleFloor);
  EXPECT_TRUE(icon_->TitleVisible());
  EXPECT_FALSE(icon_->LeftLineVisible());
  // One pixel less: the favicon alone.
  Place(0, titleFloor - 1);
  EXPECT_FALSE(icon_->TitleVisible());
  EXPECT_EQ(icon_->GetAlignedWidth(titleFloor - 1), base);
  EXPECT_EQ(icon_->GetAlignedWidth(titleFloor), titleFloor);
  // Forced off, the wires stay hidden however wide the icon is.
  icon_->SetForceHideLines(true);
  Place(0, 600);
  EXPECT_FALSE(icon_->LeftLineVisible());
  EXPECT_TRUE(icon_->TitleVisible());
}

TEST_F(IconTest, AnEmptyTitleShowsNoBackOnHoverButTheBaseChanges) {
  Place(0, 200);
  EXPECT_FALSE(icon_->TitleVisible());
  icon_->IconTextLayout()->DoMouseEnter();
  EXPECT_EQ(icon_->IconTextBackStatus(), TIconTextBackStatus::itbsNone);
  EXPECT_TRUE(icon_->IconTextBackImageFill()->Bitmap().IsEmpty());
  EXPECT_FALSE(icon_->IconBaseImageInside()->Bitmap().IsEmpty());
  icon_->SetTitle(u"Site");
  EXPECT_EQ(icon_->IconTextBackStatus(), TIconTextBackStatus::itbsHover);
  EXPECT_EQ(icon_->TextBox()->TextColor(), TTextPaintBox::kBackColor);
  EXPECT_FALSE(icon_->IconTextBackImageFill()->Bitmap().IsEmpty());
  icon_->IconTextLayout()->DoMouseLeave();
  EXPECT_EQ(icon_->TextBox()->TextColor(), TTextPaintBox::kPlainColor);
}

TEST_F(IconTest, AreasKeepTheirFloorAndTheirOrder) {
  const float floor = icon_->IconBaseWidth() + 4;
  icon_->SetvisibleArea(TRectF::FromSize(100, 0, 10, 24));
  icon_->SetcompoundVisibleArea(TRectF::FromSize(100, 0, 10, 24));
  icon_->UpdateAreaWithMinLeft(105);
  EXPECT_EQ(icon_->compoundVisibleArea().Left, 105);
  EXPECT_EQ(icon_->compoundVisibleArea().Width(), floor);  // widened, may overlap a neighbour
  icon_->ShrinkAreaFromRight(110);
  EXPECT_EQ(icon_->compoundVisibleArea().Right, 110);
  EXPECT_EQ(icon_->compoundVisibleArea().Width(), floor);
  EXPECT_EQ(icon_->visibleArea().Left, icon_->compoundVisibleArea().Left);
  icon_->IncludeVisibleArea(TRectF::FromSize(300, 0, 50, 24));
  EXPECT_EQ(icon_->compoundVisibleArea().Right, 350);
  // Two icons edge to edge without wires need a gap of 4 between their blocks.
  TCabinetIcon2* prev = new TCabinetIcon2(parent_.get(), u"prev", nullptr, nullptr, res_.get());
  prev->SetParent(parent_.get());
  prev->SetHeight(24);
  prev->SetcompoundVisibleArea(TRectF::FromSize(0, 0, floor, 24));
  icon_->SetcompoundVisibleArea(TRectF::FromSize(floor, 0, floor, 24));
  EXPECT_GT(icon_->GetRequiredLeftMargin(prev), 0);
  icon_->SetcompoundVisibleArea(TRectF::FromSize(floor + 10, 0, floor, 24));
  EXPECT_EQ(icon_->GetRequiredLeftMargin(prev), 0);
  EXPECT_EQ(icon_->GetRequiredLeftMargin(nullptr), 0);
}

TEST_F(IconTest, TheFirstPlacementIsImmediateAndAnEqualTargetDoesNotRestart) {
  icon_->AnimationSetLeft(true, 0.3f, 0, 50);
  EXPECT_EQ(icon_->Position().X(), 50);
  EXPECT_FALSE(icon_->HorzPositionAnimation()->Running());
  icon_->AnimationSetLeft(true, 0.3f, 2, 150);
  TFloatAnimation& move = *icon_->HorzPositionAnimation();
  ASSERT_TRUE(move.Running());
  EXPECT_EQ(move.AnimationType, TAnimationType::InOut);
  // The same target again, even with another duration, leaves the running animation alone.
  icon_->AnimationSetLeft(true, 0.9f, 2, 150);
  EXPECT_TRUE(move.Running());
  EXPECT_FLOAT_EQ(move.Duration, 0.3f);
  // A new target restarts it with the new duration.
  icon_->AnimationSetLeft(true, 0.9f, 0, 160);
  EXPECT_FLOAT_EQ(move.Duration, 0.9f);
  EXPECT_EQ(move.StopValue, 160);
  icon_->AnimationSetLeft(false, 0.3f, 0, 10);
  EXPECT_EQ(icon_->Position().X(), 10);
}

TEST_F(IconTest, AClickSelectsOnlyThroughAnEnabledIcon) {
  int clicks = 0;
  icon_->OnIconClick = [&](TCabinetIcon2* sender) {
    EXPECT_EQ(sender, icon_);
    ++clicks;
  };
  icon_->Click();
  icon_->SetEnabled(false);
  icon_->Click();
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace qx::test
