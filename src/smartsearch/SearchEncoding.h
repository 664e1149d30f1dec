#pragma once

// Charset names of the site list and the page search, as the numbers the host's search
// takes.

#include <cstdint>
#include <string_view>

namespace qx {

inline constexpr std::int32_t kSearchEncodeEucJp = 16;
inline constexpr std::int32_t kSearchEncodeUtf8 = 256;
inline constexpr std::int32_t kSearchEncodeShiftJis = 4096;

// Trimmed and without regard to case; a name not known gives UTF-8.
std::int32_t SearchEncodeOfCharSet(std::u16string_view charSet);

}  // namespace qx
