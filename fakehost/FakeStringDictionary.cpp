#include "fakehost/FakeStringDictionary.h"

#include "fakehost/FakeString.h"
#include "fakehost/FakeStringArray.h"

namespace qx {

TFakeStringDictionary::TFakeStringDictionary(TFakeParams entries) {
  for (auto& [key, value] : entries) Set(key, value);
}

void TFakeStringDictionary::Set(std::u16string_view key, std::u16string_view value) {
  for (auto& entry : entries_) {
    if (entry.first == key) {
      entry.second = value;
      return;
    }
  }
  entries_.emplace_back(std::u16string(key), std::u16string(value));
}

std::optional<std::u16string> TFakeStringDictionary::Find(std::u16string_view key) const {
  for (const auto& entry : entries_)
    if (entry.first == key) return entry.second;
  return std::nullopt;
}

HResult QX_STDCALL TFakeStringDictionary::GetValue(Text key, IQxIString** value) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  if (!key) return kInvalidArg;
  const auto found = Find(key);
  if (!found) return kFail;
  *value = MakeFakeString(*found).detach();
  return kOk;
}

HResult QX_STDCALL TFakeStringDictionary::SetValue(Text key, Text value) {
  if (!key) return kInvalidArg;
  Set(key, TextOf(value));
  return kOk;
}

HResult QX_STDCALL TFakeStringDictionary::GetKeys(IQxIStringArray** keys) {
  if (!keys) return kInvalidArg;
  std::vector<std::u16string> items;
  for (const auto& entry : entries_) items.push_back(entry.first);
  *keys = MakeCom<TFakeStringArray>(std::move(items)).detach();
  return kOk;
}

HResult QX_STDCALL TFakeStringDictionary::GetKeysAndValues(IQxIStringArray** keys, IQxIStringArray** values) {
  if (!keys || !values) return kInvalidArg;
  std::vector<std::u16string> k, v;
  for (const auto& entry : entries_) {
    k.push_back(entry.first);
    v.push_back(entry.second);
  }
  *keys = MakeCom<TFakeStringArray>(std::move(k)).detach();
  *values = MakeCom<TFakeStringArray>(std::move(v)).detach();
  return kOk;
}

}  // namespace qx
