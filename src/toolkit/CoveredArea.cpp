#include "toolkit/CoveredArea.h"

#include <algorithm>
#include <cmath>

namespace qx {

namespace {

// A pixel is painted when its centre lies inside. An edge close to a half pixel
// may round either way once offsets are summed in another order, so it is taken
// at the side that errs towards painting: too little cover only costs paint.
bool NearHalf(float v) { return std::fabs(v - std::floor(v) - 0.5f) < 1e-3f; }

int EdgeInward(float v, bool leading) {
  if (!NearHalf(v)) return static_cast<int>(std::lround(v));
  return static_cast<int>(std::floor(v)) + (leading ? 1 : 0);
}

int EdgeOutward(float v, bool leading) { return EdgeInward(v, !leading); }

TRect InnerPixels(const TRectF& r) {
  return {EdgeInward(r.Left, true), EdgeInward(r.Top, true), EdgeInward(r.Right, false),
          EdgeInward(r.Bottom, false)};
}

TRect OuterPixels(const TRectF& r) {
  return {EdgeOutward(r.Left, true), EdgeOutward(r.Top, true), EdgeOutward(r.Right, false),
          EdgeOutward(r.Bottom, false)};
}

bool SameRowTouching(const TRect& a, const TRect& b) {
  return a.Top == b.Top && a.Bottom == b.Bottom && a.Left <= b.Right && b.Left <= a.Right;
}

}  // namespace

void TCoveredArea::Add(const TRectF& opaque) {
  TRect r = InnerPixels(opaque);
  if (r.Right <= r.Left || r.Bottom <= r.Top) return;
  // A grown rectangle may touch one of the row it missed before: merge until none does.
  for (bool merged = true; merged;) {
    merged = false;
    for (auto it = FRects.begin(); it != FRects.end(); ++it)
      if (SameRowTouching(*it, r)) {
        r.Left = std::min(r.Left, it->Left);
        r.Right = std::max(r.Right, it->Right);
        FRects.erase(it);
        merged = true;
        break;
      }
  }
  if (FRects.size() < kMaxRects) FRects.push_back(r);
}

TRectF TCoveredArea::Uncovered(const TRectF& painted) const {
  TRect p = OuterPixels(painted);
  for (const TRect& c : FRects) {
    if (c.Top > p.Top || c.Bottom < p.Bottom) continue;
    const bool coversLeft = c.Left <= p.Left && c.Right > p.Left;
    const bool coversRight = c.Right >= p.Right && c.Left < p.Right;
    if (coversLeft && coversRight) return {};
    if (coversLeft) p.Left = c.Right;
    if (coversRight) p.Right = c.Left;
  }
  return {static_cast<float>(p.Left), static_cast<float>(p.Top), static_cast<float>(p.Right),
          static_cast<float>(p.Bottom)};
}

}  // namespace qx
