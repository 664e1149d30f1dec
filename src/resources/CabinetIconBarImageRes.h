#pragma once

// The cabinet bar's pictures, from "skin://widget/toolbar/CabinetBar/".
// One lazy getter per key; the file is key + ".png".

#include <memory>
#include <string_view>
#include <vector>

#include "resources/BitmapResourceMgr.h"

namespace qx {

#define QX_CABINET_ICON_BAR_IMAGE_KEYS(X) \
  X(CabinetbarBackground) \
  X(CabinetbarBackgroundInactive) \
  X(CabinetbarTabWireRight) \
  X(CabinetbarTabWireFill) \
  X(CabinetbarTabWireLeft) \
  X(FaviconBase) \
  X(FaviconBaseHovered) \
  X(FaviconBasePressed) \
  X(CabinetbarItemHovered) \
  X(CabinetbarItemPressed) \
  X(CabinetbarItemMinHovered) \
  X(CabinetbarItemMinPressed)

class TCabinetIconBarImageRes : public TQuillmarBitmapResourceManager {
 public:
  explicit TCabinetIconBarImageRes(IServiceCoreWrap* serviceCore, std::u16string_view resourcePath = kCabinetBarSkinPath)
      : TQuillmarBitmapResourceManager(serviceCore, resourcePath) {}
  explicit TCabinetIconBarImageRes(std::u16string_view folder) : TQuillmarBitmapResourceManager(folder) {}

  // Every key of the set, in order.
  static const std::vector<std::u16string_view>& Keys();
  // The getter of a key by name; null for a key the set doesn't have.
  TBitmap* ByKey(std::u16string_view key);

#define QX_GETTER(key) \
  TBitmap* key() { return Lazy(F##key, u## #key); }
  QX_CABINET_ICON_BAR_IMAGE_KEYS(QX_GETTER)
#undef QX_GETTER

  // Left, fill and right thirds of the three-part backgrounds.
#define QX_SLICES(key) \
  TBitmap* key##Left() { return LazySlice(F##key##Left, key(), 3, 0); } \
  TBitmap* key##Fill() { return LazySlice(F##key##Fill, key(), 3, 1); } \
  TBitmap* key##Right() { return LazySlice(F##key##Right, key(), 3, 2); }
  QX_SLICES(CabinetbarItemHovered)
  QX_SLICES(CabinetbarItemPressed)
#undef QX_SLICES

 private:
#define QX_FIELD(key) std::unique_ptr<TBitmap> F##key;
  QX_CABINET_ICON_BAR_IMAGE_KEYS(QX_FIELD)
#define QX_SLICE_FIELDS(key) std::unique_ptr<TBitmap> F##key##Left, F##key##Fill, F##key##Right;
  QX_SLICE_FIELDS(CabinetbarItemHovered)
  QX_SLICE_FIELDS(CabinetbarItemPressed)
#undef QX_SLICE_FIELDS
#undef QX_FIELD
};

}  // namespace qx
