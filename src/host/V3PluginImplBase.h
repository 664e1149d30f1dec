#pragma once

// Base of both plug-ins: the wrapper, the five client events and the barrier between
// the host and the plug-in's own answers.

#include <stdexcept>

#include "base/ComObject.h"
#include "host/ServiceCoreWrapIntf.h"

namespace qx {

// What an operation left abstract raises when called.
class EAbstractError : public std::logic_error {
 public:
  EAbstractError() : std::logic_error("Abstract Error") {}
};

class TQxIPluginImpl : public TInterfacedObject<IQxIPlugin> {
 public:
  ~TQxIPluginImpl() override;

  HResult QX_STDCALL GetGuid(IQxIString** guid) override;
  HResult QX_STDCALL GetVersion(IQxIString** version) override;

  virtual void GetPluginVersion(TString& text);
  virtual void GetPluginGuid(TString& text);
  virtual HResult OnClientInitialize(const TString& eventId, IQxIEvent* event);
  virtual HResult OnClientVisible(const TString& eventId, IQxIEvent* event);
  virtual HResult OnClientLoaded(const TString& eventId, IQxIEvent* event);
  virtual HResult OnClientFinalize(const TString& eventId, IQxIEvent* event);
  virtual HResult OnClientClosing(const TString& eventId, IQxIEvent* event);
  virtual void RegisterClientEvents();
  virtual void AfterClientLoaded() {}
  virtual void UnregisterClientEvents();
  virtual bool UseEventDelayTask() { return true; }
  virtual bool AutoRegisterClientEvents() { return true; }
  // The second half of construction: virtual calls need the whole object.
  virtual void Create(IQxIServiceCore* serviceCore);

  IServiceCoreWrap* ServiceCoreWrap() const { return FServiceCoreWrap.get(); }

 protected:
  HResult TextOut(const TString& text, IQxIString** out);

  ComPtr<IServiceCoreWrap> FServiceCoreWrap;
  ComPtr<IQxIEventListener> FClientInitializeEventListener;
  ComPtr<IQxIEventListener> FClientVisibleEventListener;
  ComPtr<IQxIEventListener> FClientLoadedEventListener;
  ComPtr<IQxIEventListener> FClientFinalizeEventListener;
  ComPtr<IQxIEventListener> FClientClosingEventListener;
};

}  // namespace qx
