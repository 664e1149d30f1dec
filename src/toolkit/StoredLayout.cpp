#include "toolkit/StoredLayout.h"

#include <cctype>
#include <cstdlib>
#include <memory>

#include "base/Text.h"
#include "toolkit/Animation.h"
#include "toolkit/Edit.h"
#include "toolkit/Effects.h"
#include "toolkit/Frame.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/TextControls.h"
#include "toolkit/Timer.h"

namespace qx {

// ---- class registry

namespace {

struct TClassEntry {
  TComponentFactory Factory;
  std::vector<std::string> Dropped;
};

std::string Lower(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

std::map<std::string, TClassEntry>& Classes() {
  static std::map<std::string, TClassEntry> classes = [] {
    std::map<std::string, TClassEntry> m;
    auto add = [&m](const char* name, TComponentFactory f) { m[Lower(name)] = {std::move(f), {}}; };
    add("TLayout", [](TFmxObject* o) { return new TLayout(o); });
    add("TContent", [](TFmxObject* o) { return new TContent(o); });
    add("TPaintBox", [](TFmxObject* o) { return new TPaintBox(o); });
    add("TStyledControl", [](TFmxObject* o) { return new TStyledControl(o); });
    add("TImage", [](TFmxObject* o) { return new TImage(o); });
    add("TText", [](TFmxObject* o) { return new TText(o); });
    add("TLabel", [](TFmxObject* o) { return new TLabel(o); });
    add("TScrollBar", [](TFmxObject* o) { return new TScrollBar(o); });
    add("TEdit", [](TFmxObject* o) { return new TEdit(o); });
    add("TTimer", [](TFmxObject* o) { return new TTimer(o); });
    add("TFloatAnimation", [](TFmxObject* o) { return new TFloatAnimation(o); });
    add("TBitmapAnimation", [](TFmxObject* o) { return new TBitmapAnimation(o); });
    add("TBitmapListAnimation", [](TFmxObject* o) { return new TBitmapListAnimation(o); });
    add("TBlurEffect", [](TFmxObject* o) { return new TBlurEffect(o); });
    add("TFrame", [](TFmxObject* o) { return new TFrame(o); });
    return m;
  }();
  return classes;
}

}  // namespace

void TComponentRegistry::RegisterClass(const std::string& className, TComponentFactory factory,
                                       std::vector<std::string> droppedProperties) {
  Classes()[Lower(className)] = {std::move(factory), std::move(droppedProperties)};
}

bool TComponentRegistry::IsRegistered(const std::string& className) { return Classes().count(Lower(className)) != 0; }

void TComponentRegistry::UnregisterClass(const std::string& className) { Classes().erase(Lower(className)); }

// ---- parser

namespace {

class TLayoutParser {
 public:
  TLayoutParser(const std::string& text, const TStoredLayoutOptions& options) : FText(text), FOptions(options) {}

  void Load(TFmxObject* root) {
    SkipBlank();
    if (AtEnd()) Fail("the layout is empty");
    ParseObject(root, root, true);
    SkipBlank();
    if (!AtEnd()) Fail("text after the last end");
  }

 private:
  [[noreturn]] void Fail(const std::string& message) const {
    throw EStoredLayoutError("Stored layout, line " + std::to_string(FLine) + ": " + message);
  }
  bool AtEnd() const { return FPos >= FText.size(); }
  char Peek() const { return AtEnd() ? '\0' : FText[FPos]; }

  // Skips spaces, blank lines and // comments.
  void SkipBlank() {
    while (!AtEnd()) {
      char c = FText[FPos];
      if (c == '\n') {
        ++FLine;
        ++FPos;
      } else if (c == ' ' || c == '\t' || c == '\r') {
        ++FPos;
      } else if (c == '/' && FPos + 1 < FText.size() && FText[FPos + 1] == '/') {
        while (!AtEnd() && FText[FPos] != '\n') ++FPos;
      } else {
        break;
      }
    }
  }
  void SkipSpaces() {
    while (!AtEnd() && (FText[FPos] == ' ' || FText[FPos] == '\t' || FText[FPos] == '\r')) ++FPos;
  }
  void EndOfLine() {
    SkipSpaces();
    if (!AtEnd() && FText[FPos] == '/' && FPos + 1 < FText.size() && FText[FPos + 1] == '/')
      while (!AtEnd() && FText[FPos] != '\n') ++FPos;
    if (!AtEnd() && FText[FPos] != '\n') Fail("unexpected \"" + FText.substr(FPos, 1) + "\"");
  }

