#pragma once

#include <memory>
#include <vector>

#include "host/ServiceCoreWrapIntf.h"
#include "host/V3EventImpl.h"
#include "runtime/DelayExec.h"

namespace qx {

// Diagnostics counter the wrapper owns; nothing reads it.
class TProcCounter {};

// All of the wrapper's logic; the two lookups that need the real service core are left
// to the derived class.
class TServiceCoreWrapImplBase : public TInterfacedObject<IServiceCoreWrap> {
 public:
  explicit TServiceCoreWrapImplBase(bool useEventDelayTask);
  ~TServiceCoreWrapImplBase() override;

  // For tests: the delay task through which off-thread events are handed over.
  ISharedDelayTask* EventSharedDelayTask() const { return FEventSharedDelayTask.get(); }
  std::size_t EventItemCount() const { return FEventList.size(); }
  std::size_t ActionCount() const { return FActionList.size(); }


  
  
  bool GetFinalizing() override;
  void SetFinalizing(bool value) override;

  void PluginService(ComPtr<IQxIPluginService>& out) override;
  void GraphicsService(ComPtr<IQxIGraphicsService>& out) override;
  void FactoryService(ComPtr<IQxIFactoryService>& out) override;
  void WindowService(ComPtr<IQxIWindowService>& out) override;
  void EventService(ComPtr<IQxIEventService>& out) override;
  void PropertyService(ComPtr<IQxIPropertyService>& out) override;
  void GraphicResourceService(ComPtr<IQxIGraphicResourceService>& out) override;
  void WidgetService(ComPtr<IQxIWidgetService>& out) override;
  void TranslatorService(ComPtr<IQxITranslatorService>& out) override;
  void GlobalStorageService(ComPtr<IQxIGlobalStorageService>& out) override;
  void ActionManager(ComPtr<IQxIActionManager>& out) override;
  void TabManager(ComPtr<IQxITabManager>& out) override;
  void BrowserManager(ComPtr<IQxIBrowserManager>& out) override;
  void PageDataManager(ComPtr<IQxIPageDataManager>& out) override;
  void BookmarkManagerV3(ComPtr<IQxIBookmarkManagerV3>& out) override;
  void XmlWidgetManager(ComPtr<IQxIXmlWidgetManager>& out) override;
  void UriAction(ComPtr<IQxIUriAction>& out) override;
  void FaviconManagerV3(ComPtr<IQxIFaviconManagerV3>& out) override;
  void HistoryManager(ComPtr<IQxIHistoryManager>& out) override;
  void SearchManager(ComPtr<IQxISearchManager>& out) override;
  void SearchHistoryManager(ComPtr<IQxISearchHistoryManager>& out) override;
  void WindowOrderManager(ComPtr<IQxIWindowOrderManager>& out) override;
  void BasicToolBarManager(ComPtr<IQxIBookmarkManagerV3>& out) override;
  void UserAgentManager(ComPtr<IQxIUserAgentManager>& out) override;
  void XmlWidgetPopup(ComPtr<IQxIXmlWidgetPopup>& out) override;
  void BrowserList(ComPtr<IQxIBrowserList>& out) override;
  void TabDock(ComPtr<IQxITabDock>& out) override;
  void StringBuilder(ComPtr<IQxIStringBuilder>& out) override;
  void VariantBuilder(ComPtr<IQxIVariantBuilder>& out) override;
  void HandleBuilder(ComPtr<IQxIHandleBuilder>& out) override;
  void InputHandler(ComPtr<IQxIInputHandler>& out) override;
  void DirectoryService(ComPtr<IQxIDirectoryService>& out) override;
  void XmlService(ComPtr<IQxIXmlService>& out) override;

