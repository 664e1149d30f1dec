#pragma once

#include <cstdint>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// A host handle: a window or other system value with the kind it was made with.
class TFakeHandle : public TInterfacedObject<IQxIHandle> {
 public:
  explicit TFakeHandle(std::uintptr_t value, std::int32_t kind = 65537) : value_(value), kind_(kind) {}

  HResult QX_STDCALL GetValue(std::uintptr_t* value) override {
    if (!value) return kInvalidArg;
    *value = value_;
    return kOk;
  }

  std::int32_t Kind() const { return kind_; }

 private:
  const std::uintptr_t value_;
  const std::int32_t kind_;
};

}  // namespace qx
