#pragma once

#include <map>
#include <string>
#include <string_view>

#include "base/ComPtr.h"
#include "base/Unknown.h"

namespace qx {

// Objects by ANSI id, compared without regard to ASCII case.
class TFakeServiceRegistry {
 public:
  void Set(std::string_view id, IUnknown* object);
  void Remove(std::string_view id) { objects_.erase(Key(id)); }
  ComPtr<IUnknown> Find(std::string_view id) const;
  void Clear() { objects_.clear(); }
  // Answer of QueryService and GetPlugin: the object or failure with nil.
  HResult HandOut(const char* id, IUnknown** object) const;

 private:
  static std::string Key(std::string_view id);

  std::map<std::string, ComPtr<IUnknown>> objects_;
};

}  // namespace qx
