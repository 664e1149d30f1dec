#pragma once

// One icon of the cabinet bar: a round base with the site's favicon, the title beside
// it and two wires to the ends of the run of tabs it stands for. It decides by itself
// what fits in the width it gets: wires, title, or the favicon alone.

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "base/ComPtr.h"
#include "cabinet/CabinetBarIconParts.h"
#include "host/ServiceCoreWrapIntf.h"
#include "resources/SharedBitmap.h"
#include "toolkit/Animation.h"
#include "toolkit/Image.h"

namespace qx {

class TCabinetIconBarImageRes;
class TTabImage;

class TCabinetIcon2 : public TCabinetIconLayout {
 public:
  static constexpr float kIconTextMargin = 4;
  static constexpr float kIconTextGap = 3;
  static constexpr float kIconEdge = 8;
  static constexpr float kLineOffset = 4;
  static constexpr float kMinTextWidth = 25;
  static constexpr float kMinIconWidth = 24;

  TCabinetIcon2(TFmxObject* owner, std::u16string tabId, IQxITab* tab, IServiceCoreWrap* serviceCore,
                TCabinetIconBarImageRes* imageRes);
  ~TCabinetIcon2() override;
  std::string ClassName() const override { return "TCabinetIcon2"; }

  // ---- identity
  const std::u16string& TabId() const { return FTabId; }
  IQxITab* Tab() const { return FTab.get(); }
  std::int32_t DomainId() const { return FDomainId; }
  void SetDomainId(std::int32_t value) { FDomainId = value; }
  float zPosition() const { return FDepthPosition; }
  void SetzPosition(float value) { FDepthPosition = value; }

  // ---- look
  ISharedFMXBitmap* Favicon() const { return FFavicon.get(); }
  void SetFavicon(ISharedFMXBitmap* favicon);
  const std::u16string& Title() const;
  void SetTitle(const std::u16string& title);
  void SetFont(const std::u16string& name, float size);
  float TextWidth() const;
  float IconBaseWidth() const;

  // ---- areas, in the bar's coordinates (the strip's)
  const TRectF& visibleArea() const { return FvisibleArea; }
  void SetvisibleArea(const TRectF& rect) { FvisibleArea = rect; }
  const TRectF& compoundVisibleArea() const { return FcompoundVisibleArea; }
  void SetcompoundVisibleArea(const TRectF& rect) { FcompoundVisibleArea = rect; }
  void IncludeVisibleArea(const TRectF& rect);
  float FirstTabWidth() const;
  float LastFirstTabWidth() const { return FLastFirstTabWidth; }
  void SetLastFirstTabWidth(float value);

  void UpdateAreaWithMinLeft(float minLeft);
  void UpdateAreaWithMaxRight(float maxRight);
  void ShrinkAreaFromRight(float rightValue);
  void ShrinkAreaFromLeft(float leftValue);

  // ---- what fits
  bool CanDrawTitle(float width) const;
  bool CanDrawLines(float width) const;
  float GetAlignedWidth(float maxWidth) const;
  float LeftMargin(bool drawLines, bool drawText) const;
  float RightMargin(bool drawLines, bool drawText) const;
  // How much wider the gap to prev must become so the two don't touch; 0 when it is enough.
  float GetRequiredLeftMargin(const TCabinetIcon2* prev) const;
  // The favicon and title block for a width.
  TRectF IconRect(float width, bool drawLines, bool drawText) const;

  // ---- placement
  void AnimationSetLeft(bool animated, float duration, std::int32_t animationType, float value);
  void AnimationSetWidth(bool animated, float duration, std::int32_t animationType, float value);
  void UpdateLayout();
  bool LeftLineVisible() const;
  bool RightLineVisible() const;
  // The wires' lengths as laid out, 0 while hidden.
  float LeftLineWidth() const;
  float RightLineWidth() const;
  bool TitleVisible() const;
  bool ShowingLeftLine() const { return LeftLineVisible(); }

  // ---- flags of a layout pass
  bool DragTarget() const { return FDragTarget; }
  void SetDragTarget(bool value) { FDragTarget = value; }
  bool RightToLeft() const { return FRightToLeft; }
  void SetRightToLeft(bool value) { FRightToLeft = value; }
  bool ForceHideLines() const { return FForceHideLines; }
  void SetForceHideLines(bool value) { FForceHideLines = value; }
  TCabinetIcon2* NextIcon() const { return FNextIcon; }
  void SetNextIcon(TCabinetIcon2* icon);

  // ---- the bar's bookkeeping across passes: the last pass that placed the icon, and
  // the tab image it stood over then with that image's tab id, which together name the
  // tab without asking for its id text.
  std::uint32_t Pass() const { return FPass; }
  void SetPass(std::uint32_t value) { FPass = value; }
  const TTabImage* Image() const { return FImage; }
  std::int32_t ImageTabId() const { return FImageTabId; }
  void SetImage(const TTabImage* image, std::int32_t tabId) {
    FImage = image;
    FImageTabId = tabId;
  }

