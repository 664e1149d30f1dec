// Reordering tabs by dragging: the dragged tab follows the pointer, moves
// through sections, scrolls the strip at its ends and is committed at the drop.

#include <algorithm>
#include <cmath>

#include "host/QuillmarV3Interface.h"
#include "tabbar/TabbarForm.h"
#include "tabbar/TabbarParentForm.h"

namespace qx {

namespace {

constexpr float kSectionGap = 16;
constexpr float kAutoScrollMaxStep = 10;

TRectF AbsoluteRectOf(TTabImage* tab) {
  TRectF r;
  tab->TabImageAbsoluteRect(false, r);
  return r;
}

bool Intersects(const TRectF& a, const TRectF& b) {
  return a.Left < b.Right && b.Left < a.Right && a.Top < b.Bottom && b.Top < a.Bottom;
}

bool HoldsOnly(const TTabImageSection* section, const TTabImageItem* tab) {
  return section->Count() == 0 || (section->Count() == 1 && section->TabImages(0) == tab);
}

}  // namespace

void TTabbarFrame::StartTabDrag() {
  FExecutingMouseEvent = false;
  // From here the press carries the tab, a finger's as much as the mouse's: were the
  // scroll box still to track it, each step would pan the strip along under the tab.
  FTabScrollBox->AniCalculations().Stop();
  FdragTarget = FActivatingTab;
  FWaitUpdateTabbar = true;
  FActivatingTab = nullptr;
  FdragTarget->StopDragOffsetAnimation();
  FdragTarget->SetDragOffset(0);
  const TPointF pressed = FTabScrollBox->LocalToAbsolute(FMouseDownPoint);
  FDragOrigin = FdragTarget->TabImageAbsoluteToLocal(pressed);
  BeginTabDrag(FMouseDownPoint);
  FMouseDirectionOrigin = pressed;
  UpdateDraggingSectionState();
  FimgActiveTab->SetVisible(false);
}

void TTabbarFrame::BeginTabDrag(TPointF point) {
  if (TTabImage* tab = TabImageAtPoint(point)) FdragTarget = tab;
  FimgActiveTab->SetVisible(false);
  GetLayout()->startDragging(FdragTarget);
  layoutSubviews();
}

void TTabbarFrame::UpdateDraggingSectionState() {
  const TTabImageSection* dragged = FdragTarget ? FdragTarget->Section() : nullptr;
  const bool settled = FdragTarget && !FdragTarget->DragOffsetAnimation()->Running();
  const bool inDragged = settled && dragged && dragged->Count() > 1;
  for (std::int32_t i = 0; i < TabImageCount(); ++i)
    if (TTabImage* tab = GetTabImages(i); tab && tab->Attributes())
      tab->Attributes()->SetInDraggedSection(inDragged && tab->Section() == dragged);
}

void TTabbarFrame::DragTabTo(bool movingLeft, TPointF point, bool /*fromTimer*/) {
  TTabImage* tab = FdragTarget;
  if (!tab) return;
  if (tab->Attributes()) {
    // The strip's coordinates are the layout's: the tab's left where the pointer holds it.
    const TPointF mouse = MouseInScrollBoxCoordinates();
    const double rawLeft = mouse.X - FDragOrigin.X;
    const TRectD parented = tab->TabImageParentedRectD();
    TRectD rect(TPointD(rawLeft, parented.Top), TPointD(rawLeft + parented.Width(), parented.Bottom));
    double left = GetLayout()->dragged(rect).X;
    const double margin = GetLayout()->margin();
    const double width = FTabScrollBox->Width();
    if (left <= margin && rawLeft <= margin)
      left = std::max(0.0, rawLeft);
    else if (left > margin && left >= width - kTabWidth - margin && rawLeft >= width - kTabWidth - margin)
      left = std::min(rawLeft, width - kTabWidth);
    tab->SetHorzPosition(false, TInterpolationType::Quadratic, 0.2f, static_cast<float>(left));
  }
  if (MoveDraggedTab(movingLeft)) {
    layoutSubviews(true, 0.2f);
    FMouseDirectionOrigin = point;
  } else {
    FTabScrollBox->RealignContent();
    FTabScrollBox->Repaint();
  }
}

bool TTabbarFrame::MoveDraggedTab(bool movingLeft) {
  TTabImage* tab = FdragTarget;
  const TRectF r = AbsoluteRectOf(tab);
  const float centreX = (r.Left + r.Right) / 2, centreY = (r.Top + r.Bottom) / 2;
  const std::int32_t count = TabImageCount();
  const std::int32_t own = FTabList->IndexOfTab(tab);
  TTabImageSection* ownSection = tab->Section();

  // A neighbour the dragged tab overlaps, walking away from it in the direction of travel;
  // the strip stands in order, so the walk ends where the tabs no longer reach the tab.
  const std::int32_t step = movingLeft ? -1 : 1;
  for (std::int32_t i = own + step; i >= 0 && i < count; i += step) {
    TTabImage* neighbour = GetTabImages(i);
    if (!neighbour || neighbour == tab) continue;
    const TRectF n = AbsoluteRectOf(neighbour);
    if (!Intersects(n, r)) {
      if (movingLeft ? n.Right <= r.Left : n.Left >= r.Right) break;
      continue;
    }
    const float neighbourCentre = (n.Left + n.Right) / 2;
    const bool after = movingLeft ? r.Left > neighbourCentre : r.Right > neighbourCentre;
    const bool standsThere =
        neighbour->Section() == ownSection &&
        (after ? FTabList->NextTab(neighbour) == tab : FTabList->PrevTab(neighbour) == tab);
    if (standsThere) return false;
    TTabImageSection* target = neighbour->Section();
    ownSection->Remove(tab);
    target->Insert(target->IndexOf(neighbour) + (after ? 1 : 0), tab);
    if (ownSection->Count() == 0) {
      FHostSections.erase(ownSection);
      FTabList->RemoveSection(ownSection);
    }
    return true;
  }

  // Over a neighbour's middle nothing moves.
  auto under = [&](std::int32_t index) {
    TTabImage* neighbour = index >= 0 && index < count ? GetTabImages(index) : nullptr;
    if (!neighbour) return false;
    const TRectF n = AbsoluteRectOf(neighbour);
    return centreX >= n.Left && centreX < n.Right && centreY >= n.Top - 1 && centreY < n.Bottom + 1;
  };
  if (under(own + step) || under(own - step)) return false;

  // The zone between two sections, or beyond the ends, makes or finds a section of its own.
  const std::int32_t sections = FTabList->Count();
  for (std::int32_t i = 0; i < sections; ++i) {
    TTabImageSection* section = FTabList->Sections(i);
    TTabImage* first = nullptr;
    TTabImage* last = nullptr;
    for (TTabImageItem* item : *section)
      if (item != tab) {
        if (!first) first = AsTabImage(item);
        last = AsTabImage(item);
      }
    if (!first || !last) continue;
    TTabImageSection* target = nullptr;
    bool create = false;
    std::int32_t createAt = 0;
    const float before = AbsoluteRectOf(first).Left - 1;
    const float beyond = AbsoluteRectOf(last).Right + 1;
    if (r.Right >= before - kSectionGap && r.Right < before) {
      if (i >= 1 && HoldsOnly(FTabList->Sections(i - 1), tab))
        target = FTabList->Sections(i - 1);
      else
        create = true, createAt = i;
    } else if (r.Left >= beyond && r.Left < beyond + kSectionGap) {
      if (i + 1 < sections && HoldsOnly(FTabList->Sections(i + 1), tab))
        target = FTabList->Sections(i + 1);
      else
        create = true, createAt = i + 1;
    } else {
      continue;
    }
    if (create) target = FTabList->AddSection(createAt);
    if (target == ownSection) return false;
    ownSection->Remove(tab);
    target->Add(tab);
    if (ownSection->Count() == 0) {
      FHostSections.erase(ownSection);
      FTabList->RemoveSection(ownSection);
    }
    return true;
  }
  return false;
}

void TTabbarFrame::AutoScrollTimerTimer() {
  FAutoScrollTimer->SetEnabled(false);
  TTabImage* tab = FdragTarget;
  if (!tab) return;
  TPoint cursor;
  Platform().GetCursorPos(&cursor);
  TPointF client{static_cast<float>(cursor.X), static_cast<float>(cursor.Y)};
  if (TCommonCustomForm* form = FTabScrollBox->Form()) client = form->ScreenToClient(client);
  const float local = tab->AbsoluteToLocal(client).X;
  const float distance = std::fabs(local - tab->Width() / 2);
  const float step = std::min(distance / 50, kAutoScrollMaxStep) * 2;
  bool left = false, right = false;
  GetAutoScrollDirection(client, left, right);
  if (right) {
    // The viewport's change moves the layout with it.
    SetTabScrollViewPortX(FTabScrollBox->HorzPosition() + step);
    DragTabTo(false, client, true);
  } else if (left) {
    SetTabScrollViewPortX(FTabScrollBox->HorzPosition() - step);
    DragTabTo(true, client, true);
  } else {
    return;
  }
  GetAutoScrollDirection(client, left, right);
  if (left || right) FAutoScrollTimer->SetEnabled(true);
}

float TTabbarFrame::MaxTabbarWidth() const {
  const float parent = FParentForm ? static_cast<float>(FParentForm->ClientWidth()) : Width();
  return parent - FimgTabbarLeft->Width() - FimgTabbarRight->Width();
}

void TTabbarFrame::GetAutoScrollDirection(TPointF point, bool& left, bool& right) {
  left = right = false;
  TTabImage* tab = FdragTarget;
  if (!tab || MaxTabbarWidth() >= GetLayout()->contentWidth()) return;
  const TRectD parented = tab->TabImageParentedRectD();
  const double x = FTabScrollBox->AbsoluteToLocal(point).X - FDragOrigin.X;
  const TRectD rect(TPointD(x, parented.Top), TPointD(x + parented.Width(), parented.Bottom));
  left = GetLayout()->shouldScrollLeft(rect);
  right = GetLayout()->shouldScrollRight(rect);
}

void TTabbarFrame::CommitDrop(TTabImage* tab) {
  FWaitUpdateTabbar = true;
  FExecutingMouseEvent = false;
  MarkAfterDrag(tab);
  tab->StartDragOffsetAnimation();
  GetLayout()->stopDragging();
  FdragTarget = nullptr;

  IQxITabGroup* group = FHostGroup.get();
  ComPtr<IQxITab> host = HostTabOf(tab);
  TTabImageSection* section = tab->Section();
  if (group && host && section) {
    if (IUnknown* hostSection = HostSectionOf(section)) {
      ComPtr<IQxITabSection> target;
      hostSection->QueryInterface(IQxITabSection::IID, target.put_void());
      const std::int32_t index = section->IndexOf(tab);
      if (target && index >= 0) group->MoveTabToSection(host.get(), target.get(), index);
    } else {
      group->InsertSectionWithTab(FTabList->IndexOfSection(section), host.get());
    }
  }
  FWaitUpdateTabbar = false;
  UpdateTabbar(false, true);
  layoutSubviews(true);
  SyncViewportToProgress();
  if (FActiveTab && FActiveTab->Attributes()) MoveActiveIndicator(FActiveTab->Attributes(), true, 0.2f);
}

}  // namespace qx
