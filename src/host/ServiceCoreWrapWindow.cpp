// Windows, widgets and rectangles of the host's main window.

#include "host/HostKeys.h"
#include "host/ServiceCoreWrap.h"
#include "platform/Platform.h"

namespace qx {
namespace {

HWnd AsHWnd(WindowHandle handle) { return reinterpret_cast<HWnd>(handle); }

bool ParseRect(std::u16string_view text, TRect& rect) {
  std::int32_t values[4] = {};
  std::size_t pos = 0;
  for (int i = 0; i < 4; ++i) {
    const std::size_t comma = text.find(u',', pos);
    if (i < 3 && comma == std::u16string_view::npos) return false;
    const auto part = Trim(text.substr(pos, comma == std::u16string_view::npos ? text.npos : comma - pos));
    const auto number = TryStrToInt(part);
    if (!number) return false;
    values[i] = static_cast<std::int32_t>(*number);
    pos = comma + 1;
  }
  rect = TRect{values[0], values[1], values[2], values[3]};
  return true;
}

TString Attribute(IQxIXmlElement* element, std::u16string_view name) {
  ComPtr<IQxIString> value;
  const TString n(name);
  if (!element || Failed(element->GetAttribute(n.c_str(), value.put(), u""))) return {};
  return StringText(value.get());
}

// Depth first, children in order; the first element whose id matches.
ComPtr<IQxIXmlElement> FindElementById(IQxIXmlElement* element, std::u16string_view id, int depth = 0) {
  if (!element || depth > 256) return nullptr;
  if (Attribute(element, u"id") == id) return ComPtr<IQxIXmlElement>(element);
  std::int32_t count = 0;
  if (Failed(element->GetChildCount(&count))) return nullptr;
  for (std::int32_t i = 0; i < count; ++i) {
    ComPtr<IQxIXmlElement> child;
    if (Failed(element->GetChild(i, child.put()))) continue;
    if (auto found = FindElementById(child.get(), id, depth + 1)) return found;
  }
  return nullptr;
}

TString FindIdByAttribute(IQxIXmlElement* element, std::u16string_view name, std::u16string_view value,
                          int depth = 0) {
  if (!element || depth > 256) return {};
  if (SameText(Attribute(element, name), value)) return Attribute(element, u"id");
  std::int32_t count = 0;
  if (Failed(element->GetChildCount(&count))) return {};
  for (std::int32_t i = 0; i < count; ++i) {
    ComPtr<IQxIXmlElement> child;
    if (Failed(element->GetChild(i, child.put()))) continue;
    TString id = FindIdByAttribute(child.get(), name, value, depth + 1);
    if (!id.empty()) return id;
  }
  return {};
}

}  // namespace

void TServiceCoreWrapImplBase::WidgetById(std::u16string_view id, ComPtr<IUnknown>& out) {
  out = nullptr;
  ComPtr<IQxIWidgetService> widgets;
  WidgetService(widgets);
  const TString i(id);
  if (widgets && !i.empty()) widgets->GetWidget(i.c_str(), out.put());
}

void TServiceCoreWrapImplBase::WidgetControlById(std::u16string_view id, ComPtr<IQxIWidgetControl>& out) {
  ComPtr<IUnknown> widget;
  WidgetById(id, widget);
  out = widget.As<IQxIWidgetControl>();
}

void TServiceCoreWrapImplBase::WidgetObjectById(std::u16string_view id, ComPtr<IUnknown>& out) {
  out = nullptr;
  ComPtr<IQxIWidgetControl> control;
  WidgetControlById(id, control);
  if (control) control->GetOwner(out.put());
}

void TServiceCoreWrapImplBase::WidgetElementById(std::u16string_view id, ComPtr<IQxIXmlElement>& out) {
  out = nullptr;
  ComPtr<IUnknown> owner;
  WidgetObjectById(id, owner);
  ComPtr<IQxIWidgetOwner> element = owner.As<IQxIWidgetOwner>();
  if (element) element->GetElement(out.put());
}

ComPtr<IQxIXmlElement> TServiceCoreWrapImplBase::MainWindowElement() {
  ComPtr<IQxIXmlElement> element;
  WidgetElementById(widget_name::MainWindow, element);
  return element;
}

bool TServiceCoreWrapImplBase::GetXmlAttribute(IQxIXmlElement* element, std::u16string_view name, TString& value) {
  ComPtr<IQxIString> text;
  const TString n(name);
  if (!element || Failed(element->GetAttribute(n.c_str(), text.put(), u""))) return false;
  value = StringText(text.get());
  return true;
}

bool TServiceCoreWrapImplBase::WidgetRectByName(std::u16string_view name, TRect& rect) {
  rect = TRect{};
  ComPtr<IQxIXmlElement> named = FindElementById(MainWindowElement().get(), name);
  if (!named) return false;
  TRect found;
  if (!ParseRect(Attribute(named.get(), u"rect"), found)) return false;
  const HWnd main = AsHWnd(MainWindowHandle());
  TPoint topLeft{found.Left, found.Top}, bottomRight{found.Right, found.Bottom};
  Platform().ClientToScreen(main, &topLeft);
  Platform().ClientToScreen(main, &bottomRight);
  rect = TRect{topLeft.X, topLeft.Y, bottomRight.X, bottomRight.Y};
  return true;
}

TString TServiceCoreWrapImplBase::FindWidgetIdByAttribute(std::u16string_view name, std::u16string_view value) {
  return FindIdByAttribute(MainWindowElement().get(), name, value);
}

bool TServiceCoreWrapImplBase::IsMainWindowFullscreen() {
  const HWnd main = AsHWnd(MainWindowHandle());
  const auto style = static_cast<std::uint32_t>(Platform().GetWindowLongW(main, win::GWL_STYLE));
  return (style & 0xC00000u) == 0;
}

TRect TServiceCoreWrapImplBase::MainWindowRect() {
  TRect r{};
  if (!Platform().GetWindowRect(AsHWnd(MainWindowHandle()), &r)) return TRect{};
  return TRect{r.Left, r.Top, r.Right, r.Bottom};
}

TRect TServiceCoreWrapImplBase::FullScreenMainWindowRect() {
  TRect rect = MainWindowRect();
  if (IsFullScreenToolbarPinned()) rect.Top += 43;
  return rect;
}

TRect TServiceCoreWrapImplBase::BrowserAreaRect() {
  if (!IsMainWindowFullscreen()) {
    TRect rect;
    WidgetRectByName(widget_name::BrowserAreaWidget, rect);
    return rect;
  }
  return FullScreenMainWindowRect();
}

TRect TServiceCoreWrapImplBase::BrowserAreaInnerRect() {
  if (!IsMainWindowFullscreen()) {
    TRect rect;
    WidgetRectByName(widget_name::BrowserAreaWidget, rect);
    return rect;
  }
  TRect rect = FullScreenMainWindowRect();
  if (IsFullScreenToolbarPinned()) rect.Bottom -= 64;
  return rect;
}

TRect TServiceCoreWrapImplBase::BrowserAreaRectBelowToolbar() {
  if (!IsMainWindowFullscreen()) {
    TRect rect;
    WidgetRectByName(widget_name::BrowserAreaWidget, rect);
    return rect;
  }
  TRect rect = MainWindowRect();
  if (HWnd toolbar = Platform().FindWindowW(u"FullscreenToolbar", u"XmlWidgetWindow")) {
    TRect bar{};
    if (Platform().GetWindowRect(toolbar, &bar)) rect.Top += bar.Bottom;
  }
  return rect;
}

}  // namespace qx
