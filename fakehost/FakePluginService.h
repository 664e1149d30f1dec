#pragma once

#include <string_view>

#include "base/ComObject.h"
#include "fakehost/FakeServiceRegistry.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Plug-in objects by id: the host's own plug-in services and whatever the simulator
// registers, such as the module's two plug-ins, so that they find each other.
class TFakePluginService : public TInterfacedObject<IQxIPluginService> {
 public:
  HResult QX_STDCALL GetPlugin(AnsiText name, IQxIServiceCore*, IUnknown** object) override {
    return registry_.HandOut(name, object);
  }

  // Full id (short name and host suffix). A nil object removes the id.
  void RegisterPlugin(std::string_view id, IUnknown* object) { registry_.Set(id, object); }
  void UnregisterPlugin(std::string_view id) { registry_.Remove(id); }
  ComPtr<IUnknown> Find(std::string_view id) const { return registry_.Find(id); }
  // Drops every object, the module's plug-ins included (they hold the service core).
  void Clear() { registry_.Clear(); }

 private:
  TFakeServiceRegistry registry_;
};

}  // namespace qx
