#pragma once

// What a tab needs of the strip's scroll box: its place for coordinates, a full
// refresh, and the inertia that presses on a tab feed. Points are in the scroll
// box's local coordinates.

#include "toolkit/Control.h"

namespace qx {

class ITabImageScrollBox {
 public:
  virtual TControl* ScrollBoxControl() = 0;
  // Whether the mouse is inside the scroll box's area now.
  virtual bool MouseInScrollBox() = 0;
  virtual void PerfectRefresh() = 0;
  virtual void AniMouseDown(float x, float y) = 0;
  virtual void AniMouseMove(float x, float y) = 0;
  virtual void AniMouseUp(float x, float y) = 0;
  virtual void AniMouseLeave() = 0;

 protected:
  ~ITabImageScrollBox() = default;
};

}  // namespace qx
