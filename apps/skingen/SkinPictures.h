#pragma once

// The default skin: one drawing per picture key.

#include <memory>
#include <string>

#include "toolkit/Bitmap.h"

namespace qx::skin {

// The picture of a key, or null for a key this skin doesn't know.
std::unique_ptr<TBitmap> DrawPicture(const std::string& key);

}  // namespace qx::skin
