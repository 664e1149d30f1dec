#pragma once

// Geometry, colours and errors shared by every part of the toolkit.
// Coordinates are single-precision floats in logical pixels.

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace qx {

// Straight (not premultiplied) colour, 0xAARRGGBB.
using TAlphaColor = std::uint32_t;

namespace TAlphaColors {
inline constexpr TAlphaColor Null = 0x00000000u;
inline constexpr TAlphaColor Black = 0xFF000000u;
inline constexpr TAlphaColor White = 0xFFFFFFFFu;
inline constexpr TAlphaColor Red = 0xFFFF0000u;
inline constexpr TAlphaColor Lime = 0xFF00FF00u;
inline constexpr TAlphaColor Blue = 0xFF0000FFu;
}  // namespace TAlphaColors

struct TPointF {
  float X = 0;
  float Y = 0;
  constexpr TPointF() = default;
  constexpr TPointF(float x, float y) : X(x), Y(y) {}
  constexpr TPointF operator+(TPointF o) const { return {X + o.X, Y + o.Y}; }
  constexpr TPointF operator-(TPointF o) const { return {X - o.X, Y - o.Y}; }
  constexpr bool operator==(const TPointF&) const = default;
};

struct TSizeF {
  float cx = 0;
  float cy = 0;
  constexpr bool operator==(const TSizeF&) const = default;
};

struct TRectF {
  float Left = 0;
  float Top = 0;
  float Right = 0;
  float Bottom = 0;
  constexpr TRectF() = default;
  constexpr TRectF(float l, float t, float r, float b) : Left(l), Top(t), Right(r), Bottom(b) {}
  static constexpr TRectF FromSize(float x, float y, float w, float h) { return {x, y, x + w, y + h}; }
  constexpr float Width() const { return Right - Left; }
  constexpr float Height() const { return Bottom - Top; }
  constexpr bool IsEmpty() const { return !(Right > Left && Bottom > Top); }
  constexpr bool Contains(TPointF p) const { return p.X >= Left && p.X < Right && p.Y >= Top && p.Y < Bottom; }
  constexpr TRectF Offset(float dx, float dy) const { return {Left + dx, Top + dy, Right + dx, Bottom + dy}; }
  constexpr TRectF Intersect(const TRectF& o) const {
    TRectF r{std::max(Left, o.Left), std::max(Top, o.Top), std::min(Right, o.Right), std::min(Bottom, o.Bottom)};
    if (r.IsEmpty()) return {};
    return r;
  }
  constexpr TRectF Union(const TRectF& o) const {
    if (IsEmpty()) return o;
    if (o.IsEmpty()) return *this;
    return {std::min(Left, o.Left), std::min(Top, o.Top), std::max(Right, o.Right), std::max(Bottom, o.Bottom)};
  }
  constexpr bool operator==(const TRectF&) const = default;
};

// Every error the toolkit raises derives from this one.
class EToolkitError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A picture that cannot be read or written: damaged, truncated, unknown format.
class EInvalidImage : public EToolkitError {
 public:
  using EToolkitError::EToolkitError;
};

// A stored layout with a syntax error, an unknown class or an unknown property.
class EStoredLayoutError : public EToolkitError {
 public:
  using EToolkitError::EToolkitError;
};

// A property or service asked for by name that does not exist.
class EPropertyError : public EToolkitError {
 public:
  using EToolkitError::EToolkitError;
};

class EUnsupportedPlatformService : public EToolkitError {
 public:
  explicit EUnsupportedPlatformService(const std::string& service)
      : EToolkitError("Unsupported platform service: " + service) {}
};

}  // namespace qx
