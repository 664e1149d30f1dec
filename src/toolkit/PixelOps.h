#pragma once

// Premultiplied pixel arithmetic on packed 0xAARRGGBB words.

#include <cstdint>

namespace qx::pixel {

// Scales all four channels by f in 0..256.
inline std::uint32_t Scale(std::uint32_t c, std::uint32_t f) {
  std::uint32_t rb = (((c & 0x00FF00FFu) * f) >> 8) & 0x00FF00FFu;
  std::uint32_t ag = (((c >> 8) & 0x00FF00FFu) * f) & 0xFF00FF00u;
  return rb | ag;
}

// Source over destination.
inline std::uint32_t Over(std::uint32_t s, std::uint32_t d) {
  std::uint32_t a = s >> 24;
  if (a == 255) return s;
  if (a == 0) return d;
  return s + Scale(d, 256 - a);
}

inline std::uint32_t OpacityFactor(float opacity) {
  if (!(opacity > 0)) return 0;
  if (opacity >= 1) return 256;
  return static_cast<std::uint32_t>(opacity * 256.0f + 0.5f);
}

}  // namespace qx::pixel
