#pragma once

// The toolkit's global registries. Each one fills itself on first use and is
// emptied by UnInitialize; TToolkit::Finalize runs all of them.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/Canvas.h"
#include "toolkit/ImageCodec.h"

namespace qx {

namespace glyphs {
class IFontFace;
}
class TTextLayout;
class TBitmap;
class TFmxObject;

struct TBitmapCodecDescriptor {
  std::string Extension;  // ".png"
  std::string Description;
  std::function<bool(const std::uint8_t*, std::size_t)> CanLoad;
  std::function<void(const std::uint8_t*, std::size_t, codec::TRawImage&)> Decode;
  std::function<std::vector<std::uint8_t>(const codec::TRawImage&)> Encode;  // empty: read only
};

class TBitmapCodecManager {
 public:
  static void RegisterBitmapCodecClass(TBitmapCodecDescriptor codec);
  static bool IsCodecRegistered(const std::string& extension);
  static std::vector<std::string> Extensions();
  // Raises EInvalidImage when no codec knows the data or the codec cannot read it.
  static void Decode(const std::uint8_t* data, std::size_t size, codec::TRawImage& image);
  static std::vector<std::uint8_t> EncodePng(const codec::TRawImage& image);
  static void UnInitialize();
};

class TTextLayoutManager {
 public:
  // The font cache: one face per family, size and style.
  static glyphs::IFontFace& Face(const TFont& font);
  static std::size_t CachedFaceCount();
  static std::unique_ptr<TTextLayout> TextLayoutByCanvas(TCanvas* canvas);
  static void UnInitialize();
};

class TStyleManager {
 public:
  // Named pictures a style provides (for example the caret colour swatch).
  static void SetStyleResource(const std::string& name, const TBitmap& bitmap);
  static const TBitmap* FindStyleResource(const std::string& name);
  static void UnInitialize();
};

class TFilterManager {
 public:
  using TFilterProc = std::function<void(TBitmap&, float)>;
  // Filters by name; "Blur" is built in (value = softness).
  static void RegisterFilter(const std::string& name, TFilterProc filter);
  static bool ApplyFilter(const std::string& name, TBitmap& bitmap, float value);
  static void UnInitialize();
};

class TShaderManager {
 public:
  // Blur kernels are the only shaders of a software canvas; they are cached by radius.
  static const std::vector<int>& BoxSizesForRadius(int radius);
  static void UnInitialize();
};

class TCanvasManager {
 public:
  static std::unique_ptr<TCanvas> CreateCanvasFromBitmap(TBitmap* bitmap);
  static std::string DefaultCanvasClass() { return "Software"; }
  static std::size_t CanvasesCreated();
  static void UnInitialize();
};

class TContextManager {
 public:
  // Our drawing has no GPU contexts; the manager only counts the scenes begun,
  // which the form uses to know whether it ever rendered.
  static void ContextCreated();
  static std::size_t ContextCount();
  static void UnInitialize();
};

}  // namespace qx
