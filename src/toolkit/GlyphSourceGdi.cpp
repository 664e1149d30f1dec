// Glyphs through GDI: GetGlyphOutlineW renders 65-level grey masks into memory.

#ifdef _WIN32

#include <windows.h>

#include <cmath>
#include <unordered_map>

#include "toolkit/GlyphSource.h"
#include "toolkit/Types.h"

namespace qx::glyphs {
namespace {

class TGdiFace final : public IFontFace {
 public:
  TGdiFace(const std::u16string& family, float size, bool bold, bool italic) : FSize(size) {
    std::wstring name(family.begin(), family.end());
    FDC = CreateCompatibleDC(nullptr);
    FFont = CreateFontW(-static_cast<int>(std::lround(size)), 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, italic ? TRUE : FALSE,
                        FALSE, FALSE, DEFAULT_CHARSET, OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY,
                        DEFAULT_PITCH, name.c_str());
    FOld = SelectObject(FDC, FFont);
    TEXTMETRICW tm{};
    if (GetTextMetricsW(FDC, &tm)) {
      FMetrics.Ascent = static_cast<float>(tm.tmAscent);
      FMetrics.Descent = static_cast<float>(tm.tmDescent);
      FMetrics.LineHeight = static_cast<float>(tm.tmHeight + tm.tmExternalLeading);
    } else {
      FMetrics = {size * 0.8f, size * 0.2f, size * 1.2f};
    }
  }

  ~TGdiFace() override {
    SelectObject(FDC, FOld);
    DeleteObject(FFont);
    DeleteDC(FDC);
  }

  TFontMetrics Metrics() const override { return FMetrics; }

  const TGlyphImage& Glyph(char32_t ch) override {
    auto it = FCache.find(ch);
    if (it != FCache.end()) return it->second;
    TGlyphImage& glyph = FCache[ch];
    if (ch > 0xFFFF) {  // GetGlyphOutlineW takes one UTF-16 unit
      glyph.Advance = FSize * 0.5f;
      return glyph;
    }
    MAT2 identity{{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    GLYPHMETRICS gm{};
    UINT wch = static_cast<UINT>(ch);
    DWORD needed = GetGlyphOutlineW(FDC, wch, GGO_GRAY8_BITMAP, &gm, 0, nullptr, &identity);
    if (needed == GDI_ERROR) {
      glyph.Advance = FSize * 0.5f;
      return glyph;
    }
    glyph.Advance = static_cast<float>(gm.gmCellIncX);
    if (needed == 0) return glyph;
    std::vector<std::uint8_t> buffer(needed);
    if (GetGlyphOutlineW(FDC, wch, GGO_GRAY8_BITMAP, &gm, needed, buffer.data(), &identity) == GDI_ERROR) return glyph;
    glyph.Width = static_cast<int>(gm.gmBlackBoxX);
    glyph.Height = static_cast<int>(gm.gmBlackBoxY);
    glyph.Left = gm.gmptGlyphOrigin.x;
    glyph.Top = gm.gmptGlyphOrigin.y;
    int pitch = (glyph.Width + 3) & ~3;  // rows are DWORD aligned
    glyph.Coverage.resize(static_cast<std::size_t>(glyph.Width) * glyph.Height);
    for (int y = 0; y < glyph.Height; ++y)
      for (int x = 0; x < glyph.Width; ++x) {
        unsigned level = buffer[static_cast<std::size_t>(y) * pitch + x];  // 0..64
        glyph.Coverage[static_cast<std::size_t>(y) * glyph.Width + x] =
            static_cast<std::uint8_t>(std::min(255u, level * 4));
      }
    return glyph;
  }

 private:
  float FSize;
  HDC FDC = nullptr;
  HFONT FFont = nullptr;
  HGDIOBJ FOld = nullptr;
  TFontMetrics FMetrics;
  std::unordered_map<char32_t, TGlyphImage> FCache;
};

}  // namespace

std::unique_ptr<IFontFace> CreateFontFace(const std::u16string& family, float size, bool bold, bool italic) {
  return std::make_unique<TGdiFace>(family, size, bold, italic);
}

void ShutdownGlyphs() {}

}  // namespace qx::glyphs

#endif
