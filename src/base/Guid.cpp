#include "base/Guid.h"

#include <cstdio>
#include <random>

namespace qx {

std::optional<TGUID> TryParseGuid(std::u16string_view text) { return guid_detail::Parse(text); }

std::optional<TGUID> TryParseGuid(std::string_view text) { return guid_detail::Parse(text); }

std::string GuidToAnsi(const TGUID& g) {
  char buf[40];
  std::snprintf(buf, sizeof buf, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(g.D1), unsigned{g.D2}, unsigned{g.D3}, unsigned{g.D4[0]},
                unsigned{g.D4[1]}, unsigned{g.D4[2]}, unsigned{g.D4[3]}, unsigned{g.D4[4]},
                unsigned{g.D4[5]}, unsigned{g.D4[6]}, unsigned{g.D4[7]});
  return buf;
}

std::u16string GuidToString(const TGUID& guid) {
  const std::string ansi = GuidToAnsi(guid);
  return std::u16string(ansi.begin(), ansi.end());
}

TGUID NewGuid() {
  thread_local std::mt19937_64 engine{std::random_device{}()};
  const std::uint64_t a = engine(), b = engine();
  TGUID g;
  g.D1 = static_cast<std::uint32_t>(a >> 32);
  g.D2 = static_cast<std::uint16_t>(a >> 16);
  g.D3 = static_cast<std::uint16_t>((a & 0x0FFF) | 0x4000);
  for (int i = 0; i < 8; ++i) g.D4[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(b >> (8 * i));
  g.D4[0] = static_cast<std::uint8_t>((g.D4[0] & 0x3F) | 0x80);
  return g;
}

}  // namespace qx
