#include "host/WrapV3Intf.h"

#include "host/ServiceCoreWrapIntf.h"

namespace qx {

TString StringText(IQxIString* value) {
  if (!value) return {};
  Text text = nullptr;
  if (Failed(value->GetText(&text)) || !text) return {};
  return TString(text);
}

namespace {

class TQxIStringArrayWrapImpl : public TInterfacedObject<IQxIStringArrayWrap> {
 public:
  explicit TQxIStringArrayWrapImpl(IQxIStringArray* array) : FStringArray(array) {}

  bool GetText(std::int32_t index, TString& text) override {
    ComPtr<IQxIString> item;
    if (!FStringArray || Failed(FStringArray->GetItem(index, item.put()))) return false;
    text = StringText(item.get());
    return true;
  }
  std::int32_t GetCount() override {
    std::int32_t count = 0;
    if (!FStringArray || Failed(FStringArray->GetCount(&count))) return 0;
    return count;
  }
  bool SetText(std::int32_t index, std::u16string_view text) override {
    const TString value(text);
    return FStringArray && Succeeded(FStringArray->SetItem(index, value.c_str()));
  }
  bool AddText(std::u16string_view text) override {
    const TString value(text);
    return FStringArray && Succeeded(FStringArray->Add(value.c_str()));
  }
  bool Delete(std::int32_t index) override { return FStringArray && Succeeded(FStringArray->Delete(index)); }
  bool Exchange(std::int32_t a, std::int32_t b) override {
    return FStringArray && Succeeded(FStringArray->Exchange(a, b));
  }
  std::int32_t IndexOfText(std::u16string_view text) override {
    if (!FStringArray) return -1;
    const TString value(text);
    std::int32_t index = -1;
    const HResult status = FStringArray->IndexOf(value.c_str(), &index);
    if (status == kFalse || Failed(status)) return -1;
    return index;
  }
  bool InsertText(std::int32_t index, std::u16string_view text) override {
    const TString value(text);
    return FStringArray && Succeeded(FStringArray->Insert(index, value.c_str()));
  }
  bool Move(std::int32_t from, std::int32_t to) override {
    return FStringArray && Succeeded(FStringArray->Move(from, to));
  }

 private:
  ComPtr<IQxIStringArray> FStringArray;
};

class TQxIArrayWrapImpl : public TInterfacedObject<IQxIArrayWrap> {
 public:
  explicit TQxIArrayWrapImpl(IQxIArray* array) : FArray(array) {}

  bool GetItem(std::int32_t index, ComPtr<IUnknown>& item) override {
    item = nullptr;
    return FArray && Succeeded(FArray->GetItem(index, item.put()));
  }
  std::int32_t GetCount() override {
    std::int32_t count = 0;
    if (!FArray || Failed(FArray->GetCount(&count))) return 0;
    return count;
  }
  bool SetItem(std::int32_t index, IUnknown* item) override { return FArray && Succeeded(FArray->SetItem(index, item)); }
  bool AddItem(IUnknown* item) override { return FArray && Succeeded(FArray->Add(item)); }
  bool Delete(std::int32_t index) override { return FArray && Succeeded(FArray->Delete(index)); }
  bool Exchange(std::int32_t a, std::int32_t b) override { return FArray && Succeeded(FArray->Exchange(a, b)); }
  bool InsertItem(std::int32_t index, IUnknown* item) override {
    return FArray && Succeeded(FArray->Insert(index, item));
  }
  bool Move(std::int32_t from, std::int32_t to) override { return FArray && Succeeded(FArray->Move(from, to)); }

 private:
  ComPtr<IQxIArray> FArray;
};

class TQxIStringDictionaryWrapImpl : public TInterfacedObject<IQxIStringDictionaryWrap> {
 public:
  explicit TQxIStringDictionaryWrapImpl(IQxIStringDictionary* dictionary) : FStringDictionary(dictionary) {}

