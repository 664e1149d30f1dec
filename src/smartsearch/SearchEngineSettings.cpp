#include "smartsearch/SearchEngineSettings.h"

#include <limits>

#include "host/HostKeys.h"
#include "text/JSONParser.h"

namespace qx {
namespace {

std::int32_t DecimalOrZero(std::u16string_view text) {
  const std::int64_t value = StrToIntDef(text, 0);
  const bool fits =
      value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max();
  return fits ? static_cast<std::int32_t>(value) : 0;
}

}  // namespace

TString StripEngineItemQuotes(std::u16string_view text) {
  if (!text.empty() && text.front() == u'"') text.remove_prefix(1);
  if (!text.empty() && text.back() == u'"') text.remove_suffix(1);
  return TString(text);
}

std::optional<TSearchEngineItem> ParseSearchEngineItem(std::u16string_view text) {
  if (text.empty()) return std::nullopt;
  ComPtr<IJSONValue> value;
  try {
    TJSONParser::ParseJSONText(text, value);
  } catch (const std::exception&) {
    return std::nullopt;
  }
  const ComPtr<IJSONObject> object = value ? value->AsObject() : nullptr;
  if (!object) return std::nullopt;
  TSearchEngineItem item;
  item.ActionName = object->GetString(u"ActionName");
  item.Request = object->GetString(u"Request");
  if (item.ActionName.empty() || item.Request.empty()) return std::nullopt;
  item.Method = DecimalOrZero(object->GetString(u"Method"));
  item.Encode = DecimalOrZero(object->GetString(u"Encode"));
  item.Guid = object->GetString(u"Guid");
  item.SmartSearch = !SameText(object->GetString(u"SmartSearch"), u"false");
  if (TString icon = object->GetString(u"Icon"); !icon.empty()) item.Icon = std::move(icon);
  item.Name = object->GetString(u"Name");
  return item;
}

bool TSearchEngineSettings::ReadShowSmartSearch(IServiceCoreWrap& serviceCore) {
  return serviceCore.GetPropertyBool(prop_key::SearchBarShowSmartSearch, false);
}

TString TSearchEngineSettings::ReadDefaultActionName(IServiceCoreWrap& serviceCore) {
  TString action;
  serviceCore.GetPropertyText(prop_key::SearchBarDefaultEngineAction, u"", action);
  return action.empty() ? TString(kDefaultSearchActionName) : action;
}

std::int32_t TSearchEngineSettings::ReadButtonCount(IServiceCoreWrap& serviceCore) {
  return serviceCore.GetPropertyInteger(prop_key::SearchBarSmartSearchCustomButtonCount, 0);
}

std::int32_t TSearchEngineSettings::ReadItemCount(IServiceCoreWrap& serviceCore) {
  return serviceCore.GetPropertyInteger(prop_key::SearchBarCount, 0);
}

TString TSearchEngineSettings::ReadItem(IServiceCoreWrap& serviceCore, std::int32_t index) {
  TString text;
  serviceCore.GetPropertyText(TString(prop_key::SearchBarItem) + IntToStr(index), u"", text);
  return StripEngineItemQuotes(text);
}

TSearchEngineSettings TSearchEngineSettings::Read(IServiceCoreWrap& serviceCore) {
  TSearchEngineSettings settings;
  settings.ShowSmartSearch = ReadShowSmartSearch(serviceCore);
  settings.DefaultActionName = ReadDefaultActionName(serviceCore);
  settings.ButtonCount = ReadButtonCount(serviceCore);
  const std::int32_t count = ReadItemCount(serviceCore);
  for (std::int32_t i = 0; i < count; ++i) settings.Items.push_back(ReadItem(serviceCore, i));
  return settings;
}

}  // namespace qx
