#pragma once

// The in-process window system: one object holds every window, queue and timer,
// so a host and the module it loads can share it through one pointer.

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "platform/PortableOs.h"

namespace qx {

class TPortableOs final : public IPortableOs {
 public:
  explicit TPortableOs(TClockMode mode = TClockMode::Manual, std::uint64_t startMilliseconds = 0);
  ~TPortableOs() override;
  TPortableOs(const TPortableOs&) = delete;
  TPortableOs& operator=(const TPortableOs&) = delete;

  // IPlatform
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

  // IPortableOs
  TClockMode ClockMode() override { return FMode; }
  std::uint64_t Now() override;
  void AdvanceClock(std::uint64_t milliseconds) override;
  std::size_t ProcessMessages() override;
  LResult InjectMouse(HWnd hwnd, std::uint32_t msg, std::int32_t x, std::int32_t y, WParam keys,
                      LParam extraInfo = 0) override;
  LResult InjectMouseAtScreen(std::uint32_t msg, TPoint screen, WParam keys, LParam extraInfo = 0) override;
  LResult InjectKey(HWnd hwnd, std::uint32_t msg, std::int32_t virtualKey, LParam lParam = 0) override;
  LResult InjectTouch(HWnd hwnd, const std::vector<TouchInput>& points) override;
  void SetKeyState(std::int32_t virtualKey, bool down, bool toggled = false) override;
  bool SetWindowSurface(HWnd hwnd, std::int32_t width, std::int32_t height, const std::uint32_t* pixels) override;
  bool ReadWindowPixels(HWnd hwnd, TWindowPixels* out) override;
  bool SetWindowProcessId(HWnd hwnd, std::uint32_t processId) override;
  void SetSystemMetric(std::int32_t index, std::int32_t value) override;
  void SetDoubleClickTime(std::uint32_t milliseconds) override;
  void SetLogPixelsY(std::int32_t dpi) override;
  void SetLocaleInfo(std::uint32_t type, std::u16string value) override;
  void SetInputMessageSourceAvailable(bool available) override;
  void SetWin32Version(std::int32_t major, std::int32_t minor) override;
  bool ReadTooltip(HWnd hwnd, TTooltipState* out) override;
  void SetMessageBoxAnswer(std::int32_t answer) override;
  std::vector<TMessageBoxCall> MessageBoxCalls() override;
  std::size_t WindowCount() override;
  std::size_t PendingMessageCount() override;

  // The built-in tooltip class's procedure works here.
  LResult TooltipMessage(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam);

 private:
  struct TWindowClass {
    std::u16string name;
    WndProc proc = nullptr;
    std::uint16_t atom = 0;
    bool system = false;
  };

  struct TWindow {
    HWnd handle = nullptr;
    std::u16string className;
    std::u16string title;
    WndProc proc = nullptr;
    std::uint32_t style = 0;
    std::uint32_t exStyle = 0;
    LongPtr userData = 0;
    LongPtr id = 0;
    // Parent-client coordinates for a window with a parent, screen coordinates otherwise.
    TRect rect;
    HWnd parent = nullptr;
    HWnd owner = nullptr;
    std::vector<HWnd> children;  // front to back
    std::uint32_t threadId = 0;
    std::uint32_t processId = 0;
    bool messageOnly = false;
    bool desktop = false;
    bool destroying = false;
    bool dirty = false;
    bool touch = false;
    std::uint32_t touchFlags = 0;
    TWindowPixels surface;
    std::unique_ptr<TTooltipState> tooltip;
  };

  struct TSentMessage {
    HWnd hwnd = nullptr;
    std::uint32_t msg = 0;
    WParam wParam = 0;
    LParam lParam = 0;
    LResult result = 0;
    bool done = false;
  };

  struct TQueuedMessage {
    Msg msg;
    LParam extraInfo = 0;
  };

  struct TThreadState {
    std::deque<TQueuedMessage> posted;
    std::deque<std::shared_ptr<TSentMessage>> sent;
    LParam extraInfo = 0;
    InputMessageSource source;
  };

  struct TWindowTimer {
    HWnd hwnd = nullptr;
    std::uintptr_t id = 0;
    std::uint32_t interval = 0;
    std::uint64_t due = 0;
    std::uint64_t order = 0;
  };

  struct TMMTimer {
    std::uint32_t id = 0;
    std::uint32_t delay = 0;
    TimerProc proc = nullptr;
    ULongPtr user = 0;
    bool periodic = false;
    std::uint64_t due = 0;
    std::uint64_t order = 0;
  };

