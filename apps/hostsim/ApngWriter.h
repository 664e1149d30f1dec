#pragma once

// An animated PNG of a run: every picture one frame, shown for a fixed time, looping.
// Viewers without animation show the first frame.

#include <cstdint>
#include <filesystem>
#include <vector>

#include "toolkit/Bitmap.h"

namespace qx {

inline constexpr std::uint16_t kApngFrameMs = 1000;

// Frames smaller than the largest keep their top-left corner, the rest transparent.
// False for no frames or a file that cannot be written, or where there is no PNG encoder.
bool WriteApng(const std::filesystem::path& file, const std::vector<const TBitmap*>& frames,
               std::uint16_t frameMs = kApngFrameMs);

}  // namespace qx
