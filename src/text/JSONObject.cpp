#include <algorithm>
#include <numeric>

#include "text/JSONTree.h"
#include "text/JSONValueImpl.h"

namespace qx {
namespace {

// Objects up to this size are searched linearly; the index costs more than it saves.
constexpr std::int32_t kLinearLimit = 16;

// Sort key of one character: symbols, then digits, then letters without regard to case,
// then everything beyond ASCII.
int SortKey(char16_t c) {
  if (c >= u'a' && c <= u'z') return 300 + (c - u'a');
  if (c >= u'A' && c <= u'Z') return 300 + (c - u'A');
  if (c >= u'0' && c <= u'9') return 200 + (c - u'0');
  return c < 128 ? c : 400 + c;
}

}  // namespace

// Member names sort the way the platform's locale-aware string compare orders ASCII
// names: symbols before digits before letters, letters without regard to case first,
// and lower case before upper case on a tie.
int JSONAnsiCompareStr(std::u16string_view a, std::u16string_view b) {
  const std::size_t n = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < n; ++i) {
    const int ka = SortKey(a[i]), kb = SortKey(b[i]);
    if (ka != kb) return ka < kb ? -1 : 1;
  }
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  for (std::size_t i = 0; i < n; ++i) {
    if (a[i] != b[i]) return (a[i] >= u'a' && a[i] <= u'z') ? -1 : 1;
  }
  return 0;
}

// --- TJSONObjectNameValueList ---

std::int32_t TJSONObjectNameValueList::IndexOfName(std::u16string_view Name) const {
  for (std::size_t i = 0; i < FItems.size(); ++i) {
    if (FItems[i].Name == Name) return static_cast<std::int32_t>(i);
  }
  return -1;
}

bool TJSONObjectNameValueList::RemoveFromName(std::u16string_view Name) {
  const std::int32_t i = IndexOfName(Name);
  if (i < 0) return false;
  FItems.erase(FItems.begin() + i);
  return true;
}

void TJSONObjectNameValueList::AddNameValue(std::u16string_view Name, const ComPtr<IJSONValue>& Value) {
  FItems.push_back(TJSONObjectNameValue{std::u16string(Name), Value});
}

bool TJSONObjectNameValueList::TrySetValue(std::u16string_view Name, const ComPtr<IJSONValue>& Value) {
  const std::int32_t i = IndexOfName(Name);
  if (i < 0) return false;
  FItems[static_cast<std::size_t>(i)].Value = Value;
  return true;
}

// --- TJSONObjectDictionary ---

std::size_t TJSONObjectDictionary::HashOf(std::u16string_view Name) {
  // Seeded per process so that a hostile text cannot aim at one chain.
  static const std::uint64_t seed = 0xcbf29ce484222325ULL ^ reinterpret_cast<std::uintptr_t>(&seed);
  std::uint64_t h = seed;
  for (char16_t c : Name) {
    h ^= c;
    h *= 0x100000001b3ULL;
  }
  h ^= h >> 29;
  return static_cast<std::size_t>(h);
}

std::int32_t TJSONObjectDictionary::Find(std::u16string_view Name,
                                         const TJSONObjectNameValueList& Names) const {
  if (FSlots.empty()) {
    for (std::int32_t i = 0; i < Names.Count(); ++i) {
      if (Names[static_cast<std::size_t>(i)].Name == Name) return i;
    }
    return -1;
  }
  const std::size_t mask = FSlots.size() - 1;
  for (std::size_t s = HashOf(Name) & mask;; s = (s + 1) & mask) {
    const std::int32_t i = FSlots[s];
    if (i < 0) return -1;
    if (Names[static_cast<std::size_t>(i)].Name == Name) return i;
  }
}

void TJSONObjectDictionary::InsertIntoIndex(std::int32_t Index, const TJSONObjectNameValueList& Names) {
  const std::size_t mask = FSlots.size() - 1;
  std::size_t s = HashOf(Names[static_cast<std::size_t>(Index)].Name) & mask;
  while (FSlots[s] >= 0) s = (s + 1) & mask;
  FSlots[s] = Index;
}

void TJSONObjectDictionary::RebuildIndex(const TJSONObjectNameValueList& Names) {
  if (static_cast<std::int32_t>(FValues.size()) <= kLinearLimit) {
    FSlots.clear();
    return;
  }
  std::size_t size = 32;
  while (size < FValues.size() * 2) size *= 2;
  FSlots.assign(size, -1);
  for (std::size_t i = 0; i < FValues.size(); ++i) InsertIntoIndex(static_cast<std::int32_t>(i), Names);
}

