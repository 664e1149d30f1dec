#include "tabbar/TabbarParentForm.h"

#include <algorithm>
#include <filesystem>

#include "resources/BitmapResourceMgr.h"
#include "resources/CustomCtrlToolTip2.h"
#include "resources/ImageButton.h"
#include "resources/TabbarImageRes.h"
#include "tabbar/OleDropItems.h"
#include "tabbar/TabbarParentFormDesign.h"
#include "tabbar/TabbarForm.h"
#include "toolkit/Canvas.h"

namespace qx {

namespace {

template <class T>
T* Part(const TFmxObject* root, const std::u16string& name) {
  auto* part = FindComponentAs<T>(root, name);
  if (!part) throw EToolkitError("The tab strip's form has no " + ToUtf8(name));
  return part;
}

std::u16string Indexed(const char16_t* name, int index) { return name + FromUtf8(std::to_string(index)); }

}  // namespace

TTabbarParentForm::TTabbarParentForm(TFmxObject* owner, TTabbarImageRes* imageRes,
                                     IServiceCoreWrap* serviceCore, HWnd clientWindowHandle)
    : TBaseFormXE7(owner),
      FImageRes(imageRes),
      FServiceCore(serviceCore),
      FClientWindowHandle(clientWindowHandle) {
  LoadDesign();
  // The design's creation handler runs inside the inherited construction, before the rest.
  FormCreate();
  MakeRebarBorderBitmaps();
  UpdateRebarBorder();
  if (FImageRes) {
    btnExitCabinet_->SetNormalBitmap(FImageRes->TabbarCabinetOpened());
    btnExitCabinet_->SetHoverBitmap(FImageRes->TabbarCabinetOpenedHovered());
    btnExitCabinet_->SetPushedBitmap(FImageRes->TabbarCabinetOpenedPressed());
    TabbarChildFrame_->SetBitmap(FImageRes->TabbarBackgroundFill());
  }
  InstallHooks();
}

TTabbarParentForm::~TTabbarParentForm() {
  RemoveHooks();
  FToolTip.reset();
  // Children go before the border bitmaps they were given copies of.
  DeleteChildren();
  RestoreWindowProc();
}

void TTabbarParentForm::LoadDesign() {
  RegisterTabGroupbarClasses();
  TStoredLayoutOptions options;
  options
      .Handler("imgBackGroundDragOver",
               TDragOverEvent([this](TFmxObject*, const TDragObject& data, const TPointF&,
                                     TDragOperation& operation) { imgBackGroundDragOver(data, operation); }))
      .Handler("imgBackGroundDragDrop",
               TDragDropEvent([this](TFmxObject*, const TDragObject& data, const TPointF&) {
                 imgBackGroundDragDrop(data);
               }))
      .Handler("GroupbarMouseDown", TMouseEvent([this](TFmxObject*, TMouseButton, TShiftState, float, float) {
                 HideEditAndUpdateTitle(false);
               }))
      .Handler("GroupLayout_0Click", TNotifyEvent([this](TFmxObject* sender) { GroupLayout_0Click(sender); }))
      .Handler("lbGroupName_0Click", TNotifyEvent([this](TFmxObject* sender) { lbGroupName_0Click(sender); }))
      .Handler("btnGroupMenu_0Click",
               TNotifyEvent([this](TFmxObject* sender) { btnGroupMenu_0Click(sender); }));
  LoadLayout(TabbarParentFormDesign(), options);
  FindParts();
  OnMouseDown = [this](TFmxObject*, TMouseButton, TShiftState, float, float) {
    HideEditAndUpdateTitle(false);
  };
  OnShow = [this](TFmxObject*) { FormShow(); };
}

void TTabbarParentForm::FindParts() {
  imgBackGround_ = Part<TImage>(this, u"imgBackGround");
  imgBackGroundBottom_ = Part<TImage>(this, u"imgBackGroundBottom");
  TabbarChildFrame_ = Part<TImage>(this, u"TabbarChildFrame");
  TabGroupbarBackLayout_ = Part<TLayout>(this, u"TabGroupbarBackLayout");
  imgTabGroupbarBack_ = Part<TImage>(this, u"imgTabGroupbarBack");
  imgTabGroupbarBackBottom_ = Part<TImage>(this, u"imgTabGroupbarBackBottom");
  GroupButtonLayout_ = Part<TLayout>(this, u"GroupButtonLayout");
  imgGroupbarLeft_ = Part<TImage>(this, u"imgGroupbarLeft");
  imgGroupbarRight_ = Part<TImage>(this, u"imgGroupbarRight");
  imgGroupbarFill_ = Part<TImage>(this, u"imgGroupbarFill");
  TitleInplaceEdit_ = Part<TTitleInplaceEdit>(this, u"TitleInplaceEdit");
  TabGroupbarExitButtonBackLayout_ = Part<TLayout>(this, u"TabGroupbarExitButtonBackLayout");
  TabGroupbarExitButtonBack_ = Part<TImage>(this, u"TabGroupbarExitButtonBack");
  TabGroupbarExitButtonBackBottom_ = Part<TImage>(this, u"TabGroupbarExitButtonBackBottom");
  btnExitCabinet_ = Part<TImageButton>(this, u"btnExitCabinet");
  // Leaving the cabinet screen is the page's business; the frame asks it.
  btnExitCabinet_->OnClick = [this](TFmxObject*) {
    if (FTabbarChildFrame_) FTabbarChildFrame_->btnExitCabinetClick();
  };
  for (int i = 0; i < kTabGroupCount; ++i) {
    TGroupParts& g = FGroups[static_cast<std::size_t>(i)];
    g.Layout = Part<TGroupLayout>(this, Indexed(u"GroupLayout_", i));
    g.Active = Part<TImage>(this, Indexed(u"imgActive_", i));
    g.Color = Part<TGroupColorImage>(this, Indexed(u"imgGroupColor_", i));
    g.MenuButton = Part<TImageButton>(this, Indexed(u"btnGroupMenu_", i));
    g.NameShadow = Part<TLabel>(this, Indexed(u"lbGroupNameShadow_", i));
    g.Name = Part<TLabel>(this, Indexed(u"lbGroupName_", i));
    g.DragOver = Part<TLayout>(this, Indexed(u"DragOverLayout_", i));
    if (i > 0) g.Separator = Part<TImage>(this, Indexed(u"imgSeparator_", i));
  }
  TitleInplaceEdit_->OnKeyDown = [this](int& key, char16_t& keyChar, TShiftState shift) {
    TitleInplaceEditKeyDown(key, keyChar, shift);
  };
  TitleInplaceEdit_->OnExit = [this] { TitleInplaceEditExit(); };
}

// Both borders come from the bottom row of the rebar's background.
void TTabbarParentForm::MakeRebarBorderBitmaps() {
  TString path;
  if (!FServiceCore || !FServiceCore->ResolveResourcePath(kTopBarBackgroundPath, path)) return;
  std::error_code error;
  if (!std::filesystem::is_regular_file(std::filesystem::path(path), error)) return;
  auto background = std::make_unique<TBitmap>();
  try {
    background->LoadFromFile(std::filesystem::path(path));
  } catch (const EToolkitError&) {
    return;
  }
  const int width = background->Width(), height = background->Height();
  if (width <= 0 || height <= 0) return;
  auto bottomRow = [&] {
    auto row = std::make_unique<TBitmap>(width, 1);
    TCanvas canvas(row.get());
    canvas.BeginScene();
    canvas.Clear(0);
    canvas.DrawBitmap(
        *background,
        TRectF(0, static_cast<float>(height - 1), static_cast<float>(width), static_cast<float>(height)),
        TRectF(0, 0, static_cast<float>(width), 1), 1);
    canvas.EndScene();
    return row;
  };
  FRebarBorderBitmap = bottomRow();
  FRebarBorderBitmapLight = bottomRow();
}

void TTabbarParentForm::FormCreate() {
  if (FImageRes) {
    imgBackGround_->SetBitmap(FImageRes->TopBarBackground());
    imgTabGroupbarBack_->SetBitmap(FImageRes->TopBarBackground());
    imgGroupbarLeft_->SetBitmap(FImageRes->TabGroupbarBackgroundLeft());
    imgGroupbarRight_->SetBitmap(FImageRes->TabGroupbarBackgroundRight());
    imgGroupbarFill_->SetBitmap(FImageRes->TabGroupbarBackgroundFill());
    TabGroupbarExitButtonBack_->SetBitmap(FImageRes->TopBarBackground());
  }
  CreateChildFrame();
  // The strip shows only after its first sync with the host.
  TabbarChildFrame_->SetVisible(false);
  FCreated = true;
}

void TTabbarParentForm::FormShow() {
  if (!FFirstShow) return;
  FFirstShow = false;
  FormResize();
}

void TTabbarParentForm::Resize() {
  TBaseFormXE7::Resize();
  // The design sets the size while it is still being loaded.
  if (FCreated) FormResize();
}

void TTabbarParentForm::FormResize() {
  LayoutChildFrame();
  if (!FInitGroupbar) InitTabGroupbar();
  if (!FTabGroupbarSetupDone) SetupTabGroupbar();
  UpdateGroupbarLayout();
  UpdateToolTip();
}

// ---- the child frame's place

void TTabbarParentForm::SetTabbarChildFrameVisible(bool visible) { TabbarChildFrame_->SetVisible(visible); }

float TTabbarParentForm::ChildFrameWidth() const { return TabbarChildFrame_->Width(); }

void TTabbarParentForm::SetChildFrameWidth(float width) {
  width = std::clamp(width, 0.0f, static_cast<float>(ClientWidth()));
  if (width == TabbarChildFrame_->Width()) return;
  TabbarChildFrame_->SetWidth(width);
  Realign();
}

TRectF TTabbarParentForm::GetChildFrameRect() const { return TabbarChildFrame_->AbsoluteRect(); }

void TTabbarParentForm::UpdateMainWindowActive(bool active) {
  if (FMainWindowActive == active) return;
  FMainWindowActive = active;
  if (FTabGroupbarSetupDone) UpdateActiveGroup();
}

// ---- drop on the background

void TTabbarParentForm::imgBackGroundDragOver(const TDragObject&, TDragOperation& operation) {
  operation = TDragOperation::Link;
}

void TTabbarParentForm::imgBackGroundDragDrop(const TDragObject& data) {
  OpenDroppedItems(FServiceCore.get(), data);
}

}  // namespace qx
