#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "ApngWriter.h"

namespace qx {
namespace {

struct TChunkRead {
  std::string Name;
  std::vector<std::uint8_t> Data;
};

std::uint32_t U32(const std::uint8_t* p) {
  return static_cast<std::uint32_t>(p[0]) << 24 | static_cast<std::uint32_t>(p[1]) << 16 |
         static_cast<std::uint32_t>(p[2]) << 8 | p[3];
}

// Every chunk of the file, each checked against its CRC.
std::vector<TChunkRead> ReadChunks(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)),
                                        std::istreambuf_iterator<char>());
  std::vector<TChunkRead> chunks;
  EXPECT_GE(bytes.size(), 8u);
  std::size_t at = 8;
  while (at + 12 <= bytes.size()) {
    const std::uint32_t length = U32(&bytes[at]);
    TChunkRead chunk{
        std::string(bytes.begin() + static_cast<long>(at) + 4, bytes.begin() + static_cast<long>(at) + 8),
        {bytes.begin() + static_cast<long>(at) + 8, bytes.begin() + static_cast<long>(at + 8 + length)}};
    // Over the name and the data at once: an empty chunk's null data would restart the sum.
    const uLong crc = crc32(0, &bytes[at + 4], static_cast<uInt>(4 + length));
    EXPECT_EQ(crc, U32(&bytes[at + 8 + length])) << chunk.Name;
    chunks.push_back(std::move(chunk));
    at += 12 + length;
  }
  return chunks;
}

std::vector<std::uint8_t> Inflate(const std::uint8_t* data, std::size_t size, std::size_t expected) {
  std::vector<std::uint8_t> out(expected + 16);
  uLongf length = static_cast<uLongf>(out.size());
  EXPECT_EQ(uncompress(out.data(), &length, data, static_cast<uLong>(size)), Z_OK);
  out.resize(length);
  return out;
}

TEST(ApngWriter, FramesAreAnimationChunksOnTheLargestCanvas) {
  TBitmap first(3, 2);
  first.Clear(0xFFFF0000u);
  TBitmap second(2, 1);
  second.Clear(0xFF0000FFu);
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "qx-apng-test.png";
  ASSERT_TRUE(WriteApng(file, {&first, nullptr, &second}, 250));
  const std::vector<TChunkRead> chunks = ReadChunks(file);
  std::filesystem::remove(file);

  std::vector<std::string> names;
  for (const TChunkRead& chunk : chunks) names.push_back(chunk.Name);
  EXPECT_EQ(names, (std::vector<std::string>{"IHDR", "acTL", "fcTL", "IDAT", "fcTL", "fdAT", "IEND"}));
  ASSERT_EQ(chunks.size(), 7u);
  EXPECT_EQ(U32(&chunks[0].Data[0]), 3u);
  EXPECT_EQ(U32(&chunks[0].Data[4]), 2u);
  EXPECT_EQ(U32(&chunks[1].Data[0]), 2u) << "frames";
  EXPECT_EQ(U32(&chunks[1].Data[4]), 0u) << "loops";
  // Sequence numbers run over fcTL and fdAT alike.
  EXPECT_EQ(U32(&chunks[2].Data[0]), 0u);
  EXPECT_EQ(U32(&chunks[4].Data[0]), 1u);
  EXPECT_EQ(U32(&chunks[5].Data[0]), 2u);
  EXPECT_EQ(chunks[4].Data[20] << 8 | chunks[4].Data[21], 250) << "delay numerator";
  EXPECT_EQ(chunks[4].Data[22] << 8 | chunks[4].Data[23], 1000) << "delay denominator";

  const std::size_t rowBytes = 1 + 3 * 4;
  const auto still = Inflate(chunks[3].Data.data(), chunks[3].Data.size(), 2 * rowBytes);
  ASSERT_EQ(still.size(), 2 * rowBytes);
  EXPECT_EQ(std::vector<std::uint8_t>(still.begin(), still.begin() + 5),
            (std::vector<std::uint8_t>{0, 0xFF, 0x00, 0x00, 0xFF}));
  const auto later = Inflate(chunks[5].Data.data() + 4, chunks[5].Data.size() - 4, 2 * rowBytes);
  ASSERT_EQ(later.size(), 2 * rowBytes);
  EXPECT_EQ(std::vector<std::uint8_t>(later.begin(), later.begin() + 5),
            (std::vector<std::uint8_t>{0, 0x00, 0x00, 0xFF, 0xFF}));
  // Outside the smaller frame the canvas is transparent.
  EXPECT_EQ(std::vector<std::uint8_t>(later.begin() + 9, later.begin() + 13),
            (std::vector<std::uint8_t>(4, 0)));
  EXPECT_EQ(std::vector<std::uint8_t>(later.begin() + rowBytes + 1, later.begin() + rowBytes + 5),
            (std::vector<std::uint8_t>(4, 0)));

  EXPECT_FALSE(WriteApng(file, {nullptr}));
}

}  // namespace
}  // namespace qx
