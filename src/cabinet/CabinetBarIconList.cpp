#include "cabinet/CabinetBarIconList.h"

#include <algorithm>

namespace qx {

bool TCabinetBarIconList::AddIcon(const std::u16string& tabId, TCabinetIcon2* icon) {
  if (!icon || !FDict.emplace(tabId, icon).second) return false;
  FList.push_back(icon);
  return true;
}

void TCabinetBarIconList::RemoveIcon(std::u16string_view tabId) {
  const auto it = FDict.find(std::u16string(tabId));
  if (it == FDict.end()) return;
  std::erase(FList, it->second);
  FDict.erase(it);
}

TCabinetIcon2* TCabinetBarIconList::FindIcon(std::u16string_view tabId) const {
  const auto it = FDict.find(std::u16string(tabId));
  return it == FDict.end() ? nullptr : it->second;
}

void TCabinetBarIconList::Clear() {
  FList.clear();
  FDict.clear();
}

int TCabinetBarIconList::IndexOf(const TCabinetIcon2* icon) const {
  const auto it = std::find(FList.begin(), FList.end(), icon);
  return it == FList.end() ? -1 : static_cast<int>(it - FList.begin());
}

}  // namespace qx
