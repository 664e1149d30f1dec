#include "common/GoldenPicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace qx::test {

namespace {

namespace fs = std::filesystem;

// Largest difference of one channel between two premultiplied pixels.
int ChannelDifference(std::uint32_t a, std::uint32_t b) {
  int worst = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    const int d = std::abs(static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF));
    worst = std::max(worst, d);
  }
  return worst;
}

// Opaque black where the pictures agree, brighter red the more they differ; a
// difference just over the tolerance still shows.
std::uint32_t DifferencePixel(int difference) {
  if (difference == 0) return 0xFF000000u;
  const int red = std::min(255, 64 + difference * 4);
  return 0xFF000000u | static_cast<std::uint32_t>(red) << 16;
}

}  // namespace

void ExpectMatchesGolden(const TBitmap& actual, const std::string& golden) {
  const fs::path goldenPath = fs::path(QX_TEST_SOURCE_DIR) / golden;
  if (std::getenv("QX_UPDATE_GOLDEN")) {
    actual.SaveToFile(goldenPath);
    GTEST_SKIP() << "golden picture written: " << goldenPath;
  }
  ASSERT_TRUE(fs::exists(goldenPath)) << goldenPath << " is missing; run with QX_UPDATE_GOLDEN=1 to write it";
  const auto expected = TBitmap::CreateFromFile(goldenPath);
  ASSERT_TRUE(expected) << goldenPath << " does not load";

  const fs::path outputDir = fs::path(QX_GOLDEN_OUTPUT_DIR);
  const std::string stem = fs::path(golden).parent_path().parent_path().filename().string() + "-" +
                           fs::path(golden).stem().string();
  const fs::path actualPath = outputDir / (stem + "-actual.png");
  const fs::path differencePath = outputDir / (stem + "-difference.png");
  std::error_code ignored;
  fs::remove(actualPath, ignored);
  fs::remove(differencePath, ignored);

  if (expected->Width() != actual.Width() || expected->Height() != actual.Height()) {
    fs::create_directories(outputDir);
    actual.SaveToFile(actualPath);
    ADD_FAILURE() << golden << " is " << expected->Width() << "x" << expected->Height()
                  << ", the picture drawn " << actual.Width() << "x" << actual.Height() << "; it is "
                  << actualPath;
    return;
  }
  TBitmap difference(actual.Width(), actual.Height());
  int worst = 0;
  int off = 0;
  for (int y = 0; y < actual.Height(); ++y) {
    for (int x = 0; x < actual.Width(); ++x) {
      const int d = ChannelDifference(actual.Pixel(x, y), expected->Pixel(x, y));
      difference.Bits()[static_cast<std::size_t>(y) * static_cast<std::size_t>(actual.Width()) +
                        static_cast<std::size_t>(x)] = DifferencePixel(d);
      worst = std::max(worst, d);
      if (d > kGoldenTolerance) ++off;
    }
  }
  if (worst <= kGoldenTolerance) return;
  fs::create_directories(outputDir);
  actual.SaveToFile(actualPath);
  difference.SaveToFile(differencePath);
  ADD_FAILURE() << golden << ": " << off << " pixels differ by more than " << kGoldenTolerance
                << " in a channel, the most by " << worst << "; drawn: " << actualPath
                << ", difference: " << differencePath;
}

}  // namespace qx::test
