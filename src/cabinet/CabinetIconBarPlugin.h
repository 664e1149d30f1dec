#pragma once

#include <memory>

#include "host/V3PluginImplBase.h"
#include "resources/FMXDllResourceFinalizer.h"
#include "runtime/SystemClockTimers.h"
#include "tabview/CabinetIconBarIntf.h"

namespace qx {

class TCabinetIconBarForm;
class TCabinetIconBarImageRes;

inline constexpr char16_t kCabinetIconBarGuid[] = u"{24EFC42F-EFBA-48E1-BD98-02D213D883DD}";

// The cabinet's icon bar. Its plug-in version and GUID stay abstract: asking for them
// raises, and the host sees failure.
class TCabinetIconBarPluginImpl : public TQxIPluginImpl, public ICabinetIconBar, public IQxIControl {
 public:
  static constexpr int kFormHeight = 24;

  TCabinetIconBarPluginImpl();
  ~TCabinetIconBarPluginImpl() override;
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
  HResult QX_STDCALL GetChildFrameLeft(std::int32_t* value) override { return ChildFrameSide(value, 0); }
  HResult QX_STDCALL GetChildFrameRight(std::int32_t* value) override { return ChildFrameSide(value, 2); }
  HResult QX_STDCALL GetChildFrameTop(std::int32_t* value) override { return ChildFrameSide(value, 1); }
  HResult QX_STDCALL GetChildFrameBottom(std::int32_t* value) override { return ChildFrameSide(value, 3); }

  // ICabinetIconBar: every call goes to the form and does nothing without one.
  void UpdateIcon(TTabImage* tab) override;
  bool ExistIcon(TTabImage* tab) override;
  void layoutCabinetIcon(bool animated, float duration, std::int32_t animationType,
                         TTabImage* dragTarget) override;
  void ChangeActiveState(bool active) override;
  void NotifyScrollBoxRect(const TRectF& rect) override;
  void DebugPrintIconPosition() override {}
  bool MouseInCabinetBar() override;

  TCabinetIconBarForm* CabinetIconBarForm() const { return FCabinetIconBarForm.get(); }

 protected:
  void QueryInterfaceExtra(const TGUID& iid, void** object) override;

 private:
  // side: 0 left, 1 top, 2 right, 3 bottom of the form's child frame.
  HResult ChildFrameSide(std::int32_t* value, int side);

  // First, so that it outlives everything below that makes timers.
  TSystemClockTimers FSystemClockTimers;
  std::unique_ptr<TCabinetIconBarImageRes> FImageRes;
  std::unique_ptr<TCabinetIconBarForm> FCabinetIconBarForm;
  ComPtr<IResourceReleaser> FResourceReleaser;
  bool FFinalized = false;
};

}  // namespace qx
