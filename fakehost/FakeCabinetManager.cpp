#include "fakehost/FakeCabinetManager.h"

#include "fakehost/FakeString.h"
#include "fakehost/FakeTab.h"
#include "fakehost/FakeTabGroup.h"
#include "fakehost/FakeTabSection.h"

namespace qx {
namespace {

// Every tab the module sees comes from the fake model.
const TFakeTab* AsFake(IQxITab* tab) { return static_cast<const TFakeTab*>(tab); }

bool Known(IQxITab* tab, std::u16string& domain) {
  if (!tab) return false;
  const TFakeTab* fake = AsFake(tab);
  if (fake->Group() && fake->Group()->TextValue(u"private") == u"true") return false;
  domain = TFakeCabinetManager::DomainOf(fake->TextValue(u"uri"));
  return !domain.empty();
}

}  // namespace

std::u16string TFakeCabinetManager::DomainOf(std::u16string_view uri) {
  const std::size_t scheme = uri.find(u"://");
  if (scheme == std::u16string_view::npos) return {};
  std::u16string_view rest = uri.substr(scheme + 3);
  rest = rest.substr(0, rest.find_first_of(u"/?#"));
  if (const std::size_t at = rest.rfind(u'@'); at != std::u16string_view::npos) rest = rest.substr(at + 1);
  rest = rest.substr(0, rest.find(u':'));
  std::u16string host(rest);
  for (char16_t& c : host)
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
  return host;
}

HResult QX_STDCALL TFakeCabinetManager::HasCabinetIcon(IQxITab* tab) {
  std::u16string domain;
  return Known(tab, domain) ? kOk : kFail;
}

HResult QX_STDCALL TFakeCabinetManager::GetDomainId(IQxITab* tab, IQxIString** domain) {
  if (!domain) return kFail;
  *domain = nullptr;
  std::u16string text;
  if (!Known(tab, text)) return kFail;
  *domain = MakeFakeString(std::move(text)).detach();
  return kOk;
}

HResult QX_STDCALL TFakeCabinetManager::GetDisplayTitle(IQxITab* tab, IQxIString** title) {
  if (!title) return kFail;
  *title = nullptr;
  std::u16string domain;
  if (!Known(tab, domain)) return kFail;
  std::u16string text = AsFake(tab)->TextValue(u"title");
  *title = MakeFakeString(text.empty() ? domain : std::move(text)).detach();
  return kOk;
}

HResult QX_STDCALL TFakeCabinetManager::GetCabinetState() { return showing_ && showing_() ? kOk : kFail; }

}  // namespace qx
