#include "fakehost/FakePageDataManager.h"

#include "base/Text.h"
#include "fakehost/FakeCom.h"
#include "fakehost/FakeString.h"

namespace qx {

std::u16string TFakePageDataManager::PageKey(std::u16string_view guid) { return UpperCase(guid); }

HResult QX_STDCALL TFakePageDataManager::SetData(Text pageGuid, Text key, Text value) {
  if (!pageGuid || !key) return kInvalidArg;
  pages_[PageKey(pageGuid)][key] = TextOf(value);
  return kOk;
}

HResult QX_STDCALL TFakePageDataManager::DeleteData(Text pageGuid, Text key) {
  if (!pageGuid || !key) return kInvalidArg;
  const auto page = pages_.find(PageKey(pageGuid));
  if (page == pages_.end() || page->second.erase(key) == 0) return kFail;
  return kOk;
}

HResult QX_STDCALL TFakePageDataManager::GetData(Text pageGuid, Text key, IQxIString** value) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  if (!pageGuid || !key) return kInvalidArg;
  const auto found = Data(pageGuid, key);
  if (!found) return kFail;
  *value = MakeFakeString(*found).detach();
  return kOk;
}

std::optional<std::u16string> TFakePageDataManager::Data(std::u16string_view pageGuid,
                                                         std::u16string_view key) const {
  const auto page = pages_.find(PageKey(pageGuid));
  if (page == pages_.end()) return std::nullopt;
  const auto entry = page->second.find(std::u16string(key));
  if (entry == page->second.end()) return std::nullopt;
  return entry->second;
}

void TFakePageDataManager::RemovePage(std::u16string_view pageGuid) { pages_.erase(PageKey(pageGuid)); }

}  // namespace qx
