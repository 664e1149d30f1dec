// Window pictures: what the toolkit paints and the simulator reads.

#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;

bool TPortableOs::SetWindowSurface(HWnd hwnd, std::int32_t width, std::int32_t height,
                                   const std::uint32_t* pixels) {
  if (width < 0 || height < 0) return false;
  const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  if (count > 0 && !pixels) return false;
  TLock lock(FLock);
  TWindow* w = FindLive(hwnd);
  if (!w) return false;
  w->surface.width = width;
  w->surface.height = height;
  w->surface.pixels.assign(pixels, pixels + count);
  return true;
}

bool TPortableOs::ReadWindowPixels(HWnd hwnd, TWindowPixels* out) {
  if (!out) return false;
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return false;
  *out = w->surface;
  return true;
}

bool TPortableOs::PaintWindowPixels(HWnd hwnd, std::int32_t width, std::int32_t height,
                                    const std::uint32_t* pixels) {
  // Keeps the picture for the simulator; the paint cycle itself is DefWindowProcW's.
  SetWindowSurface(hwnd, width, height, pixels);
  return false;
}

}  // namespace qx
