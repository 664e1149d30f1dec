#pragma once

// Skin pictures by key, loaded lazily from a folder the host names. A missing picture
// is no error: its getter answers null and looks again on the next call.

#include <cstdint>
#include <memory>
#include <string_view>

#include "base/Text.h"
#include "host/ServiceCoreWrapIntf.h"
#include "toolkit/Bitmap.h"
#include "toolkit/Canvas.h"
#include "toolkit/Types.h"

namespace qx {

inline constexpr char16_t kTabbarSkinPath[] = u"skin://widget/toolbar/PreviewStrip/";
inline constexpr char16_t kTopBarBackgroundPath[] = u"skin://widget/toolbar/PreviewStrip/TopBarBackground.png";
inline constexpr char16_t kCabinetBarSkinPath[] = u"skin://widget/toolbar/CabinetBar/";
inline constexpr char16_t kSmartSearchSkinPath[] = u"skin://widget/module/SmartSearch/";
inline constexpr char16_t kSearchEngineSkinPath[] = u"skin://widget/module/SearchEngine/";
inline constexpr char16_t kDefaultFaviconPath[] = u"favicon://default.ico";
inline constexpr char16_t kFaviconScheme[] = u"favicon://";
inline constexpr char16_t kNewTabPopupMenuPath[] = u"menu://toolbar/TabBar/NewTabButtonPopupMenu.xml";
inline constexpr char16_t kTabGroupPopupMenuPath[] = u"menu://toolbar/TabGroupBar/TabGroupPopupMenu.xml";
inline constexpr char16_t kNewTabButtonPopupMenuPath[] = u"menu://toolbar/TabBar/NewTabButtonPopupMenu.xml";

class TBitmapResourceManagerNoRTTI {
 public:
  TBitmapResourceManagerNoRTTI() = default;
  virtual ~TBitmapResourceManagerNoRTTI() = default;
  TBitmapResourceManagerNoRTTI(const TBitmapResourceManagerNoRTTI&) = delete;
  TBitmapResourceManagerNoRTTI& operator=(const TBitmapResourceManagerNoRTTI&) = delete;

  virtual TString GetExtension() const { return u".png"; }

  const TString& BasePath() const { return FBasePath; }
  const TString& Extension() const { return FExtension; }

  // Leaves field untouched (null) when the file is missing or unreadable.
  void LoadBitmap(std::unique_ptr<TBitmap>& field, std::u16string_view key);

 protected:
  // Derived constructors call this once their own GetExtension is in place.
  void InitExtension() { FExtension = GetExtension(); }
  // The picture of a key: the field's bitmap, loading it when it is still null.
  TBitmap* Lazy(std::unique_ptr<TBitmap>& field, std::u16string_view key);
  // A third (or other part) of a picture, cut once and kept in its own field.
  TBitmap* LazySlice(std::unique_ptr<TBitmap>& field, TBitmap* source, int parts, int index);

  TString FExtension;
  TString FBasePath;
};

class TQuillmarBitmapResourceManager : public TBitmapResourceManagerNoRTTI {
 public:
  // The folder of a host resource path ("skin://..."); a path the host cannot resolve
  // leaves only the delimiter, so every getter answers null.
  TQuillmarBitmapResourceManager(IServiceCoreWrap* serviceCore, std::u16string_view resourcePath);
  // A plain folder.
  explicit TQuillmarBitmapResourceManager(std::u16string_view folder);
};

// Cuts a horizontal strip into parts equal pieces (integer width; spare columns are
// dropped) and answers piece index. A null source gives null.
std::unique_ptr<TBitmap> SliceBitmap(const TBitmap* source, int parts, int index);

// A bitmap of the rounded size filled with colour.
std::unique_ptr<TBitmap> MakeSolidBitmap(TAlphaColor colour, float width, float height);

// Windows' MulDiv: a * b / c rounded half away from zero, -1 for c = 0.
std::int32_t MulDiv(std::int32_t a, std::int32_t b, std::int32_t c);

// The toolkit's font size for a system font of height fontHeight (device pixels) at
// the screen's vertical resolution: adjustment - MulDiv(fontHeight, 96, dpi).
float FontSizeFromSystemFont(std::int32_t fontHeight, float adjustment);

}  // namespace qx
