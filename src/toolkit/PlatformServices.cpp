#include "toolkit/PlatformServices.h"

#include <tuple>

namespace qx {

bool TPlatformServices::TGuidLess::operator()(const TGUID& a, const TGUID& b) const {
  return std::tie(a.D1, a.D2, a.D3, a.D4) < std::tie(b.D1, b.D2, b.D3, b.D4);
}

// The toolkit's own defaults (the manual timer service), in TimerService.cpp.
void InstallDefaultPlatformServices(TPlatformServices& services);

TPlatformServices& TPlatformServices::Current() {
  static TPlatformServices services = [] {
    TPlatformServices s;
    s.FInstaller = InstallDefaultPlatformServices;
    return s;
  }();
  return services;
}

void TPlatformServices::EnsureDefaults() {
  if (FDefaultsInstalled) return;
  FDefaultsInstalled = true;
  if (FInstaller) FInstaller(*this);
}

void TPlatformServices::AddPlatformService(const TGUID& iid, IUnknown* service, const std::string& name) {
  EnsureDefaults();
  if (!service) return;
  FServices[iid] = TEntry{ComPtr<IUnknown>(service), name};
}

void TPlatformServices::RemovePlatformService(const TGUID& iid) {
  EnsureDefaults();
  FServices.erase(iid);
}

bool TPlatformServices::SupportsPlatformService(const TGUID& iid, void** service) {
  EnsureDefaults();
  if (service) *service = nullptr;
  auto it = FServices.find(iid);
  if (it == FServices.end()) return false;
  if (!service) return true;
  return Succeeded(it->second.Service->QueryInterface(iid, service));
}

bool TPlatformServices::SupportsPlatformService(const TGUID& iid) const {
  const_cast<TPlatformServices*>(this)->EnsureDefaults();
  return FServices.count(iid) != 0;
}

std::string TPlatformServices::ServiceName(const TGUID& iid) const {
  auto it = FServices.find(iid);
  return it == FServices.end() ? std::string() : it->second.Name;
}

void TPlatformServices::Clear() {
  FServices.clear();
  FDefaultsInstalled = false;
}

}  // namespace qx
