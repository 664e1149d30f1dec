// Our header first: after <windows.h> the Win32 names below are macros.
#include "platform/win32/Win32Platform.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
// The system headers below need <windows.h> first.
#include <commctrl.h>
#include <mmsystem.h>
#include <wininet.h>

#include <cstddef>
#include <thread>

// On 32 bits these are macros for the 32-bit calls; our operations keep the real names.
#undef GetWindowLongPtrW
#undef SetWindowLongPtrW

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace qx {

namespace {

// Our records have the system's layout, so pointers to them are handed over as they are.
// Messages and tooltips embed our point and rectangle, so those must match too.
static_assert(sizeof(TRect) == sizeof(RECT) && offsetof(TRect, Bottom) == offsetof(RECT, bottom));
static_assert(sizeof(TPoint) == sizeof(POINT) && offsetof(TPoint, Y) == offsetof(POINT, y));
static_assert(sizeof(Msg) == sizeof(MSG) && offsetof(Msg, lParam) == offsetof(MSG, lParam) &&
              offsetof(Msg, time) == offsetof(MSG, time) && offsetof(Msg, pt) == offsetof(MSG, pt));
static_assert(sizeof(CreateStructW) == sizeof(CREATESTRUCTW) &&
              offsetof(CreateStructW, lpszClass) == offsetof(CREATESTRUCTW, lpszClass));
static_assert(sizeof(WindowPos) == sizeof(WINDOWPOS) &&
              offsetof(WindowPos, flags) == offsetof(WINDOWPOS, flags));
static_assert(sizeof(MouseHookStruct) == sizeof(MOUSEHOOKSTRUCT) &&
              offsetof(MouseHookStruct, dwExtraInfo) == offsetof(MOUSEHOOKSTRUCT, dwExtraInfo));
static_assert(sizeof(CwpStruct) == sizeof(CWPSTRUCT) &&
              offsetof(CwpStruct, hwnd) == offsetof(CWPSTRUCT, hwnd));
static_assert(sizeof(TouchInput) == sizeof(TOUCHINPUT) &&
              offsetof(TouchInput, dwExtraInfo) == offsetof(TOUCHINPUT, dwExtraInfo));
static_assert(sizeof(ToolInfoW) == sizeof(TTTOOLINFOW) &&
              offsetof(ToolInfoW, lpszText) == offsetof(TTTOOLINFOW, lpszText));
static_assert(sizeof(TrackMouseEventInfo) == sizeof(TRACKMOUSEEVENT) &&
              offsetof(TrackMouseEventInfo, dwHoverTime) == offsetof(TRACKMOUSEEVENT, dwHoverTime));
static_assert(sizeof(UrlComponentsW) == sizeof(URL_COMPONENTSW) &&
              offsetof(UrlComponentsW, nPort) == offsetof(URL_COMPONENTSW, nPort) &&
              offsetof(UrlComponentsW, dwExtraInfoLength) == offsetof(URL_COMPONENTSW, dwExtraInfoLength));
static_assert(sizeof(char16_t) == sizeof(wchar_t));
static_assert(sizeof(LongPtr) == sizeof(LONG_PTR) && sizeof(ULongPtr) == sizeof(DWORD_PTR));

// Classes and windows belong to the module that registers them.
HINSTANCE Instance() { return reinterpret_cast<HINSTANCE>(&__ImageBase); }
// Our geometry is converted to the system's at this edge.
RECT ToRect(const TRect& r) { return RECT{r.Left, r.Top, r.Right, r.Bottom}; }
TRect FromRect(const RECT& r) {
  return {static_cast<std::int32_t>(r.left), static_cast<std::int32_t>(r.top),
          static_cast<std::int32_t>(r.right), static_cast<std::int32_t>(r.bottom)};
}
POINT ToPoint(TPoint p) { return POINT{p.X, p.Y}; }
TPoint FromPoint(POINT p) { return {static_cast<std::int32_t>(p.x), static_cast<std::int32_t>(p.y)}; }

HWND H(HWnd hwnd) { return reinterpret_cast<HWND>(hwnd); }
HWnd Q(HWND hwnd) { return reinterpret_cast<HWnd>(hwnd); }
const wchar_t* W(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }
wchar_t* W(char16_t* text) { return reinterpret_cast<wchar_t*>(text); }

}  // namespace

std::uint16_t TWin32Platform::RegisterClassW(const char16_t* className, WndProc wndProc) {
  WNDCLASSW wc{};
  wc.lpfnWndProc = reinterpret_cast<WNDPROC>(wndProc);
  wc.hInstance = Instance();
  wc.lpszClassName = W(className);
  return ::RegisterClassW(&wc);
}

bool TWin32Platform::UnregisterClassW(const char16_t* className) {
  return ::UnregisterClassW(W(className), Instance()) != FALSE;
}

bool TWin32Platform::GetClassInfoW(const char16_t* className, WndProc* wndProc) {
  WNDCLASSW wc{};
  if (!::GetClassInfoW(Instance(), W(className), &wc)) return false;
  if (wndProc) *wndProc = reinterpret_cast<WndProc>(wc.lpfnWndProc);
  return true;
}

HWnd TWin32Platform::CreateWindowExW(std::uint32_t exStyle, const char16_t* className, const char16_t* title,
                                     std::uint32_t style, std::int32_t x, std::int32_t y, std::int32_t width,
                                     std::int32_t height, HWnd parent, void* userData) {
  return Q(::CreateWindowExW(exStyle, W(className), W(title), style, x, y, width, height, H(parent), nullptr,
                             Instance(), userData));
}

bool TWin32Platform::DestroyWindow(HWnd hwnd) { return ::DestroyWindow(H(hwnd)) != FALSE; }
bool TWin32Platform::IsWindow(HWnd hwnd) { return ::IsWindow(H(hwnd)) != FALSE; }

LResult TWin32Platform::DefWindowProcW(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  return ::DefWindowProcW(H(hwnd), msg, wParam, lParam);
}

WndProc TWin32Platform::DefWindowProcAddress() { return reinterpret_cast<WndProc>(&::DefWindowProcW); }

LResult TWin32Platform::CallWindowProcW(WndProc proc, HWnd hwnd, std::uint32_t msg, WParam wParam,
                                        LParam lParam) {
  return ::CallWindowProcW(reinterpret_cast<WNDPROC>(proc), H(hwnd), msg, wParam, lParam);
}

std::int32_t TWin32Platform::GetWindowLongW(HWnd hwnd, std::int32_t index) {
  return ::GetWindowLongW(H(hwnd), index);
}

std::int32_t TWin32Platform::SetWindowLongW(HWnd hwnd, std::int32_t index, std::int32_t value) {
  return ::SetWindowLongW(H(hwnd), index, value);
}

LongPtr TWin32Platform::GetWindowLongPtrW(HWnd hwnd, std::int32_t index) {
#ifdef _WIN64
  return ::GetWindowLongPtrW(H(hwnd), index);
#else
  return ::GetWindowLongW(H(hwnd), index);
#endif
}

LongPtr TWin32Platform::SetWindowLongPtrW(HWnd hwnd, std::int32_t index, LongPtr value) {
#ifdef _WIN64
  return ::SetWindowLongPtrW(H(hwnd), index, value);
#else
  return ::SetWindowLongW(H(hwnd), index, value);
#endif
}

HWnd TWin32Platform::SetParent(HWnd child, HWnd newParent) { return Q(::SetParent(H(child), H(newParent))); }
HWnd TWin32Platform::GetParent(HWnd hwnd) { return Q(::GetParent(H(hwnd))); }
HWnd TWin32Platform::GetWindow(HWnd hwnd, std::uint32_t relation) {
  return Q(::GetWindow(H(hwnd), relation));
}
HWnd TWin32Platform::GetDesktopWindow() { return Q(::GetDesktopWindow()); }
bool TWin32Platform::IsChild(HWnd parent, HWnd hwnd) { return ::IsChild(H(parent), H(hwnd)) != FALSE; }

bool TWin32Platform::SetWindowPos(HWnd hwnd, HWnd insertAfter, std::int32_t x, std::int32_t y,
                                  std::int32_t cx, std::int32_t cy, std::uint32_t flags) {
  return ::SetWindowPos(H(hwnd), H(insertAfter), x, y, cx, cy, flags) != FALSE;
}

bool TWin32Platform::MoveWindow(HWnd hwnd, std::int32_t x, std::int32_t y, std::int32_t width,
                                std::int32_t height, bool repaint) {
  return ::MoveWindow(H(hwnd), x, y, width, height, repaint ? TRUE : FALSE) != FALSE;
}

bool TWin32Platform::GetWindowRect(HWnd hwnd, TRect* rect) {
  RECT r{};
  if (!::GetWindowRect(H(hwnd), &r)) return false;
  if (rect) *rect = FromRect(r);
  return true;
}

bool TWin32Platform::GetClientRect(HWnd hwnd, TRect* rect) {
  RECT r{};
  if (!::GetClientRect(H(hwnd), &r)) return false;
  if (rect) *rect = FromRect(r);
  return true;
}

bool TWin32Platform::ShowWindow(HWnd hwnd, std::int32_t cmdShow) {
  return ::ShowWindow(H(hwnd), cmdShow) != FALSE;
}
bool TWin32Platform::IsWindowVisible(HWnd hwnd) { return ::IsWindowVisible(H(hwnd)) != FALSE; }

bool TWin32Platform::ClientToScreen(HWnd hwnd, TPoint* point) {
  if (!point) return false;
  POINT p = ToPoint(*point);
  if (!::ClientToScreen(H(hwnd), &p)) return false;
  *point = FromPoint(p);
  return true;
}

bool TWin32Platform::ScreenToClient(HWnd hwnd, TPoint* point) {
  if (!point) return false;
  POINT p = ToPoint(*point);
  if (!::ScreenToClient(H(hwnd), &p)) return false;
  *point = FromPoint(p);
  return true;
}

HWnd TWin32Platform::WindowFromPoint(TPoint screenPoint) {
  return Q(::WindowFromPoint(ToPoint(screenPoint)));
}

bool TWin32Platform::InvalidateRect(HWnd hwnd, const TRect* rect, bool erase) {
  const RECT r = rect ? ToRect(*rect) : RECT{};
  return ::InvalidateRect(H(hwnd), rect ? &r : nullptr, erase ? TRUE : FALSE) != FALSE;
}

bool TWin32Platform::UpdateWindow(HWnd hwnd) { return ::UpdateWindow(H(hwnd)) != FALSE; }

HWnd TWin32Platform::FindWindowW(const char16_t* className, const char16_t* title) {
  return Q(::FindWindowW(W(className), W(title)));
}

bool TWin32Platform::EnumWindows(EnumWindowsProc callback, LParam lParam) {
  return ::EnumWindows(reinterpret_cast<WNDENUMPROC>(callback), lParam) != FALSE;
}

std::int32_t TWin32Platform::GetClassNameW(HWnd hwnd, char16_t* buffer, std::int32_t maxCount) {
  return ::GetClassNameW(H(hwnd), W(buffer), maxCount);
}

std::int32_t TWin32Platform::GetWindowTextW(HWnd hwnd, char16_t* buffer, std::int32_t maxCount) {
  return ::GetWindowTextW(H(hwnd), W(buffer), maxCount);
}

std::int32_t TWin32Platform::GetWindowTextLengthW(HWnd hwnd) { return ::GetWindowTextLengthW(H(hwnd)); }

bool TWin32Platform::SetWindowTextW(HWnd hwnd, const char16_t* text) {
  return ::SetWindowTextW(H(hwnd), W(text)) != FALSE;
}

std::uint32_t TWin32Platform::GetWindowThreadProcessId(HWnd hwnd, std::uint32_t* processId) {
  DWORD pid = 0;
  const DWORD thread = ::GetWindowThreadProcessId(H(hwnd), &pid);
  if (thread && processId) *processId = pid;
  return thread;
}

std::uint32_t TWin32Platform::GetCurrentProcessId() { return ::GetCurrentProcessId(); }
std::uint32_t TWin32Platform::GetCurrentThreadId() { return ::GetCurrentThreadId(); }

bool TWin32Platform::PostMessageW(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  return ::PostMessageW(H(hwnd), msg, wParam, lParam) != FALSE;
}

bool TWin32Platform::PostThreadMessageW(std::uint32_t threadId, std::uint32_t msg, WParam wParam,
                                        LParam lParam) {
  return ::PostThreadMessageW(threadId, msg, wParam, lParam) != FALSE;
}

LResult TWin32Platform::SendMessageW(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  return ::SendMessageW(H(hwnd), msg, wParam, lParam);
}

std::int32_t TWin32Platform::GetMessageW(Msg* msg, HWnd hwnd, std::uint32_t filterMin,
                                         std::uint32_t filterMax) {
  return ::GetMessageW(reinterpret_cast<MSG*>(msg), H(hwnd), filterMin, filterMax);
}

bool TWin32Platform::PeekMessageW(Msg* msg, HWnd hwnd, std::uint32_t filterMin, std::uint32_t filterMax,
                                  std::uint32_t removeMsg) {
  return ::PeekMessageW(reinterpret_cast<MSG*>(msg), H(hwnd), filterMin, filterMax, removeMsg) != FALSE;
}

bool TWin32Platform::TranslateMessage(const Msg* msg) {
  return ::TranslateMessage(reinterpret_cast<const MSG*>(msg)) != FALSE;
}

LResult TWin32Platform::DispatchMessageW(const Msg* msg) {
  return ::DispatchMessageW(reinterpret_cast<const MSG*>(msg));
}

void TWin32Platform::PostQuitMessage(std::int32_t exitCode) { ::PostQuitMessage(exitCode); }
LParam TWin32Platform::GetMessageExtraInfo() { return ::GetMessageExtraInfo(); }

std::uintptr_t TWin32Platform::SetTimer(HWnd hwnd, std::uintptr_t id, std::uint32_t elapse) {
  return ::SetTimer(H(hwnd), id, elapse, nullptr);
}

bool TWin32Platform::KillTimer(HWnd hwnd, std::uintptr_t id) { return ::KillTimer(H(hwnd), id) != FALSE; }

std::uint32_t TWin32Platform::timeSetEvent(std::uint32_t delay, std::uint32_t resolution, TimerProc proc,
                                           ULongPtr user, std::uint32_t flags) {
  return ::timeSetEvent(delay, resolution, reinterpret_cast<LPTIMECALLBACK>(proc), user, flags);
}

std::uint32_t TWin32Platform::timeKillEvent(std::uint32_t id) { return ::timeKillEvent(id); }
std::uint32_t TWin32Platform::timeGetTime() { return ::timeGetTime(); }
std::uint32_t TWin32Platform::GetTickCount() { return ::GetTickCount(); }
void TWin32Platform::Sleep(std::uint32_t milliseconds) { ::Sleep(milliseconds); }

std::int16_t TWin32Platform::GetKeyState(std::int32_t virtualKey) { return ::GetKeyState(virtualKey); }

bool TWin32Platform::GetCursorPos(TPoint* point) {
  POINT p{};
  if (!::GetCursorPos(&p)) return false;
  if (point) *point = FromPoint(p);
  return true;
}

bool TWin32Platform::SetCursorPos(std::int32_t x, std::int32_t y) { return ::SetCursorPos(x, y) != FALSE; }
std::uint32_t TWin32Platform::GetDoubleClickTime() { return ::GetDoubleClickTime(); }
HWnd TWin32Platform::SetCapture(HWnd hwnd) { return Q(::SetCapture(H(hwnd))); }
bool TWin32Platform::ReleaseCapture() { return ::ReleaseCapture() != FALSE; }
HWnd TWin32Platform::GetCapture() { return Q(::GetCapture()); }
bool TWin32Platform::TrackMouseEvent(TrackMouseEventInfo* info) {
  return ::TrackMouseEvent(reinterpret_cast<TRACKMOUSEEVENT*>(info)) != FALSE;
}

HWnd TWin32Platform::SetFocus(HWnd hwnd) { return Q(::SetFocus(H(hwnd))); }
HWnd TWin32Platform::GetFocus() { return Q(::GetFocus()); }

HHook TWin32Platform::SetWindowsHookExW(std::int32_t idHook, HookProc proc, void* module,
                                        std::uint32_t threadId) {
  return reinterpret_cast<HHook>(::SetWindowsHookExW(idHook, reinterpret_cast<HOOKPROC>(proc),
                                                     static_cast<HINSTANCE>(module), threadId));
}

bool TWin32Platform::UnhookWindowsHookEx(HHook hook) {
  return ::UnhookWindowsHookEx(reinterpret_cast<HHOOK>(hook)) != FALSE;
}

LResult TWin32Platform::CallNextHookEx(HHook hook, std::int32_t code, WParam wParam, LParam lParam) {
  return ::CallNextHookEx(reinterpret_cast<HHOOK>(hook), code, wParam, lParam);
}

bool TWin32Platform::RegisterTouchWindow(HWnd hwnd, std::uint32_t flags) {
  return ::RegisterTouchWindow(H(hwnd), flags) != FALSE;
}

bool TWin32Platform::UnregisterTouchWindow(HWnd hwnd) { return ::UnregisterTouchWindow(H(hwnd)) != FALSE; }

bool TWin32Platform::IsTouchWindow(HWnd hwnd, std::uint32_t* flags) {
  ULONG value = 0;
  const bool touch = ::IsTouchWindow(H(hwnd), &value) != FALSE;
  if (touch && flags) *flags = value;
  return touch;
}

bool TWin32Platform::GetTouchInputInfo(HTouchInput input, std::uint32_t count, TouchInput* inputs,
                                       std::int32_t size) {
  return ::GetTouchInputInfo(reinterpret_cast<HTOUCHINPUT>(input), count,
                             reinterpret_cast<TOUCHINPUT*>(inputs), size) != FALSE;
}

bool TWin32Platform::CloseTouchInputHandle(HTouchInput input) {
  return ::CloseTouchInputHandle(reinterpret_cast<HTOUCHINPUT>(input)) != FALSE;
}

bool TWin32Platform::GetCurrentInputMessageSource(InputMessageSource* source) {
  // Newer systems only: looked up by name, once.
  using TGetSource = BOOL(WINAPI*)(InputMessageSource*);
  static const TGetSource getSource = [] {
    HMODULE user32 = ::GetModuleHandleW(L"user32.dll");
    FARPROC found = user32 ? ::GetProcAddress(user32, "GetCurrentInputMessageSource") : nullptr;
    return reinterpret_cast<TGetSource>(reinterpret_cast<void (*)()>(found));
  }();
  return getSource && getSource(source) != FALSE;
}

bool TWin32Platform::InitCommonControlsEx(std::uint32_t classes) {
  INITCOMMONCONTROLSEX init{sizeof(INITCOMMONCONTROLSEX), classes};
  return ::InitCommonControlsEx(&init) != FALSE;
}

bool TWin32Platform::InternetCrackUrlW(const char16_t* url, std::uint32_t urlLength, std::uint32_t flags,
                                       UrlComponentsW* components) {
  return ::InternetCrackUrlW(W(url), urlLength, flags, reinterpret_cast<URL_COMPONENTSW*>(components)) !=
         FALSE;
}

bool TWin32Platform::CheckWin32Version(std::int32_t major, std::int32_t minor) {
  OSVERSIONINFOEXW wanted{};
  wanted.dwOSVersionInfoSize = sizeof(wanted);
  wanted.dwMajorVersion = static_cast<DWORD>(major);
  wanted.dwMinorVersion = static_cast<DWORD>(minor);
  DWORDLONG condition = 0;
  condition = ::VerSetConditionMask(condition, VER_MAJORVERSION, VER_GREATER_EQUAL);
  condition = ::VerSetConditionMask(condition, VER_MINORVERSION, VER_GREATER_EQUAL);
  return ::VerifyVersionInfoW(&wanted, VER_MAJORVERSION | VER_MINORVERSION, condition) != FALSE;
}

std::int32_t TWin32Platform::GetSystemMetrics(std::int32_t index) { return ::GetSystemMetrics(index); }

std::int32_t TWin32Platform::GetLogPixelsY() {
  HDC screen = ::GetDC(nullptr);
  if (!screen) return 0;
  const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
  ::ReleaseDC(nullptr, screen);
  return dpi;
}

bool TWin32Platform::GetMessageFont(char16_t* faceName, std::int32_t maxCount, std::int32_t* height) {
  if (!faceName || maxCount <= 0 || !height) return false;
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  if (!::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0)) return false;
  const LOGFONTW& font = metrics.lfMessageFont;
  std::int32_t units = 0;
  while (units < maxCount - 1 && units < LF_FACESIZE && font.lfFaceName[units]) {
    faceName[units] = static_cast<char16_t>(font.lfFaceName[units]);
    ++units;
  }
  faceName[units] = 0;
  *height = font.lfHeight;
  return true;
}

