#include "fakehost/FakeTabSection.h"

#include "fakehost/FakeCom.h"
#include "fakehost/FakeTab.h"
#include "fakehost/FakeWebView.h"

namespace qx {

HResult QX_STDCALL TFakeTabSection::GetTabCount(std::int32_t* count) {
  if (!count) return kInvalidArg;
  *count = static_cast<std::int32_t>(tabs_.size());
  return kOk;
}

HResult QX_STDCALL TFakeTabSection::GetTab(std::int32_t index, IQxITab** tab) {
  if (!tab) return kInvalidArg;
  *tab = nullptr;
  if (index < 0 || static_cast<std::size_t>(index) >= tabs_.size()) return kInvalidArg;
  return HandOut(tabs_[static_cast<std::size_t>(index)], tab);
}

}  // namespace qx
