#pragma once

#include <map>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

struct IServiceCoreWrap;

// The host dictionary that the module implements itself; keys enumerate in sorted order.
class TQxIDictionaryImpl : public TInterfacedObject<IQxIDictionary> {
 public:
  explicit TQxIDictionaryImpl(IServiceCoreWrap* serviceCore);

  HResult QX_STDCALL GetValue(Text key, IUnknown** value) override;
  HResult QX_STDCALL SetValue(Text key, IUnknown* value) override;
  HResult QX_STDCALL GetCount(std::int32_t* count) override;
  HResult QX_STDCALL Remove(Text key) override;
  HResult QX_STDCALL GetKeys(IQxIStringArray** keys) override;
  HResult QX_STDCALL GetKeysAndValues(IQxIStringArray** keys, IQxIArray** values) override;
  HResult QX_STDCALL MergeOverwrite(IQxIDictionary* other) override;
  HResult QX_STDCALL MergeExisting(IQxIDictionary* other) override;
  HResult QX_STDCALL MergeMissing(IQxIDictionary* other) override;

 private:
  enum class MergeMode { Overwrite = 0, Existing = 1, Missing = 2 };
  HResult Merge(IQxIDictionary* other, MergeMode mode);

  // Not held: the wrapper owns the module's host objects, and may own this one.
  IServiceCoreWrap* FServiceCore;
  std::map<std::u16string, ComPtr<IUnknown>> FDictionary;
};

}  // namespace qx
