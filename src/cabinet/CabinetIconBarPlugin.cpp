#include "cabinet/CabinetIconBarPlugin.h"

namespace qx {

void TCabinetIconBarPluginImpl::QueryInterfaceExtra(const TGUID& iid, void** object) {
  if (iid == ICabinetIconBar::IID)
    *object = static_cast<ICabinetIconBar*>(this);
  else if (iid == IQxIControl::IID)
    *object = static_cast<IQxIControl*>(this);
}

HResult QX_STDCALL TCabinetIconBarPluginImpl::CreateControl(IQxIHandle*, IQxIHandle** control) {
  if (control) *control = nullptr;
  // The bar's form is not part of this build yet: the host sees failure and no handle.
  return kFail;
}

HResult QX_STDCALL TCabinetIconBarPluginImpl::DestroyControl() {
  if (FFinalized) return kOk;
  FFinalized = true;
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

}  // namespace qx
