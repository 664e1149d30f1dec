#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/ComObject.h"
#include "fakehost/FakeActionManager.h"
#include "fakehost/FakeBookmarkManager.h"
#include "fakehost/FakeBrowserManager.h"
#include "fakehost/FakeClientWidgetFactory.h"
#include "fakehost/FakeDirectoryService.h"
#include "fakehost/FakeEventService.h"
#include "fakehost/FakeFaviconManager.h"
#include "fakehost/FakeGlobalStorage.h"
#include "fakehost/FakeGraphicResourceService.h"
#include "fakehost/FakeHostWindows.h"
#include "fakehost/FakePageDataManager.h"
#include "fakehost/FakePluginService.h"
#include "fakehost/FakePropertyService.h"
#include "fakehost/FakeSearchManager.h"
#include "fakehost/FakeServiceCore.h"
#include "fakehost/FakeTabDock.h"
#include "fakehost/FakeTabManager.h"
#include "fakehost/FakeTabModel.h"
#include "fakehost/FakeTranslatorService.h"
#include "fakehost/FakeUriAction.h"
#include "fakehost/FakeWidgetService.h"
#include "fakehost/FakeWindowService.h"
#include "fakehost/FakeXmlWidgetPopup.h"

namespace qx {

// The whole fake host: every service of the host's table under its id, the tab model,
// and the host's own answers to what the module sends:
//   "TabBar.SelectTab" {tab-id}   selects that tab (switching group if need be)
//   "TabBar.CloseTab" {tab-id}    closes it
//   "TabBar.NewTab"               opens "about:blank" at the end of the active group
//   "QxCabinetDataManager.Cabinet" enters the cabinet screen, or leaves it
//   "XmlWidget.MenuOpen"          is remembered (a menu would open, modal)
//   "BrowserEngine.GetUserAgentBase" answers with the user agent text
//   "SearchEngineManager.SearchDirect" {request, keyword, from-tab-guid, ...} opens the
//                                 request with "{searchTerms}" replaced by the keyword
//                                 (UTF-8, percent-encoded) in a new active tab after
//                                 the tab it came from
//   "SearchDock.ApplySearchText" {keyword} puts the keyword in the search box
// These answers can be switched off to see only what the module sent.
class TFakeHost {
 public:
  TFakeHost();
  ~TFakeHost();
  TFakeHost(const TFakeHost&) = delete;
  TFakeHost& operator=(const TFakeHost&) = delete;

  ComPtr<IQxIServiceCore> ServiceCore() const { return ComPtr<IQxIServiceCore>(core_.get()); }

  // Gives every directory key a folder under root (made on disk) and puts skins under
  // "rc/skins/current", menus under "rc/menu" and favicons under "favicons".
  void UseFolder(const std::filesystem::path& root);

  // A service by short name stops being found, or is found again.
  void RemoveService(std::string_view shortName);
  void RestoreService(std::string_view shortName);
  // Registers an object under a short name followed by the host id suffix, as the host
  // does for the module's plug-ins; nil removes it.
  void RegisterPlugin(std::string_view shortName, IUnknown* object);

  void SetHostReactions(bool on) { reactions_ = on; }
  void SetUserAgent(std::u16string text) { userAgent_ = std::move(text); }
  bool InCabinet() const { return inCabinet_; }
  void SetInCabinet(bool in);
  // The cabinet page reports a drag: dragInfo is the JSON text of "drag-info".
  void ReportCabinetDrag(std::u16string_view dragInfo);
  const std::vector<TFakeParams>& MenuOpens() const { return menuOpens_; }
  const std::u16string& SearchBoxText() const { return searchBoxText_; }

  TFakeServiceCore& Core() { return *core_.get(); }
  TFakePluginService& Plugins() { return *plugins_.get(); }
  TFakeEventService& Events() { return *events_.get(); }
  TFakeTabModel& Model() { return *model_; }
  TFakeTabManager& TabManager() { return *tabManager_.get(); }
  TFakeTabDock& Dock() { return *dock_.get(); }
  TFakeBrowserManager& BrowserManager() { return *browserManager_.get(); }
  TFakePageDataManager& PageData() { return *pageData_.get(); }
  TFakePropertyService& Properties() { return *properties_.get(); }
  TFakeDirectoryService& Directories() { return *directories_.get(); }
  TFakeGraphicResourceService& Resources() { return *resources_.get(); }
  TFakeTranslatorService& Translator() { return *translator_.get(); }
  TFakeWindowService& Windows() { return *windows_.get(); }
  TFakeWidgetService& Widgets() { return *widgets_.get(); }
  // Popup menus that the module registered.
  TFakeXmlWidgetPopup& Popups() { return *popups_.get(); }
  TFakeGlobalStorageService& GlobalStorage() { return *globalStorage_.get(); }
  TFakeBookmarkManager& Bookmarks() { return *bookmarks_.get(); }
  TFakeActionManager& Actions() { return *actions_.get(); }
  TFakeUriAction& UriAction() { return *uriAction_.get(); }
  TFakeFaviconManager& Favicons() { return *favicons_.get(); }
  TFakeSearchManager& SearchEngines() { return *searchManager_.get(); }
  TFakeSearchHistoryManager& SearchHistory() { return *searchHistory_.get(); }
  // The host's windows in the platform's window system, made on request.
  TFakeHostWindows& HostWindows() { return *hostWindows_; }

 private:
  void RegisterServices();
  void RegisterReactions();
  void React(std::u16string_view eventId, std::function<void(IQxIStringDictionary*, std::vector<std::u16string>&)> f);

  ComPtr<TFakeServiceCore> core_;
  ComPtr<TFakePluginService> plugins_;
  ComPtr<TFakeEventService> events_;
  ComPtr<TFakePageDataManager> pageData_;
  ComPtr<TFakePropertyService> properties_;
  ComPtr<TFakeDirectoryService> directories_;
  ComPtr<TFakeFaviconManager> favicons_;
  ComPtr<TFakeGraphicResourceService> resources_;
  ComPtr<TFakeTranslatorService> translator_;
  ComPtr<TFakeWindowService> windows_;
  ComPtr<TFakeWidgetService> widgets_;
  ComPtr<TFakeXmlWidgetPopup> popups_;
  ComPtr<TFakeClientWidgetFactory> widgetFactory_;
  ComPtr<TFakeGlobalStorageService> globalStorage_;
  ComPtr<TFakeBookmarkManager> bookmarks_;
  ComPtr<TFakeActionManager> actions_;
  ComPtr<TFakeUriAction> uriAction_;
  ComPtr<TFakeSearchManager> searchManager_;
  ComPtr<TFakeSearchHistoryManager> searchHistory_;
  std::shared_ptr<TFakeTabModel> model_;
  ComPtr<TFakeTabDock> dock_;
  ComPtr<TFakeTabManager> tabManager_;
  ComPtr<TFakeBrowserManager> browserManager_;
  std::unique_ptr<TFakeHostWindows> hostWindows_;
  std::map<std::string, ComPtr<IUnknown>> services_;  // by short name, for RestoreService
  std::vector<std::uint64_t> reactionCookies_;
  std::vector<TFakeParams> menuOpens_;
  std::u16string userAgent_ = u"Mozilla/5.0 (Windows NT 10.0) AppleWebKit/537.36 (KHTML, like Gecko)";
  std::u16string searchBoxText_;
  bool reactions_ = true;
  bool inCabinet_ = false;
};

}  // namespace qx
