#pragma once

// The one façade through which module code reaches the host.

#include <cstdint>
#include <istream>
#include <memory>
#include <string_view>
#include <vector>

#include "base/ComObject.h"
#include "base/Rect.h"
#include "base/Text.h"
#include "host/QuillmarV3Interface.h"
#include "host/V3Callbacks.h"
#include "host/WrapV3Intf.h"

namespace qx {

// 0 false, 1 true, 2 not said (the key is left out).
enum TTriState : std::int32_t { tsFalse = 0, tsTrue = 1, tsNotSaid = 2 };

using WindowHandle = std::uintptr_t;

struct IServiceCoreWrap : IUnknown {
  static constexpr TGUID IID = MakeGuid("BDF095B8-CCCA-4F86-A577-1723BD8C9A27");

  // Lookups by short name; the host id suffix is added here.
  virtual HResult GetService(std::string_view name, const TGUID& iid, void** object) = 0;
  virtual HResult GetPluginObject(std::string_view name, const TGUID& iid, void** object) = 0;
  virtual bool GetFinalizing() = 0;
  virtual void SetFinalizing(bool value) = 0;

  virtual void PluginService(ComPtr<IQxIPluginService>& out) = 0;
  virtual void GraphicsService(ComPtr<IQxIGraphicsService>& out) = 0;
  virtual void FactoryService(ComPtr<IQxIFactoryService>& out) = 0;
  virtual void WindowService(ComPtr<IQxIWindowService>& out) = 0;
  virtual void EventService(ComPtr<IQxIEventService>& out) = 0;
  virtual void PropertyService(ComPtr<IQxIPropertyService>& out) = 0;
  virtual void GraphicResourceService(ComPtr<IQxIGraphicResourceService>& out) = 0;
  virtual void WidgetService(ComPtr<IQxIWidgetService>& out) = 0;
  virtual void TranslatorService(ComPtr<IQxITranslatorService>& out) = 0;
  virtual void GlobalStorageService(ComPtr<IQxIGlobalStorageService>& out) = 0;
  virtual void ActionManager(ComPtr<IQxIActionManager>& out) = 0;
  virtual void TabManager(ComPtr<IQxITabManager>& out) = 0;
  virtual void BrowserManager(ComPtr<IQxIBrowserManager>& out) = 0;
  virtual void PageDataManager(ComPtr<IQxIPageDataManager>& out) = 0;
  virtual void BookmarkManagerV3(ComPtr<IQxIBookmarkManagerV3>& out) = 0;
  virtual void XmlWidgetManager(ComPtr<IQxIXmlWidgetManager>& out) = 0;
  virtual void UriAction(ComPtr<IQxIUriAction>& out) = 0;
  virtual void FaviconManagerV3(ComPtr<IQxIFaviconManagerV3>& out) = 0;
  virtual void HistoryManager(ComPtr<IQxIHistoryManager>& out) = 0;
  virtual void SearchManager(ComPtr<IQxISearchManager>& out) = 0;
  virtual void SearchHistoryManager(ComPtr<IQxISearchHistoryManager>& out) = 0;
  virtual void WindowOrderManager(ComPtr<IQxIWindowOrderManager>& out) = 0;
  virtual void BasicToolBarManager(ComPtr<IQxIBookmarkManagerV3>& out) = 0;
  virtual void UserAgentManager(ComPtr<IQxIUserAgentManager>& out) = 0;
  virtual void XmlWidgetPopup(ComPtr<IQxIXmlWidgetPopup>& out) = 0;
  virtual void BrowserList(ComPtr<IQxIBrowserList>& out) = 0;
  virtual void TabDock(ComPtr<IQxITabDock>& out) = 0;
  virtual void StringBuilder(ComPtr<IQxIStringBuilder>& out) = 0;
  virtual void VariantBuilder(ComPtr<IQxIVariantBuilder>& out) = 0;
  virtual void HandleBuilder(ComPtr<IQxIHandleBuilder>& out) = 0;
  virtual void InputHandler(ComPtr<IQxIInputHandler>& out) = 0;
  virtual void DirectoryService(ComPtr<IQxIDirectoryService>& out) = 0;
  virtual void XmlService(ComPtr<IQxIXmlService>& out) = 0;

