#include "fakehost/FakeHostWindows.h"

#include "fakehost/FakeWindowService.h"

namespace qx {
namespace {

constexpr const char16_t* kMainClass = u"QxFakeHostMainWindow";
constexpr std::uint32_t kFrame = win::WS_CAPTION | win::WS_THICKFRAME | win::WS_SYSMENU;

HWnd MakeWindow(const char16_t* className, const char16_t* title, std::uint32_t style, const TRect& rect) {
  auto& platform = Platform();
  if (!platform.GetClassInfoW(className, nullptr)) platform.RegisterClassW(className, platform.DefWindowProcAddress());
  return platform.CreateWindowExW(0, className, title, style, rect.Left, rect.Top, rect.Right - rect.Left,
                                  rect.Bottom - rect.Top, nullptr, nullptr);
}

}  // namespace

TFakeHostWindows::~TFakeHostWindows() {
  HideFullscreenToolbar();
  if (main_ && Platform().IsWindow(main_)) Platform().DestroyWindow(main_);
}

HWnd TFakeHostWindows::CreateMainWindow(const TRect& rect) {
  if (main_ && Platform().IsWindow(main_)) return main_;
  main_ = MakeWindow(kMainClass, u"Quillmar", win::WS_OVERLAPPED | kFrame | win::WS_VISIBLE, rect);
  windows_.MainWindow().SetHandleValue(reinterpret_cast<std::uintptr_t>(main_));
  return main_;
}

void TFakeHostWindows::SetFullscreen(bool on) {
  if (!main_) return;
  auto& platform = Platform();
  auto style = static_cast<std::uint32_t>(platform.GetWindowLongW(main_, win::GWL_STYLE));
  style = on ? (style & ~kFrame) : (style | kFrame);
  platform.SetWindowLongW(main_, win::GWL_STYLE, static_cast<std::int32_t>(style));
}

HWnd TFakeHostWindows::ShowFullscreenToolbar(const TRect& rect) {
  HideFullscreenToolbar();
  toolbar_ = MakeWindow(u"FullscreenToolbar", u"XmlWidgetWindow", win::WS_POPUP | win::WS_VISIBLE, rect);
  return toolbar_;
}

void TFakeHostWindows::HideFullscreenToolbar() {
  if (toolbar_ && Platform().IsWindow(toolbar_)) Platform().DestroyWindow(toolbar_);
  toolbar_ = nullptr;
}

}  // namespace qx
