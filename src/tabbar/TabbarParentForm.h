#pragma once

// The borderless form in the host's rebar that holds the tab strip's frame: it
// draws the strip's background, answers the window's hit tests, forwards wheel
// and touch input, and in cabinet mode covers the strip with the tab group bar.

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "base/ComPtr.h"
#include "host/ServiceCoreWrapIntf.h"
#include "platform/Platform.h"
#include "resources/BaseFormXE7.h"
#include "tabbar/TabGroupbarControls.h"
#include "toolkit/Bitmap.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"
#include "toolkit/TextControls.h"

namespace qx {

class TTabbarFrame;
class TTabbarImageRes;
class TImageButton;
class TCustomControlToolTip;

inline constexpr int kTabGroupCount = 6;

class TTabbarParentForm : public TBaseFormXE7 {
 public:
  TTabbarParentForm(TFmxObject* owner, TTabbarImageRes* imageRes, IServiceCoreWrap* serviceCore,
                    HWnd clientWindowHandle);
  ~TTabbarParentForm() override;
  std::string ClassName() const override { return "TTabbarParentForm"; }

  // ---- the frame and its place
  TTabbarFrame* TabbarChildFrame() const { return FTabbarChildFrame_; }
  TImage* TabbarChildFrameImage() const { return TabbarChildFrame_; }
  void SetTabbarChildFrameVisible(bool visible);
  float ChildFrameWidth() const;
  // Clamped to the form's width; the image stays centred.
  void SetChildFrameWidth(float width);
  TRectF GetChildFrameRect() const;

  // ---- forwarded to the frame
  void UpdateChildFormsPosition(std::uint32_t message);
  void HideTitleForm(float duration);
  void SaveThumbnailCache();
  void OnClientVisible();
  void OnClientInitialize();
  void UpdateMainWindowActive(bool active);

  // ---- the window
  bool IsHitTestTranparent(float x, float y);
  // The handle is the form's window or a child of it.
  bool IsSelfWindow(HWnd handle) const;
  void ProcessTouchMessage(std::uint32_t count, HTouchInput handle);
  HWnd ClientWindowHandle() const { return FClientWindowHandle; }
  // The form's window lost the focus: a running title edit is committed.
  void OnFormKillFocus();

  // ---- the tab group bar
  void ShowTabGroupbar();
  void HideTabGroupbar();
  bool ShowingTabgroupBar() const;
  void UpdateActiveGroup();
  void InitGroupButtons();
  void UpdateGroupbarLayout();
  void EditGroupTitle();
  void HideEditAndUpdateTitle(bool cancel);
  bool EditingGroupTitle() const;
  std::int32_t CurrentGroupIndex() const;
  std::int32_t GetGroupIndexFromScreenPoint(TPointF point) const;
  TRectF GetGroupTabRect(std::int32_t index) const;
  bool ScreenPointInGroupTab(TPointF point) const;
  void UpdateTabGroupDragHover(std::int32_t index);
  void UpdateRebarBorder();
  void UpdateToolTip();

  // ---- parts the frame and tests reach
  TImage* imgBackGround() const { return imgBackGround_; }
  TImage* imgTabGroupbarBack() const { return imgTabGroupbarBack_; }
  TImage* TabGroupbarExitButtonBack() const { return TabGroupbarExitButtonBack_; }
  TImageButton* btnExitCabinet() const { return btnExitCabinet_; }
  TLayout* GroupButtonLayout() const { return GroupButtonLayout_; }
  TLayout* TabGroupbarExitButtonBackLayout() const { return TabGroupbarExitButtonBackLayout_; }
  TTitleInplaceEdit* TitleInplaceEdit() const { return TitleInplaceEdit_; }
  TGroupLayout* GroupLayout(int index) const { return FGroups[index].Layout; }
  TLabel* lbGroupName(int index) const { return FGroups[index].Name; }
  TLabel* lbGroupNameShadow(int index) const { return FGroups[index].NameShadow; }
  TImageButton* btnGroupMenu(int index) const { return FGroups[index].MenuButton; }
  TGroupColorImage* imgGroupColor(int index) const { return FGroups[index].Color; }
  TImage* imgActive(int index) const { return FGroups[index].Active; }
  TImage* imgSeparator(int index) const { return FGroups[index].Separator; }
  TLayout* DragOverLayout(int index) const { return FGroups[index].DragOver; }
  const TBitmap* RebarBorderBitmap() const { return FRebarBorderBitmap.get(); }
  const TBitmap* RebarBorderBitmapLight() const { return FRebarBorderBitmapLight.get(); }
  TCustomControlToolTip* ToolTip() const { return FToolTip.get(); }
  bool WindowVisible() const { return FWindowVisible; }

