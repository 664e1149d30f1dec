#include "toolkit/ScrollBar.h"

#include <algorithm>

namespace qx {

void TScrollBar::Clamp() {
  float hi = std::max(FMin, FMax - FViewportSize);
  float v = std::clamp(FValue, FMin, hi);
  if (v != FValue) {
    FValue = v;
    if (OnChange) OnChange(this);
  }
}

void TScrollBar::SetValue(float value) {
  float hi = std::max(FMin, FMax - FViewportSize);
  value = std::clamp(value, FMin, hi);
  if (value == FValue) return;
  FValue = value;
  Repaint();
  if (OnChange) OnChange(this);
}

void TScrollBar::SetMin(float value) {
  FMin = value;
  Clamp();
  Repaint();
}

void TScrollBar::SetMax(float value) {
  FMax = value;
  Clamp();
  Repaint();
}

void TScrollBar::SetViewportSize(float value) {
  FViewportSize = std::max(0.0f, value);
  Clamp();
  Repaint();
}

TRectF TScrollBar::ThumbRect() const {
  bool horz = Orientation == TOrientation::Horizontal;
  float track = horz ? Width() : Height();
  float range = FMax - FMin;
  if (range <= 0 || track <= 0) return {};
  float size = std::clamp(FViewportSize / range, 0.0f, 1.0f) * track;
  size = std::max(size, std::min(track, 8.0f));
  float movable = range - FViewportSize;
  float pos = movable > 0 ? (FValue - FMin) / movable * (track - size) : 0;
  return horz ? TRectF::FromSize(pos, 0, size, Height()) : TRectF::FromSize(0, pos, Width(), size);
}

void TScrollBar::Paint(TCanvas& canvas, float opacity) {
  TStyledControl::Paint(canvas, opacity);
  TRectF thumb = ThumbRect();
  if (!thumb.IsEmpty()) canvas.FillRoundRect(thumb, 3, ThumbColor, opacity);
}

void TScrollBar::MouseDown(TMouseButton button, TShiftState shift, float x, float y) {
  TStyledControl::MouseDown(button, shift, x, y);
  if (button != TMouseButton::mbLeft) return;
  bool horz = Orientation == TOrientation::Horizontal;
  TRectF thumb = ThumbRect();
  float p = horz ? x : y;
  if (thumb.Contains({x, y})) {
    FDragging = true;
    FDragOffset = p - (horz ? thumb.Left : thumb.Top);
  } else {
    // A click on the track pages towards the click.
    float page = FViewportSize > 0 ? FViewportSize : SmallChange;
    SetValue(FValue + (p < (horz ? thumb.Left : thumb.Top) ? -page : page));
  }
}

void TScrollBar::MouseMove(TShiftState shift, float x, float y) {
  TStyledControl::MouseMove(shift, x, y);
  if (!FDragging) return;
  bool horz = Orientation == TOrientation::Horizontal;
  TRectF thumb = ThumbRect();
  float track = horz ? Width() : Height();
  float size = horz ? thumb.Width() : thumb.Height();
  float movable = FMax - FMin - FViewportSize;
  if (track - size <= 0 || movable <= 0) return;
  float pos = (horz ? x : y) - FDragOffset;
  SetValue(FMin + pos / (track - size) * movable);
}

void TScrollBar::MouseUp(TMouseButton button, TShiftState shift, float x, float y) {
  FDragging = false;
  TStyledControl::MouseUp(button, shift, x, y);
}

void TScrollBar::MouseWheel(TShiftState shift, int wheelDelta, bool& handled) {
  TStyledControl::MouseWheel(shift, wheelDelta, handled);
  if (handled) return;
  SetValue(FValue - static_cast<float>(wheelDelta) / 120.0f * SmallChange);
  handled = true;
}

const TPropertyTable& TScrollBar::ClassProperties() {
  static const TPropertyTable table = [] {
    auto S = [](TFmxObject* o) { return static_cast<TScrollBar*>(o); };
    TPropertyTable t(&TControl::ClassProperties());
    t.Float("Value", {[S](TFmxObject* o) { return S(o)->Value(); }, [S](TFmxObject* o, float v) { S(o)->SetValue(v); }});
    t.Float("Min", {[S](TFmxObject* o) { return S(o)->Min(); }, [S](TFmxObject* o, float v) { S(o)->SetMin(v); }});
    t.Float("Max", {[S](TFmxObject* o) { return S(o)->Max(); }, [S](TFmxObject* o, float v) { S(o)->SetMax(v); }});
    t.Float("ViewportSize", {[S](TFmxObject* o) { return S(o)->ViewportSize(); },
                             [S](TFmxObject* o, float v) { S(o)->SetViewportSize(v); }});
    t.Float("SmallChange", {[S](TFmxObject* o) { return S(o)->SmallChange; },
                            [S](TFmxObject* o, float v) { S(o)->SmallChange = v; }});
    t.Stored("Orientation", [S](TFmxObject* o, const TStoredValue& v) {
      std::string id = StoredIdentifier(v, "Orientation");
      if (id == "Horizontal" || id == "orHorizontal") S(o)->Orientation = TOrientation::Horizontal;
      else if (id == "Vertical" || id == "orVertical") S(o)->Orientation = TOrientation::Vertical;
      else throw EPropertyError("Unknown Orientation value " + id);
    });
    t.Event("OnChange", BindEvent(&TScrollBar::OnChange, "OnChange"));
    return t;
  }();
  return table;
}

}  // namespace qx
