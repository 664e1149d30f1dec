// Our own readers of Windows bitmaps and icons (favicons come as ICO).
// Every read is bounds-checked; anything odd raises EInvalidImage.

#include <cstring>
#include <string>

#include "toolkit/Bitmap.h"
#include "toolkit/ImageCodec.h"
#include "toolkit/Types.h"

namespace qx::codec {
namespace {

class TReader {
 public:
  TReader(const std::uint8_t* data, std::size_t size, const char* what) : FData(data), FSize(size), FWhat(what) {}
  void Need(std::size_t offset, std::size_t count) const {
    if (offset > FSize || count > FSize - offset) Fail("truncated");
  }
  std::uint32_t U8(std::size_t o) const { return Need(o, 1), FData[o]; }
  std::uint32_t U16(std::size_t o) const { return Need(o, 2), FData[o] | (FData[o + 1] << 8); }
  std::uint32_t U32(std::size_t o) const {
    Need(o, 4);
    return FData[o] | (FData[o + 1] << 8) | (FData[o + 2] << 16) | (static_cast<std::uint32_t>(FData[o + 3]) << 24);
  }
  std::int32_t I32(std::size_t o) const { return static_cast<std::int32_t>(U32(o)); }
  const std::uint8_t* At(std::size_t o) const { return FData + o; }
  std::size_t Size() const { return FSize; }
  [[noreturn]] void Fail(const std::string& why) const { throw EInvalidImage(std::string("Damaged ") + FWhat + ": " + why); }

 private:
  const std::uint8_t* FData;
  std::size_t FSize;
  const char* FWhat;
};

int MaskShift(std::uint32_t mask) {
  int s = 0;
  while (mask && !(mask & 1)) {
    mask >>= 1;
    ++s;
  }
  return s;
}

std::uint32_t MaskValue(std::uint32_t v, std::uint32_t mask) {
  if (!mask) return 0;
  std::uint32_t bits = mask >> MaskShift(mask);
  std::uint32_t x = (v & mask) >> MaskShift(mask);
  return bits ? (x * 255 + bits / 2) / bits : 0;
}

// Reads a DIB (info header at `header`). Icons store twice the height and an AND mask after the colours.
void DecodeDib(const TReader& r, std::size_t header, std::size_t pixelOffset, bool icon, TRawImage& image) {
  std::uint32_t headerSize = r.U32(header);
  std::int32_t width = 0, height = 0;
  std::uint32_t bpp = 0, compression = 0, colorsUsed = 0;
  std::uint32_t masks[4] = {0x00FF0000u, 0x0000FF00u, 0x000000FFu, 0};
  bool hasMasks = false;
  std::size_t paletteEntry = 4;
  if (headerSize == 12) {
    width = static_cast<std::int32_t>(r.U16(header + 4));
    height = static_cast<std::int16_t>(r.U16(header + 6));
    bpp = r.U16(header + 10);
    paletteEntry = 3;
  } else if (headerSize >= 40) {
    width = r.I32(header + 4);
    height = r.I32(header + 8);
    bpp = r.U16(header + 14);
    compression = r.U32(header + 16);
    colorsUsed = r.U32(header + 32);
    if (compression == 3 || compression == 6) {  // BI_BITFIELDS, BI_ALPHABITFIELDS
      hasMasks = true;
      masks[0] = r.U32(header + 40);
      masks[1] = r.U32(header + 44);
      masks[2] = r.U32(header + 48);
      masks[3] = (compression == 6 || headerSize >= 56) ? r.U32(header + 52) : 0;
    } else if (compression != 0) {
      r.Fail("compression " + std::to_string(compression) + " is not supported");
    }
  } else {
    r.Fail("unknown header size");
  }
  bool topDown = height < 0;
  if (topDown) {
    if (height == INT32_MIN) r.Fail("bad height");
    height = -height;
  }
  if (icon) height /= 2;
  if (width <= 0 || height <= 0 || width > kMaxImageSide || height > kMaxImageSide) r.Fail("size out of range");
  if (bpp != 1 && bpp != 4 && bpp != 8 && bpp != 16 && bpp != 24 && bpp != 32) r.Fail("unsupported bit depth");
  if (bpp == 16 && !hasMasks) {
    masks[0] = 0x7C00;
    masks[1] = 0x03E0;
    masks[2] = 0x001F;
  }

  std::size_t paletteAt = header + headerSize + ((hasMasks && headerSize == 40) ? 12 : 0);
  std::vector<std::uint32_t> palette;
  if (bpp <= 8) {
    std::size_t count = colorsUsed ? colorsUsed : (1u << bpp);
    if (count > 256) r.Fail("palette too large");
    r.Need(paletteAt, count * paletteEntry);
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint8_t* e = r.At(paletteAt + i * paletteEntry);
      palette.push_back(0xFF000000u | (e[2] << 16) | (e[1] << 8) | e[0]);
    }
    if (!pixelOffset) pixelOffset = paletteAt + count * paletteEntry;
  } else if (!pixelOffset) {
    pixelOffset = paletteAt;
  }

