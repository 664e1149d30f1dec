#pragma once

// A picture of any width made of a left piece, a stretched fill and a right piece.

#include <memory>

#include "toolkit/Bitmap.h"

namespace qx {

// Null pieces are left out; the left and right pieces keep their natural size.
std::unique_ptr<TBitmap> ComposeThreeSliceBitmap(const TBitmap* left, const TBitmap* fill, int height,
                                                 int width, const TBitmap* right);

}  // namespace qx
