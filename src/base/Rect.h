#pragma once

#include <cstdint>

namespace qx {

// Integer rectangle of window coordinates.
struct TRect {
  std::int32_t Left = 0;
  std::int32_t Top = 0;
  std::int32_t Right = 0;
  std::int32_t Bottom = 0;

  constexpr std::int32_t Width() const { return Right - Left; }
  constexpr std::int32_t Height() const { return Bottom - Top; }
  friend constexpr bool operator==(const TRect&, const TRect&) = default;
};

struct TPoint {
  std::int32_t X = 0;
  std::int32_t Y = 0;
  friend constexpr bool operator==(const TPoint&, const TPoint&) = default;
};

}  // namespace qx
