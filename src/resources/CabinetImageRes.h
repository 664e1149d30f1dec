#pragma once

// The cabinet screen's shadows, from a plain folder under the host's own.
// One lazy getter per key; the file is key + ".png".

#include <memory>
#include <string_view>
#include <vector>

#include "resources/BitmapResourceMgr.h"

namespace qx {

#define QX_CABINET_IMAGE_KEYS(X) \
  X(CabinetTabLargeBackShadow) \
  X(CabinetTabLargeShadow)

class TCabinetImageRes : public TQuillmarBitmapResourceManager {
 public:
  explicit TCabinetImageRes(std::u16string_view folder) : TQuillmarBitmapResourceManager(folder) {}

  // Every key of the set, in order.
  static const std::vector<std::u16string_view>& Keys();
  // The getter of a key by name; null for a key the set doesn't have.
  TBitmap* ByKey(std::u16string_view key);

#define QX_GETTER(key) \
  TBitmap* key() { return Lazy(F##key, u## #key); }
  QX_CABINET_IMAGE_KEYS(QX_GETTER)
#undef QX_GETTER

 private:
#define QX_FIELD(key) std::unique_ptr<TBitmap> F##key;
  QX_CABINET_IMAGE_KEYS(QX_FIELD)
#undef QX_FIELD
};

}  // namespace qx
