#pragma once

// Registry of platform services, keyed by interface identity. The toolkit asks
// it for its timer service; a module can put its own service in the place of
// the default one and remove it again at teardown.

#include <map>
#include <string>

#include "base/ComPtr.h"
#include "base/Guid.h"
#include "base/Unknown.h"

namespace qx {

class TPlatformServices {
 public:
  static TPlatformServices& Current();

  // Replaces any service of that identity; the name is for messages only.
  void AddPlatformService(const TGUID& iid, IUnknown* service, const std::string& name = {});
  void RemovePlatformService(const TGUID& iid);
  // True and an added reference in *service when a service of that identity stands.
  bool SupportsPlatformService(const TGUID& iid, void** service);
  bool SupportsPlatformService(const TGUID& iid) const;
  std::string ServiceName(const TGUID& iid) const;
  std::size_t Count() const { return FServices.size(); }
  void Clear();

  template <class I>
  void AddPlatformService(const ComPtr<I>& service, const std::string& name = {}) {
    AddPlatformService(I::IID, service.get(), name);
  }
  template <class I>
  ComPtr<I> GetPlatformService() {
    ComPtr<I> out;
    void* raw = nullptr;
    if (SupportsPlatformService(I::IID, &raw)) out.attach(static_cast<I*>(raw));
    return out;
  }

  // Run when a service is asked for and none is registered (installs the defaults).
  void SetDefaultsInstaller(void (*installer)(TPlatformServices&)) { FInstaller = installer; }

 private:
  struct TEntry {
    ComPtr<IUnknown> Service;
    std::string Name;
  };
  struct TGuidLess {
    bool operator()(const TGUID& a, const TGUID& b) const;
  };
  void EnsureDefaults();
  std::map<TGUID, TEntry, TGuidLess> FServices;
  void (*FInstaller)(TPlatformServices&) = nullptr;
  bool FDefaultsInstalled = false;
};

}  // namespace qx
