#pragma once

// A one-line text editor with a blinking caret.

#include "toolkit/Animation.h"
#include "toolkit/TextControls.h"

namespace qx {

class TEdit;

// The caret blinks on the animation thread's ticks; its flasher is an
// animation styled "caret" so a host's thread can tick it more slowly.
class TCaret : public TAnimation {
 public:
  explicit TCaret(TEdit* edit);
  std::string ClassName() const override { return "TCaret"; }
  bool Visible = true;
  TAlphaColor Color = TAlphaColors::Black;
  float CaretWidth = 1;
  // Seconds between toggles.
  float FlashInterval = 0.5f;
  bool FlashVisible() const { return FFlashVisible; }
  void ResetFlash();
  void ProcessTick(double time, double deltaTime) override;

 protected:
  void ProcessAnimation() override {}

 private:
  TEdit* FEdit;
  bool FFlashVisible = true;
  double FLastToggle = -1;
};

class TEdit : public TStyledControl {
 public:
  explicit TEdit(TFmxObject* owner = nullptr);
  std::string ClassName() const override { return "TEdit"; }

  const std::u16string& Text() const { return FText; }
  void SetText(const std::u16string& text);
  int CaretPosition() const { return FCaretPosition; }
  void SetCaretPosition(int position);
  int MaxLength = 0;
  bool ReadOnly = false;
  TTextSettings TextSettings;
  TAlphaColor BackgroundColor = TAlphaColors::White;
  TCaret& Caret() { return *FCaret; }
  TNotifyEvent OnChange, OnChangeTracking;

  // Virtual key codes as the platform numbers them.
  static constexpr int vkBack = 8, vkReturn = 13, vkEnd = 35, vkHome = 36, vkLeft = 37, vkRight = 39, vkDelete = 46;
  void KeyDown(int& key, char16_t& keyChar, TShiftState shift) override;
  void MouseDown(TMouseButton button, TShiftState shift, float x, float y) override;

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  void Paint(TCanvas& canvas, float opacity) override;
  void DoEnter() override;
  void DoExit() override;

 private:
  float TextLeft() const { return 3; }
  std::u16string FText;
  int FCaretPosition = 0;
  TCaret* FCaret;
};

}  // namespace qx
