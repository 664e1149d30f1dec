#include "toolkit/Control.h"

#include <algorithm>
#include <cmath>

#include "toolkit/CoveredArea.h"
#include "toolkit/Effects.h"
#include "toolkit/Form.h"

namespace qx {

float TPosition::X() const { return FOwner->FLeft; }
float TPosition::Y() const { return FOwner->FTop; }
void TPosition::SetX(float x) { FOwner->SetBounds(x, FOwner->FTop, FOwner->FWidth, FOwner->FHeight); }
void TPosition::SetY(float y) { FOwner->SetBounds(FOwner->FLeft, y, FOwner->FWidth, FOwner->FHeight); }
TPointF TPosition::Point() const { return {FOwner->FLeft, FOwner->FTop}; }
void TPosition::SetPoint(TPointF p) { FOwner->SetBounds(p.X, p.Y, FOwner->FWidth, FOwner->FHeight); }

TControl::TControl(TFmxObject* owner) : TFmxObject(owner) {
  FMargins.OnChange = [this] { ParentRealign(); };
  FPadding.OnChange = [this] { Realign(); };
}

TControl::~TControl() {
  SetDestroying();
  Repaint();
}

// ---- geometry

void TControl::SetBounds(float x, float y, float width, float height) {
  width = std::max(0.0f, width);
  height = std::max(0.0f, height);
  bool moved = x != FLeft || y != FTop;
  bool sized = width != FWidth || height != FHeight;
  if (!moved && !sized) return;
  Repaint();
  FLeft = x;
  FTop = y;
  FWidth = width;
  FHeight = height;
  Repaint();
  if (sized) {
    Realign();
    Resize();
    if (FAlign != TAlignLayout::None) ParentRealign();
  }
}

TPointF TControl::LocalToAbsolute(TPointF p) const {
  for (const TControl* c = this; c; c = c->ParentControl()) {
    const TPointF offset = c->OffsetInParent();
    p = {p.X + offset.X, p.Y + offset.Y};
  }
  return p;
}

TPointF TControl::AbsoluteToLocal(TPointF p) const {
  TPointF origin = LocalToAbsolute({0, 0});
  return {p.X - origin.X, p.Y - origin.Y};
}

TRectF TControl::AbsoluteRect() const {
  TPointF o = LocalToAbsolute({0, 0});
  return TRectF::FromSize(o.X, o.Y, FWidth, FHeight);
}

void TControl::SetAlign(TAlignLayout align) {
  if (align == FAlign) return;
  FAlign = align;
  ParentRealign();
}

void TControl::SetVisible(bool value) {
  if (value == FVisible) return;
  if (!value) Repaint();
  FVisible = value;
  if (value) Repaint();
  if (!value) {
    if (TCommonCustomForm* form = Form()) {
      if (form->Captured() && IsAncestorOf(form->Captured())) form->SetCaptured(nullptr);
    }
  }
  if (FAlign != TAlignLayout::None) ParentRealign();
}

bool TControl::IsVisibleInTree() const {
  for (const TControl* c = this; c; c = c->ParentControl())
    if (!c->FVisible) return false;
  return true;
}

void TControl::SetOpacity(float value) {
  value = std::clamp(value, 0.0f, 1.0f);
  if (value == FOpacity) return;
  FOpacity = value;
  Repaint();
}

float TControl::AbsoluteOpacity() const {
  float o = 1;
  for (const TControl* c = this; c; c = c->ParentControl()) o *= c->FOpacity;
  return o;
}

void TControl::SetClipChildren(bool value) {
  if (value == FClipChildren) return;
  FClipChildren = value;
  Repaint();
}

// ---- alignment

void TControl::BeginUpdate() {
  ++FUpdating;
  for (TControl* c : Controls()) c->BeginUpdate();
}

void TControl::EndUpdate() {
  if (FUpdating == 0) return;
  for (TControl* c : Controls()) c->EndUpdate();
  if (--FUpdating == 0 && FNeedRealign) Realign();
}

void TControl::ParentRealign() {
  if (IsDestroying()) return;
  if (TControl* parent = ParentControl())
    parent->Realign();
  else if (auto* form = dynamic_cast<TCommonCustomForm*>(Parent()))
    form->Realign();
}

void TControl::Realign() {
  if (IsDestroying()) return;
  if (FUpdating > 0) {
    FNeedRealign = true;
    return;
  }
  if (FRealigning) return;
  FNeedRealign = false;
  FRealigning = true;
  DoRealign();
  FRealigning = false;
}

TRectF TControl::ContentRect() const {
  TRectF p = FPadding.Rect();
  return {p.Left, p.Top, FWidth - p.Right, FHeight - p.Bottom};
}

namespace {

void AlignControls(const std::vector<TControl*>& controls, TRectF r, TRectF whole) {
  auto place = [](TControl* c, float x, float y, float w, float h) { c->SetBounds(x, y, w, h); };
  auto margins = [](TControl* c) { return c->Margins().Rect(); };
  const TAlignLayout order[] = {TAlignLayout::MostTop,   TAlignLayout::MostBottom, TAlignLayout::MostLeft,
                                TAlignLayout::MostRight, TAlignLayout::Top,        TAlignLayout::Bottom,
                                TAlignLayout::Left,      TAlignLayout::Right};
  for (TAlignLayout pass : order) {
    for (TControl* c : controls) {
      if (c->Align() != pass || !c->Visible()) continue;
      TRectF m = margins(c);
      switch (pass) {
        case TAlignLayout::MostTop:
        case TAlignLayout::Top:
          place(c, r.Left + m.Left, r.Top + m.Top, r.Width() - m.Left - m.Right, c->Height());
          r.Top += c->Height() + m.Top + m.Bottom;
          break;
        case TAlignLayout::MostBottom:
        case TAlignLayout::Bottom:
          place(c, r.Left + m.Left, r.Bottom - m.Bottom - c->Height(), r.Width() - m.Left - m.Right,
                c->Height());
          r.Bottom -= c->Height() + m.Top + m.Bottom;
          break;
        case TAlignLayout::MostLeft:
        case TAlignLayout::Left:
          place(c, r.Left + m.Left, r.Top + m.Top, c->Width(), r.Height() - m.Top - m.Bottom);
          r.Left += c->Width() + m.Left + m.Right;
          break;
        case TAlignLayout::MostRight:
        case TAlignLayout::Right:
          place(c, r.Right - m.Right - c->Width(), r.Top + m.Top, c->Width(), r.Height() - m.Top - m.Bottom);
          r.Right -= c->Width() + m.Left + m.Right;
          break;
        default:
          break;
      }
    }
  }
  for (TControl* c : controls) {
    if (!c->Visible()) continue;
    TRectF m = margins(c);
    switch (c->Align()) {
      case TAlignLayout::Client:
        place(c, r.Left + m.Left, r.Top + m.Top, r.Width() - m.Left - m.Right, r.Height() - m.Top - m.Bottom);
        break;
      case TAlignLayout::Contents:
        place(c, whole.Left + m.Left, whole.Top + m.Top, whole.Width() - m.Left - m.Right,
              whole.Height() - m.Top - m.Bottom);
        break;
      case TAlignLayout::Center:
        place(c, r.Left + m.Left + (r.Width() - m.Left - m.Right - c->Width()) / 2,
              r.Top + m.Top + (r.Height() - m.Top - m.Bottom - c->Height()) / 2, c->Width(), c->Height());
        break;
      case TAlignLayout::HorzCenter:
        place(c, r.Left + m.Left + (r.Width() - m.Left - m.Right - c->Width()) / 2, r.Top + m.Top, c->Width(),
              r.Height() - m.Top - m.Bottom);
        break;
      case TAlignLayout::VertCenter:
        place(c, r.Left + m.Left, r.Top + m.Top + (r.Height() - m.Top - m.Bottom - c->Height()) / 2,
              r.Width() - m.Left - m.Right, c->Height());
        break;
      case TAlignLayout::Horizontal:
        place(c, r.Left + m.Left, c->Position().Y(), r.Width() - m.Left - m.Right, c->Height());
        break;
      case TAlignLayout::Vertical:
        place(c, c->Position().X(), r.Top + m.Top, c->Width(), r.Height() - m.Top - m.Bottom);
        break;
      default:
        break;
    }
  }
}

}  // namespace

void TControl::DoRealign() {
  // Thousands of free-standing children are common; only an aligned one needs the pass.
  const auto aligned = [](TFmxObject* o) {
    const TControl* c = o->AsControl();
    return c && c->Align() != TAlignLayout::None;
  };
  if (std::any_of(ChildList().begin(), ChildList().end(), aligned))
    AlignControls(Controls(), ContentRect(), LocalRect());
}

void AlignFormControls(const std::vector<TControl*>& controls, TRectF content, TRectF whole) {
  AlignControls(controls, content, whole);
}

void TControl::Resize() {
  if (OnResize) OnResize(this);
}

// ---- tree

TControl* TControl::ParentControl() const { return Parent() ? Parent()->AsControl() : nullptr; }

TCommonCustomForm* TControl::Form() const {
  TFmxObject* p = Parent();
  while (p) {
    if (auto* form = dynamic_cast<TCommonCustomForm*>(p)) return form;
    p = p->Parent();
  }
  return nullptr;
}

std::vector<TControl*> TControl::Controls() const {
  std::vector<TControl*> out;
  for (TFmxObject* o : ChildList())
    if (TControl* c = o->AsControl()) out.push_back(c);
  return out;
}

std::vector<TControl*> TControl::GetTabList() const {
  std::vector<TControl*> out;
  for (TControl* c : Controls())
    if (c->Visible() && c->TabStop) out.push_back(c);
  std::stable_sort(out.begin(), out.end(), [](TControl* a, TControl* b) {
    return (a->TabOrder < 0 ? 1 << 30 : a->TabOrder) < (b->TabOrder < 0 ? 1 << 30 : b->TabOrder);
  });
  return out;
}

void TControl::ParentChanged() { Repaint(); }

void TControl::ChildrenChanged() { Repaint(); }

void TControl::DoAddObject(TFmxObject* object) {
  if (auto* c = dynamic_cast<TControl*>(object)) {
    if (c->Align() != TAlignLayout::None) Realign();
    c->Repaint();
  }
}

void TControl::DoRemoveObject(TFmxObject* object) {
  if (auto* c = dynamic_cast<TControl*>(object)) {
    Repaint();
    if (c->Align() != TAlignLayout::None) Realign();
  }
}

// ---- repaint

void TControl::Repaint() { InvalidateRect(LocalRect()); }

void TControl::InvalidateRect(const TRectF& localRect) {
  if (!FVisible) return;
  TCommonCustomForm* form = Form();
  if (!form) return;
  TPointF o = LocalToAbsolute({0, 0});
  form->Invalidate(localRect.Offset(o.X, o.Y));
}

// ---- input

bool TControl::PointInObject(float absoluteX, float absoluteY) {
  TPointF p = AbsoluteToLocal({absoluteX, absoluteY});
  return LocalRect().Contains(p);
}

TControl* TControl::ObjectAtPoint(TPointF absolutePoint) {
  return ObjectAtPointFrom(absolutePoint, LocalToAbsolute({0, 0}));
}

TControl* TControl::ObjectAtPointFrom(TPointF absolutePoint, TPointF origin) {
  // Origins are handed down the tree: a strip of thousands of tabs must not walk
  // each tab's parent chain again, nor copy its children on every pointer move.
  if (!FVisible || !FEnabled) return nullptr;
  const bool inside = LocalRect().Contains({absolutePoint.X - origin.X, absolutePoint.Y - origin.Y});
  if (!FClipChildren || inside) {
    const std::vector<TFmxObject*>& children = ChildList();
    for (auto it = children.rbegin(); it != children.rend(); ++it)
      if (TControl* child = (*it)->AsControl()) {
        const TPointF offset = child->OffsetInParent();
        if (TControl* hit =
                child->ObjectAtPointFrom(absolutePoint, {origin.X + offset.X, origin.Y + offset.Y}))
          return hit;
      }
  }
  return (FHitTest && inside) ? this : nullptr;
}

void TControl::SetFocus() {
  if (TCommonCustomForm* form = Form()) form->SetFocused(this);
}

bool TControl::IsFocused() const {
  TCommonCustomForm* form = Form();
  return form && form->Focused() == this;
}

void TControl::Capture() {
  if (TCommonCustomForm* form = Form()) form->SetCaptured(this);
}

void TControl::ReleaseCapture() {
  TCommonCustomForm* form = Form();
  if (form && form->Captured() == this) form->SetCaptured(nullptr);
}

void TControl::MouseDown(TMouseButton button, TShiftState shift, float x, float y) {
  if (button == TMouseButton::mbLeft) FPressed = true;
  if (OnMouseDown) OnMouseDown(this, button, shift, x, y);
}

void TControl::MouseMove(TShiftState shift, float x, float y) {
  if (OnMouseMove) OnMouseMove(this, shift, x, y);
}

void TControl::MouseUp(TMouseButton button, TShiftState shift, float x, float y) {
  if (OnMouseUp) OnMouseUp(this, button, shift, x, y);
  bool wasPressed = FPressed;
  if (button == TMouseButton::mbLeft) FPressed = false;
  if (wasPressed && button == TMouseButton::mbLeft && LocalRect().Contains({x, y}) && !IsDestroying())
    Click();
}

void TControl::MouseWheel(TShiftState shift, int wheelDelta, bool& handled) {
  if (OnMouseWheel) OnMouseWheel(this, shift, wheelDelta, handled);
}

void TControl::Click() {
  if (OnClick) OnClick(this);
}

void TControl::DblClick() {
  if (OnDblClick) OnDblClick(this);
}

void TControl::DoMouseEnter() {
  FIsMouseOver = true;
  if (OnMouseEnter) OnMouseEnter(this);
}

void TControl::DoMouseLeave() {
  FIsMouseOver = false;
  if (OnMouseLeave) OnMouseLeave(this);
}

void TControl::DragEnter(const TDragObject& data, const TPointF& point) {
  if (OnDragEnter) OnDragEnter(this, data, point);
}

void TControl::DragOver(const TDragObject& data, const TPointF& point, TDragOperation& operation) {
  if (OnDragOver) OnDragOver(this, data, point, operation);
}

void TControl::DragDrop(const TDragObject& data, const TPointF& point) {
  if (OnDragDrop) OnDragDrop(this, data, point);
}

void TControl::DragLeave() {
  if (OnDragLeave) OnDragLeave(this);
}

void TControl::CMGesture(const TGestureEventInfo& eventInfo) {
  bool handled = false;
  if (OnGesture) OnGesture(this, eventInfo, handled);
  if (!handled)
    if (TControl* parent = ParentControl()) parent->CMGesture(eventInfo);
}

void TControl::KeyDown(int&, char16_t&, TShiftState) {}

// ---- painting

void TControl::Paint(TCanvas&, float) {}

void TControl::PaintTo(TCanvas& canvas, float parentOpacity) {
  if (!FVisible) return;
  float opacity = parentOpacity * FOpacity;
  if (opacity <= 0) return;
  TPointF origin = canvas.Offset();
  for (TFmxObject* o : ChildList())
    if (TBlurEffect* blur = o->AsBlurEffect(); blur && blur->Enabled() && blur->Softness() > 0) {
      PaintWithEffect(canvas, origin, opacity, blur->Softness());
      return;
    }
  TCanvas::TState saved = canvas.SaveState();
  const TPointF offset = OffsetInParent();
  TPointF mine{origin.X + offset.X, origin.Y + offset.Y};
  canvas.SetOffset(mine);
  TRectF absolute = LocalRect().Offset(mine.X, mine.Y);
  bool visibleHere = !absolute.Intersect(canvas.ClipRect()).IsEmpty();
  if (visibleHere) {
    if (OnPainting) OnPainting(this, canvas, LocalRect());
    Paint(canvas, opacity);
    if (OnPaint) OnPaint(this, canvas, LocalRect());
  }
  if (FClipChildren) {
    if (visibleHere) {
      canvas.IntersectClipRect(LocalRect());
      PaintChildren(canvas, mine, opacity);
    }
  } else {
    PaintChildren(canvas, mine, opacity);
  }
  canvas.RestoreState(saved);
}

void TControl::PaintChildren(TCanvas& canvas, TPointF origin, float opacity) {
  const std::vector<TRectF> shown = ShownParts(canvas, origin, opacity);
  const auto& children = ChildList();
  const TCanvas::TState saved = canvas.SaveState();
  for (std::size_t i = 0; i < children.size(); ++i) {
    TControl* c = children[i]->AsControl();
    if (!c || shown[i].IsEmpty()) continue;
    canvas.SetClipRect(shown[i]);
    canvas.SetOffset(origin);
    c->PaintTo(canvas, opacity);
  }
  canvas.RestoreState(saved);
}

bool TControl::HasBlurEffect() const {
  return std::ranges::any_of(ChildList(), [](TFmxObject* o) {
    const TBlurEffect* blur = o->AsBlurEffect();
    return blur && blur->Enabled() && blur->Softness() > 0;
  });
}

std::vector<TRectF> TControl::ShownParts(const TCanvas& canvas, TPointF origin, float opacity) const {
  const auto& children = ChildList();
  std::vector<TRectF> shown(children.size(), canvas.ClipRect());
  // Below full opacity every layer shows through the ones above it.
  if (opacity < 1 || shown.empty() || shown.front().IsEmpty()) return shown;
  TCoveredArea area;
  for (std::size_t i = children.size(); i-- > 0;) {
    const TControl* c = children[i]->AsControl();
    if (!c || !c->Visible() || c->HasBlurEffect()) continue;
    const TPointF offset = c->OffsetInParent();
    const float x = origin.X + offset.X, y = origin.Y + offset.Y;
    if (c->PaintsInsideBounds()) shown[i] = shown[i].Intersect(area.Uncovered(c->LocalRect().Offset(x, y)));
    if (c->Opacity() < 1) continue;
    if (const TRectF opaque = c->OpaqueRect(); !opaque.IsEmpty()) area.Add(opaque.Offset(x, y));
  }
  return shown;
}

void TControl::PaintWithEffect(TCanvas& canvas, TPointF origin, float opacity, float softness) {
  // Render the control alone, blur it, and draw the result with the spread around it.
  int spread = TBlurEffect::RadiusFor(softness) * 2;
  int w = static_cast<int>(std::ceil(FWidth)) + 2 * spread,
      h = static_cast<int>(std::ceil(FHeight)) + 2 * spread;
  if (w <= 0 || h <= 0) return;
  TBitmap layer(w, h);
  TCanvas& lc = layer.Canvas();
  lc.BeginScene();
  TPointF mine{static_cast<float>(spread), static_cast<float>(spread)};
  lc.SetOffset(mine);
  Paint(lc, 1);
  if (OnPaint) OnPaint(this, lc, LocalRect());
  if (FClipChildren) lc.IntersectClipRect(LocalRect());
  PaintChildren(lc, mine, 1);
  lc.EndScene();
  TBlurEffect::BlurBitmap(layer, softness);
  TCanvas::TState saved = canvas.SaveState();
  canvas.SetOffset({0, 0});
  const TPointF offset = OffsetInParent();
  float x = origin.X + offset.X - static_cast<float>(spread),
        y = origin.Y + offset.Y - static_cast<float>(spread);
  canvas.DrawBitmap(layer, TRectF(0, 0, static_cast<float>(w), static_cast<float>(h)),
                    TRectF::FromSize(x, y, static_cast<float>(w), static_cast<float>(h)), opacity);
  canvas.RestoreState(saved);
}

}  // namespace qx