void TJSONObjectDictionary::Add(ComPtr<IJSONValue> Value, const TJSONObjectNameValueList& Names) {
  FValues.push_back(std::move(Value));
  if (static_cast<std::int32_t>(FValues.size()) <= kLinearLimit) return;
  if (FSlots.size() < FValues.size() * 2) {
    RebuildIndex(Names);
  } else {
    InsertIntoIndex(static_cast<std::int32_t>(FValues.size() - 1), Names);
  }
}

void TJSONObjectDictionary::Delete(std::int32_t Index, const TJSONObjectNameValueList& Names) {
  FValues.erase(FValues.begin() + Index);
  RebuildIndex(Names);
}

void TJSONObjectDictionary::Reorder(const std::vector<std::int32_t>& Order,
                                    const TJSONObjectNameValueList& Names) {
  std::vector<ComPtr<IJSONValue>> values;
  values.reserve(FValues.size());
  for (std::int32_t old : Order) values.push_back(std::move(FValues[static_cast<std::size_t>(old)]));
  FValues = std::move(values);
  RebuildIndex(Names);
}

void TJSONObjectDictionary::Clear() {
  FValues.clear();
  FSlots.clear();
}

// --- TJSONObjectImpl ---

TJSONObjectImpl::~TJSONObjectImpl() {
  // Children go through the burial so that a deep tree is freed without deep recursion.
  json_detail::TJSONBurial burial;
  for (auto& item : FNames.Items()) burial.Add(std::move(item.Value));
  for (auto& value : FDictionary.Values()) burial.Add(std::move(value));
}

IJSONValue* TJSONObjectImpl::Lookup(std::u16string_view Name) const {
  const std::int32_t i = FDictionary.Find(Name, FNames);
  return i < 0 ? nullptr : FDictionary.At(static_cast<std::size_t>(i));
}

std::u16string TJSONObjectImpl::GetName(std::int32_t Index) {
  if (Index < 0 || Index >= FNames.Count()) return {};
  return FNames[static_cast<std::size_t>(Index)].Name;
}

ComPtr<IJSONValue> TJSONObjectImpl::GetValueAt(std::int32_t Index) {
  if (Index < 0 || Index >= FNames.Count()) return nullptr;
  return FNames[static_cast<std::size_t>(Index)].Value;
}

bool TJSONObjectImpl::GetBool(std::u16string_view Name) {
  IJSONValue* v = Lookup(Name);
  return v ? v->GetBoolValue() : false;
}

long double TJSONObjectImpl::GetFloat(std::u16string_view Name) {
  IJSONValue* v = Lookup(Name);
  return v ? v->GetFloatValue() : 0;
}

std::int64_t TJSONObjectImpl::GetInt(std::u16string_view Name) {
  IJSONValue* v = Lookup(Name);
  return v ? v->GetIntValue() : 0;
}

std::u16string TJSONObjectImpl::GetString(std::u16string_view Name) {
  IJSONValue* v = Lookup(Name);
  return v ? v->GetStringValue() : std::u16string();
}

ComPtr<IJSONObject> TJSONObjectImpl::GetObject(std::u16string_view Name) {
  IJSONValue* v = Lookup(Name);
  return v ? v->AsObject() : nullptr;
}

ComPtr<IJSONArray> TJSONObjectImpl::GetArray(std::u16string_view Name) {
  IJSONValue* v = Lookup(Name);
  return v ? v->AsArray() : nullptr;
}

void TJSONObjectImpl::SetInt(std::u16string_view Name, std::int64_t Value) {
  if (IJSONValue* v = Lookup(Name)) {
    if (const ComPtr<IJSONNumber> n = v->AsNumber()) return n->SetIntValue(Value);
  }
  SetValue(Name, MakeCom<TJSONNumberImpl>(Value));
}

void TJSONObjectImpl::SetBool(std::u16string_view Name, bool Value) {
  if (IJSONValue* v = Lookup(Name)) {
    if (const ComPtr<IJSONBool> b = v->AsBool()) return b->SetValue(Value);
  }
  SetValue(Name, MakeCom<TJSONBoolImpl>(Value));
}

