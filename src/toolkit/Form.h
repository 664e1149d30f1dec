#pragma once

// Forms: a root of controls with bounds, style and input routing, rendered into
// a bitmap. The native window comes from the platform layer (HandleNeed).

#include <memory>
#include <string>

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
  TPointF ScreenToClient(TPointF p) const { return {p.X - static_cast<float>(FLeft), p.Y - static_cast<float>(FTop)}; }
  TPointF ClientToScreen(TPointF p) const { return {p.X + static_cast<float>(FLeft), p.Y + static_cast<float>(FTop)}; }

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
  // Forces the native window to exist (the platform layer's part).
  virtual void HandleNeed() {}

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
