// Mouse and keyboard input: injection, key state, cursor, capture, focus and leave tracking.

#include "platform/portable/PortableOsHelpers.h"
#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;
using namespace portable_os;

namespace {

InputMessageSource SourceOfMouse(LParam extraInfo) {
  const auto info = static_cast<std::uint32_t>(extraInfo);
  if ((info & 0xFFFFFF80u) == MI_WP_TOUCH) return {IMDT_TOUCH, IMO_HARDWARE};
  if ((info & SIGNATURE_MASK) == MI_WP_SIGNATURE) return {IMDT_PEN, IMO_HARDWARE};
  return {IMDT_MOUSE, IMO_HARDWARE};
}

bool IsMouseMessage(std::uint32_t msg) { return msg >= WM_MOUSEFIRST && msg <= WM_MOUSELAST; }

}  // namespace

void TPortableOs::ForgetInputLocked() {
  TThreadState& state = ThreadState(ThisThreadId());
  state.extraInfo = 0;
  state.source = InputMessageSource{};
}

LResult TPortableOs::DeliverInput(Msg msg, LParam extraInfo, InputMessageSource source) {
  {
    TLock lock(FLock);
    TThreadState& state = ThreadState(ThisThreadId());
    state.extraInfo = extraInfo;
    state.source = source;
  }
  if (IsMouseMessage(msg.message)) {
    MouseHookStruct info{msg.pt, msg.hwnd, static_cast<std::uint32_t>(HTCLIENT),
                         static_cast<ULongPtr>(extraInfo)};
    if (RunHooks(WH_MOUSE, HC_ACTION, msg.message, reinterpret_cast<LParam>(&info)) != 0) return 0;
  }
  RunHooks(WH_GETMESSAGE, HC_ACTION, PM_REMOVE, reinterpret_cast<LParam>(&msg));
  TranslateMessage(&msg);
  return DispatchMessageW(&msg);
}

LResult TPortableOs::InjectMouse(HWnd hwnd, std::uint32_t msg, std::int32_t x, std::int32_t y, WParam keys,
                                 LParam extraInfo) {
  Msg m;
  {
    TLock lock(FLock);
    TWindow* w = FindLive(hwnd);
    if (!w) return 0;
    const TPoint origin = ClientOrigin(*w);
    const TPoint screen{origin.X + x, origin.Y + y};
    FCursor = screen;
    const bool wheel = msg == WM_MOUSEWHEEL || msg == WM_MOUSEHWHEEL;
    HWnd target = hwnd;
    if (!wheel && FCapture && FindLive(FCapture)) target = FCapture;
    const TPoint targetOrigin = ClientOrigin(*Find(target));
    switch (msg) {
      case WM_LBUTTONDOWN:
      case WM_LBUTTONDBLCLK:
        FKeys[VK_LBUTTON] |= 1;
        break;
      case WM_LBUTTONUP:
        FKeys[VK_LBUTTON] &= static_cast<std::uint8_t>(~1u);
        break;
      case WM_RBUTTONDOWN:
      case WM_RBUTTONDBLCLK:
        FKeys[VK_RBUTTON] |= 1;
        break;
      case WM_RBUTTONUP:
        FKeys[VK_RBUTTON] &= static_cast<std::uint8_t>(~1u);
        break;
      case WM_MBUTTONDOWN:
      case WM_MBUTTONDBLCLK:
        FKeys[VK_MBUTTON] |= 1;
        break;
      case WM_MBUTTONUP:
        FKeys[VK_MBUTTON] &= static_cast<std::uint8_t>(~1u);
        break;
      default:
        break;
    }
    if (msg != WM_MOUSELEAVE) LeaveTrackedLocked(target);
    LParam lParam = 0;
    if (wheel) {
      lParam = MakeLParam(screen.X, screen.Y);
    } else if (msg != WM_MOUSELEAVE) {
      lParam = MakeLParam(screen.X - targetOrigin.X, screen.Y - targetOrigin.Y);
    }
    m = Msg{target, msg, keys, lParam, static_cast<std::uint32_t>(NowLocked()), screen};
  }
  return DeliverInput(m, extraInfo, SourceOfMouse(extraInfo));
}

LResult TPortableOs::InjectMouseAtScreen(std::uint32_t msg, TPoint screen, WParam keys, LParam extraInfo) {
  HWnd target = nullptr;
  {
    TLock lock(FLock);
    if (FCapture && FindLive(FCapture)) target = FCapture;
  }
  if (!target) target = WindowFromPoint(screen);
  if (!target || target == FDesktop) {
    {
      TLock lock(FLock);
      FCursor = screen;
      LeaveTrackedLocked(nullptr);
    }
    FWake.notify_all();
    return 0;
  }
  TPoint client = screen;
  if (!ScreenToClient(target, &client)) return 0;
  return InjectMouse(target, msg, client.X, client.Y, keys, extraInfo);
}

void TPortableOs::LeaveTrackedLocked(HWnd target) {
  if (!FTrackLeave || FTrackLeave == target) return;
  if (TWindow* w = FindLive(FTrackLeave)) {
    ThreadState(w->threadId)
        .posted.push_back(TQueuedMessage{
            Msg{FTrackLeave, WM_MOUSELEAVE, 0, 0, static_cast<std::uint32_t>(NowLocked()), FCursor}, 0});
    FWake.notify_all();
  }
  FTrackLeave = nullptr;
}

