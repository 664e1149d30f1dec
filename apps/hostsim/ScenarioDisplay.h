#pragma once

// What the scenario needs from the window system it runs on: time that passes with the
// windows' messages served, and the host's own drawing shown in its main window.

#include <cstdint>

#include "platform/Platform.h"
#include "toolkit/Bitmap.h"

namespace qx {

// Lets milliseconds pass while this thread's messages and timers are served, then serves
// whatever is still queued.
void LetTimePass(std::uint32_t milliseconds);

// picture becomes what window shows under its children.
void ShowWindowPicture(HWnd window, const TBitmap& picture);

}  // namespace qx
