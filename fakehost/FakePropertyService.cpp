#include "fakehost/FakePropertyService.h"

#include "fakehost/FakeCom.h"
#include "fakehost/FakeString.h"
#include "fakehost/FakeStringArray.h"

namespace qx {

std::optional<std::u16string> TFakePropertyService::Get(std::u16string_view key) const {
  const auto it = values_.find(std::u16string(key));
  if (it == values_.end()) return std::nullopt;
  return it->second;
}

HResult QX_STDCALL TFakePropertyService::GetProperty(Text key, IQxIString** value) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  if (!key) return kInvalidArg;
  const auto found = Get(key);
  if (!found) return kInvalidArg;
  *value = MakeFakeString(*found).detach();
  return kOk;
}

HResult QX_STDCALL TFakePropertyService::SetProperty(Text key, Text value) {
  if (!key) return kInvalidArg;
  Set(key, TextOf(value));
  writes_.push_back({key, TextOf(value), false});
  return kOk;
}

HResult QX_STDCALL TFakePropertyService::SetPropertyAlternate(Text key, Text value) {
  if (!key) return kInvalidArg;
  Set(key, TextOf(value));
  writes_.push_back({key, TextOf(value), true});
  return kOk;
}

HResult QX_STDCALL TFakePropertyService::DeleteProperty(Text key) {
  if (!key) return kInvalidArg;
  if (values_.erase(std::u16string(key)) == 0) return kInvalidArg;
  writes_.push_back({key, std::nullopt, false});
  return kOk;
}

HResult QX_STDCALL TFakePropertyService::EnumerateKeys(Text prefix, IQxIStringArray** keys) {
  if (!keys) return kInvalidArg;
  const std::u16string start = TextOf(prefix);
  std::vector<std::u16string> found;
  for (auto it = values_.lower_bound(start); it != values_.end() && it->first.starts_with(start); ++it)
    found.push_back(it->first);
  *keys = MakeCom<TFakeStringArray>(std::move(found)).detach();
  return kOk;
}

}  // namespace qx
