#pragma once

// The bar's icons in tab order, with a lookup by tab id. Owns none of them: the
// frame, their parent, does.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qx {

class TCabinetIcon2;

class TCabinetBarIconList {
 public:
  // False for a nil icon or an id already in the list.
  bool AddIcon(const std::u16string& tabId, TCabinetIcon2* icon);
  void RemoveIcon(std::u16string_view tabId);
  TCabinetIcon2* FindIcon(std::u16string_view tabId) const;
  void Clear();
  int IndexOf(const TCabinetIcon2* icon) const;
  TCabinetIcon2* GetItems(int index) const { return FList.at(static_cast<std::size_t>(index)); }
  int Count() const { return static_cast<int>(FList.size()); }
  const std::vector<TCabinetIcon2*>& Items() const { return FList; }

 private:
  std::vector<TCabinetIcon2*> FList;
  std::unordered_map<std::u16string, TCabinetIcon2*> FDict;
};

}  // namespace qx