  struct THook {
    HHook handle = nullptr;
    std::int32_t kind = 0;
    HookProc proc = nullptr;
    std::uint32_t threadId = 0;
  };

  struct TMMRequest {
    std::uint64_t serial = 0;
    TimerProc proc = nullptr;
    std::uint32_t id = 0;
    ULongPtr user = 0;
  };

  using TLock = std::unique_lock<std::mutex>;

  static std::uint32_t ThisThreadId();
  static std::u16string ClassKey(const char16_t* name);
  std::uint64_t NowLocked() const;

  TWindow* Find(HWnd hwnd);
  TWindow* FindLive(HWnd hwnd);
  TThreadState& ThreadState(std::uint32_t threadId);
  std::vector<HWnd>* SiblingList(TWindow& window);
  TPoint ClientOrigin(const TWindow& window);
  bool IsDescendant(HWnd ancestor, HWnd hwnd);
  bool VisibleLocked(HWnd hwnd);
  void CollectSubtree(HWnd hwnd, std::vector<HWnd>& out);
  void CollectHitCandidates(const std::vector<HWnd>& siblings, TPoint screen, std::vector<HWnd>& out);

  // Calls a window procedure without holding the lock, after the WH_CALLWNDPROC hooks.
  LResult SendDirect(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam);
  LResult CallProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam);
  LResult RunHooks(std::int32_t kind, std::int32_t code, WParam wParam, LParam lParam);
  void ReceiveSentMessages(TLock& lock);
  bool TakeMessage(TLock& lock, Msg* out, HWnd hwnd, std::uint32_t filterMin, std::uint32_t filterMax, bool remove);
  void ApplyWindowPos(TWindow& window, WindowPos& pos);
  void ReorderLocked(TWindow& window, HWnd insertAfter);
  void DestroyRecursive(HWnd hwnd);
  void ReleaseWindowLocked(HWnd hwnd);
  void StartMMThreadLocked();
  void MMThreadMain();
  void RunMMOnThread(TLock& lock, TimerProc proc, std::uint32_t id, ULongPtr user);
  LResult DeliverInput(Msg msg, LParam extraInfo, InputMessageSource source);
  void ForgetInputLocked();
  // Posts WM_MOUSELEAVE to the tracked window when mouse input goes to another.
  void LeaveTrackedLocked(HWnd target);

  const TClockMode FMode;
  const std::chrono::steady_clock::time_point FEpoch;
  const std::uint64_t FStartMs;
  std::uint64_t FManualNow;

  std::mutex FLock;
  std::condition_variable FWake;    // queues, sent messages, multimedia completion
  std::condition_variable FMMWake;  // multimedia thread

  std::map<std::u16string, TWindowClass> FClasses;
  std::uint16_t FNextAtom = 0xC000;
  std::unordered_map<std::uintptr_t, std::unique_ptr<TWindow>> FWindows;
  std::vector<HWnd> FTopLevel;     // front to back
  std::vector<HWnd> FMessageOnly;  // creation order
  HWnd FDesktop = nullptr;
  std::unordered_map<std::uint32_t, TThreadState> FThreads;

  std::vector<TWindowTimer> FWindowTimers;
  std::vector<TMMTimer> FMMTimers;
  std::uint64_t FTimerOrder = 0;
  std::uint32_t FNextMMId = 1;
  std::thread FMMThread;
  bool FStopping = false;
  TMMRequest FMMRequest;
  std::uint64_t FMMTaken = 0;
  std::uint64_t FMMDone = 0;

  std::vector<THook> FHooks;  // most recent first
  std::uintptr_t FNextHook = 0x100;

  std::map<std::uintptr_t, std::vector<TouchInput>> FTouchInputs;
  std::uintptr_t FNextTouchInput = 0x2000;
  bool FInputSourceAvailable = true;
  std::int32_t FVersionMajor = 10;
  std::int32_t FVersionMinor = 0;

  std::array<std::uint8_t, 256> FKeys{};  // bit 0 down, bit 1 toggled
  TPoint FCursor;
  HWnd FCapture = nullptr;
  HWnd FTrackLeave = nullptr;
  HWnd FFocus = nullptr;
  std::uint32_t FDoubleClickTime = 500;
  std::int32_t FLogPixelsY = 96;
  std::map<std::int32_t, std::int32_t> FMetrics;
  std::map<std::uint32_t, std::u16string> FLocale;
  std::int32_t FMessageBoxAnswer = 1;
  std::vector<TMessageBoxCall> FMessageBoxCalls;
  const std::uint32_t FProcessId;
};

}  // namespace qx
