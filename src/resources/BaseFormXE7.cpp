#include "resources/BaseFormXE7.h"

#include <array>
#include <mutex>
#include <utility>

#include "base/Text.h"

namespace qx {

// ---- method-bound window procedures

namespace {

constexpr std::size_t kInstanceCount = 64;

struct TInstanceSlots {
  std::mutex Lock;
  std::array<TWndMethod, kInstanceCount> Methods;
  std::array<bool, kInstanceCount> Used{};
};

TInstanceSlots& Slots() {
  static TInstanceSlots slots;
  return slots;
}

template <std::size_t N>
LResult QX_STDCALL InstanceProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  TWndMethod method;
  {
    std::lock_guard guard(Slots().Lock);
    method = Slots().Methods[N];
  }
  if (!method) return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
  TWndMessage message{msg, wParam, lParam, 0};
  method(message);
  return message.Result;
}

template <std::size_t... N>
constexpr std::array<WndProc, kInstanceCount> MakeProcs(std::index_sequence<N...>) {
  return {&InstanceProc<N>...};
}

constexpr std::array<WndProc, kInstanceCount> kProcs = MakeProcs(std::make_index_sequence<kInstanceCount>{});

TBaseFormXE7::TFormHandleResolver& Resolver() {
  static TBaseFormXE7::TFormHandleResolver resolver;
  return resolver;
}

}  // namespace

WndProc MakeObjectInstance(TWndMethod method) {
  if (!method) return nullptr;
  TInstanceSlots& slots = Slots();
  std::lock_guard guard(slots.Lock);
  for (std::size_t i = 0; i < kInstanceCount; ++i)
    if (!slots.Used[i]) {
      slots.Used[i] = true;
      slots.Methods[i] = std::move(method);
      return kProcs[i];
    }
  return nullptr;
}

void FreeObjectInstance(WndProc instance) {
  TInstanceSlots& slots = Slots();
  std::lock_guard guard(slots.Lock);
  for (std::size_t i = 0; i < kInstanceCount; ++i)
    if (kProcs[i] == instance) {
      slots.Used[i] = false;
      slots.Methods[i] = nullptr;
    }
}

std::size_t FreeObjectInstanceCount() {
  TInstanceSlots& slots = Slots();
  std::lock_guard guard(slots.Lock);
  std::size_t n = 0;
  for (bool used : slots.Used) n += used ? 0 : 1;
  return n;
}

// ---- the form base

TBaseFormXE7::~TBaseFormXE7() { RestoreWindowProc(); }

void TBaseFormXE7::SetFormHandleResolver(TFormHandleResolver resolver) { Resolver() = std::move(resolver); }

HWnd TBaseFormXE7::FormHandle() const {
  if (Resolver())
    if (HWnd hwnd = Resolver()(this)) return hwnd;
  return Handle();
}

void TBaseFormXE7::HandleDestroying() {
  RestoreWindowProc();
  TForm::HandleDestroying();
}

void TBaseFormXE7::SetBounds(int left, int top, int width, int height) {
  if (left == Left() && top == Top() && width == Width() && height == Height()) return;
  bool sized = width != Width() || height != Height();
  SetBoundsFields(left, top, width, height);
  // Only a window whose bounds differ is told.
  if (HWnd hwnd = FormHandle()) {
    IPlatform& os = Platform();
    TRect rect;
    if (os.GetWindowRect(hwnd, &rect)) {
      if (HWnd parent = os.GetParent(hwnd)) {
        TPoint topLeft{rect.Left, rect.Top}, bottomRight{rect.Right, rect.Bottom};
        os.ScreenToClient(parent, &topLeft);
        os.ScreenToClient(parent, &bottomRight);
        rect = {topLeft.X, topLeft.Y, bottomRight.X, bottomRight.Y};
      }
      if (!(rect == TRect{Left(), Top(), Left() + Width(), Top() + Height()}))
        os.SetWindowPos(hwnd, nullptr, Left(), Top(), Width(), Height(),
                        win::SWP_NOZORDER | win::SWP_NOACTIVATE);
    }
  }
  if (sized) {
    Realign();
    Resize();
    Invalidate();
  }
}

