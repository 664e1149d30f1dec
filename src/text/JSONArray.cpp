#include <algorithm>

#include "text/JSONTree.h"
#include "text/JSONValueImpl.h"

namespace qx {

TJSONArrayImpl::~TJSONArrayImpl() {
  json_detail::TJSONBurial burial;
  for (auto& item : FList) burial.Add(std::move(item));
}

IJSONValue* TJSONArrayImpl::ItemAt(std::int32_t Index) const {
  return InRange(Index) ? FList[static_cast<std::size_t>(Index)].get() : nullptr;
}

void TJSONArrayImpl::SetItem(std::int32_t Index, const ComPtr<IJSONValue>& Value) {
  if (InRange(Index)) FList[static_cast<std::size_t>(Index)] = Value;
}

std::int32_t TJSONArrayImpl::Add(const ComPtr<IJSONValue>& Value) {
  FList.push_back(Value);
  return static_cast<std::int32_t>(FList.size() - 1);
}

void TJSONArrayImpl::Insert(std::int32_t Index, const ComPtr<IJSONValue>& Value) {
  if (Index < 0 || static_cast<std::size_t>(Index) > FList.size()) return;
  FList.insert(FList.begin() + Index, Value);
}

std::int32_t TJSONArrayImpl::IndexOf(const ComPtr<IJSONValue>& Value) {
  for (std::size_t i = 0; i < FList.size(); ++i) {
    if (SameInterface(FList[i].get(), Value.get())) return static_cast<std::int32_t>(i);
  }
  return -1;
}

std::int32_t TJSONArrayImpl::Remove(const ComPtr<IJSONValue>& Value) {
  const std::int32_t i = IndexOf(Value);
  if (i >= 0) Delete(i);
  return i;
}

void TJSONArrayImpl::Delete(std::int32_t Index) {
  if (!InRange(Index)) return;
  const ComPtr<IJSONValue> dropped = std::move(FList[static_cast<std::size_t>(Index)]);
  FList.erase(FList.begin() + Index);
}

ComPtr<IJSONValue> TJSONArrayImpl::Extract(const ComPtr<IJSONValue>& Value) {
  const std::int32_t i = IndexOf(Value);
  if (i < 0) return nullptr;
  ComPtr<IJSONValue> item = std::move(FList[static_cast<std::size_t>(i)]);
  FList.erase(FList.begin() + i);
  return item;
}

void TJSONArrayImpl::Sort(const TJSONValueComparison& comparison) {
  if (!comparison) return;
  std::stable_sort(FList.begin(), FList.end(),
                   [&comparison](const ComPtr<IJSONValue>& a, const ComPtr<IJSONValue>& b) {
                     return comparison(a.get(), b.get()) < 0;
                   });
}

ComPtr<IJSONArray> TJSONArrayImpl::GetArray(std::int32_t Index) {
  IJSONValue* v = ItemAt(Index);
  return v ? v->AsArray() : nullptr;
}

bool TJSONArrayImpl::GetBool(std::int32_t Index) {
  IJSONValue* v = ItemAt(Index);
  return v ? v->GetBoolValue() : false;
}

long double TJSONArrayImpl::GetFloat(std::int32_t Index) {
  IJSONValue* v = ItemAt(Index);
  return v ? v->GetFloatValue() : 0;
}

std::int64_t TJSONArrayImpl::GetInt(std::int32_t Index) {
  IJSONValue* v = ItemAt(Index);
  return v ? v->GetIntValue() : 0;
}

ComPtr<IJSONObject> TJSONArrayImpl::GetObject(std::int32_t Index) {
  IJSONValue* v = ItemAt(Index);
  return v ? v->AsObject() : nullptr;
}

std::u16string TJSONArrayImpl::GetString(std::int32_t Index) {
  IJSONValue* v = ItemAt(Index);
  return v ? v->GetStringValue() : std::u16string();
}

void TJSONArrayImpl::SetBool(std::int32_t Index, bool Value) {
  if (!InRange(Index)) return;
  if (IJSONValue* v = ItemAt(Index)) {
    if (const ComPtr<IJSONBool> b = v->AsBool()) return b->SetValue(Value);
  }
  SetItem(Index, MakeCom<TJSONBoolImpl>(Value));
}

void TJSONArrayImpl::SetInt(std::int32_t Index, std::int64_t Value) {
  if (!InRange(Index)) return;
  if (IJSONValue* v = ItemAt(Index)) {
    if (const ComPtr<IJSONNumber> n = v->AsNumber()) return n->SetIntValue(Value);
  }
  SetItem(Index, MakeCom<TJSONNumberImpl>(Value));
}

void TJSONArrayImpl::SetString(std::int32_t Index, std::u16string_view Value) {
  if (!InRange(Index)) return;
  if (IJSONValue* v = ItemAt(Index)) {
    if (const ComPtr<IJSONString> s = v->AsString()) return s->SetValue(Value);
  }
  SetItem(Index, MakeCom<TJSONStringImpl>(std::u16string(Value)));
}

void TJSONArrayImpl::SetFloat(std::int32_t Index, long double Value) {
  if (!InRange(Index)) return;
  if (IJSONValue* v = ItemAt(Index)) {
    if (const ComPtr<IJSONNumber> n = v->AsNumber()) return n->SetFloatValue(Value);
  }
  SetItem(Index, MakeCom<TJSONNumberImpl>(Value));
}

void TJSONArrayImpl::BuildJSONText(const TJSONCreateTextOption& option, TJSONTextBuilder& builder,
                                   bool InArray) {
  json_detail::BuildContainer(nullptr, this, option, builder, InArray);
}

void TJSONArrayImpl::WalkValues(IJSONValueVisitor& visitor) {
  json_detail::WalkContainer(nullptr, this, visitor);
}

}  // namespace qx