 protected:
  void HandleCreated() override;
  void WndMethod(TWndMessage& message) override;
  void Resize() override;

 private:
  struct TGroupParts {
    TGroupLayout* Layout = nullptr;
    TImage* Active = nullptr;
    TGroupColorImage* Color = nullptr;
    TImageButton* MenuButton = nullptr;
    TLabel* NameShadow = nullptr;
    TLabel* Name = nullptr;
    TLayout* DragOver = nullptr;
    TImage* Separator = nullptr;  // none before the first group
  };

  enum class TTouchKind { Down, Move, Up };

  void LoadDesign();
  void FindParts();
  void MakeRebarBorderBitmaps();
  void FormCreate();
  void FormResize();
  void FormShow();
  void InitTabGroupbar();
  void SetupTabGroupbar();
  // The system font goes to the first shadow label and from it to every group label.
  void ApplySystemFontToGroupLabels();
  void RegisterTabGroupMenu();
  void SetGroupButtonImage(TGroupColorImage* image, int groupIndex, bool active, bool isPrivate);
  void SetWindowVisible(bool visible);
  void ParentWindowProc(TWndMessage& message);
  void InstallHooks();
  void RemoveHooks();

  // handlers of the design
  void GroupLayout_0Click(TFmxObject* sender);
  void lbGroupName_0Click(TFmxObject* sender);
  void btnGroupMenu_0Click(TFmxObject* sender);
  void GroupLayoutContextMenu(TFmxObject* sender);
  void StartEditGroupTitle(TLabel* label);
  void TitleInplaceEditKeyDown(int& key, char16_t& keyChar, TShiftState shift);
  void TitleInplaceEditExit();
  void ShowGroupPopupMenu();
  void imgBackGroundDragOver(const TDragObject& data, TDragOperation& operation);
  void imgBackGroundDragDrop(const TDragObject& data);

  // what the frame is asked (TabbarParentFormFrame.cpp)
  void CreateChildFrame();
  void LayoutChildFrame();
  void SetFrameBottomBitmap(const TBitmap* bitmap);
  TRectF FrameGroupButtonRect() const;
  TRectF FrameAddTabButtonRect() const;
  bool FrameHitTestTransparent(float x, float y);
  void FrameTouch(TTouchKind kind, float x, float y);
  void FrameCaptureLost();

  // the host's groups
  bool GroupAt(std::int32_t index, ComPtr<IQxITabGroup>& group) const;
  bool IsPrivateGroup(std::int32_t index) const;

  bool FCreated = false;
  bool FFirstShow = true;
  TTabbarImageRes* FImageRes;
  ComPtr<IServiceCoreWrap> FServiceCore;
  TTabbarFrame* FTabbarChildFrame_ = nullptr;
  HWnd FClientWindowHandle;
  bool FInitGroupbar = false;
  HWnd FLastFocus = nullptr;
  bool FGroupbarMenuCreated = false;
  bool FMainWindowActive = true;
  std::unique_ptr<TBitmap> FRebarBorderBitmap;
  std::unique_ptr<TBitmap> FRebarBorderBitmapLight;
  bool FTabGroupbarSetupDone = false;
  std::unique_ptr<TCustomControlToolTip> FToolTip;
  bool FShowingToolTip = false;
  bool FWindowVisible = false;

  // the design's parts
  TImage* imgBackGround_ = nullptr;
  TImage* imgBackGroundBottom_ = nullptr;
  TImage* TabbarChildFrame_ = nullptr;
  TLayout* TabGroupbarBackLayout_ = nullptr;
  TImage* imgTabGroupbarBack_ = nullptr;
  TImage* imgTabGroupbarBackBottom_ = nullptr;
  TLayout* GroupButtonLayout_ = nullptr;
  TImage* imgGroupbarLeft_ = nullptr;
  TImage* imgGroupbarRight_ = nullptr;
  TImage* imgGroupbarFill_ = nullptr;
  TTitleInplaceEdit* TitleInplaceEdit_ = nullptr;
  TLayout* TabGroupbarExitButtonBackLayout_ = nullptr;
  TImage* TabGroupbarExitButtonBack_ = nullptr;
  TImage* TabGroupbarExitButtonBackBottom_ = nullptr;
  TImageButton* btnExitCabinet_ = nullptr;
  std::array<TGroupParts, kTabGroupCount> FGroups;
};

}  // namespace qx
