#pragma once

// The floating window of a drag on the cabinet screen: a stack of thumbnails that
// follows the pointer, passes mouse input through, takes the size of what lies
// beneath, and flies to its goal or shrinks away when the drag ends.

#include <cstdint>
#include <memory>
#include <string>

#include "base/ComPtr.h"
#include "host/ServiceCoreWrapIntf.h"
#include "resources/BaseFormXE7.h"
#include "resources/CabinetImageRes.h"
#include "resources/TabbarImageRes.h"
#include "tabview/CabinetDnDIntf.h"
#include "toolkit/Animation.h"
#include "toolkit/Image.h"
#include "toolkit/Timer.h"

namespace qx {

class TCabinetDnDForm : public TBaseFormXE7, public ICabinetDnDWindow {
 public:
  static constexpr int kHideTimeout = 1000;
  static constexpr int kMouseUpTimeout = 3000;

  TCabinetDnDForm(TFmxObject* owner, IServiceCoreWrap* serviceCore, TTabbarImageRes* tabbarImageRes,
                  HWnd clientWindowHandle);
  ~TCabinetDnDForm() override;
  std::string ClassName() const override { return "TCabinetDnDForm"; }

  void ShowForm(std::int32_t sourceType, std::int32_t destType, const TCabinetDragImageInfoList& images,
                TPoint offset, TPoint mousePoint) override;
  void Move(std::int32_t sourceType, std::int32_t destType, TPoint mousePoint) override;
  bool UpdateDragImage(std::int32_t sourceType, std::int32_t destType,
                       const TCabinetDragImageInfoList& images, TPoint offset) override;
  void HideDragImage(bool animated, TCabinetDragImageHideAnimationType animationType,
                     TPointF destinationPoint, const std::u16string& dragSourceId, std::int32_t sourceType,
                     std::int32_t destType, bool cancel) override;
  void HideImmediately() override;
  bool Showing() const override { return Visible(); }
  TPoint DragImageCenterPoint() const override;
  TPoint SavedTopImagePoint() const override { return FSaveTopImagePoint; }
  void SetOnDragImageHide(THideEvent handler) override { FOnDragImageHide = std::move(handler); }

  float DragImageRatio() const { return FDragImageRatio; }
  void SetDragImageRatio(float value);
  float HideAnimationRatio() const { return FHideAnimationRatio; }
  void SetHideAnimationRatio(float value);

  TImage* Image() const { return FImage; }
  TImage* imgClose() const { return FimgClose; }
  TFloatAnimation* HideAnimation() const { return FHideAnimation; }
  TFloatAnimation* DragImageRatioAnimation() const { return FDragImageRatioAnimation; }
  const TBitmap* DragImageBitmap() const { return FDragImageBitmap.get(); }
  bool Hiding() const { return FHiding; }
  const std::u16string& DragSourceId() const { return FDragSourceId; }

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  void HandleCreated() override;

 private:
  void FormClose();
  void MoveWindow(TPoint mousePoint);
  void AnimateDragImageRatio(float target, float duration);
  void FadeCloseBadge(float target);
  void HideAnimationFinish();
  void tmHideTimer();
  void tmCheckHideTimer();
  bool ClientWindowEnabled() const;
  TSizeF BitmapSize() const;

  std::unique_ptr<TBitmap> FDragImageBitmap;
  ComPtr<IServiceCoreWrap> FServiceCore;
  std::unique_ptr<TCabinetImageRes> FImageRes;
  TTabbarImageRes* FTabbarImageRes = nullptr;
  float FOffsetRatioX = 0, FOffsetRatioY = 0;
  float FCenterPointRatioX = 0, FCenterPointRatioY = 0;
  float FTopImageLeftRatio = 0, FTopImageTopRatio = 0;
  TPointF FHideAnimationDestinationPoint, FHideAnimationStartPoint;
  float FShrinkStartDragImageRatio = 0;
  TCabinetDragImageHideAnimationType FHideAnimationType = TCabinetDragImageHideAnimationType::atNormal;
  float FHideAnimationRatio = 0;
  THideEvent FOnDragImageHide;
  std::u16string FDragSourceId;
  bool FHiding = false;
  std::uint32_t FHideStart = 0;
  std::uint32_t FMouseUpTime = 0;
  TPoint FSaveTopImagePoint, FSaveOffset;
  float FDragImageRatio = 1;
  HWnd FClientWindowHandle = nullptr;

  TImage* FImage = nullptr;
  TImage* FimgClose = nullptr;
  TFloatAnimation* FCloseImageOpacityAnimation = nullptr;
  TFloatAnimation* FDragImageRatioAnimation = nullptr;
  TFloatAnimation* FHideAnimation = nullptr;
  TTimer* FtmHide = nullptr;
  TTimer* FtmCheckHide = nullptr;
};

}  // namespace qx
