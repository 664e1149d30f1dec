#include "module/PreviewStripExtension.h"

#include <cmath>

#include "module/RegisterAppHandleProc.h"
#include "resources/TabbarImageRes.h"
#include "smartsearch/SmartSearchMain.h"
#include "tabbar/TabbarForm.h"
#include "tabbar/TabbarParentForm.h"
#include "tabview/TabImage.h"
#include "toolkit/Application.h"

namespace qx {
namespace {

constexpr int kStripFormHeight = 53;
constexpr std::uint32_t kChildStyle = 0x40000000u;
constexpr std::uint32_t kNotPopupMask = 0x7FFFFFFFu;
constexpr std::uint32_t kRepositionMessage = 32769;

HWnd ParentWindowOf(IQxIHandle* parent) {
  std::uintptr_t value = 0;
  if (!parent || Failed(parent->GetValue(&value))) return nullptr;
  return reinterpret_cast<HWnd>(static_cast<std::uint32_t>(value));
}

}  // namespace

TPrevewStripPluginImpl::TPrevewStripPluginImpl() = default;

// Smart search outlives the control when the host never called DestroyControl.
TPrevewStripPluginImpl::~TPrevewStripPluginImpl() { FSmartSearch.reset(); }

void TPrevewStripPluginImpl::Create(IQxIServiceCore* serviceCore) {
  TQxIPluginImpl::Create(serviceCore);
  FSmartSearch = std::make_unique<TSmartSearch>(FServiceCoreWrap.get());
}

void TPrevewStripPluginImpl::QueryInterfaceExtra(const TGUID& iid, void** object) {
  if (iid == IPreviewStrip::IID)
    *object = static_cast<IPreviewStrip*>(this);
  else if (iid == IQxIControl::IID)
    *object = static_cast<IQxIControl*>(this);
}

HResult TPrevewStripPluginImpl::OnClientVisible(const TString&, IQxIEvent*) {
  if (!FTabbarForm) return kOk;
  FTabbarForm->UpdateChildFormsPosition(kRepositionMessage);
  FTabbarForm->OnClientVisible();
  return kOk;
}

HResult QX_STDCALL TPrevewStripPluginImpl::CreateControl(IQxIHandle* parent, IQxIHandle** control) {
  if (control) *control = nullptr;
  IServiceCoreWrap* core = FServiceCoreWrap.get();
  if (!FImageRes) FImageRes = std::make_unique<TTabbarImageRes>(core, kTabbarSkinPath);
  // A second call makes nothing.
  if (FTabbarForm) return kOk;
  const HWnd mainWindow = reinterpret_cast<HWnd>(core ? core->MainWindowHandle() : 0);
  RegisterAppHandle(mainWindow);
  GetResourceReleaser(FResourceReleaser);
  FResourceReleaser->AddUse();

  FTabbarForm = std::make_unique<TTabbarParentForm>(nullptr, FImageRes.get(), core, mainWindow);
  FTabbarForm->BorderStyle = TFmxFormBorderStyle::None;
  FTabbarForm->HandleNeed();
  FTabbarFrame = FTabbarForm->TabbarChildFrame();
  FTabbarForm->BorderStyle = TFmxFormBorderStyle::None;
  FTabbarForm->SetHeight(kStripFormHeight);

  IPlatform& os = Platform();
  const HWnd formWindow = FTabbarForm->FormHandle();
  auto style = static_cast<std::uint32_t>(os.GetWindowLongW(formWindow, win::GWL_STYLE));
  style = (style | kChildStyle) & kNotPopupMask;
  os.SetWindowLongW(formWindow, win::GWL_STYLE, static_cast<std::int32_t>(style));
  os.SetParent(formWindow, ParentWindowOf(parent));

  ComPtr<IQxIHandle> handle;
  if (core) core->CreateHandle(reinterpret_cast<WindowHandle>(formWindow), handle);
  if (control) *control = handle.detach();
  return kOk;
}

HResult QX_STDCALL TPrevewStripPluginImpl::DestroyControl() {
  if (FFinalized) return kOk;
  FFinalized = true;
  if (FTabbarForm) {
    FTabbarForm->SaveThumbnailCache();
    Platform().SetParent(FTabbarForm->FormHandle(), nullptr);
    FTabbarForm.reset();
    FTabbarFrame = nullptr;
  }
  FSmartSearch.reset();
  FImageRes.reset();
  TTabImage::ReleaseBlankPicture();
  if (FResourceReleaser) {
    FResourceReleaser->ReleaseUse();
    FResourceReleaser = nullptr;
  }
  Application().OnException = nullptr;
  return kOk;
}

HResult QX_STDCALL TPrevewStripPluginImpl::GetControlGuid(IQxIString** guid) {
  if (!guid) return kFail;
  *guid = nullptr;
  return TextOut(kPreviewStripGuid, guid);
}

HResult TPrevewStripPluginImpl::ChildFrameSide(std::int32_t* value, TSide side) {
  if (!value) return kOk;
  *value = 0;
  if (!FTabbarForm) return kOk;
  const TRectF rect = FTabbarForm->GetChildFrameRect();
  const float sides[] = {rect.Left, rect.Right, rect.Top, rect.Bottom};
  // Nearest integer, ties to even.
  *value = static_cast<std::int32_t>(std::lrint(sides[static_cast<int>(side)]));
  return kOk;
}

HResult QX_STDCALL TPrevewStripPluginImpl::GetChildFrameLeft(std::int32_t* value) {
  return ChildFrameSide(value, TSide::Left);
}
HResult QX_STDCALL TPrevewStripPluginImpl::GetChildFrameRight(std::int32_t* value) {
  return ChildFrameSide(value, TSide::Right);
}
HResult QX_STDCALL TPrevewStripPluginImpl::GetChildFrameTop(std::int32_t* value) {
  return ChildFrameSide(value, TSide::Top);
}
HResult QX_STDCALL TPrevewStripPluginImpl::GetChildFrameBottom(std::int32_t* value) {
  return ChildFrameSide(value, TSide::Bottom);
}

TTabImageSectionList* TPrevewStripPluginImpl::GetTabList() {
  return FTabbarFrame ? FTabbarFrame->TabList() : nullptr;
}

TTabImage* TPrevewStripPluginImpl::GetActiveTab() {
  return FTabbarFrame ? FTabbarFrame->ActiveTab() : nullptr;
}

void TPrevewStripPluginImpl::TabScrollBoxScreenRect(TRectF& rect) {
  rect = FTabbarFrame ? FTabbarFrame->TabScrollBoxScreenRect() : TRectF{};
}

bool TPrevewStripPluginImpl::TabScreenRectOf(std::u16string_view tabGuid, TRectF& rect) {
  TTabImageSectionList* list = GetTabList();
  const auto* tab = list ? dynamic_cast<const TTabImage*>(list->FindTabImageFromId(tabGuid)) : nullptr;
  rect = tab ? tab->TabImageScreenRect() : TRectF{};
  return tab != nullptr;
}

void TPrevewStripPluginImpl::HideTitleForm(bool flag) {
  if (FTabbarForm) FTabbarForm->HideTitleForm(flag ? 1.0f : 0.0f);
}

}  // namespace qx
