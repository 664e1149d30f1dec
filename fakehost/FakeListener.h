#pragma once

#include <functional>
#include <string>

#include "base/ComObject.h"
#include "fakehost/FakeCom.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// An event listener around a function, for tests and the host's own subscribers.
class TFakeListener : public TInterfacedObject<IQxIEventListener> {
 public:
  using TCallback = std::function<void(const std::u16string& eventId, const TFakeParams& parameters)>;

  explicit TFakeListener(TCallback callback) : callback_(std::move(callback)) {}

  HResult QX_STDCALL OnEvent(Text eventId, IQxIEvent* event) override {
    TFakeParams params;
    if (event) {
      ComPtr<IQxIStringDictionary> dictionary;
      if (Succeeded(event->GetParameters(dictionary.put()))) params = ReadStringDictionary(dictionary.get());
    }
    if (callback_) callback_(TextOf(eventId), params);
    return kOk;
  }

 private:
  TCallback callback_;
};

}  // namespace qx
