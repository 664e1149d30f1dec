#pragma once

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeStringBuilder : public TInterfacedObject<IQxIStringBuilder> {
 public:
  HResult QX_STDCALL Create(IQxIString** out, Text text) override;
};

class TFakeVariantBuilder : public TInterfacedObject<IQxIVariantBuilder> {
 public:
  HResult QX_STDCALL FromBoolean(IQxIVariant** out, bool value) override;
  HResult QX_STDCALL FromInt64(IQxIVariant** out, std::uint32_t low, std::uint32_t high) override;
  HResult QX_STDCALL FromText(IQxIVariant** out, Text text) override;
};

class TFakeHandleBuilder : public TInterfacedObject<IQxIHandleBuilder> {
 public:
  HResult QX_STDCALL Create(IQxIHandle** out, std::uintptr_t value, std::int32_t kind, std::int32_t r1,
                            std::int32_t r2) override;
};

}  // namespace qx
