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
using support::TabLefts;
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

// Positions are shares of the flat row (604 wide here, with one section gap),
// rounded through single precision.
TEST(LayoutPasses, StraightPositionsAreSinglePrecisionSharesOfTheRow) {
  TStrip strip({3, 4}, 3000);
  auto frames = RunLayout(strip.layout());
  ASSERT_EQ(strip.layout().sumWidth(), 604);
  EXPECT_EQ(frames[0].StraightPosition, 0);
  EXPECT_EQ(frames[1].StraightPosition, static_cast<double>(98.0f / 604.0f));
  EXPECT_NE(frames[1].StraightPosition, 98.0 / 604.0);
  EXPECT_EQ(frames[3].StraightPosition, static_cast<double>(310.0f / 604.0f));
  EXPECT_EQ(frames[6].StraightPosition, 1);
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

// The stretch runs at full spacing from a whole pixel, 16 more at each section
// boundary; the stacks close in towards the view's edges and end in a ladder.
TEST(LayoutPasses, StraightStretchHasWholePixelsAndSectionGaps) {
  TStrip strip({3, 3, 3, 3, 3, 3, 3, 3, 16}, 1500);
  strip.layout().scroll(0.2);
  auto frames = RunLayout(strip.layout());
  ASSERT_FALSE(strip.layout().atLeftEdge());
  ASSERT_FALSE(strip.layout().atRightEdge());
  EXPECT_EQ(
      TabLefts(frames),
      "8 50 119 | 221 319 417 | 531 629 727 | 841 939 1037 | 1151 1216 1241 | 1261 1275 1287 | 1300 1309 "
      "1318 | "
      "1328 1335 1342 | 1349 1355 1361 1366 1370 1374 1378 1381 1384 1386 1388 1390 1392 1394 1394 1394");
}

// Both stacks pile on the view's edges (8 and 592 - 98) after a ladder of 2 pixels.
TEST(LayoutPasses, StacksEndInLaddersOfTwoPixelsInsideTheView) {
  TStrip strip({40}, 600);
  strip.layout().scroll(0.5);
  EXPECT_EQ(
      TabLefts(RunLayout(strip.layout())),
      "8 8 8 8 10 12 14 16 18 20 23 27 31 35 40 46 53 63 104 202 300 398 439 449 456 462 467 471 475 479 482 "
      "484 486 488 490 492 494 494 494 494");
}

TEST(LayoutPasses, LeftLadderParityIsPlainEvennessRightFollowsTheLimit) {
  // An odd viewLeft (7): the left ladder keeps even steps from an even start, so
  // its first step off the pile is one pixel; the right ladder lands on the limit (496).
  TStrip strip({40}, 601);
  strip.layout().setMargin(7);
  strip.layout().scroll(0.5);
  EXPECT_EQ(
      TabLefts(RunLayout(strip.layout())),
      "7 7 7 8 10 12 14 16 18 20 22 26 30 34 39 45 53 63 105 203 301 399 440 450 458 464 469 473 477 481 484 "
      "486 488 490 492 494 496 496 496 496");
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
  strip.layout().setMargin(8.25);
  auto list = strip.layout().layoutAttributes();
  strip.layout().debugFrame(list.get());
  // Two decimals; at the left edge the first tab keeps the fractional viewLeft and
  // the one on the stretch's end is rounded up.
  EXPECT_EQ(lines,
            (std::vector<std::string>{"Frame: 302.25,0.00,400.25,49.00", "Frame: 401.00,0.00,499.00,49.00"}));
  ComPtr<ITabViewLayoutAttributes> first;
  list->GetItem(0, first);
  first->UnChain();
}

}  // namespace
}  // namespace qx
