#pragma once

// Turns fuzzer bytes into text: the first byte chooses UTF-8 decoding or raw UTF-16
// code units (which reach every code unit, lone surrogates included).

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/Text.h"

namespace qx::fuzz {

inline std::u16string TextOf(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return {};
  const bool utf16 = data[0] & 1;
  ++data, --size;
  if (!utf16) return FromUtf8(std::string_view(reinterpret_cast<const char*>(data), size));
  std::u16string text(size / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i)
    text[i] = static_cast<char16_t>(data[2 * i] | data[2 * i + 1] << 8);
  return text;
}

}  // namespace qx::fuzz
