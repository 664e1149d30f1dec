#include <map>
#include <vector>

#include "ScenarioDisplay.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace qx {
namespace {

struct TShownPicture {
  WNDPROC Previous = nullptr;
  int Width = 0;
  int Height = 0;
  std::vector<std::uint32_t> Pixels;
};

// The host's windows use the default procedure; the pictures hook in front of it.
std::map<HWND, TShownPicture>& Shown() {
  static std::map<HWND, TShownPicture> shown;
  return shown;
}

void Paint(HWND window, const TShownPicture& picture) {
  PAINTSTRUCT paint;
  HDC dc = BeginPaint(window, &paint);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = picture.Width;
  info.bmiHeader.biHeight = -picture.Height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  SetDIBitsToDevice(dc, 0, 0, static_cast<DWORD>(picture.Width), static_cast<DWORD>(picture.Height), 0, 0, 0,
                    static_cast<UINT>(picture.Height), picture.Pixels.data(), &info, DIB_RGB_COLORS);
  EndPaint(window, &paint);
}

LRESULT CALLBACK PictureProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto it = Shown().find(window);
  if (it == Shown().end()) return DefWindowProcW(window, message, wParam, lParam);
  const WNDPROC previous = it->second.Previous;
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      Paint(window, it->second);
      return 0;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previous));
      Shown().erase(it);
      break;
    default:
      break;
  }
  return CallWindowProcW(previous, window, message, wParam, lParam);
}

void ServeQueuedMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace

// Real time: timers and animations run on the system's clock, so the caller waits long
// enough for them to come to rest.
void LetTimePass(std::uint32_t milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  for (;;) {
    ServeQueuedMessages();
    const ULONGLONG now = GetTickCount64();
    if (now >= end) break;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
  }
  ServeQueuedMessages();
}

void ShowWindowPicture(HWnd window, const TBitmap& picture) {
  HWND hwnd = reinterpret_cast<HWND>(window);
  if (!IsWindow(hwnd)) return;
  auto [it, added] = Shown().try_emplace(hwnd);
  if (added)
    it->second.Previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&PictureProc)));
  it->second.Width = picture.Width();
  it->second.Height = picture.Height();
  it->second.Pixels.assign(picture.Bits(), picture.Bits() + static_cast<std::size_t>(picture.Width()) *
                                                                static_cast<std::size_t>(picture.Height()));
  InvalidateRect(hwnd, nullptr, FALSE);
  UpdateWindow(hwnd);
}

}  // namespace qx
