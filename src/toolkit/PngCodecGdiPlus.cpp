// PNG through the GDI+ flat API (the Windows build has no libpng).

#ifdef _WIN32

#include <objidl.h>
#include <shlwapi.h>
#include <windows.h>

#include <cstring>

#include "toolkit/Bitmap.h"
#include "toolkit/ImageCodec.h"
#include "toolkit/Types.h"

namespace {

struct TGdiplusStartupInput {
  UINT32 GdiplusVersion;
  void* DebugEventCallback;
  BOOL SuppressBackgroundThread;
  BOOL SuppressExternalCodecs;
};
struct TGpRect {
  INT X, Y, Width, Height;
};
struct TGpBitmapData {
  UINT Width;
  UINT Height;
  INT Stride;
  INT PixelFormat;
  void* Scan0;
  UINT_PTR Reserved;
};

constexpr INT kPixelFormat32bppPARGB = 0xE200B;
constexpr UINT kLockRead = 1;
constexpr UINT kLockWrite = 2;
// {557CF406-1A04-11D3-9A73-0000F81EF32E}: the PNG encoder of GDI+.
const CLSID kPngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

}  // namespace

extern "C" {
int WINAPI GdiplusStartup(ULONG_PTR* token, const TGdiplusStartupInput* input, void* output);
void WINAPI GdiplusShutdown(ULONG_PTR token);
int WINAPI GdipCreateBitmapFromStream(IStream* stream, void** bitmap);
int WINAPI GdipCreateBitmapFromScan0(INT width, INT height, INT stride, INT format, BYTE* scan0, void** bitmap);
int WINAPI GdipGetImageWidth(void* image, UINT* width);
int WINAPI GdipGetImageHeight(void* image, UINT* height);
int WINAPI GdipBitmapLockBits(void* bitmap, const TGpRect* rect, UINT flags, INT format, TGpBitmapData* data);
int WINAPI GdipBitmapUnlockBits(void* bitmap, TGpBitmapData* data);
int WINAPI GdipSaveImageToStream(void* image, IStream* stream, const CLSID* encoder, const void* params);
int WINAPI GdipDisposeImage(void* image);
}

namespace qx::codec {
namespace {

ULONG_PTR gToken = 0;

void EnsureGdiplus() {
  if (gToken) return;
  TGdiplusStartupInput input{1, nullptr, FALSE, FALSE};
  if (GdiplusStartup(&gToken, &input, nullptr) != 0) {
    gToken = 0;
    throw EInvalidImage("GDI+ cannot start");
  }
}

}  // namespace

bool IsPng(const std::uint8_t* data, std::size_t size) {
  static const std::uint8_t kSignature[8] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
  return size >= 8 && std::memcmp(data, kSignature, 8) == 0;
}

void DecodePng(const std::uint8_t* data, std::size_t size, TRawImage& image) {
  EnsureGdiplus();
  IStream* stream = SHCreateMemStream(data, static_cast<UINT>(size));
  if (!stream) throw EInvalidImage("Cannot read PNG: out of memory");
  void* bitmap = nullptr;
  int status = GdipCreateBitmapFromStream(stream, &bitmap);
  stream->Release();
  if (status != 0 || !bitmap) throw EInvalidImage("Damaged PNG");
  UINT w = 0, h = 0;
  GdipGetImageWidth(bitmap, &w);
  GdipGetImageHeight(bitmap, &h);
  if (w == 0 || h == 0 || w > kMaxImageSide || h > kMaxImageSide) {
    GdipDisposeImage(bitmap);
    throw EInvalidImage("PNG size out of range");
  }
  TGpRect rect{0, 0, static_cast<INT>(w), static_cast<INT>(h)};
  TGpBitmapData locked{};
  if (GdipBitmapLockBits(bitmap, &rect, kLockRead, kPixelFormat32bppPARGB, &locked) != 0) {
    GdipDisposeImage(bitmap);
    throw EInvalidImage("Damaged PNG");
  }
  image.Width = static_cast<int>(w);
  image.Height = static_cast<int>(h);
  image.Pixels.resize(static_cast<std::size_t>(w) * h);
  for (UINT y = 0; y < h; ++y)
    std::memcpy(image.Pixels.data() + static_cast<std::size_t>(y) * w,
                static_cast<const std::uint8_t*>(locked.Scan0) + static_cast<std::ptrdiff_t>(y) * locked.Stride, w * 4);
  GdipBitmapUnlockBits(bitmap, &locked);
  GdipDisposeImage(bitmap);
}

std::vector<std::uint8_t> EncodePng(const TRawImage& image) {
  EnsureGdiplus();
  std::vector<std::uint32_t> pixels = image.Pixels;
  void* bitmap = nullptr;
  if (GdipCreateBitmapFromScan0(image.Width, image.Height, image.Width * 4, kPixelFormat32bppPARGB,
                                reinterpret_cast<BYTE*>(pixels.data()), &bitmap) != 0)
    throw EInvalidImage("Cannot encode PNG");
  IStream* stream = nullptr;
  if (CreateStreamOnHGlobal(nullptr, TRUE, &stream) != S_OK) {
    GdipDisposeImage(bitmap);
    throw EInvalidImage("Cannot encode PNG: out of memory");
  }
  int status = GdipSaveImageToStream(bitmap, stream, &kPngEncoder, nullptr);
  GdipDisposeImage(bitmap);
  std::vector<std::uint8_t> out;
  if (status == 0) {
    LARGE_INTEGER zero{};
    ULARGE_INTEGER end{};
    stream->Seek(zero, STREAM_SEEK_END, &end);
    stream->Seek(zero, STREAM_SEEK_SET, nullptr);
    out.resize(static_cast<std::size_t>(end.QuadPart));
    ULONG read = 0;
    stream->Read(out.data(), static_cast<ULONG>(out.size()), &read);
    out.resize(read);
  }
  stream->Release();
  if (status != 0 || out.empty()) throw EInvalidImage("Cannot encode PNG");
  return out;
}

void ShutdownCodecs() {
  if (gToken) GdiplusShutdown(gToken);
  gToken = 0;
}

}  // namespace qx::codec

#endif
