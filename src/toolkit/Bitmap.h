#pragma once

// A 32-bit picture in memory.
//
// Pixel format: premultiplied BGRA, one std::uint32_t per pixel read as
// 0xAARRGGBB on a little-endian machine (bytes B, G, R, A in memory), rows top
// to bottom, no padding between rows (Pitch = Width * 4). The same layout as a
// top-down 32-bit Windows DIB, so the Windows build can hand it to GDI as is.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <vector>

#include "toolkit/Types.h"

namespace qx {

class TCanvas;

enum class TMapAccess { Read, Write, ReadWrite };

struct TBitmapData {
  std::uint8_t* Data = nullptr;
  int Pitch = 0;
  int Width = 0;
  int Height = 0;
  std::uint32_t* Line(int y) const { return reinterpret_cast<std::uint32_t*>(Data + y * Pitch); }
};

class TBitmap {
 public:
  TBitmap();
  TBitmap(int width, int height);
  ~TBitmap();
  TBitmap(const TBitmap&) = delete;
  TBitmap& operator=(const TBitmap&) = delete;

  static std::unique_ptr<TBitmap> CreateFromFile(const std::filesystem::path& fileName);
  static std::unique_ptr<TBitmap> CreateFromStream(std::istream& stream);

  int Width() const { return FWidth; }
  int Height() const { return FHeight; }
  bool IsEmpty() const { return FWidth == 0 || FHeight == 0; }
  // Resizing clears the picture to transparent.
  void SetSize(int width, int height);
  void Clear(TAlphaColor color);

  // Map gives direct access; Unmap after a write tells watchers of the change.
  bool Map(TMapAccess access, TBitmapData& data);
  void Unmap(TBitmapData& data);

  // Copies size and pixels; nullptr empties this bitmap. The pixels are shared until
  // either bitmap is written, so thousands of controls showing one picture hold it once.
  void Assign(const TBitmap* source);

  // Format by content: PNG, BMP and ICO read; PNG written.
  void LoadFromFile(const std::filesystem::path& fileName);
  void LoadFromStream(std::istream& stream);
  void LoadFromMemory(const std::uint8_t* data, std::size_t size);
  void SaveToFile(const std::filesystem::path& fileName) const;
  void SaveToStream(std::ostream& stream) const;

  TCanvas& Canvas();

  // Writable pixels: a bitmap that shares its pixels takes a copy of its own first.
  std::uint32_t* Bits() { return OwnPixels().data(); }
  const std::uint32_t* Bits() const { return FPixels ? FPixels->data() : nullptr; }
  std::uint32_t Pixel(int x, int y) const { return (*FPixels)[static_cast<std::size_t>(y) * FWidth + x]; }
  // Straight colour of a pixel, for tests and pickers.
  TAlphaColor PixelColor(int x, int y) const;

  void BitmapChanged();
  std::function<void()> OnChange;

 private:
  int FWidth = 0;
  int FHeight = 0;
  using TPixels = std::vector<std::uint32_t>;
  TPixels& OwnPixels();

  std::shared_ptr<TPixels> FPixels;
  std::unique_ptr<TCanvas> FCanvas;
  TMapAccess FMapAccess = TMapAccess::Read;
  bool FMapped = false;
};

// Straight 0xAARRGGBB to premultiplied and back.
std::uint32_t PremultiplyColor(TAlphaColor color);
TAlphaColor UnpremultiplyColor(std::uint32_t pixel);

}  // namespace qx
