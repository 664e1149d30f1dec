#pragma once

#include <string>
#include <vector>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeStringArray : public TInterfacedObject<IQxIStringArray> {
 public:
  TFakeStringArray() = default;
  explicit TFakeStringArray(std::vector<std::u16string> items) : items_(std::move(items)) {}

  HResult QX_STDCALL GetItem(std::int32_t index, IQxIString** item) override;
  HResult QX_STDCALL SetItem(std::int32_t index, Text item) override;
  HResult QX_STDCALL GetCount(std::int32_t* count) override;
  HResult QX_STDCALL Add(Text item) override;
  HResult QX_STDCALL Insert(std::int32_t index, Text item) override;
  HResult QX_STDCALL Delete(std::int32_t index) override;
  HResult QX_STDCALL Exchange(std::int32_t a, std::int32_t b) override;
  HResult QX_STDCALL Move(std::int32_t from, std::int32_t to) override;
  HResult QX_STDCALL IndexOf(Text item, std::int32_t* index) override;

  const std::vector<std::u16string>& Items() const { return items_; }

 private:
  bool Valid(std::int32_t index) const { return index >= 0 && static_cast<std::size_t>(index) < items_.size(); }

  std::vector<std::u16string> items_;
};

}  // namespace qx
