#pragma once

// A person's hands on the simulated browser for the scenario runner: mouse, wheel and
// touch at points of the host's main window, delivered the way the window system would.

#include <cstdint>
#include <memory>

#include "platform/Platform.h"

namespace qx {

class IScenarioHands {
 public:
  virtual ~IScenarioHands() = default;
  virtual void Move(TPoint at) = 0;
  // Moves in steps of at most stride pixels from the last point, button held or not.
  virtual void Glide(TPoint to, int stride) = 0;
  virtual void Press(TPoint at) = 0;
  virtual void Release(TPoint at) = 0;
  // Positive notches turn away from the user.
  virtual void Wheel(TPoint at, int notches) = 0;
  virtual void TouchDown(TPoint at) = 0;
  virtual void TouchMove(TPoint at) = 0;
  virtual void TouchUp(TPoint at) = 0;
  // Down at from, moves in steps of at most stride pixels, up at to.
  virtual void Swipe(TPoint from, TPoint to, int stride) = 0;
};

// mainWindow: whose client pixels the points are; touchWindow: the one whose touch
// messages are read (the strip's); stepMs: clock time after each event. Null where the
// window system takes no injected input.
std::unique_ptr<IScenarioHands> MakeScenarioHands(HWnd mainWindow, HWnd touchWindow, std::uint32_t stepMs);

}  // namespace qx
