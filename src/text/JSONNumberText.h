#pragma once

// Number text of the JSON library: the run time's general float format with 15
// significant digits and a point, whatever the process locale says.

#include <cstdint>
#include <string>
#include <string_view>

namespace qx {

std::u16string JSONFloatToStr(long double AValue);
// AText is plain ASCII: optional "-", digits, optional fraction and exponent. A value too
// small to represent becomes zero; one too large fails.
bool JSONTryStrToFloat(std::string_view AText, long double& AValue);
bool JSONTryStrToInt64(std::string_view AText, std::int64_t& AValue);

}  // namespace qx
