#include "fakehost/FakeXmlElement.h"

#include "base/Text.h"
#include "fakehost/FakeCom.h"
#include "fakehost/FakeString.h"

namespace qx {

TFakeXmlElement::~TFakeXmlElement() {
  // Frees a deep tree level by level, not by recursion.
  std::vector<ComPtr<TFakeXmlElement>> pending = std::move(children_);
  while (!pending.empty()) {
    auto child = std::move(pending.back());
    pending.pop_back();
    if (child->RefCount() == 1) {
      for (auto& grandchild : child->children_) pending.push_back(std::move(grandchild));
      child->children_.clear();
    }
  }
}

std::optional<std::u16string> TFakeXmlElement::Attribute(std::u16string_view name) const {
  for (const auto& [key, value] : attributes_)
    if (key == name) return value;
  return std::nullopt;
}

void TFakeXmlElement::SetAttribute(std::u16string_view name, std::u16string_view value) {
  for (auto& entry : attributes_) {
    if (entry.first == name) {
      entry.second = value;
      return;
    }
  }
  attributes_.emplace_back(std::u16string(name), std::u16string(value));
}

ComPtr<TFakeXmlElement> TFakeXmlElement::AddChild(std::u16string name) {
  auto child = MakeCom<TFakeXmlElement>(std::move(name));
  children_.push_back(child);
  return child;
}

ComPtr<TFakeXmlElement> TFakeXmlElement::FindById(std::u16string_view id) {
  const auto own = Attribute(u"id");
  if (own && SameText(*own, id)) return ComPtr<TFakeXmlElement>(this);
  for (const auto& child : children_)
    if (auto found = child->FindById(id)) return found;
  return nullptr;
}

HResult QX_STDCALL TFakeXmlElement::GetAttribute(Text name, IQxIString** value, Text fallback) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  if (!name) return kInvalidArg;
  const auto found = Attribute(name);
  *value = MakeFakeString(found ? *found : TextOf(fallback)).detach();
  return kOk;
}

HResult QX_STDCALL TFakeXmlElement::GetChild(std::int32_t index, IQxIXmlElement** child) {
  if (!child) return kInvalidArg;
  *child = nullptr;
  if (index < 0 || static_cast<std::size_t>(index) >= children_.size()) return kInvalidArg;
  return HandOut(children_[static_cast<std::size_t>(index)], child);
}

HResult QX_STDCALL TFakeXmlElement::GetChildCount(std::int32_t* count) {
  if (!count) return kInvalidArg;
  *count = static_cast<std::int32_t>(children_.size());
  return kOk;
}

}  // namespace qx
