#pragma once

// What the simulated browser shows: a page picture for each tab, distinct by number and
// colour so a thumbnail in the wrong place is seen at once, and the host window around
// the module's strip. Drawn with plain shapes, no fonts.

#include <filesystem>
#include <memory>
#include <string_view>

#include "toolkit/Bitmap.h"

namespace qx {

// A page: a header band, content blocks and the page number in large digits; the hue
// follows the number.
std::unique_ptr<TBitmap> DrawPagePicture(int number, int width, int height);

// Writes picture as folder/<guid>.png, the thumbnail cache's naming; false on failure.
bool WriteThumbnail(const std::filesystem::path& folder, std::u16string_view guid, const TBitmap& picture);

// The host window: a title band over everything, the strip's place left empty at
// stripTop (stripHeight high), and the active page below it.
std::unique_ptr<TBitmap> DrawHostWindow(int width, int height, int stripTop, int stripHeight,
                                        const TBitmap* page);

}  // namespace qx
