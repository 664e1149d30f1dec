#pragma once

#include "host/V3PluginImplBase.h"
#include "resources/FMXDllResourceFinalizer.h"
#include "tabview/CabinetIconBarIntf.h"

namespace qx {

inline constexpr char16_t kCabinetIconBarGuid[] = u"{24EFC42F-EFBA-48E1-BD98-02D213D883DD}";

// The cabinet's icon bar. Its plug-in version and GUID stay abstract: asking for them
// raises, and the host sees failure.
class TCabinetIconBarPluginImpl : public TQxIPluginImpl, public ICabinetIconBar, public IQxIControl {
 public:
  HResult QX_STDCALL QueryInterface(const TGUID& iid, void** object) override {
    return TQxIPluginImpl::QueryInterface(iid, object);
  }
  std::uint32_t QX_STDCALL AddRef() override { return TQxIPluginImpl::AddRef(); }
  std::uint32_t QX_STDCALL Release() override { return TQxIPluginImpl::Release(); }

  void RegisterClientEvents() override { TQxIPluginImpl::RegisterClientEvents(); }
  void AfterClientLoaded() override { TQxIPluginImpl::AfterClientLoaded(); }
  void Create(IQxIServiceCore* serviceCore) override { TQxIPluginImpl::Create(serviceCore); }

  // IQxIControl
  HResult QX_STDCALL CreateControl(IQxIHandle* parent, IQxIHandle** control) override;
  HResult QX_STDCALL DestroyControl() override;
  HResult QX_STDCALL ControlReservedA() override { return kOk; }
  HResult QX_STDCALL ControlReservedB() override { return kOk; }
  HResult QX_STDCALL GetControlGuid(IQxIString** guid) override;
  HResult QX_STDCALL GetChildFrameLeft(std::int32_t* value) override { return NoFrame(value); }
  HResult QX_STDCALL GetChildFrameRight(std::int32_t* value) override { return NoFrame(value); }
  HResult QX_STDCALL GetChildFrameTop(std::int32_t* value) override { return NoFrame(value); }
  HResult QX_STDCALL GetChildFrameBottom(std::int32_t* value) override { return NoFrame(value); }

  // ICabinetIconBar: every call goes to the form, and there is none without a control.
  void UpdateIcon(TTabImage*) override {}
  bool ExistIcon(TTabImage*) override { return false; }
  void layoutCabinetIcon(bool, float, std::int32_t, TTabImage*) override {}
  void ChangeActiveState(bool) override {}
  void NotifyScrollBoxRect(const TRectF&) override {}
  void DebugPrintIconPosition() override {}
  bool MouseInCabinetBar() override { return false; }

 protected:
  void QueryInterfaceExtra(const TGUID& iid, void** object) override;

 private:
  static HResult NoFrame(std::int32_t* value) {
    if (value) *value = 0;
    return kOk;
  }

  ComPtr<IResourceReleaser> FResourceReleaser;
  bool FFinalized = false;
};

}  // namespace qx
