#include "tabview/TabGroupViewLayout.h"

#include <cmath>
#include <cstdio>
#include <typeinfo>

#include "base/Text.h"
#include "tabview/TabGroupViewLayoutMath.h"

namespace qx {

using namespace layout_detail;

// ------------------------------------------------------------------ widths

double TTabGroupViewLayout::sumWidth() const {
  if (!FSections || FSections->Count() == 0) return 0;
  double tabs = 0;
  for (TTabImageSection* section : *FSections) tabs += section->Count();
  return sectionGap() * (FSections->Count() - 1) + kTabWidthLiteral * tabs - kTabWidthLiteral;
}

double TTabGroupViewLayout::contentWidth() const {
  if (!FSections || FSections->Count() == 0) return kTabWidth;
  double result = 0;
  for (TTabImageSection* section : *FSections) result += section->Count() * kTabWidth;
  return result + (FSections->Count() - 1) * sectionGap();
}

TSizeD TTabGroupViewLayout::viewSize() const {
  TSizeD size;
  if (FOnGetViewSize) FOnGetViewSize(const_cast<TTabGroupViewLayout&>(*this), size);
  return size;
}

double TTabGroupViewLayout::width() const { return std::min(2 * FMargin + contentWidth(), viewSize().cx); }

TRectD TTabGroupViewLayout::viewBounds() const {
  const TSizeD size = viewSize();
  const double w = std::min(2 * FMargin + contentWidth(), size.cx);
  // A strip narrower than the view stands centred; ties round to even.
  return TRectD::FromBounds(std::nearbyint((size.cx - w) / 2), 0, w, size.cy);
}

TRectD TTabGroupViewLayout::viewFrame() const {
  TRectD frame = viewBounds();
  frame.Offset(FMargin, 0);
  frame.SetWidth(frame.Width() - 2 * FMargin);
  return frame;
}

double TTabGroupViewLayout::viewLeft() const { return viewFrame().Left; }

double TTabGroupViewLayout::straightRatio() const {
  return std::max(kMinimumStraightShare, (viewFrame().Width() - kTabWidthLiteral) / sumWidth());
}

double TTabGroupViewLayout::curveRatio() const { return (1 - straightRatio()) / 2; }

TTabGroupViewLayout::TView TTabGroupViewLayout::view() const {
  const TRectD frame = viewFrame();
  TView result;
  result.Left = frame.Left;
  result.Width = frame.Width();
  result.Right = frame.Right;
  result.CurveRatio = curveRatio();
  return result;
}

std::int32_t TTabGroupViewLayout::tabCount() const {
  std::int32_t count = 0;
  if (FSections) {
    for (TTabImageSection* section : *FSections) count += section->Count();
  }
  return count;
}

// ------------------------------------------------------------------ the map

ComPtr<ITabGroupViewLayoutBezier> TTabGroupViewLayout::makeBezier(TPointD a, TPointD b, double slopeA,
                                                                  double slopeB) {
  auto curve = MakeCom<TTabGroupViewLayoutBezierImpl>();
  curve->SetStartPoint(a);
  curve->SetEndPoint(b);
  if (a.Y == b.Y || slopeA == slopeB || slopeA == 0 || slopeB == 0) {
    curve->SetControlPoint1(a);
    curve->SetControlPoint2(b);
    return curve;
  }
  // The intercepts go through single precision; the stacks' shape depends on it.
  const double interceptA = ToSingle(a.Y == 0 ? 0 : a.Y - slopeA * a.X);
  const double interceptB = ToSingle(b.Y == 0 ? 0 : b.Y - slopeB * b.X);
  const double x = (interceptB - interceptA) / (slopeA - slopeB);
  const double y = slopeA * x + interceptA;
  if (x < 0 || y < 0) {
    curve->SetControlPoint1(a);
    curve->SetControlPoint2(b);
  } else {
    curve->SetControlPoint1(TPointD((x + a.X) / 2, (y + a.Y) / 2));
    curve->SetControlPoint2(TPointD((x + b.X) / 2, (y + b.Y) / 2));
  }
  return curve;
}

void TTabGroupViewLayout::setParameters(ComPtr<ITabLayoutCalculationParameters> parameters) {
  FParameters = std::move(parameters);
  FShape = TShape();
  if (!FParameters) return;
  FParameters->GetStartPoint(FShape.StartPoint);
  FParameters->GetEndPoint(FShape.EndPoint);
  FShape.Slope = FParameters->GetSlope();
  FShape.StraightSpan = FParameters->GetStraightSpan();
  const auto copy = [](ITabLayoutCalculationParameters* parameters, bool left) {
    ComPtr<ITabGroupViewLayoutBezier> curve;
    if (left) {
      parameters->GetLeftCurve(curve);
    } else {
      parameters->GetRightCurve(curve);
    }
    TCurve result;
    if (curve) {
      result.Start = curve->GetStartPoint();
      result.Control1 = curve->GetControlPoint1();
      result.Control2 = curve->GetControlPoint2();
      result.End = curve->GetEndPoint();
    }
    return result;
  };
  FShape.Left = copy(FParameters.get(), true);
  FShape.Right = copy(FParameters.get(), false);
}

void TTabGroupViewLayout::calculateParameters() {
  const double sum = sumWidth();
  const double usable = viewFrame().Width() - kTabWidth;
  // One tab has no row to lay out, and a view no wider than one tab has no room
  // for a straight stretch: its slope would divide by zero. Both stand at the left.
  if (sum == 0 || usable <= 0) {
    auto defaults = MakeCom<TTabLayoutCalculationParametersImpl>();
    defaults->SetLeftCurve(MakeCom<TTabGroupViewLayoutBezierImpl>().get());
    defaults->SetRightCurve(MakeCom<TTabGroupViewLayoutBezierImpl>().get());
    defaults->SetIsDefault(true);
    setParameters(std::move(defaults));
    return;
  }
  double straight = straightRatio();
  const double curve = curveRatio();
  double span = usable * straight / sum;
  const double slope = straight / span;
  const double progress = FProgress;

  double leftWidth = 0;
  double rightWidth = 0;
  if (curve / slope > progress - span / 2) {
    leftWidth = curve / slope;  // stopped at the left limit
    rightWidth = 1 - span - leftWidth;
  } else if (curve / slope > 1 - (progress + span / 2)) {
    rightWidth = curve / slope;  // stopped at the right limit
    leftWidth = 1 - span - rightWidth;
  } else {
    leftWidth = progress - span / 2;
    rightWidth = 1 - leftWidth - span;
  }

  const TPointD p0(0, 0);
  TPointD p1(leftWidth, curve);
  TPointD p2(1 - rightWidth, 1 - curve);
  const TPointD p3(1, 1);
  TPointD start = p1;
  TPointD end = p2;
  double leftSlope = slope;
  double rightSlope = slope;

  if (FPin) {
    const TPointD pinPoint = FPin->GetPoint();
    const double pinSlope = FPin->GetSlope();
    if (curve > pinPoint.Y) {
      // Pinned on the left piece: the stretch starts at the pin and keeps its slope.
      start = pinPoint;
      straight = straight + curve - pinPoint.Y;
      span = straight / slope;
      p2.X = start.X + span;
      end = p2;
      if (pinSlope != 0) {
        p1 = pinPoint;
        leftSlope = pinSlope;
        start = p1;
      }
    } else {
      end = pinPoint;
      straight = straight + curve - (1 - pinPoint.Y);
      span = straight / slope;
      p1.X = end.X - span;
      start = p1;
      if (pinSlope != 0) {
        p2 = pinPoint;
        rightSlope = pinSlope;
        end = p2;
      }
    }
  }

  ComPtr<ITabGroupViewLayoutBezier> leftCurve = FPin ? FPin->GetLeftCurve() : nullptr;
  if (!leftCurve) leftCurve = makeBezier(p0, p1, kEndSlope, leftSlope);
  ComPtr<ITabGroupViewLayoutBezier> rightCurve = FPin ? FPin->GetRightCurve() : nullptr;
  if (!rightCurve) rightCurve = makeBezier(p2, p3, rightSlope, kEndSlope);

  auto parameters = MakeCom<TTabLayoutCalculationParametersImpl>();
  parameters->SetLeftCurve(leftCurve.get());
  parameters->SetRightCurve(rightCurve.get());
  parameters->SetStartPoint(start);
  parameters->SetEndPoint(end);
  parameters->SetSlope(slope);
  parameters->SetStraightSpan(span);
  parameters->SetIsDefault(false);
  setParameters(std::move(parameters));
}

double TTabGroupViewLayout::curveY(const TCurve& c, double x) {
  const double t = solveBezierParameter(
      [&c](double u) { return bezierValue(u, c.Start.X, c.Control1.X, c.Control2.X, c.End.X); }, x);
  return bezierValue(t, c.Start.Y, c.Control1.Y, c.Control2.Y, c.End.Y);
}

double TTabGroupViewLayout::curveX(const TCurve& c, double y) {
  const double t = solveBezierParameter(
      [&c](double u) { return bezierValue(u, c.Start.Y, c.Control1.Y, c.Control2.Y, c.End.Y); }, y);
  return bezierValue(t, c.Start.X, c.Control1.X, c.Control2.X, c.End.X);
}

double TTabGroupViewLayout::curvePositionFromStraightPosition(double x) const {
  // The ends are exact and never reach the solver.
  if (x == 0 || x == 1) return x;
  if (x < FShape.StartPoint.X) return curveY(FShape.Left, x);
  if (x <= FShape.EndPoint.X) return (x - FShape.StartPoint.X) * FShape.Slope + FShape.StartPoint.Y;
  return curveY(FShape.Right, x);
}

double TTabGroupViewLayout::straightPositionFromCurvePosition(double y) const {
  if (y == 0 || y == 1) return y;
  if (y < FShape.StartPoint.Y) return curveX(FShape.Left, y);
  if (y <= FShape.EndPoint.Y) return (1 / FShape.Slope) * (y - FShape.StartPoint.Y) + FShape.StartPoint.X;
  return curveX(FShape.Right, y);
}

bool TTabGroupViewLayout::atLeftEdge() const { return atLeftEdge(curveRatio()); }
bool TTabGroupViewLayout::atRightEdge() const { return atRightEdge(curveRatio()); }

bool TTabGroupViewLayout::atLeftEdge(double curve) const {
  if (FPin) {
    const TPointD point = FPin->GetPoint();
    if (point.Y < curve) return kEdgeTolerance > point.X - point.Y / FShape.Slope;
  }
  return kEdgeTolerance > (FProgress - FShape.StraightSpan / 2) - curve / FShape.Slope;
}

bool TTabGroupViewLayout::atRightEdge(double curve) const {
  if (FPin) {
    const TPointD point = FPin->GetPoint();
    if (point.Y > 1 - curve) return kEdgeTolerance > (1 - point.X) - (1 - point.Y) / FShape.Slope;
  }
  return kEdgeTolerance > (1 - (FProgress + FShape.StraightSpan / 2)) - curve / FShape.Slope;
}

// ------------------------------------------------------------------ passes

namespace {

// The tab's last attributes when only the tab holds them; a pass may then write
// them over, since the tab gets them back from that same pass.
TTabViewLayoutAttributesImpl* RefillableAttributes(const TTabImageItem* tab) {
  ITabViewLayoutAttributes* last = tab->LastAttributes();
  if (!last || typeid(*last) != typeid(TTabViewLayoutAttributesImpl)) return nullptr;
  auto* item = static_cast<TTabViewLayoutAttributesImpl*>(last);
  if (item->RefCount() != 1) return nullptr;
  item->Reset();
  return item;
}

}  // namespace

TTabGroupViewLayout::TAttributeList TTabGroupViewLayout::buildAttributes(TItems& items, bool refill) const {
  items.clear();
  auto list = MakeCom<TTabViewLayoutAttributeList>();
  if (!FSections) return TAttributeList(list);
  list->SetCapacity(tabCount());
  items.reserve(static_cast<std::size_t>(tabCount()));
  TTabViewLayoutAttributesImpl* previous = nullptr;
  TTabImageSection* draggedSection = FDraggingTab ? FDraggingTab->Section() : nullptr;
  for (TTabImageSection* section : *FSections) {
    const std::int32_t count = section->Count();
    const bool inDraggedSection = draggedSection == section && count > 1;
    std::int32_t index = 0;
    for (TTabImageItem* tab : *section) {
      TTabViewLayoutAttributesImpl* item = refill ? RefillableAttributes(tab) : nullptr;
      if (!item) item = new TTabViewLayoutAttributesImpl();
      TLayoutAttributesPtr held(item);
      item->Active = tab->IsActive();
      item->InDraggedSection = inDraggedSection;
      if (previous) {
        item->Previous = previous;
        previous->Next = item;
      }
      item->FirstInSection = index == 0;
      item->LastInSection = index == count - 1;
      list->Add(held);
      items.push_back(item);
      previous = item;
      ++index;
    }
  }
  return TAttributeList(list);
}

TTabGroupViewLayout::TAttributeList TTabGroupViewLayout::createAttributes() const {
  TItems items;
  return buildAttributes(items, false);
}

TTabGroupViewLayout::TAttributeList TTabGroupViewLayout::layoutPass(bool refill) {
  TItems& items = FScratch;
  TAttributeList list = buildAttributes(items, refill);

  const double sum = sumWidth();
  double acc = 0;
  for (TTabViewLayoutAttributesImpl* item : items) {
    const double position = sum == 0 ? 0 : ToSingle(acc / sum);
    item->StraightPosition = position;
    item->InitialStraightPosition = position;
    acc += kTabWidth;
    if (item->LastInSection) acc += sectionGap();
  }
  if (items.empty()) return list;

  const TView geometry = view();
  const double usable = geometry.Width - kTabWidth;
  calculateParameters();

  const double middle = FShape.StartPoint.X + FShape.StraightSpan / 2;
  const std::int32_t draggedIndex = FDraggingTab ? FDraggingTab->Index() : -1;
  for (std::size_t i = 0; i < items.size(); ++i) {
    TTabViewLayoutAttributesImpl* item = items[i];
    const double position = item->StraightPosition;
    if (FPlaceEveryFrame) {
      item->Frame = TRectD::FromBounds(curvePositionFromStraightPosition(position) * usable + geometry.Left,
                                       0, kTabWidth, kTabHeight);
    } else {
      item->Frame = TRectD::FromBounds(geometry.Left, 0, kTabWidth, kTabHeight);
    }
    item->ZPosition = kZScale - std::fabs(middle - position) * kZScale;
    if (draggedIndex >= 0 && static_cast<std::size_t>(draggedIndex) == i) item->ZPosition = kDraggedZ;
  }
  if (!FPlaceEveryFrame) placeFrames(items, geometry, usable);

  snapToPixels(items, geometry);
  markHiddenTabs(items, geometry);
  clipOverlaps(items);
  items.clear();
  return list;
}

// Puts each tab on the curve, leaving out the tabs whose place the snapping
// passes overwrite without reading it: the straight stretch after its first tab,
// the tabs that a ladder will restack, and the side that an edge lays out in a
// row. The passes then give exactly the frames they would give had every tab
// been placed; it spares most of the solver runs of a long strip.
void TTabGroupViewLayout::placeFrames(const TItems& items, const TView& geometry, double usable) const {
  const auto place = [&](std::size_t i) {
    TTabViewLayoutAttributesImpl* item = items[i];
    item->Frame =
        TRectD::FromBounds(curvePositionFromStraightPosition(item->StraightPosition) * usable + geometry.Left,
                           0, kTabWidth, kTabHeight);
  };
  const std::size_t count = items.size();
  const double startX = FShape.StartPoint.X;
  const double endX = FShape.EndPoint.X;
  const bool leftEdge = atLeftEdge(geometry.CurveRatio);
  const bool rightEdge = !leftEdge && atRightEdge(geometry.CurveRatio);

  // Left part, from its inner end outwards, with the value its snapping gives.
  if (!leftEdge) {
    const auto snapped = [&](std::size_t i) {
      const double left = std::floor(items[i]->Frame.Left);
      return rightEdge ? left : std::max(geometry.Left, left);
    };
    for (std::size_t i = count; i-- > 0;) {
      const double position = items[i]->StraightPosition;
      if (rightEdge ? position > startX : position >= startX) continue;
      place(i);
      // The first pair that closes in to a ladder step starts the ladder; all
      // tabs further out are restacked from it.
      if (i + 1 < count && items[i + 1]->StraightPosition < startX &&
          snapped(i + 1) - snapped(i) <= kLadderStep) {
        break;
      }
    }
  }
  // The straight stretch continues from its first tab's rounded place.
  if (!leftEdge && !rightEdge) {
    for (std::size_t i = 0; i < count; ++i) {
      const double position = items[i]->StraightPosition;
      if (position >= startX && position <= endX) {
        place(i);
        break;
      }
    }
  }
  // Right part, the mirror.
  if (!rightEdge) {
    for (std::size_t i = 0; i < count; ++i) {
      const double position = items[i]->StraightPosition;
      if (leftEdge ? position < endX : position <= endX) continue;
      place(i);
      if (i > 0 && items[i - 1]->StraightPosition > endX &&
          std::ceil(items[i]->Frame.Left) - std::ceil(items[i - 1]->Frame.Left) <= kLadderStep) {
        break;
      }
    }
  }
}

namespace {

// Moves a frame to a new left edge; frames are always a tab wide.
inline void MoveLeft(TTabViewLayoutAttributesImpl* item, double left) {
  item->Frame.Left = left;
  item->Frame.Right = left + kTabWidth;
}

inline bool IsOdd(double value) { return std::fmod(std::trunc(value), 2.0) != 0; }

}  // namespace

void TTabGroupViewLayout::snapToPixels(const TItems& items, const TView& geometry) const {
  if (items.empty()) return;
  if (atLeftEdge(geometry.CurveRatio)) {
    snapAtLeftEdge(items, geometry);
    return;
  }
  if (atRightEdge(geometry.CurveRatio)) {
    snapAtRightEdge(items, geometry);
    return;
  }
  const double startX = FShape.StartPoint.X;
  const double endX = FShape.EndPoint.X;

  // The straight stretch stands at full spacing from one rounded left edge.
  const TTabViewLayoutAttributesImpl* former = nullptr;
  for (TTabViewLayoutAttributesImpl* item : items) {
    const double position = item->StraightPosition;
    if (position < startX || position > endX) continue;
    if (!former) {
      MoveLeft(item, std::nearbyint(item->Frame.Left));
    } else {
      MoveLeft(item, former->Frame.Right + (former->LastInSection ? sectionGap() : 0));
    }
    former = item;
  }

  for (std::size_t i = items.size(); i-- > 0;) {
    TTabViewLayoutAttributesImpl* item = items[i];
    if (item->StraightPosition < startX)
      MoveLeft(item, std::max(geometry.Left, std::floor(item->Frame.Left)));
  }
  stackLeft(items, geometry);

  for (TTabViewLayoutAttributesImpl* item : items) {
    if (item->StraightPosition > endX) MoveLeft(item, std::ceil(item->Frame.Left));
  }
  stackRight(items, geometry);
}

void TTabGroupViewLayout::snapAtLeftEdge(const TItems& items, const TView& geometry) const {
  double x = geometry.Left;
  for (TTabViewLayoutAttributesImpl* item : items) {
    if (item->StraightPosition < FShape.EndPoint.X) {
      MoveLeft(item, x);
      x = item->Frame.Right + (item->LastInSection ? sectionGap() : 0);
    } else {
      MoveLeft(item, std::ceil(item->Frame.Left));
    }
  }
  stackRight(items, geometry);
}

void TTabGroupViewLayout::snapAtRightEdge(const TItems& items, const TView& geometry) const {
  double x = geometry.Right - kTabWidth;
  for (std::size_t i = items.size(); i-- > 0;) {
    TTabViewLayoutAttributesImpl* item = items[i];
    if (item->StraightPosition > FShape.StartPoint.X) {
      MoveLeft(item, x);
      x = item->Frame.Left - kTabWidth - (item->FirstInSection ? sectionGap() : 0);
    } else {
      MoveLeft(item, std::floor(item->Frame.Left));
    }
  }
  stackLeft(items, geometry);
}

void TTabGroupViewLayout::stackRight(const TItems& items, const TView& geometry) const {
  const double limit = geometry.Right - kTabWidth;
  for (std::size_t i = 0; i + 1 < items.size(); ++i) {
    TTabViewLayoutAttributesImpl* item = items[i];
    if (item->StraightPosition <= FShape.EndPoint.X) continue;
    if (items[i + 1]->Frame.Left - item->Frame.Left > kLadderStep) continue;
    // Start on the parity of the limit, so the ladder ends on it exactly.
    if (IsOdd(item->Frame.Left) != IsOdd(limit)) MoveLeft(item, item->Frame.Left - 1);
    for (std::size_t j = i + 1; j < items.size(); ++j) {
      MoveLeft(items[j], std::min(items[j - 1]->Frame.Left + kLadderStep, limit));
    }
    return;
  }
}

void TTabGroupViewLayout::stackLeft(const TItems& items, const TView& geometry) const {
  for (std::size_t i = items.size(); i-- > 1;) {
    TTabViewLayoutAttributesImpl* item = items[i];
    if (item->StraightPosition >= FShape.StartPoint.X) continue;
    if (item->Frame.Left - items[i - 1]->Frame.Left > kLadderStep) continue;
    // Unlike the right stack, the parity is plain evenness, whatever viewLeft is.
    if (IsOdd(item->Frame.Left)) MoveLeft(item, item->Frame.Left + 1);
    for (std::size_t j = i; j-- > 0;) {
      MoveLeft(items[j], std::max(items[j + 1]->Frame.Left - kLadderStep, geometry.Left));
    }
    return;
  }
}

std::size_t TTabGroupViewLayout::centerIndex(const TItems& items, const TView& geometry) {
  const double centre = geometry.Left + geometry.Width / 2;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const TRectD& frame = items[i]->Frame;
    if (std::fabs(frame.Left + frame.Width() / 2 - centre) < kTabWidth) return i;
  }
  return items.size() / 2;
}

