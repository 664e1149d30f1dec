// Properties every layout pass keeps, over many random strips (fixed seeds).

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "support/LayoutPass.h"
#include "support/LayoutStrip.h"
#include "support/PositionText.h"

namespace qx {
namespace {

using TStrip = support::TLayoutStrip;

constexpr double kSolverTolerance = 0.0001;

struct TCase {
  std::vector<int> sections;
  double viewWidth = 0;
  double progress = 0;
  int active = -1;
  int dragged = -1;
  std::vector<double> pointerPath;  // view x coordinates, entered at the first
  double scrollAfterPin = 0;
  std::string describe() const {
    int tabs = 0;
    for (int n : sections) tabs += n;
    return std::to_string(tabs) + " tabs in " + std::to_string(sections.size()) + " sections, view " +
           std::to_string(viewWidth) + ", progress " + std::to_string(progress) + ", pointer steps " +
           std::to_string(pointerPath.size()) + ", active " + std::to_string(active);
  }
};

TCase RandomCase(std::mt19937& rng) {
  TCase c;
  const int sectionCount = std::uniform_int_distribution<int>(1, 30)(rng);
  // Mostly modest strips, some very long ones.
  const int tabs = std::uniform_int_distribution<int>(0, 9)(rng) == 0
                       ? std::uniform_int_distribution<int>(1000, 2000)(rng)
                       : std::uniform_int_distribution<int>(1, 300)(rng);
  const int total = std::max(tabs, sectionCount);
  c.sections.assign(static_cast<std::size_t>(sectionCount), 1);
  for (int i = sectionCount; i < total; ++i) {
    ++c.sections[static_cast<std::size_t>(std::uniform_int_distribution<int>(0, sectionCount - 1)(rng))];
  }
  c.viewWidth = std::uniform_int_distribution<int>(200, 4000)(rng);
  c.progress = std::uniform_real_distribution<double>(0, 1)(rng);
  c.active = std::uniform_int_distribution<int>(-1, total - 1)(rng);
  if (std::uniform_int_distribution<int>(0, 4)(rng) == 0)
    c.dragged = std::uniform_int_distribution<int>(0, total - 1)(rng);
  if (std::uniform_int_distribution<int>(0, 1)(rng) == 0) {
    double x = std::uniform_real_distribution<double>(0, c.viewWidth)(rng);
    const int steps = std::uniform_int_distribution<int>(1, 40)(rng);
    const double stride = std::uniform_real_distribution<double>(-20, 20)(rng);
    for (int i = 0; i < steps; ++i) {
      c.pointerPath.push_back(x);
      x += stride + std::uniform_real_distribution<double>(-6, 6)(rng);
    }
    if (std::uniform_int_distribution<int>(0, 2)(rng) == 0) {
      c.scrollAfterPin = std::uniform_real_distribution<double>(-0.002, 0.002)(rng);
    }
  }
  return c;
}

void Prepare(TStrip& strip, const TCase& c) {
  TTabGroupViewLayout& layout = strip.layout();
  strip.setActive(c.active);
  if (c.dragged >= 0) layout.startDragging(strip.tab(static_cast<std::size_t>(c.dragged)));
  layout.calculateParameters();
  layout.scroll(c.progress - layout.progress());
  if (!c.pointerPath.empty()) {
    layout.calculateParameters();
    layout.mouseEntered(TPointD(c.pointerPath.front(), 20));
    for (double x : c.pointerPath) layout.mouseMoved(TPointD(x, 20));
    if (c.scrollAfterPin != 0) layout.scroll(c.scrollAfterPin);
  }
}

void CheckMap(TTabGroupViewLayout& layout, const std::string& where) {
  EXPECT_EQ(layout.curvePositionFromStraightPosition(0), 0) << where;
  EXPECT_EQ(layout.curvePositionFromStraightPosition(1), 1) << where;
  EXPECT_EQ(layout.straightPositionFromCurvePosition(0), 0) << where;
  EXPECT_EQ(layout.straightPositionFromCurvePosition(1), 1) << where;
  // Each evaluation is off by less than the tolerance on the solved axis, so
  // samples further apart than twice that must be in order.
  constexpr int kSamples = 400;
  double previous = 0;
  int backwards = 0;
  for (int i = 1; i <= kSamples; ++i) {
    const double s = static_cast<double>(i) / kSamples;
    const double y = layout.curvePositionFromStraightPosition(s);
    if (y < previous) ++backwards;
    previous = y;
    const double back = layout.straightPositionFromCurvePosition(y);
    const double again = layout.curvePositionFromStraightPosition(back);
    // On a steep piece the straight axis is the tight one, on a flat piece the
    // curve axis: one of the two comes back within the tolerance.
    const double error = std::min(std::fabs(back - s), std::fabs(again - y));
    EXPECT_LE(error, 2 * kSolverTolerance + 1e-9) << where << " at s=" << s;
  }
  EXPECT_EQ(backwards, 0) << where;
}

void CheckFrames(TTabGroupViewLayout& layout, const std::vector<TTabViewLayoutAttributesImpl*>& items,
                 int active, const std::string& where) {
  const double left = layout.viewLeft();
  const double limit = layout.viewFrame().Right - 98;
  TPointD start, end;
  layout.parameters()->GetStartPoint(start);
  layout.parameters()->GetEndPoint(end);
  const bool leftEdge = layout.atLeftEdge();
  const bool rightEdge = !leftEdge && layout.atRightEdge();
  const auto straight = [&](double s) {
    if (leftEdge) return s < end.X;
    if (rightEdge) return s > start.X;
    return s >= start.X && s <= end.X;
  };
  const bool overflows = layout.contentWidth() + 2 * layout.margin() > layout.viewSize().cx;

  for (std::size_t i = 0; i < items.size(); ++i) {
    const TRectD& f = items[i]->Frame;
    ASSERT_EQ(f.Width(), 98) << where;
    ASSERT_EQ(f.Height(), 49) << where;
    if (overflows) {
      ASSERT_GE(f.Left, left) << where << " tab " << i;
      ASSERT_LE(f.Left, limit) << where << " tab " << i;
    }
    if (static_cast<int>(i) == active) {
      ASSERT_FALSE(items[i]->Hidden) << where;
    }
    if (i + 1 < items.size() && straight(items[i]->StraightPosition) &&
        straight(items[i + 1]->StraightPosition)) {
      ASSERT_EQ(f.Left, std::floor(f.Left)) << where << " tab " << i;
      ASSERT_EQ(items[i + 1]->Frame.Left - f.Left, items[i]->LastInSection ? 98 + 16 : 98)
          << where << " tab " << i;
    }
  }
  if (!overflows || items.size() < 2) return;
  EXPECT_EQ(items.front()->Frame.Left, left) << where;
  EXPECT_EQ(items.back()->Frame.Left, limit) << where;
  // Ladders: once stacked tabs close in to 2 pixels they step by exactly 2
  // (or pile up on the view's edge). Only the left pile may be one pixel off,
  // since that ladder keeps even steps whatever the edge's parity.
  if (!leftEdge) {
    for (std::size_t i = 0; i + 1 < items.size() && items[i + 1]->StraightPosition < start.X; ++i) {
      const double step = items[i + 1]->Frame.Left - items[i]->Frame.Left;
      if (step > 2) continue;
      const bool besidePile = items[i]->Frame.Left == left;
      ASSERT_TRUE(step == 0 || step == 2 || (step == 1 && besidePile)) << where << " left step " << step;
    }
  }
  if (!rightEdge) {
    for (std::size_t i = items.size() - 1; i > 0 && items[i - 1]->StraightPosition > end.X; --i) {
      const double step = items[i]->Frame.Left - items[i - 1]->Frame.Left;
      if (step > 2) continue;
      ASSERT_TRUE(step == 0 || step == 2) << where << " right step " << step;
    }
  }
}

TEST(LayoutInvariants, RandomStrips) {
  std::mt19937 rng(20261122);
  int pinned = 0, leftEdges = 0, rightEdges = 0, middles = 0, longStrips = 0;
  for (int round = 0; round < 250; ++round) {
    const TCase c = RandomCase(rng);
    const std::string where = "round " + std::to_string(round) + ": " + c.describe();
    TStrip strip(c.sections, c.viewWidth);
    Prepare(strip, c);
    TTabGroupViewLayout& layout = strip.layout();

    auto list = layout.layoutAttributes();
    std::vector<TTabViewLayoutAttributesImpl*> items;
    for (const auto& item : *list) items.push_back(static_cast<TTabViewLayoutAttributesImpl*>(item.get()));
    ASSERT_EQ(items.size(), strip.tabCount()) << where;

    if (!layout.parameters()->GetIsDefault() && !layout.isStaticLayout()) {
      pinned += layout.pin() ? 1 : 0;
      const bool l = layout.atLeftEdge(), r = layout.atRightEdge();
      leftEdges += l ? 1 : 0;
      rightEdges += r ? 1 : 0;
      middles += !l && !r ? 1 : 0;
      longStrips += items.size() >= 1000 ? 1 : 0;
    }
    if (!layout.parameters()->GetIsDefault()) {
      CheckMap(layout, where);
      CheckFrames(layout, items, c.active, where);
    }
    if (::testing::Test::HasFatalFailure() || ::testing::Test::HasNonfatalFailure()) {
      ADD_FAILURE() << "stopped at " << where;
      items.front()->UnChain();
      return;
    }

    // Ending the list frees every item: after UnChain only the list holds them.
    items.front()->UnChain();
    for (auto* item : items) {
      ASSERT_FALSE(item->Next) << where;
      ASSERT_FALSE(item->Previous) << where;
      ASSERT_EQ(item->RefCount(), 1u) << where;
    }
  }
  // The seed reaches every kind of strip.
  EXPECT_GE(pinned, 20);
  EXPECT_GE(leftEdges, 20);
  EXPECT_GE(rightEdges, 20);
  EXPECT_GE(middles, 50);
  EXPECT_GE(longStrips, 10);
  std::printf("pinned %d, left edge %d, right edge %d, middle %d, long %d\n", pinned, leftEdges, rightEdges,
              middles, longStrips);
}

// Tabs whose place the snapping overwrites are not put on the curve; placing
// every one of them must give the very same result.
TEST(LayoutInvariants, SkippedPlacesChangeNothing) {
  std::mt19937 rng(4242);
  int skippedSomewhere = 0;
  for (int round = 0; round < 200; ++round) {
    const TCase c = RandomCase(rng);
    TStrip strip(c.sections, c.viewWidth);
    Prepare(strip, c);
    strip.layout().setPlaceEveryFrame(true);
    auto all = support::RunLayout(strip.layout());
    strip.layout().setPlaceEveryFrame(false);
    auto some = support::RunLayout(strip.layout());
    ASSERT_EQ(all.size(), some.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
      ASSERT_EQ(all[i].Frame, some[i].Frame) << c.describe() << " tab " << i;
      ASSERT_EQ(all[i].ClipFrame, some[i].ClipFrame) << c.describe() << " tab " << i;
      ASSERT_EQ(all[i].Hidden, some[i].Hidden) << c.describe() << " tab " << i;
      ASSERT_EQ(all[i].OverlapsLeft, some[i].OverlapsLeft);
      ASSERT_EQ(all[i].OverlapsRight, some[i].OverlapsRight);
      ASSERT_EQ(all[i].ZPosition, some[i].ZPosition);
    }
    skippedSomewhere += all.size() > 100 ? 1 : 0;
  }
  EXPECT_GT(skippedSomewhere, 20);
}

bool Finite(const TRectD& r) {
  return std::isfinite(r.Left) && std::isfinite(r.Top) && std::isfinite(r.Right) && std::isfinite(r.Bottom);
}

// Windows come in every width, also narrower than one tab plus the margins.
TEST(LayoutInvariants, FramesStayFiniteForEveryViewWidth) {
  std::vector<double> widths;
  for (int w = 0; w <= 2000; ++w) widths.push_back(w);
  for (double w : {-1.0, -32768.0, 32767.0, 65535.0, 1e7}) widths.push_back(w);
  for (const std::vector<int>& sections : {std::vector<int>{1}, {2}, {3, 1}, {40, 25, 35}}) {
    TStrip strip(sections);
    for (double width : widths) {
      strip.setViewWidth(width);
      TTabGroupViewLayout& layout = strip.layout();
      layout.calculateParameters();
      layout.scroll(0.3);
      const std::string where = std::to_string(strip.tabCount()) + " tabs, view " + std::to_string(width);
      // Once as it stands, once with the pointer pinning the left stack.
      for (int pass = 0; pass < 2; ++pass) {
        if (pass == 1) {
          layout.mouseEntered(TPointD(width / 2, 20));
          layout.mouseMoved(TPointD(width / 8, 20));
        }
        for (const support::TFrameInfo& f : support::RunLayout(layout)) {
          ASSERT_TRUE(Finite(f.Frame) && Finite(f.ClipFrame)) << where << ", pass " << pass;
          ASSERT_TRUE(std::isfinite(f.StraightPosition) && std::isfinite(f.ZPosition))
              << where << ", pass " << pass;
        }
      }
      layout.mouseExited();
      layout.scroll(-layout.progress());
    }
  }
}

TEST(LayoutInvariants, RepeatedPassesAreIdentical) {
  std::mt19937 rng(77);
  for (int round = 0; round < 30; ++round) {
    const TCase c = RandomCase(rng);
    TStrip strip(c.sections, c.viewWidth);
    Prepare(strip, c);
    auto a = support::RunLayout(strip.layout());
    auto b = support::RunLayout(strip.layout());
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
      ASSERT_EQ(a[i].Frame, b[i].Frame) << c.describe();
      ASSERT_EQ(a[i].Hidden, b[i].Hidden);
      ASSERT_EQ(a[i].ClipFrame, b[i].ClipFrame);
    }
  }
}

}  // namespace
}  // namespace qx
