#pragma once

// A person's hands on a window, as the window system delivers them: mouse and touch
// messages at screen points, to the capture window or the window under the point, with
// the manual clock stepped between them so timers and animations run as they would.
// Each step is one call, so a recorded list of steps can drive it later.

#include <cstdint>
#include <functional>
#include <optional>

#include "platform/Platform.h"

namespace qx {

class TInputPath {
 public:
  // Where a tab stands on the screen, by its index in the strip; nullopt when unknown.
  using TTabLocator = std::function<std::optional<TPoint>(int index)>;

  // window: the one whose touch messages the strip reads. stepMs: clock time between events.
  explicit TInputPath(HWnd window, std::uint32_t stepMs = 16, TTabLocator locator = {});

  void MoveTo(TPoint screen);
  // Moves in steps of at most stride pixels from the last point, button held or not.
  void Glide(TPoint to, int stride = 12);
  void Press(TPoint screen);
  void Release(TPoint screen);
  // Press at from, glide to to with the button down, release there.
  void Drag(TPoint from, TPoint to, int stride = 12);
  // A wheel notch count (positive: away from the user) at a screen point.
  void Wheel(TPoint screen, int notches);

  // One finger: the touch message to the window and the mouse message the system makes of it.
  void TouchDown(TPoint screen);
  void TouchMove(TPoint screen);
  void TouchUp(TPoint screen);
  // Down at from, moves in steps of at most stride pixels to to, up there.
  void Swipe(TPoint from, TPoint to, int stride = 12);

  // The screen point of a tab by index, through the locator.
  std::optional<TPoint> Tab(int index) const;
  // Lets the clock run, delivering what is due.
  void Wait(std::uint32_t milliseconds);
  TPoint Last() const { return FLast; }

 private:
  void Mouse(std::uint32_t msg, TPoint screen, WParam keys, LParam extraInfo = 0);
  void Touch(std::uint32_t flags, TPoint screen);

  HWnd FWindow;
  std::uint32_t FStepMs;
  TTabLocator FLocator;
  TPoint FLast{-1, -1};
  bool FButtonDown = false;
};

}  // namespace qx