std::int32_t TWin32Platform::MessageBoxW(HWnd hwnd, const char16_t* text, const char16_t* caption,
                                         std::uint32_t type) {
  return ::MessageBoxW(H(hwnd), W(text), W(caption), type);
}

std::int32_t TWin32Platform::GetLocaleInfoW(std::uint32_t locale, std::uint32_t type, char16_t* buffer,
                                            std::int32_t maxCount) {
  return ::GetLocaleInfoW(locale, type, W(buffer), maxCount);
}

std::size_t TWin32Platform::ProcessMessages() {
  std::size_t count = 0;
  MSG msg;
  while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
    if (msg.message == WM_QUIT) {
      // Left for the thread's own loop.
      ::PostQuitMessage(static_cast<int>(msg.wParam));
      break;
    }
    ::TranslateMessage(&msg);
    ::DispatchMessageW(&msg);
    ++count;
  }
  return count;
}

void TWin32Platform::WaitStep(bool pumpMessages) {
  if (pumpMessages)
    ProcessMessages();
  else
    std::this_thread::yield();
}

bool TWin32Platform::PaintWindowPixels(HWnd hwnd, std::int32_t width, std::int32_t height,
                                       const std::uint32_t* pixels) {
  // A top-down 32-bit DIB is the picture's own layout, so it is copied as it is.
  PAINTSTRUCT paint{};
  HDC dc = ::BeginPaint(H(hwnd), &paint);
  if (!dc) return false;
  if (pixels && width > 0 && height > 0) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    ::SetDIBitsToDevice(dc, 0, 0, static_cast<DWORD>(width), static_cast<DWORD>(height), 0, 0, 0,
                        static_cast<UINT>(height), pixels, &info, DIB_RGB_COLORS);
  }
  ::EndPaint(H(hwnd), &paint);
  return true;
}

}  // namespace qx