bool TPortableOs::TrackMouseEvent(TrackMouseEventInfo* info) {
  if (!info || info->cbSize != sizeof(TrackMouseEventInfo)) return false;
  TLock lock(FLock);
  if (info->dwFlags & TME_CANCEL) {
    if ((info->dwFlags & TME_LEAVE) && FTrackLeave == info->hwndTrack) FTrackLeave = nullptr;
    return true;
  }
  if (!(info->dwFlags & TME_LEAVE)) return true;
  TWindow* w = FindLive(info->hwndTrack);
  if (!w) return false;
  if (FTrackLeave != info->hwndTrack) LeaveTrackedLocked(info->hwndTrack);
  FTrackLeave = info->hwndTrack;
  // Asked while the cursor is elsewhere: the leave comes at once, as on the system.
  const TPoint o = ClientOrigin(*w);
  if (!Contains(TRect{o.X, o.Y, o.X + w->rect.Width(), o.Y + w->rect.Height()}, FCursor)) {
    LeaveTrackedLocked(nullptr);
  }
  return true;
}

LResult TPortableOs::InjectKey(HWnd hwnd, std::uint32_t msg, std::int32_t virtualKey, LParam lParam) {
  Msg m;
  {
    TLock lock(FLock);
    HWnd target = hwnd ? hwnd : FFocus;
    if (!FindLive(target)) return 0;
    auto& key = FKeys[static_cast<std::size_t>(virtualKey & 0xFF)];
    if (msg == WM_KEYDOWN || msg == WM_SYSKEYDOWN) {
      if (!(key & 1)) key ^= 2;
      key |= 1;
    } else if (msg == WM_KEYUP || msg == WM_SYSKEYUP) {
      key &= static_cast<std::uint8_t>(~1u);
    }
    m = Msg{target, msg, static_cast<WParam>(virtualKey), lParam, static_cast<std::uint32_t>(NowLocked()),
            FCursor};
  }
  return DeliverInput(m, 0, InputMessageSource{IMDT_KEYBOARD, IMO_HARDWARE});
}

void TPortableOs::SetKeyState(std::int32_t virtualKey, bool down, bool toggled) {
  TLock lock(FLock);
  FKeys[static_cast<std::size_t>(virtualKey & 0xFF)] =
      static_cast<std::uint8_t>((down ? 1 : 0) | (toggled ? 2 : 0));
}

std::int16_t TPortableOs::GetKeyState(std::int32_t virtualKey) {
  if (virtualKey < 0 || virtualKey > 255) return 0;
  TLock lock(FLock);
  const std::uint8_t key = FKeys[static_cast<std::size_t>(virtualKey)];
  const std::uint16_t value = static_cast<std::uint16_t>(((key & 1) ? 0x8000u : 0u) | ((key & 2) ? 1u : 0u));
  return static_cast<std::int16_t>(value);
}

bool TPortableOs::GetCursorPos(TPoint* point) {
  if (!point) return false;
  TLock lock(FLock);
  *point = FCursor;
  return true;
}

bool TPortableOs::SetCursorPos(std::int32_t x, std::int32_t y) {
  TLock lock(FLock);
  FCursor = {x, y};
  return true;
}

std::uint32_t TPortableOs::GetDoubleClickTime() {
  TLock lock(FLock);
  return FDoubleClickTime;
}

void TPortableOs::SetDoubleClickTime(std::uint32_t milliseconds) {
  TLock lock(FLock);
  FDoubleClickTime = milliseconds;
}

HWnd TPortableOs::SetCapture(HWnd hwnd) {
  HWnd previous = nullptr;
  {
    TLock lock(FLock);
    if (!FindLive(hwnd)) return nullptr;
    previous = FCapture;
    FCapture = hwnd;
  }
  if (previous && previous != hwnd && IsWindow(previous)) {
    SendDirect(previous, WM_CAPTURECHANGED, 0, reinterpret_cast<LParam>(hwnd));
  }
  return previous;
}

bool TPortableOs::ReleaseCapture() {
  HWnd previous = nullptr;
  {
    TLock lock(FLock);
    previous = FCapture;
    FCapture = nullptr;
  }
  if (previous && IsWindow(previous)) SendDirect(previous, WM_CAPTURECHANGED, 0, 0);
  return true;
}

HWnd TPortableOs::GetCapture() {
  TLock lock(FLock);
  return FCapture;
}

HWnd TPortableOs::SetFocus(HWnd hwnd) {
  HWnd previous = nullptr;
  {
    TLock lock(FLock);
    if (hwnd && !FindLive(hwnd)) return nullptr;
    previous = FFocus;
    if (previous == hwnd) return previous;
    FFocus = hwnd;
  }
  if (previous && IsWindow(previous)) SendDirect(previous, WM_KILLFOCUS, reinterpret_cast<WParam>(hwnd), 0);
  if (hwnd && IsWindow(hwnd)) SendDirect(hwnd, WM_SETFOCUS, reinterpret_cast<WParam>(previous), 0);
  return previous;
}

HWnd TPortableOs::GetFocus() {
  TLock lock(FLock);
  return FFocus;
}

}  // namespace qx
