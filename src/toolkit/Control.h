#pragma once

// The visual control: position, size, alignment, opacity, hit testing, input
// and painting. Coordinates are relative to the parent's top left corner;
// "absolute" means the form's client coordinates. Rotation and scaling are not
// supported: a control is an axis-aligned rectangle.

#include <functional>
#include <memory>
#include <vector>

#include "toolkit/Canvas.h"
#include "toolkit/FmxObject.h"
#include "toolkit/Input.h"

namespace qx {

class TCommonCustomForm;
class TControl;

enum class TAlignLayout {
  None,
  Top,
  Left,
  Right,
  Bottom,
  MostTop,
  MostBottom,
  MostLeft,
  MostRight,
  Client,
  Contents,
  Center,
  VertCenter,
  HorzCenter,
  Horizontal,
  Vertical
};

// Four edges with change notification (margins, padding).
class TBounds {
 public:
  float Left() const { return FRect.Left; }
  float Top() const { return FRect.Top; }
  float Right() const { return FRect.Right; }
  float Bottom() const { return FRect.Bottom; }
  void SetLeft(float v) { Set({v, FRect.Top, FRect.Right, FRect.Bottom}); }
  void SetTop(float v) { Set({FRect.Left, v, FRect.Right, FRect.Bottom}); }
  void SetRight(float v) { Set({FRect.Left, FRect.Top, v, FRect.Bottom}); }
  void SetBottom(float v) { Set({FRect.Left, FRect.Top, FRect.Right, v}); }
  TRectF Rect() const { return FRect; }
  void Set(const TRectF& rect) {
    if (rect == FRect) return;
    FRect = rect;
    if (OnChange) OnChange();
  }
  std::function<void()> OnChange;

 private:
  TRectF FRect;
};

class TPosition {
 public:
  explicit TPosition(TControl* owner) : FOwner(owner) {}
  float X() const;
  float Y() const;
  void SetX(float x);
  void SetY(float y);
  TPointF Point() const;
  void SetPoint(TPointF p);

 private:
  TControl* FOwner;
};

class TControl : public TFmxObject {
 public:
  explicit TControl(TFmxObject* owner = nullptr);
  ~TControl() override;
  std::string ClassName() const override { return "TControl"; }
  TControl* AsControl() override { return this; }

  // ---- geometry
  TPosition& Position() { return FPosition; }
  const TPosition& Position() const { return FPosition; }
  float Width() const { return FWidth; }
  float Height() const { return FHeight; }
  void SetWidth(float v) { SetBounds(FLeft, FTop, v, FHeight); }
  void SetHeight(float v) { SetBounds(FLeft, FTop, FWidth, v); }
  virtual void SetBounds(float x, float y, float width, float height);
  TRectF BoundsRect() const { return TRectF::FromSize(FLeft, FTop, FWidth, FHeight); }
  TRectF LocalRect() const { return {0, 0, FWidth, FHeight}; }
  TRectF AbsoluteRect() const;
  TPointF LocalToAbsolute(TPointF p) const;
  TPointF AbsoluteToLocal(TPointF p) const;
  // Where the control stands in its parent for painting and hit testing.
  TPointF PlaceInParent() const { return OffsetInParent(); }
  // Absolute values are computed when asked; kept for callers that force them.
  void RecalcAbsoluteNow() {}

  TBounds& Margins() { return FMargins; }
  TBounds& Padding() { return FPadding; }
  TAlignLayout Align() const { return FAlign; }
  void SetAlign(TAlignLayout align);

  bool Visible() const { return FVisible; }
  void SetVisible(bool value);
  // Visible here and in every parent.
  bool IsVisibleInTree() const;
  float Opacity() const { return FOpacity; }
  void SetOpacity(float value);
  // Opacity multiplied down the tree.
  float AbsoluteOpacity() const;
  bool Enabled() const { return FEnabled; }
  void SetEnabled(bool value) { FEnabled = value; }
  bool HitTest() const { return FHitTest; }
  void SetHitTest(bool value) { FHitTest = value; }
  bool ClipChildren() const { return FClipChildren; }
  void SetClipChildren(bool value);
  bool Locked = false;
  bool TabStop = true;
  bool CanFocus = false;
  int TabOrder = -1;
  bool AutoCapture = true;  // capture the mouse between down and up

  // ---- update and layout
  void BeginUpdate();
  void EndUpdate();
  bool IsUpdating() const { return FUpdating > 0; }
  void Realign();
  void Repaint();
  void InvalidateRect(const TRectF& localRect);
  void UpdateEffects() { Repaint(); }

  // ---- tree helpers
  TControl* ParentControl() const;
  TCommonCustomForm* Form() const;
  std::vector<TControl*> Controls() const;
  std::vector<TControl*> GetTabList() const;

