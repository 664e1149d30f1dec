#include "cabinet/CabinetBarIconParts.h"

#include "toolkit/Canvas.h"

namespace qx {

TCabinetIconLayout* TCabinetIconLayout::OuterLayout() const {
  for (TFmxObject* p = Parent(); p; p = p->Parent())
    if (auto* layout = dynamic_cast<TCabinetIconLayout*>(p)) return layout;
  return nullptr;
}

void TCabinetIconLayout::SetStatus(bool hovered, bool pressed) {
  if (hovered == FIsHovered && pressed == FIsPressed) return;
  FIsHovered = hovered;
  FIsPressed = pressed;
  if (OnChangeStatus) OnChangeStatus(this);
}

void TCabinetIconLayout::DoMouseEnter() {
  TLayout::DoMouseEnter();
  SetStatus(true, FIsPressed);
  if (TCabinetIconLayout* outer = OuterLayout()) outer->DoMouseEnter();
}

void TCabinetIconLayout::DoMouseLeave() {
  TLayout::DoMouseLeave();
  SetStatus(false, false);
  if (TCabinetIconLayout* outer = OuterLayout()) outer->DoMouseLeave();
}

void TCabinetIconLayout::MouseDown(TMouseButton button, TShiftState shift, float x, float y) {
  TLayout::MouseDown(button, shift, x, y);
  if (button == TMouseButton::mbLeft) SetStatus(FIsHovered, true);
}

void TCabinetIconLayout::MouseMove(TShiftState shift, float x, float y) {
  TLayout::MouseMove(shift, x, y);
  if (TCabinetIconLayout* outer = OuterLayout()) {
    const TPointF p = outer->AbsoluteToLocal(LocalToAbsolute({x, y}));
    outer->MouseMove(shift, p.X, p.Y);
  }
}

void TCabinetIconLayout::MouseUp(TMouseButton button, TShiftState shift, float x, float y) {
  TLayout::MouseUp(button, shift, x, y);
  if (button == TMouseButton::mbLeft) SetStatus(FIsHovered, false);
}

void TTextPaintBox::SetTitle(const std::u16string& title) {
  if (title == FTitle) return;
  FTitle = title;
  Repaint();
}

void TTextPaintBox::SetFontName(const std::u16string& name) {
  if (name == FFontName) return;
  FFontName = name;
  Repaint();
}

void TTextPaintBox::SetFontSize(float size) {
  if (size == FFontSize) return;
  FFontSize = size;
  Repaint();
}

void TTextPaintBox::SetIconTextBackStatus(TIconTextBackStatus status) {
  if (status == FIconTextBackStatus) return;
  FIconTextBackStatus = status;
  Repaint();
}

TFont TTextPaintBox::TitleFont() const {
  TFont font;
  if (!FFontName.empty()) font.Family = FFontName;
  font.Size = FFontSize;
  font.Style = static_cast<TFontStyles>(TFontStyle::Bold);
  return font;
}

void TTextPaintBox::Paint(TCanvas& canvas, float opacity) {
  TPaintBox::Paint(canvas, opacity);
  if (FTitle.empty()) return;
  if (!canvas.BeginScene()) return;
  canvas.Font = TitleFont();
  canvas.Fill = TBrush{TBrushKind::Solid, TextColor()};
  canvas.FillText(LocalRect(), FTitle, false, opacity, TTextAlign::Leading, TTextAlign::Center,
                  TTextTrimming::Character);
  canvas.EndScene();
}

}  // namespace qx
