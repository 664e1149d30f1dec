#pragma once

// Opens what was dropped on the strip's background, each item in a new tab.

#include "host/ServiceCoreWrapIntf.h"
#include "toolkit/Input.h"

namespace qx {

// Dropped files are turned into URLs; otherwise the drop's data is taken as text
// (a std::u16string). Items that stand for no known address are left out.
void OpenDroppedItems(IServiceCoreWrap* serviceCore, const TDragObject& dragObject);

}  // namespace qx
