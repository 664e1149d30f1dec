#include "fakehost/FakeEnginePainter.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <tuple>

#include "toolkit/Bitmap.h"

namespace qx {
namespace {

std::uint32_t HashOf(std::u16string_view text) {
  std::uint32_t hash = 2166136261u;
  for (char16_t c : text) hash = (hash ^ c) * 16777619u;
  return hash;
}

void FillRect(TBitmap& bitmap, int left, int top, int right, int bottom, std::uint32_t colour) {
  left = std::max(left, 0);
  top = std::max(top, 0);
  right = std::min(right, bitmap.Width());
  bottom = std::min(bottom, bitmap.Height());
  std::uint32_t* bits = bitmap.Bits();
  for (int y = top; y < bottom; ++y)
    for (int x = left; x < right; ++x) bits[static_cast<std::size_t>(y) * bitmap.Width() + x] = colour;
}

}  // namespace

std::uint32_t PageSnapshotColour(std::u16string_view uri) {
  return 0xFF000000u | (HashOf(uri) & 0x00FFFFFFu);
}

namespace {

std::vector<std::uint8_t> Paint(std::u16string_view uri, int width, int height) {
  const std::uint32_t hash = HashOf(uri);
  TBitmap bitmap(width, height);
  bitmap.Clear(PageSnapshotColour(uri));
  // A light page under a header band, with content blocks placed by the URI.
  FillRect(bitmap, 0, height / 5, width, height, 0xFFF4F4F4u);
  const int blocks = 2 + static_cast<int>(hash >> 28) % 3;
  for (int i = 0; i < blocks; ++i) {
    const int top = height / 5 + 2 + i * (height * 4 / 5) / blocks;
    const int inset =
        2 + static_cast<int>((hash >> (i * 5)) % static_cast<std::uint32_t>(std::max(width / 3, 1)));
    FillRect(bitmap, 2, top, width - inset, top + std::max(height / (2 * blocks), 1),
             0xFF606060u | (hash & 0x3F3F3Fu));
  }
  bitmap.BitmapChanged();
  std::ostringstream encoded(std::ios::binary);
  bitmap.SaveToStream(encoded);
  const std::string bytes = std::move(encoded).str();
  return {bytes.begin(), bytes.end()};
}

}  // namespace

std::vector<std::uint8_t> PaintPageSnapshot(std::u16string_view uri, int width, int height) {
  if (width < 1 || height < 1) return {};
  // Encoding is most of a snapshot's cost and a page always paints the same picture,
  // so long runs that photograph the same few pages again and again keep the bytes.
  using TKey = std::tuple<std::u16string, int, int>;
  static std::mutex lock;
  static std::map<TKey, std::vector<std::uint8_t>> painted;
  constexpr std::size_t kMaxKept = 1024;
  TKey key{std::u16string(uri), width, height};
  {
    std::lock_guard<std::mutex> guard(lock);
    if (auto found = painted.find(key); found != painted.end()) return found->second;
  }
  std::vector<std::uint8_t> bytes = Paint(uri, width, height);
  std::lock_guard<std::mutex> guard(lock);
  if (painted.size() >= kMaxKept) painted.clear();
  painted.emplace(std::move(key), bytes);
  return bytes;
}

}  // namespace qx
