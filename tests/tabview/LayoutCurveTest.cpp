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

TEST(LayoutWidths, NoSections) {
  TStrip strip({}, 800);
  TTabGroupViewLayout& layout = strip.layout();
  EXPECT_EQ(layout.sumWidth(), 0);
  EXPECT_EQ(layout.contentWidth(), 98);
  auto list = layout.layoutAttributes();
  EXPECT_EQ(list->Count(), 0);
  EXPECT_FALSE(layout.parameters());
}

TEST(LayoutWidths, WithoutViewSizeHandlerTheViewIsEmpty) {
  TStrip strip({3}, 0);
  TTabGroupViewLayout& layout = strip.layout();
  layout.setOnGetViewSize(nullptr);
  EXPECT_EQ(layout.viewSize(), TSizeD());
  EXPECT_EQ(layout.width(), 0);
  auto frames = RunLayout(layout);  // nonsense geometry, but no failure
  EXPECT_EQ(frames.size(), 3u);
}

TEST(LayoutWidths, SumAndContentCountSectionGaps) {
  TStrip strip({3, 2, 4}, 2000);
  TTabGroupViewLayout& layout = strip.layout();
  EXPECT_EQ(layout.sumWidth(), 16.0 * 2 + 98.0 * 9 - 98);
  EXPECT_EQ(layout.contentWidth(), 98.0 * 9 + 16 * 2);
  EXPECT_EQ(layout.width(), 16 + 98.0 * 9 + 32);
  // Narrower than the view: centred, with ties rounded to even.
  const double w = layout.width();
  EXPECT_EQ(layout.viewBounds(), TRectD::FromBounds(std::nearbyint((2000 - w) / 2), 0, w, 59));
  EXPECT_EQ(layout.drawViewFrame(), layout.viewBounds());
  EXPECT_EQ(layout.viewFrame(), TRectD::FromBounds(layout.viewBounds().Left + 8, 0, w - 16, 59));
  EXPECT_EQ(layout.viewLeft(), layout.viewBounds().Left + 8);
  layout.setMargin(20);
  EXPECT_EQ(layout.margin(), 20);
  EXPECT_EQ(layout.width(), 40 + 98.0 * 9 + 32);
}

TEST(LayoutWidths, CentringRoundsHalvesToEven) {
  // 2 tabs: width = 16 + 196 = 212. View 1001: (1001 - 212) / 2 = 394.5 -> 394.
  TStrip strip({2}, 1001);
  EXPECT_EQ(strip.layout().viewBounds().Left, 394);
  strip.setViewWidth(1003);  // 395.5 -> 396
  EXPECT_EQ(strip.layout().viewBounds().Left, 396);
}

TEST(LayoutWidths, HundredTabsInFiveHundredPixels) {
  TStrip strip({100}, 500);
  TTabGroupViewLayout& layout = strip.layout();
  EXPECT_EQ(layout.straightRatio(), 0.7);
  EXPECT_DOUBLE_EQ(layout.curveRatio(), 0.15);
  layout.calculateParameters();
  const auto& p = layout.parameters();
  ASSERT_TRUE(p);
  EXPECT_FALSE(p->GetIsDefault());
  const double usable = 484 - 98;
  const double sum = 98 * 99;
  EXPECT_DOUBLE_EQ(p->GetStraightSpan(), usable * 0.7 / sum);
  EXPECT_DOUBLE_EQ(p->GetSlope(), sum / usable);  // a pixel of the row stays a pixel
  TPointD start, end;
  p->GetStartPoint(start);
  p->GetEndPoint(end);
  // Progress 0: stopped at the left limit.
  EXPECT_DOUBLE_EQ(start.X, 0.15 / p->GetSlope());
  EXPECT_DOUBLE_EQ(start.Y, 0.15);
  EXPECT_DOUBLE_EQ(end.Y, 0.85);
  EXPECT_TRUE(layout.atLeftEdge());
  EXPECT_FALSE(layout.atRightEdge());
}

TEST(LayoutWidths, OneTabUsesDefaultParameters) {
  TStrip strip({1}, 600);
  TTabGroupViewLayout& layout = strip.layout();
  EXPECT_EQ(layout.sumWidth(), 0);
  auto frames = RunLayout(layout);
  ASSERT_EQ(frames.size(), 1u);
  ASSERT_TRUE(layout.parameters());
  EXPECT_TRUE(layout.parameters()->GetIsDefault());
  ComPtr<ITabGroupViewLayoutBezier> left, right;
  layout.parameters()->GetLeftCurve(left);
  layout.parameters()->GetRightCurve(right);
  ASSERT_TRUE(left && right);
  EXPECT_NE(left.get(), right.get());
  EXPECT_EQ(left->GetEndPoint(), TPointD());
  EXPECT_EQ(frames[0].StraightPosition, 0);
  EXPECT_EQ(layout.curvePositionFromStraightPosition(0), 0);
  EXPECT_EQ(frames[0].Frame.Left, layout.viewLeft());
  EXPECT_FALSE(frames[0].Hidden);
  EXPECT_TRUE(layout.isStaticLayout());
}

