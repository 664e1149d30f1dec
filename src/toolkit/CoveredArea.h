#pragma once

// The pixels that opaque controls painted later will cover, collected from the top
// of the z-order down, so that a control beneath them paints only what still shows.

#include <cstddef>
#include <vector>

#include "base/Rect.h"
#include "toolkit/Types.h"

namespace qx {

class TCoveredArea {
 public:
  // An absolute rectangle filled with opaque pixels.
  void Add(const TRectF& opaque);
  // The part of the absolute rectangle's pixels that may still show, with whole
  // pixel edges; empty when all of them are covered. A part that would not be one
  // rectangle is given whole.
  TRectF Uncovered(const TRectF& painted) const;

 private:
  // Neighbours in a row (the same top and bottom) merge, so a long stack of
  // overlapping controls stays a handful of rectangles.
  static constexpr std::size_t kMaxRects = 16;
  std::vector<TRect> FRects;
};

}  // namespace qx
