#pragma once

#include "tabview/TabImageItem.h"

namespace qx {

// The control of one tab in the strip. What the layout and the sections need
// lives in TTabImageItem; the visual parts of the control build on top.
class TTabImage : public TTabImageItem {
 public:
  TTabImage() = default;
};

// The strip holds nothing but tab images; nil for anything else.
inline TTabImage* AsTabImage(TTabImageItem* item) { return dynamic_cast<TTabImage*>(item); }

}  // namespace qx
