#include "host/ServiceIds.h"

#include "host/QuillmarV3Interface.h"

namespace qx {
namespace {

constexpr std::array<ServiceEntry, 31> kServices{{
    {"PluginService", ServiceKind::Core, IQxIPluginService::IID},
    {"GraphicsService", ServiceKind::Core, IQxIGraphicsService::IID},
    {"FactoryService", ServiceKind::Core, IQxIFactoryService::IID},
    {"WindowService", ServiceKind::Core, IQxIWindowService::IID},
    {"EventService", ServiceKind::Core, IQxIEventService::IID},
    {"PropertyService", ServiceKind::Core, IQxIPropertyService::IID},
    {"GraphicResourceService", ServiceKind::Core, IQxIGraphicResourceService::IID},
    {"WidgetService", ServiceKind::Core, IQxIWidgetService::IID},
    {"TranslatorService", ServiceKind::Core, IQxITranslatorService::IID},
    {"GlobalStorageService", ServiceKind::Core, IQxIGlobalStorageService::IID},
    {"DirectoryService", ServiceKind::Core, IQxIDirectoryService::IID},
    {"XmlService", ServiceKind::Core, IQxIXmlService::IID},
    {"ActionManager", ServiceKind::Plugin, IQxIActionManager::IID},
    {"TabManager", ServiceKind::Plugin, IQxITabManager::IID},
    {"BrowserManager", ServiceKind::Plugin, IQxIBrowserManager::IID},
    {"PageDataManager", ServiceKind::Plugin, IQxIPageDataManager::IID},
    {"BookmarkManagerV3", ServiceKind::Plugin, IQxIBookmarkManagerV3::IID},
    {"XmlWidgetManager", ServiceKind::Plugin, IQxIXmlWidgetManager::IID},
    {"UriAction", ServiceKind::Plugin, IQxIUriAction::IID},
    {"FaviconManagerV3", ServiceKind::Plugin, IQxIFaviconManagerV3::IID},
    {"HistoryManager", ServiceKind::Plugin, IQxIHistoryManager::IID},
    {"SearchManager", ServiceKind::Plugin, IQxISearchManager::IID},
    {"SearchHistoryManager", ServiceKind::Plugin, IQxISearchHistoryManager::IID},
    {"WindowOrderManager", ServiceKind::Plugin, IQxIWindowOrderManager::IID},
    // Asked for with the bookmark manager's identity although it is another service.
    {"BasicToolBarManager", ServiceKind::Plugin, IQxIBookmarkManagerV3::IID},
    {"UserAgentManager", ServiceKind::Plugin, IQxIUserAgentManager::IID},
    {"XmlWidgetPopup", ServiceKind::Plugin, IQxIXmlWidgetPopup::IID},
    {"InputHandler", ServiceKind::Plugin, IQxIInputHandler::IID},
    {"CabinetManager", ServiceKind::Plugin, IQxICabinetManager::IID},
    {"ClientWidgetFactory", ServiceKind::Plugin, IQxIClientWidgetFactory::IID},
    {"MigemoSearchPlugin", ServiceKind::Plugin, IQxIMigemoSearchPlugin::IID},
}};

}  // namespace

std::string ServiceId(std::string_view shortName) {
  std::string id(shortName);
  id += kHostIdSuffix;
  return id;
}

const std::array<ServiceEntry, 31>& ServiceTable() { return kServices; }

const ServiceEntry* FindServiceEntry(std::string_view shortName) {
  for (const auto& entry : kServices)
    if (entry.ShortName == shortName) return &entry;
  return nullptr;
}

}  // namespace qx
