#include "fakehost/FakeGlobalStorage.h"

#include "fakehost/FakeCom.h"

namespace qx {

HResult QX_STDCALL TFakeGlobalStoreItem::GetSize(std::int32_t* size) {
  if (!size) return kInvalidArg;
  *size = static_cast<std::int32_t>(bytes_.size());
  return kOk;
}

HResult QX_STDCALL TFakeGlobalStoreItem::GetData(const void** data) {
  if (!data) return kInvalidArg;
  *data = bytes_.empty() ? nullptr : bytes_.data();
  return kOk;
}

void TFakeGlobalStore::PutItem(std::u16string_view key, std::vector<std::uint8_t> bytes) {
  items_[std::u16string(key)] = MakeCom<TFakeGlobalStoreItem>(std::move(bytes));
}

HResult QX_STDCALL TFakeGlobalStore::GetItem(Text key, IUnknown** item) {
  if (!item) return kInvalidArg;
  *item = nullptr;
  if (!key) return kInvalidArg;
  const auto it = items_.find(key);
  if (it == items_.end()) return kFail;
  return HandOutUnknown(it->second, item);
}

HResult QX_STDCALL TFakeGlobalStore::RemoveItem(Text key) {
  if (!key) return kInvalidArg;
  return items_.erase(key) ? kOk : kFail;
}

HResult QX_STDCALL TFakeGlobalStorageService::GetStore(IQxIGlobalStore** store) { return HandOut(store_, store); }

}  // namespace qx
