#pragma once

// Anti-aliased shapes for the skin generator: signed distance fields, one coverage
// value per pixel, straight colours blended source-over into a premultiplied bitmap.

#include <cstdint>
#include <functional>
#include <vector>

#include "toolkit/Bitmap.h"

namespace qx::skin {

struct TColor {
  float r = 0, g = 0, b = 0, a = 1;
};

TColor Rgb(std::uint32_t rgb, float alpha = 1);
TColor Mix(const TColor& a, const TColor& b, float t);
TColor WithAlpha(const TColor& c, float alpha);

struct TVec {
  float x = 0, y = 0;
};

// Distance from a point to the shape's edge, negative inside.
using TShape = std::function<float(float x, float y)>;
// Colour at a point (for gradients).
using TPaint = std::function<TColor(float x, float y)>;

TShape RoundRect(float left, float top, float right, float bottom, float radius);
TShape Circle(float cx, float cy, float radius);
TShape Segment(TVec a, TVec b, float thickness);
TShape Polygon(std::vector<TVec> points);
// The band of width thickness along the outline of shape.
TShape Outline(TShape shape, float thickness);
TShape Union(TShape a, TShape b);
TShape Subtract(TShape a, TShape b);
TShape Offset(TShape shape, float dx, float dy);
TShape Star(float cx, float cy, float outer, float inner, int points);

TPaint Solid(TColor c);
TPaint Vertical(TColor top, TColor bottom, float y0, float y1);

class TPainter {
 public:
  explicit TPainter(TBitmap& bitmap) : FBitmap(bitmap) {}
  void Fill(const TShape& shape, const TPaint& paint, float opacity = 1);
  void Fill(const TShape& shape, const TColor& colour, float opacity = 1) { Fill(shape, Solid(colour), opacity); }
  // A soft shadow: the shape blurred by distance over softness pixels.
  void Shadow(const TShape& shape, const TColor& colour, float softness);

 private:
  void Blend(int x, int y, const TColor& c, float coverage);
  TBitmap& FBitmap;
};

}  // namespace qx::skin
