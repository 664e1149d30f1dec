#pragma once

#include <cstdint>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// The main window object; its handle is whatever value the platform layer gave the
// host window, set by the fixture or the simulator.
class TFakeWindow : public TInterfacedObject<IQxIWindow> {
 public:
  HResult QX_STDCALL GetHandle(IQxIHandle** handle) override;

  void SetHandleValue(std::uintptr_t value) { value_ = value; }
  std::uintptr_t HandleValue() const { return value_; }

 private:
  std::uintptr_t value_ = 0x10010;
};

class TFakeWindowService : public TInterfacedObject<IQxIWindowService> {
 public:
  TFakeWindowService();

  HResult QX_STDCALL GetMainWindow(IQxIWindow** window) override;

  TFakeWindow& MainWindow() { return *window_.get(); }

 private:
  ComPtr<TFakeWindow> window_;
};

}  // namespace qx
