#include "fakehost/FakeHost.h"

#include "fakehost/FakeCabinetManager.h"
#include "fakehost/FakeFactoryService.h"
#include "fakehost/FakeOpaqueService.h"
#include "fakehost/FakeXmlService.h"
#include "host/ServiceIds.h"

namespace qx {

TFakeHost::TFakeHost()
    : core_(MakeCom<TFakeServiceCore>()),
      plugins_(MakeCom<TFakePluginService>()),
      events_(MakeCom<TFakeEventService>()),
      pageData_(MakeCom<TFakePageDataManager>()),
      properties_(MakeCom<TFakePropertyService>()),
      directories_(MakeCom<TFakeDirectoryService>()),
      favicons_(MakeCom<TFakeFaviconManager>(events_)),
      resources_(MakeCom<TFakeGraphicResourceService>(favicons_)),
      translator_(MakeCom<TFakeTranslatorService>()),
      windows_(MakeCom<TFakeWindowService>()),
      widgets_(MakeCom<TFakeWidgetService>()),
      popups_(MakeCom<TFakeXmlWidgetPopup>()),
      widgetFactory_(MakeCom<TFakeClientWidgetFactory>(widgets_)),
      globalStorage_(MakeCom<TFakeGlobalStorageService>()),
      bookmarks_(MakeCom<TFakeBookmarkManager>()),
      actions_(MakeCom<TFakeActionManager>()),
      uriAction_(MakeCom<TFakeUriAction>()),
      searchManager_(MakeCom<TFakeSearchManager>()),
      searchHistory_(MakeCom<TFakeSearchHistoryManager>()),
      model_(std::make_shared<TFakeTabModel>(events_)) {
  model_->SetPageData(pageData_.get());
  dock_ = MakeCom<TFakeTabDock>(model_);
  tabManager_ = MakeCom<TFakeTabManager>(model_, dock_);
  browserManager_ = MakeCom<TFakeBrowserManager>(model_);
  hostWindows_ = std::make_unique<TFakeHostWindows>(*windows_.get());
  RegisterReactions();
  RegisterServices();
}

TFakeHost::~TFakeHost() {
  for (const auto cookie : reactionCookies_) events_->RemoveHostHandler(cookie);
  // The module's objects hold the service core; letting go of them first breaks the cycle.
  plugins_->Clear();
  core_->Clear();
  events_->Clear();
  services_.clear();
  model_.reset();
  hostWindows_.reset();
}

namespace {

template <class T>
ComPtr<IUnknown> AsUnknown(const ComPtr<T>& object) {
  return object.template As<IUnknown>();
}

template <class I>
ComPtr<IUnknown> Opaque() {
  return AsUnknown(MakeCom<TFakeOpaqueService<I>>());
}

}  // namespace

void TFakeHost::RegisterServices() {
  auto cabinet = MakeCom<TFakeCabinetManager>();
  cabinet->SetShowingQuery([this] { return inCabinet_; });
  const std::pair<std::string_view, ComPtr<IUnknown>> objects[] = {
      {"PluginService", AsUnknown(plugins_)},
      {"GraphicsService", Opaque<IQxIGraphicsService>()},
      {"FactoryService", AsUnknown(MakeCom<TFakeFactoryService>())},
      {"WindowService", AsUnknown(windows_)},
      {"EventService", AsUnknown(events_)},
      {"PropertyService", AsUnknown(properties_)},
      {"GraphicResourceService", AsUnknown(resources_)},
      {"WidgetService", AsUnknown(widgets_)},
      {"TranslatorService", AsUnknown(translator_)},
      {"GlobalStorageService", AsUnknown(globalStorage_)},
      {"DirectoryService", AsUnknown(directories_)},
      {"XmlService", AsUnknown(MakeCom<TFakeXmlService>())},
      {"ActionManager", AsUnknown(actions_)},
      {"TabManager", AsUnknown(tabManager_)},
      {"BrowserManager", AsUnknown(browserManager_)},
      {"PageDataManager", AsUnknown(pageData_)},
      {"BookmarkManagerV3", AsUnknown(bookmarks_)},
      {"XmlWidgetManager", Opaque<IQxIXmlWidgetManager>()},
      {"UriAction", AsUnknown(uriAction_)},
      {"FaviconManagerV3", AsUnknown(favicons_)},
      {"HistoryManager", Opaque<IQxIHistoryManager>()},
      {"SearchManager", AsUnknown(searchManager_)},
      {"SearchHistoryManager", AsUnknown(searchHistory_)},
      {"WindowOrderManager", Opaque<IQxIWindowOrderManager>()},
      // Another service than the bookmark manager, though asked for with its identity.
      {"BasicToolBarManager", AsUnknown(MakeCom<TFakeBookmarkManager>())},
      {"UserAgentManager", Opaque<IQxIUserAgentManager>()},
      {"XmlWidgetPopup", AsUnknown(popups_)},
      {"InputHandler", Opaque<IQxIInputHandler>()},
      {"CabinetManager", AsUnknown(cabinet)},
      {"ClientWidgetFactory", AsUnknown(widgetFactory_)},
      {"MigemoSearchPlugin", Opaque<IQxIMigemoSearchPlugin>()},
  };
  for (const auto& [name, object] : objects) services_[std::string(name)] = object;
  for (const auto& entry : ServiceTable()) RestoreService(entry.ShortName);
}

void TFakeHost::RemoveService(std::string_view shortName) {
  const auto* entry = FindServiceEntry(shortName);
  if (!entry) return;
  if (entry->Kind == ServiceKind::Core) core_->UnregisterService(ServiceId(shortName));
  else plugins_->UnregisterPlugin(ServiceId(shortName));
}

void TFakeHost::RestoreService(std::string_view shortName) {
  const auto* entry = FindServiceEntry(shortName);
  const auto it = services_.find(std::string(shortName));
  if (!entry || it == services_.end()) return;
  if (entry->Kind == ServiceKind::Core) core_->RegisterService(ServiceId(shortName), it->second.get());
  else plugins_->RegisterPlugin(ServiceId(shortName), it->second.get());
}

void TFakeHost::RegisterPlugin(std::string_view shortName, IUnknown* object) {
  plugins_->RegisterPlugin(ServiceId(shortName), object);
}

void TFakeHost::UseFolder(const std::filesystem::path& root) {
  directories_->MakeDirectoryTree(root);
  std::error_code error;
  std::filesystem::create_directories(root / "rc/menu", error);
  std::filesystem::create_directories(root / "favicons", error);
  resources_->SetSkinRoot(root / "rc/skins/current");
  resources_->SetMenuRoot(root / "rc/menu");
  favicons_->SetRoot(root / "favicons");
}

void TFakeHost::SetInCabinet(bool in) {
  if (in == inCabinet_) return;
  inCabinet_ = in;
  events_->FireFromHost(in ? u"QxCabinetDataManager.Cabinet.Enter" : u"QxCabinetDataManager.Cabinet.Exit", {});
}

void TFakeHost::ReportCabinetDrag(std::u16string_view dragInfo) {
  events_->FireFromHost(u"Cabinet.DragAndDrop", {{u"drag-info", std::u16string(dragInfo)}});
}

void TFakeHost::React(std::u16string_view eventId,
                      std::function<void(IQxIStringDictionary*, std::vector<std::u16string>&)> f) {
  reactionCookies_.push_back(events_->AddHostHandler(
      eventId, [this, f = std::move(f)](const std::u16string&, IQxIStringDictionary* parameters,
                                        std::vector<std::u16string>& results) {
        if (reactions_) f(parameters, results);
      }));
}

namespace {

std::u16string PercentEncode(std::u16string_view text) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::u16string out;
  for (const unsigned char c : ToUtf8(text)) {
    const bool plain = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
                       c == '_' || c == '.' || c == '~';
    if (plain) {
      out += static_cast<char16_t>(c);
    } else {
      out += u'%';
      out += static_cast<char16_t>(kHex[c >> 4]);
      out += static_cast<char16_t>(kHex[c & 15]);
    }
  }
  return out;
}

}  // namespace

