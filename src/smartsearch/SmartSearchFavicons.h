#pragma once

// Icons of the smart search engines and of the page search button, kept for the popup's
// life. A site's icon that isn't on hand is fetched by the host, a few times at most.

#include <cstdint>
#include <map>
#include <string_view>

#include "base/ComPtr.h"
#include "base/Text.h"
#include "host/ServiceCoreWrapIntf.h"
#include "resources/SharedBitmap.h"

namespace qx {

struct TFaviconMapItem {
  ComPtr<ISharedFMXBitmap> FBitmap;  // null until an icon was found
  std::int32_t FRetryCount = 0;      // fetches asked of the host's favicon manager
};

class TSmartSearchFavicons {
 public:
  static constexpr std::int32_t kMaxFaviconRetry = 5;
  static constexpr std::int32_t kIconSize = 16;

  explicit TSmartSearchFavicons(IServiceCoreWrap* serviceCore) : FServiceCore(serviceCore) {}

  // Key is a web address, a "favicon://" resource or a file of the search engine skin.
  // Without an icon the answer is the default favicon and the key is tried again later.
  void GetFavicon(std::u16string_view key, ComPtr<ISharedFMXBitmap>& bitmap);

  const TFaviconMapItem* Item(std::u16string_view key) const;

 private:
  ComPtr<ISharedFMXBitmap> LoadWebIcon(std::u16string_view key, TFaviconMapItem& item);
  ComPtr<ISharedFMXBitmap> LoadFile(const TString& path) const;
  ISharedFMXBitmap* DefaultFavicon();

  IServiceCoreWrap* FServiceCore;
  std::map<TString, TFaviconMapItem> FFaviconMap;
  ComPtr<ISharedFMXBitmap> FDefaultFavicon;
  bool FDefaultFaviconTried = false;
};

}  // namespace qx
