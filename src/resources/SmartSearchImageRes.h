#pragma once

// The smart search popup's pictures, from "skin://widget/module/SmartSearch/".
// One lazy getter per key; the file is key + ".png".

#include <memory>
#include <string_view>
#include <vector>

#include "resources/BitmapResourceMgr.h"

namespace qx {

#define QX_SMART_SEARCH_IMAGE_KEYS(X) \
  X(SmartSearchServicePressed) \
  X(SmartSearchBackgroundDownward) \
  X(SmartSearchBackgroundDownwardFill) \
  X(SmartSearchBackgroundDownwardLeft) \
  X(SmartSearchBackgroundDownwardRight) \
  X(SmartSearchBackgroundUpward) \
  X(SmartSearchBackgroundUpwardFill) \
  X(SmartSearchBackgroundUpwardLeft) \
  X(SmartSearchBackgroundUpwardRight) \
  X(SmartSearchButton) \
  X(SmartSearchButtonFill) \
  X(SmartSearchButtonHovered) \
  X(SmartSearchButtonHoveredFill) \
  X(SmartSearchButtonHoveredLeft) \
  X(SmartSearchButtonHoveredRight) \
  X(SmartSearchButtonLeft) \
  X(SmartSearchButtonPressed) \
  X(SmartSearchButtonPressedFill) \
  X(SmartSearchButtonPressedLeft) \
  X(SmartSearchButtonPressedRight) \
  X(SmartSearchButtonRight) \
  X(SmartSearchLupe) \
  X(SmartSearchMore) \
  X(SmartSearchMoreHovered) \
  X(SmartSearchMorePressed) \
  X(SmartSearchServiceHovered) \
  X(SmartSearchExtendedBackgroundUpwardRight)

class TSmartSearchImageRes : public TQuillmarBitmapResourceManager {
 public:
  explicit TSmartSearchImageRes(IServiceCoreWrap* serviceCore, std::u16string_view resourcePath = kSmartSearchSkinPath)
      : TQuillmarBitmapResourceManager(serviceCore, resourcePath) {}
  explicit TSmartSearchImageRes(std::u16string_view folder) : TQuillmarBitmapResourceManager(folder) {}

  // Every key of the set, in order.
  static const std::vector<std::u16string_view>& Keys();
  // The getter of a key by name; null for a key the set doesn't have.
  TBitmap* ByKey(std::u16string_view key);

#define QX_GETTER(key) \
  TBitmap* key() { return Lazy(F##key, u## #key); }
  QX_SMART_SEARCH_IMAGE_KEYS(QX_GETTER)
#undef QX_GETTER

 private:
#define QX_FIELD(key) std::unique_ptr<TBitmap> F##key;
  QX_SMART_SEARCH_IMAGE_KEYS(QX_FIELD)
#undef QX_FIELD
};

}  // namespace qx