void TFakeHost::RegisterReactions() {
  const auto tabOf = [this](IQxIStringDictionary* parameters) {
    return model_->TabByGuid(ParamValue(ReadStringDictionary(parameters), u"tab-id"));
  };
  React(u"TabBar.SelectTab", [this, tabOf](IQxIStringDictionary* p, auto&) {
    if (TFakeTab* tab = tabOf(p)) model_->Activate(tab);
  });
  React(u"TabBar.CloseTab", [this, tabOf](IQxIStringDictionary* p, auto&) {
    if (TFakeTab* tab = tabOf(p)) model_->CloseTab(tab);
  });
  React(u"TabBar.NewTab", [this](IQxIStringDictionary*, auto&) { model_->OpenTab(u"about:blank"); });
  React(u"QxCabinetDataManager.Cabinet", [this](IQxIStringDictionary*, auto&) { SetInCabinet(!inCabinet_); });
  React(u"XmlWidget.MenuOpen",
        [this](IQxIStringDictionary* p, auto&) { menuOpens_.push_back(ReadStringDictionary(p)); });
  React(u"SearchEngineManager.SearchDirect", [this](IQxIStringDictionary* p, auto&) {
    const auto params = ReadStringDictionary(p);
    std::u16string uri = ParamValue(params, u"request");
    const std::u16string placeholder = u"{searchTerms}";
    const std::u16string keyword = PercentEncode(ParamValue(params, u"keyword"));
    for (auto at = uri.find(placeholder); at != std::u16string::npos; at = uri.find(placeholder, at + keyword.size()))
      uri.replace(at, placeholder.size(), keyword);
    if (uri.empty()) return;
    TFakeOpenTab how;
    how.After = model_->TabByGuid(ParamValue(params, u"from-tab-guid"));
    how.Activate = !HasParam(params, u"activate") || IsTrueText(ParamValue(params, u"activate"));
    model_->OpenTab(uri, how);
  });
  React(u"SearchDock.ApplySearchText", [this](IQxIStringDictionary* p, auto&) {
    searchBoxText_ = ParamValue(ReadStringDictionary(p), u"keyword");
  });
  React(u"BrowserEngine.GetUserAgentBase", [this](IQxIStringDictionary*, std::vector<std::u16string>& results) {
    results.push_back(userAgent_);
  });
}

}  // namespace qx
