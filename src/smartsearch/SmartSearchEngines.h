#pragma once

// What starting a search from smart search does: the host calls of each route and the
// counters the four ways of searching keep in host properties.

#include <cstdint>
#include <string_view>

#include "base/ComPtr.h"
#include "host/ServiceCoreWrapIntf.h"

namespace qx {

class TSmartSearchEngines {
 public:
  explicit TSmartSearchEngines(ComPtr<IServiceCoreWrap> serviceCore) : FServiceCore(std::move(serviceCore)) {}

  // The four ways of searching: each counts itself, then searches.
  void DefaultSearch(std::u16string_view keyword);
  void EngineButtonSearch(std::u16string_view guid, std::u16string_view actionName,
                          std::u16string_view keyword);
  void EngineMenuSearch(std::u16string_view guid, std::u16string_view actionName,
                        std::u16string_view keyword);
  void PageSearch(std::u16string_view request, std::u16string_view charSet, std::u16string_view keyword);

  // Through the host's search manager; skipped when it is missing.
  void SearchByEngine(std::u16string_view guid, std::u16string_view actionName, std::u16string_view keyword);
  // Always into a new active tab.
  void SearchDirect(std::u16string_view request, std::int32_t encode, std::u16string_view keyword,
                    std::int32_t method);
  // Shows the keyword in the host's search box.
  void ApplySearchText(std::u16string_view keyword);

 private:
  // Search history (except in private groups), then the search box.
  void AfterSearch(std::u16string_view keyword);
  TString ActiveTabGuid();
  void FireEvent(std::u16string_view eventId, IQxIStringDictionary* parameters);

  ComPtr<IServiceCoreWrap> FServiceCore;
};

}  // namespace qx
