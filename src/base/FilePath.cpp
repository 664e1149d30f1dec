#include "base/FilePath.h"

#include <string>

#include "base/Text.h"

namespace qx {

std::filesystem::path FilePathOf(std::u16string_view name) {
#ifdef _WIN32
  return std::filesystem::path(std::wstring(name.begin(), name.end()));
#else
  return std::filesystem::path(ToUtf8(name));
#endif
}

}  // namespace qx
