#include "resources/FaviconCache.h"

#include <algorithm>
#include <vector>

#include "platform/Platform.h"
#include "resources/BitmapResourceMgr.h"
#include "resources/ResourceFiles.h"
#include "toolkit/Canvas.h"

namespace qx {
namespace {

constexpr char16_t kFaviconManagerChanged[] = u"FaviconManager.Changed";

}  // namespace

std::unique_ptr<TBitmap> LoadScaledFavicon(std::u16string_view path, std::int32_t size) {
  if (!ResourceFileExists(path)) return nullptr;
  auto source = LoadResourceBitmap(path);
  if (!source) return nullptr;
  auto result = std::make_unique<TBitmap>(size, size);
  TCanvas& canvas = result->Canvas();
  if (canvas.BeginScene()) {
    canvas.Clear(0x00FFFFFFu);
    const float s = static_cast<float>(size);
    canvas.DrawBitmap(*source,
                      TRectF(0, 0, static_cast<float>(source->Width()), static_cast<float>(source->Height())),
                      TRectF(0, 0, s, s), 1);
    canvas.EndScene();
  }
  return result;
}

void TSharedFaviconManager::LoadFavicon(std::u16string_view path, ComPtr<ISharedFMXBitmap>& bitmap) {
  bitmap = nullptr;
  const TString key(path);
  if (const auto it = FDict.find(key); it != FDict.end()) {
    bitmap = it->second;
  } else if (auto loaded = LoadScaledFavicon(path, FSize)) {
    bitmap = MakeSharedBitmap(std::move(loaded));
    FDict.emplace(key, bitmap);
  }
  if (bitmap) bitmap->SetTag(static_cast<std::int32_t>(Platform().GetTickCount()));
  if (FDict.size() < kEvictThreshold) return;
  // Least recently used first; the tick difference keeps the order across a wrap of the counter.
  std::vector<std::pair<TString, ComPtr<ISharedFMXBitmap>>> pairs(FDict.begin(), FDict.end());
  std::stable_sort(pairs.begin(), pairs.end(), [](const auto& a, const auto& b) {
    const auto diff = static_cast<std::int32_t>(static_cast<std::uint32_t>(a.second->GetTag()) -
                                                static_cast<std::uint32_t>(b.second->GetTag()));
    return diff < 0;
  });
  for (std::size_t i = 0; i < kEvictCount && i < pairs.size(); ++i) FDict.erase(pairs[i].first);
}

void TSharedFaviconManager::RemoveFavicon(std::u16string_view path) { FDict.erase(TString(path)); }

TFaviconCacheFMX::TFaviconCacheFMX(IServiceCoreWrap* serviceCore, std::int32_t faviconSize)
    : FServiceCore(serviceCore),
      FFaviconSize(faviconSize),
      FSharedFaviconManager(MakeCom<TSharedFaviconManager>(faviconSize)) {}

TFaviconCacheFMX::~TFaviconCacheFMX() {
  // An owner that forgot to unregister must not leave a listener pointing here.
  UnInitializeEvents();
}

void TFaviconCacheFMX::InitializeEvents() {
  if (!FServiceCore || FFaviconManagerChangedListener) return;
  FServiceCore->AddEventHandler(0, kFaviconManagerChanged, FFaviconManagerChangedListener, false,
                                [this](const TString&, IQxIEvent* event) { return FaviconManagerChanged(event); });
}

void TFaviconCacheFMX::UnInitializeEvents() {
  if (!FServiceCore || !FFaviconManagerChangedListener) return;
  FServiceCore->RemoveEventListener(kFaviconManagerChanged, FFaviconManagerChangedListener.get());
  FFaviconManagerChangedListener = nullptr;
}

TFaviconDictItem* TFaviconCacheFMX::Item(std::u16string_view uri) const {
  const auto it = FFaviconDict.find(TString(uri));
  return it == FFaviconDict.end() ? nullptr : it->second.get();
}

void TFaviconCacheFMX::GetFavicon(IQxITab* tab, std::int32_t, ComPtr<ISharedFMXBitmap>& favicon) {
  favicon = nullptr;
  const TString uri = (FServiceCore && tab) ? FServiceCore->TabUri(tab) : TString();
  if (!uri.empty()) {
    if (const auto it = FFaviconDict.find(uri); it != FFaviconDict.end()) {
      if (it->second->Done()) favicon = it->second->Favicon();
    } else {
      auto* item = FFaviconDict.emplace(uri, std::make_unique<TFaviconDictItem>()).first->second.get();
      ComPtr<ISharedFMXBitmap> bitmap;
      LookupBitmap(uri, false, bitmap);
      if (bitmap) {
        item->Favicon() = bitmap;
        item->SetDone(true);
        favicon = bitmap;
      } else {
        ComPtr<IQxIFaviconManagerV3> manager;
        FServiceCore->FaviconManagerV3(manager);
        if (manager) {
          item->SetRequested(true);
          manager->RequestFavicon(uri.c_str());
        }
      }
    }
  }
  if (!favicon) favicon = DefaultFavicon();
}

bool TFaviconCacheFMX::IsDefaultFaviconBitmap(ISharedFMXBitmap* bitmap) const {
  return bitmap && FDefaultFavicon && SameInterface(bitmap, FDefaultFavicon.get());
}

const TString& TFaviconCacheFMX::DefaultFaviconPath() {
  if (!FDefaultFaviconPath) {
    TString path;
    if (FServiceCore) FServiceCore->ResolveResourcePath(kDefaultFaviconPath, path);
    FDefaultFaviconPath = path;
  }
  return *FDefaultFaviconPath;
}

ISharedFMXBitmap* TFaviconCacheFMX::DefaultFavicon() {
  if (!FDefaultFavicon && !FDefaultFaviconTried) {
    // Tried once: the repaint path must not go back to the disk for a missing default.
    FDefaultFaviconTried = true;
    if (auto bitmap = LoadScaledFavicon(DefaultFaviconPath(), FFaviconSize))
      FDefaultFavicon = MakeSharedBitmap(std::move(bitmap));
  }
  return FDefaultFavicon.get();
}

void TFaviconCacheFMX::LookupBitmap(std::u16string_view uri, bool refresh, ComPtr<ISharedFMXBitmap>& bitmap) {
  bitmap = nullptr;
  TString path;
  TString url(kFaviconScheme);
  url += uri;
  if (FServiceCore) FServiceCore->ResolveResourcePath(url, path);
  // The host answers with its default icon while it has none of its own.
  if (SameText(path, DefaultFaviconPath())) return;
  if (refresh) FSharedFaviconManager->RemoveFavicon(path);
  FSharedFaviconManager->LoadFavicon(path, bitmap);
}

HResult TFaviconCacheFMX::FaviconManagerChanged(IQxIEvent* event) {
  if (!FServiceCore) return kOk;
  ComPtr<IQxIStringDictionaryWrap> params = FServiceCore->EventParameters(event);
  if (!params) return kOk;
  if (params->Value(u"event") != u"Request" || params->Value(u"timing") != u"after" ||
      params->Value(u"result") != u"true")
    return kOk;
  const TString uri = params->Value(u"uri-id");
  TFaviconDictItem* item = Item(uri);
  if (!item) return kOk;
  ComPtr<ISharedFMXBitmap> bitmap;
  LookupBitmap(uri, true, bitmap);
  item->Favicon() = bitmap;
  item->SetDone(true);
  if (bitmap && OnNotifyUpdate) OnNotifyUpdate(this, uri, bitmap.get());
  return kOk;
}

}  // namespace qx
