// Published properties and events of TControl.

#include <map>

#include "toolkit/Control.h"

namespace qx {

namespace {

TControl* C(TFmxObject* o) { return static_cast<TControl*>(o); }

TFloatPropertyInfo BoundsEdge(TBounds& (TControl::*bounds)(), int edge) {
  return {[bounds, edge](TFmxObject* o) {
            TRectF r = (C(o)->*bounds)().Rect();
            return edge == 0 ? r.Left : edge == 1 ? r.Top : edge == 2 ? r.Right : r.Bottom;
          },
          [bounds, edge](TFmxObject* o, float v) {
            TBounds& b = (C(o)->*bounds)();
            if (edge == 0) b.SetLeft(v);
            else if (edge == 1) b.SetTop(v);
            else if (edge == 2) b.SetRight(v);
            else b.SetBottom(v);
          }};
}

template <class F>
TEventBinder ControlEvent(F TControl::*member, const char* name) {
  return [member, name](TFmxObject* o, const std::any& handler) {
    const auto* fn = std::any_cast<F>(&handler);
    if (!fn) throw EPropertyError(std::string("Handler of the wrong type for event ") + name);
    C(o)->*member = *fn;
  };
}

TAlignLayout ParseAlign(const TStoredValue& v) {
  static const std::map<std::string, TAlignLayout> kNames = {
      {"none", TAlignLayout::None},           {"top", TAlignLayout::Top},
      {"left", TAlignLayout::Left},           {"right", TAlignLayout::Right},
      {"bottom", TAlignLayout::Bottom},       {"mosttop", TAlignLayout::MostTop},
      {"mostbottom", TAlignLayout::MostBottom}, {"mostleft", TAlignLayout::MostLeft},
      {"mostright", TAlignLayout::MostRight}, {"client", TAlignLayout::Client},
      {"contents", TAlignLayout::Contents},   {"center", TAlignLayout::Center},
      {"vertcenter", TAlignLayout::VertCenter}, {"horzcenter", TAlignLayout::HorzCenter},
      {"horizontal", TAlignLayout::Horizontal}, {"vertical", TAlignLayout::Vertical}};
  std::string id = StoredIdentifier(v, "Align");
  std::string lower;
  for (char c : id) lower.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
  if (lower.rfind("al", 0) == 0 && !kNames.count(lower)) lower = lower.substr(2);
  auto it = kNames.find(lower);
  if (it == kNames.end()) throw EPropertyError("Unknown Align value " + id);
  return it->second;
}

}  // namespace

const TPropertyTable& TControl::ClassProperties() {
  static const TPropertyTable table = [] {
    TPropertyTable t(&TFmxObject::ClassProperties());
    TFloatPropertyInfo x{[](TFmxObject* o) { return C(o)->Position().X(); },
                         [](TFmxObject* o, float v) { C(o)->Position().SetX(v); }};
    TFloatPropertyInfo y{[](TFmxObject* o) { return C(o)->Position().Y(); },
                         [](TFmxObject* o, float v) { C(o)->Position().SetY(v); }};
    TFloatPropertyInfo w{[](TFmxObject* o) { return C(o)->Width(); }, [](TFmxObject* o, float v) { C(o)->SetWidth(v); }};
    TFloatPropertyInfo h{[](TFmxObject* o) { return C(o)->Height(); },
                         [](TFmxObject* o, float v) { C(o)->SetHeight(v); }};
    t.Float("Position.X", x).Float("Position.Y", y);
    t.Float("Size.Width", w).Float("Width", w).Float("Size.Height", h).Float("Height", h);
    t.Float("Opacity", {[](TFmxObject* o) { return C(o)->Opacity(); }, [](TFmxObject* o, float v) { C(o)->SetOpacity(v); }});
    const char* edges[] = {"Left", "Top", "Right", "Bottom"};
    for (int e = 0; e < 4; ++e) {
      t.Float(std::string("Margins.") + edges[e], BoundsEdge(&TControl::Margins, e));
      t.Float(std::string("Padding.") + edges[e], BoundsEdge(&TControl::Padding, e));
    }
    t.Stored("Align", [](TFmxObject* o, const TStoredValue& v) { C(o)->SetAlign(ParseAlign(v)); });
    t.Stored("Visible", [](TFmxObject* o, const TStoredValue& v) { C(o)->SetVisible(StoredBool(v, "Visible")); });
    t.Stored("HitTest", [](TFmxObject* o, const TStoredValue& v) { C(o)->SetHitTest(StoredBool(v, "HitTest")); });
    t.Stored("Enabled", [](TFmxObject* o, const TStoredValue& v) { C(o)->SetEnabled(StoredBool(v, "Enabled")); });
    t.Stored("ClipChildren",
             [](TFmxObject* o, const TStoredValue& v) { C(o)->SetClipChildren(StoredBool(v, "ClipChildren")); });
    t.Stored("Locked", [](TFmxObject* o, const TStoredValue& v) { C(o)->Locked = StoredBool(v, "Locked"); });
    t.Stored("TabStop", [](TFmxObject* o, const TStoredValue& v) { C(o)->TabStop = StoredBool(v, "TabStop"); });
    t.Stored("CanFocus", [](TFmxObject* o, const TStoredValue& v) { C(o)->CanFocus = StoredBool(v, "CanFocus"); });
    t.Stored("TabOrder", [](TFmxObject* o, const TStoredValue& v) {
      C(o)->TabOrder = static_cast<int>(StoredFloat(v, "TabOrder"));
    });
    t.Stored("Touch.InteractiveGestures", [](TFmxObject* o, const TStoredValue& v) {
      if (v.Kind != TStoredValue::TKind::Set) throw EPropertyError("Touch.InteractiveGestures needs a set");
      static const std::map<std::string, TInteractiveGesture> kNames = {
          {"zoom", TInteractiveGesture::Zoom},         {"pan", TInteractiveGesture::Pan},
          {"rotate", TInteractiveGesture::Rotate},     {"twofingertap", TInteractiveGesture::TwoFingerTap},
          {"pressandtap", TInteractiveGesture::PressAndTap}, {"longtap", TInteractiveGesture::LongTap},
          {"doubletap", TInteractiveGesture::DoubleTap}};
      TInteractiveGestures gestures = 0;
      for (std::string item : v.Items) {
        auto dot = item.rfind('.');
        if (dot != std::string::npos) item = item.substr(dot + 1);
        std::string lower;
        for (char c : item) lower.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
        if (lower.rfind("igi", 0) == 0 || lower.rfind("ig", 0) == 0) lower = lower.substr(lower[2] == 'i' ? 3 : 2);
        auto it = kNames.find(lower);
        if (it == kNames.end()) throw EPropertyError("Unknown gesture " + item);
        gestures |= GestureBit(it->second);
      }
      C(o)->Touch().InteractiveGestures = gestures;
    });
    t.Event("OnClick", ControlEvent(&TControl::OnClick, "OnClick"));
    t.Event("OnDblClick", ControlEvent(&TControl::OnDblClick, "OnDblClick"));
    t.Event("OnMouseEnter", ControlEvent(&TControl::OnMouseEnter, "OnMouseEnter"));
    t.Event("OnMouseLeave", ControlEvent(&TControl::OnMouseLeave, "OnMouseLeave"));
    t.Event("OnResize", ControlEvent(&TControl::OnResize, "OnResize"));
    t.Event("OnDragLeave", ControlEvent(&TControl::OnDragLeave, "OnDragLeave"));
    t.Event("OnMouseDown", ControlEvent(&TControl::OnMouseDown, "OnMouseDown"));
    t.Event("OnMouseUp", ControlEvent(&TControl::OnMouseUp, "OnMouseUp"));
    t.Event("OnMouseMove", ControlEvent(&TControl::OnMouseMove, "OnMouseMove"));
    t.Event("OnMouseWheel", ControlEvent(&TControl::OnMouseWheel, "OnMouseWheel"));
    t.Event("OnDragEnter", ControlEvent(&TControl::OnDragEnter, "OnDragEnter"));
    t.Event("OnDragOver", ControlEvent(&TControl::OnDragOver, "OnDragOver"));
    t.Event("OnDragDrop", ControlEvent(&TControl::OnDragDrop, "OnDragDrop"));
    t.Event("OnGesture", ControlEvent(&TControl::OnGesture, "OnGesture"));
    t.Event("OnPaint", ControlEvent(&TControl::OnPaint, "OnPaint"));
    return t;
  }();
  return table;
}

}  // namespace qx
