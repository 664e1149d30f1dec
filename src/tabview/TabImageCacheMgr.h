#pragma once

// The thumbnail cache: pictures of tabs in memory, keyed by tab GUID, and one PNG
// file per tab in a folder on disk, so a restart shows the last known pictures
// before fresh captures arrive.

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "base/ComPtr.h"
#include "base/Text.h"
#include "host/ServiceCoreWrapIntf.h"
#include "toolkit/Bitmap.h"

namespace qx {

class TTabImageCacheMgr {
 public:
  // cacheDir gets a trailing path delimiter; the folder itself is the caller's to make.
  TTabImageCacheMgr(IServiceCoreWrap* serviceCore, std::u16string_view cacheDir);
  // Frees every bitmap; does not save.
  ~TTabImageCacheMgr();
  TTabImageCacheMgr(const TTabImageCacheMgr&) = delete;
  TTabImageCacheMgr& operator=(const TTabImageCacheMgr&) = delete;

  // The picture of a tab: from memory, else from its file (then kept in memory).
  // Null for an empty GUID, an unknown tab or a file that cannot be read.
  TBitmap* GetCache(std::u16string_view guid);
  // Keeps a copy of bitmap; the caller keeps its own.
  void UpdateCache(std::u16string_view guid, const TBitmap* bitmap);
  // Frees the entry; the file stays until the next SaveThumbnailCache.
  void RemoveCache(std::u16string_view guid);
  // Deletes files of tabs the host no longer has and writes every cached picture
  // except those of private tabs. Raises nothing: a failure stops the work where
  // it stands, leaves the files written so far, and answers false.
  bool SaveThumbnailCache();

  const TString& CacheDir() const { return FCacheDir; }
  std::size_t Count() const { return FBitmaps.size(); }
  // The file of a tab's picture.
  TString CacheFileName(std::u16string_view guid) const;

 private:
  // Ordered so that saving runs in a fixed order.
  std::map<std::u16string, std::unique_ptr<TBitmap>, std::less<>> FBitmaps;
  TString FCacheDir;
  ComPtr<IServiceCoreWrap> FServiceCore;
};

}  // namespace qx
