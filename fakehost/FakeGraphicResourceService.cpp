#include "fakehost/FakeGraphicResourceService.h"

#include "base/Text.h"
#include "fakehost/FakeString.h"

namespace qx {
namespace {

std::filesystem::path Under(const std::filesystem::path& root, std::u16string rest) {
  for (auto& c : rest)
    if (c == u'\\') c = u'/';
  while (!rest.empty() && rest.front() == u'/') rest.erase(rest.begin());
  return root / ToUtf8(rest);
}

}  // namespace

HResult QX_STDCALL TFakeGraphicResourceService::ResolvePath(Text url, IQxIString** path, std::int32_t) {
  if (!path) return kInvalidArg;
  *path = nullptr;
  if (!url) return kInvalidArg;
  const std::u16string text(url);
  const auto colon = text.find(u"://");
  if (colon == std::u16string::npos) return kFail;
  const std::u16string_view scheme = std::u16string_view(text).substr(0, colon);
  const std::u16string rest = text.substr(colon + 3);
  std::filesystem::path resolved;
  if (SameText(scheme, u"skin")) {
    resolved = Under(skinRoot_, rest);
  } else if (SameText(scheme, u"menu")) {
    resolved = Under(menuRoot_, rest);
  } else if (SameText(scheme, u"favicon")) {
    if (!favicons_) return kFail;
    resolved = SameText(rest, u"default.ico") ? favicons_->DefaultPath() : favicons_->PathOf(rest);
  } else {
    return kFail;
  }
  *path = MakeFakeString(FromUtf8(resolved.string())).detach();
  return kOk;
}

}  // namespace qx