  void CreateObject(std::u16string_view name, ComPtr<IUnknown>& out) override;
  bool CreateString(std::u16string_view text, ComPtr<IQxIString>& out) override;
  void CreateStringDictionary(ComPtr<IQxIStringDictionary>& out) override;
  void CreateDictionary(ComPtr<IQxIDictionary>& out) override;
  void CreateLocalDictionary(ComPtr<IQxIDictionary>& out) override;
  void CreateArray(ComPtr<IQxIArray>& out) override;
  void CreateStringArray(ComPtr<IQxIStringArray>& out) override;

  WindowHandle MainWindowHandle() override;
  void ActiveTab(ComPtr<IQxITab>& out) override;
  void ActiveBrowser(ComPtr<IQxIBrowser>& out) override;
  void ActiveTabGroup(ComPtr<IQxITabGroup>& out) override;
  TString ActiveTabGroupGuid() override;
  void BrowserOfTab(IQxITab* tab, ComPtr<IQxIBrowser>& out) override;
  std::int32_t BrowserIdOfBrowser(IQxIBrowser* browser) override;
  void ActiveWebBrowser2(ComPtr<IWebBrowser2>& out) override;
  void ActiveHtmlDocument(ComPtr<IHTMLDocument2>& out) override;
  void WebBrowser2OfBrowser(IQxIBrowser* browser, ComPtr<IWebBrowser2>& out) override;
  void HtmlDocumentOfBrowser(IQxIBrowser* browser, ComPtr<IHTMLDocument2>& out) override;
  TString ActiveBrowserUri() override;
  TString ActiveBrowserTitle() override;
  TString BrowserUri(IQxIBrowser* browser) override;
  TString BrowserTitle(IQxIBrowser* browser) override;
  TString TabUri(IQxITab* tab) override;
  TString TabTitle(IQxITab* tab) override;
  TString BookmarkPass3UserName() override;
  TString BookmarkPass3Pass() override;
  bool GetBrowserProperty(std::u16string_view key, IQxIBrowser* browser, TString& text) override;
  bool SetBrowserProperty(IQxIBrowser* browser, std::u16string_view key, std::u16string_view text) override;
  void GetBackHistoryUris(IQxIBrowser* browser, std::vector<TString>& uris) override;
  bool GetTabValue(IQxITab* tab, std::u16string_view key, ComPtr<IQxIVariant>& out) override;
  bool GetTabText(IQxITab* tab, std::u16string_view key, TString& text) override;
  bool GetTabBool(IQxITab* tab, std::u16string_view key) override;
  std::int64_t GetTabInt64(IQxITab* tab, std::u16string_view key) override;
  bool SetTabText(IQxITab* tab, std::u16string_view key, std::u16string_view text) override;
  bool SetTabBool(IQxITab* tab, std::u16string_view key, bool value) override;
  bool IsBookmarkConnected() override;
  bool UseTalvokConnect() override;
  bool ResolveResourcePath(std::u16string_view url, TString& path) override;
  void RequestTalvokPassLogin() override;
  void CreateTabAfter(IQxITab* tab, bool copySecurity, ComPtr<IQxITab>& newTab) override;
  void FindReusableBlankTab(ComPtr<IQxITab>& tab) override;
  void OpenUri(std::u16string_view uri, ComPtr<IQxITab>& tab) override;
  void OpenUriFull(std::u16string_view uri, bool keepCurrentGroup, bool selectGroupFlag,
                           std::u16string_view selectGroupKey, std::u16string_view selectGroupText, bool isNew,
                           TTriState activate, TTriState reuseBlank, TTriState noBrowser,
                           std::u16string_view browserGuid, std::u16string_view post, TTriState effectKeyboard,
                           std::u16string_view tabGuid, std::u16string_view fromTabGuid,
                           std::u16string_view individual, ComPtr<IQxITab>& tab) override;
  void OpenUriOptions(std::u16string_view uri, bool keepCurrentGroup, bool selectGroupFlag,
                              std::u16string_view selectGroupKey, std::u16string_view selectGroupText, bool isNew,
                              TTriState activate, TTriState reuseBlank, TTriState noBrowser,
                              std::u16string_view browserGuid, std::u16string_view post, std::u16string_view tabGuid,
                              std::u16string_view fromTabGuid, std::u16string_view individual,
                              ComPtr<IQxITab>& tab) override;
  void OpenUriIndividual(std::u16string_view uri, std::u16string_view individual, bool reuseBlank,
                                 bool activate, ComPtr<IQxITab>& tab) override;
  bool GetPropertyBool(std::u16string_view key, bool fallback) override;
  bool SetPropertyBool(std::u16string_view key, bool value) override;
  void GetPropertyText(std::u16string_view key, std::u16string_view fallback, TString& text) override;
  bool SetPropertyText(std::u16string_view key, std::u16string_view text) override;
  std::int32_t GetPropertyInteger(std::u16string_view key, std::int32_t fallback) override;
  bool SetPropertyInteger(std::u16string_view key, std::int32_t value) override;
  bool SetPropertyAlternate(std::u16string_view key, std::u16string_view text) override;
  bool DeleteProperty(std::u16string_view key) override;
  void DeletePropertiesByPrefix(std::u16string_view prefix) override;
  bool GetTabGroupProperty(IQxITabGroup* group, std::u16string_view key, TString& text) override;
  bool SetTabGroupProperty(IQxITabGroup* group, std::u16string_view key, std::u16string_view text) override;
  bool ExecuteJavascript(IQxIBrowser* browser, std::u16string_view code, bool force,
                                 std::u16string_view scriptId) override;
  void CabinetManager(ComPtr<IQxICabinetManager>& out) override;
  void ClientWidgetFactory(ComPtr<IQxIClientWidgetFactory>& out) override;
  void MigemoSearchPlugin(ComPtr<IQxIMigemoSearchPlugin>& out) override;
  bool WidgetRectByName(std::u16string_view name, TRect& rect) override;
  bool GetXmlAttribute(IQxIXmlElement* element, std::u16string_view name, TString& value) override;
  void WidgetById(std::u16string_view id, ComPtr<IUnknown>& out) override;
  void WidgetControlById(std::u16string_view id, ComPtr<IQxIWidgetControl>& out) override;
  void WidgetObjectById(std::u16string_view id, ComPtr<IUnknown>& out) override;
  void WidgetElementById(std::u16string_view id, ComPtr<IQxIXmlElement>& out) override;
  TString FindWidgetIdByAttribute(std::u16string_view name, std::u16string_view value) override;
  std::unique_ptr<std::istream> PassConnectImage() override;
  std::unique_ptr<std::istream> GlobalStorageStream(std::u16string_view key) override;
  bool IsMainWindowFullscreen() override;
  bool IsFullScreenToolbarPinned() override;
  TRect MainWindowRect() override;
  std::int32_t LocaleId() override;
  bool SelectedTextOfActiveBrowser(TString& text) override;
  TString RelocateUrl(std::int32_t id) override;
  std::int32_t BrowserEngineKind(IQxIBrowser* browser) override;
  std::int32_t TabEngineKind(IQxITab* tab) override;
  std::int32_t ActiveEngineKind() override;
  bool DirectoryPath(std::u16string_view key, bool addDelimiter, TString& path) override;
  TString UserSettingClientDirectory() override;
  TString TabJsonFile() override;
  TString Favorite3JsonFile() override;
  TString ClientPluginsDirectory() override;
  TString LangsDirectory() override;
  TString SoundsDirectory() override;
  TString UserSettingModulesDirectory() override;
  TString ClientExecDirectory() override;
  TString ClientScriptsDirectory() override;
  TString CurrentSkinDirectory() override;
  TString DefaultSkinDirectory() override;
  WindowHandle WindowHandleOfBrowser(IQxIBrowser* browser) override;
  WindowHandle WindowHandleOfTab(IQxITab* tab) override;
  WindowHandle WindowHandleOfActiveBrowser() override;
  TRect BrowserAreaRect() override;
  TRect BrowserAreaInnerRect() override;
  TRect BrowserAreaRectBelowToolbar() override;
  TString LocaleDisplayName() override;
  TString TranslateText(std::u16string_view key) override;