TLayoutAttributesPtr TTabGroupViewLayout::centerTab(ITabViewLayoutAttributeList* list) const {
  if (!list || list->Count() == 0) return nullptr;
  const TRectD frame = viewFrame();
  const double centre = frame.Left + frame.Width() / 2;
  for (const TLayoutAttributesPtr& item : *list) {
    if (!item) continue;
    const TRectD itemFrame = item->GetFrame();
    if (std::fabs(itemFrame.Left + itemFrame.Width() / 2 - centre) < kTabWidth) return item;
  }
  TLayoutAttributesPtr result;
  list->GetItem(list->Count() / 2, result);
  return result;
}

void TTabGroupViewLayout::markHiddenTabs(const TItems& items, const TView& geometry) const {
  const std::size_t centre = centerIndex(items, geometry);
  for (std::size_t i = 0; i < centre; ++i) {
    if (items[i]->Frame.Left == items[i + 1]->Frame.Left) items[i]->Hidden = true;
  }
  for (std::size_t i = items.size() - 1; i > centre; --i) {
    if (items[i]->Frame.Right == items[i - 1]->Frame.Right) items[i]->Hidden = true;
  }

  for (std::size_t i = 0; i < items.size(); ++i) {
    TTabViewLayoutAttributesImpl* active = items[i];
    if (!active->Active) continue;
    if (active->Hidden) {
      // The selected tab always shows; a neighbour on the same spot to its left
      // is hidden in its place. Neighbours to the right keep their flags.
      active->Hidden = false;
      for (std::size_t j = i; j-- > 0;) {
        TTabViewLayoutAttributesImpl* neighbour = items[j];
        if (!(neighbour->Frame == active->Frame)) break;
        if (!neighbour->Hidden) {
          neighbour->Hidden = true;
          break;
        }
      }
    }
    break;
  }
}

