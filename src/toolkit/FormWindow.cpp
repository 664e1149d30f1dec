// The native window behind a form: made on demand, its messages turned into the
// form's input, its size and place kept in step with the form's bounds, and its
// paint answered with the form's picture.

#include <cstdlib>
#include <vector>

#include "toolkit/Application.h"
#include "toolkit/Form.h"
#include "toolkit/WindowSurface.h"

namespace qx {

namespace {

TShiftState ShiftFromKeyState() {
  IPlatform& os = Platform();
  TShiftState shift = 0;
  if (os.GetKeyState(win::VK_SHIFT) < 0) shift |= ss::Shift;
  if (os.GetKeyState(win::VK_CONTROL) < 0) shift |= ss::Ctrl;
  if (os.GetKeyState(win::VK_MENU) < 0) shift |= ss::Alt;
  return shift;
}

// Mouse messages carry the buttons and modifier keys in wParam; Alt only in the key state.
TShiftState ShiftFromMouseKeys(WParam wParam) {
  const std::uint32_t keys = LoWord(wParam);
  TShiftState shift = 0;
  if (keys & win::MK_SHIFT) shift |= ss::Shift;
  if (keys & win::MK_CONTROL) shift |= ss::Ctrl;
  if (keys & win::MK_LBUTTON) shift |= ss::Left;
  if (keys & win::MK_RBUTTON) shift |= ss::Right;
  if (keys & win::MK_MBUTTON) shift |= ss::Middle;
  if (Platform().GetKeyState(win::VK_MENU) < 0) shift |= ss::Alt;
  return shift;
}

}  // namespace

// ---- making and losing the window

LResult QX_STDCALL TCommonCustomForm::WindowProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  IPlatform& os = Platform();
  if (msg == win::WM_NCCREATE) {
    auto* create = reinterpret_cast<const CreateStructW*>(lParam);
    auto* form = create ? static_cast<TCommonCustomForm*>(create->lpCreateParams) : nullptr;
    os.SetWindowLongPtrW(hwnd, win::GWLP_USERDATA, reinterpret_cast<LongPtr>(form));
    // Known from here on, so the size and move messages of the creation find it.
    if (form) form->FHandle = hwnd;
  }
  auto* form = reinterpret_cast<TCommonCustomForm*>(os.GetWindowLongPtrW(hwnd, win::GWLP_USERDATA));
  if (!form || form->FHandle != hwnd) return os.DefWindowProcW(hwnd, msg, wParam, lParam);
  try {
    return form->HandleMessage(msg, wParam, lParam);
  } catch (const std::exception& error) {
    // Nothing may leave a window procedure into the message loop.
    Application().HandleException(form, error);
    return 0;
  }
}

void TCommonCustomForm::HandleNeed() {
  if (!FHandle) CreateHandle();
}

void TCommonCustomForm::CreateHandle() {
  IPlatform& os = Platform();
  if (!os.GetClassInfoW(kWindowClassName, nullptr) && !os.RegisterClassW(kWindowClassName, &WindowProc))
    throw EToolkitError("Cannot register the window class of " + ClassName());
  std::uint32_t style = win::WS_POPUP | win::WS_CLIPCHILDREN | win::WS_CLIPSIBLINGS;
  if (BorderStyle != TFmxFormBorderStyle::None) style |= win::WS_CAPTION | win::WS_SYSMENU;
  if (BorderStyle == TFmxFormBorderStyle::Sizeable || BorderStyle == TFmxFormBorderStyle::SizeToolWin)
    style |= win::WS_THICKFRAME;
  std::uint32_t exStyle = 0;
  if (FormStyle == TFormStyle::Popup) exStyle |= win::WS_EX_TOOLWINDOW | win::WS_EX_NOACTIVATE;
  if (FormStyle == TFormStyle::StayOnTop) exStyle |= win::WS_EX_TOPMOST;
  if (BorderStyle == TFmxFormBorderStyle::ToolWindow || BorderStyle == TFmxFormBorderStyle::SizeToolWin)
    exStyle |= win::WS_EX_TOOLWINDOW;
  // Top-level forms belong to the application's window, so they stay above it.
  auto owner = reinterpret_cast<HWnd>(Application().ApplicationWindow());
  if (owner && !os.IsWindow(owner)) owner = nullptr;
  HWnd hwnd = os.CreateWindowExW(exStyle, kWindowClassName, Caption.c_str(), style, FLeft, FTop, FWidth,
                                 FHeight, owner, this);
  if (!hwnd) {
    FHandle = nullptr;
    throw EToolkitError("Cannot create the window of " + ClassName());
  }
  FHandle = hwnd;
  HandleCreated();
  if (FVisible && FHandle)
    os.ShowWindow(FHandle, FormStyle == TFormStyle::Popup ? win::SW_SHOWNOACTIVATE : win::SW_SHOW);
  Invalidate();
}

