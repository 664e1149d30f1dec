#pragma once

// Small helpers shared by the fake host's objects: text in, objects out.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/ComPtr.h"
#include "base/Text.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Key/value pairs of an event or option dictionary, in order.
using TFakeParams = std::vector<std::pair<std::u16string, std::u16string>>;

inline std::u16string TextOf(Text text) { return text ? std::u16string(text) : std::u16string(); }

// Hands a reference out through a raw out parameter; nil is a failure.
template <class I, class T>
HResult HandOut(const ComPtr<T>& object, I** out) {
  if (!out) return kInvalidArg;
  *out = object.get();
  if (!*out) return kFail;
  (*out)->AddRef();
  return kOk;
}

// The same for an IUnknown out parameter, through the object's identity.
template <class T>
HResult HandOutUnknown(const ComPtr<T>& object, IUnknown** out) {
  if (!out) return kInvalidArg;
  *out = nullptr;
  if (!object) return kFail;
  return object->QueryInterface(IUnknown::IID, reinterpret_cast<void**>(out));
}

inline bool IsTrueText(std::u16string_view text) { return SameText(text, u"true"); }

// First value of a key in ordered pairs; empty when missing.
inline std::u16string ParamValue(const TFakeParams& params, std::u16string_view key) {
  for (const auto& [k, v] : params)
    if (k == key) return v;
  return {};
}
inline bool HasParam(const TFakeParams& params, std::u16string_view key) {
  for (const auto& entry : params)
    if (entry.first == key) return true;
  return false;
}

// Reads every pair of any host string dictionary through its interface.
TFakeParams ReadStringDictionary(IQxIStringDictionary* dictionary);
// Text of any host string object; empty for nil.
std::u16string ReadString(IQxIString* text);
// Text form of any host variant (text, number or Boolean); empty when it has none.
std::u16string ReadVariantText(IQxIVariant* variant);

}  // namespace qx
