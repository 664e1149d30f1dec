// Properties, directories, and the values of tabs, browsers and groups.

#include "base/PathDelim.h"
#include "host/HostKeys.h"
#include "host/ServiceCoreWrap.h"

namespace qx {
namespace {

TString WithDelimiter(TString path) {
  if (!path.empty() && path.back() != u'/' && path.back() != u'\\') path += kPathDelim;
  return path;
}

}  // namespace

// --- properties ---

void TServiceCoreWrapImplBase::GetPropertyText(std::u16string_view key, std::u16string_view fallback,
                                               TString& text) {
  ComPtr<IQxIPropertyService> properties;
  PropertyService(properties);
  if (!properties) return;
  ComPtr<IQxIString> value;
  const TString k(key);
  const HResult status = properties->GetProperty(k.c_str(), value.put());
  if (status == kOk) {
    if (value) text = StringText(value.get());
  } else if (status == kInvalidArg) {
    text = TString(fallback);
  }
}

bool TServiceCoreWrapImplBase::SetPropertyText(std::u16string_view key, std::u16string_view text) {
  ComPtr<IQxIPropertyService> properties;
  PropertyService(properties);
  const TString k(key), v(text);
  return properties && Succeeded(properties->SetProperty(k.c_str(), v.c_str()));
}

bool TServiceCoreWrapImplBase::GetPropertyBool(std::u16string_view key, bool fallback) {
  TString text;
  GetPropertyText(key, u"", text);
  text = Trim(text);
  if (SameText(text, u"true")) return true;
  if (SameText(text, u"false")) return false;
  return fallback;
}

bool TServiceCoreWrapImplBase::SetPropertyBool(std::u16string_view key, bool value) {
  return SetPropertyText(key, value ? u"true" : u"false");
}

std::int32_t TServiceCoreWrapImplBase::GetPropertyInteger(std::u16string_view key, std::int32_t fallback) {
  TString text;
  GetPropertyText(key, u"", text);
  const auto number = TryStrToInt(text);
  if (!number || *number < INT32_MIN || *number > INT32_MAX) return fallback;
  return static_cast<std::int32_t>(*number);
}

bool TServiceCoreWrapImplBase::SetPropertyInteger(std::u16string_view key, std::int32_t value) {
  return SetPropertyText(key, IntToStr(value));
}

bool TServiceCoreWrapImplBase::SetPropertyAlternate(std::u16string_view key, std::u16string_view text) {
  ComPtr<IQxIPropertyService> properties;
  PropertyService(properties);
  const TString k(key), v(text);
  return properties && Succeeded(properties->SetPropertyAlternate(k.c_str(), v.c_str()));
}

bool TServiceCoreWrapImplBase::DeleteProperty(std::u16string_view key) {
  ComPtr<IQxIPropertyService> properties;
  PropertyService(properties);
  const TString k(key);
  return properties && Succeeded(properties->DeleteProperty(k.c_str()));
}

void TServiceCoreWrapImplBase::DeletePropertiesByPrefix(std::u16string_view prefix) {
  ComPtr<IQxIPropertyService> properties;
  PropertyService(properties);
  if (!properties) return;
  ComPtr<IQxIStringArray> raw;
  const TString p(prefix);
  if (Failed(properties->EnumerateKeys(p.c_str(), raw.put())) || !raw) return;
  ComPtr<IQxIStringArrayWrap> keys = WrapStringArray(raw.get());
  const std::int32_t count = keys->GetCount();
  for (std::int32_t i = 0; i < count; ++i) {
    TString key;
    if (keys->GetText(i, key)) DeleteProperty(key);
  }
}

void TServiceCoreWrapImplBase::IncrementProperty(std::u16string_view key) {
  SetPropertyInteger(key, GetPropertyInteger(key, 0) + 1);
}

TString TServiceCoreWrapImplBase::BookmarkPass3UserName() {
  TString text;
  GetPropertyText(prop_key::BookmarkPass3UserName, u"", text);
  return text;
}
TString TServiceCoreWrapImplBase::BookmarkPass3Pass() {
  TString text;
  GetPropertyText(prop_key::BookmarkPass3Pass, u"", text);
  return text;
}
bool TServiceCoreWrapImplBase::UseTalvokConnect() {
  return GetPropertyBool(prop_key::UseTalvokConnect, false);
}
bool TServiceCoreWrapImplBase::IsFullScreenToolbarPinned() {
  return GetPropertyBool(prop_key::FullScreenToolbarPinned, false);
}
TString TServiceCoreWrapImplBase::ProductName() {
  TString text;
  GetPropertyText(prop_key::ProductName, u"", text);
  return text;
}
TString TServiceCoreWrapImplBase::LocaleDisplayName() {
  TString text;
  GetPropertyText(prop_key::LocaleDisplayName, u"", text);
  return text;
}

// --- directories ---

bool TServiceCoreWrapImplBase::DirectoryPath(std::u16string_view key, bool addDelimiter, TString& path) {
  ComPtr<IQxIDirectoryService> directories;
  DirectoryService(directories);
  if (!directories) return false;
  ComPtr<IQxIString> value;
  const TString k(key);
  if (Failed(directories->GetPath(k.c_str(), value.put())) || !value) return false;
  path = StringText(value.get());
  if (addDelimiter) path = WithDelimiter(path);
  return true;
}

#define QX_DIRECTORY(Name, Key, Delimiter)   \
  TString TServiceCoreWrapImplBase::Name() { \
    TString path;                            \
    DirectoryPath(Key, Delimiter, path);     \
    return path;                             \
  }
QX_DIRECTORY(UserSettingClientDirectory, dir_key::UserSettingClient, true)
QX_DIRECTORY(UserSettingModulesDirectory, dir_key::UserSettingModules, true)
QX_DIRECTORY(ClientPluginsDirectory, dir_key::ClientPlugins, true)
QX_DIRECTORY(ClientExecDirectory, dir_key::ClientExec, true)
QX_DIRECTORY(ClientScriptsDirectory, dir_key::ClientScripts, true)
QX_DIRECTORY(LangsDirectory, dir_key::Langs, true)
QX_DIRECTORY(SoundsDirectory, dir_key::Sounds, true)
QX_DIRECTORY(CurrentSkinDirectory, dir_key::CurrentSkin, true)
QX_DIRECTORY(DefaultSkinDirectory, dir_key::DefaultSkin, true)
QX_DIRECTORY(TabJsonFile, dir_key::TabJson, false)
QX_DIRECTORY(Favorite3JsonFile, dir_key::Favorite3Json, false)
#undef QX_DIRECTORY

bool TServiceCoreWrapImplBase::ResolveResourcePath(std::u16string_view url, TString& path) {
  ComPtr<IQxIGraphicResourceService> resources;
  GraphicResourceService(resources);
  if (!resources) return false;
  ComPtr<IQxIString> value;
  const TString u(url);
  if (Failed(resources->ResolvePath(u.c_str(), value.put(), 0)) || !value) return false;
  path = StringText(value.get());
  return true;
}

TString TServiceCoreWrapImplBase::TranslateText(std::u16string_view key) {
  ComPtr<IQxITranslatorService> translator;
  TranslatorService(translator);
  ComPtr<IQxIString> value;
  const TString k(key);
  if (!translator || Failed(translator->Translate(k.c_str(), value.put()))) return {};
  return StringText(value.get());
}

// --- tab values ---

bool TServiceCoreWrapImplBase::TabValueVariant(IQxITab* tab, std::u16string_view key,
                                               ComPtr<IQxIVariant>& out) {
  out = nullptr;
  if (!tab || key.empty()) return false;
  const TString k(key);
  return Succeeded(tab->GetValue(k.c_str(), out.put())) && out;
}

bool TServiceCoreWrapImplBase::GetTabValue(IQxITab* tab, std::u16string_view key, ComPtr<IQxIVariant>& out) {
  return TabValueVariant(tab, key, out);
}

bool TServiceCoreWrapImplBase::GetTabText(IQxITab* tab, std::u16string_view key, TString& text) {
  ComPtr<IQxIVariant> variant;
  if (!TabValueVariant(tab, key, variant)) return false;
  ComPtr<IQxIString> value;
  if (Failed(variant->AsText(value.put()))) return false;
  text = StringText(value.get());
  return true;
}

bool TServiceCoreWrapImplBase::GetTabBool(IQxITab* tab, std::u16string_view key) {
  ComPtr<IQxIVariant> variant;
  std::uint8_t value = 0;
  return TabValueVariant(tab, key, variant) && Succeeded(variant->AsBoolean(&value, 0)) && value != 0;
}

std::int64_t TServiceCoreWrapImplBase::GetTabInt64(IQxITab* tab, std::u16string_view key) {
  ComPtr<IQxIVariant> variant;
  std::int64_t value = 0;
  if (!TabValueVariant(tab, key, variant) || Failed(variant->AsInt64(&value, 0, 0))) return 0;
  return value;
}

bool TServiceCoreWrapImplBase::SetTabText(IQxITab* tab, std::u16string_view key, std::u16string_view text) {
  ComPtr<IQxIVariant> variant;
  if (!tab || key.empty() || !CreateVariantText(text, variant)) return false;
  const TString k(key);
  return Succeeded(tab->SetValue(k.c_str(), variant.get()));
}

bool TServiceCoreWrapImplBase::SetTabBool(IQxITab* tab, std::u16string_view key, bool value) {
  ComPtr<IQxIVariant> variant;
  if (!tab || key.empty() || !CreateVariantBool(value, variant)) return false;
  const TString k(key);
  return Succeeded(tab->SetValue(k.c_str(), variant.get()));
}

TString TServiceCoreWrapImplBase::TabUri(IQxITab* tab) {
  TString text;
  GetTabText(tab, tab_key::Uri, text);
  return text;
}
TString TServiceCoreWrapImplBase::TabTitle(IQxITab* tab) {
  TString text;
  GetTabText(tab, tab_key::Title, text);
  return text;
}

TString TServiceCoreWrapImplBase::TabGuid(IQxITab* tab) {
  ComPtr<IQxIString> value;
  if (!tab || Failed(tab->GetGuid(value.put()))) return {};
  return StringText(value.get());
}

// --- browser values ---

bool TServiceCoreWrapImplBase::BrowserValueText(IQxIBrowser* browser, std::u16string_view key,
                                                TString& text) {
  if (!browser || key.empty()) return false;
  ComPtr<IQxIVariant> variant;
  const TString k(key);
  if (Failed(browser->GetValue(k.c_str(), variant.put())) || !variant) return false;
  ComPtr<IQxIString> value;
  if (Failed(variant->AsText(value.put()))) return false;
  text = StringText(value.get());
  return true;
}

bool TServiceCoreWrapImplBase::GetBrowserProperty(std::u16string_view key, IQxIBrowser* browser,
                                                  TString& text) {
  return BrowserValueText(browser, key, text);
}

bool TServiceCoreWrapImplBase::SetBrowserProperty(IQxIBrowser* browser, std::u16string_view key,
                                                  std::u16string_view text) {
  ComPtr<IQxIVariant> variant;
  if (!browser || key.empty() || !CreateVariantText(text, variant)) return false;
  const TString k(key);
  return Succeeded(browser->SetValue(k.c_str(), variant.get()));
}

TString TServiceCoreWrapImplBase::BrowserUri(IQxIBrowser* browser) {
  TString text;
  BrowserValueText(browser, browser_key::Uri, text);
  return text;
}
TString TServiceCoreWrapImplBase::BrowserTitle(IQxIBrowser* browser) {
  TString text;
  BrowserValueText(browser, browser_key::Title, text);
  return text;
}
TString TServiceCoreWrapImplBase::EngineIdOfBrowser(IQxIBrowser* browser) {
  TString text;
  BrowserValueText(browser, browser_key::EngineId, text);
  return text;
}
TString TServiceCoreWrapImplBase::BrowserIdTextOfBrowser(IQxIBrowser* browser) {
  TString text;
  BrowserValueText(browser, browser_key::BrowserId, text);
  return text;
}

WindowHandle TServiceCoreWrapImplBase::WindowHandleOfBrowser(IQxIBrowser* browser) {
  TString text;
  BrowserValueText(browser, browser_key::WindowHandle, text);
  const auto value = TryStrToInt(text);
  return value ? static_cast<WindowHandle>(*value) : 0;
}

std::int32_t TServiceCoreWrapImplBase::ZoomRatioOfBrowser(IQxIBrowser* browser) {
  TString text;
  BrowserValueText(browser, browser_key::ZoomRatio, text);
  const auto value = TryStrToInt(text);
  return value ? static_cast<std::int32_t>(*value) : 100;
}

void TServiceCoreWrapImplBase::GetBackHistoryUris(IQxIBrowser* browser, std::vector<TString>& uris) {
  uris.clear();
  if (!browser) return;
  ComPtr<IQxIVariant> variant;
  const TString key(browser_key::BackHistory);
  if (Failed(browser->GetValue(key.c_str(), variant.put())) || !variant) return;
  ComPtr<IUnknown> unknown;
  if (Failed(variant->AsUnknown(unknown.put())) || !unknown) return;
  ComPtr<IQxIArray> raw = unknown.As<IQxIArray>();
  if (!raw) return;
  ComPtr<IQxIArrayWrap> items = WrapArray(raw.get());
  for (std::int32_t i = 0, n = items->GetCount(); i < n; ++i) {
    ComPtr<IUnknown> item;
    if (!items->GetItem(i, item) || !item) continue;
    ComPtr<IQxIStringDictionaryWrap> entry = WrapStringDictionary(item.As<IQxIStringDictionary>().get());
    if (entry) uris.push_back(entry->Value(u"uri"));
  }
}

void TServiceCoreWrapImplBase::WebBrowser2OfBrowser(IQxIBrowser* browser, ComPtr<IWebBrowser2>& out) {
  out = nullptr;
  if (!browser) return;
  ComPtr<IQxIVariant> variant;
  const TString key(browser_key::WebBrowser2);
  if (Failed(browser->GetValue(key.c_str(), variant.put())) || !variant) return;
  ComPtr<IUnknown> unknown;
  if (Succeeded(variant->AsUnknown(unknown.put())) && unknown) out = unknown.As<IWebBrowser2>();
}

void TServiceCoreWrapImplBase::HtmlDocumentOfBrowser(IQxIBrowser* browser, ComPtr<IHTMLDocument2>& out) {
  out = nullptr;
  ComPtr<IWebBrowser2> webBrowser;
  WebBrowser2OfBrowser(browser, webBrowser);
  if (!webBrowser) return;
  ComPtr<IUnknown> document;
  if (Succeeded(webBrowser->get_Document(document.put())) && document) out = document.As<IHTMLDocument2>();
}

// --- groups ---

bool TServiceCoreWrapImplBase::GetTabGroupProperty(IQxITabGroup* group, std::u16string_view key,
                                                   TString& text) {
  if (!group || key.empty()) return false;
  ComPtr<IQxIString> value;
  const TString k(key);
  if (group->GetValue(k.c_str(), value.put()) != kOk) return false;
  text = StringText(value.get());
  return true;
}

bool TServiceCoreWrapImplBase::SetTabGroupProperty(IQxITabGroup* group, std::u16string_view key,
                                                   std::u16string_view text) {
  if (!group || key.empty()) return false;
  const TString k(key), v(text);
  return group->SetValue(k.c_str(), v.c_str()) == kOk;
}

TString TServiceCoreWrapImplBase::TabGroupGuid(IQxITabGroup* group) {
  ComPtr<IQxIString> value;
  if (!group || Failed(group->GetGuid(value.put()))) return {};
  return StringText(value.get());
}

bool TServiceCoreWrapImplBase::IsPrivateTabGroup(IQxITabGroup* group) {
  TString text;
  return group && GetTabGroupProperty(group, group_key::Private, text) && text == u"true";
}

}  // namespace qx
