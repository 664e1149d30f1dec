#pragma once

#include <memory>

#include "host/V3PluginImplBase.h"
#include "runtime/SystemClockTimers.h"
#include "resources/FMXDllResourceFinalizer.h"
#include "tabview/PreviewStripIntf.h"

namespace qx {

inline constexpr char16_t kPreviewStripGuid[] = u"{B44F6CDA-9925-40E8-9B8F-9227DA15ED4C}";
inline constexpr char16_t kPreviewStripVersion[] = u"0.1";

class TTabbarParentForm;
class TTabbarFrame;
class TTabbarImageRes;
class TSmartSearch;

// The tab strip plug-in; it also owns smart search.
class TPrevewStripPluginImpl : public TQxIPluginImpl, public IPreviewStrip, public IQxIControl {
 public:
  TPrevewStripPluginImpl();
  ~TPrevewStripPluginImpl() override;

  HResult QX_STDCALL QueryInterface(const TGUID& iid, void** object) override {
    return TQxIPluginImpl::QueryInterface(iid, object);
  }
  std::uint32_t QX_STDCALL AddRef() override { return TQxIPluginImpl::AddRef(); }
  std::uint32_t QX_STDCALL Release() override { return TQxIPluginImpl::Release(); }

  void GetPluginVersion(TString& text) override { text = kPreviewStripVersion; }
  void GetPluginGuid(TString& text) override { text = kPreviewStripGuid; }
  HResult OnClientVisible(const TString& eventId, IQxIEvent* event) override;
  void RegisterClientEvents() override { TQxIPluginImpl::RegisterClientEvents(); }
  void AfterClientLoaded() override { TQxIPluginImpl::AfterClientLoaded(); }
  void Create(IQxIServiceCore* serviceCore) override;

  // IQxIControl
  HResult QX_STDCALL CreateControl(IQxIHandle* parent, IQxIHandle** control) override;
  HResult QX_STDCALL DestroyControl() override;
  HResult QX_STDCALL ControlReservedA() override { return kOk; }
  HResult QX_STDCALL ControlReservedB() override { return kOk; }
  HResult QX_STDCALL GetControlGuid(IQxIString** guid) override;
  HResult QX_STDCALL GetChildFrameLeft(std::int32_t* value) override;
  HResult QX_STDCALL GetChildFrameRight(std::int32_t* value) override;
  HResult QX_STDCALL GetChildFrameTop(std::int32_t* value) override;
  HResult QX_STDCALL GetChildFrameBottom(std::int32_t* value) override;

  // IPreviewStrip
  TTabImageSectionList* GetTabList() override;
  TTabImage* GetActiveTab() override;
  void TabScrollBoxScreenRect(TRectF& rect) override;
  bool TabScreenRectOf(std::u16string_view tabGuid, TRectF& rect) override;
  void HideTitleForm(bool flag) override;

  bool Finalized() const { return FFinalized; }
  TTabbarParentForm* TabbarForm() const { return FTabbarForm.get(); }
  TSmartSearch* SmartSearch() const { return FSmartSearch.get(); }

 protected:
  void QueryInterfaceExtra(const TGUID& iid, void** object) override;

 private:
  enum class TSide { Left, Right, Top, Bottom };
  HResult ChildFrameSide(std::int32_t* value, TSide side);

  // First, so that it outlives everything below that makes timers.
  TSystemClockTimers FSystemClockTimers;
  std::unique_ptr<TTabbarParentForm> FTabbarForm;
  TTabbarFrame* FTabbarFrame = nullptr;
  std::unique_ptr<TTabbarImageRes> FImageRes;
  bool FFinalized = false;
  ComPtr<IResourceReleaser> FResourceReleaser;
  std::unique_ptr<TSmartSearch> FSmartSearch;
};

}  // namespace qx
