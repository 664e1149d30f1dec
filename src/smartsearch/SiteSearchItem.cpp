#include "smartsearch/SiteSearchItem.h"

#include "toolkit/RegularExpression.h"

namespace qx {

bool TSiteSearchItem::IsMatch(std::u16string_view URL) const {
  for (const TString& pattern : FSiteList) {
    if (CompileRegEx(pattern)->IsMatch(URL)) return true;
  }
  return false;
}

const TSiteSearchItem* TSiteSearchList::FindItem(std::u16string_view URL) const {
  for (auto it = FItems.rbegin(); it != FItems.rend(); ++it) {
    if ((*it)->IsMatch(URL)) return it->get();
  }
  return nullptr;
}

}  // namespace qx
