#include "toolkit/Effects.h"

#include <cmath>
#include <vector>

#include "toolkit/Control.h"
#include "toolkit/Managers.h"

namespace qx {

void TBlurEffect::SetSoftness(float value) {
  value = std::clamp(value, 0.0f, 9.0f);
  if (value == FSoftness) return;
  FSoftness = value;
  Changed();
}

void TBlurEffect::SetEnabled(bool value) {
  if (value == FEnabled) return;
  FEnabled = value;
  Changed();
}

void TBlurEffect::Changed() {
  if (auto* control = dynamic_cast<TControl*>(Parent())) control->UpdateEffects();
}

int TBlurEffect::RadiusFor(float softness) { return static_cast<int>(std::lround(std::max(0.0f, softness) * 10.0f)); }

namespace {

// One box pass of width `size` along rows (horizontal) or columns, on each channel.
void BoxPass(std::vector<std::uint32_t>& src, std::vector<std::uint32_t>& dst, int w, int h, int size, bool horizontal) {
  const int r = size / 2;
  const int n = horizontal ? w : h;
  const int lines = horizontal ? h : w;
  const std::size_t step = horizontal ? 1 : static_cast<std::size_t>(w);
  const std::uint32_t norm = static_cast<std::uint32_t>(size);
  for (int line = 0; line < lines; ++line) {
    std::size_t base = horizontal ? static_cast<std::size_t>(line) * w : static_cast<std::size_t>(line);
    auto at = [&](int i) -> std::uint32_t { return (i < 0 || i >= n) ? 0u : src[base + static_cast<std::size_t>(i) * step]; };
    std::uint32_t sum[4] = {0, 0, 0, 0};
    for (int i = -r; i <= r; ++i) {
      std::uint32_t p = at(i);
      for (int c = 0; c < 4; ++c) sum[c] += (p >> (c * 8)) & 0xFF;
    }
    for (int i = 0; i < n; ++i) {
      std::uint32_t out = 0;
      for (int c = 0; c < 4; ++c) out |= ((sum[c] + norm / 2) / norm) << (c * 8);
      dst[base + static_cast<std::size_t>(i) * step] = out;
      std::uint32_t add = at(i + r + 1), sub = at(i - r);
      for (int c = 0; c < 4; ++c) sum[c] += ((add >> (c * 8)) & 0xFF) - ((sub >> (c * 8)) & 0xFF);
    }
  }
}

}  // namespace

void TBlurEffect::BlurBitmap(TBitmap& bitmap, float softness) {
  int radius = RadiusFor(softness);
  if (radius <= 0 || bitmap.IsEmpty()) return;
  const int w = bitmap.Width(), h = bitmap.Height();
  std::vector<std::uint32_t> a(bitmap.Bits(), bitmap.Bits() + static_cast<std::size_t>(w) * h), b(a.size());
  // Premultiplied pixels blur without dark fringes; three boxes approximate a Gaussian.
  for (int size : TShaderManager::BoxSizesForRadius(radius)) {
    BoxPass(a, b, w, h, size, true);
    BoxPass(b, a, w, h, size, false);
  }
  std::copy(a.begin(), a.end(), bitmap.Bits());
  bitmap.BitmapChanged();
}

const TPropertyTable& TBlurEffect::ClassProperties() {
  static const TPropertyTable table = [] {
    TPropertyTable t(&TFmxObject::ClassProperties());
    t.Float("Softness", {[](TFmxObject* o) { return static_cast<TBlurEffect*>(o)->Softness(); },
                         [](TFmxObject* o, float v) { static_cast<TBlurEffect*>(o)->SetSoftness(v); }});
    t.Stored("Enabled", [](TFmxObject* o, const TStoredValue& v) {
      static_cast<TBlurEffect*>(o)->SetEnabled(StoredBool(v, "Enabled"));
    });
    return t;
  }();
  return table;
}

}  // namespace qx