  const std::size_t stride = ((static_cast<std::size_t>(width) * bpp + 31) / 32) * 4;
  r.Need(pixelOffset, stride * static_cast<std::size_t>(height));
  image.Width = width;
  image.Height = height;
  image.Pixels.assign(static_cast<std::size_t>(width) * height, 0);
  bool anyAlpha = false;
  for (int y = 0; y < height; ++y) {
    const std::uint8_t* row = r.At(pixelOffset + stride * static_cast<std::size_t>(topDown ? y : height - 1 - y));
    std::uint32_t* out = image.Pixels.data() + static_cast<std::size_t>(y) * width;
    for (int x = 0; x < width; ++x) {
      std::uint32_t c = 0;
      switch (bpp) {
        case 1:
        case 4:
        case 8: {
          std::size_t bit = static_cast<std::size_t>(x) * bpp;
          std::uint32_t index = (row[bit / 8] >> (8 - bpp - bit % 8)) & ((1u << bpp) - 1);
          c = index < palette.size() ? palette[index] : 0xFF000000u;
          break;
        }
        case 16: {
          std::uint32_t v = row[x * 2] | (row[x * 2 + 1] << 8);
          c = (MaskValue(v, masks[0]) << 16) | (MaskValue(v, masks[1]) << 8) | MaskValue(v, masks[2]);
          c |= masks[3] ? (MaskValue(v, masks[3]) << 24) : 0xFF000000u;
          break;
        }
        case 24:
          c = 0xFF000000u | (row[x * 3 + 2] << 16) | (row[x * 3 + 1] << 8) | row[x * 3];
          break;
        case 32: {
          std::uint32_t v;
          std::memcpy(&v, row + x * 4, 4);
          if (hasMasks) {
            c = (MaskValue(v, masks[0]) << 16) | (MaskValue(v, masks[1]) << 8) | MaskValue(v, masks[2]);
            c |= masks[3] ? (MaskValue(v, masks[3]) << 24) : 0xFF000000u;
          } else {
            c = v;  // alpha decided below
          }
          break;
        }
      }
      out[x] = c;
      if ((c >> 24) != 0) anyAlpha = true;
    }
  }
  // Plain 32-bit bitmaps often leave the fourth byte zero: then it is not alpha.
  if (bpp == 32 && !hasMasks && !anyAlpha)
    for (std::uint32_t& p : image.Pixels) p |= 0xFF000000u;
  bool alphaFromData = bpp == 32 && anyAlpha;
  if (icon && !alphaFromData) {
    std::size_t maskStride = ((static_cast<std::size_t>(width) + 31) / 32) * 4;
    std::size_t maskAt = pixelOffset + stride * static_cast<std::size_t>(height);
    if (maskAt + maskStride * static_cast<std::size_t>(height) <= r.Size()) {
      for (int y = 0; y < height; ++y) {
        const std::uint8_t* row = r.At(maskAt + maskStride * static_cast<std::size_t>(height - 1 - y));
        for (int x = 0; x < width; ++x)
          if ((row[x / 8] >> (7 - x % 8)) & 1) image.Pixels[static_cast<std::size_t>(y) * width + x] = 0;
      }
    }
  }
  for (std::uint32_t& p : image.Pixels) p = PremultiplyColor(p);
}

}  // namespace

bool IsBmp(const std::uint8_t* data, std::size_t size) { return size >= 2 && data[0] == 'B' && data[1] == 'M'; }

void DecodeBmp(const std::uint8_t* data, std::size_t size, TRawImage& image) {
  TReader r(data, size, "BMP");
  r.Need(0, 18);
  std::uint32_t offset = r.U32(10);
  if (offset >= size) r.Fail("pixel offset beyond the end");
  DecodeDib(r, 14, offset, false, image);
}

bool IsIco(const std::uint8_t* data, std::size_t size) {
  return size >= 6 && data[0] == 0 && data[1] == 0 && (data[2] == 1 || data[2] == 2) && data[3] == 0;
}

void DecodeIco(const std::uint8_t* data, std::size_t size, TRawImage& image) {
  TReader r(data, size, "ICO");
  std::uint32_t count = r.U16(4);
  if (count == 0) r.Fail("no images");
  r.Need(6, count * 16u);
  std::size_t best = 0;
  std::uint64_t bestScore = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    std::size_t e = 6 + i * 16u;
    std::uint64_t w = r.U8(e) ? r.U8(e) : 256, h = r.U8(e + 1) ? r.U8(e + 1) : 256;
    std::uint64_t score = (w * h) << 8 | r.U16(e + 6);
    if (score > bestScore) {
      bestScore = score;
      best = e;
    }
  }
  std::uint32_t length = r.U32(best + 8), offset = r.U32(best + 12);
  r.Need(offset, length);
  if (length < 8) r.Fail("image entry too short");
  if (IsPng(r.At(offset), length)) {
    DecodePng(r.At(offset), length, image);
    return;
  }
  TReader entry(r.At(offset), length, "ICO");
  DecodeDib(entry, 0, 0, true, image);
}

}  // namespace qx::codec
