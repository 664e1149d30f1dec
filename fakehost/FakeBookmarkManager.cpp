#include "fakehost/FakeBookmarkManager.h"

#include "fakehost/FakeString.h"

namespace qx {

HResult QX_STDCALL TFakeBookmarkManager::GetStatus(Text key, IQxIString** value) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  if (!key) return kInvalidArg;
  const auto it = status_.find(key);
  if (it == status_.end()) return kFail;
  *value = MakeFakeString(it->second).detach();
  return kOk;
}

}  // namespace qx
