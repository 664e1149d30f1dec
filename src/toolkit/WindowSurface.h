#pragma once

// Puts a form's rendered picture into its native window.

#include "platform/Platform.h"
#include "toolkit/Bitmap.h"

namespace qx {

// Called while the window answers WM_PAINT. Answers true when the paint cycle was
// completed here; false leaves it to DefWindowProcW.
bool PaintWindowSurface(HWnd hwnd, TBitmap& picture);

}  // namespace qx
