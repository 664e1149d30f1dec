#pragma once

// One entry of the per-site search list: the site's own search URL and the address
// patterns that select it.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"

namespace qx {

class TSiteSearchItem {
 public:
  TString FQuery;   // search URL holding "{searchTerms}"
  TString FEncode;  // charset name as the file has it
  std::vector<TString> FSiteList;

  // The patterns in order, each compiled anew and searched anywhere in URL, ignoring
  // case. A malformed pattern raises ERegularExpressionError when it is reached.
  bool IsMatch(std::u16string_view URL) const;
};

class TSiteSearchList {
 public:
  void Add(std::unique_ptr<TSiteSearchItem> item) { FItems.push_back(std::move(item)); }
  void Clear() { FItems.clear(); }
  std::size_t Count() const { return FItems.size(); }
  const TSiteSearchItem& Item(std::size_t index) const { return *FItems[index]; }

  // Later entries override earlier ones, so the search runs from the last entry down.
  const TSiteSearchItem* FindItem(std::u16string_view URL) const;

 private:
  std::vector<std::unique_ptr<TSiteSearchItem>> FItems;
};

}  // namespace qx
