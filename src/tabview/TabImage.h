#pragma once

// The control of one tab in the strip: the page's picture in a frame of fixed
// size, a close button, a badge, a dimming layer, a busy indicator, and the
// animations of its place. It draws no text.

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

#include "base/ComPtr.h"
#include "host/ServiceCoreWrapIntf.h"
#include "resources/BadgeImage.h"
#include "resources/ImageButton.h"
#include "resources/TabbarImageRes.h"
#include "tabview/TabImageItem.h"
#include "tabview/TabImageScrollBox.h"
#include "tabview/TabViewGeometry.h"
#include "tabview/TabViewLayoutAttributes.h"
#include "toolkit/Animation.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"

namespace qx {

class TTabImageCacheMgr;

class TTabImage : public TLayout, public TTabImageItem {
 public:
  // Left inset of the strip's scroll content: TabImageLeft is Position.X less this.
  static constexpr float kContentInset = 200;
  static constexpr float kThumbnailWidth = 96;
  static constexpr float kThumbnailHeight = 47;
  static constexpr TAlphaColor kBaseColor = 0xFF6A6A6A;
  static constexpr TAlphaColor kDimColor = 0xFF000000;
  static constexpr float kCloseButtonSize = 22;

  // imageRes isn't owned and must outlive the tab; without it the layers stay empty.
  explicit TTabImage(TFmxObject* owner = nullptr, TTabbarImageRes* imageRes = nullptr,
                     IServiceCoreWrap* serviceCore = nullptr, std::int32_t tabId = 0);
  ~TTabImage() override;
  std::string ClassName() const override { return "TTabImage"; }
  TTabImage* AsTabImage() override { return this; }

  // Both bases have an index; the strip's is the one callers mean.
  using TTabImageItem::Index;
  using TTabImageItem::size;

  std::int32_t TabId() const { return FTabId; }
  // Asks the host once, then keeps the answer.
  std::u16string TabGuid() override;
  bool HasTabGuid(std::u16string_view guid) override;

  // ---- published animation targets
  float TabImageLeft() const { return Position().X() - kContentInset; }
  void SetTabImageLeft(float value) { Position().SetX(value + kContentInset); }
  float DragOffset() const { return FDragOffset; }
  void SetDragOffset(float value);

  // ---- placement
  void SetHorzPosition(bool animate, TInterpolationType interpolation, float duration, float left);
  bool Positioned() const { return FPositioned; }
  // Copies what the tab keeps of a layout pass.
  void SetAttributes(ITabViewLayoutAttributes* attributes);
  ITabViewLayoutAttributes* Attributes() const { return FAttributes.get(); }
  ITabViewLayoutAttributes* LastAttributes() const override { return FAttributes.get(); }
  double SortPosition() const { return FSortPosition; }
  bool FirstInSection() const { return FFirstInSection; }
  bool LastInSection() const { return FLastInSection; }
  bool OverlapsLeft() const { return FOverlapsLeft; }
  bool OverlapsRight() const { return FOverlapsRight; }
  void StartDragOffsetAnimation();
  void StopDragOffsetAnimation();

  // ---- hit tests, absolute points
  bool PtInCloseButton(TPointF point);
  bool PtInTabImage(TPointF point);
  // The same test when the caller knows the absolute origin of the tab's parent.
  bool PtInTabImage(TPointF point, TPointF parentOrigin) const;
  bool CloseButtonVisible() const;

  // ---- rectangles and points
  void TabImageAbsoluteRect(bool useFinalPosition, TRectF& rect) const;
  TRectF TabImageParentedRect() const;
  TRectD TabImageParentedRectD() const;
  TRectF TabImageScreenRect() const;
  TPointF TabImageScreenPosition() const;
  TPointF TabImageRootScreenPosition() const;
  TPointF TabImageAbsoluteToLocal(TPointF point) const;
  // The base layer's absolute rectangle before the drag offset is taken off.
  TRectF AbsoluteRectNoDragOffset() const;
  float GetScrollLeft(float offset) const;
  float GetScrollRight(float offset) const;

  // ---- picture
  void LoadCacheImage(TTabImageCacheMgr& cache);
  void UpdateTabImage(const TBitmap* bitmap, bool immediately);
  // False when there is nothing to write or the stream refuses it.
  bool SaveImageToStream(std::ostream& stream) const;
  bool HasThumbnail() const { return FHasThumbnail; }

