#include "fakehost/FakeUriAction.h"

#include "fakehost/FakeStringDictionary.h"

namespace qx {

void TFakeUriAction::SetBrowserGuid(std::u16string_view uriPrefix, std::u16string_view browserGuid) {
  for (auto& entry : table_) {
    if (entry.first == uriPrefix) {
      entry.second = browserGuid;
      return;
    }
  }
  table_.emplace_back(std::u16string(uriPrefix), std::u16string(browserGuid));
}

HResult QX_STDCALL TFakeUriAction::GetBrowserInfo(Text uri, IQxIStringDictionary** info) {
  if (!info) return kInvalidArg;
  *info = nullptr;
  if (!uri) return kInvalidArg;
  const std::u16string_view address(uri);
  const std::pair<std::u16string, std::u16string>* best = nullptr;
  for (const auto& entry : table_)
    if (address.starts_with(entry.first) && (!best || entry.first.size() > best->first.size())) best = &entry;
  auto dictionary = MakeCom<TFakeStringDictionary>();
  if (best) dictionary->Set(u"browser-guid", best->second);
  *info = dictionary.detach();
  return kOk;
}

}  // namespace qx
