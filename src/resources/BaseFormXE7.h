#pragma once

// The base of the module's forms, which live inside the host's native windows:
// bounds that reach the native window only when they change, the steps that
// embed a popup form without taking the activation, window subclassing that
// keeps the old procedure, and the search for a window of this process by class.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/Platform.h"
#include "toolkit/Form.h"

namespace qx {

// ---- method-bound window procedures

struct TWndMessage {
  std::uint32_t Msg = 0;
  WParam wParam = 0;
  LParam lParam = 0;
  LResult Result = 0;
};
using TWndMethod = std::function<void(TWndMessage& message)>;

// A window procedure that calls method; null when all instances are in use.
WndProc MakeObjectInstance(TWndMethod method);
void FreeObjectInstance(WndProc instance);
// How many more instances can be made.
std::size_t FreeObjectInstanceCount();

// ---- the form base

class TBaseFormXE7 : public TForm {
 public:
  using TForm::TForm;
  ~TBaseFormXE7() override;
  std::string ClassName() const override { return "TBaseFormXE7"; }

  // Stores the bounds; the native window is set only when its bounds differ,
  // realign and resize run only when the size changed.
  void SetBounds(int left, int top, int width, int height) override;

  // The form's native window, or null while it has none.
  virtual HWnd FormHandle() const;

  // Where forms find their native window when it is not the toolkit's own.
  using TFormHandleResolver = std::function<HWnd(const TCommonCustomForm* form)>;
  static void SetFormHandleResolver(TFormHandleResolver resolver);

  WndProc OldInstance() const { return FOldInstance; }
  WndProc ObjectInstance() const { return FObjectInstance; }

 protected:
  // The old procedure goes back before the window does.
  void HandleDestroying() override;
  // Subclasses the window: messages go to WndMethod first. Made when the handle is made.
  void SubclassWindow(HWnd hwnd);
  // Puts the old procedure back and frees the instance; before the handle goes away.
  void RestoreWindowProc();
  // Messages of the subclassed window; the default passes them to the old procedure.
  virtual void WndMethod(TWndMessage& message);
  void DefaultHandler(TWndMessage& message);

 private:
  HWnd FSubclassed = nullptr;
  WndProc FOldInstance = nullptr;
  WndProc FObjectInstance = nullptr;
};

// Makes the handle, sizes the form, puts it into parent, places it and shows it
// without activation, so the host keeps the focus.
void EmbedPopupForm(TBaseFormXE7& form, HWnd parent, int left, int top, int width, int height);

// Turns the form's native window into a child window of parent (the host's window
// given to a plug-in's control): WS_CHILD in, WS_POPUP out, then SetParent. Answers
// the window, or null when the form has none or parent is not a window.
HWnd EmbedChildForm(TBaseFormXE7& form, HWnd parent);

// ---- window search

class TEnumWindowObj {
 public:
  HWnd FHandle = nullptr;
  std::u16string FClassName;
};

// The first top-level window of this process whose class name matches, ignoring case.
HWnd FindProcessWindowByClassName(std::u16string_view className);

}  // namespace qx
