#pragma once

// The small popup under a hovered tab: its favicon and title on a plate in the
// colour of the tab's group.

#include <cstdint>
#include <string>

#include "base/ComPtr.h"
#include "host/ServiceCoreWrapIntf.h"
#include "resources/BaseFormXE7.h"
#include "resources/TabbarImageRes.h"
#include "tabview/CabinetIconBarIntf.h"
#include "toolkit/Animation.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"
#include "toolkit/TextControls.h"

namespace qx {

class TTitleForm : public TBaseFormXE7 {
 public:
  static constexpr int kHeight = 39;
  static constexpr int kMinWidth = 112;
  static constexpr float kMaxTitleWidth = 320;

  TTitleForm(TFmxObject* owner, IServiceCoreWrap* serviceCore, TTabbarImageRes* imageRes, HWnd parentHandle,
             ICabinetIconBar* cabinetIconBar);
  std::string ClassName() const override { return "TTitleForm"; }

  // X and Y: the screen point the popup hangs from (its top centre).
  void ShowTitle(const TBitmap* favicon, const std::u16string& title, std::int32_t groupIndex, float x,
                 float y, bool animated, const std::u16string& tabId);
  void HideAnimation(float duration);
  void UpdatePosition(float x, float y);
  void UpdateFavicon(const TBitmap* favicon);
  bool IsHidingOrHidden() const;
  const std::u16string& CurrentTabId() const { return FCurrentTabId; }

  TLayout* RootLayout() const { return FRootLayout; }
  TImage* imgFavicon() const { return FimgFavicon; }
  TImage* imgCenter() const { return FimgCenter; }
  TLabel* lbTitle() const { return FlbTitle; }
  TFloatAnimation* RootlayoutOpacityAnimation() const { return FRootlayoutOpacityAnimation; }

  void MouseMove(TShiftState shift, float x, float y) override;

 private:
  void SetTitleColor(std::int32_t groupIndex);
  void FitTitleForm();
  void PlaceOnScreen();
  void RootlayoutOpacityAnimationFinish();

  TTabbarImageRes* FImageRes = nullptr;
  std::int32_t FGroupIndex = -1;
  ComPtr<IServiceCoreWrap> FServiceCore;
  bool FFontInit = false;
  bool FFirstShow = true;
  std::u16string FCurrentTabId;
  HWnd FParentHandle = nullptr;
  HWnd FMoorLandingWindow = nullptr;
  bool FMoorLandingSearched = false;
  ComPtr<ICabinetIconBar> FCabinetIconBar;

  TLayout* FRootLayout = nullptr;
  TImage* FimgCenter = nullptr;
  TImage* FimgLeft = nullptr;
  TImage* FimgRight = nullptr;
  TImage* FimgFavicon = nullptr;
  TLabel* FlbTitleShadow = nullptr;
  TLabel* FlbTitle = nullptr;
  TFloatAnimation* FRootlayoutOpacityAnimation = nullptr;
};

}  // namespace qx
