// Finding windows and reading their names, texts and owners.

#include <algorithm>

#include "base/Text.h"
#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;

namespace {

std::int32_t CopyOut(const std::u16string& text, char16_t* buffer, std::int32_t maxCount) {
  if (!buffer || maxCount <= 0) return 0;
  const auto n = std::min<std::size_t>(text.size(), static_cast<std::size_t>(maxCount - 1));
  std::copy_n(text.data(), n, buffer);
  buffer[n] = 0;
  return static_cast<std::int32_t>(n);
}

}  // namespace

HWnd TPortableOs::FindWindowW(const char16_t* className, const char16_t* title) {
  TLock lock(FLock);
  for (HWnd h : FTopLevel) {
    TWindow* w = Find(h);
    if (!w) continue;
    if (className && !SameText(w->className, className)) continue;
    if (title && !SameText(w->title, title)) continue;
    return h;
  }
  return nullptr;
}

bool TPortableOs::EnumWindows(EnumWindowsProc callback, LParam lParam) {
  if (!callback) return false;
  std::vector<HWnd> snapshot;
  {
    TLock lock(FLock);
    snapshot = FTopLevel;
  }
  for (HWnd h : snapshot) {
    if (!IsWindow(h)) continue;
    if (callback(h, lParam) == 0) return false;
  }
  return true;
}

std::int32_t TPortableOs::GetClassNameW(HWnd hwnd, char16_t* buffer, std::int32_t maxCount) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  return w ? CopyOut(w->className, buffer, maxCount) : 0;
}

std::int32_t TPortableOs::GetWindowTextW(HWnd hwnd, char16_t* buffer, std::int32_t maxCount) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  return w ? CopyOut(w->title, buffer, maxCount) : 0;
}

std::int32_t TPortableOs::GetWindowTextLengthW(HWnd hwnd) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  return w ? static_cast<std::int32_t>(w->title.size()) : 0;
}

bool TPortableOs::SetWindowTextW(HWnd hwnd, const char16_t* text) {
  if (!IsWindow(hwnd)) return false;
  return SendDirect(hwnd, WM_SETTEXT, 0, reinterpret_cast<LParam>(text)) != 0;
}

std::uint32_t TPortableOs::GetWindowThreadProcessId(HWnd hwnd, std::uint32_t* processId) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return 0;
  if (processId) *processId = w->processId;
  return w->threadId;
}

std::uint32_t TPortableOs::GetCurrentProcessId() { return FProcessId; }

std::uint32_t TPortableOs::GetCurrentThreadId() { return ThisThreadId(); }

}  // namespace qx
