// Calling window procedures (lock not held) and the hooks that see the calls.

#include <algorithm>

#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;

LResult TPortableOs::CallProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  WndProc proc = nullptr;
  {
    TLock lock(FLock);
    TWindow* w = Find(hwnd);
    if (!w) return 0;
    proc = w->proc;
  }
  return proc ? proc(hwnd, msg, wParam, lParam) : 0;
}

LResult TPortableOs::SendDirect(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  CwpStruct cwp{lParam, wParam, msg, hwnd};
  RunHooks(WH_CALLWNDPROC, HC_ACTION, 1, reinterpret_cast<LParam>(&cwp));
  return CallProc(hwnd, msg, wParam, lParam);
}

LResult TPortableOs::RunHooks(std::int32_t kind, std::int32_t code, WParam wParam, LParam lParam) {
  HookProc proc = nullptr;
  {
    TLock lock(FLock);
    const std::uint32_t me = ThisThreadId();
    for (const THook& hook : FHooks) {
      if (hook.kind == kind && (hook.threadId == 0 || hook.threadId == me)) {
        proc = hook.proc;
        break;
      }
    }
  }
  return proc ? proc(code, wParam, lParam) : 0;
}

LResult TPortableOs::CallNextHookEx(HHook hook, std::int32_t code, WParam wParam, LParam lParam) {
  HookProc proc = nullptr;
  {
    TLock lock(FLock);
    const std::uint32_t me = ThisThreadId();
    auto it = std::find_if(FHooks.begin(), FHooks.end(), [&](const THook& h) { return h.handle == hook; });
    if (it == FHooks.end()) return 0;
    const std::int32_t kind = it->kind;
    for (++it; it != FHooks.end(); ++it) {
      if (it->kind == kind && (it->threadId == 0 || it->threadId == me)) {
        proc = it->proc;
        break;
      }
    }
  }
  return proc ? proc(code, wParam, lParam) : 0;
}

HHook TPortableOs::SetWindowsHookExW(std::int32_t idHook, HookProc proc, void*, std::uint32_t threadId) {
  if (!proc || (idHook != WH_MOUSE && idHook != WH_CALLWNDPROC && idHook != WH_GETMESSAGE)) return nullptr;
  TLock lock(FLock);
  FNextHook += 4;
  THook hook{reinterpret_cast<HHook>(FNextHook), idHook, proc, threadId};
  FHooks.insert(FHooks.begin(), hook);
  return hook.handle;
}

bool TPortableOs::UnhookWindowsHookEx(HHook hook) {
  TLock lock(FLock);
  auto it = std::find_if(FHooks.begin(), FHooks.end(), [&](const THook& h) { return h.handle == hook; });
  if (it == FHooks.end()) return false;
  FHooks.erase(it);
  return true;
}

}  // namespace qx
