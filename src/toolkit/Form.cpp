#include "toolkit/Form.h"

#include <cmath>

#include "toolkit/Managers.h"

namespace qx {

void AlignFormControls(const std::vector<TControl*>& controls, TRectF content, TRectF whole);

TCommonCustomForm::TCommonCustomForm(TFmxObject* owner) : TFmxObject(owner) {
  FPadding.OnChange = [this] { Realign(); };
}

TCommonCustomForm::~TCommonCustomForm() {
  SetDestroying();
  Unwatch(FCaptured);
  Unwatch(FHovered);
  Unwatch(FFocused);
  Unwatch(FDragTarget);
  Unwatch(FPanTarget);
  Unwatch(FDownTarget);
  FCaptured = FHovered = FFocused = FDragTarget = FPanTarget = FDownTarget = nullptr;
  DestroyHandle();
}

// ---- watched controls: cleared when they die

void TCommonCustomForm::Watch(TControl* control) {
  if (control) control->AddFreeNotify(this);
}

void TCommonCustomForm::Unwatch(TControl* control) {
  if (!control) return;
  // Still referenced through another field? Keep watching.
  int uses = (FCaptured == control) + (FHovered == control) + (FFocused == control) +
             (FDragTarget == control) + (FPanTarget == control) + (FDownTarget == control);
  if (uses <= 1) control->RemoveFreeNotify(this);
}

void TCommonCustomForm::Notification(TFmxObject* object) {
  if (FCaptured == object) FCaptured = nullptr;
  if (FHovered == object) FHovered = nullptr;
  if (FFocused == object) FFocused = nullptr;
  if (FDragTarget == object) FDragTarget = nullptr;
  if (FPanTarget == object) FPanTarget = nullptr;
  if (FDownTarget == object) FDownTarget = nullptr;
}

void TCommonCustomForm::SetCaptured(TControl* control) {
  if (control == FCaptured) return;
  Unwatch(FCaptured);
  FCaptured = control;
  Watch(control);
}

void TCommonCustomForm::SetFocused(TControl* control) {
  if (control == FFocused) return;
  TControl* old = FFocused;
  Unwatch(FFocused);
  FFocused = control;
  Watch(control);
  if (old) {
    old->DoExit();
    old->Repaint();
  }
  if (control && FFocused == control) {
    control->DoEnter();
    control->Repaint();
  }
}

void TCommonCustomForm::SetHovered(TControl* control) {
  if (control == FHovered) return;
  TControl* old = FHovered;
  Unwatch(FHovered);
  FHovered = control;
  Watch(control);
  if (old) old->DoMouseLeave();
  if (control && FHovered == control) control->DoMouseEnter();
}

// ---- bounds

void TCommonCustomForm::SetBoundsFields(int left, int top, int width, int height) {
  FLeft = left;
  FTop = top;
  FWidth = std::max(0, width);
  FHeight = std::max(0, height);
}

void TCommonCustomForm::SetBounds(int left, int top, int width, int height) {
  bool sized = width != FWidth || height != FHeight;
  if (!sized && left == FLeft && top == FTop) return;
  SetBoundsFields(left, top, width, height);
  // Fields first: the window's own size and move messages then find nothing to do.
  if (FHandle)
    Platform().SetWindowPos(FHandle, nullptr, FLeft, FTop, FWidth, FHeight,
                            win::SWP_NOZORDER | win::SWP_NOACTIVATE);
  if (sized) {
    Realign();
    Resize();
    Invalidate();
  }
}

void TCommonCustomForm::Resize() {
  if (OnResize) OnResize(this);
}

void TCommonCustomForm::SetVisible(bool value) {
  if (value == FVisible) return;
  FVisible = value;
  if (value) {
    HandleNeed();
    // A window shown already (a popup embedded with SW_SHOWNA) is not shown again.
    if (FHandle &&
        !(static_cast<std::uint32_t>(Platform().GetWindowLongW(FHandle, win::GWL_STYLE)) & win::WS_VISIBLE))
      Platform().ShowWindow(FHandle, FormStyle == TFormStyle::Popup ? win::SW_SHOWNOACTIVATE : win::SW_SHOW);
    Invalidate();
    if (OnShow) OnShow(this);
  } else {
    SetCaptured(nullptr);
    if (FHandle) Platform().ShowWindow(FHandle, win::SW_HIDE);
    if (OnHide) OnHide(this);
  }
}

// ---- content

std::vector<TControl*> TCommonCustomForm::Controls() const {
  std::vector<TControl*> out;
  for (TFmxObject* o : ChildList())
    if (TControl* c = o->AsControl()) out.push_back(c);
  return out;
}

void TCommonCustomForm::DoAddObject(TFmxObject* object) {
  if (auto* c = dynamic_cast<TControl*>(object)) {
    if (c->Align() != TAlignLayout::None) Realign();
    c->Repaint();
  }
}

void TCommonCustomForm::Realign() {
  if (IsDestroying()) return;
  TRectF p = FPadding.Rect();
  TRectF whole = ClientRect();
  AlignFormControls(Controls(), {p.Left, p.Top, whole.Right - p.Right, whole.Bottom - p.Bottom}, whole);
}

TControl* TCommonCustomForm::ObjectAtPoint(TPointF clientPoint) const {
  const std::vector<TFmxObject*>& children = ChildList();
  for (auto it = children.rbegin(); it != children.rend(); ++it)
    if (TControl* control = (*it)->AsControl())
      if (TControl* hit = control->ObjectAtPoint(clientPoint)) return hit;
  return nullptr;
}

// ---- mouse

void TCommonCustomForm::MouseDown(TMouseButton button, TShiftState shift, float x, float y) {
  TControl* target = ObjectAtPoint({x, y});
  SetHovered(target);
  if (!target) {
    if (OnMouseDown) OnMouseDown(this, button, shift, x, y);
    return;
  }
  if (target->AutoCapture) SetCaptured(target);
  Unwatch(FDownTarget);
  FDownTarget = target;
  Watch(target);
  FDownButton = button;
  TPointF local = target->AbsoluteToLocal({x, y});
  target->MouseDown(button, shift, local.X, local.Y);
  if ((shift & ss::Double) && FDownTarget == target) target->DblClick();
}

void TCommonCustomForm::MouseMove(TShiftState shift, float x, float y) {
  TControl* target = FCaptured;
  if (!target) {
    target = ObjectAtPoint({x, y});
    SetHovered(target);
  } else {
    // While captured, enter and leave follow whether the pointer is over the captured control.
    SetHovered(ObjectAtPoint({x, y}) == target ? target : nullptr);
    if (!FCaptured) return;
    target = FCaptured;
  }
  if (!target) {
    if (OnMouseMove) OnMouseMove(this, shift, x, y);
    return;
  }
  TPointF local = target->AbsoluteToLocal({x, y});
  target->MouseMove(shift, local.X, local.Y);
}

void TCommonCustomForm::MouseUp(TMouseButton button, TShiftState shift, float x, float y) {
  TControl* target = FCaptured ? FCaptured : ObjectAtPoint({x, y});
  SetCaptured(nullptr);
  Unwatch(FDownTarget);
  FDownTarget = nullptr;
  if (!target) {
    if (OnMouseUp) OnMouseUp(this, button, shift, x, y);
    return;
  }
  TPointF local = target->AbsoluteToLocal({x, y});
  target->MouseUp(button, shift, local.X, local.Y);
  // Enter and leave catch up with where the pointer is now.
  SetHovered(ObjectAtPoint({x, y}));
}

void TCommonCustomForm::MouseWheel(TShiftState shift, int wheelDelta, bool& handled) {
  TControl* target = FCaptured ? FCaptured : (FHovered ? FHovered : FFocused);
  TFmxObject* o = target;
  while (o && !handled) {
    if (auto* c = dynamic_cast<TControl*>(o)) c->MouseWheel(shift, wheelDelta, handled);
    o = o->Parent();
    if (o == this) break;
  }
}

void TCommonCustomForm::MouseLeave() {
  if (!FCaptured) SetHovered(nullptr);
}

void TCommonCustomForm::KeyDown(int& key, char16_t& keyChar, TShiftState shift) {
  if (FFocused) FFocused->KeyDown(key, keyChar, shift);
}

// ---- drag and drop (points stay in client coordinates)

void TCommonCustomForm::DragEnter(const TDragObject& data, const TPointF& point) {
  TControl* target = ObjectAtPoint(point);
  Unwatch(FDragTarget);
  FDragTarget = target;
  Watch(target);
  if (target) target->DragEnter(data, point);
}

void TCommonCustomForm::DragOver(const TDragObject& data, const TPointF& point, TDragOperation& operation) {
  TControl* target = ObjectAtPoint(point);
  if (target != FDragTarget) {
    TControl* old = FDragTarget;
    Unwatch(FDragTarget);
    FDragTarget = target;
    Watch(target);
    if (old) old->DragLeave();
    if (target && FDragTarget == target) target->DragEnter(data, point);
  }
  operation = TDragOperation::None;
  if (FDragTarget) FDragTarget->DragOver(data, point, operation);
}

void TCommonCustomForm::DragDrop(const TDragObject& data, const TPointF& point) {
  TControl* target = ObjectAtPoint(point);
  Unwatch(FDragTarget);
  FDragTarget = nullptr;
  if (target) target->DragDrop(data, point);
}

void TCommonCustomForm::DragLeave() {
  TControl* old = FDragTarget;
  Unwatch(FDragTarget);
  FDragTarget = nullptr;
  if (old) old->DragLeave();
}

// ---- touch: the pan gesture

TControl* TCommonCustomForm::GestureTarget(TPointF point) const {
  for (TControl* c = ObjectAtPoint(point); c; c = c->ParentControl())
    if (c->Touch().Has(TInteractiveGesture::Pan)) return c;
  // A control that asks for pans but does not hit-test itself (a layout) still gets them.
  std::vector<TControl*> controls = Controls();
  for (auto it = controls.rbegin(); it != controls.rend(); ++it) {
    std::vector<TControl*> stack{*it};
    while (!stack.empty()) {
      TControl* c = stack.back();
      stack.pop_back();
      if (!c->Visible() || !c->AbsoluteRect().Contains(point)) continue;
      if (c->Touch().Has(TInteractiveGesture::Pan)) return c;
      for (TControl* child : c->Controls()) stack.push_back(child);
    }
  }
  return nullptr;
}

void TCommonCustomForm::TouchDown(TPointF point) {
  Unwatch(FPanTarget);
  FPanTarget = GestureTarget(point);
  Watch(FPanTarget);
  FTouchStart = point;
  FPanning = false;
}

void TCommonCustomForm::TouchMove(TPointF point) {
  if (!FPanTarget) return;
  float dx = point.X - FTouchStart.X, dy = point.Y - FTouchStart.Y;
  int distance = static_cast<int>(std::lround(std::sqrt(dx * dx + dy * dy)));
  TGestureEventInfo info;
  info.GestureID = igiPan;
  info.Location = point;
  info.Distance = distance;
  if (!FPanning) {
    if (distance < 5) return;  // not a pan yet
    FPanning = true;
    info.Flags = gf::Begin;
  }
  FPanTarget->CMGesture(info);
}

void TCommonCustomForm::TouchUp(TPointF point) {
  TControl* target = FPanTarget;
  bool panning = FPanning;
  Unwatch(FPanTarget);
  FPanTarget = nullptr;
  FPanning = false;
  if (!target || !panning) return;
  float dx = point.X - FTouchStart.X, dy = point.Y - FTouchStart.Y;
  TGestureEventInfo info;
  info.GestureID = igiPan;
  info.Location = point;
  info.Distance = static_cast<int>(std::lround(std::sqrt(dx * dx + dy * dy)));
  info.Flags = gf::End;
  target->CMGesture(info);
}

// ---- painting

void TCommonCustomForm::Invalidate(const TRectF& clientRect) {
  TRectF changed = clientRect.Intersect(ClientRect());
  if (changed.IsEmpty()) return;
  FUpdateRect = FUpdateRect.Union(changed);
  if (FHandle) {
    TRect r{static_cast<std::int32_t>(std::floor(changed.Left)),
            static_cast<std::int32_t>(std::floor(changed.Top)),
            static_cast<std::int32_t>(std::ceil(changed.Right)),
            static_cast<std::int32_t>(std::ceil(changed.Bottom))};
    Platform().InvalidateRect(FHandle, &r, false);
  }
}

void TCommonCustomForm::PaintTo(TCanvas& canvas) {
  canvas.BeginScene();
  TContextManager::ContextCreated();
  if (Transparency)
    canvas.Clear(TAlphaColors::Null);
  else
    canvas.Clear(Fill.Kind == TBrushKind::Solid ? Fill.Color : TAlphaColors::Null);
  for (TControl* c : Controls()) {
    canvas.SetOffset({0, 0});
    c->PaintTo(canvas, 1);
  }
  canvas.EndScene();
  FLastPainted = FUpdateRect;
  FUpdateRect = {};
}

TBitmap& TCommonCustomForm::RenderToBitmap() {
  if (FSurface.Width() != FWidth || FSurface.Height() != FHeight) FSurface.SetSize(FWidth, FHeight);
  if (!FSurface.IsEmpty()) PaintTo(FSurface.Canvas());
  return FSurface;
}

// ---- properties

const TPropertyTable& TCommonCustomForm::ClassProperties() {
  static const TPropertyTable table = [] {
    auto F = [](TFmxObject* o) { return static_cast<TCommonCustomForm*>(o); };
    auto intProp = [F](void (TCommonCustomForm::*set)(int), const char* name) {
      return [F, set, name](TFmxObject* o, const TStoredValue& v) {
        (F(o)->*set)(static_cast<int>(std::lround(StoredFloat(v, name))));
      };
    };
    TPropertyTable t(&TFmxObject::ClassProperties());
    t.Stored("Left", intProp(&TCommonCustomForm::SetLeft, "Left"));
    t.Stored("Top", intProp(&TCommonCustomForm::SetTop, "Top"));
    t.Stored("Width", intProp(&TCommonCustomForm::SetWidth, "Width"));
    t.Stored("Height", intProp(&TCommonCustomForm::SetHeight, "Height"));
    t.Stored("ClientWidth", intProp(&TCommonCustomForm::SetClientWidth, "ClientWidth"));
    t.Stored("ClientHeight", intProp(&TCommonCustomForm::SetClientHeight, "ClientHeight"));
    t.Stored("Caption",
             [F](TFmxObject* o, const TStoredValue& v) { F(o)->Caption = StoredText(v, "Caption"); });
    t.Stored("Transparency", [F](TFmxObject* o, const TStoredValue& v) {
      F(o)->Transparency = StoredBool(v, "Transparency");
    });
    t.Stored("Visible",
             [F](TFmxObject* o, const TStoredValue& v) { F(o)->SetVisible(StoredBool(v, "Visible")); });
    t.Stored("Fill.Color",
             [F](TFmxObject* o, const TStoredValue& v) { F(o)->Fill.Color = StoredColor(v, "Fill.Color"); });
    t.Stored("BorderStyle", [F](TFmxObject* o, const TStoredValue& v) {
      std::string id = StoredIdentifier(v, "BorderStyle");
      static const std::pair<const char*, TFmxFormBorderStyle> kNames[] = {
          {"None", TFmxFormBorderStyle::None},
          {"Single", TFmxFormBorderStyle::Single},
          {"Sizeable", TFmxFormBorderStyle::Sizeable},
          {"ToolWindow", TFmxFormBorderStyle::ToolWindow},
          {"SizeToolWin", TFmxFormBorderStyle::SizeToolWin},
          {"bsNone", TFmxFormBorderStyle::None},
          {"bsSingle", TFmxFormBorderStyle::Single},
          {"bsSizeable", TFmxFormBorderStyle::Sizeable}};
      for (auto& [name, value] : kNames)
        if (id == name) return void(F(o)->BorderStyle = value);
      throw EPropertyError("Unknown BorderStyle value " + id);
    });
    t.Stored("FormStyle", [F](TFmxObject* o, const TStoredValue& v) {
      std::string id = StoredIdentifier(v, "FormStyle");
      static const std::pair<const char*, TFormStyle> kNames[] = {
          {"Normal", TFormStyle::Normal},       {"Popup", TFormStyle::Popup},
          {"StayOnTop", TFormStyle::StayOnTop}, {"fsNormal", TFormStyle::Normal},
          {"fsPopup", TFormStyle::Popup},       {"fsStayOnTop", TFormStyle::StayOnTop}};
      for (auto& [name, value] : kNames)
        if (id == name) return void(F(o)->FormStyle = value);
      throw EPropertyError("Unknown FormStyle value " + id);
    });
    auto formEvent = [F](auto member, const char* name) {
      return [F, member, name](TFmxObject* o, const std::any& handler) {
        using Fn = std::remove_reference_t<decltype(F(o)->*member)>;
        const auto* fn = std::any_cast<Fn>(&handler);
        if (!fn) throw EPropertyError(std::string("Handler of the wrong type for event ") + name);
        F(o)->*member = *fn;
      };
    };
    t.Event("OnMouseDown", formEvent(&TCommonCustomForm::OnMouseDown, "OnMouseDown"));
    t.Event("OnMouseUp", formEvent(&TCommonCustomForm::OnMouseUp, "OnMouseUp"));
    t.Event("OnMouseMove", formEvent(&TCommonCustomForm::OnMouseMove, "OnMouseMove"));
    t.Event("OnResize", formEvent(&TCommonCustomForm::OnResize, "OnResize"));
    t.Event("OnShow", formEvent(&TCommonCustomForm::OnShow, "OnShow"));
    t.Event("OnHide", formEvent(&TCommonCustomForm::OnHide, "OnHide"));
    return t;
  }();
  return table;
}

}  // namespace qx
