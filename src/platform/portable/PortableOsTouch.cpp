// Touch input and where input messages come from.

#include <algorithm>

#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;

LResult TPortableOs::InjectTouch(HWnd hwnd, const std::vector<TouchInput>& points) {
  if (points.empty() || points.size() > 0xFFFF) return 0;
  Msg m;
  std::uint32_t mouseMsg = 0;
  WParam keys = 0;
  TPoint client;
  {
    TLock lock(FLock);
    TWindow* w = FindLive(hwnd);
    if (!w) return 0;
    if (w->touch) {
      FNextTouchInput += 4;
      FTouchInputs[FNextTouchInput] = points;
      m = Msg{hwnd,
              WM_TOUCH,
              MakeWParam(static_cast<std::int32_t>(points.size()), 0),
              static_cast<LParam>(FNextTouchInput),
              static_cast<std::uint32_t>(NowLocked()),
              FCursor};
    } else {
      auto primary = std::find_if(points.begin(), points.end(),
                                  [](const TouchInput& p) { return (p.dwFlags & TOUCHEVENTF_PRIMARY) != 0; });
      if (primary == points.end()) primary = points.begin();
      const TPoint origin = ClientOrigin(*w);
      client = {primary->x / 100 - origin.X, primary->y / 100 - origin.Y};
      if (primary->dwFlags & TOUCHEVENTF_DOWN) {
        mouseMsg = WM_LBUTTONDOWN;
        keys = MK_LBUTTON;
      } else if (primary->dwFlags & TOUCHEVENTF_UP) {
        mouseMsg = WM_LBUTTONUP;
      } else {
        mouseMsg = WM_MOUSEMOVE;
        keys = MK_LBUTTON;
      }
    }
  }
  if (mouseMsg)
    return InjectMouse(hwnd, mouseMsg, client.X, client.Y, keys, static_cast<LParam>(MI_WP_TOUCH));
  return DeliverInput(m, 0, InputMessageSource{IMDT_TOUCH, IMO_HARDWARE});
}

bool TPortableOs::RegisterTouchWindow(HWnd hwnd, std::uint32_t flags) {
  TLock lock(FLock);
  TWindow* w = FindLive(hwnd);
  if (!w) return false;
  w->touch = true;
  w->touchFlags = flags;
  return true;
}

bool TPortableOs::UnregisterTouchWindow(HWnd hwnd) {
  TLock lock(FLock);
  TWindow* w = FindLive(hwnd);
  if (!w) return false;
  w->touch = false;
  w->touchFlags = 0;
  return true;
}

bool TPortableOs::IsTouchWindow(HWnd hwnd, std::uint32_t* flags) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w || !w->touch) return false;
  if (flags) *flags = w->touchFlags;
  return true;
}

bool TPortableOs::GetTouchInputInfo(HTouchInput input, std::uint32_t count, TouchInput* inputs,
                                    std::int32_t size) {
  if (!inputs || count == 0 || size != static_cast<std::int32_t>(sizeof(TouchInput))) return false;
  TLock lock(FLock);
  auto it = FTouchInputs.find(reinterpret_cast<std::uintptr_t>(input));
  if (it == FTouchInputs.end()) return false;
  const std::size_t n = std::min<std::size_t>(count, it->second.size());
  std::copy_n(it->second.begin(), n, inputs);
  return true;
}

bool TPortableOs::CloseTouchInputHandle(HTouchInput input) {
  TLock lock(FLock);
  return FTouchInputs.erase(reinterpret_cast<std::uintptr_t>(input)) > 0;
}

bool TPortableOs::GetCurrentInputMessageSource(InputMessageSource* source) {
  TLock lock(FLock);
  if (!FInputSourceAvailable || !source) return false;
  *source = ThreadState(ThisThreadId()).source;
  return true;
}

void TPortableOs::SetInputMessageSourceAvailable(bool available) {
  TLock lock(FLock);
  FInputSourceAvailable = available;
}

}  // namespace qx
