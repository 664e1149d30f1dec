#pragma once

// The real system: every operation is the Win32 call of the same name.

#include "platform/Platform.h"

namespace qx {

class TWin32Platform final : public IPlatform {
 public:
  std::uint16_t RegisterClassW(const char16_t* className, WndProc wndProc) override;
  bool UnregisterClassW(const char16_t* className) override;
  bool GetClassInfoW(const char16_t* className, WndProc* wndProc) override;
  HWnd CreateWindowExW(std::uint32_t exStyle, const char16_t* className, const char16_t* title, std::uint32_t style,
                       std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height, HWnd parent,
                       void* userData) override;
  bool DestroyWindow(HWnd hwnd) override;
  bool IsWindow(HWnd hwnd) override;
  LResult DefWindowProcW(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) override;
  WndProc DefWindowProcAddress() override;
  LResult CallWindowProcW(WndProc proc, HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) override;
  std::int32_t GetWindowLongW(HWnd hwnd, std::int32_t index) override;
  std::int32_t SetWindowLongW(HWnd hwnd, std::int32_t index, std::int32_t value) override;
  LongPtr GetWindowLongPtrW(HWnd hwnd, std::int32_t index) override;
  LongPtr SetWindowLongPtrW(HWnd hwnd, std::int32_t index, LongPtr value) override;
  HWnd SetParent(HWnd child, HWnd newParent) override;
  HWnd GetParent(HWnd hwnd) override;
  HWnd GetWindow(HWnd hwnd, std::uint32_t relation) override;
  HWnd GetDesktopWindow() override;
  bool IsChild(HWnd parent, HWnd hwnd) override;
  bool SetWindowPos(HWnd hwnd, HWnd insertAfter, std::int32_t x, std::int32_t y, std::int32_t cx, std::int32_t cy,
                    std::uint32_t flags) override;
  bool MoveWindow(HWnd hwnd, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                  bool repaint) override;
  bool GetWindowRect(HWnd hwnd, TRect* rect) override;
  bool GetClientRect(HWnd hwnd, TRect* rect) override;
  bool ShowWindow(HWnd hwnd, std::int32_t cmdShow) override;
  bool IsWindowVisible(HWnd hwnd) override;
  bool ClientToScreen(HWnd hwnd, TPoint* point) override;
  bool ScreenToClient(HWnd hwnd, TPoint* point) override;
  HWnd WindowFromPoint(TPoint screenPoint) override;
  bool InvalidateRect(HWnd hwnd, const TRect* rect, bool erase) override;
  bool UpdateWindow(HWnd hwnd) override;
  HWnd FindWindowW(const char16_t* className, const char16_t* title) override;
  bool EnumWindows(EnumWindowsProc callback, LParam lParam) override;
  std::int32_t GetClassNameW(HWnd hwnd, char16_t* buffer, std::int32_t maxCount) override;
  std::int32_t GetWindowTextW(HWnd hwnd, char16_t* buffer, std::int32_t maxCount) override;
  std::int32_t GetWindowTextLengthW(HWnd hwnd) override;
  bool SetWindowTextW(HWnd hwnd, const char16_t* text) override;
  std::uint32_t GetWindowThreadProcessId(HWnd hwnd, std::uint32_t* processId) override;
  std::uint32_t GetCurrentProcessId() override;
  std::uint32_t GetCurrentThreadId() override;
  bool PostMessageW(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) override;
  bool PostThreadMessageW(std::uint32_t threadId, std::uint32_t msg, WParam wParam, LParam lParam) override;
  LResult SendMessageW(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) override;
  std::int32_t GetMessageW(Msg* msg, HWnd hwnd, std::uint32_t filterMin, std::uint32_t filterMax) override;
  bool PeekMessageW(Msg* msg, HWnd hwnd, std::uint32_t filterMin, std::uint32_t filterMax,
                    std::uint32_t removeMsg) override;
  bool TranslateMessage(const Msg* msg) override;
  LResult DispatchMessageW(const Msg* msg) override;
  void PostQuitMessage(std::int32_t exitCode) override;
  LParam GetMessageExtraInfo() override;
  std::uintptr_t SetTimer(HWnd hwnd, std::uintptr_t id, std::uint32_t elapse) override;
  bool KillTimer(HWnd hwnd, std::uintptr_t id) override;
  std::uint32_t timeSetEvent(std::uint32_t delay, std::uint32_t resolution, TimerProc proc, ULongPtr user,
                             std::uint32_t flags) override;
  std::uint32_t timeKillEvent(std::uint32_t id) override;
  std::uint32_t timeGetTime() override;
  std::uint32_t GetTickCount() override;
  void Sleep(std::uint32_t milliseconds) override;
  std::int16_t GetKeyState(std::int32_t virtualKey) override;
  bool GetCursorPos(TPoint* point) override;
  bool SetCursorPos(std::int32_t x, std::int32_t y) override;
  std::uint32_t GetDoubleClickTime() override;
  HWnd SetCapture(HWnd hwnd) override;
  bool ReleaseCapture() override;
  HWnd GetCapture() override;
  bool TrackMouseEvent(TrackMouseEventInfo* info) override;
  HWnd SetFocus(HWnd hwnd) override;
  HWnd GetFocus() override;
  HHook SetWindowsHookExW(std::int32_t idHook, HookProc proc, void* module, std::uint32_t threadId) override;
  bool UnhookWindowsHookEx(HHook hook) override;
  LResult CallNextHookEx(HHook hook, std::int32_t code, WParam wParam, LParam lParam) override;
  bool RegisterTouchWindow(HWnd hwnd, std::uint32_t flags) override;
  bool UnregisterTouchWindow(HWnd hwnd) override;
  bool IsTouchWindow(HWnd hwnd, std::uint32_t* flags) override;
  bool GetTouchInputInfo(HTouchInput input, std::uint32_t count, TouchInput* inputs, std::int32_t size) override;
  bool CloseTouchInputHandle(HTouchInput input) override;
  bool GetCurrentInputMessageSource(InputMessageSource* source) override;
  bool InitCommonControlsEx(std::uint32_t classes) override;
  bool InternetCrackUrlW(const char16_t* url, std::uint32_t urlLength, std::uint32_t flags,
                         UrlComponentsW* components) override;
  bool CheckWin32Version(std::int32_t major, std::int32_t minor) override;
  std::int32_t GetSystemMetrics(std::int32_t index) override;
  std::int32_t GetLogPixelsY() override;
  std::int32_t MessageBoxW(HWnd hwnd, const char16_t* text, const char16_t* caption, std::uint32_t type) override;
  std::int32_t GetLocaleInfoW(std::uint32_t locale, std::uint32_t type, char16_t* buffer,
                              std::int32_t maxCount) override;
};

}  // namespace qx
