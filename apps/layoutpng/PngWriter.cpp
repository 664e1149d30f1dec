#include "PngWriter.h"

#include <png.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace qx::layoutpng {

namespace {

// libpng reports errors by longjmp, so nothing with a destructor lives here.
const char* WritePng(std::FILE* file, int width, int height, const std::uint8_t* rgb) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  if (!png) return "libpng could not start";
  png_infop info = png_create_info_struct(png);
  if (!info) {
    png_destroy_write_struct(&png, nullptr);
    return "libpng could not start";
  }
  if (setjmp(png_jmpbuf(png))) {
    png_destroy_write_struct(&png, &info);
    return "libpng failed while writing";
  }
  png_init_io(png, file);
  png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8, PNG_COLOR_TYPE_RGB,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  const std::size_t stride = static_cast<std::size_t>(width) * 3;
  for (int y = 0; y < height; ++y) png_write_row(png, rgb + static_cast<std::size_t>(y) * stride);
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return nullptr;
}

}  // namespace

TPicture::TPicture(int width, int height, std::uint32_t background)
    : width_(std::max(width, 1)), height_(std::max(height, 1)),
      rgb_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_) * 3) {
  fillRect(0, 0, width_, height_, background);
}

void TPicture::pixel(int x, int y, std::uint32_t rgb) {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
  std::uint8_t* p = &rgb_[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)) * 3];
  p[0] = static_cast<std::uint8_t>(rgb >> 16);
  p[1] = static_cast<std::uint8_t>(rgb >> 8);
  p[2] = static_cast<std::uint8_t>(rgb);
}

void TPicture::fillRect(int left, int top, int right, int bottom, std::uint32_t rgb) {
  left = std::max(left, 0);
  top = std::max(top, 0);
  right = std::min(right, width_);
  bottom = std::min(bottom, height_);
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) pixel(x, y, rgb);
  }
}

void TPicture::frameRect(int left, int top, int right, int bottom, std::uint32_t rgb) {
  if (right <= left || bottom <= top) return;
  fillRect(left, top, right, top + 1, rgb);
  fillRect(left, bottom - 1, right, bottom, rgb);
  fillRect(left, top, left + 1, bottom, rgb);
  fillRect(right - 1, top, right, bottom, rgb);
}

void TPicture::line(int x0, int y0, int x1, int y1, std::uint32_t rgb) {
  const int dx = std::abs(x1 - x0), sx = x0 < x1 ? 1 : -1;
  const int dy = -std::abs(y1 - y0), sy = y0 < y1 ? 1 : -1;
  int err = dx + dy;
  for (;;) {
    pixel(x0, y0, rgb);
    if (x0 == x1 && y0 == y1) break;
    const int e2 = 2 * err;
    if (e2 >= dy) {
      err += dy;
      x0 += sx;
    }
    if (e2 <= dx) {
      err += dx;
      y0 += sy;
    }
  }
}

bool TPicture::save(const std::string& path, std::string& error) const {
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"), &std::fclose);
  if (!file) {
    error = "cannot open " + path + " for writing";
    return false;
  }
  if (const char* problem = WritePng(file.get(), width_, height_, rgb_.data())) {
    error = std::string(problem) + " (" + path + ")";
    return false;
  }
  if (std::fflush(file.get()) != 0) {
    error = "cannot write " + path;
    return false;
  }
  return true;
}

}  // namespace qx::layoutpng
