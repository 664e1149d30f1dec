#include "resources/BitmapResourceMgr.h"

#include <cmath>
#include <cstdlib>

#include "platform/Platform.h"
#include "resources/ResourceFiles.h"
#include "toolkit/Canvas.h"

namespace qx {

void TBitmapResourceManagerNoRTTI::LoadBitmap(std::unique_ptr<TBitmap>& field, std::u16string_view key) {
  TString path = FBasePath;
  path += key;
  path += FExtension;
  if (!ResourceFileExists(path)) return;
  if (auto bitmap = LoadResourceBitmap(path)) field = std::move(bitmap);
}

TBitmap* TBitmapResourceManagerNoRTTI::Lazy(std::unique_ptr<TBitmap>& field, std::u16string_view key) {
  if (!field) LoadBitmap(field, key);
  return field.get();
}

TBitmap* TBitmapResourceManagerNoRTTI::LazySlice(std::unique_ptr<TBitmap>& field, TBitmap* source, int parts,
                                                 int index) {
  if (!field) field = SliceBitmap(source, parts, index);
  return field.get();
}

TQuillmarBitmapResourceManager::TQuillmarBitmapResourceManager(IServiceCoreWrap* serviceCore,
                                                               std::u16string_view resourcePath) {
  InitExtension();
  TString path;
  if (serviceCore) serviceCore->ResolveResourcePath(resourcePath, path);
  FBasePath = IncludeTrailingPathDelimiter(path);
}

TQuillmarBitmapResourceManager::TQuillmarBitmapResourceManager(std::u16string_view folder) {
  InitExtension();
  FBasePath = IncludeTrailingPathDelimiter(folder);
}

std::unique_ptr<TBitmap> SliceBitmap(const TBitmap* source, int parts, int index) {
  if (!source || parts <= 0) return nullptr;
  const int w = source->Width() / parts;
  const int h = source->Height();
  auto result = std::make_unique<TBitmap>(w, h);
  if (w <= 0 || h <= 0) return result;
  TCanvas& canvas = result->Canvas();
  if (canvas.BeginScene()) {
    canvas.Clear(TAlphaColors::Null);
    const float fw = static_cast<float>(w), fh = static_cast<float>(h);
    canvas.DrawBitmap(*source, TRectF(fw * static_cast<float>(index), 0, fw * static_cast<float>(index) + fw, fh),
                      TRectF(0, 0, fw, fh), 1);
    canvas.EndScene();
  }
  return result;
}

std::unique_ptr<TBitmap> MakeSolidBitmap(TAlphaColor colour, float width, float height) {
  auto result = std::make_unique<TBitmap>(static_cast<int>(std::lround(width)), static_cast<int>(std::lround(height)));
  result->Clear(colour);
  return result;
}

std::int32_t MulDiv(std::int32_t a, std::int32_t b, std::int32_t c) {
  if (c == 0) return -1;
  const std::int64_t product = static_cast<std::int64_t>(a) * b;
  const std::int64_t half = std::llabs(c) / 2;
  const bool negative = (product < 0) != (c < 0);
  const std::int64_t q = (std::llabs(product) + half) / std::llabs(c);
  return static_cast<std::int32_t>(negative ? -q : q);
}

float FontSizeFromSystemFont(std::int32_t fontHeight, float adjustment) {
  std::int32_t dpi = Platform().GetLogPixelsY();
  if (dpi <= 0) dpi = 96;
  return adjustment - static_cast<float>(MulDiv(fontHeight, 96, dpi));
}

TFont SystemFont(float adjustment) {
  TFont font;
  char16_t face[64] = {};
  std::int32_t height = 0;
  if (!Platform().GetMessageFont(face, 64, &height) || !face[0] || height == 0) return font;
  font.Family = face;
  // A positive LOGFONT height counts the cell, not the character; both stand for the size here.
  font.Size = FontSizeFromSystemFont(height < 0 ? height : -height, adjustment);
  return font;
}

}  // namespace qx
