#pragma once

#include <cstdint>

namespace qx {

// The packed file date of the platform (date in the high 16 bits, time in the low 16,
// two-second resolution) as the host stores it in a 64-bit tab value.
std::int64_t PackFileDate(int year, int month, int day, int hour, int minute, int second);
// Local time of now, packed.
std::int64_t FileDateNow();

}  // namespace qx
