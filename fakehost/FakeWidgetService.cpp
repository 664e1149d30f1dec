#include "fakehost/FakeWidgetService.h"

#include "base/Text.h"
#include "fakehost/FakeCom.h"
#include "host/HostKeys.h"

namespace qx {

HResult QX_STDCALL TFakeWidgetOwner::GetElement(IQxIXmlElement** element) { return HandOut(element_, element); }

HResult QX_STDCALL TFakeWidgetControl::GetOwner(IUnknown** owner) {
  return HandOutUnknown(MakeCom<TFakeWidgetOwner>(element_), owner);
}

TFakeWidgetService::TFakeWidgetService() : root_(MakeCom<TFakeXmlElement>(u"window")) {
  root_->SetAttribute(u"id", widget_name::MainWindow);
  root_->SetAttribute(u"rect", u"0,0,1280,800");
  SetWidgetRect(widget_name::TitleMenuWidget, 0, 0, 1280, 32);
  SetWidgetRect(u"TabBarWidget", 0, 32, 1280, 85);
  SetWidgetRect(widget_name::BrowserAreaWidget, 0, 85, 1280, 800);
}

ComPtr<TFakeXmlElement> TFakeWidgetService::Widget(std::u16string_view id) {
  auto element = root_->FindById(id);
  if (!element) {
    element = root_->AddChild(u"widget");
    element->SetAttribute(u"id", id);
  }
  return element;
}

void TFakeWidgetService::SetWidgetClass(std::u16string_view id, std::u16string_view className) {
  Widget(id)->SetAttribute(u"aclass", className);
}

void TFakeWidgetService::SetWidgetRect(std::u16string_view id, int left, int top, int right, int bottom) {
  auto element = Widget(id);
  element->SetAttribute(
      u"rect", IntToStr(left) + u"," + IntToStr(top) + u"," + IntToStr(right) + u"," + IntToStr(bottom));
}

HResult QX_STDCALL TFakeWidgetService::GetWidget(Text id, IUnknown** widget) {
  if (!widget) return kInvalidArg;
  *widget = nullptr;
  if (!id || !root_) return kInvalidArg;
  auto element = root_->FindById(id);
  if (!element) return kFail;
  return HandOutUnknown(MakeCom<TFakeWidgetControl>(element), widget);
}

}  // namespace qx
