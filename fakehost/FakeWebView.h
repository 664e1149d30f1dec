#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/ComObject.h"
#include "fakehost/FakePage.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeTab;
class TFakeTabModel;

// A browser (the engine's view of one page). Values: "uri", "title", "engine-id",
// "browser-id" (its GUID text), "window-handle", "zoom-ratio", "__back-history" (an array
// of string dictionaries with "uri", oldest first). Setting "uri" navigates.
class TFakeWebView : public TInterfacedObject<IQxIBrowser> {
 public:
  TFakeWebView(std::weak_ptr<TFakeTabModel> model, const TGUID& guid, std::int32_t listId)
      : model_(std::move(model)), guid_(guid), listId_(listId) {}

  HResult QX_STDCALL GetObject(IUnknown** object) override;
  HResult QX_STDCALL GetValue(Text key, IQxIVariant** value) override;
  HResult QX_STDCALL SetValue(Text key, IQxIVariant* value) override;
  HResult QX_STDCALL Execute(Text command, IQxIStringDictionary* parameters, std::int32_t r) override;

  const TGUID& Guid() const { return guid_; }
  std::u16string GuidText() const;
  std::int32_t ListId() const { return listId_; }
  TFakeTab* Tab() const { return tab_; }
  TFakePage& Page() { return page_; }
  ComPtr<IQxIVariant> Value(std::u16string_view key) const;
  std::u16string TextValue(std::u16string_view key) const;
  // The text of "browser-id", kept as it is stored: the host looks browsers up by it.
  const std::u16string& BrowserIdText() const { return browserId_; }
  const std::vector<std::u16string>& BackHistory() const { return history_; }
  // The engine object that GetObject hands out; nil makes it fail.
  void SetEngineObject(IUnknown* object) { engineObject_ = object; }

 private:
  friend class TFakeTabModel;
  void StoreValue(std::u16string_view key, IQxIVariant* value);
  void StoreText(std::u16string_view key, std::u16string_view text);

  std::weak_ptr<TFakeTabModel> model_;
  const TGUID guid_;
  const std::int32_t listId_;
  std::vector<std::pair<std::u16string, ComPtr<IQxIVariant>>> values_;
  std::u16string browserId_;
  std::vector<std::u16string> history_;
  TFakeTab* tab_ = nullptr;
  TFakePage page_;
  ComPtr<IUnknown> engineObject_;
};

}  // namespace qx
