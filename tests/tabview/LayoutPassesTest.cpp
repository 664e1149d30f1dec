#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "base/Text.h"
#include "support/LayoutPass.h"
#include "support/LayoutStrip.h"
#include "support/PositionText.h"

namespace qx {
namespace {

using support::RunLayout;
using support::TFrameInfo;
using TStrip = support::TLayoutStrip;

TEST(LayoutPasses, ListIsChainedWithSectionFlags) {
  TStrip strip({2, 1, 3}, 700);
  strip.setActive(3);
  auto list = strip.layout().layoutAttributes();
  ASSERT_EQ(list->Count(), 6);
  ComPtr<ITabViewLayoutAttributes> first, third, last;
  list->GetItem(0, first);
  list->GetItem(2, third);
  list->GetItem(5, last);
  EXPECT_FALSE(first->GetPrevious());
  EXPECT_FALSE(last->GetNext());
  EXPECT_EQ(third->GetPrecedingCount(), 2);
  EXPECT_EQ(first->GetFollowingCount(), 5);
  const bool firsts[] = {true, false, true, true, false, false};
  const bool lasts[] = {false, true, true, false, false, true};
  for (int i = 0; i < 6; ++i) {
    ComPtr<ITabViewLayoutAttributes> item;
    list->GetItem(i, item);
    EXPECT_EQ(item->GetFirstInSection(), firsts[i]) << i;
    EXPECT_EQ(item->GetLastInSection(), lasts[i]) << i;
    EXPECT_EQ(item->GetActive(), i == 3) << i;
    EXPECT_EQ(item->GetInitialStraightPosition(), item->GetStraightPosition());
  }
  first->UnChain();
}

TEST(LayoutPasses, StraightPositionsAreSinglePrecisionSharesOfTheRow) {
  TStrip strip({3, 4}, 3000);
  auto frames = RunLayout(strip.layout());
  const double sum = strip.layout().sumWidth();
  double acc = 0;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    EXPECT_EQ(frames[i].StraightPosition, static_cast<double>(static_cast<float>(acc / sum))) << i;
    acc += 98 + (frames[i].LastInSection ? 16 : 0);
  }
  EXPECT_EQ(frames.front().StraightPosition, 0);
  EXPECT_EQ(frames.back().StraightPosition, 1);
}

TEST(LayoutPasses, DraggedTabStandsInFrontAndMarksItsSection) {
  TStrip strip({3, 1, 4}, 800);
  strip.layout().startDragging(strip.tab(5));
  auto frames = RunLayout(strip.layout());
  for (std::size_t i = 0; i < frames.size(); ++i) {
    EXPECT_EQ(frames[i].InDraggedSection, i >= 4) << i;
    if (i == 5) {
      EXPECT_EQ(frames[i].ZPosition, 200);
    } else {
      EXPECT_LE(frames[i].ZPosition, 150);
    }
  }
  // A section of one tab is never the dragged section.
  strip.layout().startDragging(strip.tab(3));
  frames = RunLayout(strip.layout());
  for (const auto& f : frames) EXPECT_FALSE(f.InDraggedSection);
  EXPECT_EQ(frames[3].ZPosition, 200);
  strip.layout().stopDragging();
  EXPECT_EQ(strip.layout().draggingTab(), nullptr);
}

TEST(LayoutPasses, ZPositionFallsWithDistanceFromTheMiddle) {
  TStrip strip({60}, 900);
  strip.layout().scroll(0.5);
  auto frames = RunLayout(strip.layout());
  TPointD start;
  strip.layout().parameters()->GetStartPoint(start);
  const double middle = start.X + strip.layout().parameters()->GetStraightSpan() / 2;
  for (const auto& f : frames)
    EXPECT_DOUBLE_EQ(f.ZPosition, 150 - std::fabs(middle - f.StraightPosition) * 150);
}

TEST(LayoutPasses, StraightStretchHasWholePixelsAndSectionGaps) {
  TStrip strip({3, 3, 3, 3, 3, 3, 3, 3, 60}, 1500);
  strip.layout().scroll(0.2);
  auto frames = RunLayout(strip.layout());
  TPointD start, end;
  strip.layout().parameters()->GetStartPoint(start);
  strip.layout().parameters()->GetEndPoint(end);
  ASSERT_FALSE(strip.layout().atLeftEdge());
  ASSERT_FALSE(strip.layout().atRightEdge());
  int boundaries = 0;
  for (std::size_t i = 0; i + 1 < frames.size(); ++i) {
    const auto& a = frames[i];
    const auto& b = frames[i + 1];
    const bool straight = a.StraightPosition >= start.X && a.StraightPosition <= end.X;
    const bool nextStraight = b.StraightPosition >= start.X && b.StraightPosition <= end.X;
    if (!straight || !nextStraight) continue;
    EXPECT_EQ(a.Frame.Left, std::floor(a.Frame.Left));
    EXPECT_EQ(b.Frame.Left - a.Frame.Left, a.LastInSection ? 98 + 16 : 98) << i;
    if (a.LastInSection) ++boundaries;
  }
  EXPECT_GE(boundaries, 2);
}

TEST(LayoutPasses, StacksEndInLaddersOfTwoPixelsInsideTheView) {
  TStrip strip({400}, 1000);
  strip.layout().scroll(0.5);
  auto frames = RunLayout(strip.layout());
  const double left = strip.layout().viewLeft();
  const double limit = strip.layout().viewFrame().Right - 98;
  EXPECT_EQ(frames.front().Frame.Left, left);
  EXPECT_EQ(frames.back().Frame.Left, limit);
  // The outermost visible tabs step by 2 pixels.
  std::size_t i = 0;
  while (frames[i].Frame.Left == left) ++i;
  EXPECT_EQ(frames[i].Frame.Left - frames[i - 1].Frame.Left, 2);
  EXPECT_EQ(frames[i + 1].Frame.Left - frames[i].Frame.Left, 2);
  std::size_t j = frames.size() - 1;
  while (frames[j].Frame.Left == limit) --j;
  EXPECT_EQ(frames[j + 1].Frame.Left - frames[j].Frame.Left, 2);
  EXPECT_EQ(frames[j].Frame.Left - frames[j - 1].Frame.Left, 2);
  for (const auto& f : frames) {
    EXPECT_GE(f.Frame.Left, left);
    EXPECT_LE(f.Frame.Left, limit);
  }
}

TEST(LayoutPasses, LeftLadderParityIsPlainEvennessRightFollowsTheLimit) {
  // An odd viewLeft: the left ladder keeps even steps from an even start, so its
  // tabs may pile on viewLeft; the right ladder lands on the limit exactly.
  TStrip strip({300}, 1001);
  strip.layout().setMargin(7);
  strip.layout().scroll(0.5);
  auto frames = RunLayout(strip.layout());
  const double left = strip.layout().viewLeft();
  ASSERT_NE(std::fmod(left, 2.0), 0);
  std::size_t i = 0;
  while (frames[i].Frame.Left == left) ++i;
  EXPECT_EQ(std::fmod(frames[i].Frame.Left, 2.0), 0) << frames[i].Frame.Left;
  EXPECT_EQ(frames[i].Frame.Left - left, 1);  // the first step off the pile is one pixel
  EXPECT_EQ(frames.back().Frame.Left, strip.layout().viewFrame().Right - 98);
}

TEST(LayoutPasses, PiledTabsAreHiddenButTheActiveOneShows) {
  TStrip strip({300}, 1000);
  strip.layout().scroll(0.5);
  auto frames = RunLayout(strip.layout());
  const double left = strip.layout().viewLeft();
  // Left pile: each tab whose left equals the next one's is hidden.
  std::size_t pile = 0;
  while (frames[pile + 1].Frame.Left == left) ++pile;  // the last tab on viewLeft
  ASSERT_GT(pile, 3u);
  for (std::size_t i = 0; i < pile; ++i) EXPECT_TRUE(frames[i].Hidden) << i;
  EXPECT_FALSE(frames[pile].Hidden);

  // Make a hidden tab of the pile active: it shows, its left neighbour (same
  // spot, already hidden) stays hidden, and the pile's visible tab keeps showing.
  strip.setActive(2);
  frames = RunLayout(strip.layout());
  EXPECT_FALSE(frames[2].Hidden);
  EXPECT_TRUE(frames[1].Hidden);
  EXPECT_TRUE(frames[3].Hidden);
  EXPECT_FALSE(frames[pile].Hidden);

  // Right pile: the tab further out hides; an active one there takes the place
  // of the one showing, so exactly one tab shows on the limit.
  const double limit = strip.layout().viewFrame().Right - 98;
  std::size_t firstOnLimit = frames.size() - 1;
  while (frames[firstOnLimit - 1].Frame.Left == limit) --firstOnLimit;
  ASSERT_LT(firstOnLimit, frames.size() - 3);
  EXPECT_FALSE(frames[firstOnLimit].Hidden);
  for (std::size_t i = firstOnLimit + 1; i < frames.size(); ++i) EXPECT_TRUE(frames[i].Hidden) << i;
  const std::size_t chosen = firstOnLimit + 2;
  strip.setActive(static_cast<int>(chosen));
  frames = RunLayout(strip.layout());
  int shown = 0;
  for (std::size_t i = firstOnLimit; i < frames.size(); ++i) shown += frames[i].Hidden ? 0 : 1;
  EXPECT_EQ(shown, 1);
  EXPECT_FALSE(frames[chosen].Hidden);
  EXPECT_TRUE(frames[firstOnLimit].Hidden);
}

TEST(LayoutPasses, ClipFramesCutAwayHigherNeighbours) {
  TStrip strip({120}, 900);
  strip.layout().scroll(0.5);
  auto frames = RunLayout(strip.layout());
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const auto& f = frames[i];
    const TFrameInfo* p = i > 0 ? &frames[i - 1] : nullptr;
    const TFrameInfo* n = i + 1 < frames.size() ? &frames[i + 1] : nullptr;
    if (p && p->ZPosition > f.ZPosition && f.Frame.Left < p->Frame.Right) {
      EXPECT_EQ(f.ClipFrame.Left, p->Frame.Right);
      EXPECT_EQ(f.ClipFrame.Right, f.Frame.Right);
      EXPECT_TRUE(p->OverlapsRight);
    } else if (n && n->ZPosition > f.ZPosition && f.Frame.Right > n->Frame.Left &&
               (!p || p->ZPosition <= f.ZPosition)) {
      EXPECT_EQ(f.ClipFrame.Left, f.Frame.Left);
      EXPECT_EQ(f.ClipFrame.Right, n->Frame.Left);
      EXPECT_TRUE(n->OverlapsLeft);
    } else {
      EXPECT_EQ(f.ClipFrame, f.Frame) << i;
    }
    EXPECT_EQ(f.ClipFrame.Top, 0);
    EXPECT_EQ(f.ClipFrame.Bottom, 49);
  }
  // In the left stack tabs further right stand higher: they overlap left.
  EXPECT_TRUE(frames[5].OverlapsLeft);
  EXPECT_TRUE(frames[frames.size() - 6].OverlapsRight);
}

