#pragma once

// The module's JSON document model: reference-counted values, objects that keep the
// order of their members, arrays, and scalars.

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "base/ComPtr.h"
#include "base/Guid.h"
#include "base/Unknown.h"

namespace qx {

enum TJSONValueType : std::uint8_t { jvtBool, jvtNull, jvtObject, jvtArray, jvtNumber, jvtString };

// A set of value types.
class TJSONValueTypes {
 public:
  constexpr TJSONValueTypes() = default;
  constexpr TJSONValueTypes(std::initializer_list<TJSONValueType> types) {
    for (TJSONValueType t : types) FBits = static_cast<std::uint8_t>(FBits | Bit(t));
  }
  static constexpr TJSONValueTypes All() {
    return {jvtBool, jvtNull, jvtObject, jvtArray, jvtNumber, jvtString};
  }
  constexpr bool Contains(TJSONValueType t) const { return (FBits & Bit(t)) != 0; }

 private:
  static constexpr std::uint8_t Bit(TJSONValueType t) { return static_cast<std::uint8_t>(1u << t); }
  std::uint8_t FBits = 0;
};

struct IJSONObject;
struct IJSONArray;
struct IJSONString;
struct IJSONNumber;
struct IJSONBool;
struct IJSONNull;
struct IJSONValue;
struct TJSONCreateTextOption;
class TJSONTextBuilder;

// Receives every value of a tree from WalkValues, parents before their children.
class IJSONValueVisitor {
 public:
  virtual void Visit(IJSONValue* value) = 0;

 protected:
  ~IJSONValueVisitor() = default;
};

// Comparison for IJSONArray::Sort: negative, zero or positive like a three-way compare.
using TJSONValueComparison = std::function<int(IJSONValue* Left, IJSONValue* Right)>;

struct IJSONValue : IUnknown {
  static constexpr TGUID IID = MakeGuid("E4C2446E-37F7-475A-A3D7-72B1223E2577");

  virtual bool IsObject() = 0;
  virtual bool IsArray() = 0;
  virtual bool IsString() = 0;
  virtual bool IsNumber() = 0;
  virtual bool IsBool() = 0;
  virtual bool IsNull() = 0;
  virtual ComPtr<IJSONObject> AsObject() = 0;
  virtual ComPtr<IJSONArray> AsArray() = 0;
  virtual ComPtr<IJSONString> AsString() = 0;
  virtual ComPtr<IJSONNumber> AsNumber() = 0;
  virtual ComPtr<IJSONBool> AsBool() = 0;
  virtual ComPtr<IJSONNull> AsNull() = 0;
  virtual bool GetBoolValue() = 0;
  virtual std::u16string GetStringValue() = 0;
  virtual std::int64_t GetIntValue() = 0;
  virtual long double GetFloatValue() = 0;
  virtual ComPtr<IJSONObject> GetObjectValue() = 0;
  virtual ComPtr<IJSONArray> GetArrayValue() = 0;
  // Plain text of a scalar; empty for objects and arrays.
  virtual std::u16string GetText() = 0;
  virtual std::u16string ToJSONText(const TJSONCreateTextOption& option) = 0;
  virtual std::u16string ToJSONText() = 0;
  virtual std::u16string ToPackedJSONText() = 0;
  virtual void BuildJSONText(const TJSONCreateTextOption& option, TJSONTextBuilder& builder,
                             bool InArray) = 0;
  virtual void WalkValues(IJSONValueVisitor& visitor) = 0;
  virtual void SortObjectMembers() = 0;

 protected:
  ~IJSONValue() = default;
};

struct TJSONObjectNameValue {
  std::u16string Name;
  ComPtr<IJSONValue> Value;
};

struct IJSONObject : IJSONValue {
  static constexpr TGUID IID = MakeGuid("016FDBA1-0EB0-4918-918B-50C9E078F723");
  using Parent = IJSONValue;

  virtual std::int32_t GetCount() = 0;
  virtual std::u16string GetName(std::int32_t Index) = 0;
  // The value as the member list holds it; overwriting a member does not update it.
  virtual ComPtr<IJSONValue> GetValueAt(std::int32_t Index) = 0;
  virtual ComPtr<IJSONValue> GetValue(std::u16string_view Name) = 0;
  virtual bool GetBool(std::u16string_view Name) = 0;
  virtual long double GetFloat(std::u16string_view Name) = 0;
  virtual std::int64_t GetInt(std::u16string_view Name) = 0;
  virtual std::u16string GetString(std::u16string_view Name) = 0;
  virtual ComPtr<IJSONObject> GetObject(std::u16string_view Name) = 0;
  virtual ComPtr<IJSONArray> GetArray(std::u16string_view Name) = 0;
  virtual void SetInt(std::u16string_view Name, std::int64_t Value) = 0;
  virtual void SetBool(std::u16string_view Name, bool Value) = 0;
  virtual void SetString(std::u16string_view Name, std::u16string_view Value) = 0;
  virtual void SetArray(std::u16string_view Name, const ComPtr<IJSONArray>& Value) = 0;
  virtual void SetFloat(std::u16string_view Name, long double Value) = 0;
  virtual void SetObject(std::u16string_view Name, const ComPtr<IJSONObject>& Value) = 0;
  virtual void SetValue(std::u16string_view Name, const ComPtr<IJSONValue>& Value) = 0;
  virtual void Remove(std::u16string_view Name) = 0;
  virtual bool Exists(std::u16string_view Name) = 0;
  virtual std::int32_t IndexOfName(std::u16string_view Name) = 0;
  // Name and value pairs in the dictionary's order.
  virtual std::vector<TJSONObjectNameValue> ToArray() = 0;
  virtual void Clear() = 0;
  virtual void SortMembersByName() = 0;

