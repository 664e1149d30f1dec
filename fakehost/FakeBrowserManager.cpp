#include "fakehost/FakeBrowserManager.h"

#include "fakehost/FakeCom.h"
#include "fakehost/FakeTabModel.h"

namespace qx {

HResult QX_STDCALL TFakeBrowserList::IdOf(IQxIBrowser* browser, std::int32_t* id) {
  if (!id) return kInvalidArg;
  *id = 0;
  const auto model = model_.lock();
  TFakeWebView* found = model ? model->FindBrowser(browser) : nullptr;
  if (!found) return kFail;
  *id = found->ListId();
  return kOk;
}

HResult QX_STDCALL TFakeBrowserList::ById(std::int32_t id, IQxIBrowser** browser) {
  if (!browser) return kInvalidArg;
  *browser = nullptr;
  const auto model = model_.lock();
  if (!model) return kFail;
  return HandOut(ComPtr<TFakeWebView>(model->BrowserByListId(id)), browser);
}

HResult QX_STDCALL TFakeBrowserManager::CreateBrowser(Text browserGuid, Text uri, std::int32_t,
                                                      IQxIBrowser** browser) {
  if (!browser) return kInvalidArg;
  *browser = nullptr;
  const auto model = model_.lock();
  if (!model) return kFail;
  return HandOut(model->CreateBrowser(TextOf(browserGuid), TextOf(uri)), browser);
}

HResult QX_STDCALL TFakeBrowserManager::GetBrowserList(IQxIBrowserList** list) { return HandOut(list_, list); }

HResult QX_STDCALL TFakeBrowserManager::BrowserByGuid(Text guid, IQxIBrowser** browser) {
  if (!browser) return kInvalidArg;
  *browser = nullptr;
  const auto model = model_.lock();
  if (!model || !guid) return kFail;
  return HandOut(ComPtr<TFakeWebView>(model->BrowserByGuid(guid)), browser);
}

}  // namespace qx
