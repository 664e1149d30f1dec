#include <mutex>

#include "runtime/DelayExec.h"

namespace qx {
namespace {

std::mutex& UtilWindowLock() {
  static std::mutex lock;
  return lock;
}

LResult QX_STDCALL UtilDefWindowProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

}  // namespace

HWnd AllocateUtilWindow(WndProc wndProc, void* owner, const char16_t* className) {
  std::lock_guard guard(UtilWindowLock());
  IPlatform& os = Platform();
  WndProc existing = nullptr;
  if (os.GetClassInfoW(className, &existing) && existing != &UtilDefWindowProc)
    os.UnregisterClassW(className);
  if (!os.GetClassInfoW(className, nullptr)) os.RegisterClassW(className, &UtilDefWindowProc);
  HWnd window =
      os.CreateWindowExW(win::WS_EX_TOOLWINDOW, className, u"", win::WS_POPUP, 0, 0, 0, 0, nullptr, nullptr);
  if (!window) return nullptr;
  os.SetWindowLongPtrW(window, win::GWLP_USERDATA, reinterpret_cast<LongPtr>(owner));
  os.SetWindowLongPtrW(window, win::GWLP_WNDPROC, reinterpret_cast<LongPtr>(wndProc));
  return window;
}

void DeallocateUtilWindow(HWnd window) {
  std::lock_guard guard(UtilWindowLock());
  if (!window) return;
  IPlatform& os = Platform();
  char16_t className[256] = {};
  const bool named = os.GetClassNameW(window, className, 256) > 0;
  os.DestroyWindow(window);
  // The class's procedure lives in this library, which the host may unload next: the last
  // window of the class takes it along (the system refuses while another one stands).
  WndProc proc = nullptr;
  if (named && os.GetClassInfoW(className, &proc) && proc == &UtilDefWindowProc)
    os.UnregisterClassW(className);
}

}  // namespace qx
