#include "fakehost/FakeActionManager.h"

#include "fakehost/FakeStringDictionary.h"

namespace qx {

HResult QX_STDCALL TFakeActionManager::AddAction(std::int32_t, Text actionId, IQxIAction* action, std::int32_t) {
  if (!actionId || !action) return kInvalidArg;
  for (auto& entry : actions_) {
    if (SameText(entry.first, actionId)) {
      entry.second = action;
      return kOk;
    }
  }
  actions_.emplace_back(actionId, ComPtr<IQxIAction>(action));
  return kOk;
}

HResult QX_STDCALL TFakeActionManager::RemoveAction(Text actionId) {
  if (!actionId) return kInvalidArg;
  for (auto it = actions_.begin(); it != actions_.end(); ++it) {
    if (SameText(it->first, actionId)) {
      auto keep = it->second;  // released after the list is consistent again
      actions_.erase(it);
      return kOk;
    }
  }
  return kFail;
}

HResult TFakeActionManager::Execute(std::u16string_view actionId, const TFakeParams& parameters) {
  ComPtr<IQxIAction> action;
  for (const auto& entry : actions_)
    if (SameText(entry.first, actionId)) action = entry.second;
  if (!action) return kFail;
  auto dictionary = MakeCom<TFakeStringDictionary>(parameters);
  return action->Execute(dictionary.get());
}

bool TFakeActionManager::HasAction(std::u16string_view actionId) const {
  for (const auto& entry : actions_)
    if (SameText(entry.first, actionId)) return true;
  return false;
}

std::vector<std::u16string> TFakeActionManager::ActionIds() const {
  std::vector<std::u16string> ids;
  for (const auto& entry : actions_) ids.push_back(entry.first);
  return ids;
}

}  // namespace qx
