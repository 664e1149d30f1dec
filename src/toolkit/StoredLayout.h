#pragma once

// Stored layouts: a small text format for component trees.
//
//   object TabFrame: TFrame
//     Width = 400
//     object Title: TLabel
//       Align = Client
//       Margins.Left = -4
//       TextSettings.Font.Style = [fsBold]
//       Text = 'Tab '#39'one'#39
//       OnClick = TitleClick
//     end
//   end
//
// The outermost object describes the root being loaded; nested objects are
// made by class name (owned by the root, parented to the enclosing object).
// Values: numbers ($FF or 0xFF for hexadecimal), quoted texts ('' for a quote,
// #nn for a character code, joined with +), names, and sets in brackets.
// Events name a handler that the caller registers. Lines starting with //
// are comments.

#include <any>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "toolkit/FmxObject.h"

namespace qx {

struct TStoredLayoutOptions {
  // Event handlers by name; each is a std::function of the event's own type.
  std::map<std::string, std::any> Handlers;
  // Properties skipped wherever they appear (names compared without case).
  std::vector<std::string> DroppedProperties;

  template <class Fn>
  TStoredLayoutOptions& Handler(const std::string& name, Fn fn) {
    Handlers[name] = fn;
    return *this;
  }
};

using TComponentFactory = std::function<TFmxObject*(TFmxObject* owner)>;

class TComponentRegistry {
 public:
  // Legacy properties listed here are dropped silently for objects of that class.
  static void RegisterClass(const std::string& className, TComponentFactory factory,
                            std::vector<std::string> droppedProperties = {});
  static bool IsRegistered(const std::string& className);
  static void UnregisterClass(const std::string& className);
};

// Loads a layout onto root. Raises EStoredLayoutError, naming the line, for a
// syntax error, an unknown class or property, a bad value or a missing handler.
void LoadStoredLayout(TFmxObject* root, const std::string& text, const TStoredLayoutOptions& options = {});

template <class T>
T* FindComponentAs(const TFmxObject* root, std::u16string_view name) {
  return dynamic_cast<T*>(root->FindComponent(name));
}

}  // namespace qx
