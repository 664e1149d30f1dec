#include "WindowCapture.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <algorithm>

namespace qx {

// What the screen shows of the client area, child windows included, read back with BitBlt;
// the system composes the children, so background is not needed here.
std::unique_ptr<TBitmap> CaptureWindow(HWnd window, TAlphaColor /*background*/) {
  HWND hwnd = reinterpret_cast<HWND>(window);
  RECT client{};
  if (!IsWindow(hwnd) || !GetClientRect(hwnd, &client)) return nullptr;
  const int width = std::max(1L, client.right - client.left);
  const int height = std::max(1L, client.bottom - client.top);
  HDC source = GetDC(hwnd);
  HDC memory = CreateCompatibleDC(source);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  HBITMAP section = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ old = SelectObject(memory, section);
  BitBlt(memory, 0, 0, width, height, source, 0, 0, SRCCOPY);
  GdiFlush();
  auto picture = std::make_unique<TBitmap>(width, height);
  const auto* read = static_cast<const std::uint32_t*>(bits);
  std::uint32_t* write = picture->Bits();
  for (std::size_t i = 0; i < static_cast<std::size_t>(width) * static_cast<std::size_t>(height); ++i)
    write[i] = read[i] | 0xFF000000u;
  SelectObject(memory, old);
  DeleteObject(section);
  DeleteDC(memory);
  ReleaseDC(hwnd, source);
  return picture;
}

}  // namespace qx
