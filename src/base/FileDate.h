#pragma once

#include <cstdint>

namespace qx {

// The local time packed as a 32-bit file date (date in the high word, time in two-second
// steps in the low word), the unit in which the host stamps tab creation.
std::int64_t FileDateNow();

}  // namespace qx
