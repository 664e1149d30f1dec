// What the strip does with each host event it hears. Every handler tolerates a
// missing dictionary, an unknown tab or a missing service by doing nothing.

#include "base/Text.h"
#include "host/ClientWidgets.h"
#include "host/HostKeys.h"
#include "host/QuillmarV3Interface.h"
#include "resources/BitmapResourceMgr.h"
#include "tabbar/TabbarForm.h"
#include "tabbar/TabbarParentForm.h"
#include "tabbar/TitleForm.h"

namespace qx {

bool TTabbarFrame::IsActiveGroupId(std::u16string_view id) {
  return FServiceCore && SameText(id, FServiceCore->ActiveTabGroupGuid());
}

TTabImage* TTabbarFrame::FindTabImageFromGuid(std::u16string_view guid) const {
  if (guid.empty() || !FTabList) return nullptr;
  return AsTabImage(FTabList->FindTabImageFromId(guid));
}

TTabImage* TTabbarFrame::FindTabImageOfBrowserEvent(IQxIStringDictionaryWrap* parameters) {
  if (!FServiceCore) return nullptr;
  return FindTabImageFromGuid(FServiceCore->TabGuidOfBrowserIdText(parameters->Value(u"browser-id")));
}

void TTabbarFrame::ProcessClientInitialized(IQxIStringDictionaryWrap* /*parameters*/) {
  FClientInitialized = true;
  RegisterNewTabMenu();
  CheckCabinetStartupScreen();
  // Whatever the host did before this is picked up in one sync.
  UpdateTabbar(false, false);
}

void TTabbarFrame::ProcessTabGroupChanged(IQxIStringDictionaryWrap* parameters) {
  if (!FClientInitialized || !parameters) return;
  if (!IsActiveGroupId(parameters->Value(u"id"))) return;
  const TString event = parameters->Value(u"event");
  if (parameters->Value(u"timing") != u"after") return;
  if (event == u"SetActiveTab") {
    if (TTabImage* tab = FindTabImageFromGuid(parameters->Value(u"new-tab-id")))
      SetActiveTabImage(tab, false);
    FShowActiveTabTitleTimer->SetEnabled(true);
  } else if (event == u"AddTab" || event == u"InsertTab") {
    FLastAddTabEvent = Platform().GetTickCount();
    UpdateTabbar(true, true);
  } else if (event == u"RemoveTab" || event == u"SetTabIndex" || event == u"SwapTab" ||
             event == u"RemoveTabSection") {
    UpdateTabbar(false, true);
    if (event == u"RemoveTab") {
      const TString tabId = parameters->Value(u"tab-id");
      if (!tabId.empty() && FTabImageCacheMgr) FTabImageCacheMgr->RemoveCache(tabId);
    }
  }
}

void TTabbarFrame::ProcessTabbarControlUpdate(IQxIStringDictionaryWrap* /*parameters*/) {
  UpdateTabbar(false, false);
}

void TTabbarFrame::ProcessTabbarControlUpdateTab(IQxIStringDictionaryWrap* parameters) {
  if (!parameters) return;
  if (TTabImage* tab = FindTabImageFromGuid(parameters->Value(u"tab-id"))) tab->UpdateTabStatus();
}

void TTabbarFrame::ProcessBookmarkManagerUpdate(IQxIStringDictionaryWrap* /*parameters*/) {
  // Each tab asks again whether its page is bookmarked.
  for (std::int32_t i = 0; i < TabImageCount(); ++i)
    if (TTabImage* tab = GetTabImages(i)) tab->UpdateTabStatus();
}

void TTabbarFrame::ProcessBrowserChanged(IQxIStringDictionaryWrap* parameters) {
  if (!parameters) return;
  const TString event = parameters->Value(u"event");
  if (event == u"OnBrowseBegin") {
    if (TTabImage* tab = FindTabImageOfBrowserEvent(parameters)) tab->StartProgress(tab == FHoveredTab);
  } else if (event == u"OnBrowseComplete") {
    TTabImage* tab = FindTabImageOfBrowserEvent(parameters);
    if (!tab) return;
    if (tab == FActiveTab) ShowTabTitle(tab, false);
    tab->StopProgress(tab == FHoveredTab);
    tab->UpdateTabStatus();
    ICabinetIconBar* bar = GetCabinetIconBar();
    if (!bar) return;
    if (!IsCabinetTab(tab) && !bar->ExistIcon(tab)) return;
    bar->layoutCabinetIcon(true, 0.3f, 0, FdragTarget);
  }
}

void TTabbarFrame::ProcessStopLoadingAction(IQxIStringDictionaryWrap* parameters) {
  // The host's stop button: the active tab's busy indicator stops.
  if (!parameters || parameters->Value(u"action") != u"Stop" || !FServiceCore) return;
  ComPtr<IQxITab> current;
  FServiceCore->ActiveTab(current);
  if (!current) return;
  if (TTabImage* tab = FindTabImageFromGuid(FServiceCore->TabGuid(current.get())))
    tab->StopProgress(tab == FHoveredTab);
}

void TTabbarFrame::ProcessThumbnailCreated(IQxIStringDictionaryWrap* parameters) {
  if (!parameters) return;
  if (TTabImage* tab = FindTabImageFromGuid(parameters->Value(u"tab-id"))) AddUpdateImageTask(tab);
}

void TTabbarFrame::ProcessMainWindowActiveChanged(IQxIStringDictionaryWrap* parameters) {
  if (!parameters) return;
  UpdateMainWindowActive(parameters->Value(u"active") == u"true");
}

void TTabbarFrame::ProcessXmlWidgetUpdate(IQxIStringDictionaryWrap* /*parameters*/) {
  UpdateChildFormsPosition(kWidgetUpdateMessage);
  if (FParentForm) FParentForm->UpdateRebarBorder();
}

void TTabbarFrame::ProcessTabChanged(IQxIStringDictionaryWrap* parameters) {
  // A URI change would be handled here; the values are read and nothing more.
  if (!parameters || parameters->Value(u"event") != u"SetProperty") return;
  if (parameters->Value(u"key") != u"uri") return;
  if (!FindTabImageFromGuid(parameters->Value(u"id"))) return;
  [[maybe_unused]] const TString oldUri = parameters->Value(u"old-value");
  [[maybe_unused]] const TString newUri = parameters->Value(u"value");
}

void TTabbarFrame::ProcessCabinetEnter(IQxIStringDictionaryWrap* /*parameters*/) {
  ShowTabGroupbarIfHidden();
}

void TTabbarFrame::ProcessCabinetExit(IQxIStringDictionaryWrap* /*parameters*/) {
  if (FParentForm) FParentForm->HideTabGroupbar();
}

void TTabbarFrame::ProcessTabManagerChanged(IQxIStringDictionaryWrap* parameters) {
  if (!parameters || parameters->Value(u"event") != u"SetCurrentGroup") return;
  if (FParentForm && FParentForm->ShowingTabgroupBar()) FParentForm->UpdateActiveGroup();
}

void TTabbarFrame::ProcessXmlWidgetMenuHide(IQxIStringDictionaryWrap* /*parameters*/) {
  if (FParentForm) FParentForm->HideEditAndUpdateTitle(false);
}

void TTabbarFrame::ProcessTabGroupBarEditTitle(IQxIStringDictionaryWrap* /*parameters*/) {
  if (FParentForm) FParentForm->EditGroupTitle();
}

void TTabbarFrame::ProcessTabLoadingStop(IQxIStringDictionaryWrap* parameters) {
  if (!parameters) return;
  if (TTabImage* tab = FindTabImageFromGuid(parameters->Value(u"tab-id")))
    tab->StopProgress(tab == FHoveredTab);
}

void TTabbarFrame::ProcessTogglePrivate(IQxIStringDictionaryWrap* /*parameters*/) {
  if (FParentForm) FParentForm->InitGroupButtons();
  if (!FServiceCore) return;
  ComPtr<IQxITabGroup> group;
  FServiceCore->ActiveTabGroup(group);
  if (group) UpdateGroupImageFromGroup(group.get());
}

void TTabbarFrame::FaviconUpdated(TFaviconCacheFMX* /*sender*/, const TString& uri,
                                  ISharedFMXBitmap* favicon) {
  if (!GetCabinetIconBar() || !FTitleForm || !FTitleForm->Visible() || !favicon || !FServiceCore) return;
  TTabImage* tab = FindTabImageFromGuid(FTitleForm->CurrentTabId());
  if (!tab) return;
  ComPtr<IQxITab> host = HostTabOf(tab);
  if (host && SameText(FServiceCore->TabUri(host.get()), uri))
    FTitleForm->UpdateFavicon(favicon->GetBitmap());
}

void TTabbarFrame::RegisterNewTabMenu() {
  if (!FServiceCore) return;
  ComPtr<IQxIXmlElement> root;
  if (FServiceCore->LoadXmlElement(kNewTabPopupMenuPath, root) && root)
    RegisterPopupMenu(FServiceCore.get(), popup_menu_id::NewTab, root.get());
}

}  // namespace qx
