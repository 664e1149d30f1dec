// A tab the host closes while the pointer is on it: hovered, or carried by a drag.
// The strip must hold no reference to it and no state of a gesture about it.

#include "tabbar/InputFixture.h"
#include "tabbar/TitleForm.h"

namespace qx {
namespace {

TEST_F(InputTest, AHoveredTabClosedByTheHostTakesItsTitleAlongAndThePointerHoversTheNextOne) {
  TTabbarFrame& frame = Strip(3);
  TTabImage* second = frame.GetTabImages(1);
  const TPoint at = At(second);
  Hover(at);
  Advance(200);
  TTitleForm* popup = frame.TitleForm();
  ASSERT_NE(popup, nullptr);
  ASSERT_TRUE(popup->Visible());
  ASSERT_EQ(popup->CurrentTabId(), second->TabGuid());

  host_.Model().CloseTab(group_->FlatTabs()[1].get());
  os_->ProcessMessages();
  ASSERT_EQ(frame.TabImageCount(), 2);
  EXPECT_EQ(frame.HoveredTab(), nullptr);
  // Not the title of a tab that is gone, not even while the pointer stays in the strip.
  EXPECT_FALSE(popup->Visible() && popup->CurrentTabId() != frame.GetTabImages(1)->TabGuid());

  Advance(400);
  Hover({at.X + 1, at.Y});
  TTabImage* under = frame.HoveredTab();
  ASSERT_NE(under, nullptr);
  Advance(200);
  EXPECT_TRUE(popup->Visible());
  EXPECT_EQ(popup->CurrentTabId(), under->TabGuid());
}

TEST_F(InputTest, ADraggedTabClosedByTheHostEndsWithTheDropAndLeavesNothingBehind) {
  TTabbarFrame& frame = Strip(4);
  TTabImage* second = frame.GetTabImages(1);
  const TPoint p = At(second);
  Press(p);
  MoveTo({p.X + 6, p.Y});
  ASSERT_EQ(frame.DragTarget(), second);

  host_.Model().CloseTab(group_->FlatTabs()[1].get());
  os_->ProcessMessages();
  // The drag goes on over the tab that no longer has a host tab, and ends at the release.
  MoveTo({p.X + 120, p.Y});
  Advance(50);
  Release({p.X + 120, p.Y});
  EXPECT_EQ(frame.DragTarget(), nullptr);
  EXPECT_FALSE(frame.WaitUpdateTabbar());
  EXPECT_FALSE(frame.AutoScrollTimer()->Enabled());
  EXPECT_FALSE(frame.GetLayout()->draggingTab());
  EXPECT_TRUE(group_->MoveCalls().empty());
  EXPECT_EQ(frame.TabImageCount(), 3);
  EXPECT_EQ(MirrorText(&frame), HostText());

  // The strip takes the next gesture from scratch.
  TTabImage* last = frame.GetTabImages(2);
  Press(At(last));
  MoveTo(At(last, -6));
  EXPECT_EQ(frame.DragTarget(), last);
  Release(At(last, -6));
  EXPECT_EQ(frame.DragTarget(), nullptr);
  EXPECT_EQ(MirrorText(&frame), HostText());
}

}  // namespace
}  // namespace qx