  void AddEventListener(std::uint8_t timing, std::u16string_view eventId, IQxIEventListener* listener) override;
  void RemoveEventListener(std::u16string_view eventId, IQxIEventListener* listener) override;
  void AddEventListenerV3(std::uint8_t timing, int eventNumber, IQxIEventListener* listener) override;
  void RemoveEventListenerV3(int eventNumber, IQxIEventListener* listener) override;
  void AddEventHandler(std::uint8_t timing, std::u16string_view eventId,
                               ComPtr<IQxIEventListener>& listener, bool synchronous, TQxIEventProc method) override;
  void AddEventClosure(std::uint8_t timing, std::u16string_view eventId,
                               ComPtr<IQxIEventListener>& listener, bool synchronous,
                               TQxIEventProcedure closure) override;
  void AddEventHandlerV3(std::uint8_t timing, int eventNumber, ComPtr<IQxIEventListener>& listener,
                                 bool synchronous, TQxIEventProc method) override;
  void AddEventClosureV3(std::uint8_t timing, int eventNumber, ComPtr<IQxIEventListener>& listener,
                                 bool synchronous, TQxIEventProcedure closure) override;
  void AddAction(std::u16string_view actionId, IQxIAction* action) override;
  void RemoveAction(std::u16string_view actionId) override;
  void AddActionHandler(std::u16string_view actionId, TQxIActionProc method) override;
  void AddActionClosure(std::u16string_view actionId, TQxIActionProcedure closure) override;
  void RemoveAllHandlers() override;

