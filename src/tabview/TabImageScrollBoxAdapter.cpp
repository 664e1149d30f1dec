#include "tabview/TabImageScrollBoxAdapter.h"

#include "platform/Platform.h"
#include "toolkit/Form.h"

namespace qx {

bool TTabImageScrollBoxAdapter::MouseInScrollBox() {
  TPoint cursor;
  if (!Platform().GetCursorPos(&cursor)) return false;
  TCommonCustomForm* form = FBox->Form();
  if (!form) return false;
  const TPointF client = form->ScreenToClient(TPointF(static_cast<float>(cursor.X), static_cast<float>(cursor.Y)));
  return FBox->LocalRect().Contains(FBox->AbsoluteToLocal(client));
}

}  // namespace qx
