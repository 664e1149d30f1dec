#include "fakehost/FakeCabinetManager.h"

#include "fakehost/FakeString.h"
#include "fakehost/FakeTab.h"
#include "fakehost/FakeTabGroup.h"
#include "fakehost/FakeTabSection.h"

namespace qx {
namespace {

// Every tab the module sees comes from the fake model.
const TFakeTab* AsFake(IQxITab* tab) { return static_cast<const TFakeTab*>(tab); }

bool Private(const TFakeTab* tab) { return tab->Group() && tab->Group()->TextValue(u"private") == u"true"; }

// The tab's view when it has a site icon, else null.
const TFakeTab::TCabinetView* Known(IQxITab* tab, TFakeCabinetManager& manager) {
  if (!tab) return nullptr;
  const TFakeTab* fake = AsFake(tab);
  if (Private(fake)) return nullptr;
  const TFakeTab::TCabinetView& view = manager.ViewOf(*fake);
  return view.Domain ? &view : nullptr;
}

HResult GiveText(IQxIString* text, IQxIString** out) {
  if (!out) return kFail;
  *out = text;
  if (!text) return kFail;
  text->AddRef();
  return kOk;
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

const TFakeTab::TCabinetView& TFakeCabinetManager::ViewOf(const TFakeTab& tab) {
  TFakeTab::TCabinetView& view = tab.CabinetView();
  if (view.Valid) return view;
  view.Valid = true;
  std::u16string domain = DomainOf(tab.TextValue(u"uri"));
  if (domain.empty()) return view;
  std::u16string title = tab.TextValue(u"title");
  view.Title = MakeFakeString(title.empty() ? domain : std::move(title));
  ComPtr<IQxIString>& shared = domains_[domain];
  if (!shared) shared = MakeFakeString(std::move(domain));
  view.Domain = shared;
  return view;
}

HResult QX_STDCALL TFakeCabinetManager::HasCabinetIcon(IQxITab* tab) {
  return Known(tab, *this) ? kOk : kFail;
}

HResult QX_STDCALL TFakeCabinetManager::GetDomainId(IQxITab* tab, IQxIString** domain) {
  const TFakeTab::TCabinetView* view = Known(tab, *this);
  return GiveText(view ? view->Domain.get() : nullptr, domain);
}

HResult QX_STDCALL TFakeCabinetManager::GetDisplayTitle(IQxITab* tab, IQxIString** title) {
  const TFakeTab::TCabinetView* view = Known(tab, *this);
  return GiveText(view ? view->Title.get() : nullptr, title);
}

HResult QX_STDCALL TFakeCabinetManager::GetCabinetState() { return showing_ && showing_() ? kOk : kFail; }

}  // namespace qx
