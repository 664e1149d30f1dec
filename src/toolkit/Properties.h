#pragma once

// Named properties of toolkit classes. Each class that publishes properties
// keeps one table chained to its base class's table; names may be dotted
// ("Position.X") and are matched without regard to ASCII case. Animations
// address float and bitmap properties by name; stored layouts set any of them
// from text.

#include <any>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/Types.h"

namespace qx {

class TFmxObject;
class TBitmap;

// One value of a stored layout: a number, a quoted text, an identifier
// (enumeration value, True/False, colour name) or a set "[a, b]".
struct TStoredValue {
  enum class TKind { Number, Text, Identifier, Set } Kind = TKind::Number;
  double Number = 0;
  std::u16string Text;
  std::string Identifier;
  std::vector<std::string> Items;
  std::string Describe() const;
};

struct TFloatPropertyInfo {
  std::function<float(TFmxObject*)> Get;
  std::function<void(TFmxObject*, float)> Set;
};

struct TBitmapPropertyInfo {
  std::function<TBitmap*(TFmxObject*)> Get;
  std::function<void(TFmxObject*, const TBitmap*)> Set;
};

// Sets a property from a stored value; raises EPropertyError for a wrong kind of value.
using TStoredSetter = std::function<void(TFmxObject*, const TStoredValue&)>;
// Binds an event to a handler; the handler is a std::function of the event's own type in a std::any.
using TEventBinder = std::function<void(TFmxObject*, const std::any&)>;

class TPropertyTable {
 public:
  explicit TPropertyTable(const TPropertyTable* base = nullptr) : FBase(base) {}

  TPropertyTable& Float(std::string_view name, TFloatPropertyInfo info);
  TPropertyTable& Bitmap(std::string_view name, TBitmapPropertyInfo info);
  TPropertyTable& Stored(std::string_view name, TStoredSetter setter);
  TPropertyTable& Event(std::string_view name, TEventBinder binder);

  // Typed helpers for a class T.
  template <class T>
  TPropertyTable& FloatOf(std::string_view name, float (*get)(T&), void (*set)(T&, float)) {
    return Float(name, {[get](TFmxObject* o) { return get(static_cast<T&>(*o)); },
                        [set](TFmxObject* o, float v) { set(static_cast<T&>(*o), v); }});
  }

  const TFloatPropertyInfo* FindFloat(std::string_view name) const;
  const TBitmapPropertyInfo* FindBitmap(std::string_view name) const;
  const TStoredSetter* FindStored(std::string_view name) const;
  const TEventBinder* FindEvent(std::string_view name) const;

 private:
  static std::string Key(std::string_view name);
  const TPropertyTable* FBase;
  std::map<std::string, TFloatPropertyInfo> FFloats;
  std::map<std::string, TBitmapPropertyInfo> FBitmaps;
  std::map<std::string, TStoredSetter> FStored;
  std::map<std::string, TEventBinder> FEvents;
};

// Helpers to read stored values, raising EPropertyError with the property's name.
float StoredFloat(const TStoredValue& value, std::string_view property);
bool StoredBool(const TStoredValue& value, std::string_view property);
std::u16string StoredText(const TStoredValue& value, std::string_view property);
TAlphaColor StoredColor(const TStoredValue& value, std::string_view property);
// Enumeration values may carry the usual two- or three-letter prefix ("TAlignLayout.Client", "alClient").
std::string StoredIdentifier(const TStoredValue& value, std::string_view property);

template <class Fn>
std::any EventHandler(Fn fn) {
  return std::any(fn);
}

// Typed event binder: stores the handler in the member the lambda names.
template <class T, class F>
TEventBinder BindEvent(std::function<F> T::*member, std::string_view eventName) {
  std::string name(eventName);
  return [member, name](TFmxObject* o, const std::any& handler) {
    const auto* fn = std::any_cast<std::function<F>>(&handler);
    if (!fn) throw EPropertyError("Handler of the wrong type for event " + name);
    static_cast<T*>(o)->*member = *fn;
  };
}

}  // namespace qx
