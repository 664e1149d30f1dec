#pragma once

// The main window's widgets and popup menus, through the host's widget factory and
// popup service. A missing service answers "no" and does nothing.

#include <string_view>

#include "host/QuillmarV3Interface.h"
#include "host/ServiceCoreWrapIntf.h"

namespace qx {

// The main window has built a widget of this class.
bool IsClientWidgetBuilt(IServiceCoreWrap* core, std::u16string_view className);
// A widget of this class is built and takes room on screen.
bool IsClientWidgetShown(IServiceCoreWrap* core, std::u16string_view className);

// Registers a menu document under id; false when the host has no popup service or refuses.
bool RegisterPopupMenu(IServiceCoreWrap* core, std::u16string_view id, IQxIXmlElement* root);
void RemovePopupMenu(IServiceCoreWrap* core, std::u16string_view id);

}  // namespace qx