  virtual void CreateObject(std::u16string_view name, ComPtr<IUnknown>& out) = 0;
  virtual bool CreateString(std::u16string_view text, ComPtr<IQxIString>& out) = 0;
  virtual void CreateStringDictionary(ComPtr<IQxIStringDictionary>& out) = 0;
  virtual void CreateDictionary(ComPtr<IQxIDictionary>& out) = 0;
  virtual void CreateLocalDictionary(ComPtr<IQxIDictionary>& out) = 0;
  virtual void CreateArray(ComPtr<IQxIArray>& out) = 0;
  virtual void CreateStringArray(ComPtr<IQxIStringArray>& out) = 0;

  virtual WindowHandle MainWindowHandle() = 0;
  virtual void ActiveTab(ComPtr<IQxITab>& out) = 0;
  virtual void ActiveBrowser(ComPtr<IQxIBrowser>& out) = 0;
  virtual void ActiveTabGroup(ComPtr<IQxITabGroup>& out) = 0;
  virtual TString ActiveTabGroupGuid() = 0;
  virtual void BrowserOfTab(IQxITab* tab, ComPtr<IQxIBrowser>& out) = 0;
  virtual std::int32_t BrowserIdOfBrowser(IQxIBrowser* browser) = 0;
  virtual void ActiveWebBrowser2(ComPtr<IWebBrowser2>& out) = 0;
  virtual void ActiveHtmlDocument(ComPtr<IHTMLDocument2>& out) = 0;
  virtual void WebBrowser2OfBrowser(IQxIBrowser* browser, ComPtr<IWebBrowser2>& out) = 0;
  virtual void HtmlDocumentOfBrowser(IQxIBrowser* browser, ComPtr<IHTMLDocument2>& out) = 0;
  virtual TString ActiveBrowserUri() = 0;
  virtual TString ActiveBrowserTitle() = 0;
  virtual TString BrowserUri(IQxIBrowser* browser) = 0;
  virtual TString BrowserTitle(IQxIBrowser* browser) = 0;
  virtual TString TabUri(IQxITab* tab) = 0;
  virtual TString TabTitle(IQxITab* tab) = 0;
  virtual TString BookmarkPass3UserName() = 0;
  virtual TString BookmarkPass3Pass() = 0;
  virtual bool GetBrowserProperty(std::u16string_view key, IQxIBrowser* browser, TString& text) = 0;
  virtual bool SetBrowserProperty(IQxIBrowser* browser, std::u16string_view key, std::u16string_view text) = 0;
  virtual void GetBackHistoryUris(IQxIBrowser* browser, std::vector<TString>& uris) = 0;
  virtual bool GetTabValue(IQxITab* tab, std::u16string_view key, ComPtr<IQxIVariant>& out) = 0;
  virtual bool GetTabText(IQxITab* tab, std::u16string_view key, TString& text) = 0;
  virtual bool GetTabBool(IQxITab* tab, std::u16string_view key) = 0;
  virtual std::int64_t GetTabInt64(IQxITab* tab, std::u16string_view key) = 0;
  virtual bool SetTabText(IQxITab* tab, std::u16string_view key, std::u16string_view text) = 0;
  virtual bool SetTabBool(IQxITab* tab, std::u16string_view key, bool value) = 0;
  virtual bool IsBookmarkConnected() = 0;
  virtual bool UseTalvokConnect() = 0;
  virtual bool ResolveResourcePath(std::u16string_view url, TString& path) = 0;
  virtual void RequestTalvokPassLogin() = 0;
  virtual void CreateTabAfter(IQxITab* tab, bool copySecurity, ComPtr<IQxITab>& newTab) = 0;
  virtual void FindReusableBlankTab(ComPtr<IQxITab>& tab) = 0;
  virtual void OpenUri(std::u16string_view uri, ComPtr<IQxITab>& tab) = 0;
  virtual void OpenUriFull(std::u16string_view uri, bool keepCurrentGroup, bool selectGroupFlag,
                           std::u16string_view selectGroupKey, std::u16string_view selectGroupText, bool isNew,
                           TTriState activate, TTriState reuseBlank, TTriState noBrowser,
                           std::u16string_view browserGuid, std::u16string_view post, TTriState effectKeyboard,
                           std::u16string_view tabGuid, std::u16string_view fromTabGuid,
                           std::u16string_view individual, ComPtr<IQxITab>& tab) = 0;
  virtual void OpenUriOptions(std::u16string_view uri, bool keepCurrentGroup, bool selectGroupFlag,
                              std::u16string_view selectGroupKey, std::u16string_view selectGroupText, bool isNew,
                              TTriState activate, TTriState reuseBlank, TTriState noBrowser,
                              std::u16string_view browserGuid, std::u16string_view post, std::u16string_view tabGuid,
                              std::u16string_view fromTabGuid, std::u16string_view individual,
                              ComPtr<IQxITab>& tab) = 0;
  virtual void OpenUriIndividual(std::u16string_view uri, std::u16string_view individual, bool reuseBlank,
                                 bool activate, ComPtr<IQxITab>& tab) = 0;
  virtual bool GetPropertyBool(std::u16string_view key, bool fallback) = 0;
  virtual bool SetPropertyBool(std::u16string_view key, bool value) = 0;
  virtual void GetPropertyText(std::u16string_view key, std::u16string_view fallback, TString& text) = 0;
  virtual bool SetPropertyText(std::u16string_view key, std::u16string_view text) = 0;
  virtual std::int32_t GetPropertyInteger(std::u16string_view key, std::int32_t fallback) = 0;
  virtual bool SetPropertyInteger(std::u16string_view key, std::int32_t value) = 0;
  virtual bool SetPropertyAlternate(std::u16string_view key, std::u16string_view text) = 0;
  virtual bool DeleteProperty(std::u16string_view key) = 0;
  virtual void DeletePropertiesByPrefix(std::u16string_view prefix) = 0;
  virtual bool GetTabGroupProperty(IQxITabGroup* group, std::u16string_view key, TString& text) = 0;
  virtual bool SetTabGroupProperty(IQxITabGroup* group, std::u16string_view key, std::u16string_view text) = 0;
  virtual bool ExecuteJavascript(IQxIBrowser* browser, std::u16string_view code, bool force,
                                 std::u16string_view scriptId) = 0;
  virtual void CabinetManager(ComPtr<IQxICabinetManager>& out) = 0;
  virtual void ClientWidgetFactory(ComPtr<IQxIClientWidgetFactory>& out) = 0;
  virtual void MigemoSearchPlugin(ComPtr<IQxIMigemoSearchPlugin>& out) = 0;
  virtual bool WidgetRectByName(std::u16string_view name, TRect& rect) = 0;
  virtual bool GetXmlAttribute(IQxIXmlElement* element, std::u16string_view name, TString& value) = 0;
  virtual void WidgetById(std::u16string_view id, ComPtr<IUnknown>& out) = 0;
  virtual void WidgetControlById(std::u16string_view id, ComPtr<IQxIWidgetControl>& out) = 0;
  virtual void WidgetObjectById(std::u16string_view id, ComPtr<IUnknown>& out) = 0;
  virtual void WidgetElementById(std::u16string_view id, ComPtr<IQxIXmlElement>& out) = 0;
  virtual TString FindWidgetIdByAttribute(std::u16string_view name, std::u16string_view value) = 0;
  virtual std::unique_ptr<std::istream> PassConnectImage() = 0;
  virtual std::unique_ptr<std::istream> GlobalStorageStream(std::u16string_view key) = 0;
  virtual bool IsMainWindowFullscreen() = 0;
  virtual bool IsFullScreenToolbarPinned() = 0;
  virtual TRect MainWindowRect() = 0;
  virtual std::int32_t LocaleId() = 0;
  virtual bool SelectedTextOfActiveBrowser(TString& text) = 0;
  virtual TString RelocateUrl(std::int32_t id) = 0;
  virtual std::int32_t BrowserEngineKind(IQxIBrowser* browser) = 0;
  virtual std::int32_t TabEngineKind(IQxITab* tab) = 0;
  virtual std::int32_t ActiveEngineKind() = 0;
  virtual bool DirectoryPath(std::u16string_view key, bool addDelimiter, TString& path) = 0;
  virtual TString UserSettingClientDirectory() = 0;
  virtual TString TabJsonFile() = 0;
  virtual TString Favorite3JsonFile() = 0;
  virtual TString ClientPluginsDirectory() = 0;
  virtual TString LangsDirectory() = 0;
  virtual TString SoundsDirectory() = 0;
  virtual TString UserSettingModulesDirectory() = 0;
  virtual TString ClientExecDirectory() = 0;
  virtual TString ClientScriptsDirectory() = 0;
  virtual TString CurrentSkinDirectory() = 0;
  virtual TString DefaultSkinDirectory() = 0;
  virtual WindowHandle WindowHandleOfBrowser(IQxIBrowser* browser) = 0;
  virtual WindowHandle WindowHandleOfTab(IQxITab* tab) = 0;
  virtual WindowHandle WindowHandleOfActiveBrowser() = 0;
  virtual TRect BrowserAreaRect() = 0;
  virtual TRect BrowserAreaInnerRect() = 0;
  virtual TRect BrowserAreaRectBelowToolbar() = 0;
  virtual TString LocaleDisplayName() = 0;
  virtual TString TranslateText(std::u16string_view key) = 0;

