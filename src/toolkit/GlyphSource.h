#pragma once

// Internal interface of the glyph rasteriser: FreeType with fontconfig on
// Linux, GDI on Windows. Faces are cached by TTextLayoutManager.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qx::glyphs {

// Anti-aliased coverage of one glyph. Left and Top place the mask relative to
// the pen position on the baseline (Top counts upwards).
struct TGlyphImage {
  int Width = 0;
  int Height = 0;
  int Left = 0;
  int Top = 0;
  float Advance = 0;
  std::vector<std::uint8_t> Coverage;
};

struct TFontMetrics {
  float Ascent = 0;
  float Descent = 0;  // positive, below the baseline
  float LineHeight = 0;
};

class IFontFace {
 public:
  virtual ~IFontFace() = default;
  virtual TFontMetrics Metrics() const = 0;
  // Never null: a character no font has comes back as an empty glyph with an advance.
  virtual const TGlyphImage& Glyph(char32_t ch) = 0;
};

// Size is the em height in pixels. Unknown families fall back to the system's sans serif.
std::unique_ptr<IFontFace> CreateFontFace(const std::u16string& family, float size, bool bold, bool italic);
// Frees the rasteriser's global state; faces must be gone by then.
void ShutdownGlyphs();

}  // namespace qx::glyphs
