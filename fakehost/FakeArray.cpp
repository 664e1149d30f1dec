#include "fakehost/FakeArray.h"

namespace qx {

HResult QX_STDCALL TFakeArray::GetItem(std::int32_t index, IUnknown** item) {
  if (!item) return kInvalidArg;
  *item = nullptr;
  if (!Valid(index)) return kInvalidArg;
  items_[static_cast<std::size_t>(index)].CopyTo(item);
  return kOk;
}

HResult QX_STDCALL TFakeArray::SetItem(std::int32_t index, IUnknown* item) {
  if (!Valid(index)) return kInvalidArg;
  items_[static_cast<std::size_t>(index)] = item;
  return kOk;
}

HResult QX_STDCALL TFakeArray::GetCount(std::int32_t* count) {
  if (!count) return kInvalidArg;
  *count = static_cast<std::int32_t>(items_.size());
  return kOk;
}

HResult QX_STDCALL TFakeArray::Add(IUnknown* item) {
  items_.emplace_back(item);
  return kOk;
}

HResult QX_STDCALL TFakeArray::Insert(std::int32_t index, IUnknown* item) {
  if (index < 0 || static_cast<std::size_t>(index) > items_.size()) return kInvalidArg;
  items_.insert(items_.begin() + index, ComPtr<IUnknown>(item));
  return kOk;
}

HResult QX_STDCALL TFakeArray::Delete(std::int32_t index) {
  if (!Valid(index)) return kInvalidArg;
  items_.erase(items_.begin() + index);
  return kOk;
}

HResult QX_STDCALL TFakeArray::Exchange(std::int32_t a, std::int32_t b) {
  if (!Valid(a) || !Valid(b)) return kInvalidArg;
  items_[static_cast<std::size_t>(a)].swap(items_[static_cast<std::size_t>(b)]);
  return kOk;
}

HResult QX_STDCALL TFakeArray::Move(std::int32_t from, std::int32_t to) {
  if (!Valid(from) || !Valid(to)) return kInvalidArg;
  auto item = items_[static_cast<std::size_t>(from)];
  items_.erase(items_.begin() + from);
  items_.insert(items_.begin() + to, std::move(item));
  return kOk;
}

HResult QX_STDCALL TFakeArray::IndexOf(IUnknown* item, std::int32_t* index) {
  if (!index) return kInvalidArg;
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (SameInterface(items_[i].get(), item)) {
      *index = static_cast<std::int32_t>(i);
      return kOk;
    }
  }
  *index = -1;
  return kFalse;
}

}  // namespace qx
