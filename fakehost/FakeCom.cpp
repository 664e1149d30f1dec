#include "fakehost/FakeCom.h"

namespace qx {

std::u16string ReadString(IQxIString* text) {
  if (!text) return {};
  Text raw = nullptr;
  if (Failed(text->GetText(&raw))) return {};
  return TextOf(raw);
}

std::u16string ReadVariantText(IQxIVariant* variant) {
  if (!variant) return {};
  ComPtr<IQxIString> text;
  if (Failed(variant->AsText(text.put()))) return {};
  return ReadString(text.get());
}

TFakeParams ReadStringDictionary(IQxIStringDictionary* dictionary) {
  TFakeParams params;
  if (!dictionary) return params;
  // Anything else that arrives typed as a string dictionary is not read as one.
  ComPtr<IQxIStringDictionary> checked;
  if (Failed(dictionary->QueryInterface(IQxIStringDictionary::IID, checked.put_void())) || !checked) return params;
  ComPtr<IQxIStringArray> keys, values;
  if (Failed(dictionary->GetKeysAndValues(keys.put(), values.put())) || !keys || !values) return params;
  std::int32_t count = 0, valueCount = 0;
  if (Failed(keys->GetCount(&count)) || Failed(values->GetCount(&valueCount))) return params;
  for (std::int32_t i = 0; i < count && i < valueCount; ++i) {
    ComPtr<IQxIString> key, value;
    keys->GetItem(i, key.put());
    values->GetItem(i, value.put());
    params.emplace_back(ReadString(key.get()), ReadString(value.get()));
  }
  return params;
}

}  // namespace qx
