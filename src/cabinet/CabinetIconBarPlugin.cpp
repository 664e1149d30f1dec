#include "cabinet/CabinetIconBarPlugin.h"

#include <cmath>

#include "cabinet/CabinetIconBarForm.h"
#include "cabinet/CabinetIconBarFrame.h"
#include "resources/CabinetIconBarImageRes.h"
#include "toolkit/Application.h"

namespace qx {
namespace {

HWnd ParentWindowOf(IQxIHandle* parent) {
  std::uintptr_t value = 0;
  if (!parent || Failed(parent->GetValue(&value))) return nullptr;
  return reinterpret_cast<HWnd>(static_cast<std::uint32_t>(value));
}

// The strip's plug-in gives the toolkit the host's main window; the bar does the
// same without reaching into the module's entry code.
void NoteMainWindow(HWnd mainWindow) {
  Application().SetApplicationWindowCallback(
      [mainWindow] { return reinterpret_cast<std::uintptr_t>(mainWindow); });
}

}  // namespace

TCabinetIconBarPluginImpl::TCabinetIconBarPluginImpl() = default;
TCabinetIconBarPluginImpl::~TCabinetIconBarPluginImpl() = default;

void TCabinetIconBarPluginImpl::QueryInterfaceExtra(const TGUID& iid, void** object) {
  if (iid == ICabinetIconBar::IID)
    *object = static_cast<ICabinetIconBar*>(this);
  else if (iid == IQxIControl::IID)
    *object = static_cast<IQxIControl*>(this);
}

HResult QX_STDCALL TCabinetIconBarPluginImpl::CreateControl(IQxIHandle* parent, IQxIHandle** control) {
  if (control) *control = nullptr;
  IServiceCoreWrap* core = FServiceCoreWrap.get();
  if (!FImageRes) FImageRes = std::make_unique<TCabinetIconBarImageRes>(core, kCabinetBarSkinPath);
  if (FCabinetIconBarForm) return kOk;
  const HWnd mainWindow = reinterpret_cast<HWnd>(core ? core->MainWindowHandle() : 0);
  NoteMainWindow(mainWindow);
  GetResourceReleaser(FResourceReleaser);
  FResourceReleaser->AddUse();

  FCabinetIconBarForm = std::make_unique<TCabinetIconBarForm>(nullptr, FImageRes.get(), core, mainWindow);
  FCabinetIconBarForm->BorderStyle = TFmxFormBorderStyle::None;
  FCabinetIconBarForm->HandleNeed();
  FCabinetIconBarForm->SetHeight(kFormHeight);
  const HWnd formWindow = EmbedChildForm(*FCabinetIconBarForm, ParentWindowOf(parent));

  ComPtr<IQxIHandle> handle;
  if (core && formWindow) core->CreateHandle(reinterpret_cast<WindowHandle>(formWindow), handle);
  if (control) *control = handle.detach();
  return kOk;
}

HResult QX_STDCALL TCabinetIconBarPluginImpl::DestroyControl() {
  if (FFinalized) return kOk;
  FFinalized = true;
  if (FCabinetIconBarForm) {
    Platform().SetParent(FCabinetIconBarForm->FormHandle(), nullptr);
    FCabinetIconBarForm.reset();
  }
  FImageRes.reset();
  if (FResourceReleaser) {
    FResourceReleaser->ReleaseUse();
    FResourceReleaser = nullptr;
  }
  return kOk;
}

HResult QX_STDCALL TCabinetIconBarPluginImpl::GetControlGuid(IQxIString** guid) {
  if (!guid) return kFail;
  *guid = nullptr;
  return TextOut(kCabinetIconBarGuid, guid);
}

HResult TCabinetIconBarPluginImpl::ChildFrameSide(std::int32_t* value, int side) {
  if (!value) return kOk;
  *value = 0;
  if (!FCabinetIconBarForm) return kOk;
  const TRectF rect = FCabinetIconBarForm->GetChildFrameRect();
  const float sides[] = {rect.Left, rect.Top, rect.Right, rect.Bottom};
  *value = static_cast<std::int32_t>(std::lrint(sides[side]));
  return kOk;
}

void TCabinetIconBarPluginImpl::UpdateIcon(TTabImage* tab) {
  if (FCabinetIconBarForm) FCabinetIconBarForm->CabinetIconBarFrame()->UpdateIcon(tab);
}

bool TCabinetIconBarPluginImpl::ExistIcon(TTabImage* tab) {
  // The form's answer is asked for and dropped: callers rely on a constant false.
  if (FCabinetIconBarForm) (void)FCabinetIconBarForm->CabinetIconBarFrame()->ExistIcon(tab);
  return false;
}

void TCabinetIconBarPluginImpl::layoutCabinetIcon(bool animated, float duration, std::int32_t animationType,
                                                  TTabImage* dragTarget) {
  if (FCabinetIconBarForm)
    FCabinetIconBarForm->CabinetIconBarFrame()->layoutCabinetIcon(animated, duration, animationType,
                                                                  dragTarget);
}

void TCabinetIconBarPluginImpl::ChangeActiveState(bool active) {
  if (FCabinetIconBarForm) FCabinetIconBarForm->ChangeActiveState(active);
}

void TCabinetIconBarPluginImpl::NotifyScrollBoxRect(const TRectF& rect) {
  if (FCabinetIconBarForm) FCabinetIconBarForm->NotifyScrollBoxRect(rect);
}

bool TCabinetIconBarPluginImpl::MouseInCabinetBar() {
  return FCabinetIconBarForm && FCabinetIconBarForm->CabinetIconBarFrame()->MouseInCabinetBar();
}

}  // namespace qx
