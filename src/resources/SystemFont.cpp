#include "resources/SystemFont.h"

#include "platform/Platform.h"
#include "resources/BitmapResourceMgr.h"

namespace qx {

bool ApplySystemFont(TFont& font, float adjustment) {
  std::u16string family;
  std::int32_t height = 0;
  if (!Platform().GetMessageFont(&family, &height) || family.empty() || height == 0) return false;
  font.Family = family;
  // A positive height counts the cell, not the character; both stand for the size here.
  font.Size = FontSizeFromSystemFont(height < 0 ? height : -height, adjustment);
  return true;
}

}  // namespace qx
