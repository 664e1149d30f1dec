#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "ToolkitFixture.h"
#include "toolkit/Bitmap.h"
#include "toolkit/Managers.h"

namespace qx {
namespace {

using Bytes = std::vector<std::uint8_t>;

void Put16(Bytes& b, unsigned v) {
  b.push_back(static_cast<std::uint8_t>(v));
  b.push_back(static_cast<std::uint8_t>(v >> 8));
}
void Put32(Bytes& b, std::uint32_t v) {
  Put16(b, v & 0xFFFF);
  Put16(b, v >> 16);
}

// DIB header and pixels; icon images store twice the height and an AND mask.
Bytes Dib(int w, int h, int bpp, const std::vector<std::uint32_t>& pixels, bool icon,
          const Bytes& andMask = {}) {
  Bytes b;
  Put32(b, 40);
  Put32(b, static_cast<std::uint32_t>(w));
  Put32(b, static_cast<std::uint32_t>(icon ? h * 2 : h));
  Put16(b, 1);
  Put16(b, static_cast<unsigned>(bpp));
  for (int i = 0; i < 6; ++i) Put32(b, 0);
  int stride = ((w * bpp + 31) / 32) * 4;
  for (int y = h - 1; y >= 0; --y) {  // bottom-up
    Bytes row;
    for (int x = 0; x < w; ++x) {
      std::uint32_t p = pixels[static_cast<std::size_t>(y * w + x)];
      row.push_back(static_cast<std::uint8_t>(p));
      row.push_back(static_cast<std::uint8_t>(p >> 8));
      row.push_back(static_cast<std::uint8_t>(p >> 16));
      if (bpp == 32) row.push_back(static_cast<std::uint8_t>(p >> 24));
    }
    row.resize(static_cast<std::size_t>(stride), 0);
    b.insert(b.end(), row.begin(), row.end());
  }
  b.insert(b.end(), andMask.begin(), andMask.end());
  return b;
}

Bytes Bmp(int w, int h, int bpp, const std::vector<std::uint32_t>& pixels) {
  Bytes dib = Dib(w, h, bpp, pixels, false);
  Bytes b = {'B', 'M'};
  Put32(b, static_cast<std::uint32_t>(14 + dib.size()));
  Put32(b, 0);
  Put32(b, 14 + 40);
  b.insert(b.end(), dib.begin(), dib.end());
  return b;
}

Bytes Ico(const std::vector<std::pair<int, Bytes>>& images) {
  Bytes b;
  Put16(b, 0);
  Put16(b, 1);
  Put16(b, static_cast<unsigned>(images.size()));
  std::uint32_t offset = static_cast<std::uint32_t>(6 + 16 * images.size());
  for (auto& [size, data] : images) {
    b.push_back(static_cast<std::uint8_t>(size));
    b.push_back(static_cast<std::uint8_t>(size));
    b.push_back(0);
    b.push_back(0);
    Put16(b, 1);
    Put16(b, 32);
    Put32(b, static_cast<std::uint32_t>(data.size()));
    Put32(b, offset);
    offset += static_cast<std::uint32_t>(data.size());
  }
  for (auto& [size, data] : images) b.insert(b.end(), data.begin(), data.end());
  return b;
}

class ToolkitCodec : public test::ToolkitTest {};

TEST_F(ToolkitCodec, PngRoundTripThroughStreamAndFile) {
  TBitmap b(4, 3);
  b.Clear(0x80FF0000u);
  b.Bits()[5] = PremultiplyColor(0xFF00FF00u);
  std::stringstream stream;
  b.SaveToStream(stream);
  auto back = TBitmap::CreateFromStream(stream);
  ASSERT_EQ(back->Width(), 4);
  ASSERT_EQ(back->Height(), 3);
  EXPECT_EQ(back->PixelColor(1, 1), 0xFF00FF00u);
  EXPECT_EQ(back->PixelColor(0, 0) >> 24, 0x80u);

  auto dir = std::filesystem::temp_directory_path() / ("qx_toolkit_codec_" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir);
  b.SaveToFile(dir / "x.png");
  auto fromFile = TBitmap::CreateFromFile(dir / "x.png");
  EXPECT_EQ(fromFile->PixelColor(1, 1), 0xFF00FF00u);
  std::filesystem::remove_all(dir);
}

TEST_F(ToolkitCodec, DamagedOrTruncatedPngRaises) {
  TBitmap b(16, 16);
  b.Clear(TAlphaColors::Red);
  std::stringstream stream;
  b.SaveToStream(stream);
  std::string png = stream.str();
  TBitmap target;
  for (std::size_t cut : {png.size() - 20, png.size() / 2, std::size_t(12), std::size_t(8)}) {
    std::string part = png.substr(0, cut);
    EXPECT_THROW(target.LoadFromMemory(reinterpret_cast<const std::uint8_t*>(part.data()), part.size()),
                 EInvalidImage)
        << "cut at " << cut;
  }
  std::string flipped = png;
  for (std::size_t i = 40; i < flipped.size() - 12; i += 3) flipped[i] = static_cast<char>(flipped[i] ^ 0x5A);
  EXPECT_THROW(target.LoadFromMemory(reinterpret_cast<const std::uint8_t*>(flipped.data()), flipped.size()),
               EInvalidImage);
  EXPECT_THROW(target.LoadFromFile("/nonexistent/picture.png"), EInvalidImage);
  const std::uint8_t junk[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  EXPECT_THROW(target.LoadFromMemory(junk, sizeof junk), EInvalidImage);
  EXPECT_THROW(target.LoadFromMemory(junk, 0), EInvalidImage);
  EXPECT_TRUE(target.IsEmpty());
}

TEST_F(ToolkitCodec, ReadsBmp24And32) {
  std::vector<std::uint32_t> px = {0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, 0xFFFFFFFFu};
  Bytes bmp = Bmp(2, 2, 24, px);
  TBitmap b;
  b.LoadFromMemory(bmp.data(), bmp.size());
  EXPECT_EQ(b.PixelColor(0, 0), 0xFFFF0000u);
  EXPECT_EQ(b.PixelColor(1, 0), 0xFF00FF00u);
  EXPECT_EQ(b.PixelColor(0, 1), 0xFF0000FFu);
  // 32-bit with a zero fourth byte everywhere is opaque.
  Bytes bmp32 = Bmp(2, 2, 32, {0x00FF0000u, 0x0000FF00u, 0x000000FFu, 0x00FFFFFFu});
  b.LoadFromMemory(bmp32.data(), bmp32.size());
  EXPECT_EQ(b.PixelColor(0, 0), 0xFFFF0000u);
}

TEST_F(ToolkitCodec, DamagedBmpAndIcoRaise) {
  Bytes bmp = Bmp(4, 4, 24, std::vector<std::uint32_t>(16, 0xFF808080u));
  TBitmap b;
  for (std::size_t cut : {bmp.size() - 1, std::size_t(30), std::size_t(14), std::size_t(3)}) {
    Bytes part(bmp.begin(), bmp.begin() + static_cast<std::ptrdiff_t>(cut));
    EXPECT_THROW(b.LoadFromMemory(part.data(), part.size()), EInvalidImage) << "cut at " << cut;
  }
  Bytes huge = bmp;
  huge[18] = 0xFF;
  huge[19] = 0xFF;
  huge[20] = 0xFF;
  huge[21] = 0x7F;  // width 2^31 - 1
  EXPECT_THROW(b.LoadFromMemory(huge.data(), huge.size()), EInvalidImage);
  Bytes rle = bmp;
  rle[14 + 16] = 1;  // compressed: not read
  EXPECT_THROW(b.LoadFromMemory(rle.data(), rle.size()), EInvalidImage);

  Bytes big = Dib(2, 2, 32, std::vector<std::uint32_t>(4, 0xFFFFFFFFu), true, Bytes(8, 0));
  Bytes ico = Ico({{2, big}});
  for (std::size_t cut : {ico.size() - 1, std::size_t(30), std::size_t(10)}) {
    Bytes part(ico.begin(), ico.begin() + static_cast<std::ptrdiff_t>(cut));
    EXPECT_THROW(b.LoadFromMemory(part.data(), part.size()), EInvalidImage) << "cut at " << cut;
  }
  Bytes empty = {0, 0, 1, 0, 0, 0};
  EXPECT_THROW(b.LoadFromMemory(empty.data(), empty.size()), EInvalidImage);
  Bytes badOffset = ico;
  badOffset[18] = 0xFF;
  badOffset[19] = 0xFF;
  EXPECT_THROW(b.LoadFromMemory(badOffset.data(), badOffset.size()), EInvalidImage);
}

TEST_F(ToolkitCodec, IcoPicksLargestUsesAlphaOrMaskAndReadsAPngInside) {
  Bytes small = Dib(1, 1, 32, {0xFF0000FFu}, true, Bytes(4, 0));
  std::vector<std::uint32_t> px = {0x80FF0000u, 0xFFFF0000u, 0xFFFF0000u, 0x00000000u};
  Bytes big = Dib(2, 2, 32, px, true, Bytes(8, 0));
  Bytes ico = Ico({{1, small}, {2, big}});
  TBitmap b;
  b.LoadFromMemory(ico.data(), ico.size());
  ASSERT_EQ(b.Width(), 2);
  EXPECT_EQ(b.PixelColor(0, 0), 0x80FF0000u);
  EXPECT_EQ(b.PixelColor(1, 1), 0u);

  // 24-bit icon: transparency from the AND mask (top row masked; rows are stored bottom-up).
  Bytes mask = {0x00, 0, 0, 0, 0xC0, 0, 0, 0};
  Bytes rgb = Dib(2, 2, 24, {0xFF00FF00u, 0xFF00FF00u, 0xFF00FF00u, 0xFF00FF00u}, true, mask);
  Bytes ico24 = Ico({{2, rgb}});
  b.LoadFromMemory(ico24.data(), ico24.size());
  EXPECT_EQ(b.PixelColor(0, 0), 0u);
  EXPECT_EQ(b.PixelColor(0, 1), 0xFF00FF00u);

  TBitmap src(3, 3);
  src.Clear(TAlphaColors::Lime);
  std::stringstream stream;
  src.SaveToStream(stream);
  std::string png = stream.str();
  Bytes icoPng = Ico({{3, Bytes(png.begin(), png.end())}});
  b.LoadFromMemory(icoPng.data(), icoPng.size());
  EXPECT_EQ(b.Width(), 3);
  EXPECT_EQ(b.PixelColor(2, 2), TAlphaColors::Lime);
}

TEST_F(ToolkitCodec, CodecManagerTableAndTeardown) {
  EXPECT_TRUE(TBitmapCodecManager::IsCodecRegistered(".png"));
  EXPECT_TRUE(TBitmapCodecManager::IsCodecRegistered(".ico"));
  TBitmapCodecManager::UnInitialize();
  // The table fills again on next use.
  EXPECT_TRUE(TBitmapCodecManager::IsCodecRegistered(".bmp"));
}

}  // namespace
}  // namespace qx
