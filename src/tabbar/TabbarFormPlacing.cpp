// Where the layout's results reach the screen: tab places, z-order, the active
// indicator, the strip's width and the viewport.

#include <algorithm>
#include <unordered_set>

#include "tabbar/TabbarForm.h"

namespace qx {

void TTabbarFrame::layoutSubviews(bool animated, float duration) {
  // An animation callback may land here again while a pass runs; it must not nest.
  static bool inLayout = false;
  if (inLayout) return;
  inLayout = true;
  try {
    FLayoutOnce = true;
    UpdateTabbarWidth(animated, duration);
    ApplyLayoutAttributes(animated, duration);
    if (ICabinetIconBar* bar = GetCabinetIconBar())
      bar->layoutCabinetIcon(animated, duration, 0, FdragTarget);
  } catch (...) {
    inLayout = false;
    throw;
  }
  inLayout = false;
}

float TTabbarFrame::RequiredTabbarWidth() {
  return static_cast<float>(GetLayout()->contentWidth()) + FimgTabbarLeft->Width() + FimgTabbarRight->Width();
}

void TTabbarFrame::UpdateTabbarWidth(bool animated, float duration) {
  const float current = TabbarWidth();
  const float target = std::min(RequiredTabbarWidth(), ParentFormWidth());
  TFloatAnimation& animation = *FTabbarWidthAnimation;
  if (!animated) {
    animation.Stop();
    SetTabbarWidth(target);
    return;
  }
  if (!animation.Enabled && current == target) return;
  if (!animation.Enabled || animation.StopValue != target || !animation.Running()) {
    animation.Stop();
    animation.StartValue = current;
    animation.StopValue = target;
    animation.AnimationType = TAnimationType::In;
    animation.Duration = duration;
    animation.Enabled = true;
    animation.Start();
  }
}

void TTabbarFrame::ApplyLayoutAttributes(bool animated, float duration) {
  ComPtr<ITabViewLayoutAttributeList> list = GetLayout()->relayoutAttributes();
  if (!list) return;
  ComPtr<ITabViewLayoutAttributes> active;
  const std::int32_t count = list->Count();
  for (std::int32_t i = 0; i < count; ++i) {
    ComPtr<ITabViewLayoutAttributes> attributes;
    list->GetItem(i, attributes);
    TTabImage* tab = GetTabImages(i);
    if (!attributes || !tab) continue;
    ApplyAttributesToTabImage(attributes.get(), tab, animated, duration);
    if (!attributes->GetHidden()) tab->SetVisible(true);
    if (attributes->GetActive()) active = attributes;
  }
  SortZOrderFromAttributeList(list.get());
  MoveActiveIndicator(active.get(), animated, 0.2f);
  if (count > 0) {
    ComPtr<ITabViewLayoutAttributes> first;
    list->GetItem(0, first);
    if (first) first->UnChain();
  }
}

void TTabbarFrame::ApplyAttributesToTabImage(ITabViewLayoutAttributes* attributes, TTabImage* tab,
                                             bool animated, float duration) {
  // The tab keeps z position and section edges from its attributes, each
  // written only when it differs.
  tab->SetAttributes(attributes);
  tab->Position().SetY(kTabTop);
  if (tab != FdragTarget)
    tab->SetHorzPosition(animated, TInterpolationType::Linear, duration,
                         static_cast<float>(attributes->GetFrame().Left));
}

void TTabbarFrame::SortZOrderFromAttributeList(ITabViewLayoutAttributeList* attributes) {
  const std::int32_t count = attributes ? attributes->Count() : 0;
  if (count < 2) return;
  TFmxObject* content = FTabScrollBox->Content();
  // As many children as listed tabs, each listed tab among them: then no child is a
  // stranger, and the pass needs no set of the tabs.
  bool onlyListed = content->ChildrenCount() == count;
  for (std::int32_t i = 0; onlyListed && i < count; ++i) {
    const TTabImage* tab = GetTabImages(i);
    onlyListed = tab && tab->Parent() == content;
  }
  if (!onlyListed) RemoveUnlistedChildren(count);
  // Every child left is a listed tab image. The order seldom changes; a pass that
  // finds it right touches nothing.
  content->SortChildrenByKey(
      [](TFmxObject* child) { return static_cast<TTabImage*>(child)->SortPosition(); });
}

void TTabbarFrame::RemoveUnlistedChildren(std::int32_t count) {
  std::unordered_set<const TFmxObject*> listed;
  listed.reserve(static_cast<std::size_t>(count));
  for (std::int32_t i = 0; i < count; ++i)
    if (TTabImage* tab = GetTabImages(i)) listed.insert(tab);
  TFmxObject* content = FTabScrollBox->Content();
  for (int i = content->ChildrenCount() - 1; i >= 0; --i)
    if (!listed.contains(content->Children(i))) content->RemoveObject(i);
}

void TTabbarFrame::SetActiveTabImage(TTabImage* tab, bool keepViewport) {
  if (tab == FActiveTab) return;
  TTabImage* previous = FActiveTab;
  FActiveTab = tab;
  if (previous) previous->UpdateDimAndShadow(previous == FHoveredTab, true);
  if (tab) tab->UpdateDimAndShadow(tab == FHoveredTab, true);
  if (!keepViewport) GetLayout()->moveActiveCenter();
  layoutSubviews(true);
  if (FActiveTab && !IsHostActiveTab(FActiveTab)) PostSelectTab(FActiveTab);
}

void TTabbarFrame::PostSelectTab(TTabImage* tab) {
  const std::u16string guid = tab->TabGuid();
  if (guid.empty() || !FServiceCore) return;
  FServiceCore->FireEventWithStrings(u"TabBar.SelectTab", {u"tab-id"}, {guid});
}

float TTabbarFrame::ActiveIndicatorTargetX(ITabViewLayoutAttributes* attributes) const {
  const TPointF box = FTabScrollBox->LocalToAbsolute({0, 0});
  const TPointF frame = LocalToAbsolute({0, 0});
  const TRectD clip = attributes->GetClipFrame();
  return box.X - frame.X + static_cast<float>(clip.Left) +
         (static_cast<float>(clip.Width()) - FimgActiveTab->Width()) / 2;
}

void TTabbarFrame::MoveActiveIndicator(ITabViewLayoutAttributes* attributes, bool animated, float duration) {
  if (!attributes) return;
  const float target = ActiveIndicatorTargetX(attributes);
  const float current = FimgActiveTab->Position().X();
  TFloatAnimation& animation = *FActiveTabIndicatorFloatAnimation;
  if (FimgActiveTab->Visible() && animated && current != target) {
    animation.Stop();
    FimgActiveTab->Position().SetX(current);
    animation.Duration = duration;
    animation.AnimationType = TAnimationType::In;
    animation.StartValue = current;
    animation.StopValue = target;
    animation.Enabled = true;
    animation.Start();
  } else {
    animation.Stop();
    FimgActiveTab->Position().SetX(target);
  }
  if (!FdragTarget) FimgActiveTab->SetVisible(true);
}

void TTabbarFrame::SetHoveredTab(TTabImage* tab) {
  if (IsMouseMessageFromTouch()) tab = nullptr;
  if (tab == FHoveredTab) {
    if (tab && !tab->CloseButtonVisible()) tab->StartCloseButtonAnimation(true, true);
    return;
  }
  TTabImage* previous = FHoveredTab;
  if (previous) previous->ProcessMouseLeave(tab != nullptr);
  FHoveredTab = tab;
  if (tab) {
    tab->ProcessMouseEnter(previous != nullptr);
    ShowTabTitle(tab, false);
  }
}

// ---- viewport and progress

void TTabbarFrame::SyncViewportToProgress() {
  TTabGroupViewLayout* layout = GetLayout();
  const double x = layout->progress() * (layout->contentWidth() - FimgTabbarMiddle->Width()) + kContentMargin;
  SetViewportX(static_cast<float>(x));
}

void TTabbarFrame::SetViewportX(float x) {
  // The content must still follow, so the calculations keep notifying; the
  // flag alone keeps ScrollChanged from feeding the move back into the layout.
  FScrollStopChange = true;
  FTabScrollBox->SetHorzPosition(std::max(0.0f, x));
  FLastScroll = FTabScrollBox->HorzPosition();
  FScrollStopChange = false;
}

void TTabbarFrame::ScrollChanged(TFmxObject* /*sender*/) {
  if (FScrollStopChange || FFinishing) return;
  static bool inScrollChanged = false;
  if (inScrollChanged) return;
  inScrollChanged = true;
  try {
    // Only a viewport that really moved relays the tabs: a resize while the
    // strip's width animates must not cut that animation short.
    const float x = FTabScrollBox->HorzPosition();
    if (x != FLastScroll) {
      const double delta = static_cast<double>(x) - static_cast<double>(FLastScroll);
      FLastScroll = x;
      GetLayout()->move(delta);
      layoutSubviews(false);
    }
  } catch (...) {
    inScrollChanged = false;
    throw;
  }
  inScrollChanged = false;
}

void TTabbarFrame::ScrollStarted(TFmxObject* /*sender*/) {
  FScrolling = true;
  SetHoveredTab(nullptr);
}

void TTabbarFrame::ScrollStopped(TFmxObject* /*sender*/) { FScrolling = false; }

void TTabbarFrame::ActiveCenterTimerTimer(TFmxObject* /*sender*/) {
  FActiveCenterTimer->SetEnabled(false);
  if (FHoveredTab) return;
  GetLayout()->moveActiveCenter();
  layoutSubviews(true, 0.2f);
}

void TTabbarFrame::FrameResize(TFmxObject* sender) {
  // The layout loads before the parts are bound; a resize then has nothing to place.
  if (!FTabScrollBox || !FTabList || FFinishing) return;
  ScrollChanged(sender);
  InvalidateRect(LocalRect());
}

}  // namespace qx
