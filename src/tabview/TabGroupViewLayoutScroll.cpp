// How the map moves: scrolling slides the straight stretch, the pointer pins the
// curve over a stack, the active tab is brought to the middle, and a dragged tab
// is held inside its limits.

#include <cmath>

#include "tabview/TabGroupViewLayout.h"
#include "tabview/TabGroupViewLayoutMath.h"

namespace qx {

using namespace layout_detail;

bool TTabGroupViewLayout::isStaticLayout() const {
  return !FParameters || FParameters->GetIsDefault() || FParameters->GetStraightSpan() == 1;
}

double TTabGroupViewLayout::mousePosition(TPointD point) const {
  const TRectD frame = viewFrame();
  return Clamp01((point.X - frame.Left) / frame.Width());
}

bool TTabGroupViewLayout::move(double delta) {
  if (!FParameters || FParameters->GetIsDefault() || tabCount() == 0) return false;
  const double dx = delta / sumWidth();
  // Holds for every progress; the strip's own limits are applied by scroll.
  if (FProgress > 0 || FProgress < 1) {
    scroll(dx);
    return true;
  }
  return false;
}

void TTabGroupViewLayout::scroll(double dx) {
  const double curve = curveRatio();
  if (FPin) {
    FWaitForStraight = FDraggingTab == nullptr;
    if (atLeftEdge(curve) || atRightEdge(curve)) {
      FPin = nullptr;
      return;
    }
    FPin->SetSlope((FShape.Slope + FPin->GetSlope()) / 2);
    // The pin travels towards the middle, whichever way the strip scrolls.
    const TPointD point = FPin->GetPoint();
    const bool up = point.Y < 0.5;
    const double step = up ? ToSingle(std::fabs(dx)) : ToSingle(-std::fabs(dx));
    const TPointD moved(point.X + step, point.Y + step);
    if ((up && moved.Y > curve) || (!up && moved.Y < 1 - curve)) {
      FPin = nullptr;  // it has reached the straight stretch
      return;
    }
    FPin->SetPoint(moved);
    FPin->SetLeftCurve(nullptr);
    FPin->SetRightCurve(nullptr);
    syncProgress();
    return;
  }

  const double span = FShape.StraightSpan;
  const double slope = FShape.Slope;
  const double lo = SameValue(slope, 0) ? span / 2 : curve / slope + span / 2;
  const double hi = 1 - lo;
  FProgress += dx;
  if (FProgress <= lo) {
    FProgress = lo;
  } else if (FProgress >= hi) {
    FProgress = hi;
  }
}

void TTabGroupViewLayout::syncProgress() {
  calculateParameters();
  // With a pin in force the middle of the stretch follows the pin.
  FProgress = FShape.StartPoint.X + FShape.StraightSpan / 2;
}

void TTabGroupViewLayout::moveActiveCenter() {
  FPin = nullptr;
  TItems items;
  TAttributeList list = buildAttributes(items, false);
  const double sum = sumWidth();
  double acc = 0;
  // A strip of one tab has no width to share out; it stays at 0.
  if (sum != 0) {
    for (TTabViewLayoutAttributesImpl* item : items) {
      if (item->Active) break;
      acc += kTabWidth / sum;
      if (item->LastInSection) acc += sectionGap() / sum;
    }
  }
  FProgress = acc;
  if (!items.empty()) items.front()->UnChain();
}

// A strip already at its end has nothing left to scroll that way, so a tab held
// in the stack zone there no longer keeps the auto-scroll going.
bool TTabGroupViewLayout::shouldScrollLeft(const TRectD& rect) const {
  const TRectD frame = viewFrame();
  const double curve = curveRatio();
  return curve * frame.Width() + frame.Left >= rect.Left && !atLeftEdge(curve);
}

bool TTabGroupViewLayout::shouldScrollRight(const TRectD& rect) const {
  const TRectD frame = viewFrame();
  const double curve = curveRatio();
  return rect.Right >= (1 - curve) * frame.Width() - kTabWidth + frame.Left && !atRightEdge(curve);
}

TPointD TTabGroupViewLayout::dragged(const TRectD& rect) const {
  const double half = FShape.StraightSpan / 2 * 1.5;
  const TRectD frame = viewFrame();
  const double w = frame.Width();
  const double l = frame.Left;
  const double curve = curveRatio();
  // Only near its end may the strip let the tab go past the stack zone.
  const double leftLimit = ToSingle(FProgress > half ? l + curve * w : l - kDragOverhang);
  const double rightLimit =
      ToSingle(FProgress < 1 - half ? l + (1 - curve) * w - kTabWidth : l + w - kTabWidth + kDragOverhang);
  return TPointD(std::max(std::min(rect.Left, rightLimit), leftLimit), rect.Top);
}

bool TTabGroupViewLayout::mouseEntered(TPointD point) {
  FLastMousePosition = mousePosition(point);
  return true;
}

bool TTabGroupViewLayout::mouseExited() {
  FPin = nullptr;
  FWaitForStraight = false;
  return true;
}

double TTabGroupViewLayout::slopeAt(TPointD point) const {
  const double slope = FShape.Slope;
  if (point.X == 0) return slope;
  return std::min(slope, (point.Y - curvePositionFromStraightPosition(point.X - 0.001)) / 0.001);
}

bool TTabGroupViewLayout::mouseMoved(TPointD point) {
  if (isStaticLayout()) return false;

  const double position = mousePosition(point);
  const double previous = FLastMousePosition;
  const double delta = position - previous;
  const double sum = sumWidth();
  const TRectD frame = viewFrame();
  const double usable = frame.Width() - kTabWidth;
  const double shift = (usable / sum) * delta / 2;
  FLastMousePosition = position;
  const double curve = curveRatio();

  // The candidate lies half a tab from the pointer's tab, towards the nearer end.
  const double pointed = straightPositionFromCurvePosition(position);
  const double half = (kTabWidth / 2) / sum;
  double candidateY = position < 0.5 ? ToSingle(curvePositionFromStraightPosition(std::max(0.0, pointed - half)))
                                     : ToSingle(curvePositionFromStraightPosition(std::min(1.0, pointed + half)));
  double candidateX = straightPositionFromCurvePosition(candidateY);

  // The pointer may not drag the candidate back past the pin.
  if (FPin) {
    const TPointD pinPoint = FPin->GetPoint();
    if ((delta > 0 && pinPoint.Y > candidateY) || (delta < 0 && pinPoint.Y < candidateY)) {
      candidateY = pinPoint.Y;
      candidateX = pinPoint.X;
    }
  }
  candidateX = Clamp01(candidateX);
  candidateY = Clamp01(candidateY);

  if (FWaitForStraight) {
    if (curve < candidateY && candidateY < 1 - curve) {
      FWaitForStraight = false;
    } else {
      return false;
    }
  }

  const double outward = std::fabs(0.5 - candidateY);
  const bool outwardMove = FPin ? outward > std::fabs(0.5 - FPin->GetPoint().Y) : outward > 0.5 - curve;
  if (outwardMove) {
    const bool hadPin = static_cast<bool>(FPin);
    const ComPtr<ITabLayoutCalculationParameters> present = FParameters;
    auto pin = MakeCom<TTabGroupViewLayoutPinImpl>();
    pin->SetPoint(TPointD(candidateX, candidateY));
    pin->SetSlope(0);
    // The outer curve stays frozen under the pointer.
    ComPtr<ITabGroupViewLayoutBezier> frozen;
    if (curve > candidateY) {
      present->GetLeftCurve(frozen);
      pin->SetLeftCurve(frozen.get());
    } else {
      present->GetRightCurve(frozen);
      pin->SetRightCurve(frozen.get());
    }
    FPin = pin;
    syncProgress();
    return !hadPin;
  }

  if (outward < 0.5 - curve) {
    scroll(shift);
    FPin = nullptr;
    return false;
  }

  if (FPin) {
    // Back towards the middle, still over a stack.
    const TPointD pinPoint = FPin->GetPoint();
    const double pinSlope = FPin->GetSlope();
    double newSlope = 0;
    if (pinSlope != 0) {
      double ratio = Clamp01(delta / (curve - previous));
      if (std::isnan(ratio)) ratio = 0;
      newSlope = (FShape.Slope - pinSlope) * ratio + pinSlope;
      if (atLeftEdge(curve) || atRightEdge(curve)) {
        FPin->SetPoint(TPointD(candidateX, candidateY));
      } else {
        FPin->SetPoint(TPointD(Clamp01(pinPoint.X + shift * 4.0), candidateY));
      }
    } else {
      newSlope = slopeAt(pinPoint);
      FPin->SetPoint(TPointD(pinPoint.X, candidateY));
    }
    FPin->SetSlope(newSlope);
    FPin->SetLeftCurve(nullptr);
    FPin->SetRightCurve(nullptr);
  }
  syncProgress();
  return false;
}

}  // namespace qx
