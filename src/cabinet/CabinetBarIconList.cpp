#include "cabinet/CabinetBarIconList.h"

#include <algorithm>

#include "cabinet/CabinetBarIcon.h"

namespace qx {

bool TCabinetBarIconList::AddIcon(const std::u16string& tabId, TCabinetIcon2* icon) {
  if (!icon || !FDict.try_emplace(tabId, icon).second) return false;
  icon->SetPass(FPass);
  FList.push_back(icon);
  return true;
}

void TCabinetBarIconList::RemoveIcon(std::u16string_view tabId) {
  const auto it = FDict.find(tabId);
  if (it == FDict.end()) return;
  std::erase(FList, it->second);
  std::erase(FPrevious, it->second);
  FDict.erase(it);
}

TCabinetIcon2* TCabinetBarIconList::FindIcon(std::u16string_view tabId) const {
  const auto it = FDict.find(tabId);
  return it == FDict.end() ? nullptr : it->second;
}

void TCabinetBarIconList::Clear() {
  FList.clear();
  FPrevious.clear();
  FDict.clear();
}

int TCabinetBarIconList::IndexOf(const TCabinetIcon2* icon) const {
  const auto it = std::find(FList.begin(), FList.end(), icon);
  return it == FList.end() ? -1 : static_cast<int>(it - FList.begin());
}

void TCabinetBarIconList::BeginPass() {
  ++FPass;
  FPrevious.swap(FList);
  FList.clear();
}

bool TCabinetBarIconList::Keep(TCabinetIcon2* icon) {
  if (!icon || icon->Pass() == FPass) return false;
  icon->SetPass(FPass);
  FList.push_back(icon);
  return true;
}

std::vector<TCabinetIcon2*> TCabinetBarIconList::EndPass() {
  std::vector<TCabinetIcon2*> left;
  for (TCabinetIcon2* icon : FPrevious)
    if (icon->Pass() != FPass) {
      left.push_back(icon);
      if (const auto it = FDict.find(std::u16string_view(icon->TabId())); it != FDict.end()) FDict.erase(it);
    }
  FPrevious.clear();
  return left;
}

}  // namespace qx
