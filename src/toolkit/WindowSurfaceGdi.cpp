// The form's picture on a real window: a top-down 32-bit DIB, which is the bitmap's
// own layout, copied to the window's device context.

#ifdef _WIN32

// Our header first: after <windows.h> the platform's Win32 names are macros.
#include "toolkit/WindowSurface.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace qx {

bool PaintWindowSurfaceGdi(HWnd hwnd, TBitmap& picture) {
  HWND window = reinterpret_cast<HWND>(hwnd);
  PAINTSTRUCT paint{};
  HDC dc = ::BeginPaint(window, &paint);
  if (!dc) return false;
  TBitmapData data;
  if (!picture.IsEmpty() && picture.Map(TMapAccess::Read, data)) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = data.Width;
    info.bmiHeader.biHeight = -data.Height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    ::SetDIBitsToDevice(dc, 0, 0, static_cast<DWORD>(data.Width), static_cast<DWORD>(data.Height), 0, 0, 0,
                        static_cast<UINT>(data.Height), data.Data, &info, DIB_RGB_COLORS);
    picture.Unmap(data);
  }
  ::EndPaint(window, &paint);
  return true;
}

}  // namespace qx

#endif
