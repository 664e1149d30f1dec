#include "tabview/TabImageCacheMgr.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <vector>

#include "host/QuillmarV3Interface.h"
#include "resources/ResourceFiles.h"

namespace qx {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kCacheExtension = u".png";

fs::path ToPath(std::u16string_view text) { return fs::path(std::u16string(text)); }

// Names compare without regard to ASCII case, the way the file system of the
// module's home platform does; equal names count once.
struct TCaseInsensitiveLess {
  bool operator()(const std::u16string& a, const std::u16string& b) const { return CompareText(a, b) < 0; }
};
using TNameList = std::set<std::u16string, TCaseInsensitiveLess>;

// Every tab group the host's tab manager knows, each with its tabs, in host order.
template <class Fn>
void ForEachTab(IServiceCoreWrap* serviceCore, Fn&& fn) {
  ComPtr<IQxITabManager> manager;
  serviceCore->TabManager(manager);
  if (!manager) return;
  std::int32_t groupCount = 0;
  if (Failed(manager->GetTabGroupCount(&groupCount))) return;
  for (std::int32_t g = 0; g < groupCount; ++g) {
    ComPtr<IQxITabGroup> group;
    if (Failed(manager->GetTabGroup(g, group.put())) || !group) continue;
    std::int32_t tabCount = 0;
    if (Failed(group->GetTabCount(&tabCount))) continue;
    for (std::int32_t t = 0; t < tabCount; ++t) {
      ComPtr<IQxITab> tab;
      if (Failed(group->GetTab(t, tab.put())) || !tab) continue;
      fn(group.get(), tab.get());
    }
  }
}

// Encodes first and replaces the file only when the whole picture is written,
// so a full disk or a folder that refuses writes never leaves a truncated file
// in the place of a good one.
void WritePngFile(const TBitmap& bitmap, const fs::path& target) {
  std::ostringstream encoded(std::ios::binary);
  bitmap.SaveToStream(encoded);
  const std::string bytes = std::move(encoded).str();
  fs::path temporary = target;
  temporary += ".tmp";
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    if (!out) throw EInvalidImage("Cannot create picture file: " + temporary.string());
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
      std::error_code ignored;
      fs::remove(temporary, ignored);
      throw EInvalidImage("Cannot write picture file: " + temporary.string());
    }
  }
  std::error_code error;
  fs::rename(temporary, target, error);
  if (error) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    throw fs::filesystem_error("Cannot replace picture file", target, error);
  }
}

}  // namespace

TTabImageCacheMgr::TTabImageCacheMgr(IServiceCoreWrap* serviceCore, std::u16string_view cacheDir)
    : FCacheDir(IncludeTrailingPathDelimiter(cacheDir)), FServiceCore(serviceCore) {}

TTabImageCacheMgr::~TTabImageCacheMgr() = default;

TString TTabImageCacheMgr::CacheFileName(std::u16string_view guid) const {
  TString name = FCacheDir;
  name += guid;
  name += kCacheExtension;
  return name;
}

TBitmap* TTabImageCacheMgr::GetCache(std::u16string_view guid) {
  if (guid.empty()) return nullptr;
  if (auto it = FBitmaps.find(guid); it != FBitmaps.end()) return it->second.get();
  try {
    const fs::path path = ToPath(CacheFileName(guid));
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return nullptr;
    std::unique_ptr<TBitmap> bitmap = TBitmap::CreateFromFile(path);
    TBitmap* result = bitmap.get();
    FBitmaps.emplace(std::u16string(guid), std::move(bitmap));
    return result;
  } catch (const std::exception&) {
    // A damaged or truncated file is as good as none: the tab keeps its blank picture.
    return nullptr;
  }
}

void TTabImageCacheMgr::UpdateCache(std::u16string_view guid, const TBitmap* bitmap) {
  if (guid.empty() || !bitmap) return;
  auto it = FBitmaps.find(guid);
  if (it == FBitmaps.end()) it = FBitmaps.emplace(std::u16string(guid), std::make_unique<TBitmap>()).first;
  it->second->Assign(bitmap);
}

void TTabImageCacheMgr::RemoveCache(std::u16string_view guid) {
  if (guid.empty()) return;
  if (auto it = FBitmaps.find(guid); it != FBitmaps.end()) FBitmaps.erase(it);
}

bool TTabImageCacheMgr::SaveThumbnailCache() {
  try {
    if (!FServiceCore) return false;
    TNameList knownFiles;
    TNameList privateTabs;
    ForEachTab(FServiceCore.get(), [&](IQxITabGroup* group, IQxITab* tab) {
      const TString guid = FServiceCore->TabGuid(tab);
      if (guid.empty()) return;
      knownFiles.insert(guid + TString(kCacheExtension));
      if (FServiceCore->IsPrivateTabGroup(group)) privateTabs.insert(guid);
    });

    // Collect first, delete after: removing entries while the directory is being
    // walked is not something every platform handles the same way.
    std::vector<fs::path> stale;
    for (const fs::directory_entry& entry : fs::directory_iterator(ToPath(FCacheDir))) {
      if (!entry.is_regular_file()) continue;
      if (!knownFiles.contains(entry.path().filename().u16string())) stale.push_back(entry.path());
    }
    for (const fs::path& path : stale) {
      if (fs::exists(path)) fs::remove(path);
    }

    for (const auto& [guid, bitmap] : FBitmaps) {
      if (guid.empty() || !bitmap || bitmap->IsEmpty()) continue;
      if (privateTabs.contains(guid)) continue;
      WritePngFile(*bitmap, ToPath(CacheFileName(guid)));
    }
    return true;
  } catch (const std::exception&) {
    // Saving is housekeeping on the way out; the host must never see it fail.
    return false;
  }
}

}  // namespace qx
