#include "smartsearch/SmartSearchFavicons.h"

#include <filesystem>

#include "base/FilePath.h"
#include "resources/FaviconCache.h"

namespace qx {
namespace {

constexpr std::u16string_view kSearchEngineSkin = u"skin://widget/module/SearchEngine/";
constexpr std::u16string_view kFaviconScheme = u"favicon://";

bool IsWebIconKey(std::u16string_view key) {
  return key.starts_with(u"http://") || key.starts_with(u"https://") || key.starts_with(kFaviconScheme);
}

bool FileExists(const TString& path) {
  std::error_code error;
  return !path.empty() && std::filesystem::is_regular_file(FilePathOf(path), error);
}

// The host answers with its default icon while it has none of the site's own.
bool IsDefaultIconFile(const TString& path) {
  return SameText(FilePathOf(path).filename().u16string(), u"default.ico");
}

}  // namespace

void TSmartSearchFavicons::GetFavicon(std::u16string_view key, ComPtr<ISharedFMXBitmap>& bitmap) {
  TFaviconMapItem& item = FFaviconMap[TString(key)];
  if (item.FBitmap) {
    bitmap = item.FBitmap;
    return;
  }
  ComPtr<IQxIFaviconManagerV3> faviconManager;
  if (FServiceCore) FServiceCore->FaviconManagerV3(faviconManager);
  ComPtr<ISharedFMXBitmap> found;
  if (IsWebIconKey(key)) {
    if (faviconManager) found = LoadWebIcon(key, item);
  } else if (FServiceCore) {
    TString path;
    FServiceCore->ResolveResourcePath(TString(kSearchEngineSkin) + TString(key), path);
    found = LoadFile(path);
  }
  if (found) {
    item.FBitmap = found;
    bitmap = found;
  } else {
    bitmap = ComPtr<ISharedFMXBitmap>(DefaultFavicon());
  }
}

ComPtr<ISharedFMXBitmap> TSmartSearchFavicons::LoadWebIcon(std::u16string_view key, TFaviconMapItem& item) {
  ComPtr<IQxIFaviconManagerV3> faviconManager;
  FServiceCore->FaviconManagerV3(faviconManager);
  const TString text(key);
  TString path;
  if (key.starts_with(kFaviconScheme)) FServiceCore->ResolveResourcePath(text, path);
  if (path.empty()) {
    ComPtr<IQxIString> file;
    if (faviconManager->GetFaviconFile(text.c_str(), file.put()) == kOk && file) {
      Text chars = nullptr;
      if (file->GetText(&chars) == kOk && chars) path = chars;
    }
  }
  ComPtr<ISharedFMXBitmap> found;
  if (!IsDefaultIconFile(path)) found = LoadFile(path);
  if (!found && item.FRetryCount < kMaxFaviconRetry) {
    faviconManager->RequestFavicon(text.c_str());
    ++item.FRetryCount;
  }
  return found;
}

ComPtr<ISharedFMXBitmap> TSmartSearchFavicons::LoadFile(const TString& path) const {
  if (!FileExists(path)) return {};
  std::unique_ptr<TBitmap> picture = LoadScaledFavicon(path, kIconSize);
  return picture ? MakeSharedBitmap(std::move(picture)) : ComPtr<ISharedFMXBitmap>();
}

ISharedFMXBitmap* TSmartSearchFavicons::DefaultFavicon() {
  if (!FDefaultFaviconTried && FServiceCore) {
    FDefaultFaviconTried = true;
    TString path;
    FServiceCore->ResolveResourcePath(u"favicon://default.ico", path);
    FDefaultFavicon = LoadFile(path);
  }
  return FDefaultFavicon.get();
}

const TFaviconMapItem* TSmartSearchFavicons::Item(std::u16string_view key) const {
  const auto it = FFaviconMap.find(TString(key));
  return it == FFaviconMap.end() ? nullptr : &it->second;
}

}  // namespace qx
