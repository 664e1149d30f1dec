#include "fakehost/FakeServiceRegistry.h"

namespace qx {

std::string TFakeServiceRegistry::Key(std::string_view id) {
  std::string key(id);
  for (auto& c : key)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return key;
}

void TFakeServiceRegistry::Set(std::string_view id, IUnknown* object) {
  if (object) objects_[Key(id)] = object;
  else objects_.erase(Key(id));
}

ComPtr<IUnknown> TFakeServiceRegistry::Find(std::string_view id) const {
  const auto it = objects_.find(Key(id));
  return it == objects_.end() ? nullptr : it->second;
}

HResult TFakeServiceRegistry::HandOut(const char* id, IUnknown** object) const {
  if (!object) return kInvalidArg;
  *object = nullptr;
  if (!id) return kFail;
  const auto found = Find(id);
  if (!found) return kFail;
  found.CopyTo(object);
  return kOk;
}

}  // namespace qx
