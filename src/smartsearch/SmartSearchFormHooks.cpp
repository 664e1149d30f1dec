// Thread hooks that end the popup on input elsewhere: a press in another window, the
// wheel, or the application losing activation.

#include "smartsearch/SmartSearchForm.h"

namespace qx {
namespace {

constexpr std::uint32_t kWmActivateApp = 0x001C;

struct THooks {
  HHook Mouse = nullptr;
  HHook CallWndProc = nullptr;
  HHook GetMessage = nullptr;
};

THooks& Hooks() {
  static THooks hooks;
  return hooks;
}

LResult QX_STDCALL MouseHookProc(std::int32_t code, WParam wParam, LParam lParam) {
  if (code == win::HC_ACTION) {
    if (TSmartSearchForm* form = LiveSmartSearchForm()) {
      const auto* info = reinterpret_cast<const MouseHookStruct*>(lParam);
      try {
        form->HandleMouseHook(static_cast<std::uint32_t>(wParam), info->hwnd, info->pt);
      } catch (...) {
        // The input goes on to its window whatever the popup made of it.
      }
    }
  }
  return Platform().CallNextHookEx(Hooks().Mouse, code, wParam, lParam);
}

LResult QX_STDCALL CallWndProcHookProc(std::int32_t code, WParam wParam, LParam lParam) {
  if (code == win::HC_ACTION) {
    const auto* cwp = reinterpret_cast<const CwpStruct*>(lParam);
    if (TSmartSearchForm* form = LiveSmartSearchForm(); form && cwp->message == kWmActivateApp) form->Hide();
  }
  return Platform().CallNextHookEx(Hooks().CallWndProc, code, wParam, lParam);
}

LResult QX_STDCALL GetMessageHookProc(std::int32_t code, WParam wParam, LParam lParam) {
  if (code == win::HC_ACTION && wParam == win::PM_REMOVE) {
    const auto* msg = reinterpret_cast<const Msg*>(lParam);
    if (TSmartSearchForm* form = LiveSmartSearchForm()) {
      const bool wheel = msg->message == win::WM_MOUSEWHEEL || msg->message == win::WM_MOUSEHWHEEL;
      if (msg->message == kWmActivateApp || (wheel && form->Visible())) form->Hide();
    }
  }
  return Platform().CallNextHookEx(Hooks().GetMessage, code, wParam, lParam);
}

}  // namespace

void TSmartSearchForm::InstallHooks() {
  IPlatform& os = Platform();
  const std::uint32_t thread = os.GetCurrentThreadId();
  THooks& hooks = Hooks();
  if (!hooks.Mouse) hooks.Mouse = os.SetWindowsHookExW(win::WH_MOUSE, &MouseHookProc, nullptr, thread);
  if (!hooks.CallWndProc)
    hooks.CallWndProc = os.SetWindowsHookExW(win::WH_CALLWNDPROC, &CallWndProcHookProc, nullptr, thread);
  if (!hooks.GetMessage)
    hooks.GetMessage = os.SetWindowsHookExW(win::WH_GETMESSAGE, &GetMessageHookProc, nullptr, thread);
}

void TSmartSearchForm::RemoveHooks() {
  IPlatform& os = Platform();
  THooks& hooks = Hooks();
  for (HHook hook : {hooks.Mouse, hooks.CallWndProc, hooks.GetMessage})
    if (hook) os.UnhookWindowsHookEx(hook);
  hooks = {};
}

}  // namespace qx
