#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// The host's settings: text values under exact keys. A missing key reads as kInvalidArg.
// The alternate setter writes the same store and is logged apart.
class TFakePropertyService : public TInterfacedObject<IQxIPropertyService> {
 public:
  struct TWrite {
    std::u16string Key;
    std::optional<std::u16string> Value;  // none: deleted
    bool Alternate = false;
  };

  HResult QX_STDCALL GetProperty(Text key, IQxIString** value) override;
  HResult QX_STDCALL SetProperty(Text key, Text value) override;
  HResult QX_STDCALL DeleteProperty(Text key) override;
  HResult QX_STDCALL EnumerateKeys(Text prefix, IQxIStringArray** keys) override;
  HResult QX_STDCALL SetPropertyAlternate(Text key, Text value) override;

  // Fake side.
  void Set(std::u16string_view key, std::u16string_view value) { values_[std::u16string(key)] = value; }
  std::optional<std::u16string> Get(std::u16string_view key) const;
  void Remove(std::u16string_view key) { values_.erase(std::u16string(key)); }
  const std::vector<TWrite>& Writes() const { return writes_; }

 private:
  std::map<std::u16string, std::u16string> values_;
  std::vector<TWrite> writes_;
};

}  // namespace qx
