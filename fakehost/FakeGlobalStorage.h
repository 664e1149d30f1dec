#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// One stored item: a copy of its bytes.
class TFakeGlobalStoreItem : public TInterfacedObject<IQxIGlobalStoreItem> {
 public:
  explicit TFakeGlobalStoreItem(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

  HResult QX_STDCALL GetSize(std::int32_t* size) override;
  HResult QX_STDCALL GetData(const void** data) override;

  const std::vector<std::uint8_t>& Bytes() const { return bytes_; }

 private:
  const std::vector<std::uint8_t> bytes_;
};

// The host's store of byte items that pages leave for plug-ins.
class TFakeGlobalStore : public TInterfacedObject<IQxIGlobalStore> {
 public:
  HResult QX_STDCALL GetItem(Text key, IUnknown** item) override;
  HResult QX_STDCALL RemoveItem(Text key) override;

  void PutItem(std::u16string_view key, std::vector<std::uint8_t> bytes);
  bool HasItem(std::u16string_view key) const { return items_.contains(std::u16string(key)); }

 private:
  std::map<std::u16string, ComPtr<TFakeGlobalStoreItem>> items_;
};

class TFakeGlobalStorageService : public TInterfacedObject<IQxIGlobalStorageService> {
 public:
  TFakeGlobalStorageService() : store_(MakeCom<TFakeGlobalStore>()) {}

  HResult QX_STDCALL GetStore(IQxIGlobalStore** store) override;

  TFakeGlobalStore& Store() { return *store_.get(); }

 private:
  ComPtr<TFakeGlobalStore> store_;
};

}  // namespace qx
