#include "fakehost/FakeTab.h"

#include "fakehost/FakeCom.h"
#include "fakehost/FakeString.h"
#include "fakehost/FakeTabModel.h"

namespace qx {

std::u16string TFakeTab::GuidText() const { return GuidToString(guid_); }

ComPtr<IQxIVariant> TFakeTab::Value(std::u16string_view key) const {
  for (const auto& entry : values_)
    if (entry.first == key) return entry.second;
  return nullptr;
}

std::u16string TFakeTab::TextValue(std::u16string_view key) const {
  return ReadVariantText(Value(key).get());
}

void TFakeTab::StoreValue(std::u16string_view key, IQxIVariant* value) {
  cabinetView_ = {};
  for (auto& entry : values_) {
    if (entry.first == key) {
      entry.second = value;
      return;
    }
  }
  values_.emplace_back(std::u16string(key), ComPtr<IQxIVariant>(value));
}

HResult QX_STDCALL TFakeTab::GetGuid(IQxIString** guid) {
  if (!guid) return kInvalidArg;
  *guid = MakeFakeString(GuidText()).detach();
  return kOk;
}

HResult QX_STDCALL TFakeTab::GetTabGroup(IQxITabGroup** group) {
  if (!group) return kInvalidArg;
  *group = group_;
  if (!group_) return kFail;
  group_->AddRef();
  return kOk;
}

HResult QX_STDCALL TFakeTab::GetBrowser(IQxIBrowser** browser) { return HandOut(browser_, browser); }

HResult QX_STDCALL TFakeTab::SetBrowser(IQxIBrowser* browser) {
  const auto model = model_.lock();
  if (!model) return kFail;
  TFakeWebView* view = nullptr;
  if (browser) {
    view = model->FindBrowser(browser);
    if (!view) return kInvalidArg;
  }
  return model->AttachBrowser(this, view);
}

HResult QX_STDCALL TFakeTab::GetValue(Text key, IQxIVariant** value) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  if (!key) return kInvalidArg;
  return HandOut(Value(key), value);
}

HResult QX_STDCALL TFakeTab::SetValue(Text key, IQxIVariant* value) {
  if (!key) return kInvalidArg;
  const auto model = model_.lock();
  if (!model) {
    StoreValue(key, value);
    return kOk;
  }
  return model->SetTabValue(this, key, value);
}

}  // namespace qx
