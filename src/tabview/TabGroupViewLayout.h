#pragma once

#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/ComPtr.h"
#include "tabview/TabGroupViewLayoutBezier.h"
#include "tabview/TabGroupViewLayoutPin.h"
#include "tabview/TabImageItem.h"
#include "tabview/TabImageSection.h"
#include "tabview/TabLayoutCalculationParameters.h"
#include "tabview/TabViewGeometry.h"
#include "tabview/TabViewLayoutAttributes.h"

namespace qx {

// Decides where each tab of the strip stands. Tabs in the middle of the view
// stand side by side; beyond that stretch they are pressed together along a
// curve into a stack at each end. One monotonic map from straight positions
// (share of the flat row) to curve positions (share of the usable view width)
// does it: a cubic for the left stack, a line, a cubic for the right stack.
//
// Some intermediate values are rounded to single precision on purpose: they are
// part of the strip's shape (where a tab lands to the pixel) and must stay.
class TTabGroupViewLayout {
 public:
  using TGetViewSizeEvent = std::function<void(TTabGroupViewLayout& sender, TSizeD& size)>;
  using TDebugSink = std::function<void(const std::u16string& text)>;
  using TAttributeList = ComPtr<ITabViewLayoutAttributeList>;

  TTabGroupViewLayout() = default;
  TTabGroupViewLayout(const TTabGroupViewLayout&) = delete;
  TTabGroupViewLayout& operator=(const TTabGroupViewLayout&) = delete;

  // ---- geometry
  static constexpr double sectionGap() { return 16.0; }
  double sumWidth() const;
  double contentWidth() const;
  TSizeD viewSize() const;
  double width() const;
  TRectD viewBounds() const;
  TRectD viewFrame() const;
  double viewLeft() const;
  TRectD drawViewFrame() const { return viewBounds(); }
  double straightRatio() const;
  double curveRatio() const;

  // ---- the map
  void calculateParameters();
  static ComPtr<ITabGroupViewLayoutBezier> makeBezier(TPointD a, TPointD b, double slopeA, double slopeB);
  // Bisection for f(t) = target on 0..1.
  template <class F>
  static double solveBezierParameter(F&& f, double target);
  // One axis of a cubic, terms summed in this order.
  static double bezierValue(double t, double start, double control1, double control2, double end) {
    const double u = 1 - t;
    return t * t * t * end + 3 * t * t * u * control2 + 3 * t * u * u * control1 + u * u * u * start;
  }
  double curvePositionFromStraightPosition(double x) const;
  double straightPositionFromCurvePosition(double y) const;
  bool atLeftEdge() const;
  bool atRightEdge() const;

  // ---- passes
  // The chained list without geometry; the caller calls UnChain on item 0.
  TAttributeList createAttributes() const;
  // The whole strip; the caller calls UnChain on item 0 when done.
  TAttributeList layoutAttributes() { return layoutPass(false); }
  // The same, for a caller that gives each tab its new attributes at once: a tab's
  // last attributes that nothing else holds are refilled instead of made anew.
  TAttributeList relayoutAttributes() { return layoutPass(true); }
  void debugFrame(ITabViewLayoutAttributeList* list) const;
  void debugProgress() const {}

  // ---- scroll and drag
  bool move(double delta);
  void scroll(double dx);
  void syncProgress();
  void moveActiveCenter();
  TLayoutAttributesPtr centerTab(ITabViewLayoutAttributeList* list) const;
  bool shouldScrollLeft(const TRectD& rect) const;
  bool shouldScrollRight(const TRectD& rect) const;
  void startDragging(TTabImageItem* tab) { FDraggingTab = tab; }
  void stopDragging() { FDraggingTab = nullptr; }
  TPointD dragged(const TRectD& rect) const;
  bool mouseEntered(TPointD point);
  bool mouseExited();
  bool mouseMoved(TPointD point);
  bool mouseMoved(TPointF point) { return mouseMoved(TPointD(point.X, point.Y)); }
  double mousePosition(TPointD point) const;
  double slopeAt(TPointD point) const;
  bool isStaticLayout() const;

