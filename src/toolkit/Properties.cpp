#include "toolkit/Properties.h"

#include <cctype>
#include <cmath>

namespace qx {

std::string TStoredValue::Describe() const {
  switch (Kind) {
    case TKind::Number: {
      std::string s = std::to_string(Number);
      return s;
    }
    case TKind::Text:
      return "text";
    case TKind::Identifier:
      return Identifier;
    case TKind::Set:
      return "set";
  }
  return {};
}

std::string TPropertyTable::Key(std::string_view name) {
  std::string key(name);
  for (char& c : key) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return key;
}

TPropertyTable& TPropertyTable::Float(std::string_view name, TFloatPropertyInfo info) {
  FFloats[Key(name)] = std::move(info);
  return *this;
}

TPropertyTable& TPropertyTable::Bitmap(std::string_view name, TBitmapPropertyInfo info) {
  FBitmaps[Key(name)] = std::move(info);
  return *this;
}

TPropertyTable& TPropertyTable::Stored(std::string_view name, TStoredSetter setter) {
  FStored[Key(name)] = std::move(setter);
  return *this;
}

TPropertyTable& TPropertyTable::Event(std::string_view name, TEventBinder binder) {
  FEvents[Key(name)] = std::move(binder);
  return *this;
}

namespace {
template <class Map>
const typename Map::mapped_type* FindIn(const Map& map, const std::string& key) {
  auto it = map.find(key);
  return it == map.end() ? nullptr : &it->second;
}
}  // namespace

const TFloatPropertyInfo* TPropertyTable::FindFloat(std::string_view name) const {
  std::string key = Key(name);
  for (const TPropertyTable* t = this; t; t = t->FBase)
    if (auto* p = FindIn(t->FFloats, key)) return p;
  return nullptr;
}

const TBitmapPropertyInfo* TPropertyTable::FindBitmap(std::string_view name) const {
  std::string key = Key(name);
  for (const TPropertyTable* t = this; t; t = t->FBase)
    if (auto* p = FindIn(t->FBitmaps, key)) return p;
  return nullptr;
}

const TStoredSetter* TPropertyTable::FindStored(std::string_view name) const {
  std::string key = Key(name);
  for (const TPropertyTable* t = this; t; t = t->FBase)
    if (auto* p = FindIn(t->FStored, key)) return p;
  return nullptr;
}

const TEventBinder* TPropertyTable::FindEvent(std::string_view name) const {
  std::string key = Key(name);
  for (const TPropertyTable* t = this; t; t = t->FBase)
    if (auto* p = FindIn(t->FEvents, key)) return p;
  return nullptr;
}

float StoredFloat(const TStoredValue& value, std::string_view property) {
  if (value.Kind != TStoredValue::TKind::Number)
    throw EPropertyError("Property " + std::string(property) + " needs a number, not " + value.Describe());
  return static_cast<float>(value.Number);
}

bool StoredBool(const TStoredValue& value, std::string_view property) {
  if (value.Kind == TStoredValue::TKind::Identifier) {
    std::string id = value.Identifier;
    for (char& c : id) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (id == "true") return true;
    if (id == "false") return false;
  }
  throw EPropertyError("Property " + std::string(property) + " needs True or False, not " + value.Describe());
}

std::u16string StoredText(const TStoredValue& value, std::string_view property) {
  if (value.Kind != TStoredValue::TKind::Text)
    throw EPropertyError("Property " + std::string(property) + " needs a quoted text, not " + value.Describe());
  return value.Text;
}

std::string StoredIdentifier(const TStoredValue& value, std::string_view property) {
  if (value.Kind != TStoredValue::TKind::Identifier)
    throw EPropertyError("Property " + std::string(property) + " needs a name, not " + value.Describe());
  std::string id = value.Identifier;
  auto dot = id.rfind('.');
  if (dot != std::string::npos) id = id.substr(dot + 1);
  return id;
}

TAlphaColor StoredColor(const TStoredValue& value, std::string_view property) {
  if (value.Kind == TStoredValue::TKind::Number && value.Number >= -2147483648.0 && value.Number <= 4294967295.0)
    return static_cast<TAlphaColor>(static_cast<std::uint32_t>(std::llround(value.Number) & 0xFFFFFFFFll));
  if (value.Kind == TStoredValue::TKind::Identifier) {
    std::string id = StoredIdentifier(value, property);
    std::string lower;
    for (char c : id) lower.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
    if (lower.rfind("cla", 0) == 0) lower = lower.substr(3);
    static const std::map<std::string, TAlphaColor> kNames = {
        {"black", 0xFF000000u}, {"white", 0xFFFFFFFFu}, {"red", 0xFFFF0000u},   {"lime", 0xFF00FF00u},
        {"blue", 0xFF0000FFu},  {"gray", 0xFF808080u},  {"silver", 0xFFC0C0C0u}, {"null", 0x00000000u},
        {"yellow", 0xFFFFFF00u}, {"green", 0xFF008000u}, {"darkgray", 0xFFA9A9A9u}};
    auto it = kNames.find(lower);
    if (it != kNames.end()) return it->second;
  }
  throw EPropertyError("Property " + std::string(property) + " needs a colour, not " + value.Describe());
}

}  // namespace qx
