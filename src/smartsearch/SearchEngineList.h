#pragma once

// The engines smart search offers, read from the search bar settings, with the copy of
// those settings that tells when they changed.

#include <cstdint>
#include <string>
#include <vector>

#include "smartsearch/SearchEngineSettings.h"

namespace qx {

class TSearchEngineList {
 public:
  // Reads the settings anew. The default engine's item fills the FDefaultSearch members
  // and is not offered; items without a guid or with "SmartSearch" false are left out.
  void Build(IServiceCoreWrap& serviceCore);
  // True as soon as any setting differs from what the last Build read; items compare as
  // exact text.
  bool IsEngineSettingChanged(IServiceCoreWrap& serviceCore) const;

  // The engines to offer, in the settings' order; the form gives the first ones buttons.
  const std::vector<TSearchEngineItem>& Engines() const { return FEngines; }

  std::vector<TString> FCacheEngineListStrings;
  TString FCacheDefaultSearchActionName;
  std::int32_t FCacheSmartSearchButtonCount = 0;
  // Kept from the default engine's item; the default search itself uses the fixed engine.
  TString FDefaultSearchRequest;
  std::int32_t FDefaultSearchEncode = 0;
  std::int32_t FDefaultSearchMethod = 0;

 private:
  std::vector<TSearchEngineItem> FEngines;
};

// The icon of an engine's menu item: a site's favicon for a web address, else a picture
// of the search engine skin.
TString EngineMenuIconUrl(std::u16string_view iconKey);
// The script the host runs when an engine's menu item is chosen.
TString EngineMenuScript(std::u16string_view actionName, std::u16string_view guid);

}  // namespace qx
