#pragma once

// The host's main window stands in for the application's window, so that the module's
// top-level forms belong to it.

#include "platform/Platform.h"

namespace qx {

// Stores the window and gives the toolkit the callback that answers it.
void RegisterAppHandle(HWnd mainWindow);
// The window stored last; null before the first call.
HWnd ApplicationWindowHandle();

}  // namespace qx
