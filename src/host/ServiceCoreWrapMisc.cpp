// Locale, global storage, XML resources, host events and page scripts.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "host/HostKeys.h"
#include "host/ServiceCoreWrap.h"
#include "host/TabWraps.h"
#include "host/WebkitScriptManager.h"
#include "platform/Platform.h"

namespace qx {
namespace {

// Only the path and query of the redirect endpoint are fixed.
constexpr char kRelocateEndpoint[] = "https://relocate.quillmar.app/relocate.php?id=%.6d&lang=%d";
constexpr char16_t kSelectionScript[] = u"(function (){return document.getSelection().toString()})()";

}  // namespace

std::int32_t TServiceCoreWrapImplBase::LocaleId() {
  ComPtr<IQxITranslatorService> translator;
  TranslatorService(translator);
  ComPtr<IQxIString> value;
  if (!translator || Failed(translator->GetLocale(value.put()))) return 0;
  if (const auto number = TryStrToInt(StringText(value.get()))) return static_cast<std::int32_t>(*number);
  // Not a number: the system's default language, which the system gives as hexadecimal.
  char16_t buffer[16] = {};
  if (Platform().GetLocaleInfoW(2048, 1, buffer, 16) > 0) {
    if (const auto language = TryStrToInt(u"$" + TString(buffer))) return static_cast<std::int32_t>(*language);
  }
  return 1033;
}

TString TServiceCoreWrapImplBase::RelocateUrl(std::int32_t id) {
  char buffer[sizeof kRelocateEndpoint + 32];
  std::snprintf(buffer, sizeof buffer, kRelocateEndpoint, id, LocaleId());
  return FromAscii(buffer);
}

std::unique_ptr<std::istream> TServiceCoreWrapImplBase::GlobalStorageStream(std::u16string_view key) {
  ComPtr<IQxIGlobalStorageService> storage;
  GlobalStorageService(storage);
  ComPtr<IQxIGlobalStore> store;
  if (!storage || Failed(storage->GetStore(store.put())) || !store) return nullptr;
  const TString k(key);
  std::unique_ptr<std::istream> stream;
  ComPtr<IUnknown> raw;
  if (Succeeded(store->GetItem(k.c_str(), raw.put())) && raw) {
    ComPtr<IQxIGlobalStoreItem> item = raw.As<IQxIGlobalStoreItem>();
    std::int32_t size = 0;
    const void* data = nullptr;
    if (item && Succeeded(item->GetSize(&size)) && size > 0 && Succeeded(item->GetData(&data)) && data) {
      std::string copy(static_cast<const char*>(data), static_cast<std::size_t>(size));
      stream = std::make_unique<std::istringstream>(std::move(copy), std::ios::binary);
    }
  }
  // Reading consumes the item, found or not.
  store->RemoveItem(k.c_str());
  return stream;
}

std::unique_ptr<std::istream> TServiceCoreWrapImplBase::PassConnectImage() {
  return GlobalStorageStream(u"PassConnectImage");
}

bool TServiceCoreWrapImplBase::LoadXmlElement(std::u16string_view resourceUrl, ComPtr<IQxIXmlElement>& out) {
  out = nullptr;
  ComPtr<IQxIXmlWidgetPopup> popup;
  XmlWidgetPopup(popup);
  ComPtr<IQxIXmlService> xml;
  XmlService(xml);
  if (!popup || !xml) return false;
  TString path;
  if (!ResolveResourcePath(resourceUrl, path)) return false;
  std::ifstream file(std::filesystem::path(ToUtf8(path)), std::ios::binary);
  if (!file) return false;
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  const TString text = FromUtf8(bytes);
  return Succeeded(xml->Parse(text.c_str(), out.put())) && out;
}

TString TServiceCoreWrapImplBase::ChromiumUserAgent() {
  ComPtr<IQxIEventService> events;
  EventService(events);
  ComPtr<IQxIStringDictionary> raw;
  CreateStringDictionary(raw);
  if (!events || !raw) return {};
  WrapStringDictionary(raw.get())->SetValue(browser_key::EngineId, kChromiumEngineClassGuid);
  ComPtr<IQxIStringArray> results;
  if (Failed(events->Fire(u"BrowserEngine.GetUserAgentBase", raw.get(), results.put())) || !results) return {};
  TString agent;
  WrapStringArray(results.get())->GetText(0, agent);
  return agent;
}

void TServiceCoreWrapImplBase::RequestTalvokPassLogin() {
  ComPtr<IQxIEventService> events;
  EventService(events);
  ComPtr<IQxIStringDictionary> parameters;
  CreateStringDictionary(parameters);
  if (events) events->Post(u"TalvokPass.Login", u"", parameters.get(), 1, 0, 0);
}

void TServiceCoreWrapImplBase::FireEventWithStrings(std::u16string_view eventId, const std::vector<TString>& keys,
                                                    const std::vector<TString>& values) {
  if (keys.size() != values.size()) return;
  ComPtr<IQxIEventService> events;
  EventService(events);
  ComPtr<IQxIStringDictionary> raw;
  CreateStringDictionary(raw);
  if (!events || !raw) return;
  ComPtr<IQxIStringDictionaryWrap> parameters = WrapStringDictionary(raw.get());
  for (std::size_t i = 0; i < keys.size(); ++i) parameters->SetValue(keys[i], values[i]);
  ComPtr<IQxIStringArray> results;
  const TString id(eventId);
  events->Fire(id.c_str(), raw.get(), results.put());
}

ComPtr<IQxIStringDictionaryWrap> TServiceCoreWrapImplBase::EventParameters(IQxIEvent* event) {
  ComPtr<IQxIStringDictionary> parameters;
  if (!event || Failed(event->GetParameters(parameters.put()))) return nullptr;
  return WrapStringDictionary(parameters.get());
}

bool TServiceCoreWrapImplBase::SelectedTextOfActiveBrowser(TString& text) {
  ComPtr<IQxIBrowser> browser;
  ActiveBrowser(browser);
  const std::int32_t kind = BrowserEngineKind(browser.get());
  if (kind == 1) {
    ComPtr<IWebkitScriptManager> scripts = MakeCom<TWebkitScriptManagerImpl>(this, false, browser.get());
    return scripts->ExecuteAndWaitPumping(kSelectionScript, text);
  }
  // Kind 2 would read the document's selection through automation; it never occurs.
  return false;
}

void TServiceCoreWrapImplBase::TabManagerWrap(ComPtr<IQxITabManagerWrap>& out) {
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  out = MakeTabManagerWrap(manager.get(), TTabManagerWrapKind::Plain);
}

void TServiceCoreWrapImplBase::FilteredTabManagerWrap(ComPtr<IQxITabManagerWrap>& out) {
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  out = MakeTabManagerWrap(manager.get(), TTabManagerWrapKind::Filtered);
}

void TServiceCoreWrapImplBase::FilteredTabManagerWrapEx(ComPtr<IQxITabManagerWrap>& out) {
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  out = MakeTabManagerWrap(manager.get(), TTabManagerWrapKind::FilteredEx);
}

}  // namespace qx
