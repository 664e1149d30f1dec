#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace qx {

// What the fake engine answers to a snapshot: a PNG of width by height that tells its
// page apart from any other at a glance. The colour and the place of the blocks follow
// from the page's URI; the same page always paints the same picture.
std::vector<std::uint8_t> PaintPageSnapshot(std::u16string_view uri, int width, int height);

// The colour a snapshot of the page has at its top-left corner, so tests can tell which
// page a picture came from.
std::uint32_t PageSnapshotColour(std::u16string_view uri);

}  // namespace qx
