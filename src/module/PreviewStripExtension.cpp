#include "module/PreviewStripExtension.h"

#include "toolkit/Application.h"

namespace qx {

TPrevewStripPluginImpl::TPrevewStripPluginImpl() = default;

TPrevewStripPluginImpl::~TPrevewStripPluginImpl() = default;

void TPrevewStripPluginImpl::Create(IQxIServiceCore* serviceCore) {
  TQxIPluginImpl::Create(serviceCore);
  // Smart search is built here once it exists in this module.
}

void TPrevewStripPluginImpl::QueryInterfaceExtra(const TGUID& iid, void** object) {
  if (iid == IPreviewStrip::IID)
    *object = static_cast<IPreviewStrip*>(this);
  else if (iid == IQxIControl::IID)
    *object = static_cast<IQxIControl*>(this);
}

HResult TPrevewStripPluginImpl::OnClientVisible(const TString&, IQxIEvent*) {
  // Repositions the child forms once the strip's form exists; there is none without a control.
  return kOk;
}

HResult QX_STDCALL TPrevewStripPluginImpl::CreateControl(IQxIHandle*, IQxIHandle** control) {
  if (control) *control = nullptr;
  // The strip's form is not part of this build yet: the host sees failure and no handle.
  return kFail;
}

HResult QX_STDCALL TPrevewStripPluginImpl::DestroyControl() {
  if (FFinalized) return kOk;
  FFinalized = true;
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

HResult TPrevewStripPluginImpl::ChildFrameSide(std::int32_t* value, int) {
  if (value) *value = 0;
  return kOk;
}

HResult QX_STDCALL TPrevewStripPluginImpl::GetChildFrameLeft(std::int32_t* value) { return ChildFrameSide(value, 0); }
HResult QX_STDCALL TPrevewStripPluginImpl::GetChildFrameRight(std::int32_t* value) { return ChildFrameSide(value, 1); }
HResult QX_STDCALL TPrevewStripPluginImpl::GetChildFrameTop(std::int32_t* value) { return ChildFrameSide(value, 2); }
HResult QX_STDCALL TPrevewStripPluginImpl::GetChildFrameBottom(std::int32_t* value) {
  return ChildFrameSide(value, 3);
}

TTabImageSectionList* TPrevewStripPluginImpl::GetTabList() { return nullptr; }
TTabImage* TPrevewStripPluginImpl::GetActiveTab() { return nullptr; }
void TPrevewStripPluginImpl::TabScrollBoxScreenRect(TRectF& rect) { rect = TRectF{}; }
void TPrevewStripPluginImpl::HideTitleForm(bool) {}

}  // namespace qx
