#pragma once

// Classes behind the JSON interfaces. Code outside the JSON units creates values through
// the factories of JSONParser.h and uses them through the interfaces.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/ComObject.h"
#include "text/JSONTextBuilder.h"
#include "text/JSONValue.h"

namespace qx {

// Generic reads are answered through the type tests and the As... family.
template <class I>
class TJSONValueImpl : public TInterfacedObject<I> {
 public:
  bool IsObject() override { return false; }
  bool IsArray() override { return false; }
  bool IsString() override { return false; }
  bool IsNumber() override { return false; }
  bool IsBool() override { return false; }
  bool IsNull() override { return false; }
  ComPtr<IJSONObject> AsObject() override { return nullptr; }
  ComPtr<IJSONArray> AsArray() override { return nullptr; }
  ComPtr<IJSONString> AsString() override { return nullptr; }
  ComPtr<IJSONNumber> AsNumber() override { return nullptr; }
  ComPtr<IJSONBool> AsBool() override { return nullptr; }
  ComPtr<IJSONNull> AsNull() override { return nullptr; }

  bool GetBoolValue() override {
    const ComPtr<IJSONBool> b = this->AsBool();
    return b ? b->GetValue() : false;
  }
  std::u16string GetStringValue() override {
    const ComPtr<IJSONString> s = this->AsString();
    return s ? s->GetValue() : std::u16string();
  }
  std::int64_t GetIntValue() override { return 0; }
  long double GetFloatValue() override { return 0; }
  ComPtr<IJSONObject> GetObjectValue() override { return this->AsObject(); }
  ComPtr<IJSONArray> GetArrayValue() override { return this->AsArray(); }
  std::u16string GetText() override { return {}; }

  std::u16string ToJSONText(const TJSONCreateTextOption& option) override;
  std::u16string ToJSONText() override { return ToJSONText(TJSONCreateTextOption()); }
  std::u16string ToPackedJSONText() override;
  void WalkValues(IJSONValueVisitor& visitor) override;
  void SortObjectMembers() override;

 protected:
  IJSONValue* Self() { return static_cast<IJSONValue*>(this); }
};

// Member list of an object: the order of the names, and the values as first stored.
class TJSONObjectNameValueList {
 public:
  std::int32_t Count() const { return static_cast<std::int32_t>(FItems.size()); }
  TJSONObjectNameValue& operator[](std::size_t i) { return FItems[i]; }
  const TJSONObjectNameValue& operator[](std::size_t i) const { return FItems[i]; }
  std::int32_t IndexOfName(std::u16string_view Name) const;
  bool RemoveFromName(std::u16string_view Name);
  void AddNameValue(std::u16string_view Name, const ComPtr<IJSONValue>& Value);
  bool TrySetValue(std::u16string_view Name, const ComPtr<IJSONValue>& Value);
  void Clear() { FItems.clear(); }
  std::vector<TJSONObjectNameValue>& Items() { return FItems; }

 private:
  std::vector<TJSONObjectNameValue> FItems;
};

// Name to current value. The value of a name sits at the same place as the name in the
// member list, so the dictionary holds no second copy of the names; small objects are
// searched linearly, larger ones through an open-addressing index.
class TJSONObjectDictionary {
 public:
  static std::size_t HashOf(std::u16string_view Name);
  // Place of Name, or -1.
  std::int32_t Find(std::u16string_view Name, const TJSONObjectNameValueList& Names) const;
  // The member list has just got the name at its end.
  void Add(ComPtr<IJSONValue> Value, const TJSONObjectNameValueList& Names);
  // The member list has just lost the name at Index.
  void Delete(std::int32_t Index, const TJSONObjectNameValueList& Names);
  // The member list was reordered: the name now at i was at Order[i].
  void Reorder(const std::vector<std::int32_t>& Order, const TJSONObjectNameValueList& Names);
  void Clear();
  void Reserve(std::size_t Count) { FValues.reserve(Count); }
  ComPtr<IJSONValue>& operator[](std::size_t i) { return FValues[i]; }
  IJSONValue* At(std::size_t i) const { return FValues[i].get(); }
  std::vector<ComPtr<IJSONValue>>& Values() { return FValues; }

 private:
  void RebuildIndex(const TJSONObjectNameValueList& Names);
  void InsertIntoIndex(std::int32_t Index, const TJSONObjectNameValueList& Names);

  std::vector<ComPtr<IJSONValue>> FValues;
  std::vector<std::int32_t> FSlots;  // empty while the object is small
};

// Order of member names: the locale-aware compare of the platform, for ASCII names.
int JSONAnsiCompareStr(std::u16string_view a, std::u16string_view b);

class TJSONObjectImpl final : public TJSONValueImpl<IJSONObject> {
 public:
  ~TJSONObjectImpl() override;