  bool GetValue(std::u16string_view key, TString& text) override {
    ComPtr<IQxIString> value;
    const TString k(key);
    if (!FStringDictionary || Failed(FStringDictionary->GetValue(k.c_str(), value.put()))) return false;
    text = StringText(value.get());
    return true;
  }
  bool SetValue(std::u16string_view key, std::u16string_view text) override {
    const TString k(key), v(text);
    return FStringDictionary && Succeeded(FStringDictionary->SetValue(k.c_str(), v.c_str()));
  }
  bool GetKeys(ComPtr<IQxIStringArrayWrap>& keys) override {
    keys = nullptr;
    ComPtr<IQxIStringArray> raw;
    if (!FStringDictionary || Failed(FStringDictionary->GetKeys(raw.put()))) return false;
    keys = WrapStringArray(raw.get());
    return true;
  }
  bool GetKeysAndValues(ComPtr<IQxIStringArrayWrap>& keys, ComPtr<IQxIStringArrayWrap>& values) override {
    keys = nullptr;
    values = nullptr;
    ComPtr<IQxIStringArray> rawKeys, rawValues;
    if (!FStringDictionary || Failed(FStringDictionary->GetKeysAndValues(rawKeys.put(), rawValues.put())))
      return false;
    keys = WrapStringArray(rawKeys.get());
    values = WrapStringArray(rawValues.get());
    return true;
  }
  bool Exists(std::u16string_view key) override {
    TString ignored;
    return GetValue(key, ignored);
  }
  void GetRaw(ComPtr<IQxIStringDictionary>& raw) override { raw = FStringDictionary; }

 private:
  ComPtr<IQxIStringDictionary> FStringDictionary;
};

class TQxIDictionaryWrapImpl : public TInterfacedObject<IQxIDictionaryWrap> {
 public:
  TQxIDictionaryWrapImpl(IQxIDictionary* dictionary, IServiceCoreWrap* serviceCore)
      : FDictionary(dictionary), FServiceCore(serviceCore) {}

  bool GetText(std::u16string_view key, TString& text) override {
    ComPtr<IQxIVariant> variant = Variant(key);
    ComPtr<IQxIString> value;
    text.clear();
    if (!variant || Failed(variant->AsText(value.put()))) return false;
    text = StringText(value.get());
    return true;
  }
  bool SetText(std::u16string_view key, std::u16string_view text) override {
    ComPtr<IQxIVariant> variant;
    if (!FServiceCore || !FServiceCore->CreateVariantText(text, variant)) return false;
    return SetValue(key, variant.get());
  }
  bool GetBool(std::u16string_view key) override {
    ComPtr<IQxIVariant> variant = Variant(key);
    std::uint8_t value = 0;
    return variant && Succeeded(variant->AsBoolean(&value, 0)) && value != 0;
  }
  bool SetBool(std::u16string_view key, bool value) override {
    ComPtr<IQxIVariant> variant;
    if (!FServiceCore || !FServiceCore->CreateVariantBool(value, variant)) return false;
    return SetValue(key, variant.get());
  }
  std::int64_t GetInt64(std::u16string_view key) override {
    ComPtr<IQxIVariant> variant = Variant(key);
    std::int64_t value = 0;
    if (!variant || Failed(variant->AsInt64(&value, 0, 0))) return 0;
    return value;
  }
  bool SetInt64(std::u16string_view key, std::int64_t value) override {
    ComPtr<IQxIVariant> variant;
    if (!FServiceCore || !FServiceCore->CreateVariantInt64(value, variant)) return false;
    return SetValue(key, variant.get());
  }
  bool GetValue(std::u16string_view key, ComPtr<IUnknown>& value) override {
    value = nullptr;
    const TString k(key);
    return FDictionary && Succeeded(FDictionary->GetValue(k.c_str(), value.put()));
  }
  bool SetValue(std::u16string_view key, IUnknown* value) override {
    const TString k(key);
    return FDictionary && Succeeded(FDictionary->SetValue(k.c_str(), value));
  }

 private:
  ComPtr<IQxIVariant> Variant(std::u16string_view key) {
    ComPtr<IUnknown> stored;
    if (!GetValue(key, stored)) return nullptr;
    return stored.As<IQxIVariant>();
  }

  ComPtr<IQxIDictionary> FDictionary;
  ComPtr<IServiceCoreWrap> FServiceCore;
};

}  // namespace

ComPtr<IQxIStringArrayWrap> WrapStringArray(IQxIStringArray* array) {
  return MakeCom<TQxIStringArrayWrapImpl>(array);
}

ComPtr<IQxIArrayWrap> WrapArray(IQxIArray* array) { return MakeCom<TQxIArrayWrapImpl>(array); }

ComPtr<IQxIStringDictionaryWrap> WrapStringDictionary(IQxIStringDictionary* dictionary) {
  if (!dictionary) return nullptr;
  return MakeCom<TQxIStringDictionaryWrapImpl>(dictionary);
}

ComPtr<IQxIDictionaryWrap> WrapDictionary(IQxIDictionary* dictionary, IServiceCoreWrap* serviceCore) {
  return MakeCom<TQxIDictionaryWrapImpl>(dictionary, serviceCore);
}

}  // namespace qx
