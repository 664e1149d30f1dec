#pragma once

#include <memory>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeTabModel;

// Integer ids of the live browsers, given in creation order from 1.
class TFakeBrowserList : public TInterfacedObject<IQxIBrowserList> {
 public:
  explicit TFakeBrowserList(std::weak_ptr<TFakeTabModel> model) : model_(std::move(model)) {}

  HResult QX_STDCALL IdOf(IQxIBrowser* browser, std::int32_t* id) override;
  HResult QX_STDCALL ById(std::int32_t id, IQxIBrowser** browser) override;

 private:
  std::weak_ptr<TFakeTabModel> model_;
};

// Makes browsers (engine class GUID, first URI) and finds them by their GUID.
class TFakeBrowserManager : public TInterfacedObject<IQxIBrowserManager> {
 public:
  explicit TFakeBrowserManager(std::weak_ptr<TFakeTabModel> model)
      : model_(model), list_(MakeCom<TFakeBrowserList>(model)) {}

  HResult QX_STDCALL CreateBrowser(Text browserGuid, Text uri, std::int32_t r, IQxIBrowser** browser) override;
  HResult QX_STDCALL GetBrowserList(IQxIBrowserList** list) override;
  HResult QX_STDCALL BrowserByGuid(Text guid, IQxIBrowser** browser) override;

 private:
  std::weak_ptr<TFakeTabModel> model_;
  ComPtr<TFakeBrowserList> list_;
};

}  // namespace qx