  // ---- input
  // Deepest visible, enabled control with HitTest under an absolute point (children first, topmost first).
  TControl* ObjectAtPoint(TPointF absolutePoint);
  bool PointInObject(float absoluteX, float absoluteY);
  void SetFocus();
  bool IsFocused() const;
  void Capture();
  void ReleaseCapture();
  bool IsMouseOver() const { return FIsMouseOver; }
  bool Pressed() const { return FPressed; }
  TTouchManager& Touch() { return FTouch; }

  // Overridable input: mouse points are local; drag points are absolute.
  virtual void MouseDown(TMouseButton button, TShiftState shift, float x, float y);
  virtual void MouseMove(TShiftState shift, float x, float y);
  virtual void MouseUp(TMouseButton button, TShiftState shift, float x, float y);
  virtual void MouseWheel(TShiftState shift, int wheelDelta, bool& handled);
  virtual void Click();
  virtual void DblClick();
  virtual void DoMouseEnter();
  virtual void DoMouseLeave();
  virtual void DragEnter(const TDragObject& data, const TPointF& point);
  virtual void DragOver(const TDragObject& data, const TPointF& point, TDragOperation& operation);
  virtual void DragDrop(const TDragObject& data, const TPointF& point);
  virtual void DragLeave();
  virtual void CMGesture(const TGestureEventInfo& eventInfo);
  virtual void KeyDown(int& key, char16_t& keyChar, TShiftState shift);
  // Focus arrives and leaves.
  virtual void DoEnter() {}
  virtual void DoExit() {}

  // ---- painting
  // Paints this control and its children; the canvas offset is the parent's absolute origin.
  void PaintTo(TCanvas& canvas, float parentOpacity = 1);
  std::function<void(TFmxObject* sender, TCanvas& canvas, const TRectF& rect)> OnPaint;
  std::function<void(TFmxObject* sender, TCanvas& canvas, const TRectF& rect)> OnPainting;

  // ---- events
  TNotifyEvent OnClick, OnDblClick, OnMouseEnter, OnMouseLeave, OnResize, OnDragLeave;
  TMouseEvent OnMouseDown, OnMouseUp;
  TMouseMoveEvent OnMouseMove;
  TMouseWheelEvent OnMouseWheel;
  TDragEnterEvent OnDragEnter;
  TDragOverEvent OnDragOver;
  TDragDropEvent OnDragDrop;
  TGestureEvent OnGesture;

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  friend class TPosition;
  friend class TCommonCustomForm;
  // Draws the control itself in local coordinates (the canvas offset is the control's origin).
  virtual void Paint(TCanvas& canvas, float opacity);
  virtual void Resize();
  // Places aligned children in the content rectangle.
  virtual void DoRealign();
  virtual TRectF ContentRect() const;
  // Where the control stands in its parent for painting and hit testing; a control
  // whose on-screen place is not its position (the strip's tabs) answers its own.
  virtual TPointF OffsetInParent() const { return {FLeft, FTop}; }
  // The part of the control, in its own coordinates, that it fills with opaque
  // pixels when painted at full opacity: siblings beneath it need not paint there.
  virtual TRectF OpaqueRect() const { return {}; }
  // True when nothing the control paints, its children included, leaves its bounds;
  // only such a control is cut to what its siblings above leave showing.
  virtual bool PaintsInsideBounds() const { return false; }
  void ParentChanged() override;
  void ChildrenChanged() override;
  void DoAddObject(TFmxObject* object) override;
  void DoRemoveObject(TFmxObject* object) override;
  // Tells the parent to realign when this control takes part in its alignment.
  void ParentRealign();
  void SetMouseOver(bool value) { FIsMouseOver = value; }
  void SetPressed(bool value) { FPressed = value; }

 private:
  // The hit test below a control whose absolute origin the caller already knows.
  TControl* ObjectAtPointFrom(TPointF absolutePoint, TPointF origin);
  void PaintChildren(TCanvas& canvas, TPointF origin, float opacity);
  // For each child the absolute rectangle its paint is cut to; empty when nothing
  // of it shows through the opaque siblings above it.
  std::vector<TRectF> ShownParts(const TCanvas& canvas, TPointF origin, float opacity) const;
  bool HasBlurEffect() const;
  void PaintWithEffect(TCanvas& canvas, TPointF origin, float opacity, float softness);

  TPosition FPosition{this};
  float FLeft = 0, FTop = 0, FWidth = 0, FHeight = 0;
  TBounds FMargins, FPadding;
  TAlignLayout FAlign = TAlignLayout::None;
  bool FVisible = true;
  float FOpacity = 1;
  bool FEnabled = true;
  bool FHitTest = true;
  bool FClipChildren = false;
  int FUpdating = 0;
  bool FNeedRealign = false;
  bool FRealigning = false;
  bool FIsMouseOver = false;
  bool FPressed = false;
  TTouchManager FTouch;
};

}  // namespace qx
