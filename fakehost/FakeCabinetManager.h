#pragma once

// The cabinet's view of tabs: a tab whose address has a host name has a site icon,
// unless it lives in a private group; its domain is that host name, lower case. Like the
// host, it keeps what it worked out for a tab until a value of the tab changes, and hands
// out one string per domain.

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/ComObject.h"
#include "fakehost/FakeTab.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeCabinetManager : public TInterfacedObject<IQxICabinetManager> {
 public:
  HResult QX_STDCALL HasCabinetIcon(IQxITab* tab) override;
  HResult QX_STDCALL GetDomainId(IQxITab* tab, IQxIString** domain) override;
  HResult QX_STDCALL GetDisplayTitle(IQxITab* tab, IQxIString** title) override;
  HResult QX_STDCALL GetCabinetState() override;

  // The host's answer whether its cabinet screen is open.
  void SetShowingQuery(std::function<bool()> showing) { showing_ = std::move(showing); }

  // The host name of an address ("https://Www.Example.org:8/x" gives "www.example.org");
  // empty without one.
  static std::u16string DomainOf(std::u16string_view uri);

  const TFakeTab::TCabinetView& ViewOf(const TFakeTab& tab);

 private:
  std::unordered_map<std::u16string, ComPtr<IQxIString>> domains_;
  std::function<bool()> showing_;
};

}  // namespace qx