  // ---- state
  double progress() const { return FProgress; }
  double margin() const { return FMargin; }
  void setMargin(double value) { FMargin = value; }
  const ComPtr<ITabLayoutCalculationParameters>& parameters() const { return FParameters; }
  const ComPtr<ITabGroupViewLayoutPin>& pin() const { return FPin; }
  TTabImageItem* draggingTab() const { return FDraggingTab; }
  TTabImageSectionList* sections() const { return FSections; }
  void setSections(TTabImageSectionList* sections) { FSections = sections; }
  bool waitForStraight() const { return FWaitForStraight; }
  double lastMousePosition() const { return FLastMousePosition; }
  void setOnGetViewSize(TGetViewSizeEvent handler) { FOnGetViewSize = std::move(handler); }
  // Where debugFrame's lines go; none by default, so they are dropped.
  void setDebugSink(TDebugSink sink) { FDebugSink = std::move(sink); }
  // Places every tab on the curve before snapping, also those whose place the
  // snapping overwrites. The frames come out the same; checks compare both ways.
  void setPlaceEveryFrame(bool value) { FPlaceEveryFrame = value; }

 private:
  using TItems = std::vector<TTabViewLayoutAttributesImpl*>;

  // Plain copy of the parameters, read on every evaluation of the map.
  struct TCurve {
    TPointD Start, Control1, Control2, End;
  };
  struct TShape {
    TPointD StartPoint, EndPoint;
    double Slope = 0;
    double StraightSpan = 0;
    TCurve Left, Right;
  };
  // Geometry of the view, read once per pass.
  struct TView {
    double Left = 0;        // viewLeft
    double Width = 0;       // viewFrame.Width
    double Right = 0;       // viewFrame.Right
    double CurveRatio = 0;  // E
  };

  void setParameters(ComPtr<ITabLayoutCalculationParameters> parameters);
  TView view() const;
  std::int32_t tabCount() const;
  TAttributeList buildAttributes(TItems& items, bool refill) const;
  TAttributeList layoutPass(bool refill);
  static double curveY(const TCurve& curve, double x);
  static double curveX(const TCurve& curve, double y);
  bool atLeftEdge(double curveRatio) const;
  bool atRightEdge(double curveRatio) const;
  void placeFrames(const TItems& items, const TView& view, double usable) const;
  void snapToPixels(const TItems& items, const TView& view) const;
  void snapAtLeftEdge(const TItems& items, const TView& view) const;
  void snapAtRightEdge(const TItems& items, const TView& view) const;
  void stackLeft(const TItems& items, const TView& view) const;
  void stackRight(const TItems& items, const TView& view) const;
  void markHiddenTabs(const TItems& items, const TView& view) const;
  static void clipOverlaps(const TItems& items);
  static std::size_t centerIndex(const TItems& items, const TView& view);

  // Fields in declaration order.
  ComPtr<ITabLayoutCalculationParameters> FParameters;
  ComPtr<ITabGroupViewLayoutPin> FPin;
  TTabImageItem* FDraggingTab = nullptr;
  TTabImageSectionList* FSections = nullptr;
  double FProgress = 0;
  bool FWaitForStraight = false;
  double FLastMousePosition = 0;
  TGetViewSizeEvent FOnGetViewSize;
  double FMargin = 8.0;

  TShape FShape;
  TDebugSink FDebugSink;
  TItems FScratch;  // reused by each pass
  bool FPlaceEveryFrame = false;
};

// Same-value test of the run-time library: equal within a relative resolution
// of 1e-12 (absolute for small values).
inline bool SameValue(double a, double b) {
  const double absA = std::fabs(a);
  const double absB = std::fabs(b);
  const double scaled = (absA < absB ? absA : absB) * 1e-12;
  const double epsilon = scaled > 1e-12 ? scaled : 1e-12;
  return a > b ? (a - b) <= epsilon : (b - a) <= epsilon;
}

template <class F>
double TTabGroupViewLayout::solveBezierParameter(F&& f, double target) {
  double lo = 0;
  double hi = 1;
  double mid = 0.5;
  const bool rising = f(lo) < f(hi);
  bool firstPass = true;
  for (;;) {
    const double value = f(mid);
    if (SameValue(lo, hi)) return std::fabs(mid);
    if (std::fabs(value - target) < 0.0001) return std::fabs(mid);
    // A curve that does not rise leaves the interval alone; the loop then ends
    // on the repeated midpoint.
    if (rising) {
      if (value > target) {
        hi = mid;
      } else if (value < target) {
        lo = mid;
      }
    }
    const double previous = mid;
    mid = (lo + hi) / 2;
    if (!firstPass && SameValue(mid, previous)) return std::fabs(mid);
    firstPass = false;
  }
}

}  // namespace qx
