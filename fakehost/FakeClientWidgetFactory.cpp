#include "fakehost/FakeClientWidgetFactory.h"

#include <array>

#include "base/Text.h"
#include "fakehost/FakeCom.h"
#include "fakehost/FakeString.h"

namespace qx {

namespace {

ComPtr<TFakeXmlElement> FindByAttribute(const ComPtr<TFakeXmlElement>& element, std::u16string_view attribute,
                                        std::u16string_view value) {
  if (auto found = element->Attribute(attribute); found && SameText(*found, value)) return element;
  for (const auto& child : element->Children())
    if (auto found = FindByAttribute(child, attribute, value)) return found;
  return nullptr;
}

}  // namespace

HResult QX_STDCALL TFakeClientWidget::GetClassName(IQxIString** name) {
  return HandOut(MakeFakeString(element_->Attribute(u"aclass").value_or(u"")), name);
}

HResult QX_STDCALL TFakeClientWidget::GetRect(std::int32_t* left, std::int32_t* top, std::int32_t* right,
                                              std::int32_t* bottom) {
  if (!left || !top || !right || !bottom) return kInvalidArg;
  std::array<std::int32_t, 4> values{};
  const std::u16string rect = element_->Attribute(u"rect").value_or(u"");
  std::size_t start = 0;
  for (std::int32_t& value : values) {
    const std::size_t comma = rect.find(u',', start);
    value = static_cast<std::int32_t>(StrToIntDef(std::u16string_view(rect).substr(start, comma - start), 0));
    start = comma == std::u16string::npos ? rect.size() : comma + 1;
  }
  *left = values[0];
  *top = values[1];
  *right = values[2];
  *bottom = values[3];
  return kOk;
}

HResult QX_STDCALL TFakeClientWidgetFactory::FindWidget(Text value, Text attribute, std::int32_t /*flags*/,
                                                        IQxIClientWidget** widget) {
  if (!widget) return kInvalidArg;
  *widget = nullptr;
  if (!value || !attribute) return kInvalidArg;
  auto element = FindByAttribute(ComPtr<TFakeXmlElement>(&widgets_->Root()), attribute, value);
  if (!element) return kFalse;
  return HandOut(ComPtr<TFakeClientWidget>(MakeCom<TFakeClientWidget>(element)), widget);
}

}  // namespace qx
