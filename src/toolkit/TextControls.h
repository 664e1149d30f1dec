#pragma once

// Controls that show text: TText (plain) and TLabel (styled, not hit-tested).

#include <string>

#include "toolkit/Layout.h"
#include "toolkit/TextLayout.h"

namespace qx {

struct TTextSettings {
  TFont Font;
  TAlphaColor FontColor = TAlphaColors::Black;
  TTextAlign HorzAlign = TTextAlign::Leading;
  TTextAlign VertAlign = TTextAlign::Center;
  TTextTrimming Trimming = TTextTrimming::None;
  bool WordWrap = false;
};

// Shared body of TText and TLabel.
class TTextPainter {
 public:
  std::u16string Text;
  TTextSettings TextSettings;
  bool AutoSize = false;
  // Size the text needs (one line unless word wrap with a width).
  TSizeF TextSize(float maxWidth) const;
  void PaintText(TCanvas& canvas, const TRectF& rect, float opacity) const;
};

class TText : public TControl, public TTextPainter {
 public:
  explicit TText(TFmxObject* owner = nullptr) : TControl(owner) {}
  std::string ClassName() const override { return "TText"; }
  void SetText(const std::u16string& text);
  // Applies AutoSize after settings were changed directly.
  void TextChanged();

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  void Paint(TCanvas& canvas, float opacity) override;
};

class TLabel : public TStyledControl, public TTextPainter {
 public:
  explicit TLabel(TFmxObject* owner = nullptr) : TStyledControl(owner) { SetHitTest(false); }
  std::string ClassName() const override { return "TLabel"; }
  void SetText(const std::u16string& text);
  void TextChanged();
  bool AutoTranslate = true;

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  void Paint(TCanvas& canvas, float opacity) override;
};

}  // namespace qx