void TTabGroupViewLayout::clipOverlaps(const TItems& items) {
  const std::size_t count = items.size();
  for (std::size_t i = 0; i < count; ++i) {
    TTabViewLayoutAttributesImpl* item = items[i];
    TTabViewLayoutAttributesImpl* previous = i > 0 ? items[i - 1] : nullptr;
    TTabViewLayoutAttributesImpl* next = i + 1 < count ? items[i + 1] : nullptr;
    // A missing neighbour reads as standing at 0 with ZPosition 0.
    const double previousZ = previous ? previous->ZPosition : 0;
    const double previousRight = previous ? previous->Frame.Right : 0;
    const double nextZ = next ? next->ZPosition : 0;
    const double nextLeft = next ? next->Frame.Left : 0;

    TRectD clip = item->Frame;
    if (previousZ <= item->ZPosition) {
      if (nextZ > item->ZPosition && item->Frame.Right > nextLeft) {
        clip.SetWidth(nextLeft - item->Frame.Left);
        if (next) next->OverlapsLeft = true;
      }
    } else if (item->Frame.Left < previousRight) {
      clip.SetLocation(TPointD(previousRight, 0));
      clip.SetWidth(item->Frame.Right - clip.Left);
      if (previous) previous->OverlapsRight = true;
    }
    item->ClipFrame = clip;
  }
}

void TTabGroupViewLayout::debugFrame(ITabViewLayoutAttributeList* list) const {
  if (!list || !FDebugSink) return;
  for (const TLayoutAttributesPtr& item : *list) {
    if (!item) continue;
    const TRectD frame = item->GetFrame();
    char text[160];
    // Fixed notation with two decimals, as the run time formats %f.
    std::snprintf(text, sizeof text, "Frame: %.2f,%.2f,%.2f,%.2f", frame.Left, frame.Top, frame.Right,
                  frame.Bottom);
    FDebugSink(FromUtf8(text));
  }
}

}  // namespace qx
