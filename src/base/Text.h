#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qx {

// UTF-16 throughout; conversions happen at the edges only.
using TString = std::u16string;

// Invalid input becomes U+FFFD; nothing is dropped silently.
std::string ToUtf8(std::u16string_view text);
std::u16string FromUtf8(std::string_view text);
// Widens 8-bit ids (the exports take ANSI text); bytes map to the same code points.
std::u16string FromAnsi(const char* text);
std::u16string FromAscii(std::string_view text);

// Case-insensitive in the ASCII range only, like the run time's SameText.
bool SameText(std::u16string_view a, std::u16string_view b);
int CompareText(std::u16string_view a, std::u16string_view b);
std::u16string UpperCase(std::u16string_view text);
std::u16string LowerCase(std::u16string_view text);

// Strips characters up to and including the space, at both ends.
std::u16string Trim(std::u16string_view text);

std::u16string IntToStr(std::int64_t value);
// Decimal with optional sign, surrounding spaces not allowed; also "$"/"0x" hexadecimal.
std::optional<std::int64_t> TryStrToInt(std::u16string_view text);
std::int64_t StrToIntDef(std::u16string_view text, std::int64_t fallback);

bool StartsText(std::u16string_view prefix, std::u16string_view text);

}  // namespace qx
