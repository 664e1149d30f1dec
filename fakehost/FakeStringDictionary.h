#pragma once

#include <optional>
#include <string>

#include "base/ComObject.h"
#include "fakehost/FakeCom.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Text-to-text dictionary; keys are exact and keep their insertion order, and
// overwriting a key keeps its place.
class TFakeStringDictionary : public TInterfacedObject<IQxIStringDictionary> {
 public:
  TFakeStringDictionary() = default;
  explicit TFakeStringDictionary(TFakeParams entries);

  HResult QX_STDCALL GetValue(Text key, IQxIString** value) override;
  HResult QX_STDCALL SetValue(Text key, Text value) override;
  HResult QX_STDCALL GetKeys(IQxIStringArray** keys) override;
  HResult QX_STDCALL GetKeysAndValues(IQxIStringArray** keys, IQxIStringArray** values) override;

  void Set(std::u16string_view key, std::u16string_view value);
  std::optional<std::u16string> Find(std::u16string_view key) const;
  const TFakeParams& Entries() const { return entries_; }

 private:
  TFakeParams entries_;
};

}  // namespace qx
