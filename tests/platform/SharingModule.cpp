// Stands in for the module: a shared library with its own copy of the platform code.

#include "platform/Platform.h"

extern "C" __attribute__((visibility("default"))) qx::IPlatform* QxTestModulePlatform() { return &qx::Platform(); }

extern "C" __attribute__((visibility("default"))) bool QxTestModuleIsWindow(qx::HWnd hwnd) {
  return qx::Platform().IsWindow(hwnd);
}

extern "C" __attribute__((visibility("default"))) bool QxTestModulePost(qx::HWnd hwnd, std::uint32_t msg) {
  return qx::Platform().PostMessageW(hwnd, msg, 0, 0);
}
