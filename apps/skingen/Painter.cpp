#include "Painter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qx::skin {

TColor Rgb(std::uint32_t rgb, float alpha) {
  return {static_cast<float>((rgb >> 16) & 0xFF) / 255.0f, static_cast<float>((rgb >> 8) & 0xFF) / 255.0f,
          static_cast<float>(rgb & 0xFF) / 255.0f, alpha};
}

TColor Mix(const TColor& a, const TColor& b, float t) {
  return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t, a.a + (b.a - a.a) * t};
}

TColor WithAlpha(const TColor& c, float alpha) { return {c.r, c.g, c.b, alpha}; }

TShape RoundRect(float left, float top, float right, float bottom, float radius) {
  const float cx = (left + right) / 2, cy = (top + bottom) / 2;
  const float hx = (right - left) / 2, hy = (bottom - top) / 2;
  const float r = std::min({radius, hx, hy});
  return [=](float x, float y) {
    const float qx = std::fabs(x - cx) - hx + r, qy = std::fabs(y - cy) - hy + r;
    const float outside = std::hypot(std::max(qx, 0.0f), std::max(qy, 0.0f));
    return outside + std::min(std::max(qx, qy), 0.0f) - r;
  };
}

TShape Circle(float cx, float cy, float radius) {
  return [=](float x, float y) { return std::hypot(x - cx, y - cy) - radius; };
}

TShape Segment(TVec a, TVec b, float thickness) {
  return [=](float x, float y) {
    const float px = x - a.x, py = y - a.y, bx = b.x - a.x, by = b.y - a.y;
    const float len = bx * bx + by * by;
    const float h = len > 0 ? std::clamp((px * bx + py * by) / len, 0.0f, 1.0f) : 0.0f;
    return std::hypot(px - bx * h, py - by * h) - thickness / 2;
  };
}

TShape Polygon(std::vector<TVec> v) {
  return [v = std::move(v)](float x, float y) {
    const std::size_t n = v.size();
    float d = (x - v[0].x) * (x - v[0].x) + (y - v[0].y) * (y - v[0].y);
    float s = 1;
    for (std::size_t i = 0, j = n - 1; i < n; j = i, ++i) {
      const float ex = v[j].x - v[i].x, ey = v[j].y - v[i].y;
      const float wx = x - v[i].x, wy = y - v[i].y;
      const float h = std::clamp((wx * ex + wy * ey) / (ex * ex + ey * ey), 0.0f, 1.0f);
      const float bx = wx - ex * h, by = wy - ey * h;
      d = std::min(d, bx * bx + by * by);
      const bool c1 = y >= v[i].y, c2 = y < v[j].y, c3 = ex * wy > ey * wx;
      if ((c1 && c2 && c3) || (!c1 && !c2 && !c3)) s = -s;
    }
    return s * std::sqrt(d);
  };
}

TShape Outline(TShape shape, float thickness) {
  return [=](float x, float y) { return std::fabs(shape(x, y)) - thickness / 2; };
}

TShape Union(TShape a, TShape b) {
  return [=](float x, float y) { return std::min(a(x, y), b(x, y)); };
}

TShape Subtract(TShape a, TShape b) {
  return [=](float x, float y) { return std::max(a(x, y), -b(x, y)); };
}

TShape Offset(TShape shape, float dx, float dy) {
  return [=](float x, float y) { return shape(x - dx, y - dy); };
}

TShape Star(float cx, float cy, float outer, float inner, int points) {
  std::vector<TVec> v;
  for (int i = 0; i < points * 2; ++i) {
    const float angle = -std::numbers::pi_v<float> / 2 + static_cast<float>(i) * std::numbers::pi_v<float> /
                                                               static_cast<float>(points);
    const float r = i % 2 == 0 ? outer : inner;
    v.push_back({cx + r * std::cos(angle), cy + r * std::sin(angle)});
  }
  return Polygon(std::move(v));
}

TPaint Solid(TColor c) {
  return [=](float, float) { return c; };
}

TPaint Vertical(TColor top, TColor bottom, float y0, float y1) {
  return [=](float, float y) { return Mix(top, bottom, std::clamp((y - y0) / (y1 - y0), 0.0f, 1.0f)); };
}

void TPainter::Blend(int x, int y, const TColor& c, float coverage) {
  const float a = std::clamp(c.a * coverage, 0.0f, 1.0f);
  if (a <= 0) return;
  std::uint32_t& pixel = FBitmap.Bits()[static_cast<std::size_t>(y) * static_cast<std::size_t>(FBitmap.Width()) +
                                        static_cast<std::size_t>(x)];
  const float da = static_cast<float>(pixel >> 24) / 255.0f;
  const float dr = static_cast<float>((pixel >> 16) & 0xFF) / 255.0f;
  const float dg = static_cast<float>((pixel >> 8) & 0xFF) / 255.0f;
  const float db = static_cast<float>(pixel & 0xFF) / 255.0f;
  const float k = 1 - a;
  auto byte = [](float v) { return static_cast<std::uint32_t>(std::lround(std::clamp(v, 0.0f, 1.0f) * 255.0f)); };
  pixel = (byte(a + da * k) << 24) | (byte(c.r * a + dr * k) << 16) | (byte(c.g * a + dg * k) << 8) |
          byte(c.b * a + db * k);
}

void TPainter::Fill(const TShape& shape, const TPaint& paint, float opacity) {
  for (int y = 0; y < FBitmap.Height(); ++y) {
    for (int x = 0; x < FBitmap.Width(); ++x) {
      const float px = static_cast<float>(x) + 0.5f, py = static_cast<float>(y) + 0.5f;
      const float coverage = std::clamp(0.5f - shape(px, py), 0.0f, 1.0f);
      if (coverage > 0) Blend(x, y, paint(px, py), coverage * opacity);
    }
  }
  FBitmap.BitmapChanged();
}

void TPainter::Shadow(const TShape& shape, const TColor& colour, float softness) {
  for (int y = 0; y < FBitmap.Height(); ++y) {
    for (int x = 0; x < FBitmap.Width(); ++x) {
      const float d = shape(static_cast<float>(x) + 0.5f, static_cast<float>(y) + 0.5f);
      const float t = std::clamp(1 - d / softness, 0.0f, 1.0f);
      if (t > 0) Blend(x, y, colour, t * t * (3 - 2 * t));
    }
  }
  FBitmap.BitmapChanged();
}

}  // namespace qx::skin
