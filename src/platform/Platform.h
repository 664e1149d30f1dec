#pragma once

// The window-system services the module uses, one operation per Win32 call and
// under the Win32 name. The win32 implementation passes each call through; the
// portable one emulates the same semantics in-process (tests, host simulator).
//
// Include this header before <windows.h> in any file that needs both: the
// constants below share their names with the system's macros.

#if defined(_WINDOWS_) || defined(_WINUSER_)
#error "Include platform/Platform.h before <windows.h>: its names are macros there"
#endif

#include <cstddef>
#include <cstdint>
#include <memory>

#include "base/Rect.h"
#include "base/Status.h"

namespace qx {

struct TWindowHandleTag;
struct THookHandleTag;
struct TTouchInputHandleTag;

// Opaque, pointer-sized window handle; null is "no window".
using HWnd = TWindowHandleTag*;
using HHook = THookHandleTag*;
using HTouchInput = TTouchInputHandleTag*;

// Exactly the system's parameter types, so procedures can be handed over unchanged.
#if defined(_WIN32) && !defined(_WIN64)
using LongPtr = long;
using ULongPtr = unsigned long;
#else
using LongPtr = std::intptr_t;
using ULongPtr = std::uintptr_t;
#endif
using WParam = std::uintptr_t;
using LParam = LongPtr;
using LResult = LongPtr;

using WndProc = LResult(QX_STDCALL*)(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam);
// Multimedia timer callback: (timer id, reserved message, user value, reserved, reserved).
using TimerProc = void(QX_STDCALL*)(std::uint32_t id, std::uint32_t msg, ULongPtr user, ULongPtr, ULongPtr);
using MMTimerProc = TimerProc;
// Returns 0 to end the enumeration.
using EnumWindowsProc = std::int32_t(QX_STDCALL*)(HWnd hwnd, LParam lParam);
using HookProc = LResult(QX_STDCALL*)(std::int32_t code, WParam wParam, LParam lParam);

struct Msg {
  HWnd hwnd = nullptr;
  std::uint32_t message = 0;
  WParam wParam = 0;
  LParam lParam = 0;
  std::uint32_t time = 0;
  TPoint pt;
};

// Same layout as the system's CREATESTRUCTW: WM_NCCREATE/WM_CREATE point at it.
struct CreateStructW {
  void* lpCreateParams = nullptr;
  void* hInstance = nullptr;
  void* hMenu = nullptr;
  HWnd hwndParent = nullptr;
  std::int32_t cy = 0;
  std::int32_t cx = 0;
  std::int32_t y = 0;
  std::int32_t x = 0;
  std::int32_t style = 0;
  const char16_t* lpszName = nullptr;
  const char16_t* lpszClass = nullptr;
  std::uint32_t dwExStyle = 0;
};

// Same layout as the system's WINDOWPOS: WM_WINDOWPOSCHANGED points at it.
struct WindowPos {
  HWnd hwnd = nullptr;
  HWnd hwndInsertAfter = nullptr;
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t cx = 0;
  std::int32_t cy = 0;
  std::uint32_t flags = 0;
};

// Same layout as the system's MOUSEHOOKSTRUCT (WH_MOUSE lParam).
struct MouseHookStruct {
  TPoint pt;
  HWnd hwnd = nullptr;
  std::uint32_t wHitTestCode = 0;
  ULongPtr dwExtraInfo = 0;
};

// Same layout as the system's CWPSTRUCT (WH_CALLWNDPROC lParam).
struct CwpStruct {
  LParam lParam = 0;
  WParam wParam = 0;
  std::uint32_t message = 0;
  HWnd hwnd = nullptr;
};

// Same layout as the system's TRACKMOUSEEVENT.
struct TrackMouseEventInfo {
  std::uint32_t cbSize = sizeof(TrackMouseEventInfo);
  std::uint32_t dwFlags = 0;
  HWnd hwndTrack = nullptr;
  std::uint32_t dwHoverTime = 0;
};

// Same layout as the system's TOUCHINPUT; x and y in hundredths of a screen pixel.
struct TouchInput {
  std::int32_t x = 0;
  std::int32_t y = 0;
  void* hSource = nullptr;
  std::uint32_t dwID = 0;
  std::uint32_t dwFlags = 0;
  std::uint32_t dwMask = 0;
  std::uint32_t dwTime = 0;
  ULongPtr dwExtraInfo = 0;
  std::uint32_t cxContact = 0;
  std::uint32_t cyContact = 0;
};

// Same layout as the system's INPUT_MESSAGE_SOURCE.
struct InputMessageSource {
  std::int32_t deviceType = 0;
  std::int32_t originId = 0;
};

// Same layout as the system's TTTOOLINFOW (48 bytes on 32 bits).
struct ToolInfoW {
  std::uint32_t cbSize = sizeof(ToolInfoW);
  std::uint32_t uFlags = 0;
  HWnd hwnd = nullptr;
  std::uintptr_t uId = 0;
  TRect rect;
  void* hinst = nullptr;
  char16_t* lpszText = nullptr;
  LParam lParam = 0;
  void* lpReserved = nullptr;
};

// Same layout as the system's URL_COMPONENTSW. For each part: a buffer and its size
// (in units, with room for the terminating zero) to copy into; or a null pointer and a
// nonzero length to get a pointer into the given URL; or 0 to skip the part.
struct UrlComponentsW {
  std::uint32_t dwStructSize = sizeof(UrlComponentsW);
  char16_t* lpszScheme = nullptr;
  std::uint32_t dwSchemeLength = 0;
  std::int32_t nScheme = 0;
  char16_t* lpszHostName = nullptr;
  std::uint32_t dwHostNameLength = 0;
  std::uint16_t nPort = 0;
  char16_t* lpszUserName = nullptr;
  std::uint32_t dwUserNameLength = 0;
  char16_t* lpszPassword = nullptr;
  std::uint32_t dwPasswordLength = 0;
  char16_t* lpszUrlPath = nullptr;
  std::uint32_t dwUrlPathLength = 0;
  char16_t* lpszExtraInfo = nullptr;
  std::uint32_t dwExtraInfoLength = 0;
};

constexpr std::uint16_t LoWord(std::uintptr_t v) { return static_cast<std::uint16_t>(v & 0xFFFF); }
constexpr std::uint16_t HiWord(std::uintptr_t v) { return static_cast<std::uint16_t>((v >> 16) & 0xFFFF); }
// Signed coordinates packed in an lParam (GET_X_LPARAM / GET_Y_LPARAM).
constexpr std::int32_t XFromLParam(LParam v) {
  return static_cast<std::int16_t>(LoWord(static_cast<std::uintptr_t>(v)));
}
constexpr std::int32_t YFromLParam(LParam v) {
  return static_cast<std::int16_t>(HiWord(static_cast<std::uintptr_t>(v)));
}
constexpr LParam MakeLParam(std::int32_t lo, std::int32_t hi) {
  return static_cast<LParam>(static_cast<std::uint32_t>(static_cast<std::uint16_t>(lo)) |
                             (static_cast<std::uint32_t>(static_cast<std::uint16_t>(hi)) << 16));
}
constexpr WParam MakeWParam(std::int32_t lo, std::int32_t hi) {
  return static_cast<WParam>(static_cast<std::uint32_t>(static_cast<std::uint16_t>(lo)) |
                             (static_cast<std::uint32_t>(static_cast<std::uint16_t>(hi)) << 16));
}

namespace win {

// Window styles.
inline constexpr std::uint32_t WS_OVERLAPPED = 0x00000000u;
inline constexpr std::uint32_t WS_POPUP = 0x80000000u;
inline constexpr std::uint32_t WS_CHILD = 0x40000000u;
inline constexpr std::uint32_t WS_MINIMIZE = 0x20000000u;
inline constexpr std::uint32_t WS_VISIBLE = 0x10000000u;
inline constexpr std::uint32_t WS_DISABLED = 0x08000000u;
inline constexpr std::uint32_t WS_CLIPSIBLINGS = 0x04000000u;
inline constexpr std::uint32_t WS_CLIPCHILDREN = 0x02000000u;
inline constexpr std::uint32_t WS_MAXIMIZE = 0x01000000u;
inline constexpr std::uint32_t WS_CAPTION = 0x00C00000u;
inline constexpr std::uint32_t WS_BORDER = 0x00800000u;
inline constexpr std::uint32_t WS_SYSMENU = 0x00080000u;
inline constexpr std::uint32_t WS_THICKFRAME = 0x00040000u;
inline constexpr std::uint32_t WS_EX_TOPMOST = 0x00000008u;
inline constexpr std::uint32_t WS_EX_TRANSPARENT = 0x00000020u;
inline constexpr std::uint32_t WS_EX_TOOLWINDOW = 0x00000080u;
inline constexpr std::uint32_t WS_EX_LAYERED = 0x00080000u;
inline constexpr std::uint32_t WS_EX_NOACTIVATE = 0x08000000u;

inline constexpr std::int32_t CW_USEDEFAULT = static_cast<std::int32_t>(0x80000000u);

// Window long indexes.
inline constexpr std::int32_t GWL_WNDPROC = -4;
inline constexpr std::int32_t GWLP_WNDPROC = -4;
inline constexpr std::int32_t GWLP_HINSTANCE = -6;
inline constexpr std::int32_t GWLP_HWNDPARENT = -8;
inline constexpr std::int32_t GWL_ID = -12;
inline constexpr std::int32_t GWLP_ID = -12;
inline constexpr std::int32_t GWL_STYLE = -16;
inline constexpr std::int32_t GWL_EXSTYLE = -20;
inline constexpr std::int32_t GWL_USERDATA = -21;
inline constexpr std::int32_t GWLP_USERDATA = -21;

// Special parents and z-order places.
inline const HWnd HWND_MESSAGE = reinterpret_cast<HWnd>(static_cast<std::intptr_t>(-3));
inline const HWnd HWND_TOP = nullptr;
inline const HWnd HWND_BOTTOM = reinterpret_cast<HWnd>(static_cast<std::intptr_t>(1));
inline const HWnd HWND_TOPMOST = reinterpret_cast<HWnd>(static_cast<std::intptr_t>(-1));
inline const HWnd HWND_NOTOPMOST = reinterpret_cast<HWnd>(static_cast<std::intptr_t>(-2));

// Messages.
inline constexpr std::uint32_t WM_NULL = 0x0000;
inline constexpr std::uint32_t WM_CREATE = 0x0001;
inline constexpr std::uint32_t WM_DESTROY = 0x0002;
inline constexpr std::uint32_t WM_MOVE = 0x0003;
inline constexpr std::uint32_t WM_SIZE = 0x0005;
inline constexpr std::uint32_t WM_ACTIVATE = 0x0006;
inline constexpr std::uint32_t WM_SETFOCUS = 0x0007;
inline constexpr std::uint32_t WM_KILLFOCUS = 0x0008;
inline constexpr std::uint32_t WM_SETTEXT = 0x000C;
inline constexpr std::uint32_t WM_PAINT = 0x000F;
inline constexpr std::uint32_t WM_CLOSE = 0x0010;
inline constexpr std::uint32_t WM_QUIT = 0x0012;
inline constexpr std::uint32_t WM_SHOWWINDOW = 0x0018;
inline constexpr std::uint32_t WM_MOUSEACTIVATE = 0x0021;
inline constexpr std::uint32_t WM_WINDOWPOSCHANGING = 0x0046;
inline constexpr std::uint32_t WM_WINDOWPOSCHANGED = 0x0047;
inline constexpr std::uint32_t WM_NCCREATE = 0x0081;
inline constexpr std::uint32_t WM_NCDESTROY = 0x0082;
inline constexpr std::uint32_t WM_NCHITTEST = 0x0084;
inline constexpr std::uint32_t WM_KEYDOWN = 0x0100;
inline constexpr std::uint32_t WM_KEYUP = 0x0101;
inline constexpr std::uint32_t WM_CHAR = 0x0102;
inline constexpr std::uint32_t WM_SYSKEYDOWN = 0x0104;
inline constexpr std::uint32_t WM_SYSKEYUP = 0x0105;
inline constexpr std::uint32_t WM_TIMER = 0x0113;
inline constexpr std::uint32_t WM_GESTURE = 0x0119;
inline constexpr std::uint32_t WM_MOUSEFIRST = 0x0200;
inline constexpr std::uint32_t WM_MOUSEMOVE = 0x0200;
inline constexpr std::uint32_t WM_LBUTTONDOWN = 0x0201;
inline constexpr std::uint32_t WM_LBUTTONUP = 0x0202;
inline constexpr std::uint32_t WM_LBUTTONDBLCLK = 0x0203;
inline constexpr std::uint32_t WM_RBUTTONDOWN = 0x0204;
inline constexpr std::uint32_t WM_RBUTTONUP = 0x0205;
inline constexpr std::uint32_t WM_RBUTTONDBLCLK = 0x0206;
inline constexpr std::uint32_t WM_MBUTTONDOWN = 0x0207;
inline constexpr std::uint32_t WM_MBUTTONUP = 0x0208;
inline constexpr std::uint32_t WM_MBUTTONDBLCLK = 0x0209;
inline constexpr std::uint32_t WM_MOUSEWHEEL = 0x020A;
inline constexpr std::uint32_t WM_MOUSEHWHEEL = 0x020E;
inline constexpr std::uint32_t WM_MOUSELAST = 0x020E;
inline constexpr std::uint32_t WM_CAPTURECHANGED = 0x0215;
inline constexpr std::uint32_t WM_TOUCH = 0x0240;
inline constexpr std::uint32_t WM_MOUSELEAVE = 0x02A3;
inline constexpr std::uint32_t WM_USER = 0x0400;
inline constexpr std::uint32_t WM_APP = 0x8000;

// Mouse key flags in wParam.
inline constexpr std::uint32_t MK_LBUTTON = 0x0001;
inline constexpr std::uint32_t MK_RBUTTON = 0x0002;
inline constexpr std::uint32_t MK_SHIFT = 0x0004;
inline constexpr std::uint32_t MK_CONTROL = 0x0008;
inline constexpr std::uint32_t MK_MBUTTON = 0x0010;
inline constexpr std::int32_t WHEEL_DELTA = 120;

// TrackMouseEvent flags.
inline constexpr std::uint32_t TME_HOVER = 0x00000001;
inline constexpr std::uint32_t TME_LEAVE = 0x00000002;
inline constexpr std::uint32_t TME_CANCEL = 0x80000000;

// Hit test answers.
inline constexpr LResult HTTRANSPARENT = -1;
inline constexpr LResult HTNOWHERE = 0;
inline constexpr LResult HTCLIENT = 1;

// SetWindowPos flags.
inline constexpr std::uint32_t SWP_NOSIZE = 0x0001;
inline constexpr std::uint32_t SWP_NOMOVE = 0x0002;
inline constexpr std::uint32_t SWP_NOZORDER = 0x0004;
inline constexpr std::uint32_t SWP_NOREDRAW = 0x0008;
inline constexpr std::uint32_t SWP_NOACTIVATE = 0x0010;
inline constexpr std::uint32_t SWP_FRAMECHANGED = 0x0020;
inline constexpr std::uint32_t SWP_SHOWWINDOW = 0x0040;
inline constexpr std::uint32_t SWP_HIDEWINDOW = 0x0080;
inline constexpr std::uint32_t SWP_NOCOPYBITS = 0x0100;
inline constexpr std::uint32_t SWP_NOOWNERZORDER = 0x0200;
inline constexpr std::uint32_t SWP_NOSENDCHANGING = 0x0400;

// ShowWindow commands.
inline constexpr std::int32_t SW_HIDE = 0;
inline constexpr std::int32_t SW_SHOWNORMAL = 1;
inline constexpr std::int32_t SW_SHOW = 5;
inline constexpr std::int32_t SW_SHOWNA = 8;
inline constexpr std::int32_t SW_SHOWNOACTIVATE = 4;

// WM_SIZE kinds.
inline constexpr WParam SIZE_RESTORED = 0;

// GetWindow relations.
inline constexpr std::uint32_t GW_HWNDFIRST = 0;
inline constexpr std::uint32_t GW_HWNDLAST = 1;
inline constexpr std::uint32_t GW_HWNDNEXT = 2;
inline constexpr std::uint32_t GW_HWNDPREV = 3;
inline constexpr std::uint32_t GW_OWNER = 4;
inline constexpr std::uint32_t GW_CHILD = 5;

// PeekMessageW options.
inline constexpr std::uint32_t PM_NOREMOVE = 0x0000;
inline constexpr std::uint32_t PM_REMOVE = 0x0001;

// Virtual keys.
inline constexpr std::int32_t VK_LBUTTON = 0x01;
inline constexpr std::int32_t VK_RBUTTON = 0x02;
inline constexpr std::int32_t VK_MBUTTON = 0x04;
inline constexpr std::int32_t VK_BACK = 0x08;
inline constexpr std::int32_t VK_TAB = 0x09;
inline constexpr std::int32_t VK_RETURN = 0x0D;
inline constexpr std::int32_t VK_SHIFT = 0x10;
inline constexpr std::int32_t VK_CONTROL = 0x11;
inline constexpr std::int32_t VK_MENU = 0x12;
inline constexpr std::int32_t VK_ESCAPE = 0x1B;
inline constexpr std::int32_t VK_LEFT = 0x25;
inline constexpr std::int32_t VK_UP = 0x26;
inline constexpr std::int32_t VK_RIGHT = 0x27;
inline constexpr std::int32_t VK_DOWN = 0x28;
inline constexpr std::int32_t VK_DELETE = 0x2E;

// SetTimer bounds: shorter intervals are raised to the minimum.
inline constexpr std::uint32_t USER_TIMER_MINIMUM = 0x0000000A;
inline constexpr std::uint32_t USER_TIMER_MAXIMUM = 0x7FFFFFFF;

// Multimedia timers.
inline constexpr std::uint32_t TIME_ONESHOT = 0x0000;
inline constexpr std::uint32_t TIME_PERIODIC = 0x0001;
inline constexpr std::uint32_t TIME_CALLBACK_FUNCTION = 0x0000;
inline constexpr std::uint32_t TIME_KILL_SYNCHRONOUS = 0x0100;
inline constexpr std::uint32_t TIMERR_NOERROR = 0;
inline constexpr std::uint32_t MMSYSERR_INVALPARAM = 11;

// Hooks.
inline constexpr std::int32_t WH_GETMESSAGE = 3;
inline constexpr std::int32_t WH_CALLWNDPROC = 4;
inline constexpr std::int32_t WH_MOUSE = 7;
inline constexpr std::int32_t HC_ACTION = 0;

// GetSystemMetrics indexes.
inline constexpr std::int32_t SM_CXSCREEN = 0;
inline constexpr std::int32_t SM_CYSCREEN = 1;
inline constexpr std::int32_t SM_CXDOUBLECLK = 36;
inline constexpr std::int32_t SM_CYDOUBLECLK = 37;
inline constexpr std::int32_t SM_CXDRAG = 68;
inline constexpr std::int32_t SM_CYDRAG = 69;
inline constexpr std::int32_t SM_DIGITIZER = 94;
inline constexpr std::int32_t SM_MAXIMUMTOUCHES = 95;

// Locale queries.
inline constexpr std::uint32_t LOCALE_USER_DEFAULT = 0x0400;
inline constexpr std::uint32_t LOCALE_SYSTEM_DEFAULT = 0x0800;
inline constexpr std::uint32_t LOCALE_ILANGUAGE = 0x0001;
inline constexpr std::uint32_t LOCALE_SISO639LANGNAME = 0x0059;
inline constexpr std::uint32_t LOCALE_SISO3166CTRYNAME = 0x005A;
inline constexpr std::uint32_t LOCALE_SNAME = 0x005C;

// Message boxes.
inline constexpr std::uint32_t MB_OK = 0x0000;
inline constexpr std::uint32_t MB_OKCANCEL = 0x0001;
inline constexpr std::uint32_t MB_YESNO = 0x0004;
inline constexpr std::uint32_t MB_ICONERROR = 0x0010;
inline constexpr std::uint32_t MB_ICONWARNING = 0x0030;
inline constexpr std::uint32_t MB_ICONINFORMATION = 0x0040;
inline constexpr std::int32_t IDOK = 1;
inline constexpr std::int32_t IDCANCEL = 2;
inline constexpr std::int32_t IDYES = 6;
inline constexpr std::int32_t IDNO = 7;

// Touch input.
inline constexpr std::uint32_t TOUCHEVENTF_MOVE = 0x0001;
inline constexpr std::uint32_t TOUCHEVENTF_DOWN = 0x0002;
inline constexpr std::uint32_t TOUCHEVENTF_UP = 0x0004;
inline constexpr std::uint32_t TOUCHEVENTF_INRANGE = 0x0008;
inline constexpr std::uint32_t TOUCHEVENTF_PRIMARY = 0x0010;
inline constexpr std::uint32_t TOUCHEVENTF_NOCOALESCE = 0x0020;
inline constexpr std::uint32_t TOUCHEVENTF_PALM = 0x0080;
inline constexpr std::uint32_t TWF_FINETOUCH = 0x0001;
inline constexpr std::uint32_t TWF_WANTPALM = 0x0002;
inline constexpr std::int32_t IMDT_UNAVAILABLE = 0;
inline constexpr std::int32_t IMDT_KEYBOARD = 1;
inline constexpr std::int32_t IMDT_MOUSE = 2;
inline constexpr std::int32_t IMDT_TOUCH = 4;
inline constexpr std::int32_t IMDT_PEN = 8;
inline constexpr std::int32_t IMO_UNAVAILABLE = 0;
inline constexpr std::int32_t IMO_HARDWARE = 1;
inline constexpr std::int32_t IMO_INJECTED = 2;
inline constexpr std::int32_t IMO_SYSTEM = 4;

// Common controls: the tooltip window.
inline constexpr char16_t TOOLTIPS_CLASSW[] = u"tooltips_class32";
inline constexpr std::uint32_t ICC_WIN95_CLASSES = 0x00FF;
inline constexpr std::uint32_t TTS_ALWAYSTIP = 0x01;
inline constexpr std::uint32_t TTS_NOPREFIX = 0x02;
inline constexpr std::uint32_t TTF_IDISHWND = 0x0001;
inline constexpr std::uint32_t TTF_SUBCLASS = 0x0010;
inline constexpr std::uint32_t TTM_ACTIVATE = WM_USER + 1;
inline constexpr std::uint32_t TTM_GETTOOLCOUNT = WM_USER + 13;
inline constexpr std::uint32_t TTM_SETMAXTIPWIDTH = WM_USER + 24;
inline constexpr std::uint32_t TTM_POP = WM_USER + 28;
inline constexpr std::uint32_t TTM_ADDTOOLW = WM_USER + 50;
inline constexpr std::uint32_t TTM_DELTOOLW = WM_USER + 51;
inline constexpr std::uint32_t TTM_NEWTOOLRECTW = WM_USER + 52;
inline constexpr std::uint32_t TTM_UPDATETIPTEXTW = WM_USER + 57;

// URL parts.
inline constexpr std::uint32_t ICU_DECODE = 0x10000000u;
inline constexpr std::uint32_t ICU_ESCAPE = 0x80000000u;
inline constexpr std::int32_t INTERNET_SCHEME_UNKNOWN = -1;
inline constexpr std::int32_t INTERNET_SCHEME_FTP = 1;
inline constexpr std::int32_t INTERNET_SCHEME_HTTP = 3;
inline constexpr std::int32_t INTERNET_SCHEME_HTTPS = 4;
inline constexpr std::int32_t INTERNET_SCHEME_FILE = 5;
inline constexpr std::uint32_t INTERNET_MAX_URL_LENGTH = 2083;

// Extra info stamped on mouse messages synthesized from pen or touch input.
inline constexpr std::uint32_t MI_WP_SIGNATURE = 0xFF515700u;
inline constexpr std::uint32_t SIGNATURE_MASK = 0xFFFFFF00u;
// With the low seven bits cleared: a mouse message made from touch.
inline constexpr std::uint32_t MI_WP_TOUCH = 0xFF515780u;

}  // namespace win

// One operation per system call, same name, same meaning, same failure answers
// (0, false or null). Handles the system does not know give failure, never a crash.
// The few operations at the end of the list stand for a sequence of calls that the
// emulation carries out its own way (pumping, waiting, painting).
class IPlatform {
 public:
  virtual ~IPlatform() = default;

#define QX_PLATFORM_OP(result, name, parameters) virtual result name parameters = 0;
#include "platform/PlatformOperations.inc"
#undef QX_PLATFORM_OP
};

// The process-wide platform.
IPlatform& Platform();

// Replaces the process-wide platform (tests). Answers the one installed before, if it
// was installed this way; pass it back to restore it.
std::unique_ptr<IPlatform> SetPlatformForTesting(std::unique_ptr<IPlatform> platform);

}  // namespace qx