void TCommonCustomForm::DestroyHandle() {
  if (!FHandle) return;
  HandleDestroying();
  HWnd hwnd = FHandle;
  FHandle = nullptr;
  FTrackingLeave = false;
  IPlatform& os = Platform();
  os.SetWindowLongPtrW(hwnd, win::GWLP_USERDATA, 0);
  os.DestroyWindow(hwnd);
}

// ---- coordinates

TPointF TCommonCustomForm::ScreenToClient(TPointF p) const {
  TPoint origin;
  if (FHandle && Platform().ClientToScreen(FHandle, &origin))
    return {p.X - static_cast<float>(origin.X), p.Y - static_cast<float>(origin.Y)};
  return {p.X - static_cast<float>(FLeft), p.Y - static_cast<float>(FTop)};
}

TPointF TCommonCustomForm::ClientToScreen(TPointF p) const {
  TPoint origin;
  if (FHandle && Platform().ClientToScreen(FHandle, &origin))
    return {p.X + static_cast<float>(origin.X), p.Y + static_cast<float>(origin.Y)};
  return {p.X + static_cast<float>(FLeft), p.Y + static_cast<float>(FTop)};
}

// ---- messages

LResult TCommonCustomForm::HandleMessage(std::uint32_t msg, WParam wParam, LParam lParam) {
  HWnd hwnd = FHandle;
  IPlatform& os = Platform();
  switch (msg) {
    case win::WM_MOUSEMOVE:
    case win::WM_LBUTTONDOWN:
    case win::WM_LBUTTONUP:
    case win::WM_LBUTTONDBLCLK:
    case win::WM_RBUTTONDOWN:
    case win::WM_RBUTTONUP:
    case win::WM_RBUTTONDBLCLK:
    case win::WM_MBUTTONDOWN:
    case win::WM_MBUTTONUP:
    case win::WM_MBUTTONDBLCLK:
      if (WindowMouse(msg, wParam, lParam)) return 0;
      break;
    case win::WM_MOUSEWHEEL:
    case win::WM_MOUSEHWHEEL:
      // Unanswered wheel input goes on to the parent window.
      if (WindowWheel(msg, wParam, lParam)) return 0;
      break;
    case win::WM_MOUSELEAVE:
      FTrackingLeave = false;
      MouseLeave();
      return 0;
    case win::WM_CAPTURECHANGED:
      // Another window took the mouse (a menu, a drag): the captured control lets go.
      if (!FReleasingCapture && reinterpret_cast<HWnd>(lParam) != hwnd) SetCaptured(nullptr);
      return 0;
    case win::WM_TOUCH:
      WindowTouch(wParam, lParam);
      break;  // the default closes the touch input handle
    case win::WM_KEYDOWN:
    case win::WM_SYSKEYDOWN:
    case win::WM_CHAR:
      WindowKey(msg, wParam);
      return 0;
    case win::WM_SIZE:
      WindowSized(LoWord(static_cast<std::uintptr_t>(lParam)), HiWord(static_cast<std::uintptr_t>(lParam)));
      return 0;
    case win::WM_MOVE:
      WindowMoved(XFromLParam(lParam), YFromLParam(lParam));
      return 0;
    case win::WM_PAINT:
      RenderToBitmap();
      if (PaintWindowSurface(hwnd, FSurface)) return 0;
      break;
    case win::WM_DESTROY:
      // Destroyed from outside (its parent went): the form forgets it and may make another.
      HandleDestroying();
      FHandle = nullptr;
      FTrackingLeave = false;
      break;
    default:
      break;
  }
  return os.DefWindowProcW(hwnd, msg, wParam, lParam);
}

bool TCommonCustomForm::IsDoubleClick(TMouseButton button, int x, int y) {
  IPlatform& os = Platform();
  const std::uint32_t now = os.GetTickCount();
  const bool twice = FLastPress.Valid && FLastPress.Button == button &&
                     now - FLastPress.Time <= os.GetDoubleClickTime() &&
                     std::abs(x - FLastPress.X) <= os.GetSystemMetrics(win::SM_CXDOUBLECLK) / 2 &&
                     std::abs(y - FLastPress.Y) <= os.GetSystemMetrics(win::SM_CYDOUBLECLK) / 2;
  // A third press starts a new pair.
  FLastPress = {button, now, x, y, !twice};
  return twice;
}

