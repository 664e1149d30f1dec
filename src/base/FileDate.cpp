#include "base/FileDate.h"

#include <ctime>

namespace qx {

std::int64_t FileDateNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
#ifdef _WIN32
  localtime_s(&local, &now);
#else
  localtime_r(&now, &local);
#endif
  const std::uint32_t date = static_cast<std::uint32_t>(((local.tm_year - 80) << 9) | ((local.tm_mon + 1) << 5) | local.tm_mday);
  const std::uint32_t time = static_cast<std::uint32_t>((local.tm_hour << 11) | (local.tm_min << 5) | (local.tm_sec / 2));
  return static_cast<std::int64_t>((date << 16) | time);
}

}  // namespace qx
