#pragma once

// The in-process window system: one object holds every window, queue and timer,
// so a host and the module it loads can share it through one pointer. Its operations
// are defined in the PortableOs*.cpp files beside this one, one area each.

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

#include "platform/portable/PortableOs.h"

namespace qx {

class TPortableOs final : public IPortableOs {
 public:
  explicit TPortableOs(TClockMode mode = TClockMode::Manual, std::uint64_t startMilliseconds = 0);
  ~TPortableOs() override;
  TPortableOs(const TPortableOs&) = delete;
  TPortableOs& operator=(const TPortableOs&) = delete;

  // IPlatform
#define QX_PLATFORM_OP(result, name, parameters) result name parameters override;
#include "platform/PlatformOperations.inc"
#undef QX_PLATFORM_OP

  // IPortableOs
  TClockMode ClockMode() override { return FMode; }
  std::uint64_t Now() override;
  void AdvanceClock(std::uint64_t milliseconds) override;
  LResult InjectMouse(HWnd hwnd, std::uint32_t msg, std::int32_t x, std::int32_t y, WParam keys,
                      LParam extraInfo = 0) override;
  LResult InjectMouseAtScreen(std::uint32_t msg, TPoint screen, WParam keys, LParam extraInfo = 0) override;
  LResult InjectKey(HWnd hwnd, std::uint32_t msg, std::int32_t virtualKey, LParam lParam = 0) override;
  LResult InjectTouch(HWnd hwnd, const std::vector<TouchInput>& points) override;
  void SetKeyState(std::int32_t virtualKey, bool down, bool toggled = false) override;
  bool SetWindowSurface(HWnd hwnd, std::int32_t width, std::int32_t height,
                        const std::uint32_t* pixels) override;
  bool ReadWindowPixels(HWnd hwnd, TWindowPixels* out) override;
  bool SetWindowProcessId(HWnd hwnd, std::uint32_t processId) override;
  void SetSystemMetric(std::int32_t index, std::int32_t value) override;
  void SetDoubleClickTime(std::uint32_t milliseconds) override;
  void SetLogPixelsY(std::int32_t dpi) override;
  void SetMessageFont(std::u16string faceName, std::int32_t height) override;
  void SetLocaleInfo(std::uint32_t type, std::u16string value) override;
  void SetInputMessageSourceAvailable(bool available) override;
  void SetWin32Version(std::int32_t major, std::int32_t minor) override;
  bool ReadTooltip(HWnd hwnd, TTooltipState* out) override;
  void SetMessageBoxAnswer(std::int32_t answer) override;
  std::vector<TMessageBoxCall> MessageBoxCalls() override;
  std::size_t WindowCount() override;
  std::size_t PendingMessageCount() override;
  std::vector<std::u16string> RegisteredClassNames() override;
  std::size_t TimerCount() override;
  std::size_t HookCount() override;

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
  bool TakeMessage(TLock& lock, Msg* out, HWnd hwnd, std::uint32_t filterMin, std::uint32_t filterMax,
                   bool remove);
  void ApplyWindowPos(TWindow& window, WindowPos& pos);
  void ReorderLocked(TWindow& window, HWnd insertAfter);
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
  std::u16string FMessageFontFace = u"Segoe UI";
  std::int32_t FMessageFontHeight = -12;
  std::map<std::int32_t, std::int32_t> FMetrics;
  std::map<std::uint32_t, std::u16string> FLocale;
  std::map<std::u16string, std::uint32_t> FClipboardFormats;  // by lower-case name
  std::int32_t FMessageBoxAnswer = 1;
  std::vector<TMessageBoxCall> FMessageBoxCalls;
  const std::uint32_t FProcessId;
};

}  // namespace qx
