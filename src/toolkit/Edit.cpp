#include "toolkit/Edit.h"

#include <cmath>

#include "base/Text.h"

namespace qx {

TCaret::TCaret(TEdit* edit) : TAnimation(edit), FEdit(edit) {
  StyleName = u"caret";
  Loop = true;
  Duration = 1000000;
}

void TCaret::ResetFlash() {
  FFlashVisible = true;
  FLastToggle = -1;
  FEdit->Repaint();
}

void TCaret::ProcessTick(double time, double) {
  if (!Running()) return;
  if (FLastToggle < 0) FLastToggle = time;
  if (time - FLastToggle >= FlashInterval) {
    FLastToggle = time;
    FFlashVisible = !FFlashVisible;
    FEdit->Repaint();
  }
}

TEdit::TEdit(TFmxObject* owner) : TStyledControl(owner) {
  CanFocus = true;
  FCaret = new TCaret(this);
}

void TEdit::SetText(const std::u16string& text) {
  std::u16string t = MaxLength > 0 && static_cast<int>(text.size()) > MaxLength ? text.substr(0, MaxLength) : text;
  if (t == FText) return;
  FText = t;
  FCaretPosition = std::min(FCaretPosition, static_cast<int>(FText.size()));
  Repaint();
  if (OnChangeTracking) OnChangeTracking(this);
  if (OnChange) OnChange(this);
}

void TEdit::SetCaretPosition(int position) {
  FCaretPosition = std::clamp(position, 0, static_cast<int>(FText.size()));
  FCaret->ResetFlash();
}

void TEdit::KeyDown(int& key, char16_t& keyChar, TShiftState shift) {
  TStyledControl::KeyDown(key, keyChar, shift);
  auto pos = static_cast<std::size_t>(FCaretPosition);
  if (key == vkLeft) SetCaretPosition(FCaretPosition - 1);
  else if (key == vkRight) SetCaretPosition(FCaretPosition + 1);
  else if (key == vkHome) SetCaretPosition(0);
  else if (key == vkEnd) SetCaretPosition(static_cast<int>(FText.size()));
  else if (!ReadOnly && key == vkBack && pos > 0) {
    std::u16string t = FText;
    t.erase(pos - 1, 1);
    --FCaretPosition;
    SetText(t);
    FCaret->ResetFlash();
  } else if (!ReadOnly && key == vkDelete && pos < FText.size()) {
    std::u16string t = FText;
    t.erase(pos, 1);
    SetText(t);
  } else if (!ReadOnly && key == 0 && keyChar >= 32) {
    if (MaxLength > 0 && static_cast<int>(FText.size()) >= MaxLength) return;
    std::u16string t = FText;
    t.insert(pos, 1, keyChar);
    FCaretPosition += 1;  // first, so OnChange sees the caret after the new character
    SetText(t);
    FCaret->ResetFlash();
  } else {
    return;
  }
  key = 0;
  keyChar = 0;
}

void TEdit::MouseDown(TMouseButton button, TShiftState shift, float x, float y) {
  TStyledControl::MouseDown(button, shift, x, y);
  SetFocus();
  // The caret goes to the nearest boundary between characters.
  float best = 1e9f;
  int at = 0;
  for (int i = 0; i <= static_cast<int>(FText.size()); ++i) {
    float edge = TextLeft() + TTextLayout::MeasureWidth(TextSettings.Font, FText.substr(0, static_cast<std::size_t>(i)));
    if (std::fabs(edge - x) < best) {
      best = std::fabs(edge - x);
      at = i;
    }
  }
  SetCaretPosition(at);
}

void TEdit::DoEnter() {
  FCaret->ResetFlash();
  FCaret->Start();
}

void TEdit::DoExit() { FCaret->StopAtCurrent(); }

void TEdit::Paint(TCanvas& canvas, float opacity) {
  TStyledControl::Paint(canvas, opacity);
  canvas.FillRect(LocalRect(), BackgroundColor, opacity);
  TRectF area(TextLeft(), 0, Width() - TextLeft(), Height());
  TTextPainter text;
  text.Text = FText;
  text.TextSettings = TextSettings;
  text.TextSettings.Trimming = TTextTrimming::None;
  text.PaintText(canvas, area, opacity);
  if (IsFocused() && FCaret->Visible && FCaret->FlashVisible()) {
    float x = TextLeft() + TTextLayout::MeasureWidth(TextSettings.Font,
                                                     FText.substr(0, static_cast<std::size_t>(FCaretPosition)));
    float h = std::min(Height() - 4, TextSettings.Font.Size * 1.3f);
    canvas.FillRect(TRectF::FromSize(std::round(x), std::round((Height() - h) / 2), FCaret->CaretWidth, h), FCaret->Color,
                    opacity);
  }
}

const TPropertyTable& TEdit::ClassProperties() {
  static const TPropertyTable table = [] {
    auto E = [](TFmxObject* o) { return static_cast<TEdit*>(o); };
    TPropertyTable t(&TControl::ClassProperties());
    t.Stored("Text", [E](TFmxObject* o, const TStoredValue& v) { E(o)->SetText(StoredText(v, "Text")); });
    t.Stored("MaxLength", [E](TFmxObject* o, const TStoredValue& v) {
      E(o)->MaxLength = static_cast<int>(StoredFloat(v, "MaxLength"));
    });
    t.Stored("ReadOnly", [E](TFmxObject* o, const TStoredValue& v) { E(o)->ReadOnly = StoredBool(v, "ReadOnly"); });
    t.Stored("TextSettings.Font.Family", [E](TFmxObject* o, const TStoredValue& v) {
      E(o)->TextSettings.Font.Family = StoredText(v, "TextSettings.Font.Family");
    });
    t.Float("TextSettings.Font.Size", {[E](TFmxObject* o) { return E(o)->TextSettings.Font.Size; },
                                       [E](TFmxObject* o, float v) { E(o)->TextSettings.Font.Size = v; }});
    t.Stored("TextSettings.FontColor", [E](TFmxObject* o, const TStoredValue& v) {
      E(o)->TextSettings.FontColor = StoredColor(v, "TextSettings.FontColor");
    });
    t.Stored("Caret.Color",
             [E](TFmxObject* o, const TStoredValue& v) { E(o)->Caret().Color = StoredColor(v, "Caret.Color"); });
    t.Event("OnChange", BindEvent(&TEdit::OnChange, "OnChange"));
    t.Event("OnChangeTracking", BindEvent(&TEdit::OnChangeTracking, "OnChangeTracking"));
    return t;
  }();
  return table;
}

}  // namespace qx
