#include "fakehost/FakeStringArray.h"

#include <algorithm>

#include "fakehost/FakeCom.h"
#include "fakehost/FakeString.h"

namespace qx {

HResult QX_STDCALL TFakeStringArray::GetItem(std::int32_t index, IQxIString** item) {
  if (!item) return kInvalidArg;
  *item = nullptr;
  if (!Valid(index)) return kInvalidArg;
  *item = MakeFakeString(items_[static_cast<std::size_t>(index)]).detach();
  return kOk;
}

HResult QX_STDCALL TFakeStringArray::SetItem(std::int32_t index, Text item) {
  if (!Valid(index)) return kInvalidArg;
  items_[static_cast<std::size_t>(index)] = TextOf(item);
  return kOk;
}

HResult QX_STDCALL TFakeStringArray::GetCount(std::int32_t* count) {
  if (!count) return kInvalidArg;
  *count = static_cast<std::int32_t>(items_.size());
  return kOk;
}

HResult QX_STDCALL TFakeStringArray::Add(Text item) {
  items_.push_back(TextOf(item));
  return kOk;
}

HResult QX_STDCALL TFakeStringArray::Insert(std::int32_t index, Text item) {
  if (index < 0 || static_cast<std::size_t>(index) > items_.size()) return kInvalidArg;
  items_.insert(items_.begin() + index, TextOf(item));
  return kOk;
}

HResult QX_STDCALL TFakeStringArray::Delete(std::int32_t index) {
  if (!Valid(index)) return kInvalidArg;
  items_.erase(items_.begin() + index);
  return kOk;
}

HResult QX_STDCALL TFakeStringArray::Exchange(std::int32_t a, std::int32_t b) {
  if (!Valid(a) || !Valid(b)) return kInvalidArg;
  std::swap(items_[static_cast<std::size_t>(a)], items_[static_cast<std::size_t>(b)]);
  return kOk;
}

HResult QX_STDCALL TFakeStringArray::Move(std::int32_t from, std::int32_t to) {
  if (!Valid(from) || !Valid(to)) return kInvalidArg;
  auto item = std::move(items_[static_cast<std::size_t>(from)]);
  items_.erase(items_.begin() + from);
  items_.insert(items_.begin() + to, std::move(item));
  return kOk;
}

HResult QX_STDCALL TFakeStringArray::IndexOf(Text item, std::int32_t* index) {
  if (!index) return kInvalidArg;
  const auto it = std::find(items_.begin(), items_.end(), TextOf(item));
  if (it == items_.end()) {
    *index = -1;
    return kFalse;
  }
  *index = static_cast<std::int32_t>(it - items_.begin());
  return kOk;
}

}  // namespace qx
