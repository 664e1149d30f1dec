#pragma once

// Site icons for tabs, answered at once: the icon when it is on hand, the default icon
// otherwise, with one background fetch per URI and a later notification.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "base/ComObject.h"
#include "base/Text.h"
#include "host/ServiceCoreWrapIntf.h"
#include "resources/SharedBitmap.h"

namespace qx {

// Decoded, scaled icons by file path, bounded in number.
struct ISharedFaviconManager : IUnknown {
  static constexpr TGUID IID = MakeGuid("9C2B71E4-3F0A-4D6B-8E25-61A7D04C9B38");
  virtual void LoadFavicon(std::u16string_view path, ComPtr<ISharedFMXBitmap>& bitmap) = 0;
  virtual void RemoveFavicon(std::u16string_view path) = 0;
};

class TSharedFaviconManager : public TInterfacedObject<ISharedFaviconManager> {
 public:
  // At this many entries a load evicts kEvictCount of the least recently used.
  static constexpr std::size_t kEvictThreshold = 1000;
  static constexpr std::size_t kEvictCount = 200;

  explicit TSharedFaviconManager(std::int32_t size) : FSize(size) {}

  void LoadFavicon(std::u16string_view path, ComPtr<ISharedFMXBitmap>& bitmap) override;
  void RemoveFavicon(std::u16string_view path) override;

  std::size_t Count() const { return FDict.size(); }
  bool Contains(std::u16string_view path) const { return FDict.contains(TString(path)); }

 private:
  std::int32_t FSize;
  std::unordered_map<TString, ComPtr<ISharedFMXBitmap>> FDict;
};

// A picture file drawn stretched onto a transparent size x size bitmap; null when the
// file is missing or unreadable.
std::unique_ptr<TBitmap> LoadScaledFavicon(std::u16string_view path, std::int32_t size);

class TFaviconDictItem {
 public:
  ComPtr<ISharedFMXBitmap>& Favicon() { return FFavicon; }
  bool Done() const { return FDone; }
  void SetDone(bool value) { FDone = value; }
  bool Requested() const { return FRequested; }
  void SetRequested(bool value) { FRequested = value; }

 private:
  ComPtr<ISharedFMXBitmap> FFavicon;
  bool FDone = false;
  bool FRequested = false;
};

class TFaviconCacheFMX;
using TFaviconCacheNotifyUpdateEvent =
    std::function<void(TFaviconCacheFMX* sender, const TString& uri, ISharedFMXBitmap* favicon)>;

class TFaviconCacheFMX {
 public:
  TFaviconCacheFMX(IServiceCoreWrap* serviceCore, std::int32_t faviconSize);
  ~TFaviconCacheFMX();
  TFaviconCacheFMX(const TFaviconCacheFMX&) = delete;
  TFaviconCacheFMX& operator=(const TFaviconCacheFMX&) = delete;

  void InitializeEvents();
  void UnInitializeEvents();

  // tabId takes no part in the lookup.
  void GetFavicon(IQxITab* tab, std::int32_t tabId, ComPtr<ISharedFMXBitmap>& favicon);
  bool IsDefaultFaviconBitmap(ISharedFMXBitmap* bitmap) const;

  TFaviconCacheNotifyUpdateEvent OnNotifyUpdate;

  std::int32_t FaviconSize() const { return FFaviconSize; }
  // The item of a URI, null if it was never asked for.
  TFaviconDictItem* Item(std::u16string_view uri) const;
  std::size_t ItemCount() const { return FFaviconDict.size(); }
  ISharedFaviconManager* SharedFaviconManager() const { return FSharedFaviconManager.get(); }

 private:
  void LookupBitmap(std::u16string_view uri, bool refresh, ComPtr<ISharedFMXBitmap>& bitmap);
  const TString& DefaultFaviconPath();
  ISharedFMXBitmap* DefaultFavicon();
  HResult FaviconManagerChanged(IQxIEvent* event);

  ComPtr<IServiceCoreWrap> FServiceCore;
  std::int32_t FFaviconSize;
  std::unordered_map<TString, std::unique_ptr<TFaviconDictItem>> FFaviconDict;
  ComPtr<ISharedFMXBitmap> FDefaultFavicon;
  bool FDefaultFaviconTried = false;
  ComPtr<IQxIEventListener> FFaviconManagerChangedListener;
  std::optional<TString> FDefaultFaviconPath;
  ComPtr<ISharedFaviconManager> FSharedFaviconManager;
};

}  // namespace qx