  void TabManagerWrap(ComPtr<IQxITabManagerWrap>& out) override;
  void FilteredTabManagerWrap(ComPtr<IQxITabManagerWrap>& out) override;
  void FilteredTabManagerWrapEx(ComPtr<IQxITabManagerWrap>& out) override;
  std::int32_t TabIdOf(IQxITab* tab) override;
  void TabById(std::int32_t id, ComPtr<IQxITab>& out) override;
  bool CreateVariantText(std::u16string_view text, ComPtr<IQxIVariant>& out) override;
  bool CreateVariantBool(bool value, ComPtr<IQxIVariant>& out) override;
  bool CreateVariantInt64(std::int64_t value, ComPtr<IQxIVariant>& out) override;
  TString EngineIdOfBrowser(IQxIBrowser* browser) override;
  std::int32_t BrowserIdOfTab(IQxITab* tab) override;
  void SetUriOfTabAndBrowser(IQxITab* tab, std::u16string_view uri) override;
  bool IsTabNaviLocked(IQxITab* tab) override;
  bool IsBrowserNaviLocked(IQxIBrowser* browser) override;
  bool SetSecurityOfBrowser(IQxIBrowser* browser, std::int32_t flags) override;
  bool SetSecurityOfTab(IQxITab* tab, std::int32_t flags) override;
  bool GetSecurityOfTab(IQxITab* tab, std::int32_t& flags) override;
  bool ClearSecurityOfTab(IQxITab* tab, bool notify) override;
  void FocusBrowser(IQxIBrowser* browser) override;
  void SelectTab(IQxITab* tab) override;
  void CreateTabWithBrowser(std::u16string_view uri, std::u16string_view browserGuid, ComPtr<IQxITab>& tab,
                                    std::int32_t securityFlags) override;
  void BrowserById(std::int32_t id, ComPtr<IQxIBrowser>& out) override;
  void TabOfBrowserId(std::int32_t id, ComPtr<IQxITab>& out) override;
  void TabOfBrowser(IQxIBrowser* browser, ComPtr<IQxITab>& out) override;
  void BrowserByGuid(std::u16string_view guid, ComPtr<IQxIBrowser>& out) override;
  void BrowserOfTabGuid(std::u16string_view guid, ComPtr<IQxIBrowser>& out) override;
  void TabByGuid(std::u16string_view guid, ComPtr<IQxITab>& out) override;
  TString DefaultBrowserGuidOfUri(std::u16string_view uri) override;
  TString TabGuid(IQxITab* tab) override;
  TString TabGuidOfBrowserIdText(std::u16string_view idText) override;
  TString TabGroupGuid(IQxITabGroup* group) override;
  void ObjectOfDockEntry(std::int32_t id, ComPtr<IUnknown>& out) override;
  TString BrowserIdTextOfBrowser(IQxIBrowser* browser) override;
  void SelectTabLocked(IQxITab* tab, bool lock) override;
  ComPtr<IQxIStringDictionaryWrap> EventParameters(IQxIEvent* event) override;
  TString ProductName() override;
  bool IsTabDockKind2() override;
  void RefreshTabDock() override;
  bool CreateHandle(WindowHandle value, ComPtr<IQxIHandle>& out) override;
  void NavigateBrowser(IQxIBrowser* browser, std::u16string_view uri, std::u16string_view post) override;
  bool LoadXmlElement(std::u16string_view resourceUrl, ComPtr<IQxIXmlElement>& out) override;
  TString ChromiumUserAgent() override;
  bool IsSiteUpdatesPage(std::u16string_view uri) override;
  void FireEventWithStrings(std::u16string_view eventId, const std::vector<TString>& keys,
                                    const std::vector<TString>& values) override;
  std::int32_t ZoomRatioOfBrowser(IQxIBrowser* browser) override;
  bool IsPrivateTabGroup(IQxITabGroup* group) override;
  void IncrementProperty(std::u16string_view key) override;

