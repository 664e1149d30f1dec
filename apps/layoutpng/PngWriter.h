#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qx::layoutpng {

// An RGB picture with the few drawing operations the tool needs.
class TPicture {
 public:
  TPicture(int width, int height, std::uint32_t background);

  int width() const { return width_; }
  int height() const { return height_; }
  void fillRect(int left, int top, int right, int bottom, std::uint32_t rgb);
  void frameRect(int left, int top, int right, int bottom, std::uint32_t rgb);
  void pixel(int x, int y, std::uint32_t rgb);
  void line(int x0, int y0, int x1, int y1, std::uint32_t rgb);

  // Writes an 8-bit RGB PNG; false with a message in error when that fails.
  bool save(const std::string& path, std::string& error) const;

 private:
  int width_;
  int height_;
  std::vector<std::uint8_t> rgb_;
};

}  // namespace qx::layoutpng