  virtual void AddEventListener(std::uint8_t timing, std::u16string_view eventId, IQxIEventListener* listener) = 0;
  virtual void RemoveEventListener(std::u16string_view eventId, IQxIEventListener* listener) = 0;
  virtual void AddEventListenerV3(std::uint8_t timing, int eventNumber, IQxIEventListener* listener) = 0;
  virtual void RemoveEventListenerV3(int eventNumber, IQxIEventListener* listener) = 0;
  virtual void AddEventHandler(std::uint8_t timing, std::u16string_view eventId,
                               ComPtr<IQxIEventListener>& listener, bool synchronous, TQxIEventProc method) = 0;
  virtual void AddEventClosure(std::uint8_t timing, std::u16string_view eventId,
                               ComPtr<IQxIEventListener>& listener, bool synchronous,
                               TQxIEventProcedure closure) = 0;
  virtual void AddEventHandlerV3(std::uint8_t timing, int eventNumber, ComPtr<IQxIEventListener>& listener,
                                 bool synchronous, TQxIEventProc method) = 0;
  virtual void AddEventClosureV3(std::uint8_t timing, int eventNumber, ComPtr<IQxIEventListener>& listener,
                                 bool synchronous, TQxIEventProcedure closure) = 0;
  virtual void AddAction(std::u16string_view actionId, IQxIAction* action) = 0;
  virtual void RemoveAction(std::u16string_view actionId) = 0;
  virtual void AddActionHandler(std::u16string_view actionId, TQxIActionProc method) = 0;
  virtual void AddActionClosure(std::u16string_view actionId, TQxIActionProcedure closure) = 0;
  virtual void RemoveAllHandlers() = 0;

