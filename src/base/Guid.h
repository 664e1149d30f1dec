#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qx {

struct TGUID {
  std::uint32_t D1 = 0;
  std::uint16_t D2 = 0;
  std::uint16_t D3 = 0;
  std::array<std::uint8_t, 8> D4{};

  friend constexpr bool operator==(const TGUID&, const TGUID&) = default;
  constexpr bool IsEmpty() const { return *this == TGUID{}; }
};

namespace guid_detail {

constexpr int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Parses "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX", braces optional.
template <class Char>
constexpr std::optional<TGUID> Parse(std::basic_string_view<Char> text) {
  if (text.size() == 38) {
    if (text.front() != Char('{') || text.back() != Char('}')) return std::nullopt;
    text = text.substr(1, 36);
  }
  if (text.size() != 36) return std::nullopt;
  std::array<std::uint8_t, 16> bytes{};
  std::size_t pos = 0;
  for (std::size_t i = 0; i < 16; ++i) {
    if (pos == 8 || pos == 13 || pos == 18 || pos == 23) {
      if (text[pos] != Char('-')) return std::nullopt;
      ++pos;
    }
    const auto hi = text[pos], lo = text[pos + 1];
    if (hi > Char(127) || lo > Char(127)) return std::nullopt;
    const int h = HexValue(static_cast<char>(hi)), l = HexValue(static_cast<char>(lo));
    if (h < 0 || l < 0) return std::nullopt;
    bytes[i] = static_cast<std::uint8_t>(h * 16 + l);
    pos += 2;
  }
  TGUID g;
  g.D1 = (std::uint32_t{bytes[0]} << 24) | (std::uint32_t{bytes[1]} << 16) |
         (std::uint32_t{bytes[2]} << 8) | bytes[3];
  g.D2 = static_cast<std::uint16_t>((bytes[4] << 8) | bytes[5]);
  g.D3 = static_cast<std::uint16_t>((bytes[6] << 8) | bytes[7]);
  for (std::size_t i = 0; i < 8; ++i) g.D4[i] = bytes[8 + i];
  return g;
}

}  // namespace guid_detail

// For interface identities written in source; a malformed literal fails to compile.
consteval TGUID MakeGuid(const char* text) {
  std::size_t n = 0;
  while (text[n] != '\0') ++n;
  const auto parsed = guid_detail::Parse(std::string_view(text, n));
  if (!parsed) throw "malformed GUID literal";
  return *parsed;
}

std::optional<TGUID> TryParseGuid(std::u16string_view text);
std::optional<TGUID> TryParseGuid(std::string_view text);

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", upper case.
std::u16string GuidToString(const TGUID& guid);
std::string GuidToAnsi(const TGUID& guid);

// A random (version 4) GUID.
TGUID NewGuid();

}  // namespace qx
