#pragma once

// Forms: a root of controls with bounds, style and input routing, rendered into
// a bitmap. HandleNeed gives a form a native window of the platform: its messages
// become the form's input, and its paint shows the form's picture.

#include <cstdint>
#include <memory>
#include <string>

#include "platform/Platform.h"
#include "toolkit/Bitmap.h"
#include "toolkit/Control.h"
#include "toolkit/StoredLayout.h"

namespace qx {

enum class TFmxFormBorderStyle { None, Single, Sizeable, ToolWindow, SizeToolWin };
enum class TFormStyle { Normal, Popup, StayOnTop };

class TCommonCustomForm : public TFmxObject {
 public:
  explicit TCommonCustomForm(TFmxObject* owner = nullptr);
  ~TCommonCustomForm() override;
  std::string ClassName() const override { return "TCommonCustomForm"; }

  // ---- bounds (whole pixels, screen coordinates)
  int Left() const { return FLeft; }
  int Top() const { return FTop; }
  int Width() const { return FWidth; }
  int Height() const { return FHeight; }
  void SetLeft(int v) { SetBounds(v, FTop, FWidth, FHeight); }
  void SetTop(int v) { SetBounds(FLeft, v, FWidth, FHeight); }
  void SetWidth(int v) { SetBounds(FLeft, FTop, v, FHeight); }
  void SetHeight(int v) { SetBounds(FLeft, FTop, FWidth, v); }
  virtual void SetBounds(int left, int top, int width, int height);
  int ClientWidth() const { return FWidth; }
  int ClientHeight() const { return FHeight; }
  void SetClientWidth(int v) { SetWidth(v); }
  void SetClientHeight(int v) { SetHeight(v); }
  TRectF ClientRect() const { return {0, 0, static_cast<float>(FWidth), static_cast<float>(FHeight)}; }
  // Through the native window where there is one (it may be a child of another window).
  TPointF ScreenToClient(TPointF p) const;
  TPointF ClientToScreen(TPointF p) const;

  // ---- style
  TFmxFormBorderStyle BorderStyle = TFmxFormBorderStyle::Sizeable;
  TFormStyle FormStyle = TFormStyle::Normal;
  bool Transparency = false;
  std::u16string Caption;
  TBrush Fill{TBrushKind::Solid, 0xFFFFFFFFu};
  TBounds& Padding() { return FPadding; }

  bool Visible() const { return FVisible; }
  void SetVisible(bool value);
  void Show() { SetVisible(true); }
  void Hide() { SetVisible(false); }
  // ---- the native window
  // Forces the native window to exist: a top-level popup window owned by the
  // application's window, at the form's bounds, hidden until the form is shown.
  virtual void HandleNeed();
  // The native window, or null while there is none (also after someone else destroyed it).
  HWnd Handle() const { return FHandle; }
  // Destroys the native window; the form lives on and can make a new one.
  void DestroyHandle();
  // The form's answer to a message of its window.
  virtual LResult HandleMessage(std::uint32_t msg, WParam wParam, LParam lParam);
  static constexpr char16_t kWindowClassName[] = u"QxFormWindow";
  // The procedure of that class, which hands messages to HandleMessage.
  static WndProc WindowClassProc() { return &WindowProc; }

  // ---- content
  // Builds the form's controls from a stored layout (its outermost object is the form).
  void LoadLayout(const std::string& layout, const TStoredLayoutOptions& options = {}) {
    LoadStoredLayout(this, layout, options);
  }
  std::vector<TControl*> Controls() const;
  virtual void Realign();
  TControl* ObjectAtPoint(TPointF clientPoint) const;