TEST(LayoutWidths, TabsThatFitStandCentredAtFullSpacing) {
  TStrip strip({2, 3}, 1200);
  TTabGroupViewLayout& layout = strip.layout();
  EXPECT_GE(layout.straightRatio(), 1);
  EXPECT_LE(layout.curveRatio(), 0);
  // Centred: (1200 - 506 tabs and gaps - 2 margins) / 2 + the margin.
  auto frames = RunLayout(layout);
  EXPECT_EQ(support::TabLefts(frames), "347 445 | 559 657 755");
  for (const auto& f : frames) EXPECT_FALSE(f.Hidden);
  EXPECT_TRUE(layout.isStaticLayout());
}

TEST(LayoutBezier, DegenerateCasesAreLines) {
  const TPointD a(0, 0), b(0.3, 0.2);
  for (auto [sa, sb] : {std::pair{1.0, 1.0}, std::pair{0.0, 2.0}, std::pair{2.0, 0.0}}) {
    auto c = TTabGroupViewLayout::makeBezier(a, b, sa, sb);
    EXPECT_EQ(c->GetStartPoint(), a);
    EXPECT_EQ(c->GetEndPoint(), b);
    EXPECT_EQ(c->GetControlPoint1(), a);
    EXPECT_EQ(c->GetControlPoint2(), b);
  }
  auto flat = TTabGroupViewLayout::makeBezier(TPointD(0, 0.5), TPointD(1, 0.5), 0.001, 2);
  EXPECT_EQ(flat->GetControlPoint1(), TPointD(0, 0.5));
}

TEST(LayoutBezier, TangentsMeetWithSinglePrecisionIntercepts) {
  const TPointD a(0, 0), b(0.2, 0.15);
  auto c = TTabGroupViewLayout::makeBezier(a, b, 0.001, 1.5);
  const double interceptB = Single(0.15 - 1.5 * 0.2);
  ASSERT_NE(interceptB, 0.15 - 1.5 * 0.2);  // the rounding is visible at this point
  const double x = interceptB / (0.001 - 1.5);
  const double y = 0.001 * x;
  EXPECT_EQ(c->GetControlPoint1(), TPointD(x / 2, y / 2));
  EXPECT_EQ(c->GetControlPoint2(), TPointD((x + 0.2) / 2, (y + 0.15) / 2));
}

TEST(LayoutBezier, MeetingPointBelowZeroGivesALine) {
  // Tangent lines that meet left of the origin: x = (-1.6 + 0.5) / (5 - 4).
  const TPointD a(0.2, 0.5), b(0.6, 0.8);
  auto c = TTabGroupViewLayout::makeBezier(a, b, 5, 4);
  EXPECT_EQ(c->GetControlPoint1(), a);
  EXPECT_EQ(c->GetControlPoint2(), b);
}

TEST(LayoutSolver, FindsTheParameterWithinTolerance) {
  auto f = [](double t) { return TTabGroupViewLayout::bezierValue(t, 0, 0.1, 0.6, 1); };
  for (double target : {0.05, 0.3, 0.77, 0.99}) {
    const double t = TTabGroupViewLayout::solveBezierParameter(f, target);
    EXPECT_LT(std::fabs(f(t) - target), 0.0001) << target;
  }
}

TEST(LayoutSolver, CurveThatDoesNotRiseEndsAtTheMiddle) {
  int calls = 0;
  auto flat = [&calls](double) {
    ++calls;
    return 0.3;
  };
  EXPECT_EQ(TTabGroupViewLayout::solveBezierParameter(flat, 0.7), 0.5);
  EXPECT_EQ(calls, 4);  // both ends, then two passes
  auto falling = [](double t) { return 1 - t; };
  EXPECT_EQ(TTabGroupViewLayout::solveBezierParameter(falling, 0.9), 0.5);
}

TEST(LayoutSolver, TargetOutsideTheCurveStopsAtAnEnd) {
  auto f = [](double t) { return t; };
  EXPECT_NEAR(TTabGroupViewLayout::solveBezierParameter(f, 2.0), 1.0, 1e-9);
  EXPECT_NEAR(TTabGroupViewLayout::solveBezierParameter(f, -1.0), 0.0, 1e-9);
}

TEST(LayoutSolver, SameValueUsesRelativeResolution) {
  EXPECT_TRUE(SameValue(1.0, 1.0 + 5e-13));
  EXPECT_FALSE(SameValue(1.0, 1.0 + 5e-12));
  EXPECT_TRUE(SameValue(0.0, 9e-13));
  EXPECT_TRUE(SameValue(1e6, 1e6 + 5e-7));
}

