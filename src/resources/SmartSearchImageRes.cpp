#include "resources/SmartSearchImageRes.h"

namespace qx {

const std::vector<std::u16string_view>& TSmartSearchImageRes::Keys() {
#define QX_NAME(key) u## #key,
  static const std::vector<std::u16string_view> keys = {QX_SMART_SEARCH_IMAGE_KEYS(QX_NAME)};
#undef QX_NAME
  return keys;
}

TBitmap* TSmartSearchImageRes::ByKey(std::u16string_view key) {
#define QX_BY_KEY(name) \
  if (key == u## #name) return name();
  QX_SMART_SEARCH_IMAGE_KEYS(QX_BY_KEY)
#undef QX_BY_KEY
  return nullptr;
}

}  // namespace qx
