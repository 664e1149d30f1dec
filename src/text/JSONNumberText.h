#pragma once

// Number text of the JSON library: the run time's general float format with 15
// significant digits and a point, whatever the process locale says.

#include <cstdint>
#include <string>
#include <string_view>

namespace qx {

std::u16string JSONFloatToStr(long double value);
// text is plain ASCII: optional "-", digits, optional fraction and exponent. A value too
// small to represent becomes zero; one too large fails.
bool JSONTryStrToFloat(std::string_view text, long double& value);
bool JSONTryStrToInt64(std::string_view text, std::int64_t& value);

}  // namespace qx
