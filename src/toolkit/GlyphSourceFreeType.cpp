// Glyphs through FreeType, fonts found by fontconfig (with per-character fallback,
// so that a Latin family still shows Japanese text).

#ifndef _WIN32

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <cmath>
#include <map>
#include <unordered_map>

#include "base/Text.h"
#include "toolkit/GlyphSource.h"
#include "toolkit/Types.h"

namespace qx::glyphs {
namespace {

struct TGlobals {
  FT_Library Library = nullptr;
  bool FontconfigReady = false;
  // Faces opened by file and index, shared by every size (sizes are set before use).
  std::map<std::pair<std::string, int>, FT_Face> Faces;
};

TGlobals& Globals() {
  static TGlobals globals;
  return globals;
}

FT_Library Library() {
  TGlobals& g = Globals();
  if (!g.Library && FT_Init_FreeType(&g.Library) != 0) throw EToolkitError("FreeType cannot start");
  if (!g.FontconfigReady) g.FontconfigReady = FcInit() == FcTrue;
  return g.Library;
}

FT_Face OpenFace(const std::string& file, int index) {
  TGlobals& g = Globals();
  auto key = std::make_pair(file, index);
  auto it = g.Faces.find(key);
  if (it != g.Faces.end()) return it->second;
  FT_Face face = nullptr;
  if (FT_New_Face(Library(), file.c_str(), index, &face) != 0) face = nullptr;
  g.Faces[key] = face;
  return face;
}

class TFreeTypeFace final : public IFontFace {
 public:
  TFreeTypeFace(const std::u16string& family, float size, bool bold, bool italic) : FSize(size) {
    Library();
    FcPattern* pattern = FcPatternCreate();
    std::string name = ToUtf8(family);
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(name.c_str()));
    FcPatternAddInteger(pattern, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddDouble(pattern, FC_PIXEL_SIZE, size);
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultNoMatch;
    FSorted = FcFontSort(nullptr, pattern, FcTrue, nullptr, &result);
    FcPatternDestroy(pattern);
    if (FSorted && FSorted->nfont > 0) FPrimary = FaceAt(0);
    if (FPrimary) {
      Select(FPrimary);
      const FT_Size_Metrics& m = FPrimary->size->metrics;
      FMetrics.Ascent = static_cast<float>(m.ascender) / 64.0f;
      FMetrics.Descent = static_cast<float>(-m.descender) / 64.0f;
      FMetrics.LineHeight = static_cast<float>(m.height) / 64.0f;
    } else {
      FMetrics = {size * 0.8f, size * 0.2f, size * 1.2f};
    }
  }

  ~TFreeTypeFace() override {
    if (FSorted) FcFontSetDestroy(FSorted);
  }

  TFontMetrics Metrics() const override { return FMetrics; }

  const TGlyphImage& Glyph(char32_t ch) override {
    auto it = FCache.find(ch);
    if (it != FCache.end()) return it->second;
    TGlyphImage& glyph = FCache[ch];
    FT_Face face = FaceFor(ch);
    if (!face) {
      glyph.Advance = ch == U'\t' ? FSize * 2 : FSize * 0.5f;
      return glyph;
    }
    Select(face);
    if (FT_Load_Char(face, ch, FT_LOAD_RENDER | FT_LOAD_TARGET_NORMAL) != 0) {
      glyph.Advance = FSize * 0.5f;
      return glyph;
    }
    FT_GlyphSlot slot = face->glyph;
    glyph.Advance = static_cast<float>(slot->advance.x) / 64.0f;
    const FT_Bitmap& bm = slot->bitmap;
    if (bm.pixel_mode == FT_PIXEL_MODE_GRAY && bm.width > 0 && bm.rows > 0) {
      glyph.Width = static_cast<int>(bm.width);
      glyph.Height = static_cast<int>(bm.rows);
      glyph.Left = slot->bitmap_left;
      glyph.Top = slot->bitmap_top;
      glyph.Coverage.resize(static_cast<std::size_t>(glyph.Width) * glyph.Height);
      for (int y = 0; y < glyph.Height; ++y) {
        const unsigned char* row = bm.buffer + static_cast<std::ptrdiff_t>(y) * bm.pitch;
        std::copy(row, row + glyph.Width, glyph.Coverage.begin() + static_cast<std::ptrdiff_t>(y) * glyph.Width);
      }
    }
    return glyph;
  }

 private:
  FT_Face FaceAt(int i) {
    FcChar8* file = nullptr;
    int index = 0;
    if (FcPatternGetString(FSorted->fonts[i], FC_FILE, 0, &file) != FcResultMatch) return nullptr;
    FcPatternGetInteger(FSorted->fonts[i], FC_INDEX, 0, &index);
    return OpenFace(reinterpret_cast<const char*>(file), index);
  }

  void Select(FT_Face face) {
    FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(std::max(1L, std::lround(FSize))));
  }

  FT_Face FaceFor(char32_t ch) {
    if (FPrimary && FT_Get_Char_Index(FPrimary, ch) != 0) return FPrimary;
    if (!FSorted) return nullptr;
    for (int i = 1; i < FSorted->nfont && i < 200; ++i) {
      FcCharSet* charset = nullptr;
      if (FcPatternGetCharSet(FSorted->fonts[i], FC_CHARSET, 0, &charset) != FcResultMatch) continue;
      if (!FcCharSetHasChar(charset, ch)) continue;
      FT_Face face = FaceAt(i);
      if (face && FT_Get_Char_Index(face, ch) != 0) return face;
    }
    return nullptr;
  }

  float FSize;
  FcFontSet* FSorted = nullptr;
  FT_Face FPrimary = nullptr;
  TFontMetrics FMetrics;
  std::unordered_map<char32_t, TGlyphImage> FCache;
};

}  // namespace

std::unique_ptr<IFontFace> CreateFontFace(const std::u16string& family, float size, bool bold, bool italic) {
  return std::make_unique<TFreeTypeFace>(family, size, bold, italic);
}

void ShutdownGlyphs() {
  TGlobals& g = Globals();
  for (auto& [key, face] : g.Faces)
    if (face) FT_Done_Face(face);
  g.Faces.clear();
  if (g.Library) FT_Done_FreeType(g.Library);
  g.Library = nullptr;
  if (g.FontconfigReady) FcFini();
  g.FontconfigReady = false;
}

}  // namespace qx::glyphs

#endif