  std::string Identifier(bool dotted) {
    SkipSpaces();
    std::size_t start = FPos;
    while (!AtEnd()) {
      char c = FText[FPos];
      if (std::isalnum(static_cast<unsigned char>(c)) || c == '_' || (dotted && c == '.' && FPos > start)) ++FPos;
      else break;
    }
    if (FPos == start) Fail("a name is missing");
    return FText.substr(start, FPos - start);
  }

  void ParseObject(TFmxObject* root, TFmxObject* target, bool isRoot) {
    std::string keyword = Lower(Identifier(false));
    if (keyword != "object" && keyword != "inherited" && keyword != "inline") Fail("\"object\" expected");
    std::string name = Identifier(false);
    SkipSpaces();
    if (Peek() != ':') Fail("\":\" and a class name expected after " + name);
    ++FPos;
    std::string className = Identifier(false);
    EndOfLine();
    const TClassEntry* entry = nullptr;
    auto it = Classes().find(Lower(className));
    if (it != Classes().end()) entry = &it->second;
    TFmxObject* object = target;
    if (!isRoot) {
      if (!entry) Fail("unknown class " + className);
      object = entry->Factory(root);
      object->Name = FromUtf8(name);
      object->SetParent(target);
    } else if (object->Name.empty()) {
      object->Name = FromUtf8(name);
    }
    for (;;) {
      SkipBlank();
      if (AtEnd()) Fail("\"end\" missing for " + name);
      std::size_t save = FPos;
      std::string word = Identifier(true);
      std::string lower = Lower(word);
      if (lower == "end") {
        EndOfLine();
        return;
      }
      if (lower == "object" || lower == "inherited" || lower == "inline") {
        FPos = save;
        ParseObject(root, object, false);
        continue;
      }
      SkipSpaces();
      if (Peek() != '=') Fail("\"=\" expected after " + word);
      ++FPos;
      SkipSpaces();
      if (Peek() == '\n' || AtEnd()) Fail("value missing for " + word);
      TStoredValue value = Value();
      EndOfLine();
      Apply(object, entry, word, value);
    }
  }

  TStoredValue Value() {
    TStoredValue v;
    char c = Peek();
    if (c == '\'' || c == '#') {
      v.Kind = TStoredValue::TKind::Text;
      v.Text = Text();
      return v;
    }
    if (c == '[') {
      ++FPos;
      v.Kind = TStoredValue::TKind::Set;
      SkipSpaces();
      if (Peek() == ']') {
        ++FPos;
        return v;
      }
      for (;;) {
        v.Items.push_back(Identifier(true));
        SkipSpaces();
        if (Peek() == ',') {
          ++FPos;
          continue;
        }
        if (Peek() == ']') {
          ++FPos;
          return v;
        }
        Fail("\",\" or \"]\" expected in a set");
      }
    }
    if (c == '-' || c == '+' || c == '$' || std::isdigit(static_cast<unsigned char>(c))) {
      v.Kind = TStoredValue::TKind::Number;
      v.Number = Number();
      return v;
    }
    v.Kind = TStoredValue::TKind::Identifier;
    v.Identifier = Identifier(true);
    return v;
  }

