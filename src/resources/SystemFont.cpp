#include "resources/SystemFont.h"

#include "platform/Platform.h"
#include "resources/BitmapResourceMgr.h"

namespace qx {

bool ApplySystemFont(TFont& font, float adjustment) {
  std::u16string family;
  std::int32_t height = 0;
  if (!Platform().GetMessageFont(&family, &height) || family.empty() || height == 0) return false;
  font.Family = family;
  font.Size = FontSizeFromSystemFont(height, adjustment);
  return true;
}

}  // namespace qx
