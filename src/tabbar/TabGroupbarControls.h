#pragma once

// The tab group bar's own controls: a group's colour image that remembers what it
// shows, a group layout with a context-menu event, and the in-place title editor.

#include <functional>

#include "toolkit/Edit.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"

namespace qx {

// Keeps the last state it was given so an unchanged picture is not assigned again.
class TGroupColorImage : public TImage {
 public:
  using TImage::TImage;
  std::string ClassName() const override { return "TGroupColorImage"; }
  bool FInit = false;
  int FGroupIndex = -1;
  bool FActive = false;
  bool FPrivate = false;
};

// A group tab: a right-button release over it asks for its context menu.
class TGroupLayout : public TLayout {
 public:
  using TLayout::TLayout;
  std::string ClassName() const override { return "TGroupLayout"; }
  TNotifyEvent OnContextMenu;
  void MouseUp(TMouseButton button, TShiftState shift, float x, float y) override;
};

// The group title editor: its keys and its loss of focus go to the form first.
class TTitleInplaceEdit : public TEdit {
 public:
  using TEdit::TEdit;
  std::string ClassName() const override { return "TTitleInplaceEdit"; }
  std::function<void(int& key, char16_t& keyChar, TShiftState shift)> OnKeyDown;
  std::function<void()> OnExit;
  void KeyDown(int& key, char16_t& keyChar, TShiftState shift) override;

 protected:
  void DoExit() override;
};

// Makes the three classes known to stored layouts.
void RegisterTabGroupbarClasses();

}  // namespace qx
