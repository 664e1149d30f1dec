#include "module/RegisterAppHandleProc.h"

#include <atomic>

#include "toolkit/Application.h"

namespace qx {
namespace {

std::atomic<HWnd> gApplicationWindow{nullptr};

std::uintptr_t ApplicationWindowProc() { return reinterpret_cast<std::uintptr_t>(gApplicationWindow.load()); }

}  // namespace

void RegisterAppHandle(HWnd mainWindow) {
  gApplicationWindow = mainWindow;
  // Registered again after each teardown, which clears the toolkit's callback.
  Application().SetApplicationWindowCallback(&ApplicationWindowProc);
}

HWnd ApplicationWindowHandle() { return gApplicationWindow.load(); }

}  // namespace qx
