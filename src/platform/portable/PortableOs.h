#pragma once

// Services of the in-process emulation that the real system has no call for:
// the clock, input injection, window pixels, and knobs for system values.
// Tests and hosts reach it through PortableOs(); the module itself only sees IPlatform.
//
// Threads work as on the system: a window belongs to the thread that made it, its
// messages queue there, and only that thread may destroy it. AdvanceClock and
// ProcessMessages serve the calling thread's queue and window timers; multimedia
// timer callbacks run on one thread of the emulation's own.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/Platform.h"

namespace qx {

enum class TClockMode {
  // Steady clock: timers fire from the pump and the multimedia thread in real time.
  Real,
  // Time moves only through AdvanceClock.
  Manual,
};

// A window's picture: 32-bit pixels, row after row, width * height of them.
struct TWindowPixels {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::vector<std::uint32_t> pixels;
};

struct TMessageBoxCall {
  HWnd hwnd = nullptr;
  std::u16string text;
  std::u16string caption;
  std::uint32_t type = 0;
};

// What a tooltip window was told, through TTM_* messages.
struct TTooltipTool {
  HWnd hwnd = nullptr;
  std::uintptr_t id = 0;
  std::uint32_t flags = 0;
  TRect rect;
  std::u16string text;
  bool textCallback = false;
};

struct TTooltipState {
  bool active = true;
  std::int32_t maxWidth = -1;
  std::int32_t pops = 0;
  std::vector<TTooltipTool> tools;
};

class IPortableOs : public IPlatform {
 public:
  virtual TClockMode ClockMode() = 0;
  // Milliseconds on the emulation's clock.
  virtual std::uint64_t Now() = 0;
  // Manual clock: steps through the due timers in time order. For each, the clock is set
  // to its due time; a window timer is dispatched here as WM_TIMER; a multimedia timer runs
  // on the multimedia thread and this thread waits for it to return; then the messages
  // posted to this thread are dispatched. Ends with the clock at now + ms and the queue
  // drained. On the real clock it only drains the queue.
  virtual void AdvanceClock(std::uint64_t milliseconds) = 0;

  // Delivers mouse input as the system would: to the capture window if there is one
  // (coordinates mapped to it), through the WH_MOUSE hooks, to the window procedure.
  // x and y are client coordinates of hwnd; for the wheel messages the lParam carries
  // screen coordinates like the system's. Updates the cursor, the button key states and
  // the message extra info. Answers the window procedure's result (0 when swallowed).
  virtual LResult InjectMouse(HWnd hwnd, std::uint32_t msg, std::int32_t x, std::int32_t y, WParam keys,
                              LParam extraInfo = 0) = 0;
  // Mouse input at a screen point, to the capture window or else the window under it
  // (WindowFromPoint). Over no window only the cursor moves. Answers 0 then.
  virtual LResult InjectMouseAtScreen(std::uint32_t msg, TPoint screen, WParam keys,
                                      LParam extraInfo = 0) = 0;
  // Delivers a key message to hwnd, or to the focus window when hwnd is null; keydown
  // and keyup update the key state of the virtual key.
  virtual LResult InjectKey(HWnd hwnd, std::uint32_t msg, std::int32_t virtualKey, LParam lParam = 0) = 0;
  // Touch points in hundredths of a screen pixel. A window registered for touch gets
  // WM_TOUCH; any other gets mouse messages for the primary point, marked as made from
  // touch in the extra info and the input source.
  virtual LResult InjectTouch(HWnd hwnd, const std::vector<TouchInput>& points) = 0;
  virtual void SetKeyState(std::int32_t virtualKey, bool down, bool toggled = false) = 0;

  // Pixel surfaces: the toolkit presents a window's picture, the simulator reads it.
  virtual bool SetWindowSurface(HWnd hwnd, std::int32_t width, std::int32_t height,
                                const std::uint32_t* pixels) = 0;
  virtual bool ReadWindowPixels(HWnd hwnd, TWindowPixels* out) = 0;

  // Makes a window look as if another process owned it.
  virtual bool SetWindowProcessId(HWnd hwnd, std::uint32_t processId) = 0;
  virtual void SetSystemMetric(std::int32_t index, std::int32_t value) = 0;
  virtual void SetDoubleClickTime(std::uint32_t milliseconds) = 0;
  virtual void SetLogPixelsY(std::int32_t dpi) = 0;
  // height as a LOGFONT height: negative for a character height.
  virtual void SetMessageFont(std::u16string faceName, std::int32_t height) = 0;
  // The locale values are given as LOCALE_* type and text.
  virtual void SetLocaleInfo(std::uint32_t type, std::u16string value) = 0;
  // Without it GetCurrentInputMessageSource fails, as on systems before it existed.
  virtual void SetInputMessageSourceAvailable(bool available) = 0;
  virtual void SetWin32Version(std::int32_t major, std::int32_t minor) = 0;
  virtual bool ReadTooltip(HWnd hwnd, TTooltipState* out) = 0;
  virtual void SetMessageBoxAnswer(std::int32_t answer) = 0;
  virtual std::vector<TMessageBoxCall> MessageBoxCalls() = 0;
  // Live windows and queued messages, to check for leaks.
  virtual std::size_t WindowCount() = 0;
  virtual std::size_t PendingMessageCount() = 0;
  // Registered window classes (not the system's own), live timers of both kinds and hooks.
  virtual std::vector<std::u16string> RegisteredClassNames() = 0;
  virtual std::size_t TimerCount() = 0;
  virtual std::size_t HookCount() = 0;
};

// The emulation behind Platform(); fails loudly on the real system.
IPortableOs& PortableOs();

}  // namespace qx
