#pragma once

// The small controls an icon of the cabinet bar is built from: a layout that tracks
// hover and press, and the paint box that draws the title.

#include <string>

#include "toolkit/Layout.h"

namespace qx {

enum class TIconTextBackStatus { itbsNone, itbsHover, itbsPressed };

// Tracks hover and press and passes pointer moves on to the icon it belongs to.
class TCabinetIconLayout : public TLayout {
 public:
  explicit TCabinetIconLayout(TFmxObject* owner = nullptr) : TLayout(owner) {}
  std::string ClassName() const override { return "TCabinetIconLayout"; }

  bool IsPressed() const { return FIsPressed; }
  bool IsHovered() const { return FIsHovered; }
  TNotifyEvent OnChangeStatus;

  void DoMouseEnter() override;
  void DoMouseLeave() override;
  void MouseDown(TMouseButton button, TShiftState shift, float x, float y) override;
  void MouseMove(TShiftState shift, float x, float y) override;
  void MouseUp(TMouseButton button, TShiftState shift, float x, float y) override;

 private:
  void SetStatus(bool hovered, bool pressed);
  // The nearest icon layout above this one, which hears moves and entries too.
  TCabinetIconLayout* OuterLayout() const;

  bool FIsPressed = false;
  bool FIsHovered = false;
};

// One line of bold text, white on the hover or press back, dark grey otherwise.
class TTextPaintBox : public TPaintBox {
 public:
  static constexpr TAlphaColor kPlainColor = 0xFF484848u;
  static constexpr TAlphaColor kBackColor = 0xFFFFFFFFu;

  explicit TTextPaintBox(TFmxObject* owner = nullptr) : TPaintBox(owner) {}
  std::string ClassName() const override { return "TTextPaintBox"; }

  const std::u16string& Title() const { return FTitle; }
  void SetTitle(const std::u16string& title);
  const std::u16string& FontName() const { return FFontName; }
  void SetFontName(const std::u16string& name);
  float FontSize() const { return FFontSize; }
  void SetFontSize(float size);
  TIconTextBackStatus IconTextBackStatus() const { return FIconTextBackStatus; }
  void SetIconTextBackStatus(TIconTextBackStatus status);

  TFont TitleFont() const;
  TAlphaColor TextColor() const {
    return FIconTextBackStatus == TIconTextBackStatus::itbsNone ? kPlainColor : kBackColor;
  }

 protected:
  void Paint(TCanvas& canvas, float opacity) override;

 private:
  std::u16string FTitle;
  float FFontSize = 11;
  std::u16string FFontName;
  TIconTextBackStatus FIconTextBackStatus = TIconTextBackStatus::itbsNone;
};

}  // namespace qx
