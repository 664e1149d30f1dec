// libpng writes the signature and the header and frames every chunk with its CRC; it
// knows nothing of animation, so the animation chunks and each frame's compressed rows
// are made here and handed over as raw chunks.

#include "ApngWriter.h"

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace qx {
namespace {

void PutU32(std::vector<std::uint8_t>& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<std::uint8_t>(value >> shift));
}

void PutU16(std::vector<std::uint8_t>& out, std::uint16_t value) {
  out.push_back(static_cast<std::uint8_t>(value >> 8));
  out.push_back(static_cast<std::uint8_t>(value));
}

// The frame's rows as straight RGBA, each led by filter type 0, padded to the canvas, deflated.
std::vector<std::uint8_t> CompressedRows(const TBitmap& frame, int width, int height) {
  std::vector<std::uint8_t> raw;
  raw.reserve(static_cast<std::size_t>(height) * (1 + static_cast<std::size_t>(width) * 4));
  const std::uint32_t* bits = frame.Bits();
  for (int y = 0; y < height; ++y) {
    raw.push_back(0);
    for (int x = 0; x < width; ++x) {
      const bool inside = bits && x < frame.Width() && y < frame.Height();
      const std::uint32_t pixel =
          inside ? UnpremultiplyColor(
                       bits[static_cast<std::size_t>(y) * static_cast<std::size_t>(frame.Width()) +
                            static_cast<std::size_t>(x)])
                 : 0u;
      raw.insert(raw.end(), {static_cast<std::uint8_t>(pixel >> 16), static_cast<std::uint8_t>(pixel >> 8),
                             static_cast<std::uint8_t>(pixel), static_cast<std::uint8_t>(pixel >> 24)});
    }
  }
  uLongf size = compressBound(static_cast<uLong>(raw.size()));
  std::vector<std::uint8_t> packed(size);
  if (compress2(packed.data(), &size, raw.data(), static_cast<uLong>(raw.size()), Z_DEFAULT_COMPRESSION) !=
      Z_OK)
    return {};
  packed.resize(size);
  return packed;
}

struct TPngWrite {
  png_structp Png = nullptr;
  png_infop Info = nullptr;
  ~TPngWrite() { png_destroy_write_struct(&Png, &Info); }
};

struct TFileClose {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

struct TChunk {
  const char* Name;
  std::vector<std::uint8_t> Data;
};

// Kept out of line: the optimiser must not bring the chunks' making under setjmp.
[[gnu::noinline]] bool WriteChunks(std::FILE* out, int width, int height, const std::vector<TChunk>& chunks) {
  TPngWrite write;
  write.Png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  if (!write.Png) return false;
  write.Info = png_create_info_struct(write.Png);
  if (!write.Info) return false;
  // libpng reports a failed write by jumping back here; everything it would skip is made before.
  if (setjmp(png_jmpbuf(write.Png))) return false;
  png_init_io(write.Png, out);
  png_set_IHDR(write.Png, write.Info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
               PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_write_info(write.Png, write.Info);
  for (const TChunk& chunk : chunks)
    png_write_chunk(write.Png, reinterpret_cast<png_const_bytep>(chunk.Name), chunk.Data.data(),
                    chunk.Data.size());
  return std::fflush(out) == 0;
}

}  // namespace

bool WriteApng(const std::filesystem::path& file, const std::vector<const TBitmap*>& frames,
               std::uint16_t frameMs) {
  std::vector<const TBitmap*> shown;
  int width = 0, height = 0;
  for (const TBitmap* frame : frames) {
    if (!frame) continue;
    shown.push_back(frame);
    width = std::max(width, frame->Width());
    height = std::max(height, frame->Height());
  }
  if (width == 0 || height == 0) return false;

  // Every chunk after the header, made before libpng may jump out of this function.
  std::vector<TChunk> chunks;
  std::vector<std::uint8_t> control;
  PutU32(control, static_cast<std::uint32_t>(shown.size()));
  PutU32(control, 0);  // loops for ever
  chunks.push_back({"acTL", std::move(control)});
  std::uint32_t sequence = 0;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    std::vector<std::uint8_t> frameControl;
    PutU32(frameControl, sequence++);
    PutU32(frameControl, static_cast<std::uint32_t>(width));
    PutU32(frameControl, static_cast<std::uint32_t>(height));
    PutU32(frameControl, 0);  // x offset
    PutU32(frameControl, 0);  // y offset
    PutU16(frameControl, frameMs);
    PutU16(frameControl, 1000);
    frameControl.push_back(0);  // dispose: none
    frameControl.push_back(0);  // blend: source
    chunks.push_back({"fcTL", std::move(frameControl)});
    std::vector<std::uint8_t> rows = CompressedRows(*shown[i], width, height);
    if (rows.empty()) return false;
    if (i == 0) {
      // The first frame is also the still picture.
      chunks.push_back({"IDAT", std::move(rows)});
      continue;
    }
    std::vector<std::uint8_t> data;
    data.reserve(rows.size() + 4);
    PutU32(data, sequence++);
    data.insert(data.end(), rows.begin(), rows.end());
    chunks.push_back({"fdAT", std::move(data)});
  }
  chunks.push_back({"IEND", {}});

  std::unique_ptr<std::FILE, TFileClose> out(std::fopen(file.string().c_str(), "wb"));
  return out && WriteChunks(out.get(), width, height, chunks);
}

}  // namespace qx
