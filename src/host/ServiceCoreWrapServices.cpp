// Service lookups, builders and the objects made through the factory.

#include "host/QxIDictionaryImpl.h"
#include "host/ServiceCoreWrap.h"
#include "host/ServiceIds.h"

namespace qx {

TServiceCoreWrapImplBase::TServiceCoreWrapImplBase(bool useEventDelayTask)
    : FProcCounter(std::make_unique<TProcCounter>()) {
  if (useEventDelayTask) {
    FEventSharedDelayTask = MakeCom<TSharedDelayTaskImpl>();
    FEventSharedDelayTask->SetInterval(1);
  }
}

TServiceCoreWrapImplBase::~TServiceCoreWrapImplBase() {
  // The sweep needs the service lookups, which belong to the derived class; it has run
  // in the derived destructor by now.
  FDestroying = true;
  FEventList.clear();
  FActionList.clear();
}

TServiceCoreWrapImpl::TServiceCoreWrapImpl(IQxIServiceCore* serviceCore, bool useEventDelayTask)
    : TServiceCoreWrapImplBase(useEventDelayTask), FServiceCore(serviceCore) {}

TServiceCoreWrapImpl::~TServiceCoreWrapImpl() {
  FDestroying = true;
  RemoveAllHandlers();
}

HResult TServiceCoreWrapImpl::GetService(std::string_view name, const TGUID& iid, void** object) {
  if (!object) return kFail;
  *object = nullptr;
  if (!FServiceCore) return kFail;
  ComPtr<IUnknown> found;
  const std::string id = ServiceId(name);
  if (Failed(FServiceCore->QueryService(id.c_str(), found.put())) || !found) return kFail;
  return Succeeded(found->QueryInterface(iid, object)) ? kOk : kFail;
}

HResult TServiceCoreWrapImpl::GetPluginObject(std::string_view name, const TGUID& iid, void** object) {
  if (!object) return kFail;
  *object = nullptr;
  ComPtr<IQxIPluginService> plugins;
  PluginService(plugins);
  if (!plugins) return kFail;
  ComPtr<IUnknown> found;
  const std::string id = ServiceId(name);
  if (Failed(plugins->GetPlugin(id.c_str(), FServiceCore.get(), found.put())) || !found) return kFail;
  return Succeeded(found->QueryInterface(iid, object)) ? kOk : kFail;
}

bool TServiceCoreWrapImplBase::GetFinalizing() { return FFinalizing; }
void TServiceCoreWrapImplBase::SetFinalizing(bool value) { FFinalizing = value; }

void TServiceCoreWrapImplBase::PluginService(ComPtr<IQxIPluginService>& out) {
  LookupService("PluginService", FPluginService);
  out = FPluginService;
}
void TServiceCoreWrapImplBase::GraphicsService(ComPtr<IQxIGraphicsService>& out) { LookupService("GraphicsService", out); }
void TServiceCoreWrapImplBase::FactoryService(ComPtr<IQxIFactoryService>& out) {
  // Every text conversion runs through the factory, so it is kept once found.
  if (!FFactoryService) LookupService("FactoryService", FFactoryService);
  out = FFactoryService;
}
void TServiceCoreWrapImplBase::WindowService(ComPtr<IQxIWindowService>& out) { LookupService("WindowService", out); }
void TServiceCoreWrapImplBase::EventService(ComPtr<IQxIEventService>& out) { LookupService("EventService", out); }
void TServiceCoreWrapImplBase::PropertyService(ComPtr<IQxIPropertyService>& out) {
  LookupService("PropertyService", out);
}
void TServiceCoreWrapImplBase::GraphicResourceService(ComPtr<IQxIGraphicResourceService>& out) {
  LookupService("GraphicResourceService", out);
}
void TServiceCoreWrapImplBase::WidgetService(ComPtr<IQxIWidgetService>& out) { LookupService("WidgetService", out); }
void TServiceCoreWrapImplBase::TranslatorService(ComPtr<IQxITranslatorService>& out) {
  LookupService("TranslatorService", out);
}
void TServiceCoreWrapImplBase::GlobalStorageService(ComPtr<IQxIGlobalStorageService>& out) {
  LookupService("GlobalStorageService", out);
}
void TServiceCoreWrapImplBase::DirectoryService(ComPtr<IQxIDirectoryService>& out) {
  LookupService("DirectoryService", out);
}
void TServiceCoreWrapImplBase::XmlService(ComPtr<IQxIXmlService>& out) { LookupService("XmlService", out); }

void TServiceCoreWrapImplBase::ActionManager(ComPtr<IQxIActionManager>& out) { LookupPlugin("ActionManager", out); }
void TServiceCoreWrapImplBase::TabManager(ComPtr<IQxITabManager>& out) { LookupPlugin("TabManager", out); }
void TServiceCoreWrapImplBase::BrowserManager(ComPtr<IQxIBrowserManager>& out) { LookupPlugin("BrowserManager", out); }
void TServiceCoreWrapImplBase::PageDataManager(ComPtr<IQxIPageDataManager>& out) {
  LookupPlugin("PageDataManager", out);
}
void TServiceCoreWrapImplBase::BookmarkManagerV3(ComPtr<IQxIBookmarkManagerV3>& out) {
  LookupPlugin("BookmarkManagerV3", out);
}
void TServiceCoreWrapImplBase::XmlWidgetManager(ComPtr<IQxIXmlWidgetManager>& out) {
  LookupPlugin("XmlWidgetManager", out);
}
void TServiceCoreWrapImplBase::UriAction(ComPtr<IQxIUriAction>& out) { LookupPlugin("UriAction", out); }
void TServiceCoreWrapImplBase::FaviconManagerV3(ComPtr<IQxIFaviconManagerV3>& out) {
  LookupPlugin("FaviconManagerV3", out);
}
void TServiceCoreWrapImplBase::HistoryManager(ComPtr<IQxIHistoryManager>& out) { LookupPlugin("HistoryManager", out); }
void TServiceCoreWrapImplBase::SearchManager(ComPtr<IQxISearchManager>& out) { LookupPlugin("SearchManager", out); }
void TServiceCoreWrapImplBase::SearchHistoryManager(ComPtr<IQxISearchHistoryManager>& out) {
  LookupPlugin("SearchHistoryManager", out);
}
void TServiceCoreWrapImplBase::WindowOrderManager(ComPtr<IQxIWindowOrderManager>& out) {
  LookupPlugin("WindowOrderManager", out);
}
void TServiceCoreWrapImplBase::BasicToolBarManager(ComPtr<IQxIBookmarkManagerV3>& out) {
  LookupPlugin("BasicToolBarManager", out);
}
void TServiceCoreWrapImplBase::UserAgentManager(ComPtr<IQxIUserAgentManager>& out) {
  LookupPlugin("UserAgentManager", out);
}
void TServiceCoreWrapImplBase::XmlWidgetPopup(ComPtr<IQxIXmlWidgetPopup>& out) { LookupPlugin("XmlWidgetPopup", out); }
void TServiceCoreWrapImplBase::InputHandler(ComPtr<IQxIInputHandler>& out) { LookupPlugin("InputHandler", out); }
void TServiceCoreWrapImplBase::CabinetManager(ComPtr<IQxICabinetManager>& out) { LookupPlugin("CabinetManager", out); }
void TServiceCoreWrapImplBase::ClientWidgetFactory(ComPtr<IQxIClientWidgetFactory>& out) {
  LookupPlugin("ClientWidgetFactory", out);
}
void TServiceCoreWrapImplBase::MigemoSearchPlugin(ComPtr<IQxIMigemoSearchPlugin>& out) {
  LookupPlugin("MigemoSearchPlugin", out);
}

void TServiceCoreWrapImplBase::BrowserList(ComPtr<IQxIBrowserList>& out) {
  out = nullptr;
  ComPtr<IQxIBrowserManager> manager;
  BrowserManager(manager);
  if (manager) manager->GetBrowserList(out.put());
}

void TServiceCoreWrapImplBase::TabDock(ComPtr<IQxITabDock>& out) {
  out = nullptr;
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  if (manager) manager->GetTabDock(out.put());
}

template <class T>
bool TServiceCoreWrapImplBase::CreateFactoryObject(std::u16string_view shortName, ComPtr<T>& out) {
  out = nullptr;
  ComPtr<IUnknown> object;
  CreateObject(shortName, object);
  if (object) out = object.As<T>();
  return static_cast<bool>(out);
}

void TServiceCoreWrapImplBase::StringBuilder(ComPtr<IQxIStringBuilder>& out) {
  if (!FStringBuilder) CreateFactoryObject(FromAscii(factory_object::QxIStringBuilder), FStringBuilder);
  out = FStringBuilder;
}
void TServiceCoreWrapImplBase::VariantBuilder(ComPtr<IQxIVariantBuilder>& out) {
  if (!FVariantBuilder) CreateFactoryObject(FromAscii(factory_object::QxIVariantBuilder), FVariantBuilder);
  out = FVariantBuilder;
}
void TServiceCoreWrapImplBase::HandleBuilder(ComPtr<IQxIHandleBuilder>& out) {
  if (!FHandleBuilder) CreateFactoryObject(FromAscii(factory_object::QxIHandleBuilder), FHandleBuilder);
  out = FHandleBuilder;
}

void TServiceCoreWrapImplBase::CreateObject(std::u16string_view name, ComPtr<IUnknown>& out) {
  out = nullptr;
  if (name.empty()) return;
  ComPtr<IQxIFactoryService> factory;
  FactoryService(factory);
  if (!factory) return;
  const TString id = TString(name) + FromAscii(kHostIdSuffix);
  factory->CreateObject(id.c_str(), out.put());
}

bool TServiceCoreWrapImplBase::CreateString(std::u16string_view text, ComPtr<IQxIString>& out) {
  out = nullptr;
  ComPtr<IQxIStringBuilder> builder;
  StringBuilder(builder);
  const TString value(text);
  return builder && Succeeded(builder->Create(out.put(), value.c_str())) && out;
}

void TServiceCoreWrapImplBase::CreateStringDictionary(ComPtr<IQxIStringDictionary>& out) {
  CreateFactoryObject(FromAscii(factory_object::QxIStringDictionary), out);
}
void TServiceCoreWrapImplBase::CreateDictionary(ComPtr<IQxIDictionary>& out) {
  CreateFactoryObject(FromAscii(factory_object::QxIDictionary), out);
}
void TServiceCoreWrapImplBase::CreateLocalDictionary(ComPtr<IQxIDictionary>& out) {
  out = MakeCom<TQxIDictionaryImpl>(this);
}
void TServiceCoreWrapImplBase::CreateArray(ComPtr<IQxIArray>& out) {
  CreateFactoryObject(FromAscii(factory_object::QxIArray), out);
}
void TServiceCoreWrapImplBase::CreateStringArray(ComPtr<IQxIStringArray>& out) {
  CreateFactoryObject(FromAscii(factory_object::QxIStringArray), out);
}

bool TServiceCoreWrapImplBase::CreateVariantText(std::u16string_view text, ComPtr<IQxIVariant>& out) {
  out = nullptr;
  ComPtr<IQxIVariantBuilder> builder;
  VariantBuilder(builder);
  const TString value(text);
  return builder && Succeeded(builder->FromText(out.put(), value.c_str())) && out;
}
bool TServiceCoreWrapImplBase::CreateVariantBool(bool value, ComPtr<IQxIVariant>& out) {
  out = nullptr;
  ComPtr<IQxIVariantBuilder> builder;
  VariantBuilder(builder);
  return builder && Succeeded(builder->FromBoolean(out.put(), value)) && out;
}
bool TServiceCoreWrapImplBase::CreateVariantInt64(std::int64_t value, ComPtr<IQxIVariant>& out) {
  out = nullptr;
  ComPtr<IQxIVariantBuilder> builder;
  VariantBuilder(builder);
  const auto bits = static_cast<std::uint64_t>(value);
  return builder &&
         Succeeded(builder->FromInt64(out.put(), static_cast<std::uint32_t>(bits), static_cast<std::uint32_t>(bits >> 32))) &&
         out;
}
bool TServiceCoreWrapImplBase::CreateHandle(WindowHandle value, ComPtr<IQxIHandle>& out) {
  out = nullptr;
  ComPtr<IQxIHandleBuilder> builder;
  HandleBuilder(builder);
  return builder && Succeeded(builder->Create(out.put(), value, 65537, 0, 0)) && out;
}

}  // namespace qx
