#include "tests/platform/TestWindows.h"

#include <algorithm>

namespace qx::test {

std::vector<TRecord>& Log() {
  static std::vector<TRecord> log;
  return log;
}

std::vector<std::uint32_t> Messages(HWnd hwnd) { return MessagesExcept(hwnd, {}); }

std::vector<std::uint32_t> MessagesExcept(HWnd hwnd, std::initializer_list<std::uint32_t> skip) {
  std::vector<std::uint32_t> out;
  for (const TRecord& r : Log()) {
    if (r.hwnd == hwnd && std::find(skip.begin(), skip.end(), r.msg) == skip.end()) out.push_back(r.msg);
  }
  return out;
}

LResult QX_STDCALL RecordingProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  Log().push_back(TRecord{hwnd, msg, wParam, lParam, Platform().GetCurrentThreadId()});
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

LResult QX_STDCALL SecondProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam) + 1000;
}

HWnd MakeWindow(std::uint32_t style, HWnd parent, TRect bounds, const char16_t* title) {
  if (!Platform().GetClassInfoW(kTestClass, nullptr)) Platform().RegisterClassW(kTestClass, &RecordingProc);
  return Platform().CreateWindowExW(0, kTestClass, title, style, bounds.Left, bounds.Top, bounds.Width(),
                                    bounds.Height(), parent, nullptr);
}

}  // namespace qx::test
