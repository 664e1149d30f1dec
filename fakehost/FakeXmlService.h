#pragma once

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeXmlService : public TInterfacedObject<IQxIXmlService> {
 public:
  // Malformed text fails with a nil element.
  HResult QX_STDCALL Parse(Text text, IQxIXmlElement** element) override;
};

}  // namespace qx
