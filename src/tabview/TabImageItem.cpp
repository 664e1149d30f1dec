#include "tabview/TabImageItem.h"

#include "tabview/TabImageSection.h"

namespace qx {

TTabImageItem::~TTabImageItem() {
  if (!FSection) return;
  if (TTabImageSectionList* list = FSection->Owner()) {
    list->Forget(this);
  } else {
    FSection->Forget(this);
  }
}

}  // namespace qx