  std::function<void(TCabinetIcon2* sender)> OnIconClick;
  void Click() override;

  // ---- parts, for the bar and for tests
  TCabinetIconLayout* IconTextLayout() const { return FIconTextLayout; }
  TImage* IconBaseImage() const { return FIconBaseImage; }
  TImage* IconBaseImageInside() const { return FIconBaseImageInside; }
  TImage* IconImage() const { return FIconImage; }
  TImage* IconTextBackImageFill() const { return FIconTextBackImageFill; }
  TTextPaintBox* TextBox() const { return FTextBox; }
  TLayout* LeftLineLayout() const { return FLeftLineLayout; }
  TLayout* RightLineLayout() const { return FRightLineLayout; }
  TFloatAnimation* HorzPositionAnimation() const { return FHorzPositionAnimation; }
  TFloatAnimation* WidthAnimation() const { return FWidthAnimation; }
  TIconTextBackStatus IconTextBackStatus() const { return FIconTextBackStatus; }

 protected:
  void Resize() override;
  void Notification(TFmxObject* object) override;

 private:
  void BuildParts();
  void IconTextLayoutChangeStatus();
  void Animate(TFloatAnimation& animation, bool& once, bool animated, float duration, std::int32_t type,
               float value, void (TCabinetIcon2::*write)(float));
  void WriteLeft(float value) { Position().SetX(value); }
  void WriteWidth(float value) { SetWidth(value); }
  void KeepWidthFloor(bool growRight);
  // Everything the layout of the parts depends on.
  struct TLayoutInputs {
    float Width = 0, Height = 0, FirstTabWidth = 0, VisibleLeft = 0, CompoundRight = 0, TextWidth = 0;
    bool HasTitle = false, ForceHideLines = false;
    std::array<const TBitmap*, 4> Pictures{};
    bool operator==(const TLayoutInputs&) const = default;
  };
  TLayoutInputs LayoutInputs() const;
  void LimitVisibleToCompound();

  ComPtr<IServiceCoreWrap> FServiceCore;
  TCabinetIconBarImageRes* FImageRes = nullptr;
  ComPtr<ISharedFMXBitmap> FFavicon;
  std::u16string FTabId;
  std::int32_t FDomainId = 0;
  ComPtr<IQxITab> FTab;
  float FDepthPosition = 0;
  TRectF FvisibleArea;
  TRectF FcompoundVisibleArea;
  bool FHorzPosSet = false;
  bool FWidthSet = false;
  // Set when this icon started its width animation, until seen stopped.
  mutable bool FWidthAnimating = false;
  TFloatAnimation* FHorzPositionAnimation = nullptr;
  TFloatAnimation* FWidthAnimation = nullptr;
  bool FDragTarget = false;
  TCabinetIconLayout* FIconTextLayout = nullptr;
  TLayout* FIconTextBackLayout = nullptr;
  TImage* FIconTextBackImageLeft = nullptr;
  TImage* FIconTextBackImageFill = nullptr;
  TImage* FIconTextBackImageRight = nullptr;
  TLayout* FIconTextInternalLayout = nullptr;
  TImage* FIconBaseImage = nullptr;
  TImage* FIconBaseImageInside = nullptr;
  TImage* FIconImage = nullptr;
  TTextPaintBox* FTextBox = nullptr;
  TLayout* FLeftLineLayout = nullptr;
  TImage* FLeftLineImage = nullptr;
  TImage* FLeftLineFillImage = nullptr;
  TLayout* FRightLineLayout = nullptr;
  TImage* FRightLineImage = nullptr;
  TImage* FRightLineFillImage = nullptr;
  TIconTextBackStatus FIconTextBackStatus = TIconTextBackStatus::itbsNone;
  TCabinetIcon2* FNextIcon = nullptr;
  bool FForceHideLines = false;
  std::uint32_t FPass = 0;
  const TTabImage* FImage = nullptr;
  std::int32_t FImageTabId = 0;
  float FLastFirstTabWidth = 0;
  bool FLastFirstTabWidthSet = false;
  bool FRightToLeft = false;
  bool FInLayout = false;
  TLayoutInputs FLaidOut;
  bool FLaidOutValid = false;
  // The pictures the base shows now, so an unchanged look is not copied again.
  bool FBaseLookShown = false;
  TBitmap* FShownInside = nullptr;
  TBitmap* FShownBase = nullptr;
  struct TTextWidthCache {
    bool Valid = false;
    std::u16string Title, FontName;
    float FontSize = 0;
    float Width = 0;
  };
  mutable TTextWidthCache FTextWidthCache;
};

}  // namespace qx