 protected:
  template <class T>
  void LookupService(std::string_view name, ComPtr<T>& out) {
    out = nullptr;
    GetService(name, T::IID, out.put_void());
  }
  template <class T>
  void LookupPlugin(std::string_view name, ComPtr<T>& out) {
    out = nullptr;
    GetPluginObject(name, T::IID, out.put_void());
  }
  template <class T>
  bool CreateFactoryObject(std::u16string_view shortName, ComPtr<T>& out);
  bool TabValueVariant(IQxITab* tab, std::u16string_view key, ComPtr<IQxIVariant>& out);
  bool BrowserValueText(IQxIBrowser* browser, std::u16string_view key, TString& text);
  TRect FullScreenMainWindowRect();
  ComPtr<IQxIXmlElement> MainWindowElement();

  std::vector<std::unique_ptr<TEventItem>> FEventList;
  std::vector<TString> FActionList;
  ComPtr<IQxIPluginService> FPluginService;
  bool FFinalizing = false;
  bool FDestroying = false;
  ComPtr<ISharedDelayTask> FEventSharedDelayTask;
  ComPtr<IQxIFactoryService> FFactoryService;
  ComPtr<IQxIStringBuilder> FStringBuilder;
  ComPtr<IQxIHandleBuilder> FHandleBuilder;
  ComPtr<IQxIVariantBuilder> FVariantBuilder;
  std::unique_ptr<TProcCounter> FProcCounter;
};

class TServiceCoreWrapImpl : public TServiceCoreWrapImplBase {
 public:
  TServiceCoreWrapImpl(IQxIServiceCore* serviceCore, bool useEventDelayTask);
  ~TServiceCoreWrapImpl() override;

  HResult GetService(std::string_view name, const TGUID& iid, void** object) override;
  HResult GetPluginObject(std::string_view name, const TGUID& iid, void** object) override;

 private:
  ComPtr<IQxIServiceCore> FServiceCore;
};

}  // namespace qx
