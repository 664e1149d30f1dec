#pragma once

#include <string>

#include "base/ComObject.h"
#include "fakehost/FakeXmlElement.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// A widget's owner: hands out the widget's element.
class TFakeWidgetOwner : public TInterfacedObject<IQxIWidgetOwner> {
 public:
  explicit TFakeWidgetOwner(ComPtr<TFakeXmlElement> element) : element_(std::move(element)) {}
  HResult QX_STDCALL GetElement(IQxIXmlElement** element) override;

 private:
  ComPtr<TFakeXmlElement> element_;
};

class TFakeWidgetControl : public TInterfacedObject<IQxIWidgetControl> {
 public:
  explicit TFakeWidgetControl(ComPtr<TFakeXmlElement> element) : element_(std::move(element)) {}
  HResult QX_STDCALL GetOwner(IUnknown** owner) override;

 private:
  ComPtr<TFakeXmlElement> element_;
};

// The host's widget tree. Every element with an "id" is a widget; its "rect" value is
// "left,top,right,bottom" in client coordinates of the main window. The default tree:
//   <window id="MainWindow" rect="0,0,1280,800">
//     <widget id="TitleMenuWidget" rect="0,0,1280,32"/>
//     <widget id="TabBarWidget" rect="0,32,1280,85"/>
//     <widget id="BrowserAreaWidget" rect="0,85,1280,800"/>
//   </window>
class TFakeWidgetService : public TInterfacedObject<IQxIWidgetService> {
 public:
  TFakeWidgetService();

  HResult QX_STDCALL GetWidget(Text id, IUnknown** widget) override;

  TFakeXmlElement& Root() { return *root_.get(); }
  void SetRoot(ComPtr<TFakeXmlElement> root) { root_ = std::move(root); }
  // Sets "rect" of a widget, adding it under the main window when missing.
  void SetWidgetRect(std::u16string_view id, int left, int top, int right, int bottom);
  // Marks a widget as built, with its class name as "aclass"; adds it when missing.
  void SetWidgetClass(std::u16string_view id, std::u16string_view className);

 private:
  // The widget of that id, added under the main window when missing.
  ComPtr<TFakeXmlElement> Widget(std::u16string_view id);

  ComPtr<TFakeXmlElement> root_;
};

}  // namespace qx
