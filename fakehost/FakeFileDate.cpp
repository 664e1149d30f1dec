#include "fakehost/FakeFileDate.h"

#include <ctime>

namespace qx {

std::int64_t PackFileDate(int year, int month, int day, int hour, int minute, int second) {
  const auto date = static_cast<std::uint32_t>(((year - 1980) << 9) | (month << 5) | day);
  const auto time = static_cast<std::uint32_t>((hour << 11) | (minute << 5) | (second / 2));
  return static_cast<std::int64_t>((date << 16) | time);
}

std::int64_t FileDateNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
#if defined(_WIN32)
  localtime_s(&local, &now);
#else
  localtime_r(&now, &local);
#endif
  return PackFileDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                      local.tm_sec);
}

}  // namespace qx
