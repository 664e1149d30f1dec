#pragma once

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Makes the host's value objects by short name followed by the host id suffix.
class TFakeFactoryService : public TInterfacedObject<IQxIFactoryService> {
 public:
  HResult QX_STDCALL CreateObject(Text name, IUnknown** object) override;
};

}  // namespace qx
