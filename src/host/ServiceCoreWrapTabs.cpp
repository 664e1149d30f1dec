// Lookups between tabs, browsers and groups, engines, locks and security flags.

#include "host/HostKeys.h"
#include "host/ServiceCoreWrap.h"

namespace qx {

WindowHandle TServiceCoreWrapImplBase::MainWindowHandle() {
  ComPtr<IQxIWindowService> windows;
  WindowService(windows);
  ComPtr<IQxIWindow> window;
  if (!windows || Failed(windows->GetMainWindow(window.put())) || !window) return 0;
  ComPtr<IQxIHandle> handle;
  std::uintptr_t value = 0;
  if (Failed(window->GetHandle(handle.put())) || !handle || Failed(handle->GetValue(&value))) return 0;
  return value;
}

void TServiceCoreWrapImplBase::ActiveTab(ComPtr<IQxITab>& out) {
  out = nullptr;
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  if (manager) manager->GetActiveTab(out.put());
}

void TServiceCoreWrapImplBase::ActiveTabGroup(ComPtr<IQxITabGroup>& out) {
  out = nullptr;
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  if (manager) manager->GetActiveTabGroup(out.put());
}

TString TServiceCoreWrapImplBase::ActiveTabGroupGuid() {
  ComPtr<IQxITabGroup> group;
  ActiveTabGroup(group);
  return TabGroupGuid(group.get());
}

void TServiceCoreWrapImplBase::BrowserOfTab(IQxITab* tab, ComPtr<IQxIBrowser>& out) {
  out = nullptr;
  if (tab) tab->GetBrowser(out.put());
}

void TServiceCoreWrapImplBase::ActiveBrowser(ComPtr<IQxIBrowser>& out) {
  ComPtr<IQxITab> tab;
  ActiveTab(tab);
  BrowserOfTab(tab.get(), out);
}

TString TServiceCoreWrapImplBase::ActiveBrowserUri() {
  ComPtr<IQxIBrowser> browser;
  ActiveBrowser(browser);
  return BrowserUri(browser.get());
}

TString TServiceCoreWrapImplBase::ActiveBrowserTitle() {
  ComPtr<IQxIBrowser> browser;
  ActiveBrowser(browser);
  return BrowserTitle(browser.get());
}

void TServiceCoreWrapImplBase::ActiveWebBrowser2(ComPtr<IWebBrowser2>& out) {
  ComPtr<IQxIBrowser> browser;
  ActiveBrowser(browser);
  WebBrowser2OfBrowser(browser.get(), out);
}

void TServiceCoreWrapImplBase::ActiveHtmlDocument(ComPtr<IHTMLDocument2>& out) {
  ComPtr<IQxIBrowser> browser;
  ActiveBrowser(browser);
  HtmlDocumentOfBrowser(browser.get(), out);
}

std::int32_t TServiceCoreWrapImplBase::BrowserIdOfBrowser(IQxIBrowser* browser) {
  ComPtr<IQxIBrowserList> list;
  BrowserList(list);
  std::int32_t id = 0;
  if (!browser || !list || Failed(list->IdOf(browser, &id))) return 0;
  return id;
}

void TServiceCoreWrapImplBase::BrowserById(std::int32_t id, ComPtr<IQxIBrowser>& out) {
  out = nullptr;
  ComPtr<IQxIBrowserList> list;
  BrowserList(list);
  if (list) list->ById(id, out.put());
}

std::int32_t TServiceCoreWrapImplBase::BrowserIdOfTab(IQxITab* tab) {
  ComPtr<IQxIBrowser> browser;
  BrowserOfTab(tab, browser);
  return BrowserIdOfBrowser(browser.get());
}

std::int32_t TServiceCoreWrapImplBase::TabIdOf(IQxITab* tab) {
  ComPtr<IQxITabDock> dock;
  TabDock(dock);
  std::int32_t id = 0;
  if (!tab || !dock || Failed(dock->TabIdOf(tab, &id))) return 0;
  return id;
}

void TServiceCoreWrapImplBase::TabById(std::int32_t id, ComPtr<IQxITab>& out) {
  out = nullptr;
  ComPtr<IQxITabDock> dock;
  TabDock(dock);
  if (dock) dock->TabById(id, out.put());
}

void TServiceCoreWrapImplBase::ObjectOfDockEntry(std::int32_t id, ComPtr<IUnknown>& out) {
  ComPtr<IQxITab> tab;
  TabById(id, tab);
  out = tab ? tab.As<IUnknown>() : nullptr;
}

void TServiceCoreWrapImplBase::TabOfBrowser(IQxIBrowser* browser, ComPtr<IQxITab>& out) {
  out = nullptr;
  if (!browser) return;
  const TString idText = BrowserIdTextOfBrowser(browser);
  ComPtr<IQxITabDock> dock;
  TabDock(dock);
  if (dock && !idText.empty()) dock->TabByBrowserId(idText.c_str(), out.put());
}

void TServiceCoreWrapImplBase::TabOfBrowserId(std::int32_t id, ComPtr<IQxITab>& out) {
  ComPtr<IQxIBrowser> browser;
  BrowserById(id, browser);
  TabOfBrowser(browser.get(), out);
}

TString TServiceCoreWrapImplBase::TabGuidOfBrowserIdText(std::u16string_view idText) {
  ComPtr<IQxITabDock> dock;
  TabDock(dock);
  ComPtr<IQxITab> tab;
  const TString id(idText);
  if (!dock || id.empty() || Failed(dock->TabByBrowserId(id.c_str(), tab.put()))) return {};
  return TabGuid(tab.get());
}

void TServiceCoreWrapImplBase::BrowserByGuid(std::u16string_view guid, ComPtr<IQxIBrowser>& out) {
  out = nullptr;
  ComPtr<IQxIBrowserManager> manager;
  BrowserManager(manager);
  const TString g(guid);
  if (manager && !g.empty()) manager->BrowserByGuid(g.c_str(), out.put());
}

void TServiceCoreWrapImplBase::TabByGuid(std::u16string_view guid, ComPtr<IQxITab>& out) {
  out = nullptr;
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  const TString g(guid);
  if (manager && !g.empty()) manager->TabByGuid(g.c_str(), out.put());
}

void TServiceCoreWrapImplBase::BrowserOfTabGuid(std::u16string_view guid, ComPtr<IQxIBrowser>& out) {
  ComPtr<IQxITab> tab;
  TabByGuid(guid, tab);
  BrowserOfTab(tab.get(), out);
}

TString TServiceCoreWrapImplBase::DefaultBrowserGuidOfUri(std::u16string_view uri) {
  TString guid;
  ComPtr<IQxIUriAction> action;
  UriAction(action);
  ComPtr<IQxIStringDictionary> info;
  const TString u(uri);
  if (action && Succeeded(action->GetBrowserInfo(u.c_str(), info.put())) && info)
    guid = WrapStringDictionary(info.get())->Value(open_key::BrowserGuid);
  if (guid.empty()) GetPropertyText(prop_key::DefaultBrowserGuid, u"", guid);
  return guid;
}

WindowHandle TServiceCoreWrapImplBase::WindowHandleOfTab(IQxITab* tab) {
  ComPtr<IQxIBrowser> browser;
  BrowserOfTab(tab, browser);
  return WindowHandleOfBrowser(browser.get());
}

WindowHandle TServiceCoreWrapImplBase::WindowHandleOfActiveBrowser() {
  ComPtr<IQxIBrowser> browser;
  ActiveBrowser(browser);
  return WindowHandleOfBrowser(browser.get());
}

// Kind 2 is tested for by callers but never produced: those branches stay dormant.
std::int32_t TServiceCoreWrapImplBase::BrowserEngineKind(IQxIBrowser* browser) {
  if (!browser) return 0;
  return SameText(EngineIdOfBrowser(browser), kChromiumEngineClassGuid) ? 1 : 0;
}

std::int32_t TServiceCoreWrapImplBase::TabEngineKind(IQxITab* tab) {
  ComPtr<IQxIBrowser> browser;
  BrowserOfTab(tab, browser);
  return BrowserEngineKind(browser.get());
}

std::int32_t TServiceCoreWrapImplBase::ActiveEngineKind() {
  ComPtr<IQxIBrowser> browser;
  ActiveBrowser(browser);
  return BrowserEngineKind(browser.get());
}

bool TServiceCoreWrapImplBase::IsTabNaviLocked(IQxITab* tab) {
  TString lock, setting;
  GetTabText(tab, tab_key::StatusNaviLock, lock);
  GetPropertyText(prop_key::TabLockWithNavigationLock, u"", setting);
  return lock == u"locked" && setting == u"true";
}

bool TServiceCoreWrapImplBase::IsBrowserNaviLocked(IQxIBrowser* browser) {
  ComPtr<IQxITab> tab;
  TabOfBrowser(browser, tab);
  return tab && IsTabNaviLocked(tab.get());
}

bool TServiceCoreWrapImplBase::GetSecurityOfTab(IQxITab* tab, std::int32_t& flags) {
  flags = 0;
  const TString guid = TabGuid(tab);
  ComPtr<IQxIPageDataManager> pages;
  PageDataManager(pages);
  if (!pages || guid.empty()) return false;
  ComPtr<IQxIString> value;
  const TString key(page_key::Security);
  if (pages->GetData(guid.c_str(), key.c_str(), value.put()) != kOk) return false;
  const auto number = TryStrToInt(StringText(value.get()));
  if (!number) return false;
  flags = static_cast<std::int32_t>(*number);
  return true;
}

bool TServiceCoreWrapImplBase::SetSecurityOfTab(IQxITab* tab, std::int32_t flags) {
  const TString guid = TabGuid(tab);
  ComPtr<IQxIPageDataManager> pages;
  PageDataManager(pages);
  if (!pages || guid.empty()) return false;
  const TString key(page_key::Security), value = IntToStr(flags);
  if (Failed(pages->SetData(guid.c_str(), key.c_str(), value.c_str()))) return false;
  ComPtr<IQxIBrowser> browser;
  BrowserOfTab(tab, browser);
  if (browser && BrowserEngineKind(browser.get()) != 0) browser->Execute(u"UpdateSecurity", nullptr, 0);
  return true;
}

bool TServiceCoreWrapImplBase::ClearSecurityOfTab(IQxITab* tab, bool notify) {
  const TString guid = TabGuid(tab);
  ComPtr<IQxIPageDataManager> pages;
  PageDataManager(pages);
  if (!pages || guid.empty()) return false;
  const TString key(page_key::Security);
  if (Failed(pages->DeleteData(guid.c_str(), key.c_str()))) return false;
  // Unlike setting, clearing notifies whatever the engine.
  if (notify) {
    ComPtr<IQxIBrowser> browser;
    BrowserOfTab(tab, browser);
    if (browser) browser->Execute(u"UpdateSecurity", nullptr, 0);
  }
  return true;
}

bool TServiceCoreWrapImplBase::SetSecurityOfBrowser(IQxIBrowser* browser, std::int32_t flags) {
  ComPtr<IQxITab> tab;
  TabOfBrowser(browser, tab);
  return tab && SetSecurityOfTab(tab.get(), flags);
}

void TServiceCoreWrapImplBase::FocusBrowser(IQxIBrowser* browser) {
  if (browser) browser->Execute(u"focus", nullptr, 0);
}

void TServiceCoreWrapImplBase::SelectTab(IQxITab* tab) {
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  if (!manager || !tab) return;
  ComPtr<IQxITab> active;
  manager->GetActiveTab(active.put());
  if (SameInterface(active.get(), tab)) return;
  manager->SetActiveTab(tab);
}

void TServiceCoreWrapImplBase::SelectTabLocked(IQxITab* tab, bool lock) {
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  if (!manager) return;
  ComPtr<IQxITabDock> dock;
  TabDock(dock);
  if (lock && dock) dock->SetLock(2);
  manager->SetActiveTab(tab);
  if (lock && dock) dock->SetLock(1);
}

bool TServiceCoreWrapImplBase::IsTabDockKind2() {
  ComPtr<IQxITabDock> dock;
  TabDock(dock);
  std::int32_t kind = 0;
  return dock && Succeeded(dock->GetDockKind(&kind)) && kind == 2;
}

void TServiceCoreWrapImplBase::RefreshTabDock() {
  ComPtr<IQxITabDock> dock;
  TabDock(dock);
  if (dock) dock->Refresh(1);
}

void TServiceCoreWrapImplBase::SetUriOfTabAndBrowser(IQxITab* tab, std::u16string_view uri) {
  ComPtr<IQxIBrowser> browser;
  BrowserOfTab(tab, browser);
  if (browser) SetBrowserProperty(browser.get(), browser_key::Uri, uri);
  SetTabText(tab, tab_key::Uri, uri);
}

void TServiceCoreWrapImplBase::NavigateBrowser(IQxIBrowser* browser, std::u16string_view uri,
                                               std::u16string_view post) {
  if (!browser) return;
  if (post.empty()) {
    SetBrowserProperty(browser, browser_key::Uri, uri);
    return;
  }
  ComPtr<IQxIStringDictionary> raw;
  CreateStringDictionary(raw);
  ComPtr<IQxIStringDictionaryWrap> parameters = WrapStringDictionary(raw.get());
  if (!parameters) return;
  parameters->SetValue(u"uri", uri);
  parameters->SetValue(u"post", post);
  browser->Execute(u"post", raw.get(), 0);
}

bool TServiceCoreWrapImplBase::ExecuteJavascript(IQxIBrowser* browser, std::u16string_view code, bool force,
                                                 std::u16string_view scriptId) {
  ComPtr<IQxITab> tab;
  TabOfBrowser(browser, tab);
  if (!tab) return false;
  ComPtr<IQxIStringDictionary> raw;
  CreateStringDictionary(raw);
  ComPtr<IQxIStringDictionaryWrap> parameters = WrapStringDictionary(raw.get());
  if (!parameters) return false;
  parameters->SetValue(script_key::Code, code);
  parameters->SetValue(script_key::ScriptId, scriptId);
  if (force) parameters->SetValue(script_key::ForceEnableScript, u"true");
  return browser->Execute(u"ExecuteJavascript", raw.get(), 0) == kOk;
}

bool TServiceCoreWrapImplBase::IsSiteUpdatesPage(std::u16string_view uri) {
  const auto last = uri.find_last_of(u"\\:/");
  const std::u16string_view name = last == std::u16string_view::npos ? uri : uri.substr(last + 1);
  return SameText(name, u"siteupdates.html");
}

bool TServiceCoreWrapImplBase::IsBookmarkConnected() {
  ComPtr<IQxIBookmarkManagerV3> bookmarks;
  BookmarkManagerV3(bookmarks);
  ComPtr<IQxIString> value;
  if (!bookmarks || Failed(bookmarks->GetStatus(u"status", value.put()))) return false;
  return StringText(value.get()) == u"connected";
}

}  // namespace qx
