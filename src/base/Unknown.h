#pragma once

#include <cstdint>

#include "base/Guid.h"
#include "base/Status.h"

namespace qx {

// Binary-compatible with the platform's IUnknown: three slots, stdcall on 32-bit Windows.
// No virtual destructor: it would add a slot; objects are freed through Release.
struct IUnknown {
  static constexpr TGUID IID = MakeGuid("00000000-0000-0000-C000-000000000046");

  virtual HResult QX_STDCALL QueryInterface(const TGUID& iid, void** object) = 0;
  virtual std::uint32_t QX_STDCALL AddRef() = 0;
  virtual std::uint32_t QX_STDCALL Release() = 0;

 protected:
  ~IUnknown() = default;
};

using IInterface = IUnknown;

// True when both references are the same object (compared by their IUnknown).
bool SameInterface(IUnknown* a, IUnknown* b);

}  // namespace qx
