#include "smartsearch/SmartSearchEngines.h"

#include "host/HostKeys.h"
#include "smartsearch/SearchEncoding.h"
#include "smartsearch/SearchEngineSettings.h"

namespace qx {
namespace {

void Set(IQxIStringDictionary* dictionary, std::u16string_view key, std::u16string_view value) {
  dictionary->SetValue(TString(key).c_str(), TString(value).c_str());
}

}  // namespace

void TSmartSearchEngines::DefaultSearch(std::u16string_view keyword) {
  FServiceCore->IncrementProperty(prop_key::SmartSearchDefaultSearch);
  SearchByEngine(kDefaultSearchEngineGuid, kDefaultSearchActionName, keyword);
}

void TSmartSearchEngines::EngineButtonSearch(std::u16string_view guid, std::u16string_view actionName,
                                             std::u16string_view keyword) {
  FServiceCore->IncrementProperty(prop_key::SmartSearchSearch);
  SearchByEngine(guid, actionName, keyword);
}

void TSmartSearchEngines::EngineMenuSearch(std::u16string_view guid, std::u16string_view actionName,
                                           std::u16string_view keyword) {
  FServiceCore->IncrementProperty(prop_key::SmartSearchMenuSearch);
  SearchByEngine(guid, actionName, keyword);
}

void TSmartSearchEngines::PageSearch(std::u16string_view request, std::u16string_view charSet,
                                     std::u16string_view keyword) {
  FServiceCore->IncrementProperty(prop_key::SmartSearchSiteSearch);
  SearchDirect(request, SearchEncodeOfCharSet(charSet), keyword, 0);
}

void TSmartSearchEngines::SearchByEngine(std::u16string_view guid, std::u16string_view actionName,
                                         std::u16string_view keyword) {
  ComPtr<IQxIStringDictionary> options;
  FServiceCore->CreateStringDictionary(options);
  if (!options) return;
  Set(options.get(), u"effect-keyboard", u"false");
  Set(options.get(), u"action", actionName);
  if (const TString tabGuid = ActiveTabGuid(); !tabGuid.empty())
    Set(options.get(), u"from-tab-guid", tabGuid);
  ComPtr<IQxISearchManager> searchManager;
  FServiceCore->SearchManager(searchManager);
  if (!searchManager) return;
  searchManager->Search(TString(guid).c_str(), TString(keyword).c_str(), options.get());
  AfterSearch(keyword);
}

void TSmartSearchEngines::SearchDirect(std::u16string_view request, std::int32_t encode,
                                       std::u16string_view keyword, std::int32_t method) {
  ComPtr<IQxIStringDictionary> parameters;
  FServiceCore->CreateStringDictionary(parameters);
  if (parameters) {
    Set(parameters.get(), u"request", request);
    Set(parameters.get(), u"encode", IntToStr(encode));
    Set(parameters.get(), u"method", IntToStr(method));
    Set(parameters.get(), u"keyword", keyword);
    Set(parameters.get(), u"new", u"true");
    Set(parameters.get(), u"activate", u"true");
    Set(parameters.get(), u"from-tab-guid", ActiveTabGuid());
    FireEvent(u"SearchEngineManager.SearchDirect", parameters.get());
  }
  AfterSearch(keyword);
}

void TSmartSearchEngines::ApplySearchText(std::u16string_view keyword) {
  ComPtr<IQxIStringDictionary> parameters;
  FServiceCore->CreateStringDictionary(parameters);
  if (!parameters) return;
  Set(parameters.get(), u"keyword", keyword);
  FireEvent(u"SearchDock.ApplySearchText", parameters.get());
}

void TSmartSearchEngines::AfterSearch(std::u16string_view keyword) {
  ComPtr<IQxITabGroup> group;
  FServiceCore->ActiveTabGroup(group);
  if (!FServiceCore->IsPrivateTabGroup(group.get())) {
    ComPtr<IQxISearchHistoryManager> history;
    FServiceCore->SearchHistoryManager(history);
    if (history) history->Add(TString(keyword).c_str());
  }
  ApplySearchText(keyword);
}

TString TSmartSearchEngines::ActiveTabGuid() {
  ComPtr<IQxITab> tab;
  FServiceCore->ActiveTab(tab);
  return tab ? FServiceCore->TabGuid(tab.get()) : TString();
}

void TSmartSearchEngines::FireEvent(std::u16string_view eventId, IQxIStringDictionary* parameters) {
  ComPtr<IQxIEventService> events;
  FServiceCore->EventService(events);
  if (!events) return;
  ComPtr<IQxIStringArray> results;
  events->Fire(TString(eventId).c_str(), parameters, results.put());
}

}  // namespace qx
