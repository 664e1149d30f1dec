#pragma once

#include "base/ComObject.h"
#include "fakehost/FakeWidgetService.h"
#include "fakehost/FakeXmlElement.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// One element of the widget tree as a built widget: its class is its "aclass", its
// rectangle its "rect".
class TFakeClientWidget : public TInterfacedObject<IQxIClientWidget> {
 public:
  explicit TFakeClientWidget(ComPtr<TFakeXmlElement> element) : element_(std::move(element)) {}
  HResult QX_STDCALL GetClassName(IQxIString** name) override;
  HResult QX_STDCALL GetRect(std::int32_t* left, std::int32_t* top, std::int32_t* right,
                             std::int32_t* bottom) override;

 private:
  ComPtr<TFakeXmlElement> element_;
};

// Finds built widgets in the widget service's tree by the value of an attribute.
class TFakeClientWidgetFactory : public TInterfacedObject<IQxIClientWidgetFactory> {
 public:
  explicit TFakeClientWidgetFactory(ComPtr<TFakeWidgetService> widgets) : widgets_(std::move(widgets)) {}
  HResult QX_STDCALL FindWidget(Text value, Text attribute, std::int32_t flags,
                                IQxIClientWidget** widget) override;

 private:
  ComPtr<TFakeWidgetService> widgets_;
};

}  // namespace qx
