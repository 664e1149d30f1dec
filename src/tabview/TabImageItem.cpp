#include "tabview/TabImageItem.h"

#include "tabview/TabImageSection.h"

namespace qx {

TTabImageItem::~TTabImageItem() {
  if (FSection) FSection->Forget(this);
}

}  // namespace qx
