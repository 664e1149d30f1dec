#pragma once

// The host's search bar settings as smart search reads them: the default engine, how many
// engines get a button, and one JSON text per engine.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "host/ServiceCoreWrapIntf.h"

namespace qx {

// The engine of the default search button, whatever the settings say.
inline constexpr std::u16string_view kDefaultSearchEngineGuid = u"{59C21CFA-639D-47DE-9642-E6EA065A4E2B}";
inline constexpr std::u16string_view kDefaultSearchActionName = u"QuillmarSearch";
inline constexpr std::u16string_view kDefaultSearchEngineIcon = u"QuillmarSearch.ico";

// One engine. Members are read as JSON text only: a number or boolean counts as absent.
struct TSearchEngineItem {
  TString ActionName;
  TString Request;
  std::int32_t Method = 0;
  std::int32_t Encode = 0;
  TString Guid;
  bool SmartSearch = true;  // only the text "false" turns it off
  TString Icon{kDefaultSearchEngineIcon};
  TString Name;
};

// Drops one leading and one trailing double quote, each only if present.
TString StripEngineItemQuotes(std::u16string_view text);

// Nothing for empty or malformed text, a value that is not an object, or an item without
// "ActionName" or "Request".
std::optional<TSearchEngineItem> ParseSearchEngineItem(std::u16string_view text);

// The settings as they stand now; Items are stripped of their quotes, empty ones kept.
struct TSearchEngineSettings {
  bool ShowSmartSearch = false;
  TString DefaultActionName;  // never empty: an empty setting means the built-in engine
  std::int32_t ButtonCount = 0;
  std::vector<TString> Items;

  static bool ReadShowSmartSearch(IServiceCoreWrap& serviceCore);
  static TString ReadDefaultActionName(IServiceCoreWrap& serviceCore);
  static std::int32_t ReadButtonCount(IServiceCoreWrap& serviceCore);
  static std::int32_t ReadItemCount(IServiceCoreWrap& serviceCore);
  static TString ReadItem(IServiceCoreWrap& serviceCore, std::int32_t index);
  static TSearchEngineSettings Read(IServiceCoreWrap& serviceCore);
};

}  // namespace qx
