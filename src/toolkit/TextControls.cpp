#include "toolkit/TextControls.h"

#include <cmath>
#include <map>

#include "base/Text.h"

namespace qx {

TSizeF TTextPainter::TextSize(float maxWidth) const {
  TTextLayout layout;
  layout.BeginUpdate();
  layout.Text = Text;
  layout.Font = TextSettings.Font;
  layout.WordWrap = TextSettings.WordWrap;
  layout.MaxSize = {TextSettings.WordWrap && maxWidth > 0 ? maxWidth : 65535.0f, 65535};
  layout.EndUpdate();
  return {std::ceil(layout.TextWidth()), std::ceil(layout.TextHeight())};
}

void TTextPainter::PaintText(TCanvas& canvas, const TRectF& rect, float opacity) const {
  if (Text.empty()) return;
  TTextLayout layout;
  layout.BeginUpdate();
  layout.Text = Text;
  layout.Font = TextSettings.Font;
  layout.Color = TextSettings.FontColor;
  layout.TopLeft = {rect.Left, rect.Top};
  layout.MaxSize = {rect.Width(), rect.Height()};
  layout.WordWrap = TextSettings.WordWrap;
  layout.HorizontalAlign = TextSettings.HorzAlign;
  layout.VerticalAlign = TextSettings.VertAlign;
  layout.Trimming = TextSettings.Trimming;
  layout.Opacity = opacity;
  layout.EndUpdate();
  TCanvas::TState saved = canvas.SaveState();
  canvas.IntersectClipRect(rect);
  layout.RenderLayout(&canvas);
  canvas.RestoreState(saved);
}

void TText::SetText(const std::u16string& text) {
  if (text == Text) return;
  Text = text;
  TextChanged();
}

void TText::TextChanged() {
  if (AutoSize) {
    TSizeF s = TextSize(Width());
    SetBounds(Position().X(), Position().Y(), TextSettings.WordWrap ? Width() : s.cx, s.cy);
  }
  Repaint();
}

void TText::Paint(TCanvas& canvas, float opacity) { PaintText(canvas, LocalRect(), opacity); }

void TLabel::SetText(const std::u16string& text) {
  if (text == Text) return;
  Text = text;
  TextChanged();
}

void TLabel::TextChanged() {
  if (AutoSize) {
    TSizeF s = TextSize(Width());
    SetBounds(Position().X(), Position().Y(), TextSettings.WordWrap ? Width() : s.cx, s.cy);
  }
  Repaint();
}

void TLabel::Paint(TCanvas& canvas, float opacity) {
  TStyledControl::Paint(canvas, opacity);
  PaintText(canvas, LocalRect(), opacity);
}

namespace {

template <class T>
void AddTextProperties(TPropertyTable& t, const std::string& prefix, const std::string& alignSuffix) {
  auto P = [](TFmxObject* o) -> T* { return static_cast<T*>(o); };
  auto changed = [P](TFmxObject* o) { P(o)->TextChanged(); };
  auto align = [](const TStoredValue& v, const std::string& name) {
    std::string id = StoredIdentifier(v, name);
    static const std::map<std::string, TTextAlign> kNames = {
        {"Center", TTextAlign::Center},     {"Leading", TTextAlign::Leading},   {"Trailing", TTextAlign::Trailing},
        {"taCenter", TTextAlign::Center},   {"taLeading", TTextAlign::Leading}, {"taTrailing", TTextAlign::Trailing}};
    auto it = kNames.find(id);
    if (it == kNames.end()) throw EPropertyError("Unknown " + name + " value " + id);
    return it->second;
  };
  t.Stored(prefix + "Font.Family", [P, changed](TFmxObject* o, const TStoredValue& v) {
    P(o)->TextSettings.Font.Family = StoredText(v, "Font.Family");
    changed(o);
  });
  t.Float(prefix + "Font.Size", {[P](TFmxObject* o) { return P(o)->TextSettings.Font.Size; },
                                 [P, changed](TFmxObject* o, float v) {
                                   P(o)->TextSettings.Font.Size = v;
                                   changed(o);
                                 }});
  t.Stored(prefix + "Font.Style", [P, changed](TFmxObject* o, const TStoredValue& v) {
    if (v.Kind != TStoredValue::TKind::Set) throw EPropertyError("Font.Style needs a set such as [fsBold]");
    TFontStyles styles = 0;
    for (std::string item : v.Items) {
      auto dot = item.rfind('.');
      if (dot != std::string::npos) item = item.substr(dot + 1);
      if (item == "fsBold" || item == "Bold") styles |= unsigned(TFontStyle::Bold);
      else if (item == "fsItalic" || item == "Italic") styles |= unsigned(TFontStyle::Italic);
      else if (item == "fsUnderline" || item == "Underline") styles |= unsigned(TFontStyle::Underline);
      else if (item == "fsStrikeOut" || item == "StrikeOut") styles |= unsigned(TFontStyle::StrikeOut);
      else throw EPropertyError("Unknown font style " + item);
    }
    P(o)->TextSettings.Font.Style = styles;
    changed(o);
  });
  t.Stored(prefix + (prefix.empty() ? "Color" : "FontColor"), [P, changed](TFmxObject* o, const TStoredValue& v) {
    P(o)->TextSettings.FontColor = StoredColor(v, "FontColor");
    changed(o);
  });
  t.Stored(prefix + "Horz" + alignSuffix, [P, changed, align](TFmxObject* o, const TStoredValue& v) {
    P(o)->TextSettings.HorzAlign = align(v, "HorzAlign");
    changed(o);
  });
  t.Stored(prefix + "Vert" + alignSuffix, [P, changed, align](TFmxObject* o, const TStoredValue& v) {
    P(o)->TextSettings.VertAlign = align(v, "VertAlign");
    changed(o);
  });
  t.Stored(prefix + "WordWrap", [P, changed](TFmxObject* o, const TStoredValue& v) {
    P(o)->TextSettings.WordWrap = StoredBool(v, "WordWrap");
    changed(o);
  });
  t.Stored(prefix + "Trimming", [P, changed](TFmxObject* o, const TStoredValue& v) {
    std::string id = StoredIdentifier(v, "Trimming");
    if (id == "None" || id == "ttNone") P(o)->TextSettings.Trimming = TTextTrimming::None;
    else if (id == "Character" || id == "ttCharacter") P(o)->TextSettings.Trimming = TTextTrimming::Character;
    else if (id == "Word" || id == "ttWord") P(o)->TextSettings.Trimming = TTextTrimming::Word;
    else throw EPropertyError("Unknown Trimming value " + id);
    changed(o);
  });
}

template <class T>
void AddCommon(TPropertyTable& t) {
  auto P = [](TFmxObject* o) -> T* { return static_cast<T*>(o); };
  t.Stored("Text", [P](TFmxObject* o, const TStoredValue& v) { P(o)->SetText(StoredText(v, "Text")); });
  t.Stored("AutoSize", [P](TFmxObject* o, const TStoredValue& v) {
    P(o)->AutoSize = StoredBool(v, "AutoSize");
    P(o)->TextChanged();
  });
}

}  // namespace

const TPropertyTable& TText::ClassProperties() {
  static const TPropertyTable table = [] {
    TPropertyTable t(&TControl::ClassProperties());
    AddCommon<TText>(t);
    AddTextProperties<TText>(t, "", "TextAlign");
    AddTextProperties<TText>(t, "TextSettings.", "Align");
    return t;
  }();
  return table;
}

const TPropertyTable& TLabel::ClassProperties() {
  static const TPropertyTable table = [] {
    TPropertyTable t(&TControl::ClassProperties());
    AddCommon<TLabel>(t);
    AddTextProperties<TLabel>(t, "TextSettings.", "Align");
    t.Stored("AutoTranslate", [](TFmxObject* o, const TStoredValue& v) {
      static_cast<TLabel*>(o)->AutoTranslate = StoredBool(v, "AutoTranslate");
    });
    t.Stored("StyledSettings", [](TFmxObject*, const TStoredValue& v) {
      if (v.Kind != TStoredValue::TKind::Set) throw EPropertyError("StyledSettings needs a set");
    });
    return t;
  }();
  return table;
}

}  // namespace qx
