#include "toolkit/WindowSurface.h"

namespace qx {

bool PaintWindowSurface(HWnd hwnd, TBitmap& picture) {
  TBitmapData data;
  if (picture.IsEmpty() || !picture.Map(TMapAccess::Read, data))
    return Platform().PaintWindowPixels(hwnd, 0, 0, nullptr);
  // Rows have no padding, so the mapped pixels are one block.
  const bool painted = Platform().PaintWindowPixels(hwnd, data.Width, data.Height, data.Line(0));
  picture.Unmap(data);
  return painted;
}

}  // namespace qx