 protected:
  ~IJSONObject() = default;
};

struct IJSONArray : IJSONValue {
  static constexpr TGUID IID = MakeGuid("BA8579B9-721D-4288-B191-E7DCAD1E9CAF");
  using Parent = IJSONValue;

  // An index out of range reads as nil and makes a write do nothing.
  virtual std::int32_t GetCount() = 0;
  virtual ComPtr<IJSONValue> GetItem(std::int32_t Index) = 0;
  virtual void SetItem(std::int32_t Index, const ComPtr<IJSONValue>& Value) = 0;
  virtual std::int32_t Add(const ComPtr<IJSONValue>& Value) = 0;
  virtual void Insert(std::int32_t Index, const ComPtr<IJSONValue>& Value) = 0;
  virtual std::int32_t IndexOf(const ComPtr<IJSONValue>& Value) = 0;
  virtual std::int32_t Remove(const ComPtr<IJSONValue>& Value) = 0;
  virtual void Delete(std::int32_t Index) = 0;
  virtual ComPtr<IJSONValue> Extract(const ComPtr<IJSONValue>& Value) = 0;
  virtual void Sort(const TJSONValueComparison& comparison) = 0;
  virtual ComPtr<IJSONArray> GetArray(std::int32_t Index) = 0;
  virtual bool GetBool(std::int32_t Index) = 0;
  virtual long double GetFloat(std::int32_t Index) = 0;
  virtual std::int64_t GetInt(std::int32_t Index) = 0;
  virtual ComPtr<IJSONObject> GetObject(std::int32_t Index) = 0;
  virtual std::u16string GetString(std::int32_t Index) = 0;
  virtual void SetBool(std::int32_t Index, bool Value) = 0;
  virtual void SetInt(std::int32_t Index, std::int64_t Value) = 0;
  virtual void SetString(std::int32_t Index, std::u16string_view Value) = 0;
  virtual void SetArray(std::int32_t Index, const ComPtr<IJSONArray>& Value) = 0;
  virtual void SetFloat(std::int32_t Index, long double Value) = 0;
  virtual void SetObject(std::int32_t Index, const ComPtr<IJSONObject>& Value) = 0;

 protected:
  ~IJSONArray() = default;
};

struct IJSONString : IJSONValue {
  static constexpr TGUID IID = MakeGuid("83194A0D-6F18-4953-8F85-089D264ABBFF");
  using Parent = IJSONValue;

  virtual void SetValue(std::u16string_view Value) = 0;
  virtual std::u16string GetValue() = 0;

 protected:
  ~IJSONString() = default;
};

struct IJSONBool : IJSONValue {
  static constexpr TGUID IID = MakeGuid("795B82BB-526E-4A67-B6D8-2CF9B7D5D3CE");
  using Parent = IJSONValue;

  virtual void SetValue(bool Value) = 0;
  virtual bool GetValue() = 0;

 protected:
  ~IJSONBool() = default;
};

// Its own operations are SetFloatValue, GetFloatValue, SetIntValue, GetIntValue and
// GetIsFloat; the two getters are the ones every value has.
struct IJSONNumber : IJSONValue {
  static constexpr TGUID IID = MakeGuid("72FD0EBE-443D-47D6-9990-4730C7E03840");
  using Parent = IJSONValue;

  virtual void SetFloatValue(long double Value) = 0;
  virtual void SetIntValue(std::int64_t Value) = 0;
  virtual bool GetIsFloat() = 0;

 protected:
  ~IJSONNumber() = default;
};

struct IJSONNull : IJSONValue {
  static constexpr TGUID IID = MakeGuid("82977DD4-6D37-4B06-92CC-3DC8474FD953");
  using Parent = IJSONValue;

 protected:
  ~IJSONNull() = default;
};

// Calls the function for every value of the tree under value, parents first.
void WalkJSONValues(IJSONValue* value, const std::function<void(IJSONValue*)>& visit);

}  // namespace qx
