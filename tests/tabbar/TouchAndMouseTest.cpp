// A finger on the strip, alone and while the mouse is there too: the mouse messages
// the system makes of touch are neither hover nor a second pointer.

#include "tabbar/InputFixture.h"
#include "tabbar/TitleForm.h"

namespace qx {
namespace {

TEST_F(InputTest, AFingerDraggingATabCarriesTheTabWhileTheStripStandsStill) {
  TTabbarFrame& frame = Strip(24);
  frame.SetActiveTabImage(frame.GetTabImages(12), false);
  Advance(1000);
  TTabImage* dragged = frame.GetTabImages(12);
  const std::u16string guid = dragged->TabGuid();
  const TPoint p = At(dragged);
  Touch(win::TOUCHEVENTF_DOWN, p);
  // Under the touch threshold of 10 pixels nothing is dragged yet.
  Touch(win::TOUCHEVENTF_MOVE, {p.X + 8, p.Y});
  EXPECT_EQ(frame.DragTarget(), nullptr);
  Touch(win::TOUCHEVENTF_MOVE, {p.X + 12, p.Y});
  ASSERT_EQ(frame.DragTarget(), dragged);
  // From here the finger carries the tab; the strip keeps its place, give or take its pixel snapping.
  const float viewport = frame.TabScrollViewPortX();
  for (int dx = 18; dx <= 60; dx += 6) {
    Touch(win::TOUCHEVENTF_MOVE, {p.X + dx, p.Y});
    ASSERT_EQ(frame.DragTarget(), dragged) << "finger at +" << dx;
    EXPECT_NEAR(frame.TabScrollViewPortX(), viewport, 1.0f) << "finger at +" << dx;
  }
  Advance(500);
  EXPECT_NEAR(frame.TabScrollViewPortX(), viewport, 1.0f);
  Touch(win::TOUCHEVENTF_UP, {p.X + 60, p.Y});
  EXPECT_EQ(frame.DragTarget(), nullptr);
  ASSERT_EQ(group_->MoveCalls().size(), 1u);
  EXPECT_NE(wrap_->TabGuid(group_->FlatTabs()[12].get()), guid);
  EXPECT_EQ(MirrorText(&frame), HostText());
}

TEST_F(InputTest, AFingerOnTheStripEndsTheMouseHoverAndTheMouseHoversAgainOnlyAfterAPause) {
  TTabbarFrame& frame = Strip(3);
  Advance(1000);
  TTabImage* first = frame.GetTabImages(0);
  TTabImage* third = frame.GetTabImages(2);
  Hover(At(first));
  ASSERT_EQ(frame.HoveredTab(), first);
  Touch(win::TOUCHEVENTF_DOWN, At(third));
  Touch(win::TOUCHEVENTF_MOVE, At(third, 2));
  EXPECT_EQ(frame.HoveredTab(), nullptr);
  EXPECT_EQ(frame.ActiveTab(), third);
  Touch(win::TOUCHEVENTF_UP, At(third, 2));
  // The mouse still lies over the first tab; within 200 ms of the finger it hovers nothing.
  Advance(150);
  Hover(At(first, 3));
  EXPECT_EQ(frame.HoveredTab(), nullptr);
  Advance(100);
  Hover(At(first, 4));
  EXPECT_EQ(frame.HoveredTab(), first);
}

TEST_F(InputTest, ATapIsOneClickAndTwoTapsAreOneDoubleClick) {
  TTabbarFrame& frame = Strip(3);
  wrap_->SetPropertyText(u"client.TabDockSetting-LeftDblClick", u"close");
  TTabImage* second = frame.GetTabImages(1);
  Tap(At(second));
  EXPECT_EQ(frame.ActiveTab(), second);
  EXPECT_TRUE(Sent(u"TabBar.CloseTab").empty());
  Advance(100);
  Tap(At(second));
  auto closes = Sent(u"TabBar.CloseTab");
  ASSERT_EQ(closes.size(), 1u);
  EXPECT_EQ(closes[0].Value(u"tab-id"), second->TabGuid());
}

}  // namespace
}  // namespace qx
