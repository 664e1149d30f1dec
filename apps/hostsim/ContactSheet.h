#pragma once

// All pictures of a run on one sheet, one above the other in step order, on a dark
// ground so that each picture's edges show.

#include <memory>
#include <vector>

#include "toolkit/Bitmap.h"

namespace qx {

inline constexpr int kContactSheetGap = 8;

// Null for no pictures. Each picture keeps its size; the sheet is as wide as the widest.
std::unique_ptr<TBitmap> MakeContactSheet(const std::vector<const TBitmap*>& pictures);

}  // namespace qx