  virtual void TabManagerWrap(ComPtr<IQxITabManagerWrap>& out) = 0;
  virtual void FilteredTabManagerWrap(ComPtr<IQxITabManagerWrap>& out) = 0;
  virtual void FilteredTabManagerWrapEx(ComPtr<IQxITabManagerWrap>& out) = 0;
  virtual std::int32_t TabIdOf(IQxITab* tab) = 0;
  virtual void TabById(std::int32_t id, ComPtr<IQxITab>& out) = 0;
  virtual bool CreateVariantText(std::u16string_view text, ComPtr<IQxIVariant>& out) = 0;
  virtual bool CreateVariantBool(bool value, ComPtr<IQxIVariant>& out) = 0;
  virtual bool CreateVariantInt64(std::int64_t value, ComPtr<IQxIVariant>& out) = 0;
  virtual TString EngineIdOfBrowser(IQxIBrowser* browser) = 0;
  virtual std::int32_t BrowserIdOfTab(IQxITab* tab) = 0;
  virtual void SetUriOfTabAndBrowser(IQxITab* tab, std::u16string_view uri) = 0;
  virtual bool IsTabNaviLocked(IQxITab* tab) = 0;
  virtual bool IsBrowserNaviLocked(IQxIBrowser* browser) = 0;
  virtual bool SetSecurityOfBrowser(IQxIBrowser* browser, std::int32_t flags) = 0;
  virtual bool SetSecurityOfTab(IQxITab* tab, std::int32_t flags) = 0;
  virtual bool GetSecurityOfTab(IQxITab* tab, std::int32_t& flags) = 0;
  virtual bool ClearSecurityOfTab(IQxITab* tab, bool notify) = 0;
  virtual void FocusBrowser(IQxIBrowser* browser) = 0;
  virtual void SelectTab(IQxITab* tab) = 0;
  virtual void CreateTabWithBrowser(std::u16string_view uri, std::u16string_view browserGuid, ComPtr<IQxITab>& tab,
                                    std::int32_t securityFlags) = 0;
  virtual void BrowserById(std::int32_t id, ComPtr<IQxIBrowser>& out) = 0;
  virtual void TabOfBrowserId(std::int32_t id, ComPtr<IQxITab>& out) = 0;
  virtual void TabOfBrowser(IQxIBrowser* browser, ComPtr<IQxITab>& out) = 0;
  virtual void BrowserByGuid(std::u16string_view guid, ComPtr<IQxIBrowser>& out) = 0;
  virtual void BrowserOfTabGuid(std::u16string_view guid, ComPtr<IQxIBrowser>& out) = 0;
  virtual void TabByGuid(std::u16string_view guid, ComPtr<IQxITab>& out) = 0;
  virtual TString DefaultBrowserGuidOfUri(std::u16string_view uri) = 0;
  virtual TString TabGuid(IQxITab* tab) = 0;
  virtual TString TabGuidOfBrowserIdText(std::u16string_view idText) = 0;
  virtual TString TabGroupGuid(IQxITabGroup* group) = 0;
  virtual void ObjectOfDockEntry(std::int32_t id, ComPtr<IUnknown>& out) = 0;
  virtual TString BrowserIdTextOfBrowser(IQxIBrowser* browser) = 0;
  virtual void SelectTabLocked(IQxITab* tab, bool lock) = 0;
  virtual ComPtr<IQxIStringDictionaryWrap> EventParameters(IQxIEvent* event) = 0;
  virtual TString ProductName() = 0;
  virtual bool IsTabDockKind2() = 0;
  virtual void RefreshTabDock() = 0;
  virtual bool CreateHandle(WindowHandle value, ComPtr<IQxIHandle>& out) = 0;
  virtual void NavigateBrowser(IQxIBrowser* browser, std::u16string_view uri, std::u16string_view post) = 0;
  virtual bool LoadXmlElement(std::u16string_view resourceUrl, ComPtr<IQxIXmlElement>& out) = 0;
  virtual TString ChromiumUserAgent() = 0;
  virtual bool IsSiteUpdatesPage(std::u16string_view uri) = 0;
  virtual void FireEventWithStrings(std::u16string_view eventId, const std::vector<TString>& keys,
                                    const std::vector<TString>& values) = 0;
  virtual std::int32_t ZoomRatioOfBrowser(IQxIBrowser* browser) = 0;
  virtual bool IsPrivateTabGroup(IQxITabGroup* group) = 0;
  virtual void IncrementProperty(std::u16string_view key) = 0;
};

}  // namespace qx
