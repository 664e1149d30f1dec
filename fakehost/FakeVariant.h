#pragma once

#include <cstdint>
#include <string>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// A host variant holding text, a Boolean, a 64-bit integer or an object. Reads convert
// the way the host does: numbers and Booleans have a text form, "true"/"false" and
// decimal text read as Boolean and number; an object has no text.
class TFakeVariant : public TInterfacedObject<IQxIVariant> {
 public:
  enum class EKind { Text, Boolean, Int64, Unknown };

  static ComPtr<TFakeVariant> FromText(std::u16string text);
  static ComPtr<TFakeVariant> FromBoolean(bool value);
  static ComPtr<TFakeVariant> FromInt64(std::int64_t value);
  static ComPtr<TFakeVariant> FromUnknown(IUnknown* object);

  HResult QX_STDCALL AsBoolean(std::uint8_t* value, std::int32_t reserved) override;
  HResult QX_STDCALL AsInt64(std::int64_t* value, std::int32_t r1, std::int32_t r2) override;
  HResult QX_STDCALL AsUnknown(IUnknown** value) override;
  HResult QX_STDCALL AsText(IQxIString** value) override;

  EKind Kind() const { return kind_; }

 private:
  TFakeVariant() = default;

  EKind kind_ = EKind::Text;
  std::u16string text_;
  bool boolean_ = false;
  std::int64_t int64_ = 0;
  ComPtr<IUnknown> object_;
};

}  // namespace qx
