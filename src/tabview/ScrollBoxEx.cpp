#include "tabview/ScrollBoxEx.h"

#include <cmath>
#include <stdexcept>

#include "base/Text.h"
#include "toolkit/PlatformServices.h"
#include "toolkit/StoredLayout.h"

namespace qx::ScrollBoxExUnit {

namespace {
// The pan gesture as the gesture messages number it.
constexpr int kPanGestureId = 260;
static_assert(kPanGestureId == igiPan, "the toolkit must number the pan gesture as the scroll box does");
// Pixels scrolled per unit of wheel delta (a notch of 120 moves 60 pixels).
constexpr double kWheelStep = 0.5;
constexpr float kBarThickness = 8;
constexpr float kSmallBarThickness = 3;
const char16_t* const kStyleNames[] = {u"background",      u"vscrollbar", u"hscrollbar", u"vsmallscrollbar",
                                       u"hsmallscrollbar", u"sizegrip",   u"content"};
}  // namespace

// ---- TScrollContent

TScrollContent::TScrollContent(TScrollBoxEx* scrollBox) : TContent(scrollBox), FScrollBox(scrollBox) {}

void TScrollContent::ChildrenChanged() {
  TContent::ChildrenChanged();
  if (FScrollBox && !IsDestroying()) FScrollBox->ContentChanged();
}

void TScrollContent::DoRemoveObject(TFmxObject* object) {
  TContent::DoRemoveObject(object);
  if (FScrollBox && !IsDestroying()) FScrollBox->ContentRemoved(object);
}

// ---- TScrollCalculations

namespace {
TScrollBoxEx* RequireScrollBox(TFmxObject* owner) {
  auto* box = dynamic_cast<TScrollBoxEx*>(owner);
  if (!box) throw std::invalid_argument("TScrollCalculations needs a TScrollBoxEx as its owner");
  return box;
}
}  // namespace

TScrollCalculations::TScrollCalculations(TFmxObject* owner)
    : TAniCalculations(RequireScrollBox(owner)), FScrollBox(static_cast<TScrollBoxEx*>(owner)) {}

void TScrollCalculations::DoChanged() {
  FScrollBox->AniChanged();
  TAniCalculations::DoChanged();
}

void TScrollCalculations::DoStart() {
  FScrollBox->AniStarted();
  TAniCalculations::DoStart();
}

void TScrollCalculations::DoStop() {
  FScrollBox->AniStopped();
  TAniCalculations::DoStop();
}

// ---- TScrollBoxEx

TScrollBoxEx::TScrollBoxEx(TFmxObject* owner) : TStyledControl(owner) {
  SetClipChildren(true);
  CreateParts();
  Touch().InteractiveGestures |= GestureBit(TInteractiveGesture::Pan);
  FTouchEnabled = true;
  ApplyStyleLookup();
}

TScrollBoxEx::~TScrollBoxEx() {
  // The calculations tell this box of changes; they go first.
  FAniCalculations.reset();
  FContent = nullptr;
}

std::unique_ptr<TScrollCalculations> TScrollBoxEx::CreateAniCalculations() {
  return std::make_unique<TScrollCalculations>(this);
}

TScrollContent* TScrollBoxEx::CreateScrollContent() { return new TScrollContent(this); }

void TScrollBoxEx::CreateParts() {
  TScrollContent* former = FContent;
  FContent = nullptr;
  delete former;
  TScrollContent* content = CreateScrollContent();
  FContent = content;
  InsertObject(FBackground ? FBackground->Index() + 1 : 0, content);
  FAniCalculations.reset();
  FAniCalculations = CreateAniCalculations();
  TScrollingBehaviours behaviours = GetScrollingBehaviours();
  FAniCalculations->Animation = (behaviours & sbh::Animation) != 0;
  FAniCalculations->BoundsAnimation = (behaviours & sbh::Bounces) != 0;
  FAniCalculations->AutoShowing = (behaviours & sbh::AutoShowing) != 0;
  FAniCalculations->TouchTracking =
      (behaviours & sbh::TouchTracking) ? ttrack::Horizontal | ttrack::Vertical : 0;
  InvalidateContentSize();
  RealignContent();
}

bool TScrollBoxEx::IsStylePart(TFmxObject* object) const {
  return std::find(FStyleParts.begin(), FStyleParts.end(), object) != FStyleParts.end();
}

void TScrollBoxEx::DoAddObject(TFmxObject* object) {
  // Controls put into the box live in its content; style parts and animations stay.
  if (FContent && object != FContent && !IsStylePart(object) && dynamic_cast<TControl*>(object)) {
    FContent->AddObject(object);
    return;
  }
  TStyledControl::DoAddObject(object);
}

void TScrollBoxEx::BuildDefaultStyle() {
  auto part = [this](TControl* control, const char16_t* name, TAlignLayout align, int index) {
    control->StyleName = name;
    control->SetAlign(align);
    FStyleParts.push_back(control);
    InsertObject(index, control);
    return control;
  };
  part(new TLayout(this), u"background", TAlignLayout::Contents, 0);
  part(new TLayout(this), u"content", TAlignLayout::Contents, 1);
  auto bar = [&](const char16_t* name, TOrientation orientation, float thickness) {
    auto* b = new TScrollBar(this);
    b->Orientation = orientation;
    if (orientation == TOrientation::Vertical)
      b->SetWidth(thickness);
    else
      b->SetHeight(thickness);
    b->SetVisible(false);
    part(b, name, orientation == TOrientation::Vertical ? TAlignLayout::Right : TAlignLayout::Bottom,
         ChildrenCount());
  };
  bar(u"vscrollbar", TOrientation::Vertical, kBarThickness);
  bar(u"hscrollbar", TOrientation::Horizontal, kBarThickness);
  bar(u"vsmallscrollbar", TOrientation::Vertical, kSmallBarThickness);
  bar(u"hsmallscrollbar", TOrientation::Horizontal, kSmallBarThickness);
  auto* grip = new TLayout(this);
  grip->SetBounds(0, 0, kBarThickness, kBarThickness);
  grip->SetVisible(false);
  part(grip, u"sizegrip", TAlignLayout::None, ChildrenCount());
}

void TScrollBoxEx::ApplyStyle() {
  // Style parts are searched outside the content, whose children are the user's.
  auto find = [this](const char16_t* name) -> TFmxObject* {
    for (TFmxObject* child : ChildList()) {
      if (child == FContent) continue;
      if (SameText(child->StyleName, name)) return child;
      if (TFmxObject* found = child->FindStyleResource(name)) return found;
    }
    return nullptr;
  };
  if (!find(kStyleNames[0])) BuildDefaultStyle();
  FBackground = dynamic_cast<TControl*>(find(u"background"));
  FVScrollBars[0].Bar = dynamic_cast<TScrollBar*>(find(u"vscrollbar"));
  FHScrollBars[0].Bar = dynamic_cast<TScrollBar*>(find(u"hscrollbar"));
  FVScrollBars[1].Bar = dynamic_cast<TScrollBar*>(find(u"vsmallscrollbar"));
  FHScrollBars[1].Bar = dynamic_cast<TScrollBar*>(find(u"hsmallscrollbar"));
  FSizeGrip = dynamic_cast<TControl*>(find(u"sizegrip"));
  FContentLayout = dynamic_cast<TControl*>(find(u"content"));
  for (auto* bars : {&FHScrollBars, &FVScrollBars})
    for (TScrollBarRecord& r : *bars)
      if (r.Bar)
        r.Bar->OnChange = [this](TFmxObject* sender) { BarChanged(static_cast<TScrollBar*>(sender)); };
  Realign();
  InvalidateContentSize();
  RealignContent();
}

void TScrollBoxEx::FreeStyle() {
  for (auto* bars : {&FHScrollBars, &FVScrollBars})
    for (TScrollBarRecord& r : *bars) {
      if (r.Bar) r.Bar->OnChange = nullptr;
      r.Bar = nullptr;
    }
  FSizeGrip = FBackground = FContentLayout = nullptr;
}

TScrollBar* TScrollBoxEx::BarInUse(const std::array<TScrollBarRecord, 2>& bars) const {
  std::size_t wanted = FAniCalculations && FAniCalculations->AutoShowing ? 1 : 0;
  if (bars[wanted].Bar) return bars[wanted].Bar;
  return bars[1 - wanted].Bar;
}

TScrollBar* TScrollBoxEx::HScrollBar() const { return BarInUse(FHScrollBars); }
TScrollBar* TScrollBoxEx::VScrollBar() const { return BarInUse(FVScrollBars); }

void TScrollBoxEx::SetAutoHide(bool value) {
  if (value == FAutoHide) return;
  FAutoHide = value;
  UpdateBars();
}

void TScrollBoxEx::SetShowScrollBars(bool value) {
  if (value == FShowScrollBars) return;
  FShowScrollBars = value;
  UpdateBars();
}

void TScrollBoxEx::SetShowSizeGrip(bool value) {
  if (value == FShowSizeGrip) return;
  FShowSizeGrip = value;
  UpdateBars();
}

float TScrollBoxEx::ClientWidth() const {
  if (FContentLayout) return FContentLayout->Width();
  return std::max(0.0f, Width() - PaddingRect().Left - PaddingRect().Right);
}

float TScrollBoxEx::ClientHeight() const {
  if (FContentLayout) return FContentLayout->Height();
  return std::max(0.0f, Height() - PaddingRect().Top - PaddingRect().Bottom);
}

void TScrollBoxEx::InvalidateContentSize() { FContentBoundsValid = false; }

TRectF TScrollBoxEx::DoCalcContentBounds() {
  // At least the view; then every visible child of the content.
  TRectF bounds(0, 0, ClientWidth(), ClientHeight());
  if (FContent)
    for (TFmxObject* o : FContent->ChildList())
      if (const TControl* c = o->AsControl(); c && c->Visible()) {
        TRectF r = c->BoundsRect();
        bounds = {std::min(bounds.Left, r.Left), std::min(bounds.Top, r.Top), std::max(bounds.Right, r.Right),
                  std::max(bounds.Bottom, r.Bottom)};
      }
  if (OnCalcContentBounds) OnCalcContentBounds(this, bounds);
  return bounds;
}

TRectF TScrollBoxEx::ContentBounds() {
  if (!FContentBoundsValid) {
    FContentBounds = DoCalcContentBounds();
    FContentBoundsValid = true;
  }
  return FContentBounds;
}

void TScrollBoxEx::RealignContent() {
  if (!FContent || !FAniCalculations || FRealigningContent) return;
  FRealigningContent = true;
  TRectF bounds = ContentBounds();
  TAniCalculations& ani = *FAniCalculations;
  TPointD lo{bounds.Left, bounds.Top};
  TPointD hi{std::max<double>(bounds.Left, bounds.Right - ClientWidth()),
             std::max<double>(bounds.Top, bounds.Bottom - ClientHeight())};
  ani.SetTargets({{TAniTargetType::Min, lo}, {TAniTargetType::Max, hi}});
  TPointD view = ani.ViewportPosition();
  if (!ani.Down() && !ani.Inertia()) {
    TPointD clamped{std::clamp(view.X, lo.X, hi.X), std::clamp(view.Y, lo.Y, hi.Y)};
    if (!(clamped == view)) ani.SetViewportPosition(clamped);
  }
  view = ani.ViewportPosition();
  TPointF origin =
      FContentLayout ? FContentLayout->Position().Point() : TPointF{PaddingRect().Left, PaddingRect().Top};
  FContent->SetBounds(origin.X - static_cast<float>(view.X), origin.Y - static_cast<float>(view.Y),
                      std::max(0.0f, bounds.Right), std::max(0.0f, bounds.Bottom));
  UpdateBars();
  FRealigningContent = false;
}

void TScrollBoxEx::UpdateBars() {
  if (!FAniCalculations) return;
  TRectF bounds = ContentBounds();
  TPointD view = FAniCalculations->ViewportPosition();
  FSyncingBars = true;
  auto sync = [&](const std::array<TScrollBarRecord, 2>& bars, float lo, float hi, float page, double value) {
    TScrollBar* inUse = BarInUse(bars);
    bool needed = hi - lo > page + 0.5f;
    for (const TScrollBarRecord& r : bars) {
      if (!r.Bar) continue;
      if (r.Bar != inUse) {
        r.Bar->SetVisible(false);
        continue;
      }
      r.Bar->SetMin(lo);
      r.Bar->SetMax(hi);
      r.Bar->SetViewportSize(page);
      r.Bar->SetValue(static_cast<float>(value));
      r.Bar->SetVisible(FShowScrollBars && (!FAutoHide || needed));
    }
  };
  sync(FHScrollBars, bounds.Left, bounds.Right, ClientWidth(), view.X);
  sync(FVScrollBars, bounds.Top, bounds.Bottom, ClientHeight(), view.Y);
  if (FSizeGrip) {
    TScrollBar* h = HScrollBar();
    TScrollBar* v = VScrollBar();
    FSizeGrip->SetVisible(FShowSizeGrip && h && v && h->Visible() && v->Visible());
    FSizeGrip->SetBounds(Width() - FSizeGrip->Width(), Height() - FSizeGrip->Height(), FSizeGrip->Width(),
                         FSizeGrip->Height());
  }
  FSyncingBars = false;
}

void TScrollBoxEx::BarChanged(TScrollBar* bar) {
  bool horizontal = bar == HScrollBar();
  if (!horizontal && bar != VScrollBar()) return;
  if (horizontal && OnHScrollChange) OnHScrollChange(this);
  if (!horizontal && OnVScrollChange) OnVScrollChange(this);
  if (FSyncingBars || !FAniCalculations) return;
  // A change by the user: the calculations view the new point.
  TPointD view = FAniCalculations->ViewportPosition();
  if (horizontal)
    view.X = bar->Value();
  else
    view.Y = bar->Value();
  ViewPoint(view);
}

void TScrollBoxEx::ViewPoint(TPointD point) {
  double scale = SceneScale();
  if (!(scale > 0)) scale = 1.0;
  point.X = std::round(point.X * scale) / scale;
  point.Y = std::round(point.Y * scale) / scale;
  FAniCalculations->SetViewportPosition(point);
}

void TScrollBoxEx::AniChanged() {
  if (!FContent || FRealigningContent) return;
  TPointD view = FAniCalculations->ViewportPosition();
  TPointF origin =
      FContentLayout ? FContentLayout->Position().Point() : TPointF{PaddingRect().Left, PaddingRect().Top};
  FContent->Position().SetPoint(
      {origin.X - static_cast<float>(view.X), origin.Y - static_cast<float>(view.Y)});
  UpdateBars();
}

void TScrollBoxEx::PerfectRefresh() {
  InvalidateContentSize();
  Realign();
  RealignContent();
  Repaint();
}

void TScrollBoxEx::Center() {
  for (TScrollBar* bar : {VScrollBar(), HScrollBar()})
    if (bar && bar->Visible()) bar->SetValue((bar->Max() - bar->ViewportSize()) / 2);
}

void TScrollBoxEx::ScrollTo(float dx, float dy) {
  if (TScrollBar* v = VScrollBar(); v && v->Visible()) v->SetValue(v->Value() - dy);
  if (TScrollBar* h = HScrollBar(); h && h->Visible()) h->SetValue(h->Value() - dx);
}

void TScrollBoxEx::Sort(const std::function<bool(TFmxObject*, TFmxObject*)>& less) {
  if (FContent) FContent->SortChildren(less);
}

std::vector<TControl*> TScrollBoxEx::GetTabList() const {
  return FContent ? FContent->GetTabList() : std::vector<TControl*>{};
}

TScrollingBehaviours TScrollBoxEx::GetScrollingBehaviours() const {
  if (Form() && StyleDescriptionTarget(this).find(u"[METROPOLISUI]") != std::u16string::npos)
    return sbh::TouchTracking;
  auto service = TPlatformServices::Current().GetPlatformService<IFMXSystemInformationService>();
  return service ? service->GetScrollingBehaviour() : 0;
}

void TScrollBoxEx::Resize() {
  TStyledControl::Resize();
  InvalidateContentSize();
  RealignContent();
}

void TScrollBoxEx::ContentChanged() {
  InvalidateContentSize();
  RealignContent();
}

void TScrollBoxEx::ContentRemoved(TFmxObject* object) {
  if (OnNotification) OnNotification(this, object, TContentNotification::Removed);
}

// ---- input

void TScrollBoxEx::MouseDown(TMouseButton button, TShiftState shift, float x, float y) {
  TStyledControl::MouseDown(button, shift, x, y);
  if (button == TMouseButton::mbLeft) FAniCalculations->MouseDown(x, y);
}

void TScrollBoxEx::MouseMove(TShiftState shift, float x, float y) {
  TStyledControl::MouseMove(shift, x, y);
  FAniCalculations->MouseMove(x, y);
  if (FAniCalculations->Moving()) {
    FAniCalculations->UpdatePosImmediately(true);
    if (OnAniMouseMove) OnAniMouseMove(this, shift, x, y);
  }
}

void TScrollBoxEx::MouseUp(TMouseButton button, TShiftState shift, float x, float y) {
  TStyledControl::MouseUp(button, shift, x, y);
  if (button != TMouseButton::mbLeft) return;
  FAniCalculations->MouseUp(x, y);
  if (!FAniCalculations->Inertia()) FAniCalculations->Stop();
}

void TScrollBoxEx::MouseWheel(TShiftState shift, int wheelDelta, bool& handled) {
  TStyledControl::MouseWheel(shift, wheelDelta, handled);
  if (handled) return;
  TPointD lo = FAniCalculations->MinTarget(), hi = FAniCalculations->MaxTarget();
  double distance = -wheelDelta * kWheelStep;
  // Sideways when asked, or when there is nothing to scroll upright.
  bool horizontal = (shift & ss::Horizontal) != 0 || !(hi.Y > lo.Y);
  if (horizontal && hi.X > lo.X) {
    FAniCalculations->MouseWheel(distance, 0);
    handled = true;
  } else if (!horizontal) {
    FAniCalculations->MouseWheel(0, distance);
    handled = true;
  }
}

void TScrollBoxEx::TouchEventDown(float x, float y) { FAniCalculations->MouseDown(x, y); }

void TScrollBoxEx::TouchEventMove(float x, float y) { FAniCalculations->MouseMove(x, y); }

void TScrollBoxEx::TouchEventUp(float x, float y) { FAniCalculations->MouseUp(x, y); }

void TScrollBoxEx::CMGesture(const TGestureEventInfo& eventInfo) {
  if (eventInfo.GestureID != kPanGestureId) {
    FGestureState = eventInfo;
    TStyledControl::CMGesture(eventInfo);
    return;
  }
  FGestureState = {};
  TPointF p = AbsoluteToLocal(eventInfo.Location);
  if (eventInfo.Flags & gf::Begin)
    TouchEventDown(p.X, p.Y);
  else if (eventInfo.Flags == 0)
    TouchEventMove(p.X, p.Y);
  else if (FAniCalculations->Down())
    TouchEventUp(p.X, p.Y);
}

// ---- stored layouts

const TPropertyTable& TScrollBoxEx::ClassProperties() {
  static const TPropertyTable table = [] {
    auto B = [](TFmxObject* o) { return static_cast<TScrollBoxEx*>(o); };
    TPropertyTable t(&TStyledControl::ClassProperties());
    t.Stored("ShowScrollBars", [B](TFmxObject* o, const TStoredValue& v) {
      B(o)->SetShowScrollBars(StoredBool(v, "ShowScrollBars"));
    });
    t.Stored("AutoHide",
             [B](TFmxObject* o, const TStoredValue& v) { B(o)->SetAutoHide(StoredBool(v, "AutoHide")); });
    t.Stored("ShowSizeGrip", [B](TFmxObject* o, const TStoredValue& v) {
      B(o)->SetShowSizeGrip(StoredBool(v, "ShowSizeGrip"));
    });
    return t;
  }();
  return table;
}

void TScrollBoxEx::RegisterClass() {
  TComponentRegistry::RegisterClass("TScrollBox", [](TFmxObject* owner) { return new TScrollBoxEx(owner); },
                                    {"UseSmallScrollBars", "MouseTracking"});
}

}  // namespace qx::ScrollBoxExUnit