  // ---- input, in client coordinates
  virtual void MouseDown(TMouseButton button, TShiftState shift, float x, float y);
  virtual void MouseMove(TShiftState shift, float x, float y);
  virtual void MouseUp(TMouseButton button, TShiftState shift, float x, float y);
  virtual void MouseWheel(TShiftState shift, int wheelDelta, bool& handled);
  virtual void MouseLeave();
  virtual void DragEnter(const TDragObject& data, const TPointF& point);
  virtual void DragOver(const TDragObject& data, const TPointF& point, TDragOperation& operation);
  virtual void DragDrop(const TDragObject& data, const TPointF& point);
  virtual void DragLeave();
  // Touch input runs the pan gesture of controls whose Touch asks for it.
  virtual void TouchDown(TPointF point);
  virtual void TouchMove(TPointF point);
  virtual void TouchUp(TPointF point);
  void KeyDown(int& key, char16_t& keyChar, TShiftState shift);

  TControl* Captured() const { return FCaptured; }
  void SetCaptured(TControl* control);
  TControl* Hovered() const { return FHovered; }
  TControl* Focused() const { return FFocused; }
  void SetFocused(TControl* control);

  TMouseEvent OnMouseDown, OnMouseUp;
  TMouseMoveEvent OnMouseMove;
  TNotifyEvent OnResize, OnShow, OnHide;

  // ---- painting
  void Invalidate(const TRectF& clientRect);
  void Invalidate() { Invalidate(ClientRect()); }
  TRectF UpdateRect() const { return FUpdateRect; }
  bool NeedsRepaint() const { return !FUpdateRect.IsEmpty(); }
  // Paints the background and every control into the canvas.
  void PaintTo(TCanvas& canvas);
  // Renders into the form's own surface (Width by Height) and returns it.
  TBitmap& RenderToBitmap();
  TBitmap& Surface() { return FSurface; }

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  // Right after the native window was made, and right before it goes away.
  virtual void HandleCreated() {}
  virtual void HandleDestroying() {}
  virtual void Resize();
  void Notification(TFmxObject* object) override;
  void DoAddObject(TFmxObject* object) override;
  void SetBoundsFields(int left, int top, int width, int height);
  // The pixel rectangle that changed since the last render (for a window's surface).
  TRectF FLastPainted;

 private:
  void Watch(TControl* control);
  void Unwatch(TControl* control);
  void SetHovered(TControl* control);
  TControl* GestureTarget(TPointF point) const;
  // Window messages, by kind (FormWindow.cpp).
  static LResult QX_STDCALL WindowProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam);
  void CreateHandle();
  bool WindowMouse(std::uint32_t msg, WParam wParam, LParam lParam);
  bool WindowWheel(std::uint32_t msg, WParam wParam, LParam lParam);
  void WindowTouch(WParam wParam, LParam lParam);
  void WindowKey(std::uint32_t msg, WParam wParam);
  void WindowSized(int width, int height);
  void WindowMoved(int left, int top);
  bool IsDoubleClick(TMouseButton button, int x, int y);

  int FLeft = 0, FTop = 0, FWidth = 640, FHeight = 480;
  bool FVisible = false;
  TBounds FPadding;
  TControl* FCaptured = nullptr;
  TControl* FHovered = nullptr;
  TControl* FFocused = nullptr;
  TControl* FDragTarget = nullptr;
  TControl* FPanTarget = nullptr;
  TMouseButton FDownButton = TMouseButton::mbLeft;
  TControl* FDownTarget = nullptr;
  TPointF FTouchStart;
  bool FPanning = false;
  TRectF FUpdateRect;
  TBitmap FSurface;
  HWnd FHandle = nullptr;
  bool FTrackingLeave = false;
  bool FReleasingCapture = false;
  // The last button press, to make double clicks out of two presses.
  struct TLastPress {
    TMouseButton Button = TMouseButton::mbLeft;
    std::uint32_t Time = 0;
    int X = 0, Y = 0;
    bool Valid = false;
  } FLastPress;
};

class TCustomForm : public TCommonCustomForm {
 public:
  using TCommonCustomForm::TCommonCustomForm;
  std::string ClassName() const override { return "TCustomForm"; }
};

class TForm : public TCustomForm {
 public:
  using TCustomForm::TCustomForm;
  std::string ClassName() const override { return "TForm"; }
};

}  // namespace qx