  bool IsObject() override { return true; }
  ComPtr<IJSONObject> AsObject() override { return ComPtr<IJSONObject>(this); }
  void BuildJSONText(const TJSONCreateTextOption& option, TJSONTextBuilder& builder, bool InArray) override;
  void WalkValues(IJSONValueVisitor& visitor) override;

  std::int32_t GetCount() override { return FNames.Count(); }
  std::u16string GetName(std::int32_t Index) override;
  ComPtr<IJSONValue> GetValueAt(std::int32_t Index) override;
  ComPtr<IJSONValue> GetValue(std::u16string_view Name) override { return ComPtr<IJSONValue>(Lookup(Name)); }
  bool GetBool(std::u16string_view Name) override;
  long double GetFloat(std::u16string_view Name) override;
  std::int64_t GetInt(std::u16string_view Name) override;
  std::u16string GetString(std::u16string_view Name) override;
  ComPtr<IJSONObject> GetObject(std::u16string_view Name) override;
  ComPtr<IJSONArray> GetArray(std::u16string_view Name) override;
  void SetInt(std::u16string_view Name, std::int64_t Value) override;
  void SetBool(std::u16string_view Name, bool Value) override;
  void SetString(std::u16string_view Name, std::u16string_view Value) override;
  void SetArray(std::u16string_view Name, const ComPtr<IJSONArray>& Value) override { SetValue(Name, Value); }
  void SetFloat(std::u16string_view Name, long double Value) override;
  void SetObject(std::u16string_view Name, const ComPtr<IJSONObject>& Value) override {
    SetValue(Name, Value);
  }
  void SetValue(std::u16string_view Name, const ComPtr<IJSONValue>& Value) override;
  void Remove(std::u16string_view Name) override;
  bool Exists(std::u16string_view Name) override { return Lookup(Name) != nullptr; }
  std::int32_t IndexOfName(std::u16string_view Name) override { return FNames.IndexOfName(Name); }
  std::vector<TJSONObjectNameValue> ToArray() override;
  void Clear() override;
  void SortMembersByName() override;

  // The current value of the member at this place of the member list.
  IJSONValue* MemberValue(std::int32_t Index) const {
    return Index >= 0 && Index < FNames.Count() ? FDictionary.At(static_cast<std::size_t>(Index)) : nullptr;
  }
  const std::u16string& MemberName(std::int32_t Index) const {
    return FNames[static_cast<std::size_t>(Index)].Name;
  }
  // Adds a member without copying its name; for the parser.
  void SetParsed(std::u16string&& Name, ComPtr<IJSONValue>&& Value);
  // Takes over the parsed members, moving from the given arrays.
  void AdoptParsed(std::u16string* Names, ComPtr<IJSONValue>* Values, std::size_t Count);

 private:
  IJSONValue* Lookup(std::u16string_view Name) const;

  TJSONObjectDictionary FDictionary;
  TJSONObjectNameValueList FNames;
  bool FSorted = false;
};

class TJSONArrayImpl final : public TJSONValueImpl<IJSONArray> {
 public:
  ~TJSONArrayImpl() override;

  bool IsArray() override { return true; }
  ComPtr<IJSONArray> AsArray() override { return ComPtr<IJSONArray>(this); }
  void BuildJSONText(const TJSONCreateTextOption& option, TJSONTextBuilder& builder, bool InArray) override;
  void WalkValues(IJSONValueVisitor& visitor) override;

  std::int32_t GetCount() override { return static_cast<std::int32_t>(FList.size()); }
  ComPtr<IJSONValue> GetItem(std::int32_t Index) override { return ComPtr<IJSONValue>(ItemAt(Index)); }
  void SetItem(std::int32_t Index, const ComPtr<IJSONValue>& Value) override;
  std::int32_t Add(const ComPtr<IJSONValue>& Value) override;
  void Insert(std::int32_t Index, const ComPtr<IJSONValue>& Value) override;
  std::int32_t IndexOf(const ComPtr<IJSONValue>& Value) override;
  std::int32_t Remove(const ComPtr<IJSONValue>& Value) override;
  void Delete(std::int32_t Index) override;
  ComPtr<IJSONValue> Extract(const ComPtr<IJSONValue>& Value) override;
  void Sort(const TJSONValueComparison& comparison) override;
  ComPtr<IJSONArray> GetArray(std::int32_t Index) override;
  bool GetBool(std::int32_t Index) override;
  long double GetFloat(std::int32_t Index) override;
  std::int64_t GetInt(std::int32_t Index) override;
  ComPtr<IJSONObject> GetObject(std::int32_t Index) override;
  std::u16string GetString(std::int32_t Index) override;
  void SetBool(std::int32_t Index, bool Value) override;
  void SetInt(std::int32_t Index, std::int64_t Value) override;
  void SetString(std::int32_t Index, std::u16string_view Value) override;
  void SetArray(std::int32_t Index, const ComPtr<IJSONArray>& Value) override { SetItem(Index, Value); }
  void SetFloat(std::int32_t Index, long double Value) override;
  void SetObject(std::int32_t Index, const ComPtr<IJSONObject>& Value) override { SetItem(Index, Value); }

