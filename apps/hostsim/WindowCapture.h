#pragma once

// Pictures of a window as the user would see it, read back from the window system. The
// emulation has the window's own pixels, then those of every visible child window over
// them, bottom child first; Win32 reads the screen, where the system composed them.

#include <memory>

#include "platform/Platform.h"
#include "toolkit/Bitmap.h"

namespace qx {

// The client area of window; a window that never presented pixels shows background.
// Null for a window that does not exist.
std::unique_ptr<TBitmap> CaptureWindow(HWnd window, TAlphaColor background = 0xFF000000u);

}  // namespace qx
