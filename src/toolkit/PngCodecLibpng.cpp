// PNG through libpng's simplified API, which reports errors instead of jumping.

#ifndef _WIN32

#include <png.h>

#include <cstring>

#include "toolkit/Bitmap.h"
#include "toolkit/ImageCodec.h"
#include "toolkit/Types.h"

namespace qx::codec {

bool IsPng(const std::uint8_t* data, std::size_t size) {
  static const std::uint8_t kSignature[8] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
  return size >= 8 && std::memcmp(data, kSignature, 8) == 0;
}

void DecodePng(const std::uint8_t* data, std::size_t size, TRawImage& image) {
  png_image png;
  std::memset(&png, 0, sizeof png);
  png.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&png, data, size))
    throw EInvalidImage(std::string("Damaged PNG: ") + png.message);
  if (png.width == 0 || png.height == 0 || png.width > kMaxImageSide || png.height > kMaxImageSide) {
    png_image_free(&png);
    throw EInvalidImage("PNG size out of range");
  }
  png.format = PNG_FORMAT_BGRA;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(png.width) * png.height);
  if (!png_image_finish_read(&png, nullptr, pixels.data(), 0, nullptr)) {
    std::string message = png.message;
    png_image_free(&png);
    throw EInvalidImage("Damaged PNG: " + message);
  }
  for (std::uint32_t& p : pixels) p = PremultiplyColor(p);
  image.Width = static_cast<int>(png.width);
  image.Height = static_cast<int>(png.height);
  image.Pixels = std::move(pixels);
}

std::vector<std::uint8_t> EncodePng(const TRawImage& image) {
  std::vector<std::uint32_t> straight(image.Pixels.size());
  for (std::size_t i = 0; i < straight.size(); ++i) straight[i] = UnpremultiplyColor(image.Pixels[i]);
  png_image png;
  std::memset(&png, 0, sizeof png);
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(image.Width);
  png.height = static_cast<png_uint_32>(image.Height);
  png.format = PNG_FORMAT_BGRA;
  png_alloc_size_t size = 0;
  if (!png_image_write_to_memory(&png, nullptr, &size, 0, straight.data(), 0, nullptr))
    throw EInvalidImage(std::string("Cannot encode PNG: ") + png.message);
  std::vector<std::uint8_t> out(size);
  if (!png_image_write_to_memory(&png, out.data(), &size, 0, straight.data(), 0, nullptr))
    throw EInvalidImage(std::string("Cannot encode PNG: ") + png.message);
  out.resize(size);
  return out;
}

void ShutdownCodecs() {}

}  // namespace qx::codec

#endif
