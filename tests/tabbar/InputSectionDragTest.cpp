// A dragged tab between sections: the zone after a section's last tab makes a
// section of its own, once, and a lone tab dragged out takes its section with it.

#include "tabbar/InputFixture.h"

namespace qx {
namespace {

bool NoEmptySection(const TTabImageSectionList& list) {
  for (TTabImageSection* section : list)
    if (section->Count() == 0) return false;
  return true;
}

TEST_F(InputTest, ATabDraggedIntoTheGapAfterItsSectionStandsAloneAndLeavesThatSectionWhenDraggedBack) {
  TTabbarFrame& frame = Strip(4, 2);
  ASSERT_EQ(frame.TabList()->Count(), 2);
  TTabImage* first = frame.GetTabImages(0);
  TTabImage* second = frame.GetTabImages(1);
  const std::u16string moved = second->TabGuid();

  // Just past the section's last place: the zone between the sections.
  TPoint p = At(second);
  auto by = [&](int dx) { return TPoint{p.X + dx, p.Y}; };
  Press(p);
  MoveTo(by(5));
  ASSERT_EQ(frame.DragTarget(), second);
  MoveTo(by(8));
  ASSERT_EQ(frame.TabList()->Count(), 3);
  EXPECT_EQ(frame.TabList()->Sections(1)->Count(), 1);
  EXPECT_EQ(second->Section(), frame.TabList()->Sections(1));
  // Further on in the same zone the section it stands alone in is its target: nothing more is made.
  MoveTo(by(12));
  MoveTo(by(9));
  EXPECT_EQ(frame.TabList()->Count(), 3);
  EXPECT_TRUE(NoEmptySection(*frame.TabList()));
  Release(by(9));
  ASSERT_EQ(group_->MoveCalls().size(), 1u);
  EXPECT_TRUE(group_->MoveCalls()[0].NewSection);
  EXPECT_EQ(group_->MoveCalls()[0].Section, 1);
  EXPECT_EQ(MirrorText(&frame), HostText());
  EXPECT_EQ(wrap_->TabGuid(group_->Sections()[1]->Tabs()[0].get()), moved);

  // Back over its old neighbour's left half: it joins that section in front of it, and its own goes at once.
  p = At(second);
  Press(p);
  MoveTo(by(-5));
  ASSERT_EQ(frame.DragTarget(), second);
  const TRectF neighbour = first->AbsoluteRect();
  const TPoint over{kHostX + static_cast<int>(neighbour.Left) + 20, p.Y};
  MoveTo(over);
  EXPECT_EQ(frame.TabList()->Count(), 2);
  EXPECT_TRUE(NoEmptySection(*frame.TabList()));
  EXPECT_EQ(second->Section(), first->Section());
  Release(over);
  EXPECT_EQ(frame.DragTarget(), nullptr);
  EXPECT_EQ(MirrorText(&frame), HostText());
  ASSERT_EQ(group_->Sections().size(), 2u);
  EXPECT_EQ(wrap_->TabGuid(group_->Sections()[0]->Tabs()[0].get()), moved);
}

}  // namespace
}  // namespace qx