TEST(LayoutPasses, CenterTabIsNearTheMiddleOfTheView) {
  TStrip strip({50}, 800);
  strip.layout().scroll(0.5);
  auto list = strip.layout().layoutAttributes();
  auto centre = strip.layout().centerTab(list.get());
  ASSERT_TRUE(centre);
  const TRectD frame = strip.layout().viewFrame();
  EXPECT_LT(std::fabs(centre->GetFrame().Left + 49 - (frame.Left + frame.Width() / 2)), 98);
  // None qualifies: the middle item of the list.
  for (const auto& item : *list) item->SetFrame(TRectD::FromBounds(-5000, 0, 98, 49));
  centre = strip.layout().centerTab(list.get());
  ComPtr<ITabViewLayoutAttributes> middle;
  list->GetItem(25, middle);
  EXPECT_EQ(centre.get(), middle.get());
  ComPtr<ITabViewLayoutAttributes> first;
  list->GetItem(0, first);
  first->UnChain();
  auto empty = MakeCom<TTabViewLayoutAttributeList>();
  EXPECT_FALSE(strip.layout().centerTab(empty.get()));
  EXPECT_FALSE(strip.layout().centerTab(nullptr));
}

TEST(LayoutPasses, DebugFrameFormatsEachFrame) {
  TStrip strip({2}, 800);
  std::vector<std::string> lines;
  strip.layout().setDebugSink([&lines](const std::u16string& text) { lines.push_back(ToUtf8(text)); });
  auto list = strip.layout().layoutAttributes();
  strip.layout().debugFrame(list.get());
  ComPtr<ITabViewLayoutAttributes> first;
  list->GetItem(0, first);
  const TRectD f = first->GetFrame();
  ASSERT_EQ(lines.size(), 2u);
  char expected[100];
  std::snprintf(expected, sizeof expected, "Frame: %.2f,0.00,%.2f,49.00", f.Left, f.Right);
  EXPECT_EQ(lines[0], expected);
  first->UnChain();
  strip.layout().debugProgress();
}

}  // namespace
}  // namespace qx
