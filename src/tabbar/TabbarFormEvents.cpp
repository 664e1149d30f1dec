// Host events of the strip, and the lookups of the cabinet icon bar.

#include "host/QuillmarV3Interface.h"
#include "tabbar/TabbarForm.h"

namespace qx {

void TTabbarFrame::InitializeEvents() {
  if (!FServiceCore) return;
  // The strip follows the host's model; the other subscriptions come with
  // the behaviour they drive.
  FServiceCore->AddEventHandler(0, u"TabGroup.Changed", FTabGroupChangedEventListener, false,
                                [this](const TString&, IQxIEvent* event) -> HResult {
                                  ProcessTabGroupChanged(FServiceCore->EventParameters(event).get());
                                  return kOk;
                                });
  FServiceCore->AddEventHandler(0, u"Client.Initialized", FClientInitializedEventListener, false,
                                [this](const TString&, IQxIEvent*) -> HResult {
                                  ProcessClientInitialized();
                                  return kOk;
                                });
}

void TTabbarFrame::ProcessClientInitialized() {
  FClientInitialized = true;
  CheckCabinetStartupScreen();
  // Whatever the host did before this is picked up in one sync.
  UpdateTabbar(false, false);
}

void TTabbarFrame::ProcessTabGroupChanged(IQxIStringDictionaryWrap* parameters) {
  if (!FClientInitialized || !parameters || parameters->Value(u"timing") != u"after") return;
  if (parameters->Value(u"event") == u"SetActiveTab") {
    if (auto* tab = AsTabImage(FTabList->FindTabImageFromId(parameters->Value(u"new-tab-id"))))
      SetActiveTabImage(tab, false);
    return;
  }
  UpdateTabbar(false, true);
}

void TTabbarFrame::UnInitializeEvents() {
  if (!FServiceCore) return;
  if (FTabGroupChangedEventListener)
    FServiceCore->RemoveEventListener(u"TabGroup.Changed", FTabGroupChangedEventListener.get());
  FTabGroupChangedEventListener = nullptr;
  if (FClientInitializedEventListener)
    FServiceCore->RemoveEventListener(u"Client.Initialized", FClientInitializedEventListener.get());
  FClientInitializedEventListener = nullptr;
}

void TTabbarFrame::CheckCabinetStartupScreen() {
  // Opening in the cabinet screen at start-up comes with the cabinet mode.
}

IQxIControl* TTabbarFrame::GetCabinetBarControl() {
  static constexpr TGUID kControlIid = MakeGuid("65EE36B3-39E8-438A-AD0A-C8040A2A5372");
  if (!FCabinetBarControl && FServiceCore)
    FServiceCore->GetPluginObject("CabinetIconBarControl", kControlIid, FCabinetBarControl.put_void());
  return FCabinetBarControl.get();
}

ICabinetIconBar* TTabbarFrame::GetCabinetIconBar() {
  if (!FCabinetIconBar)
    if (IQxIControl* control = GetCabinetBarControl())
      FCabinetIconBar = ComPtr<IQxIControl>(control).As<ICabinetIconBar>();
  return FCabinetIconBar.get();
}

}  // namespace qx
