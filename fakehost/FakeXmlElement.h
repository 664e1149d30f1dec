#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// One element of a host XML tree: a name, attributes in document order, child
// elements and the text directly inside it.
class TFakeXmlElement : public TInterfacedObject<IQxIXmlElement> {
 public:
  explicit TFakeXmlElement(std::u16string name) : name_(std::move(name)) {}
  ~TFakeXmlElement() override;

  // A missing attribute gives the fallback text (empty for nil) with success.
  HResult QX_STDCALL GetAttribute(Text name, IQxIString** value, Text fallback) override;
  HResult QX_STDCALL GetChild(std::int32_t index, IQxIXmlElement** child) override;
  HResult QX_STDCALL GetChildCount(std::int32_t* count) override;

  const std::u16string& Name() const { return name_; }
  std::optional<std::u16string> Attribute(std::u16string_view name) const;
  void SetAttribute(std::u16string_view name, std::u16string_view value);
  ComPtr<TFakeXmlElement> AddChild(std::u16string name);
  void AddChild(const ComPtr<TFakeXmlElement>& child) { children_.push_back(child); }
  const std::vector<ComPtr<TFakeXmlElement>>& Children() const { return children_; }
  std::u16string& InnerText() { return text_; }
  // Depth first, this element included: the first whose "id" equals id without regard to case.
  ComPtr<TFakeXmlElement> FindById(std::u16string_view id);

 private:
  std::u16string name_;
  std::vector<std::pair<std::u16string, std::u16string>> attributes_;
  std::vector<ComPtr<TFakeXmlElement>> children_;
  std::u16string text_;
};

}  // namespace qx