  IJSONValue* ItemAt(std::int32_t Index) const;
  // Takes over the parsed items, moving from the given array.
  void AdoptParsed(ComPtr<IJSONValue>* Values, std::size_t Count) {
    FList.reserve(Count);
    for (std::size_t i = 0; i < Count; ++i) FList.push_back(std::move(Values[i]));
  }

 private:
  bool InRange(std::int32_t Index) const {
    return Index >= 0 && static_cast<std::size_t>(Index) < FList.size();
  }

  std::vector<ComPtr<IJSONValue>> FList;
};

class TJSONStringImpl final : public TJSONValueImpl<IJSONString> {
 public:
  explicit TJSONStringImpl(std::u16string value = {}) : FValue(std::move(value)) {}

  bool IsString() override { return true; }
  ComPtr<IJSONString> AsString() override { return ComPtr<IJSONString>(this); }
  std::u16string GetStringValue() override { return FValue; }
  std::u16string GetText() override { return FValue; }
  void BuildJSONText(const TJSONCreateTextOption& option, TJSONTextBuilder& builder, bool InArray) override;
  void SetValue(std::u16string_view Value) override { FValue.assign(Value); }
  std::u16string GetValue() override { return FValue; }

 private:
  std::u16string FValue;
};

class TJSONNumberImpl final : public TJSONValueImpl<IJSONNumber> {
 public:
  TJSONNumberImpl() = default;
  explicit TJSONNumberImpl(std::int64_t value) : FIntValue(value) {}
  explicit TJSONNumberImpl(long double value) : FFloatValue(value), FIsFloat(true) {}

  bool IsNumber() override { return true; }
  ComPtr<IJSONNumber> AsNumber() override { return ComPtr<IJSONNumber>(this); }
  std::int64_t GetIntValue() override;
  long double GetFloatValue() override;
  std::u16string GetText() override;
  void BuildJSONText(const TJSONCreateTextOption& option, TJSONTextBuilder& builder, bool InArray) override;
  void SetFloatValue(long double Value) override;
  void SetIntValue(std::int64_t Value) override;
  bool GetIsFloat() override { return FIsFloat; }

 private:
  long double FFloatValue = 0;
  std::int64_t FIntValue = 0;
  bool FIsFloat = false;
};

class TJSONBoolImpl final : public TJSONValueImpl<IJSONBool> {
 public:
  explicit TJSONBoolImpl(bool value = false) : FValue(value) {}

  bool IsBool() override { return true; }
  ComPtr<IJSONBool> AsBool() override { return ComPtr<IJSONBool>(this); }
  bool GetBoolValue() override { return FValue; }
  std::u16string GetText() override { return FValue ? u"true" : u"false"; }
  void BuildJSONText(const TJSONCreateTextOption& option, TJSONTextBuilder& builder, bool InArray) override;
  void SetValue(bool Value) override { FValue = Value; }
  bool GetValue() override { return FValue; }

 private:
  bool FValue;
};

class TJSONNullImpl final : public TJSONValueImpl<IJSONNull> {
 public:
  bool IsNull() override { return true; }
  ComPtr<IJSONNull> AsNull() override { return ComPtr<IJSONNull>(this); }
  std::u16string GetText() override { return u"null"; }
  void BuildJSONText(const TJSONCreateTextOption& option, TJSONTextBuilder& builder, bool InArray) override;
};

// Shared parts of the templates above, kept out of line.
namespace json_detail {
std::u16string ToJSONText(IJSONValue* value, const TJSONCreateTextOption& option);
std::u16string ToPackedJSONText(IJSONValue* value);
void VisitScalar(IJSONValue* value, IJSONValueVisitor& visitor);
void SortObjectMembers(IJSONValue* value);
}  // namespace json_detail

template <class I>
std::u16string TJSONValueImpl<I>::ToJSONText(const TJSONCreateTextOption& option) {
  return json_detail::ToJSONText(Self(), option);
}

template <class I>
std::u16string TJSONValueImpl<I>::ToPackedJSONText() {
  return json_detail::ToPackedJSONText(Self());
}

template <class I>
void TJSONValueImpl<I>::WalkValues(IJSONValueVisitor& visitor) {
  json_detail::VisitScalar(Self(), visitor);
}

template <class I>
void TJSONValueImpl<I>::SortObjectMembers() {
  json_detail::SortObjectMembers(Self());
}

}  // namespace qx
