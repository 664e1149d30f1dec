#include "toolkit/Managers.h"

#include <cmath>
#include <tuple>

#include "toolkit/Bitmap.h"
#include "toolkit/Effects.h"
#include "toolkit/GlyphSource.h"
#include "toolkit/TextLayout.h"

namespace qx {

// ---- codecs

namespace {
struct TCodecTable {
  bool Ready = false;
  std::vector<TBitmapCodecDescriptor> Codecs;
};
TCodecTable& Codecs() {
  static TCodecTable table;
  if (!table.Ready) {
    table.Ready = true;
    table.Codecs.push_back({".png", "Portable Network Graphics", codec::IsPng, codec::DecodePng, codec::EncodePng});
    table.Codecs.push_back({".bmp", "Windows bitmap", codec::IsBmp, codec::DecodeBmp, {}});
    table.Codecs.push_back({".ico", "Windows icon", codec::IsIco, codec::DecodeIco, {}});
  }
  return table;
}
}  // namespace

void TBitmapCodecManager::RegisterBitmapCodecClass(TBitmapCodecDescriptor codec) {
  auto& list = Codecs().Codecs;
  std::erase_if(list, [&](const TBitmapCodecDescriptor& c) { return c.Extension == codec.Extension; });
  list.push_back(std::move(codec));
}

bool TBitmapCodecManager::IsCodecRegistered(const std::string& extension) {
  for (const auto& c : Codecs().Codecs)
    if (c.Extension == extension) return true;
  return false;
}

std::vector<std::string> TBitmapCodecManager::Extensions() {
  std::vector<std::string> out;
  for (const auto& c : Codecs().Codecs) out.push_back(c.Extension);
  return out;
}

void TBitmapCodecManager::Decode(const std::uint8_t* data, std::size_t size, codec::TRawImage& image) {
  if (!data || size == 0) throw EInvalidImage("Picture data is empty");
  for (const auto& c : Codecs().Codecs)
    if (c.CanLoad && c.CanLoad(data, size)) {
      c.Decode(data, size, image);
      if (image.Width <= 0 || image.Height <= 0 ||
          image.Pixels.size() != static_cast<std::size_t>(image.Width) * image.Height)
        throw EInvalidImage("Picture decoder returned no image (" + c.Description + ")");
      return;
    }
  throw EInvalidImage("Unknown picture format");
}

std::vector<std::uint8_t> TBitmapCodecManager::EncodePng(const codec::TRawImage& image) {
  for (const auto& c : Codecs().Codecs)
    if (c.Extension == ".png" && c.Encode) return c.Encode(image);
  throw EInvalidImage("No PNG encoder registered");
}

void TBitmapCodecManager::UnInitialize() {
  Codecs().Codecs.clear();
  Codecs().Ready = false;
  codec::ShutdownCodecs();
}

// ---- text layouts and the font cache

namespace {
using TFaceKey = std::tuple<std::u16string, float, TFontStyles>;
std::map<TFaceKey, std::unique_ptr<glyphs::IFontFace>>& FaceCache() {
  static std::map<TFaceKey, std::unique_ptr<glyphs::IFontFace>> cache;
  return cache;
}
}  // namespace

glyphs::IFontFace& TTextLayoutManager::Face(const TFont& font) {
  TFaceKey key{font.Family, font.Size, font.Style & 3u};
  auto& cache = FaceCache();
  auto it = cache.find(key);
  if (it == cache.end()) {
    float size = font.Size > 0 ? font.Size : 12;
    it = cache
             .emplace(key, glyphs::CreateFontFace(font.Family, size, (font.Style & unsigned(TFontStyle::Bold)) != 0,
                                                  (font.Style & unsigned(TFontStyle::Italic)) != 0))
             .first;
  }
  return *it->second;
}

std::size_t TTextLayoutManager::CachedFaceCount() { return FaceCache().size(); }

std::unique_ptr<TTextLayout> TTextLayoutManager::TextLayoutByCanvas(TCanvas* canvas) {
  auto layout = std::make_unique<TTextLayout>(canvas);
  if (canvas) layout->Font = canvas->Font;
  return layout;
}

void TTextLayoutManager::UnInitialize() {
  FaceCache().clear();
  glyphs::ShutdownGlyphs();
}

// ---- styles

namespace {
std::map<std::string, std::unique_ptr<TBitmap>>& StyleResources() {
  static std::map<std::string, std::unique_ptr<TBitmap>> resources;
  return resources;
}
}  // namespace

void TStyleManager::SetStyleResource(const std::string& name, const TBitmap& bitmap) {
  auto copy = std::make_unique<TBitmap>();
  copy->Assign(&bitmap);
  StyleResources()[name] = std::move(copy);
}

const TBitmap* TStyleManager::FindStyleResource(const std::string& name) {
  auto it = StyleResources().find(name);
  return it == StyleResources().end() ? nullptr : it->second.get();
}

void TStyleManager::UnInitialize() { StyleResources().clear(); }

// ---- filters

namespace {
struct TFilterTable {
  bool Ready = false;
  std::map<std::string, TFilterManager::TFilterProc> Filters;
};
TFilterTable& Filters() {
  static TFilterTable table;
  if (!table.Ready) {
    table.Ready = true;
    table.Filters["Blur"] = [](TBitmap& bitmap, float softness) { TBlurEffect::BlurBitmap(bitmap, softness); };
  }
  return table;
}
}  // namespace

void TFilterManager::RegisterFilter(const std::string& name, TFilterProc filter) { Filters().Filters[name] = std::move(filter); }

bool TFilterManager::ApplyFilter(const std::string& name, TBitmap& bitmap, float value) {
  auto& table = Filters().Filters;
  auto it = table.find(name);
  if (it == table.end()) return false;
  it->second(bitmap, value);
  return true;
}

void TFilterManager::UnInitialize() {
  Filters().Filters.clear();
  Filters().Ready = false;
}

// ---- shaders

namespace {
std::map<int, std::vector<int>>& Kernels() {
  static std::map<int, std::vector<int>> kernels;
  return kernels;
}
}  // namespace

const std::vector<int>& TShaderManager::BoxSizesForRadius(int radius) {
  auto& kernels = Kernels();
  auto it = kernels.find(radius);
  if (it != kernels.end()) return it->second;
  // Three box passes whose combined variance matches a Gaussian of sigma = radius / 2.
  double sigma = std::max(0.5, radius / 2.0);
  const int n = 3;
  double ideal = std::sqrt(12 * sigma * sigma / n + 1);
  int lower = static_cast<int>(std::floor(ideal));
  if (lower % 2 == 0) --lower;
  int upper = lower + 2;
  double m = (12 * sigma * sigma - n * lower * lower - 4 * n * lower - 3 * n) / (-4 * lower - 4);
  int mi = static_cast<int>(std::lround(m));
  std::vector<int> sizes;
  for (int i = 0; i < n; ++i) sizes.push_back(i < mi ? lower : upper);
  return kernels.emplace(radius, std::move(sizes)).first->second;
}

void TShaderManager::UnInitialize() { Kernels().clear(); }

// ---- canvases and contexts

namespace {
std::size_t gCanvasesCreated = 0;
std::size_t gContexts = 0;
}  // namespace

std::unique_ptr<TCanvas> TCanvasManager::CreateCanvasFromBitmap(TBitmap* bitmap) {
  ++gCanvasesCreated;
  return std::make_unique<TCanvas>(bitmap);
}

std::size_t TCanvasManager::CanvasesCreated() { return gCanvasesCreated; }
void TCanvasManager::UnInitialize() { gCanvasesCreated = 0; }

void TContextManager::ContextCreated() { ++gContexts; }
std::size_t TContextManager::ContextCount() { return gContexts; }
void TContextManager::UnInitialize() { gContexts = 0; }

}  // namespace qx
