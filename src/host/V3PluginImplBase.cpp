#include "host/V3PluginImplBase.h"

#include "host/ServiceCoreWrap.h"
#include "host/V3EventTypes.h"

namespace qx {

TQxIPluginImpl::~TQxIPluginImpl() = default;

void TQxIPluginImpl::Create(IQxIServiceCore* serviceCore) {
  FServiceCoreWrap = MakeCom<TServiceCoreWrapImpl>(serviceCore, UseEventDelayTask());
  if (AutoRegisterClientEvents()) RegisterClientEvents();
}

void TQxIPluginImpl::GetPluginVersion(TString&) { throw EAbstractError(); }
void TQxIPluginImpl::GetPluginGuid(TString&) { throw EAbstractError(); }

HResult TQxIPluginImpl::TextOut(const TString& text, IQxIString** out) {
  ComPtr<IQxIString> value;
  if (!FServiceCoreWrap || !FServiceCoreWrap->CreateString(text, value)) return kFail;
  *out = value.detach();
  return kOk;
}

HResult QX_STDCALL TQxIPluginImpl::GetGuid(IQxIString** guid) {
  if (!guid) return kFail;
  *guid = nullptr;
  try {
    TString text;
    GetPluginGuid(text);
    return TextOut(text, guid);
  } catch (...) {
    *guid = nullptr;
    return kFail;
  }
}

HResult QX_STDCALL TQxIPluginImpl::GetVersion(IQxIString** version) {
  if (!version) return kFail;
  *version = nullptr;
  try {
    TString text;
    GetPluginVersion(text);
    return TextOut(text, version);
  } catch (...) {
    *version = nullptr;
    return kFail;
  }
}

HResult TQxIPluginImpl::OnClientInitialize(const TString&, IQxIEvent*) { return kOk; }
HResult TQxIPluginImpl::OnClientVisible(const TString&, IQxIEvent*) { return kOk; }
HResult TQxIPluginImpl::OnClientClosing(const TString&, IQxIEvent*) { return kOk; }

HResult TQxIPluginImpl::OnClientLoaded(const TString&, IQxIEvent*) {
  AfterClientLoaded();
  return kOk;
}

HResult TQxIPluginImpl::OnClientFinalize(const TString&, IQxIEvent*) {
  UnregisterClientEvents();
  if (FServiceCoreWrap) {
    FServiceCoreWrap->SetFinalizing(true);
    FServiceCoreWrap->RemoveAllHandlers();
  }
  return kOk;
}

void TQxIPluginImpl::RegisterClientEvents() {
  if (!FServiceCoreWrap) return;
  IServiceCoreWrap& wrap = *FServiceCoreWrap;
  wrap.AddEventHandlerV3(0, kEvClientLoaded, FClientLoadedEventListener, false,
                         [this](const TString& id, IQxIEvent* e) { return OnClientLoaded(id, e); });
  wrap.AddEventHandlerV3(0, kEvClientFinalize, FClientFinalizeEventListener, false,
                         [this](const TString& id, IQxIEvent* e) { return OnClientFinalize(id, e); });
  wrap.AddEventHandler(0, u"Client.Closing", FClientClosingEventListener, false,
                       [this](const TString& id, IQxIEvent* e) { return OnClientClosing(id, e); });
  wrap.AddEventHandler(0, u"Client.Initialize", FClientInitializeEventListener, false,
                       [this](const TString& id, IQxIEvent* e) { return OnClientInitialize(id, e); });
  wrap.AddEventHandler(0, u"Client.Visible", FClientVisibleEventListener, false,
                       [this](const TString& id, IQxIEvent* e) { return OnClientVisible(id, e); });
}

void TQxIPluginImpl::UnregisterClientEvents() {
  if (!FServiceCoreWrap) return;
  IServiceCoreWrap& wrap = *FServiceCoreWrap;
  // The references stay until the plug-in dies.
  if (FClientLoadedEventListener) wrap.RemoveEventListenerV3(kEvClientLoaded, FClientLoadedEventListener.get());
  if (FClientFinalizeEventListener)
    wrap.RemoveEventListenerV3(kEvClientFinalize, FClientFinalizeEventListener.get());
  if (FClientClosingEventListener) wrap.RemoveEventListener(u"Client.Closing", FClientClosingEventListener.get());
  if (FClientInitializeEventListener)
    wrap.RemoveEventListener(u"Client.Initialize", FClientInitializeEventListener.get());
  if (FClientVisibleEventListener) wrap.RemoveEventListener(u"Client.Visible", FClientVisibleEventListener.get());
}

}  // namespace qx
