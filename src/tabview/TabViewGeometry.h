#pragma once

// 64-bit geometry on which the strip's layout runs. The controls work in single
// precision; the conversion happens where attributes reach them.

#include "toolkit/Types.h"

namespace qx {

struct TPointD {
  double X = 0;
  double Y = 0;
  constexpr TPointD() = default;
  constexpr TPointD(double x, double y) : X(x), Y(y) {}
  constexpr bool operator==(const TPointD&) const = default;
};

struct TSizeD {
  double cx = 0;
  double cy = 0;
  constexpr TSizeD() = default;
  constexpr TSizeD(double w, double h) : cx(w), cy(h) {}
  constexpr bool operator==(const TSizeD&) const = default;
};

struct TRectD {
  double Left = 0;
  double Top = 0;
  double Right = 0;
  double Bottom = 0;

  constexpr TRectD() = default;
  // From a corner pair.
  constexpr TRectD(const TPointD& topLeft, const TPointD& bottomRight)
      : Left(topLeft.X), Top(topLeft.Y), Right(bottomRight.X), Bottom(bottomRight.Y) {}
  // From left, top, width and height, the way the layout builds frames.
  static constexpr TRectD FromBounds(double left, double top, double width, double height) {
    return TRectD(TPointD(left, top), TPointD(left + width, top + height));
  }

  constexpr double Width() const { return Right - Left; }
  constexpr double Height() const { return Bottom - Top; }
  // The left edge stays; the right follows.
  constexpr void SetWidth(double value) { Right = Left + value; }
  constexpr TSizeD Size() const { return TSizeD(Width(), Height()); }
  constexpr TPointD TopLeft() const { return TPointD(Left, Top); }

  constexpr void Offset(double dx, double dy) {
    Left += dx;
    Right += dx;
    Top += dy;
    Bottom += dy;
  }
  constexpr void SetLocation(const TPointD& point) { Offset(point.X - Left, point.Y - Top); }

  // Exact comparison: hiding relies on frames being bit-for-bit equal.
  constexpr bool operator==(const TRectD&) const = default;
};

}  // namespace qx
