#pragma once

// The bar's icons in tab order, with a lookup by tab id. Owns none of them: the
// frame, their parent, does.
//
// A layout pass rebuilds the order without rebuilding the lookup: BeginPass empties
// the order, Keep puts a known icon back, AddIcon a new one, and EndPass hands back the
// icons the pass did not keep, already forgotten.

#include <cstdint>
#include <functional>
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

  void BeginPass();
  // False when the icon is already in this pass's order.
  bool Keep(TCabinetIcon2* icon);
  std::vector<TCabinetIcon2*> EndPass();

 private:
  struct THash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view id) const { return std::hash<std::u16string_view>{}(id); }
  };

  std::vector<TCabinetIcon2*> FList;
  std::vector<TCabinetIcon2*> FPrevious;
  std::unordered_map<std::u16string, TCabinetIcon2*, THash, std::equal_to<>> FDict;
  std::uint32_t FPass = 0;
};

}  // namespace qx
