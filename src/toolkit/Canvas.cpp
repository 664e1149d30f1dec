#include "toolkit/Canvas.h"

#include <cmath>

#include "toolkit/PixelOps.h"
#include "toolkit/TextLayout.h"

namespace qx {

using pixel::OpacityFactor;
using pixel::Over;
using pixel::Scale;

namespace {
// Weights in 0..256; exact for equal corners, so a solid picture stays solid.
inline std::uint32_t Bilinear(std::uint32_t p00, std::uint32_t p10, std::uint32_t p01, std::uint32_t p11,
                              std::uint32_t wx, std::uint32_t wy) {
  std::uint32_t out = 0;
  for (int s = 0; s < 32; s += 8) {
    std::uint32_t top = ((p00 >> s) & 0xFF) * (256 - wx) + ((p10 >> s) & 0xFF) * wx;
    std::uint32_t bottom = ((p01 >> s) & 0xFF) * (256 - wx) + ((p11 >> s) & 0xFF) * wx;
    out |= ((top * (256 - wy) + bottom * wy + 32768) >> 16) << s;
  }
  return out;
}
}  // namespace

TCanvas::TCanvas(TBitmap* bitmap) : FBitmap(bitmap) { ResetClip(); }

bool TCanvas::BeginScene() {
  if (FSceneDepth++ == 0) {
    FOffset = {};
    ResetClip();
  }
  return !FBitmap->IsEmpty();
}

void TCanvas::EndScene() {
  if (FSceneDepth > 0 && --FSceneDepth == 0) FBitmap->BitmapChanged();
}

void TCanvas::ResetClip() {
  FClip = TRectF(0, 0, static_cast<float>(FBitmap->Width()), static_cast<float>(FBitmap->Height()));
}

void TCanvas::SetClipRect(const TRectF& clip) {
  TRectF all(0, 0, static_cast<float>(FBitmap->Width()), static_cast<float>(FBitmap->Height()));
  FClip = clip.Intersect(all);
}

void TCanvas::IntersectClipRect(const TRectF& rect) {
  FClip = FClip.Intersect(rect.Offset(FOffset.X, FOffset.Y));
}

TRect TCanvas::ToPixels(const TRectF& rect) const {
  TRectF r = rect.Offset(FOffset.X, FOffset.Y).Intersect(FClip);
  if (r.IsEmpty()) return {0, 0, 0, 0};
  // A pixel belongs to a rectangle when its centre lies inside.
  return {static_cast<int>(std::lround(r.Left)), static_cast<int>(std::lround(r.Top)),
          static_cast<int>(std::lround(r.Right)), static_cast<int>(std::lround(r.Bottom))};
}

void TCanvas::Clear(TAlphaColor color) {
  TRect p = ToPixels(TRectF(-FOffset.X, -FOffset.Y, -FOffset.X + static_cast<float>(Width()),
                            -FOffset.Y + static_cast<float>(Height())));
  std::uint32_t c = PremultiplyColor(color);
  for (int y = p.Top; y < p.Bottom; ++y) {
    std::uint32_t* line = FBitmap->Bits() + static_cast<std::size_t>(y) * Width();
    std::fill(line + p.Left, line + p.Right, c);
  }
}

void TCanvas::FillRect(const TRectF& rect, float opacity) {
  if (Fill.Kind == TBrushKind::None) return;
  FillRect(rect, Fill.Color, opacity);
}

void TCanvas::FillRect(const TRectF& rect, TAlphaColor color, float opacity) {
  TRect p = ToPixels(rect);
  std::uint32_t c = Scale(PremultiplyColor(color), OpacityFactor(opacity));
  if ((c >> 24) == 0) return;
  for (int y = p.Top; y < p.Bottom; ++y) {
    std::uint32_t* line = FBitmap->Bits() + static_cast<std::size_t>(y) * Width();
    if ((c >> 24) == 255) {
      std::fill(line + p.Left, line + p.Right, c);
    } else {
      for (int x = p.Left; x < p.Right; ++x) line[x] = Over(c, line[x]);
    }
  }
}

void TCanvas::FillRoundRect(const TRectF& rect, float radius, TAlphaColor color, float opacity) {
  radius = std::min({radius, rect.Width() / 2, rect.Height() / 2});
  if (radius <= 0.5f) {
    FillRect(rect, color, opacity);
    return;
  }
  TRect p = ToPixels(rect);
  std::uint32_t c = Scale(PremultiplyColor(color), OpacityFactor(opacity));
  TRectF r = rect.Offset(FOffset.X, FOffset.Y);
  float innerL = r.Left + radius, innerR = r.Right - radius, innerT = r.Top + radius,
        innerB = r.Bottom - radius;
  for (int y = p.Top; y < p.Bottom; ++y) {
    std::uint32_t* line = FBitmap->Bits() + static_cast<std::size_t>(y) * Width();
    float cy = static_cast<float>(y) + 0.5f;
    for (int x = p.Left; x < p.Right; ++x) {
      float cx = static_cast<float>(x) + 0.5f;
      float dx = cx < innerL ? innerL - cx : (cx > innerR ? cx - innerR : 0);
      float dy = cy < innerT ? innerT - cy : (cy > innerB ? cy - innerB : 0);
      std::uint32_t f = 256;
      if (dx > 0 && dy > 0) {
        // One pixel of anti-aliasing along the corner arc.
        float d = std::sqrt(dx * dx + dy * dy) - radius + 0.5f;
        if (d >= 1) continue;
        if (d > 0) f = static_cast<std::uint32_t>((1 - d) * 256);
      }
      line[x] = Over(Scale(c, f), line[x]);
    }
  }
}

void TCanvas::DrawBitmap(const TBitmap& bitmap, const TRectF& source, const TRectF& target, float opacity,
                         bool highSpeed) {
  if (bitmap.IsEmpty() || target.IsEmpty()) return;
  std::uint32_t f = OpacityFactor(opacity);
  if (f == 0) return;
  TRectF src =
      source.Intersect(TRectF(0, 0, static_cast<float>(bitmap.Width()), static_cast<float>(bitmap.Height())));
  if (src.IsEmpty()) return;
  TRectF dst = target.Offset(FOffset.X, FOffset.Y);
  TRect p = ToPixels(target);
  if (p.Right <= p.Left || p.Bottom <= p.Top) return;
  if (bitmap.Width() == 1 && bitmap.Height() == 1) {
    // A single pixel stretched is a solid fill: the controls' plain layers take this path.
    FillRect(target, UnpremultiplyColor(bitmap.Pixel(0, 0)), opacity);
    return;
  }
  const std::uint32_t* bits = bitmap.Bits();
  const int bw = bitmap.Width();
  std::uint32_t* out = FBitmap->Bits();
  const int ow = Width();

  float sx = src.Width() / dst.Width();
  float sy = src.Height() / dst.Height();
  bool sameSize = std::fabs(sx - 1) < 1e-4f && std::fabs(sy - 1) < 1e-4f;
  float fracX = dst.Left - src.Left - std::round(dst.Left - src.Left);
  float fracY = dst.Top - src.Top - std::round(dst.Top - src.Top);
  if ((sameSize && std::fabs(fracX) < 1e-3f && std::fabs(fracY) < 1e-3f) || highSpeed) {
    // Pixel-aligned copy (or nearest neighbour when asked for speed).
    for (int y = p.Top; y < p.Bottom; ++y) {
      int syi = static_cast<int>((static_cast<float>(y) + 0.5f - dst.Top) * sy + src.Top);
      syi = std::clamp(syi, static_cast<int>(src.Top), static_cast<int>(std::ceil(src.Bottom)) - 1);
      const std::uint32_t* srow = bits + static_cast<std::size_t>(syi) * bw;
      std::uint32_t* drow = out + static_cast<std::size_t>(y) * ow;
      if (sameSize && !highSpeed) {
        int sx0 = static_cast<int>(std::lround(static_cast<float>(p.Left) - dst.Left + src.Left));
        const std::uint32_t* s = srow + sx0;
        if (f == 256) {
          for (int x = p.Left; x < p.Right; ++x, ++s) drow[x] = Over(*s, drow[x]);
        } else {
          for (int x = p.Left; x < p.Right; ++x, ++s) drow[x] = Over(Scale(*s, f), drow[x]);
        }
      } else {
        for (int x = p.Left; x < p.Right; ++x) {
          int sxi = static_cast<int>((static_cast<float>(x) + 0.5f - dst.Left) * sx + src.Left);
          sxi = std::clamp(sxi, static_cast<int>(src.Left), static_cast<int>(std::ceil(src.Right)) - 1);
          drow[x] = Over(Scale(srow[sxi], f), drow[x]);
        }
      }
    }
    return;
  }
  // Bilinear: sample at pixel centres, clamped to the source rectangle.
  const float minX = src.Left, maxX = src.Right - 1, minY = src.Top, maxY = src.Bottom - 1;
  for (int y = p.Top; y < p.Bottom; ++y) {
    float v = std::clamp((static_cast<float>(y) + 0.5f - dst.Top) * sy + src.Top - 0.5f, minY,
                         std::max(minY, maxY));
    int y0 = static_cast<int>(v);
    int y1 = std::min(y0 + 1, static_cast<int>(std::max(minY, maxY)));
    std::uint32_t wy = static_cast<std::uint32_t>((v - static_cast<float>(y0)) * 256);
    const std::uint32_t* r0 = bits + static_cast<std::size_t>(y0) * bw;
    const std::uint32_t* r1 = bits + static_cast<std::size_t>(y1) * bw;
    std::uint32_t* drow = out + static_cast<std::size_t>(y) * ow;
    for (int x = p.Left; x < p.Right; ++x) {
      float u = std::clamp((static_cast<float>(x) + 0.5f - dst.Left) * sx + src.Left - 0.5f, minX,
                           std::max(minX, maxX));
      int x0 = static_cast<int>(u);
      int x1 = std::min(x0 + 1, static_cast<int>(std::max(minX, maxX)));
      std::uint32_t wx = static_cast<std::uint32_t>((u - static_cast<float>(x0)) * 256);
      std::uint32_t c = Bilinear(r0[x0], r0[x1], r1[x0], r1[x1], wx, wy);
      drow[x] = Over(f == 256 ? c : Scale(c, f), drow[x]);
    }
  }
}

void TCanvas::BlendMask(int x, int y, int width, int height, const std::uint8_t* mask, int maskPitch,
                        TAlphaColor color, float opacity) {
  int cl = static_cast<int>(std::lround(FClip.Left)), ct = static_cast<int>(std::lround(FClip.Top));
  int cr = static_cast<int>(std::lround(FClip.Right)), cb = static_cast<int>(std::lround(FClip.Bottom));
  std::uint32_t c = Scale(PremultiplyColor(color), OpacityFactor(opacity));
  if ((c >> 24) == 0) return;
  for (int j = std::max(0, ct - y); j < height && y + j < cb; ++j) {
    std::uint32_t* drow = FBitmap->Bits() + static_cast<std::size_t>(y + j) * Width();
    const std::uint8_t* m = mask + static_cast<std::size_t>(j) * maskPitch;
    for (int i = std::max(0, cl - x); i < width && x + i < cr; ++i) {
      std::uint32_t cov = m[i];
      if (cov == 0) continue;
      drow[x + i] = Over(Scale(c, cov + (cov >> 7)), drow[x + i]);
    }
  }
}

void TCanvas::FillText(const TRectF& rect, const std::u16string& text, bool wordWrap, float opacity,
                       TTextAlign horzAlign, TTextAlign vertAlign, TTextTrimming trimming) {
  TTextLayout layout;
  layout.BeginUpdate();
  layout.Text = text;
  layout.Font = Font;
  layout.Color = Fill.Color;
  layout.TopLeft = {rect.Left, rect.Top};
  layout.MaxSize = {rect.Width(), rect.Height()};
  layout.WordWrap = wordWrap;
  layout.HorizontalAlign = horzAlign;
  layout.VerticalAlign = vertAlign;
  layout.Trimming = trimming;
  layout.Opacity = opacity;
  layout.EndUpdate();
  layout.RenderLayout(this);
}

float TCanvas::TextWidth(const std::u16string& text) { return TTextLayout::MeasureWidth(Font, text); }

float TCanvas::TextHeight(const std::u16string& text) {
  TTextLayout layout;
  layout.BeginUpdate();
  layout.Text = text;
  layout.Font = Font;
  layout.MaxSize = {1e6f, 1e6f};
  layout.EndUpdate();
  return layout.TextHeight();
}

}  // namespace qx
