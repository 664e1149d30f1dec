#pragma once

// Internal interface of the picture codecs. PNG goes through the platform's
// codec (libpng, or GDI+ on Windows); BMP and ICO are read by our own code.
// Decoders raise EInvalidImage for anything they cannot read.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qx::codec {

// Premultiplied BGRA pixels, rows top to bottom, no padding.
struct TRawImage {
  int Width = 0;
  int Height = 0;
  std::vector<std::uint32_t> Pixels;
};

bool IsPng(const std::uint8_t* data, std::size_t size);
void DecodePng(const std::uint8_t* data, std::size_t size, TRawImage& image);
std::vector<std::uint8_t> EncodePng(const TRawImage& image);

bool IsBmp(const std::uint8_t* data, std::size_t size);
void DecodeBmp(const std::uint8_t* data, std::size_t size, TRawImage& image);
bool IsIco(const std::uint8_t* data, std::size_t size);
// Picks the largest image of the icon; PNG-compressed entries are handed to DecodePng.
void DecodeIco(const std::uint8_t* data, std::size_t size, TRawImage& image);

// Releases the platform codec's global state (GDI+ on Windows).
void ShutdownCodecs();

// Largest picture sizes we accept, so a lying header cannot make us allocate gigabytes.
inline constexpr int kMaxImageSide = 16384;

}  // namespace qx::codec