TEST(LayoutMap, ThreePiecesMeetAndEndsAreExact) {
  TStrip strip({200}, 900);
  TTabGroupViewLayout& layout = strip.layout();
  layout.scroll(0.5);  // into the middle
  layout.calculateParameters();
  const auto& p = layout.parameters();
  TPointD start, end;
  p->GetStartPoint(start);
  p->GetEndPoint(end);
  EXPECT_GT(start.X, 0.1);
  EXPECT_LT(end.X, 0.9);
  EXPECT_EQ(layout.curvePositionFromStraightPosition(0), 0);
  EXPECT_EQ(layout.curvePositionFromStraightPosition(1), 1);
  EXPECT_EQ(layout.straightPositionFromCurvePosition(0), 0);
  EXPECT_EQ(layout.straightPositionFromCurvePosition(1), 1);
  // The straight piece is linear with the parameters' slope.
  const double mid = (start.X + end.X) / 2;
  EXPECT_DOUBLE_EQ(layout.curvePositionFromStraightPosition(mid), (mid - start.X) * p->GetSlope() + start.Y);
  EXPECT_DOUBLE_EQ(layout.straightPositionFromCurvePosition(0.5), (0.5 - start.Y) / p->GetSlope() + start.X);
  // The curves reach the joints within the solver's tolerance.
  EXPECT_NEAR(layout.curvePositionFromStraightPosition(start.X - 1e-9), start.Y, 0.001);
  EXPECT_NEAR(layout.curvePositionFromStraightPosition(end.X + 1e-9), end.Y, 0.001);
  // Near the ends the stacks flatten to the end slope.
  EXPECT_LT(layout.curvePositionFromStraightPosition(0.001), 0.001);
}

TEST(LayoutParameters, ProgressIsClampedToBothLimits) {
  TStrip strip({300}, 1000);
  TTabGroupViewLayout& layout = strip.layout();
  layout.calculateParameters();
  const double span = layout.parameters()->GetStraightSpan();
  const double slope = layout.parameters()->GetSlope();
  const double e = layout.curveRatio();
  layout.scroll(10);  // far right
  layout.calculateParameters();
  TPointD start, end;
  layout.parameters()->GetStartPoint(start);
  layout.parameters()->GetEndPoint(end);
  EXPECT_DOUBLE_EQ(end.X, 1 - e / slope);
  EXPECT_DOUBLE_EQ(start.X, 1 - e / slope - span);
  EXPECT_TRUE(layout.atRightEdge());
  EXPECT_FALSE(layout.atLeftEdge());
}

}  // namespace
}  // namespace qx

namespace qx {
namespace {

TEST(LayoutObjects, NewObjectsAreAllZero) {
  auto p = MakeCom<TTabLayoutCalculationParametersImpl>();
  TPointD point(1, 1);
  p->GetStartPoint(point);
  EXPECT_EQ(point, TPointD());
  p->GetEndPoint(point);
  EXPECT_EQ(point, TPointD());
  EXPECT_EQ(p->GetSlope(), 0);
  EXPECT_EQ(p->GetStraightSpan(), 0);
  EXPECT_FALSE(p->GetIsDefault());
  ComPtr<ITabGroupViewLayoutBezier> curve = MakeCom<TTabGroupViewLayoutBezierImpl>();
  p->GetLeftCurve(curve);
  EXPECT_FALSE(curve);
  auto bezier = MakeCom<TTabGroupViewLayoutBezierImpl>();
  EXPECT_EQ(bezier->GetControlPoint1(), TPointD());
  EXPECT_EQ(bezier->GetEndPoint(), TPointD());
  auto pin = MakeCom<TTabGroupViewLayoutPinImpl>();
  EXPECT_EQ(pin->GetSlope(), 0);
  EXPECT_FALSE(pin->GetLeftCurve());
  EXPECT_FALSE(pin->GetRightCurve());
  // Each answers for its own identity.
  EXPECT_TRUE(ComPtr<IUnknown>(pin.get()).As<ITabGroupViewLayoutPin>());
  EXPECT_FALSE(ComPtr<IUnknown>(pin.get()).As<ITabGroupViewLayoutBezier>());
  EXPECT_TRUE(ComPtr<IUnknown>(p.get()).As<ITabLayoutCalculationParameters>());
}

TEST(LayoutObjects, CreateAttributesHasNoGeometry) {
  TStrip strip({2, 3}, 600);
  strip.setActive(4);
  auto list = strip.layout().createAttributes();
  ASSERT_EQ(list->Count(), 5);
  ComPtr<ITabViewLayoutAttributes> item;
  list->GetItem(4, item);
  EXPECT_TRUE(item->GetActive());
  EXPECT_TRUE(item->GetLastInSection());
  EXPECT_EQ(item->GetFrame(), TRectD());
  EXPECT_EQ(item->GetPrecedingCount(), 4);
  EXPECT_FALSE(strip.layout().parameters());  // nothing calculated
  list->GetItem(0, item);
  item->UnChain();
}

}  // namespace
}  // namespace qx
