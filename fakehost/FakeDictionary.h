#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// The host's own text-to-object dictionary, in insertion order.
class TFakeDictionary : public TInterfacedObject<IQxIDictionary> {
 public:
  HResult QX_STDCALL GetValue(Text key, IUnknown** value) override;
  HResult QX_STDCALL SetValue(Text key, IUnknown* value) override;
  HResult QX_STDCALL GetCount(std::int32_t* count) override;
  HResult QX_STDCALL Remove(Text key) override;
  HResult QX_STDCALL GetKeys(IQxIStringArray** keys) override;
  HResult QX_STDCALL GetKeysAndValues(IQxIStringArray** keys, IQxIArray** values) override;
  HResult QX_STDCALL MergeOverwrite(IQxIDictionary* other) override;
  HResult QX_STDCALL MergeExisting(IQxIDictionary* other) override;
  HResult QX_STDCALL MergeMissing(IQxIDictionary* other) override;

  ComPtr<IUnknown> Find(std::u16string_view key) const;
  void Set(std::u16string_view key, IUnknown* value);
  // Text of a stored string or variant; empty otherwise.
  std::u16string TextValue(std::u16string_view key) const;

 private:
  enum class EMerge { Overwrite, Existing, Missing };
  HResult Merge(IQxIDictionary* other, EMerge mode);
  bool Has(std::u16string_view key) const;

  std::vector<std::pair<std::u16string, ComPtr<IUnknown>>> entries_;
};

}  // namespace qx
