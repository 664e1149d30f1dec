#include "tests/windows/WindowPixels.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace qx::test {

std::vector<std::uint32_t> ReadBack(HWnd hwnd, int width, int height) {
  HWND window = reinterpret_cast<HWND>(hwnd);
  HDC source = GetDC(window);
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
  std::vector<std::uint32_t> pixels(static_cast<const std::uint32_t*>(bits),
                                    static_cast<const std::uint32_t*>(bits) + width * height);
  for (std::uint32_t& p : pixels) p &= 0x00FFFFFFu;
  SelectObject(memory, old);
  DeleteObject(section);
  DeleteDC(memory);
  ReleaseDC(window, source);
  return pixels;
}

}  // namespace qx::test
