#pragma once

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// One delivery of an event: its parameters, possibly nil.
class TFakeEvent : public TInterfacedObject<IQxIEvent> {
 public:
  explicit TFakeEvent(IQxIStringDictionary* parameters) : parameters_(parameters) {}

  HResult QX_STDCALL GetParameters(IQxIStringDictionary** parameters) override {
    if (!parameters) return kInvalidArg;
    *parameters = nullptr;
    if (!parameters_) return kFail;
    parameters_.CopyTo(parameters);
    return kOk;
  }

 private:
  ComPtr<IQxIStringDictionary> parameters_;
};

}  // namespace qx
