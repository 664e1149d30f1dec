// The parent form's window: its subclassed procedure, touch registration and the
// two thread hooks that bring wheel, touch and focus input to the form.

#include <vector>

#include "resources/ImageButton.h"
#include "tabbar/TabbarParentForm.h"

namespace qx {

namespace {

constexpr std::uint32_t kWmSizing = 0x0214;
constexpr std::uint32_t kTouchFlags = 3;

// The hooks serve one form.
struct THookState {
  TTabbarParentForm* Form = nullptr;
  HHook GetMessageHook = nullptr;
  HHook CallWndProcHook = nullptr;
};

THookState& Hooks() {
  static THookState state;
  return state;
}

std::int16_t LowWord(LParam value) { return static_cast<std::int16_t>(value & 0xFFFF); }
std::int16_t HighWord(LParam value) { return static_cast<std::int16_t>((value >> 16) & 0xFFFF); }

bool IsWheel(std::uint32_t msg) { return msg == win::WM_MOUSEWHEEL || msg == win::WM_MOUSEHWHEEL; }

// Wheel messages go to the strip's window under the cursor, whichever window has the focus.
LResult QX_STDCALL GetMessageHookProc(std::int32_t code, WParam wParam, LParam lParam) {
  IPlatform& os = Platform();
  TTabbarParentForm* form = Hooks().Form;
  if (code == win::HC_ACTION && wParam == win::PM_REMOVE && form) {
    auto* msg = reinterpret_cast<Msg*>(lParam);
    if (IsWheel(msg->message)) {
      const HWnd target = os.WindowFromPoint(TPoint{LowWord(msg->lParam), HighWord(msg->lParam)});
      if (target != msg->hwnd && form->IsSelfWindow(target)) {
        os.SendMessageW(target, msg->message, msg->wParam, msg->lParam);
        msg->message = 0;
        msg->wParam = 0;
        msg->lParam = 0;
      }
    }
  }
  return os.CallNextHookEx(Hooks().GetMessageHook, code, wParam, lParam);
}

LResult QX_STDCALL CallWndProcHookProc(std::int32_t code, WParam wParam, LParam lParam) {
  IPlatform& os = Platform();
  TTabbarParentForm* form = Hooks().Form;
  if (code == win::HC_ACTION && form) {
    auto* cwp = reinterpret_cast<CwpStruct*>(lParam);
    const HWnd window = form->FormHandle();
    switch (cwp->message) {
      case win::WM_MOUSEHWHEEL: {
        TPoint cursor;
        os.GetCursorPos(&cursor);
        if (window && os.WindowFromPoint(cursor) == window &&
            os.SendMessageW(window, win::WM_MOUSEWHEEL, cwp->wParam, cwp->lParam) != 0) {
          cwp->message = 0;
          cwp->wParam = 0;
          cwp->lParam = 0;
        }
        break;
      }
      case win::WM_KILLFOCUS:
        if (window && cwp->hwnd == window) form->OnFormKillFocus();
        break;
      case win::WM_WINDOWPOSCHANGED:
      case win::WM_MOVE:
      case win::WM_SIZE:
      case kWmSizing:
        if (cwp->hwnd && cwp->hwnd == form->ClientWindowHandle())
          form->UpdateChildFormsPosition(cwp->message);
        break;
      default:
        break;
    }
  }
  return os.CallNextHookEx(Hooks().CallWndProcHook, code, wParam, lParam);
}

}  // namespace

void TTabbarParentForm::InstallHooks() {
  IPlatform& os = Platform();
  THookState& hooks = Hooks();
  hooks.Form = this;
  const std::uint32_t thread = os.GetCurrentThreadId();
  hooks.GetMessageHook = os.SetWindowsHookExW(win::WH_GETMESSAGE, &GetMessageHookProc, nullptr, thread);
  hooks.CallWndProcHook = os.SetWindowsHookExW(win::WH_CALLWNDPROC, &CallWndProcHookProc, nullptr, thread);
}

void TTabbarParentForm::RemoveHooks() {
  IPlatform& os = Platform();
  THookState& hooks = Hooks();
  if (hooks.Form != this) return;
  if (hooks.GetMessageHook) os.UnhookWindowsHookEx(hooks.GetMessageHook);
  if (hooks.CallWndProcHook) os.UnhookWindowsHookEx(hooks.CallWndProcHook);
  hooks = {};
}

void TTabbarParentForm::OnFormKillFocus() {
  FLastFocus = nullptr;
  HideEditAndUpdateTitle(false);
}

void TTabbarParentForm::HandleCreated() {
  TBaseFormXE7::HandleCreated();
  const HWnd window = FormHandle();
  SubclassWindow(window);
  IPlatform& os = Platform();
  if (os.CheckWin32Version(6, 2)) os.RegisterTouchWindow(window, kTouchFlags);
}

void TTabbarParentForm::WndMethod(TWndMessage& message) { ParentWindowProc(message); }

void TTabbarParentForm::ParentWindowProc(TWndMessage& message) {
  if (message.Msg == win::WM_WINDOWPOSCHANGED) {
    if (const auto* pos = reinterpret_cast<const WindowPos*>(message.lParam)) {
      if (pos->flags & win::SWP_SHOWWINDOW)
        SetWindowVisible(true);
      else if (pos->flags & win::SWP_HIDEWINDOW)
        SetWindowVisible(false);
    }
  } else if (message.Msg == win::WM_CAPTURECHANGED) {
    // Another window took the mouse mid-gesture: no release will come to the strip.
    const bool lost = reinterpret_cast<HWnd>(message.lParam) != FormHandle() &&
                      (Platform().GetKeyState(win::VK_LBUTTON) & 0x8000) != 0;
    DefaultHandler(message);
    if (lost) FrameCaptureLost();
    return;
  } else if (message.Msg == win::WM_TOUCH) {
    // The system posts touch, so a hook on sent messages never sees it; the window's own
    // procedure does, before the toolkit's pan closes the input handle.
    ProcessTouchMessage(static_cast<std::uint32_t>(message.wParam & 0xFFFF),
                        reinterpret_cast<HTouchInput>(message.lParam));
  } else if (message.Msg == win::WM_NCHITTEST) {
    TPoint point{LowWord(message.lParam), HighWord(message.lParam)};
    Platform().ScreenToClient(FormHandle(), &point);
    if (IsHitTestTranparent(static_cast<float>(point.X), static_cast<float>(point.Y))) {
      message.Result = win::HTTRANSPARENT;
      return;
    }
  }
  DefaultHandler(message);
}

bool TTabbarParentForm::IsSelfWindow(HWnd handle) const {
  const HWnd window = FormHandle();
  if (!handle || !window) return false;
  return handle == window || Platform().IsChild(window, handle);
}

bool TTabbarParentForm::IsHitTestTranparent(float x, float y) {
  if (!ShowingTabgroupBar()) return FrameHitTestTransparent(x, y);
  if (EditingGroupTitle()) return false;
  TControl* hit = nullptr;
  for (TControl* child : GroupButtonLayout_->Controls())
    if (TControl* found = child->ObjectAtPoint({x, y})) hit = found;
  if (!hit) return true;
  for (TControl* c = hit; c; c = c->ParentControl())
    if (c == TabGroupbarExitButtonBackLayout_) return hit != btnExitCabinet_;
  return false;
}

void TTabbarParentForm::ProcessTouchMessage(std::uint32_t count, HTouchInput handle) {
  if (count == 0) return;
  std::vector<TouchInput> inputs(count);
  IPlatform& os = Platform();
  if (!os.GetTouchInputInfo(handle, count, inputs.data(), static_cast<std::int32_t>(sizeof(TouchInput))))
    return;
  const TouchInput& first = inputs.front();
  if (!(first.dwFlags & win::TOUCHEVENTF_PRIMARY)) return;
  const float x = static_cast<float>(first.x) / 100, y = static_cast<float>(first.y) / 100;
  if (first.dwFlags & win::TOUCHEVENTF_DOWN)
    FrameTouch(TTouchKind::Down, x, y);
  else if (first.dwFlags & win::TOUCHEVENTF_UP)
    FrameTouch(TTouchKind::Up, x, y);
  else if (first.dwFlags & win::TOUCHEVENTF_MOVE)
    FrameTouch(TTouchKind::Move, x, y);
}

}  // namespace qx
