#pragma once

// Friendly faces for host containers: text instead of pointers, nil-safe calls.

#include <cstdint>
#include <vector>

#include "base/ComObject.h"
#include "base/Text.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

struct IServiceCoreWrap;

struct IQxIStringArrayWrap : IUnknown {
  static constexpr TGUID IID = MakeGuid("8EC293BA-6F50-438A-9780-29E487987B90");
  virtual bool GetText(std::int32_t index, TString& text) = 0;
  virtual std::int32_t GetCount() = 0;
  virtual bool SetText(std::int32_t index, std::u16string_view text) = 0;
  virtual bool AddText(std::u16string_view text) = 0;
  virtual bool Delete(std::int32_t index) = 0;
  virtual bool Exchange(std::int32_t a, std::int32_t b) = 0;
  // -1 when absent.
  virtual std::int32_t IndexOfText(std::u16string_view text) = 0;
  virtual bool InsertText(std::int32_t index, std::u16string_view text) = 0;
  virtual bool Move(std::int32_t from, std::int32_t to) = 0;
};

struct IQxIArrayWrap : IUnknown {
  static constexpr TGUID IID = MakeGuid("D57D484B-6871-4553-8532-5D61FC895527");
  virtual bool GetItem(std::int32_t index, ComPtr<IUnknown>& item) = 0;
  virtual std::int32_t GetCount() = 0;
  virtual bool SetItem(std::int32_t index, IUnknown* item) = 0;
  virtual bool AddItem(IUnknown* item) = 0;
  virtual bool Delete(std::int32_t index) = 0;
  virtual bool Exchange(std::int32_t a, std::int32_t b) = 0;
  virtual bool InsertItem(std::int32_t index, IUnknown* item) = 0;
  virtual bool Move(std::int32_t from, std::int32_t to) = 0;
};

struct IQxIStringDictionaryWrap : IUnknown {
  static constexpr TGUID IID = MakeGuid("AC53647E-551C-40C8-96BA-38221E960329");
  virtual bool GetValue(std::u16string_view key, TString& text) = 0;
  virtual bool SetValue(std::u16string_view key, std::u16string_view text) = 0;
  virtual bool GetKeys(ComPtr<IQxIStringArrayWrap>& keys) = 0;
  virtual bool GetKeysAndValues(ComPtr<IQxIStringArrayWrap>& keys, ComPtr<IQxIStringArrayWrap>& values) = 0;
  virtual bool Exists(std::u16string_view key) = 0;
  virtual void GetRaw(ComPtr<IQxIStringDictionary>& raw) = 0;

  // Convenience for callers that only want the text.
  TString Value(std::u16string_view key) {
    TString text;
    GetValue(key, text);
    return text;
  }
};

struct IQxIDictionaryWrap : IUnknown {
  static constexpr TGUID IID = MakeGuid("1B182AE5-6BB9-4CA7-9712-2F5FE68A99A2");
  virtual bool GetText(std::u16string_view key, TString& text) = 0;
  virtual bool SetText(std::u16string_view key, std::u16string_view text) = 0;
  virtual bool GetBool(std::u16string_view key) = 0;
  virtual bool SetBool(std::u16string_view key, bool value) = 0;
  virtual std::int64_t GetInt64(std::u16string_view key) = 0;
  virtual bool SetInt64(std::u16string_view key, std::int64_t value) = 0;
  virtual bool GetValue(std::u16string_view key, ComPtr<IUnknown>& value) = 0;
  virtual bool SetValue(std::u16string_view key, IUnknown* value) = 0;
};

struct IQxITabSectionWrap : IUnknown {
  static constexpr TGUID IID = MakeGuid("4DA1AD18-346F-4653-B21B-1BB524CDA628");
  virtual std::int32_t GetTabCount() = 0;
  virtual bool GetTab(std::int32_t index, ComPtr<IQxITab>& tab) = 0;
  virtual void GetRaw(ComPtr<IQxITabSection>& raw) = 0;
};

struct IQxITabGroupWrap : IUnknown {
  static constexpr TGUID IID = MakeGuid("02828AE8-F168-4D19-944E-6250DBFC1B93");
  virtual bool GetActiveTab(ComPtr<IQxITab>& tab) = 0;
  virtual std::int32_t GetTabCount() = 0;
  virtual bool GetTab(std::int32_t index, ComPtr<IQxITab>& tab) = 0;
  virtual void GetRaw(ComPtr<IQxITabGroup>& raw) = 0;
  virtual std::int32_t GetSectionCount() = 0;
  virtual bool GetSection(std::int32_t index, ComPtr<IQxITabSectionWrap>& section) = 0;
};

struct IQxITabManagerWrap : IUnknown {
  static constexpr TGUID IID = MakeGuid("D8422961-8D26-42C4-8086-F5C1DDC5A42C");
  virtual bool GetActiveGroup(ComPtr<IQxITabGroupWrap>& group) = 0;
  virtual std::int32_t GetGroupCount() = 0;
  virtual bool GetGroup(std::int32_t index, ComPtr<IQxITabGroupWrap>& group) = 0;
};

// Module-level constructors. Only the string dictionary's gives nil for a nil input; the
// others wrap nil and answer 0, nil or empty.
ComPtr<IQxIStringArrayWrap> WrapStringArray(IQxIStringArray* array);
ComPtr<IQxIArrayWrap> WrapArray(IQxIArray* array);
ComPtr<IQxIStringDictionaryWrap> WrapStringDictionary(IQxIStringDictionary* dictionary);
ComPtr<IQxIDictionaryWrap> WrapDictionary(IQxIDictionary* dictionary, IServiceCoreWrap* serviceCore);

// Reads an IQxIString's text; empty for nil.
TString StringText(IQxIString* value);

}  // namespace qx
