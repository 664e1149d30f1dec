#include "fakehost/FakeWindowService.h"

#include "fakehost/FakeCom.h"
#include "fakehost/FakeHandle.h"

namespace qx {

HResult QX_STDCALL TFakeWindow::GetHandle(IQxIHandle** handle) {
  if (!handle) return kInvalidArg;
  *handle = MakeCom<TFakeHandle>(value_).detach();
  return kOk;
}

TFakeWindowService::TFakeWindowService() : window_(MakeCom<TFakeWindow>()) {}

HResult QX_STDCALL TFakeWindowService::GetMainWindow(IQxIWindow** window) { return HandOut(window_, window); }

}  // namespace qx
