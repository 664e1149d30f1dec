#include "smartsearch/SearchEngineList.h"

namespace qx {

void TSearchEngineList::Build(IServiceCoreWrap& serviceCore) {
  FEngines.clear();
  const TSearchEngineSettings settings = TSearchEngineSettings::Read(serviceCore);
  FCacheDefaultSearchActionName = settings.DefaultActionName;
  FCacheSmartSearchButtonCount = settings.ButtonCount;
  FCacheEngineListStrings = settings.Items;
  for (const TString& text : settings.Items) {
    std::optional<TSearchEngineItem> item = ParseSearchEngineItem(text);
    if (!item) continue;
    if (item->ActionName == settings.DefaultActionName) {
      FDefaultSearchRequest = item->Request;
      FDefaultSearchEncode = item->Encode;
      FDefaultSearchMethod = item->Method;
      continue;
    }
    if (item->Guid.empty() || !item->SmartSearch) continue;
    FEngines.push_back(std::move(*item));
  }
}

bool TSearchEngineList::IsEngineSettingChanged(IServiceCoreWrap& serviceCore) const {
  if (TSearchEngineSettings::ReadDefaultActionName(serviceCore) != FCacheDefaultSearchActionName) return true;
  if (TSearchEngineSettings::ReadButtonCount(serviceCore) != FCacheSmartSearchButtonCount) return true;
  const std::int32_t count = TSearchEngineSettings::ReadItemCount(serviceCore);
  if (count != static_cast<std::int32_t>(FCacheEngineListStrings.size())) return true;
  for (std::int32_t i = 0; i < count; ++i) {
    if (TSearchEngineSettings::ReadItem(serviceCore, i) !=
        FCacheEngineListStrings[static_cast<std::size_t>(i)])
      return true;
  }
  return false;
}

TString EngineMenuIconUrl(std::u16string_view iconKey) {
  const bool web = iconKey.starts_with(u"http://") || iconKey.starts_with(u"https://");
  return (web ? TString(u"favicon://") : TString(u"skin://widget/module/SearchEngine/")) + TString(iconKey);
}

TString EngineMenuScript(std::u16string_view actionName, std::u16string_view guid) {
  return u"SmartSearch.MenuSelect({'action':'" + TString(actionName) + u"','id':'" + TString(guid) + u"'})";
}

}  // namespace qx
