#include "fakehost/FakeSearchManager.h"

namespace qx {

HResult QX_STDCALL TFakeSearchManager::Search(Text engineGuid, Text keyword, IUnknown* options) {
  TFakeSearchRecord record{engineGuid ? engineGuid : u"", keyword ? keyword : u"", {}};
  ComPtr<IQxIStringDictionary> dictionary;
  if (options && Succeeded(options->QueryInterface(IQxIStringDictionary::IID, dictionary.put_void())))
    record.Options = ReadStringDictionary(dictionary.get());
  searches_.push_back(std::move(record));
  return kOk;
}

HResult QX_STDCALL TFakeSearchHistoryManager::Add(Text keyword) {
  keywords_.emplace_back(keyword ? keyword : u"");
  return kOk;
}

}  // namespace qx