  double Number() {
    bool negative = false;
    if (Peek() == '-' || Peek() == '+') {
      negative = Peek() == '-';
      ++FPos;
    }
    std::size_t start = FPos;
    int base = 10;
    if (Peek() == '$') {
      base = 16;
      ++FPos;
      start = FPos;
    } else if (Peek() == '0' && FPos + 1 < FText.size() && (FText[FPos + 1] == 'x' || FText[FPos + 1] == 'X')) {
      base = 16;
      FPos += 2;
      start = FPos;
    }
    double value = 0;
    if (base == 16) {
      while (!AtEnd() && std::isxdigit(static_cast<unsigned char>(Peek()))) ++FPos;
      if (FPos == start || FPos - start > 16) Fail("bad hexadecimal number");
      value = static_cast<double>(std::strtoull(FText.substr(start, FPos - start).c_str(), nullptr, 16));
    } else {
      while (!AtEnd() && (std::isdigit(static_cast<unsigned char>(Peek())) || Peek() == '.' || Peek() == 'e' ||
                          Peek() == 'E' || ((Peek() == '-' || Peek() == '+') && (FText[FPos - 1] == 'e' || FText[FPos - 1] == 'E'))))
        ++FPos;
      std::string digits = FText.substr(start, FPos - start);
      char* end = nullptr;
      value = std::strtod(digits.c_str(), &end);
      if (digits.empty() || end != digits.c_str() + digits.size()) Fail("bad number \"" + digits + "\"");
    }
    return negative ? -value : value;
  }

  // 'text', '' inside for a quote, #nn character codes, parts joined directly or with +.
  std::u16string Text() {
    std::u16string out;
    for (;;) {
      SkipSpaces();
      char c = Peek();
      if (c == '\'') {
        ++FPos;
        std::string bytes;
        for (;;) {
          if (AtEnd() || Peek() == '\n') Fail("text not closed");
          if (Peek() == '\'') {
            if (FPos + 1 < FText.size() && FText[FPos + 1] == '\'') {
              bytes.push_back('\'');
              FPos += 2;
              continue;
            }
            ++FPos;
            break;
          }
          bytes.push_back(FText[FPos++]);
        }
        out += FromUtf8(bytes);
      } else if (c == '#') {
        ++FPos;
        std::size_t start = FPos;
        while (!AtEnd() && std::isdigit(static_cast<unsigned char>(Peek()))) ++FPos;
        if (FPos == start || FPos - start > 5) Fail("bad character code");
        unsigned long code = std::strtoul(FText.substr(start, FPos - start).c_str(), nullptr, 10);
        if (code > 0xFFFF) Fail("bad character code");
        out.push_back(static_cast<char16_t>(code));
      } else if (c == '+' && !out.empty()) {
        ++FPos;
        SkipBlank();
      } else {
        return out;
      }
    }
  }

  bool Dropped(const TClassEntry* entry, const std::string& property) const {
    std::string lower = Lower(property);
    for (const std::string& d : FOptions.DroppedProperties)
      if (Lower(d) == lower) return true;
    if (entry)
      for (const std::string& d : entry->Dropped)
        if (Lower(d) == lower) return true;
    return false;
  }

  void Apply(TFmxObject* object, const TClassEntry* entry, const std::string& property, const TStoredValue& value) {
    if (Dropped(entry, property)) return;
    const TPropertyTable& table = object->Properties();
    try {
      if (const TEventBinder* binder = table.FindEvent(property)) {
        if (value.Kind != TStoredValue::TKind::Identifier) Fail(property + " needs a handler name");
        auto it = FOptions.Handlers.find(value.Identifier);
        if (it == FOptions.Handlers.end()) Fail("no handler named " + value.Identifier + " for " + property);
        (*binder)(object, it->second);
        return;
      }
      if (const TStoredSetter* setter = table.FindStored(property)) {
        (*setter)(object, value);
        return;
      }
      if (const TFloatPropertyInfo* info = table.FindFloat(property)) {
        info->Set(object, StoredFloat(value, property));
        return;
      }
    } catch (const EStoredLayoutError&) {
      throw;
    } catch (const EToolkitError& e) {
      Fail(e.what());
    }
    Fail("unknown property " + property + " of " + object->ClassName());
  }

  const std::string& FText;
  const TStoredLayoutOptions& FOptions;
  std::size_t FPos = 0;
  int FLine = 1;
};

}  // namespace

void LoadStoredLayout(TFmxObject* root, const std::string& text, const TStoredLayoutOptions& options) {
  if (!root) throw EStoredLayoutError("Stored layout: no root object to load into");
  TLayoutParser parser(text, options);
  parser.Load(root);
}

}  // namespace qx