void TJSONObjectImpl::SetString(std::u16string_view Name, std::u16string_view Value) {
  if (IJSONValue* v = Lookup(Name)) {
    if (const ComPtr<IJSONString> s = v->AsString()) return s->SetValue(Value);
  }
  SetValue(Name, MakeCom<TJSONStringImpl>(std::u16string(Value)));
}

void TJSONObjectImpl::SetFloat(std::u16string_view Name, long double Value) {
  if (IJSONValue* v = Lookup(Name)) {
    if (const ComPtr<IJSONNumber> n = v->AsNumber()) return n->SetFloatValue(Value);
  }
  SetValue(Name, MakeCom<TJSONNumberImpl>(Value));
}

void TJSONObjectImpl::SetValue(std::u16string_view Name, const ComPtr<IJSONValue>& Value) {
  if (Name.empty()) return;
  if (!Value) {
    Remove(Name);
    return;
  }
  const std::int32_t e = FDictionary.Find(Name, FNames);
  if (e >= 0) {
    // The member list keeps its first value; only the dictionary follows.
    FDictionary[static_cast<std::size_t>(e)] = Value;
    return;
  }
  FNames.AddNameValue(Name, Value);
  FSorted = false;
  FDictionary.Add(Value, FNames);
}

void TJSONObjectImpl::SetParsed(std::u16string&& Name, ComPtr<IJSONValue>&& Value) {
  if (Name.empty()) return;
  const std::int32_t e = FDictionary.Find(Name, FNames);
  if (e >= 0) {
    FDictionary[static_cast<std::size_t>(e)] = std::move(Value);
    return;
  }
  FNames.Items().push_back(TJSONObjectNameValue{std::move(Name), Value});
  FSorted = false;
  FDictionary.Add(std::move(Value), FNames);
}

void TJSONObjectImpl::AdoptParsed(std::u16string* Names, ComPtr<IJSONValue>* Values, std::size_t Count) {
  FNames.Items().reserve(Count);
  FDictionary.Reserve(Count);
  for (std::size_t i = 0; i < Count; ++i) SetParsed(std::move(Names[i]), std::move(Values[i]));
}

void TJSONObjectImpl::Remove(std::u16string_view Name) {
  const std::int32_t i = FDictionary.Find(Name, FNames);
  if (i < 0) return;
  // Released only after both structures agree again.
  const ComPtr<IJSONValue> listValue = std::move(FNames[static_cast<std::size_t>(i)].Value);
  const ComPtr<IJSONValue> dictValue = std::move(FDictionary[static_cast<std::size_t>(i)]);
  FNames.Items().erase(FNames.Items().begin() + i);
  FDictionary.Delete(i, FNames);
}

std::vector<TJSONObjectNameValue> TJSONObjectImpl::ToArray() {
  std::vector<TJSONObjectNameValue> out;
  out.reserve(static_cast<std::size_t>(FNames.Count()));
  for (std::int32_t i = 0; i < FNames.Count(); ++i) {
    out.push_back(TJSONObjectNameValue{FNames[static_cast<std::size_t>(i)].Name,
                                       FDictionary[static_cast<std::size_t>(i)]});
  }
  return out;
}

void TJSONObjectImpl::Clear() {
  TJSONObjectNameValueList names;
  TJSONObjectDictionary dictionary;
  std::swap(names, FNames);
  std::swap(dictionary, FDictionary);
  FSorted = false;
}

void TJSONObjectImpl::SortMembersByName() {
  if (FSorted) return;
  auto& items = FNames.Items();
  std::vector<std::int32_t> order(items.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&items](std::int32_t a, std::int32_t b) {
    return JSONAnsiCompareStr(items[static_cast<std::size_t>(a)].Name,
                              items[static_cast<std::size_t>(b)].Name) < 0;
  });
  std::vector<TJSONObjectNameValue> sorted;
  sorted.reserve(items.size());
  for (std::int32_t old : order) sorted.push_back(std::move(items[static_cast<std::size_t>(old)]));
  items = std::move(sorted);
  FDictionary.Reorder(order, FNames);
  FSorted = true;
}

void TJSONObjectImpl::BuildJSONText(const TJSONCreateTextOption& option, TJSONTextBuilder& builder,
                                    bool InArray) {
  json_detail::BuildContainer(this, nullptr, option, builder, InArray);
}

void TJSONObjectImpl::WalkValues(IJSONValueVisitor& visitor) {
  json_detail::WalkContainer(this, nullptr, visitor);
}

}  // namespace qx
