#pragma once

// Puts a form's rendered picture into its native window.

#include "platform/Platform.h"
#include "toolkit/Bitmap.h"

namespace qx {

// Called while the window answers WM_PAINT. Answers true when the paint cycle was
// completed here; false leaves it to DefWindowProcW.
bool PaintWindowSurface(HWnd hwnd, TBitmap& picture);

#ifdef _WIN32
// The system's paint cycle: the picture is copied to the window's device context.
bool PaintWindowSurfaceGdi(HWnd hwnd, TBitmap& picture);
#endif

}  // namespace qx