  // ---- state
  void ProcessMouseEnter(bool immediately);
  void ProcessMouseLeave(bool immediately);
  void StartCloseButtonAnimation(bool show, bool immediately);
  void StartProgress(bool hovered);
  void StopProgress(bool hovered);
  void UpdateDimAndShadow(bool hovered, bool immediately);
  float DimOpacity(bool hovered) const;
  void UpdateTabStatus();
  void SetHoverBoundVisible(bool value);

  // ---- connections
  void SetScrollBox(ITabImageScrollBox* scrollBox) { FScrollBox = scrollBox; }
  ITabImageScrollBox* ScrollBox() const { return FScrollBox; }
  TNotifyEvent OnCloseButtonShown;
  TNotifyEvent OnDragOffsetAnimationFinish;
  // The host offers no question for "is this tab's page bookmarked"; the frame
  // answers it. Without a handler the bookmark state stays as it is.
  std::function<bool(TTabImage& sender)> OnGetBookmarked;
  // Turns the tab's left in the scroll content into its left in the scroll box, where
  // it is drawn whatever the viewport; without a handler the content's offset holds.
  std::function<float(TTabImage* tab, float x)> OnConvertLocalMatrix;

  // ---- parts, for the frame and for tests
  TLayout* Content() const { return FContent; }
  TImage* Thumbnail() const { return FThumbnail; }
  TImage* Base() const { return FBase; }
  TImage* HoverBound() const { return FHoverBound; }
  TBadgeImage* Badge() const { return FBadge; }
  TImage* Dim() const { return FDim; }
  TImage* Progress() const { return FProgress; }
  TImageButton* CloseButton() const { return FCloseButton; }
  TBitmapAnimation* ThumbnailAnimation() const { return FThumbnailAnimation; }
  TFloatAnimation* DimAnimation() const { return FDimAnimation; }
  TBitmapListAnimation* ProgressAnimation() const { return FProgressAnimation; }
  TFloatAnimation* CloseAnimation() const { return FCloseAnimation; }
  TFloatAnimation* DragOffsetAnimation() const { return FDragOffsetAnimation; }
  TFloatAnimation* LeftAnimation() const { return FLeftAnimation; }

  // The blank picture all tabs share until a real one arrives; null before the
  // first tab with an image set. Freed by ReleaseBlankPicture at module end.
  static const TBitmap* BlankPicture();
  static void ReleaseBlankPicture();

  const TPropertyTable& Properties() const override { return ClassProperties(); }

 protected:
  TPointF OffsetInParent() const override;
  TRectF OpaqueRect() const override;
  bool PaintsInsideBounds() const override;

 public:
  static const TPropertyTable& ClassProperties();

 private:
  void BuildLayers();
  void AssignBlankPicture();
  void LeftAnimationFinished();
  void SetCloseButtonSet(TBitmap* normal, TBitmap* hover, TBitmap* pushed);
  TPointF ToScrollBox(TControl* control, float x, float y) const;
  IQxITab* HostTab(ComPtr<IQxITab>& holder);

  ComPtr<IServiceCoreWrap> FServiceCore;
  std::int32_t FTabId = 0;
  bool FDestroying = false;
  TTabbarImageRes* FImageRes = nullptr;
  TLayout* FContent = nullptr;
  TImage* FThumbnail = nullptr;
  bool FHasThumbnail = false;
  TBitmapAnimation* FThumbnailAnimation = nullptr;
  TImage* FBase = nullptr;
  TImage* FHoverBound = nullptr;
  TBadgeImage* FBadge = nullptr;
  TImage* FDim = nullptr;
  TFloatAnimation* FDimAnimation = nullptr;
  TImage* FProgress = nullptr;
  TBitmapListAnimation* FProgressAnimation = nullptr;
  TImageButton* FCloseButton = nullptr;
  TFloatAnimation* FCloseAnimation = nullptr;
  ITabImageScrollBox* FScrollBox = nullptr;
  float FDragOffset = 0;
  TFloatAnimation* FDragOffsetAnimation = nullptr;
  TFloatAnimation* FLeftAnimation = nullptr;
  double FSortPosition = 0;
  ComPtr<ITabViewLayoutAttributes> FAttributes;
  bool FFirstInSection = false;
  bool FLastInSection = false;
  bool FOverlapsLeft = false;
  bool FOverlapsRight = false;
  bool FPositioned = false;
};

// The strip holds nothing but tab images; nil for anything else.
inline TTabImage* AsTabImage(TTabImageItem* item) { return item ? item->AsTabImage() : nullptr; }

}  // namespace qx
