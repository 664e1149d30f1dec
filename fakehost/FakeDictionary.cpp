#include "fakehost/FakeDictionary.h"

#include "fakehost/FakeArray.h"
#include "fakehost/FakeCom.h"
#include "fakehost/FakeStringArray.h"

namespace qx {

ComPtr<IUnknown> TFakeDictionary::Find(std::u16string_view key) const {
  for (const auto& entry : entries_)
    if (entry.first == key) return entry.second;
  return nullptr;
}

bool TFakeDictionary::Has(std::u16string_view key) const {
  for (const auto& entry : entries_)
    if (entry.first == key) return true;
  return false;
}

void TFakeDictionary::Set(std::u16string_view key, IUnknown* value) {
  for (auto& entry : entries_) {
    if (entry.first == key) {
      entry.second = value;
      return;
    }
  }
  entries_.emplace_back(std::u16string(key), ComPtr<IUnknown>(value));
}

std::u16string TFakeDictionary::TextValue(std::u16string_view key) const {
  const auto value = Find(key);
  if (!value) return {};
  if (const auto text = value.As<IQxIString>()) return ReadString(text.get());
  if (const auto variant = value.As<IQxIVariant>()) return ReadVariantText(variant.get());
  return {};
}

HResult QX_STDCALL TFakeDictionary::GetValue(Text key, IUnknown** value) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  if (!key || !Has(key)) return kFail;
  Find(key).CopyTo(value);
  return kOk;
}

HResult QX_STDCALL TFakeDictionary::SetValue(Text key, IUnknown* value) {
  if (!key) return kInvalidArg;
  Set(key, value);
  return kOk;
}

HResult QX_STDCALL TFakeDictionary::GetCount(std::int32_t* count) {
  if (!count) return kInvalidArg;
  *count = static_cast<std::int32_t>(entries_.size());
  return kOk;
}

HResult QX_STDCALL TFakeDictionary::Remove(Text key) {
  if (!key) return kInvalidArg;
  for (auto it = entries_.begin(); it != entries_.end(); ++it) {
    if (it->first == key) {
      entries_.erase(it);
      return kOk;
    }
  }
  return kFalse;
}

HResult QX_STDCALL TFakeDictionary::GetKeys(IQxIStringArray** keys) {
  if (!keys) return kInvalidArg;
  std::vector<std::u16string> items;
  for (const auto& entry : entries_) items.push_back(entry.first);
  *keys = MakeCom<TFakeStringArray>(std::move(items)).detach();
  return kOk;
}

HResult QX_STDCALL TFakeDictionary::GetKeysAndValues(IQxIStringArray** keys, IQxIArray** values) {
  if (!keys || !values) return kInvalidArg;
  std::vector<std::u16string> k;
  auto v = MakeCom<TFakeArray>();
  for (const auto& entry : entries_) {
    k.push_back(entry.first);
    v->Add(entry.second.get());
  }
  *keys = MakeCom<TFakeStringArray>(std::move(k)).detach();
  *values = v.detach();
  return kOk;
}

HResult TFakeDictionary::Merge(IQxIDictionary* other, EMerge mode) {
  if (!other) return kInvalidArg;
  ComPtr<IQxIStringArray> keys;
  ComPtr<IQxIArray> values;
  if (Failed(other->GetKeysAndValues(keys.put(), values.put())) || !keys || !values) return kFail;
  std::int32_t count = 0;
  if (Failed(keys->GetCount(&count))) return kFail;
  for (std::int32_t i = 0; i < count; ++i) {
    ComPtr<IQxIString> key;
    ComPtr<IUnknown> value;
    if (Failed(keys->GetItem(i, key.put())) || Failed(values->GetItem(i, value.put()))) return kFail;
    const std::u16string name = ReadString(key.get());
    const bool present = Has(name);
    if (mode == EMerge::Overwrite || (mode == EMerge::Existing && present) || (mode == EMerge::Missing && !present))
      Set(name, value.get());
  }
  return kOk;
}

HResult QX_STDCALL TFakeDictionary::MergeOverwrite(IQxIDictionary* other) { return Merge(other, EMerge::Overwrite); }
HResult QX_STDCALL TFakeDictionary::MergeExisting(IQxIDictionary* other) { return Merge(other, EMerge::Existing); }
HResult QX_STDCALL TFakeDictionary::MergeMissing(IQxIDictionary* other) { return Merge(other, EMerge::Missing); }

}  // namespace qx
