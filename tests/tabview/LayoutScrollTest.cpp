#include <gtest/gtest.h>

#include <cmath>

#include "support/LayoutPass.h"
#include "support/LayoutStrip.h"
#include "support/PositionText.h"

namespace qx {
namespace {

using support::RunLayout;
using TStrip = support::TLayoutStrip;

double Single(double v) { return static_cast<double>(static_cast<float>(v)); }

// Middle of the view, in view pixels.
double MiddleX(TTabGroupViewLayout& layout) {
  const TRectD frame = layout.viewFrame();
  return frame.Left + frame.Width() / 2;
}

// Scrolled to the middle, the pointer walks left from the middle until a pin
// holds the left curve; answers where the pointer stopped.
double PinLeftCurve(TTabGroupViewLayout& layout) {
  layout.scroll(0.5);
  RunLayout(layout);
  double x = MiddleX(layout);
  layout.mouseEntered(TPointD(x, 10));
  while (!layout.pin()) layout.mouseMoved(TPointD(x -= 5, 10));
  return x;
}

TEST(LayoutScroll, MoveOnOneTabDoesNothing) {
  TStrip strip({1}, 800);
  EXPECT_FALSE(strip.layout().move(50));  // no parameters yet
  RunLayout(strip.layout());
  EXPECT_FALSE(strip.layout().move(50));  // default parameters
  EXPECT_EQ(strip.layout().progress(), 0);
}

TEST(LayoutScroll, MoveScrollsByShareOfTheRow) {
  TStrip strip({200}, 1000);
  RunLayout(strip.layout());
  strip.layout().scroll(0.5);
  const double before = strip.layout().progress();
  EXPECT_TRUE(strip.layout().move(98));
  EXPECT_DOUBLE_EQ(strip.layout().progress(), before + 98 / strip.layout().sumWidth());
}

TEST(LayoutScroll, ScrollStopsExactlyAtTheLimits) {
  TStrip strip({200}, 1000);
  RunLayout(strip.layout());
  const auto& p = strip.layout().parameters();
  const double lo = strip.layout().curveRatio() / p->GetSlope() + p->GetStraightSpan() / 2;
  strip.layout().scroll(5);
  EXPECT_EQ(strip.layout().progress(), 1 - lo);
  strip.layout().scroll(0.01);
  EXPECT_EQ(strip.layout().progress(), 1 - lo);
  strip.layout().scroll(-5);
  EXPECT_EQ(strip.layout().progress(), lo);
}

TEST(LayoutScroll, MoveActiveCenter) {
  TStrip strip({10, 10}, 900);
  strip.setActive(0);
  strip.layout().scroll(0.5);
  strip.layout().moveActiveCenter();
  EXPECT_EQ(strip.layout().progress(), 0);
  RunLayout(strip.layout());
  EXPECT_TRUE(strip.layout().atLeftEdge());
  TPointD start;
  strip.layout().parameters()->GetStartPoint(start);
  EXPECT_DOUBLE_EQ(start.X, strip.layout().curveRatio() / strip.layout().parameters()->GetSlope());

  // Past a section border the gap counts.
  strip.setActive(12);
  strip.layout().moveActiveCenter();
  const double sum = strip.layout().sumWidth();
  EXPECT_DOUBLE_EQ(strip.layout().progress(), 12 * 98 / sum + 16 / sum);
  // No active tab: to the end of the strip.
  strip.setActive(-1);
  strip.layout().moveActiveCenter();
  EXPECT_NEAR(strip.layout().progress(), (20 * 98 + 2 * 16) / sum, 1e-12);
  // A single tab has no row to share out.
  TStrip single({1}, 900);
  single.layout().moveActiveCenter();
  EXPECT_EQ(single.layout().progress(), 0);
}

TEST(LayoutScroll, ShouldScrollAtTheStackZonesUnlessTheStripIsAtThatEnd) {
  TStrip strip({100}, 1000);
  TTabGroupViewLayout& layout = strip.layout();
  RunLayout(layout);
  layout.scroll(0.5);
  const double e = layout.curveRatio();
  const TRectD frame = layout.viewFrame();
  const TRectD atLeftZone = TRectD::FromBounds(e * frame.Width() + frame.Left, 0, 98, 49);
  EXPECT_TRUE(layout.shouldScrollLeft(atLeftZone));
  EXPECT_FALSE(layout.shouldScrollLeft(TRectD::FromBounds(atLeftZone.Left + 0.5, 0, 98, 49)));
  const double rightZone = (1 - e) * frame.Width() - 98 + frame.Left;
  const TRectD atRightZone = TRectD::FromBounds(rightZone - 98, 0, 98, 49);
  EXPECT_TRUE(layout.shouldScrollRight(atRightZone));
  EXPECT_FALSE(layout.shouldScrollRight(TRectD::FromBounds(rightZone - 99, 0, 98, 49)));
  // Scrolled to either end, that end's zone asks for nothing more.
  layout.scroll(-5);
  EXPECT_FALSE(layout.shouldScrollLeft(atLeftZone));
  EXPECT_TRUE(layout.shouldScrollRight(atRightZone));
  layout.scroll(5);
  EXPECT_TRUE(layout.shouldScrollLeft(atLeftZone));
  EXPECT_FALSE(layout.shouldScrollRight(atRightZone));
}

TEST(LayoutScroll, DraggedTabLimits) {
  TStrip strip({100}, 1000);
  TTabGroupViewLayout& layout = strip.layout();
  RunLayout(layout);
  const TRectD frame = layout.viewFrame();
  const double e = layout.curveRatio();
  // Progress 0: the tab may go 8 pixels past the left end and no further.
  TPointD p = layout.dragged(TRectD::FromBounds(-500, 5, 98, 49));
  EXPECT_EQ(p.X, Single(frame.Left - 8));
  EXPECT_EQ(p.Y, 5);
  p = layout.dragged(TRectD::FromBounds(frame.Left - 3, 0, 98, 49));
  EXPECT_EQ(p.X, frame.Left - 3);
  // ... but on the right it stops at the stack zone.
  p = layout.dragged(TRectD::FromBounds(5000, 0, 98, 49));
  EXPECT_EQ(p.X, Single(frame.Left + (1 - e) * frame.Width() - 98));
  // At the right end it is the other way round.
  layout.scroll(10);
  p = layout.dragged(TRectD::FromBounds(5000, 0, 98, 49));
  EXPECT_EQ(p.X, Single(frame.Left + frame.Width() - 98 + 8));
  p = layout.dragged(TRectD::FromBounds(-500, 0, 98, 49));
  EXPECT_EQ(p.X, Single(frame.Left + e * frame.Width()));
}

TEST(LayoutScroll, PointerIntoTheLeftStackPinsTheLeftCurveOnce) {
  TStrip strip({200}, 1000);
  TTabGroupViewLayout& layout = strip.layout();
  layout.scroll(0.5);
  RunLayout(layout);
  double x = MiddleX(layout);
  EXPECT_TRUE(layout.mouseEntered(TPointD(x, 10)));
  EXPECT_DOUBLE_EQ(layout.lastMousePosition(), 0.5);
  int created = 0;
  ComPtr<ITabGroupViewLayoutBezier> leftBefore;
  while (!layout.pin() && x > 0) {
    x -= 5;
    layout.parameters()->GetLeftCurve(leftBefore);
    if (layout.mouseMoved(TPointD(x, 10))) ++created;
  }
  ASSERT_TRUE(layout.pin());
  EXPECT_EQ(created, 1);
  EXPECT_EQ(layout.pin()->GetLeftCurve().get(), leftBefore.get());
  EXPECT_FALSE(layout.pin()->GetRightCurve());
  EXPECT_EQ(layout.pin()->GetSlope(), 0);
  EXPECT_LT(layout.pin()->GetPoint().Y, layout.curveRatio());
  // The stretch follows the pin.
  TPointD start;
  layout.parameters()->GetStartPoint(start);
  EXPECT_EQ(start, layout.pin()->GetPoint());
  EXPECT_DOUBLE_EQ(layout.progress(), start.X + layout.parameters()->GetStraightSpan() / 2);
  // Further out: the pin is replaced, and no new animation is asked for.
  for (int i = 0; i < 10; ++i) {
    x -= 5;
    EXPECT_FALSE(layout.mouseMoved(TPointD(x, 10)));
  }
  EXPECT_TRUE(layout.pin());
  // The curve under the pointer stays in place while the pin holds it.
  auto frames = RunLayout(layout);
  EXPECT_EQ(frames.front().Frame.Left, layout.viewLeft());
}

TEST(LayoutScroll, PointerBackOverTheStackGivesThePinASlope) {
  TStrip strip({200}, 1000);
  TTabGroupViewLayout& layout = strip.layout();
  double x = PinLeftCurve(layout);
  for (int i = 0; i < 6; ++i) layout.mouseMoved(TPointD(x -= 5, 10));
  const TPointD pinned = layout.pin()->GetPoint();
  // One step back towards the middle: the slope is computed and the curve let go.
  layout.mouseMoved(TPointD(x += 5, 10));
  ASSERT_TRUE(layout.pin());
  EXPECT_GT(layout.pin()->GetSlope(), 0);
  EXPECT_LE(layout.pin()->GetSlope(), layout.parameters()->GetSlope());
  EXPECT_FALSE(layout.pin()->GetLeftCurve());
  EXPECT_EQ(layout.pin()->GetPoint().X, pinned.X);
  // A second step moves the pin with a blended slope.
  layout.mouseMoved(TPointD(x += 5, 10));
  ASSERT_TRUE(layout.pin());
  EXPECT_GT(layout.pin()->GetSlope(), 0);
  auto frames = RunLayout(layout);
  for (std::size_t i = 1; i < frames.size(); ++i) EXPECT_GE(frames[i].Frame.Left, frames[i - 1].Frame.Left);
}

TEST(LayoutScroll, PointerBackInTheStraightStretchDropsThePin) {
  TStrip strip({200}, 1000);
  TTabGroupViewLayout& layout = strip.layout();
  PinLeftCurve(layout);
  layout.mouseMoved(TPointD(MiddleX(layout), 10));
  EXPECT_FALSE(layout.pin());
  EXPECT_FALSE(layout.mouseMoved(TPointD(MiddleX(layout), 10)));

  // Without a pin a move over the stretch scrolls by the pointer's shift.
  const double before = layout.progress();
  const double c0 = layout.lastMousePosition();
  const double to = MiddleX(layout) + 40;
  EXPECT_FALSE(layout.mouseMoved(TPointD(to, 10)));
  const double c1 = layout.mousePosition(TPointD(to, 10));
  const double shift = ((layout.viewFrame().Width() - 98) / layout.sumWidth()) * (c1 - c0) / 2;
  EXPECT_DOUBLE_EQ(layout.progress(), before + shift);
}

TEST(LayoutScroll, ScrollWithAPinWaitsForTheStraightStretch) {
  TStrip strip({200}, 1000);
  TTabGroupViewLayout& layout = strip.layout();
  double x = PinLeftCurve(layout);
  const TPointD pinned = layout.pin()->GetPoint();
  const double slope = layout.pin()->GetSlope();
  layout.scroll(0.0001);
  EXPECT_TRUE(layout.waitForStraight());
  ASSERT_TRUE(layout.pin());
  // The pin moves towards the middle by the single-precision step.
  EXPECT_EQ(layout.pin()->GetPoint(), TPointD(pinned.X + Single(0.0001), pinned.Y + Single(0.0001)));
  EXPECT_DOUBLE_EQ(layout.pin()->GetSlope(), (layout.parameters()->GetSlope() + slope) / 2);
  EXPECT_FALSE(layout.pin()->GetLeftCurve());
  // Over the stack, moves are ignored.
  const double progress = layout.progress();
  EXPECT_FALSE(layout.mouseMoved(TPointD(x - 5, 10)));
  EXPECT_EQ(layout.progress(), progress);
  EXPECT_TRUE(layout.waitForStraight());
  // Over the stretch they count again. That first move scrolls while the pin
  // still stands, which arms the wait once more before the pin goes.
  layout.mouseMoved(TPointD(MiddleX(layout), 10));
  EXPECT_FALSE(layout.pin());
  EXPECT_TRUE(layout.waitForStraight());
  layout.mouseMoved(TPointD(MiddleX(layout) + 5, 10));
  EXPECT_FALSE(layout.waitForStraight());
  // A drag does not wait.
  strip.layout().startDragging(strip.tab(3));
  x = MiddleX(layout);
  while (!layout.pin()) layout.mouseMoved(TPointD(x -= 5, 10));
  layout.scroll(0.0001);
  EXPECT_FALSE(layout.waitForStraight());
}

TEST(LayoutScroll, ScrollIntoTheStretchOrLeavingDropsThePin) {
  TStrip carried({200}, 1000);
  PinLeftCurve(carried.layout());
  carried.layout().scroll(0.5);
  EXPECT_FALSE(carried.layout().pin());

  TStrip left({200}, 1000);
  TTabGroupViewLayout& layout = left.layout();
  const double x = PinLeftCurve(layout);
  layout.mouseMoved(TPointF{static_cast<float>(x - 5), 10.f});  // the single-precision overload
  layout.scroll(0.0001);
  EXPECT_TRUE(layout.mouseExited());
  EXPECT_FALSE(layout.pin());
  EXPECT_FALSE(layout.waitForStraight());
}

TEST(LayoutScroll, StaticLayoutsIgnoreThePointer) {
  TStrip strip({3}, 1000);  // fits the view: the stretch spans everything
  TTabGroupViewLayout& layout = strip.layout();
  EXPECT_TRUE(layout.isStaticLayout());  // no parameters yet
  RunLayout(layout);
  EXPECT_EQ(layout.parameters()->GetStraightSpan(), 1);
  EXPECT_TRUE(layout.isStaticLayout());
  EXPECT_FALSE(layout.mouseMoved(TPointD(0, 0)));
  EXPECT_FALSE(layout.pin());
}

TEST(LayoutScroll, SlopeAt) {
  TStrip strip({200}, 1000);
  TTabGroupViewLayout& layout = strip.layout();
  layout.scroll(0.5);
  layout.calculateParameters();
  const double s = layout.parameters()->GetSlope();
  EXPECT_EQ(layout.slopeAt(TPointD(0, 0)), s);
  const double x = 0.05;
  const double y = layout.curvePositionFromStraightPosition(x);
  const double expected = (y - layout.curvePositionFromStraightPosition(x - 0.001)) / 0.001;
  EXPECT_DOUBLE_EQ(layout.slopeAt(TPointD(x, y)), std::min(s, expected));
  EXPECT_LT(layout.slopeAt(TPointD(x, y)), s);
}

TEST(LayoutScroll, MousePositionIsAShareOfTheViewWidth) {
  TStrip strip({200}, 1000);
  TTabGroupViewLayout& layout = strip.layout();
  const TRectD frame = layout.viewFrame();
  EXPECT_EQ(layout.mousePosition(TPointD(frame.Left, 0)), 0);
  EXPECT_EQ(layout.mousePosition(TPointD(frame.Left - 50, 0)), 0);
  EXPECT_EQ(layout.mousePosition(TPointD(frame.Right + 50, 0)), 1);
  EXPECT_DOUBLE_EQ(layout.mousePosition(TPointD(frame.Left + frame.Width() / 4, 0)), 0.25);
}

}  // namespace
}  // namespace qx