void TBaseFormXE7::SubclassWindow(HWnd hwnd) {
  if (!hwnd || FSubclassed) return;
  FObjectInstance = MakeObjectInstance([this](TWndMessage& message) { WndMethod(message); });
  if (!FObjectInstance) throw EToolkitError("No window procedure instance left for " + ClassName());
  FSubclassed = hwnd;
  FOldInstance = reinterpret_cast<WndProc>(
      Platform().SetWindowLongPtrW(hwnd, win::GWL_WNDPROC, reinterpret_cast<LongPtr>(FObjectInstance)));
}

void TBaseFormXE7::RestoreWindowProc() {
  if (!FSubclassed) return;
  if (Platform().IsWindow(FSubclassed))
    Platform().SetWindowLongPtrW(FSubclassed, win::GWL_WNDPROC, reinterpret_cast<LongPtr>(FOldInstance));
  FreeObjectInstance(FObjectInstance);
  FObjectInstance = nullptr;
  FOldInstance = nullptr;
  FSubclassed = nullptr;
}

void TBaseFormXE7::WndMethod(TWndMessage& message) { DefaultHandler(message); }

void TBaseFormXE7::DefaultHandler(TWndMessage& message) {
  IPlatform& os = Platform();
  message.Result = FOldInstance ? os.CallWindowProcW(FOldInstance, FSubclassed, message.Msg, message.wParam,
                                                     message.lParam)
                                : os.DefWindowProcW(FSubclassed, message.Msg, message.wParam, message.lParam);
}

void EmbedPopupForm(TBaseFormXE7& form, HWnd parent, int left, int top, int width, int height) {
  form.HandleNeed();
  form.SetBounds(form.Left(), form.Top(), width, height);
  HWnd hwnd = form.FormHandle();
  IPlatform& os = Platform();
  if (hwnd && os.GetParent(hwnd) != parent) os.SetParent(hwnd, parent);
  form.SetBounds(left, top, form.Width(), form.Height());
  if (hwnd) os.ShowWindow(hwnd, win::SW_SHOWNA);
  form.SetVisible(true);
}

HWnd EmbedChildForm(TBaseFormXE7& form, HWnd parent) {
  IPlatform& os = Platform();
  if (!os.IsWindow(parent)) return nullptr;
  form.HandleNeed();
  HWnd hwnd = form.FormHandle();
  if (!hwnd) return nullptr;
  auto style = static_cast<std::uint32_t>(os.GetWindowLongW(hwnd, win::GWL_STYLE));
  style = (style | win::WS_CHILD) & ~win::WS_POPUP;
  os.SetWindowLongW(hwnd, win::GWL_STYLE, static_cast<std::int32_t>(style));
  os.SetParent(hwnd, parent);
  return hwnd;
}

// ---- window search

namespace {

std::int32_t QX_STDCALL EnumWindowByClass(HWnd hwnd, LParam lParam) {
  auto* obj = reinterpret_cast<TEnumWindowObj*>(lParam);
  IPlatform& os = Platform();
  std::uint32_t processId = 0;
  os.GetWindowThreadProcessId(hwnd, &processId);
  if (processId != os.GetCurrentProcessId()) return 1;
  char16_t name[256] = {};
  std::int32_t length = os.GetClassNameW(hwnd, name, 256);
  if (length > 0 && SameText(std::u16string_view(name, static_cast<std::size_t>(length)), obj->FClassName)) {
    obj->FHandle = hwnd;
    return 0;
  }
  return 1;
}

}  // namespace

HWnd FindProcessWindowByClassName(std::u16string_view className) {
  TEnumWindowObj obj;
  obj.FClassName = std::u16string(className);
  Platform().EnumWindows(&EnumWindowByClass, reinterpret_cast<LParam>(&obj));
  return obj.FHandle;
}

}  // namespace qx
