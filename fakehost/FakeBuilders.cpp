#include "fakehost/FakeBuilders.h"

#include "fakehost/FakeCom.h"
#include "fakehost/FakeHandle.h"
#include "fakehost/FakeString.h"
#include "fakehost/FakeVariant.h"

namespace qx {

HResult QX_STDCALL TFakeStringBuilder::Create(IQxIString** out, Text text) {
  if (!out) return kInvalidArg;
  *out = MakeFakeString(TextOf(text)).detach();
  return kOk;
}

HResult QX_STDCALL TFakeVariantBuilder::FromBoolean(IQxIVariant** out, bool value) {
  if (!out) return kInvalidArg;
  *out = TFakeVariant::FromBoolean(value).detach();
  return kOk;
}

HResult QX_STDCALL TFakeVariantBuilder::FromInt64(IQxIVariant** out, std::uint32_t low, std::uint32_t high) {
  if (!out) return kInvalidArg;
  const auto value = static_cast<std::int64_t>((std::uint64_t{high} << 32) | low);
  *out = TFakeVariant::FromInt64(value).detach();
  return kOk;
}

HResult QX_STDCALL TFakeVariantBuilder::FromText(IQxIVariant** out, Text text) {
  if (!out) return kInvalidArg;
  *out = TFakeVariant::FromText(TextOf(text)).detach();
  return kOk;
}

HResult QX_STDCALL TFakeHandleBuilder::Create(IQxIHandle** out, std::uintptr_t value, std::int32_t kind,
                                              std::int32_t, std::int32_t) {
  if (!out) return kInvalidArg;
  *out = MakeCom<TFakeHandle>(value, kind).detach();
  return kOk;
}

}  // namespace qx
