#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/ComObject.h"
#include "fakehost/FakeCom.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Actions by id, as the host's menus and buttons would run them. Adding an id that is
// there replaces its action.
class TFakeActionManager : public TInterfacedObject<IQxIActionManager> {
 public:
  HResult QX_STDCALL AddAction(std::int32_t kind, Text actionId, IQxIAction* action, std::int32_t r) override;
  HResult QX_STDCALL RemoveAction(Text actionId) override;

  // Fake side: runs an action as the host would; failure for an unknown id.
  HResult Execute(std::u16string_view actionId, const TFakeParams& parameters = {});
  bool HasAction(std::u16string_view actionId) const;
  std::vector<std::u16string> ActionIds() const;

 private:
  std::vector<std::pair<std::u16string, ComPtr<IQxIAction>>> actions_;
};

}  // namespace qx
