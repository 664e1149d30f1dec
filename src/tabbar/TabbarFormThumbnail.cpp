// Fresh pictures of the tabs: the engine says a thumbnail exists, a queued task
// asks the tab's browser for a small snapshot, the tab shows it and the cache keeps it.

#include <exception>
#include <memory>

#include "host/QuillmarV3Interface.h"
#include "tabbar/TabbarForm.h"

namespace qx {

namespace {

constexpr std::u16string_view kUpdateImageTaskPrefix = u"UpdateTabImage-";

bool SetDictionaryText(IServiceCoreWrap& core, IQxIDictionary& dictionary, std::u16string_view key,
                       std::u16string_view value) {
  ComPtr<IQxIString> text;
  if (!core.CreateString(value, text)) return false;
  const TString k(key);
  return Succeeded(dictionary.SetValue(k.c_str(), text.get()));
}

// The image the browser left under "result", decoded; null when there is none.
std::unique_ptr<TBitmap> SnapshotResult(IQxIDictionary& dictionary) {
  ComPtr<IUnknown> result;
  if (Failed(dictionary.GetValue(u"result", result.put())) || !result) return nullptr;
  ComPtr<IQxIGlobalStoreItem> image = result.As<IQxIGlobalStoreItem>();
  if (!image) return nullptr;
  std::int32_t size = 0;
  const void* data = nullptr;
  if (Failed(image->GetSize(&size)) || Failed(image->GetData(&data)) || size <= 0 || !data) return nullptr;
  auto bitmap = std::make_unique<TBitmap>();
  bitmap->LoadFromMemory(static_cast<const std::uint8_t*>(data), static_cast<std::size_t>(size));
  if (bitmap->Width() < 1 || bitmap->Height() < 1) return nullptr;
  return bitmap;
}

}  // namespace

void TTabbarFrame::AddUpdateImageTask(TTabImage* tab) {
  if (!tab || !FDelayTask) return;
  const std::u16string guid = tab->TabGuid();
  if (guid.empty()) return;
  FTabImageLoadRetryCount[guid] = 0;
  // The task list belongs to this frame and drops its tasks with it.
  FDelayTask->AddAnonTask(std::u16string(kUpdateImageTaskPrefix) + guid,
                          [this, guid] { RunUpdateImageTask(guid); });
}

void TTabbarFrame::RunUpdateImageTask(const std::u16string& guid) {
  // The tab may have closed while the task waited.
  TTabImage* tab = FindTabImageFromGuid(guid);
  if (!tab) {
    FTabImageLoadRetryCount.erase(guid);
    return;
  }
  if (CaptureTabThumbnail(tab)) {
    FTabImageLoadRetryCount.erase(guid);
    return;
  }
  std::int32_t& retries = FTabImageLoadRetryCount[guid];
  if (retries < kMaxThumbnailRetries) {
    ++retries;
    FDelayTask->SetRetryFlag();
  } else {
    FTabImageLoadRetryCount.erase(guid);
  }
}

std::int32_t TTabbarFrame::TabImageLoadRetryCount(const TTabImage* tab) const {
  if (!tab) return 0;
  const auto it = FTabImageLoadRetryCount.find(const_cast<TTabImage*>(tab)->TabGuid());
  return it == FTabImageLoadRetryCount.end() ? 0 : it->second;
}

bool TTabbarFrame::CaptureTabThumbnail(TTabImage* tab) {
  if (!tab || !FServiceCore) return false;
  ComPtr<IQxITab> hostTab;
  FServiceCore->TabById(tab->TabId(), hostTab);
  if (!hostTab) return false;

  TString uri;
  FServiceCore->GetTabText(hostTab.get(), u"uri", uri);
  if (uri == u"about:blank") {
    tab->UpdateTabImage(TTabImage::BlankPicture(), true);
    return true;
  }
  ComPtr<IQxIBrowser> browser;
  FServiceCore->BrowserOfTab(hostTab.get(), browser);
  if (!browser) return false;

  ComPtr<IQxIDictionary> request;
  FServiceCore->CreateDictionary(request);
  if (!request) return false;
  TRect area{};
  FServiceCore->WidgetRectByName(u"BrowserAreaWidget", area);
  IServiceCoreWrap& core = *FServiceCore;
  if (!SetDictionaryText(core, *request, u"width", IntToStr(kSnapshotWidth)) ||
      !SetDictionaryText(core, *request, u"height", IntToStr(kSnapshotHeight)) ||
      !SetDictionaryText(core, *request, u"mime", u"image/png") ||
      !SetDictionaryText(core, *request, u"center-image", u"true") ||
      !SetDictionaryText(core, *request, u"thumbnail", u"true") ||
      !SetDictionaryText(core, *request, u"browser-cx", IntToStr(area.Width())) ||
      !SetDictionaryText(core, *request, u"browser-cy", IntToStr(area.Height())))
    return false;

  std::unique_ptr<TBitmap> bitmap;
  try {
    // The command's parameter slot carries any host object; the browser asks it for the
    // dictionary it expects.
    auto* parameters = reinterpret_cast<IQxIStringDictionary*>(static_cast<IUnknown*>(request.get()));
    if (Failed(browser->Execute(u"snapshot", parameters, 0))) return false;
    bitmap = SnapshotResult(*request);
  } catch (const std::exception&) {
    return false;
  }
  if (!bitmap) return false;
  tab->UpdateTabImage(bitmap.get(), false);
  if (FTabImageCacheMgr) FTabImageCacheMgr->UpdateCache(tab->TabGuid(), bitmap.get());
  return true;
}

}  // namespace qx
