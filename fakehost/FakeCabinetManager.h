#pragma once

// The cabinet's view of tabs: a tab whose address has a host name has a site icon,
// unless it lives in a private group; its domain is that host name, lower case.

#include <functional>
#include <string>
#include <string_view>

#include "base/ComObject.h"
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

 private:
  std::function<bool()> showing_;
};

}  // namespace qx
