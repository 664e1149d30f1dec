#include <algorithm>

#include "CabinetFixture.h"
#include "tabview/TabImage.h"
#include "tabview/TabImageSection.h"

namespace qx::test {
namespace {

class IconBarTest : public CabinetTest {};

// Which control the host makes first, and which it ends first.
class IconBarOrderTest : public CabinetTest, public ::testing::WithParamInterface<std::tuple<bool, bool>> {};

TEST_P(IconBarOrderTest, EitherControlMayComeFirstAndTheToolkitGoesDownWithTheLast) {
  const auto [barFirst, barDiesFirst] = GetParam();
  const int before = VisualToolkitFinalizeCount();
  if (barFirst) CreateBar();
  CreateStrip();
  if (!barFirst) CreateBar();
  EXPECT_EQ(ResourceReleaserUseCount(), 2);
  // A second create makes nothing.
  ComPtr<IQxIHandle> again;
  EXPECT_EQ(bar_->CreateControl(nullptr, again.put()), kOk);
  EXPECT_FALSE(again);
  std::int32_t bottom = 0;
  bar_->GetChildFrameBottom(&bottom);
  EXPECT_EQ(bottom, 24);

  Open(u"https://a.example/1");
  // Whichever came first, the bar finds the strip through the host and shows the tab.
  EXPECT_EQ(VisibleIcons().size(), 1u);

  IQxIControl* first = barDiesFirst ? bar_.get() : strip_.get();
  IQxIControl* last = barDiesFirst ? strip_.get() : bar_.get();
  first->DestroyControl();
  EXPECT_EQ(VisualToolkitFinalizeCount(), before);
  EXPECT_EQ(first->DestroyControl(), kOk);
  EXPECT_EQ(VisualToolkitFinalizeCount(), before);
  // The strip may still ask the bar that is gone: nothing happens.
  Open(u"https://b.example/1");
  last->DestroyControl();
  EXPECT_EQ(VisualToolkitFinalizeCount(), before + 1);
  EXPECT_EQ(ResourceReleaserUseCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Orders, IconBarOrderTest, ::testing::Combine(::testing::Bool(), ::testing::Bool()));

TEST_F(IconBarTest, OneVisibleIconPerRunOfOneDomain) {
  CreateStrip();
  CreateBar();
  Open(u"https://a.example/1", u"A one");
  TFakeTab* second = Open(u"https://a.example/2");
  Open(u"https://b.example/");
  Open(u"https://A.example/3");  // the same domain, split off by b
  Open(u"about:blank");          // no address with a host: no icon
  Open(u"");
  Open(u"https://c.example/");  // a run of one tab
  ASSERT_EQ(Icons().size(), 5u);
  const auto shown = VisibleIcons();
  ASSERT_EQ(shown.size(), 4u);
  EXPECT_EQ(shown[0]->Title(), u"A one");
  EXPECT_EQ(shown[2]->Title(), u"a.example");
  std::vector<std::int32_t> groups;
  for (TCabinetIcon2* icon : Icons()) groups.push_back(icon->DomainId());
  EXPECT_EQ(groups, (std::vector<std::int32_t>{1, 1, 2, 3, 4}));
  // The run's head stands for both tabs: its area covers the second tab too.
  EXPECT_EQ(shown[0]->compoundVisibleArea().Right, Icons()[1]->visibleArea().Right);
  EXPECT_GT(shown[0]->compoundVisibleArea().Width(), Icons()[0]->visibleArea().Width());
  // Icons stand over their tabs, left to right.
  for (std::size_t i = 1; i < shown.size(); ++i)
    EXPECT_GE(shown[i]->compoundVisibleArea().Left, shown[i - 1]->compoundVisibleArea().Right - 0.01f);

  // A tab moving to another site leaves its run for the next one, which it now heads
  // under its new title.
  host_.Model().NavigateTab(second, u"https://b.example/2", u"B two");
  bar_.As<ICabinetIconBar>()->layoutCabinetIcon(false, 0, 0, nullptr);
  groups.clear();
  for (TCabinetIcon2* icon : Icons()) groups.push_back(icon->DomainId());
  EXPECT_EQ(groups, (std::vector<std::int32_t>{1, 2, 2, 3, 4}));
  ASSERT_TRUE(Icons()[1]->Visible());
  EXPECT_EQ(Icons()[1]->Title(), u"B two");
}

TEST_F(IconBarTest, PrivateTabsAndUnknownTabsLeaveTheBarEmptyAndOldIconsAreFreed) {
  CreateStrip();
  CreateBar();
  Open(u"https://a.example/1");
  Open(u"https://b.example/1");
  ASSERT_EQ(VisibleIcons().size(), 2u);
  TCabinetIcon2* old = Icons()[0];
  std::vector<TFmxObject*> before(Frame().ChildList());
  host_.Model().SetPrivate(group_, true);
  Open(u"https://c.example/1");
  EXPECT_TRUE(Icons().empty());
  // The icons left the frame: nothing but its own layout remains.
  EXPECT_EQ(Frame().ChildrenCount(), 1);
  EXPECT_NE(std::find(before.begin(), before.end(), old), before.end());
  host_.Model().SetPrivate(group_, false);
  Open(u"https://c.example/2");
  EXPECT_EQ(VisibleIcons().size(), 3u);
}

TEST_F(IconBarTest, IconsFollowTheStripWithItsDurationAndTheDraggedTabsIconJumps) {
  CreateStrip();
  CreateBar();
  for (int i = 0; i < 3; ++i) Open(u"https://site" + std::u16string(1, char16_t(u'a' + i)) + u".example/");
  ASSERT_EQ(VisibleIcons().size(), 3u);
  TCabinetIcon2* last = VisibleIcons().back();
  // The first pass places at once; a later one animates towards the new place.
  EXPECT_FALSE(last->HorzPositionAnimation()->Running());
  EXPECT_FLOAT_EQ(last->Position().X(), last->compoundVisibleArea().Left);
  Open(u"https://sited.example/");
  for (TCabinetIcon2* icon : VisibleIcons()) {
    const float target = icon->compoundVisibleArea().Left;
    if (icon->Position().X() != target) {
      EXPECT_TRUE(icon->HorzPositionAnimation()->Running());
      EXPECT_FLOAT_EQ(icon->HorzPositionAnimation()->StopValue, target);
    }
  }
  Advance(2000);
  for (TCabinetIcon2* icon : VisibleIcons())
    EXPECT_NEAR(icon->Position().X(), icon->compoundVisibleArea().Left, 0.01f);

  // A dragged tab's icon starts 200 left of the tab's place and is never animated.
  ComPtr<IPreviewStrip> strip = strip_.As<IPreviewStrip>();
  auto* dragged = AsTabImage(strip->GetTabList()->TabImages(1));
  ASSERT_TRUE(dragged);
  dragged->Position().SetX(dragged->Position().X() + 40);
  BarImpl().layoutCabinetIcon(true, 0.3f, 0, dragged);
  TCabinetIcon2* icon = Frame().IconList().FindIcon(dragged->TabGuid());
  ASSERT_TRUE(icon);
  EXPECT_TRUE(icon->DragTarget());
  EXPECT_FLOAT_EQ(icon->visibleArea().Left, dragged->Position().X() - 200);
  EXPECT_FALSE(icon->HorzPositionAnimation()->Running());
  EXPECT_FLOAT_EQ(icon->Position().X(), icon->compoundVisibleArea().Left);
}

TEST_F(IconBarTest, IconsAtTheStacksEndsDoNotPileUp) {
  CreateStrip();
  CreateBar();
  // Far more tabs than fit: the strip stacks them at both ends, in runs of five of a domain.
  for (int i = 0; i < 40; ++i) Open(u"https://s" + std::u16string(1, char16_t(u'a' + i / 5)) + u".example/");
  const auto shown = VisibleIcons();
  ASSERT_EQ(shown.size(), 8u);
  // The frontmost tab's icon holds its place; those left of it are pushed right of their
  // left neighbour, those right of it left of their right neighbour.
  const auto pivot =
      std::max_element(shown.begin(), shown.end(),
                       [](TCabinetIcon2* a, TCabinetIcon2* b) { return a->zPosition() < b->zPosition(); }) -
      shown.begin();
  const float floor = shown[0]->IconBaseWidth() + 4;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const TRectF& area = shown[i]->compoundVisibleArea();
    EXPECT_GE(area.Width(), floor - 0.01f) << i;
    if (i > 0 && static_cast<std::ptrdiff_t>(i) <= pivot) {
      EXPECT_GE(area.Left, shown[i - 1]->compoundVisibleArea().Right - 0.01f) << i;
    }
    if (static_cast<std::ptrdiff_t>(i) > pivot && i + 1 < shown.size()) {
      EXPECT_LE(area.Right, shown[i + 1]->compoundVisibleArea().Left + 0.01f) << i;
    }
  }
  EXPECT_TRUE(shown.back()->RightToLeft());
  EXPECT_FALSE(shown.front()->RightToLeft());
  // Squeezed icons lose their titles before their favicons.
  std::size_t titled = 0;
  for (TCabinetIcon2* icon : shown) titled += icon->TitleVisible();
  EXPECT_LT(titled, shown.size());
}

TEST_F(IconBarTest, ActiveStateAndScrollBoxRectReachTheForm) {
  CreateStrip();
  CreateBar();
  TCabinetIconBarForm& form = *BarImpl().CabinetIconBarForm();
  TImage* back = form.BackGroundImage();
  const TAlphaColor active = back->Bitmap().PixelColor(0, 0);
  BarImpl().ChangeActiveState(false);
  EXPECT_EQ(back->Bitmap().Width(), kFaviconBase);
  BarImpl().NotifyScrollBoxRect(TRectF::FromSize(137, 30, 420, 49));
  std::int32_t left = 0, right = 0;
  bar_->GetChildFrameLeft(&left);
  bar_->GetChildFrameRight(&right);
  EXPECT_EQ(right - left, 420);
  EXPECT_NE(active, 0u);
  EXPECT_FALSE(BarImpl().ExistIcon(nullptr));
}

}  // namespace
}  // namespace qx::test
