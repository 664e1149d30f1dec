#pragma once

#include <vector>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeTab;
class TFakeTabGroup;

// A run of tabs inside a group.
class TFakeTabSection : public TInterfacedObject<IQxITabSection> {
 public:
  HResult QX_STDCALL GetTabCount(std::int32_t* count) override;
  HResult QX_STDCALL GetTab(std::int32_t index, IQxITab** tab) override;

  const std::vector<ComPtr<TFakeTab>>& Tabs() const { return tabs_; }
  TFakeTabGroup* Group() const { return group_; }

 private:
  friend class TFakeTabModel;

  std::vector<ComPtr<TFakeTab>> tabs_;
  TFakeTabGroup* group_ = nullptr;
};

}  // namespace qx
