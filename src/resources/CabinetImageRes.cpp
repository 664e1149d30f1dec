#include "resources/CabinetImageRes.h"

namespace qx {

const std::vector<std::u16string_view>& TCabinetImageRes::Keys() {
#define QX_NAME(key) u## #key,
  static const std::vector<std::u16string_view> keys = {QX_CABINET_IMAGE_KEYS(QX_NAME)};
#undef QX_NAME
  return keys;
}

TBitmap* TCabinetImageRes::ByKey(std::u16string_view key) {
#define QX_BY_KEY(name) \
  if (key == u## #name) return name();
  QX_CABINET_IMAGE_KEYS(QX_BY_KEY)
#undef QX_BY_KEY
  return nullptr;
}

}  // namespace qx
