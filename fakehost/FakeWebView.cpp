#include "fakehost/FakeWebView.h"

#include "fakehost/FakeCom.h"
#include "fakehost/FakeTabModel.h"
#include "fakehost/FakeVariant.h"
#include "host/HostKeys.h"

namespace qx {

std::u16string TFakeWebView::GuidText() const { return GuidToString(guid_); }

ComPtr<IQxIVariant> TFakeWebView::Value(std::u16string_view key) const {
  for (const auto& entry : values_)
    if (entry.first == key) return entry.second;
  return nullptr;
}

std::u16string TFakeWebView::TextValue(std::u16string_view key) const { return ReadVariantText(Value(key).get()); }

void TFakeWebView::StoreValue(std::u16string_view key, IQxIVariant* value) {
  if (key == browser_key::BrowserId) browserId_ = ReadVariantText(value);
  for (auto& entry : values_) {
    if (entry.first == key) {
      entry.second = value;
      return;
    }
  }
  values_.emplace_back(std::u16string(key), ComPtr<IQxIVariant>(value));
}

void TFakeWebView::StoreText(std::u16string_view key, std::u16string_view text) {
  StoreValue(key, TFakeVariant::FromText(std::u16string(text)).get());
}

HResult QX_STDCALL TFakeWebView::GetObject(IUnknown** object) { return HandOut(engineObject_, object); }

HResult QX_STDCALL TFakeWebView::GetValue(Text key, IQxIVariant** value) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  if (!key) return kInvalidArg;
  return HandOut(Value(key), value);
}

HResult QX_STDCALL TFakeWebView::SetValue(Text key, IQxIVariant* value) {
  if (!key) return kInvalidArg;
  const std::u16string_view name(key);
  const auto model = model_.lock();
  if (name == u"uri" && model) return model->NavigateBrowser(this, ReadVariantText(value));
  StoreValue(name, value);
  return kOk;
}

HResult QX_STDCALL TFakeWebView::Execute(Text command, IQxIStringDictionary* parameters, std::int32_t) {
  if (!command) return kInvalidArg;
  const auto model = model_.lock();
  if (!model) return kFail;
  return model->ExecuteCommand(this, command, parameters);
}

}  // namespace qx
