#include "toolkit/Bitmap.h"

#include <fstream>
#include <iterator>
#include <sstream>

#include "toolkit/Canvas.h"
#include "toolkit/Managers.h"

namespace qx {

std::uint32_t PremultiplyColor(TAlphaColor color) {
  std::uint32_t a = color >> 24;
  if (a == 255) return color;
  if (a == 0) return 0;
  auto mul = [a](std::uint32_t c) { return (c * a + 127) / 255; };
  std::uint32_t r = mul((color >> 16) & 0xFF), g = mul((color >> 8) & 0xFF), b = mul(color & 0xFF);
  return (a << 24) | (r << 16) | (g << 8) | b;
}

TAlphaColor UnpremultiplyColor(std::uint32_t pixel) {
  std::uint32_t a = pixel >> 24;
  if (a == 255 || a == 0) return a == 0 ? 0 : pixel;
  auto div = [a](std::uint32_t c) { return std::min<std::uint32_t>(255, (c * 255 + a / 2) / a); };
  return (a << 24) | (div((pixel >> 16) & 0xFF) << 16) | (div((pixel >> 8) & 0xFF) << 8) | div(pixel & 0xFF);
}

TBitmap::TBitmap() = default;
TBitmap::TBitmap(int width, int height) { SetSize(width, height); }
TBitmap::~TBitmap() = default;

std::unique_ptr<TBitmap> TBitmap::CreateFromFile(const std::filesystem::path& fileName) {
  auto bitmap = std::make_unique<TBitmap>();
  bitmap->LoadFromFile(fileName);
  return bitmap;
}

std::unique_ptr<TBitmap> TBitmap::CreateFromStream(std::istream& stream) {
  auto bitmap = std::make_unique<TBitmap>();
  bitmap->LoadFromStream(stream);
  return bitmap;
}

void TBitmap::SetSize(int width, int height) {
  if (width < 0 || height < 0 || width > codec::kMaxImageSide || height > codec::kMaxImageSide)
    throw EToolkitError("Bitmap size out of range: " + std::to_string(width) + "x" + std::to_string(height));
  if (width == FWidth && height == FHeight) return;
  FWidth = width;
  FHeight = height;
  FPixels = std::make_shared<TPixels>(static_cast<std::size_t>(width) * height, 0u);
  BitmapChanged();
}

void TBitmap::Clear(TAlphaColor color) {
  TPixels& pixels = OwnPixels();
  std::fill(pixels.begin(), pixels.end(), PremultiplyColor(color));
  BitmapChanged();
}

bool TBitmap::Map(TMapAccess access, TBitmapData& data) {
  if (FMapped || IsEmpty()) return false;
  FMapped = true;
  FMapAccess = access;
  // Only a writer needs pixels of its own; readers go on sharing them.
  data.Data = access == TMapAccess::Read ? reinterpret_cast<std::uint8_t*>(FPixels->data())
                                         : reinterpret_cast<std::uint8_t*>(OwnPixels().data());
  data.Pitch = FWidth * 4;
  data.Width = FWidth;
  data.Height = FHeight;
  return true;
}

void TBitmap::Unmap(TBitmapData& data) {
  if (!FMapped) return;
  FMapped = false;
  data = TBitmapData{};
  if (FMapAccess != TMapAccess::Read) BitmapChanged();
}

TBitmap::TPixels& TBitmap::OwnPixels() {
  if (!FPixels)
    FPixels = std::make_shared<TPixels>();
  else if (FPixels.use_count() > 1)
    FPixels = std::make_shared<TPixels>(*FPixels);
  return *FPixels;
}

void TBitmap::Assign(const TBitmap* source) {
  if (source == this) return;
  if (!source) {
    FWidth = FHeight = 0;
    FPixels.reset();
  } else {
    FWidth = source->FWidth;
    FHeight = source->FHeight;
    FPixels = source->FPixels;
  }
  BitmapChanged();
}

void TBitmap::LoadFromFile(const std::filesystem::path& fileName) {
  std::ifstream in(fileName, std::ios::binary);
  if (!in) throw EInvalidImage("Cannot open picture file: " + fileName.string());
  LoadFromStream(in);
}

void TBitmap::LoadFromStream(std::istream& stream) {
  std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  LoadFromMemory(bytes.data(), bytes.size());
}

void TBitmap::LoadFromMemory(const std::uint8_t* data, std::size_t size) {
  codec::TRawImage image;
  TBitmapCodecManager::Decode(data, size, image);
  FWidth = image.Width;
  FHeight = image.Height;
  FPixels = std::make_shared<TPixels>(std::move(image.Pixels));
  BitmapChanged();
}

void TBitmap::SaveToFile(const std::filesystem::path& fileName) const {
  std::ofstream out(fileName, std::ios::binary | std::ios::trunc);
  if (!out) throw EInvalidImage("Cannot create picture file: " + fileName.string());
  SaveToStream(out);
  out.close();
  if (!out) throw EInvalidImage("Cannot write picture file: " + fileName.string());
}

void TBitmap::SaveToStream(std::ostream& stream) const {
  if (IsEmpty()) throw EInvalidImage("Cannot save an empty bitmap");
  codec::TRawImage image{FWidth, FHeight, *FPixels};
  std::vector<std::uint8_t> bytes = TBitmapCodecManager::EncodePng(image);
  stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

TCanvas& TBitmap::Canvas() {
  if (!FCanvas) FCanvas = std::make_unique<TCanvas>(this);
  return *FCanvas;
}

TAlphaColor TBitmap::PixelColor(int x, int y) const { return UnpremultiplyColor(Pixel(x, y)); }

void TBitmap::BitmapChanged() {
  if (OnChange) OnChange();
}

}  // namespace qx
