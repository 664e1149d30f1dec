#include "toolkit/WindowSurface.h"

#include "platform/PortableOs.h"

namespace qx {

bool PaintWindowSurface(HWnd hwnd, TBitmap& picture) {
  if (IPortableOs* portable = Platform().Portable()) {
    TBitmapData data;
    if (picture.IsEmpty() || !picture.Map(TMapAccess::Read, data)) {
      portable->SetWindowSurface(hwnd, 0, 0, nullptr);
      return false;
    }
    // Rows have no padding, so the mapped pixels are one block.
    portable->SetWindowSurface(hwnd, data.Width, data.Height, data.Line(0));
    picture.Unmap(data);
    return false;
  }
#ifdef _WIN32
  return PaintWindowSurfaceGdi(hwnd, picture);
#else
  return false;
#endif
}

}  // namespace qx