bool TCommonCustomForm::WindowMouse(std::uint32_t msg, WParam wParam, LParam lParam) {
  IPlatform& os = Platform();
  HWnd hwnd = FHandle;
  const int x = XFromLParam(lParam), y = YFromLParam(lParam);
  const auto fx = static_cast<float>(x), fy = static_cast<float>(y);
  TShiftState shift = ShiftFromMouseKeys(wParam);
  TMouseButton button = TMouseButton::mbLeft;
  if (msg == win::WM_RBUTTONDOWN || msg == win::WM_RBUTTONUP || msg == win::WM_RBUTTONDBLCLK)
    button = TMouseButton::mbRight;
  if (msg == win::WM_MBUTTONDOWN || msg == win::WM_MBUTTONUP || msg == win::WM_MBUTTONDBLCLK)
    button = TMouseButton::mbMiddle;
  switch (msg) {
    case win::WM_MOUSEMOVE:
      if (!FTrackingLeave) {
        TrackMouseEventInfo track;
        track.dwFlags = win::TME_LEAVE;
        track.hwndTrack = hwnd;
        FTrackingLeave = os.TrackMouseEvent(&track);
      }
      MouseMove(shift, fx, fy);
      return true;
    case win::WM_LBUTTONDOWN:
    case win::WM_RBUTTONDOWN:
    case win::WM_MBUTTONDOWN:
    case win::WM_LBUTTONDBLCLK:
    case win::WM_RBUTTONDBLCLK:
    case win::WM_MBUTTONDBLCLK: {
      const bool dblclk =
          msg == win::WM_LBUTTONDBLCLK || msg == win::WM_RBUTTONDBLCLK || msg == win::WM_MBUTTONDBLCLK;
      if (IsDoubleClick(button, x, y) || dblclk) shift |= ss::Double;
      // A drag that leaves the window still reports to it.
      if (os.GetCapture() != hwnd) os.SetCapture(hwnd);
      MouseDown(button, shift, fx, fy);
      return true;
    }
    default: {
      // Let go of the mouse before the handlers run: they may free the form.
      if (!(LoWord(wParam) & (win::MK_LBUTTON | win::MK_RBUTTON | win::MK_MBUTTON)) &&
          os.GetCapture() == hwnd) {
        FReleasingCapture = true;
        os.ReleaseCapture();
        FReleasingCapture = false;
      }
      MouseUp(button, shift, fx, fy);
      return true;
    }
  }
}

bool TCommonCustomForm::WindowWheel(std::uint32_t msg, WParam wParam, LParam) {
  TShiftState shift = ShiftFromMouseKeys(wParam);
  if (msg == win::WM_MOUSEHWHEEL) shift |= ss::Horizontal;
  const int delta = static_cast<std::int16_t>(HiWord(wParam));
  bool handled = false;
  MouseWheel(shift, delta, handled);
  return handled;
}

void TCommonCustomForm::WindowTouch(WParam wParam, LParam lParam) {
  IPlatform& os = Platform();
  const std::uint32_t count = LoWord(wParam);
  if (count == 0) return;
  std::vector<TouchInput> points(count);
  if (!os.GetTouchInputInfo(reinterpret_cast<HTouchInput>(lParam), count, points.data(),
                            static_cast<std::int32_t>(sizeof(TouchInput))))
    return;
  TPoint origin;
  os.ClientToScreen(FHandle, &origin);
  for (const TouchInput& point : points) {
    // One finger drives the pan: the primary one, or the only one.
    if (count > 1 && !(point.dwFlags & win::TOUCHEVENTF_PRIMARY)) continue;
    TPointF client{static_cast<float>(point.x) / 100.0f - static_cast<float>(origin.X),
                   static_cast<float>(point.y) / 100.0f - static_cast<float>(origin.Y)};
    if (point.dwFlags & win::TOUCHEVENTF_DOWN)
      TouchDown(client);
    else if (point.dwFlags & win::TOUCHEVENTF_UP)
      TouchUp(client);
    else if (point.dwFlags & win::TOUCHEVENTF_MOVE)
      TouchMove(client);
    if (!FHandle) return;
  }
}

void TCommonCustomForm::WindowKey(std::uint32_t msg, WParam wParam) {
  int key = 0;
  char16_t keyChar = 0;
  if (msg == win::WM_CHAR)
    keyChar = static_cast<char16_t>(wParam);
  else
    key = static_cast<int>(wParam);
  KeyDown(key, keyChar, ShiftFromKeyState());
}

void TCommonCustomForm::WindowSized(int width, int height) {
  if (width == FWidth && height == FHeight) return;
  // Someone else sized the window (the host, after re-parenting): the form follows.
  SetBoundsFields(FLeft, FTop, width, height);
  Realign();
  Resize();
  Invalidate();
}

void TCommonCustomForm::WindowMoved(int left, int top) { SetBoundsFields(left, top, FWidth, FHeight); }

}  // namespace qx
