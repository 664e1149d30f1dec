#pragma once

#include <string>
#include <vector>

#include "base/ComObject.h"
#include "fakehost/FakeCom.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

struct TFakeSearchRecord {
  std::u16string EngineGuid;
  std::u16string Keyword;
  TFakeParams Options;  // empty when the options were not a string dictionary
};

// The host's search engines: records each search it is asked for.
class TFakeSearchManager : public TInterfacedObject<IQxISearchManager> {
 public:
  HResult QX_STDCALL Search(Text engineGuid, Text keyword, IUnknown* options) override;
  const std::vector<TFakeSearchRecord>& Searches() const { return searches_; }

 private:
  std::vector<TFakeSearchRecord> searches_;
};

// The search box's history, newest last.
class TFakeSearchHistoryManager : public TInterfacedObject<IQxISearchHistoryManager> {
 public:
  HResult QX_STDCALL Add(Text keyword) override;
  const std::vector<std::u16string>& Keywords() const { return keywords_; }

 private:
  std::vector<std::u16string> keywords_;
};

}  // namespace qx
