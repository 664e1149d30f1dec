#pragma once

// The strip's scroll box: content that moves under a viewport, scroll bars that
// follow it, and inertial scrolling by mouse, touch, gesture and wheel.

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tabview/AniCalculations.h"
#include "tabview/ScrollBoxExInput.h"
#include "toolkit/Layout.h"
#include "toolkit/ScrollBar.h"

namespace qx::ScrollBoxExUnit {

class TScrollBoxEx;

// The moving area; tells its box when its children change.
class TScrollContent : public TContent {
 public:
  explicit TScrollContent(TScrollBoxEx* scrollBox);
  std::string ClassName() const override { return "TScrollContent"; }
  TScrollBoxEx* ScrollBox() const { return FScrollBox; }

 protected:
  void ChildrenChanged() override;
  void DoRemoveObject(TFmxObject* object) override;

 private:
  TScrollBoxEx* FScrollBox;
};

// Inertia of a scroll box: its motion is the box's content position.
class TScrollCalculations : public TAniCalculations {
 public:
  // Raises std::invalid_argument when owner is not a scroll box of this unit.
  explicit TScrollCalculations(TFmxObject* owner);
  TScrollBoxEx* ScrollBox() const { return FScrollBox; }

 protected:
  void DoChanged() override;
  void DoStart() override;
  void DoStop() override;

 private:
  TScrollBoxEx* FScrollBox;
};

struct TScrollBarRecord {
  TScrollBar* Bar = nullptr;
};

enum class TContentNotification { Inserted, Removed };
using TContentNotifyEvent =
    std::function<void(TFmxObject* sender, TFmxObject* object, TContentNotification operation)>;
using TCalcContentBoundsEvent = std::function<void(TFmxObject* sender, TRectF& contentBounds)>;

class TScrollBoxEx : public TStyledControl {
 public:
  explicit TScrollBoxEx(TFmxObject* owner = nullptr);
  ~TScrollBoxEx() override;
  std::string ClassName() const override { return "TScrollBox"; }

  TScrollContent* Content() const { return FContent; }
  TScrollCalculations& AniCalculations() const { return *FAniCalculations; }
  // The bar in use in each direction, or null.
  TScrollBar* HScrollBar() const;
  TScrollBar* VScrollBar() const;
  TControl* SizeGrip() const { return FSizeGrip; }

  bool AutoHide() const { return FAutoHide; }
  void SetAutoHide(bool value);
  bool ShowScrollBars() const { return FShowScrollBars; }
  void SetShowScrollBars(bool value);
  bool ShowSizeGrip() const { return FShowSizeGrip; }
  void SetShowSizeGrip(bool value);
  bool TouchEnabled() const { return FTouchEnabled; }

  TNotifyEvent OnHScrollChange, OnVScrollChange;
  TCalcContentBoundsEvent OnCalcContentBounds;
  // After a mouse move that the calculations took.
  TMouseMoveEvent OnAniMouseMove;
  TContentNotifyEvent OnNotification;

  // Cached bounds, realign, content, repaint: the whole view made right at once.
  void PerfectRefresh();
  virtual void InvalidateContentSize();
  void RealignContent();
  // The content bounds as the last realign found them.
  TRectF ContentBounds();
  // Each visible bar to the middle of its range.
  void Center();
  // Moves the content by (dx, dy): each visible bar's value falls by the delta.
  void ScrollTo(float dx, float dy);
  void InViewRect() {}
  float ClientWidth() const;
  float ClientHeight() const;
  void Sort(const std::function<bool(TFmxObject*, TFmxObject*)>& less);
  std::vector<TControl*> GetTabList() const;
  TScrollingBehaviours GetScrollingBehaviours() const;

  virtual void TouchEventDown(float x, float y);
  virtual void TouchEventMove(float x, float y);
  virtual void TouchEventUp(float x, float y);
  void CMGesture(const TGestureEventInfo& eventInfo) override;
  const TGestureEventInfo& GestureState() const { return FGestureState; }

  void MouseDown(TMouseButton button, TShiftState shift, float x, float y) override;
  void MouseMove(TShiftState shift, float x, float y) override;
  void MouseUp(TMouseButton button, TShiftState shift, float x, float y) override;
  void MouseWheel(TShiftState shift, int wheelDelta, bool& handled) override;

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();
  // Makes this class the stored layouts' TScrollBox (with its legacy properties dropped).
  static void RegisterClass();

 protected:
  friend class TScrollContent;
  friend class TScrollCalculations;

  virtual std::unique_ptr<TScrollCalculations> CreateAniCalculations();
  virtual TScrollContent* CreateScrollContent();
  // Runs the factories; a derived box calls it again from its constructor.
  void CreateParts();

  void ApplyStyle() override;
  void FreeStyle() override;
  void Resize() override;
  void DoAddObject(TFmxObject* object) override;
  virtual void ContentChanged();
  virtual void ContentRemoved(TFmxObject* object);
  virtual TRectF DoCalcContentBounds();
  // Device pixels per logical pixel; 1 when none is known.
  virtual double SceneScale() const { return 1.0; }

  // Hands a view position, snapped to device pixels, to the calculations.
  void ViewPoint(TPointD point);

  // Calculations' notifications.
  virtual void AniChanged();
  virtual void AniStarted() {}
  virtual void AniStopped() {}

 private:
  TScrollBar* BarInUse(const std::array<TScrollBarRecord, 2>& bars) const;
  void BuildDefaultStyle();
  void UpdateBars();
  void BarChanged(TScrollBar* bar);
  bool IsStylePart(TFmxObject* object) const;
  TRectF PaddingRect() const { return const_cast<TScrollBoxEx*>(this)->Padding().Rect(); }

  TScrollContent* FContent = nullptr;
  std::unique_ptr<TScrollCalculations> FAniCalculations;
  std::array<TScrollBarRecord, 2> FHScrollBars{}, FVScrollBars{};
  TControl* FSizeGrip = nullptr;
  TControl* FBackground = nullptr;
  TControl* FContentLayout = nullptr;
  std::vector<TFmxObject*> FStyleParts;
  bool FAutoHide = true;
  bool FShowScrollBars = true;
  bool FShowSizeGrip = false;
  bool FTouchEnabled = false;
  TGestureEventInfo FGestureState;
  TRectF FContentBounds;
  bool FContentBoundsValid = false;
  bool FSyncingBars = false;
  bool FRealigningContent = false;
};

}  // namespace qx::ScrollBoxExUnit
