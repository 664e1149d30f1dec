#pragma once

#include <string_view>

#include "base/ComObject.h"
#include "fakehost/FakeServiceRegistry.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// The root the module is given: core services by ANSI id.
class TFakeServiceCore : public TInterfacedObject<IQxIServiceCore> {
 public:
  HResult QX_STDCALL QueryService(AnsiText name, IUnknown** object) override {
    return registry_.HandOut(name, object);
  }

  void RegisterService(std::string_view id, IUnknown* object) { registry_.Set(id, object); }
  void UnregisterService(std::string_view id) { registry_.Remove(id); }
  ComPtr<IUnknown> Find(std::string_view id) const { return registry_.Find(id); }
  void Clear() { registry_.Clear(); }

 private:
  TFakeServiceRegistry registry_;
};

}  // namespace qx
