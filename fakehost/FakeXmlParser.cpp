#include "fakehost/FakeXmlParser.h"

#include <optional>
#include <vector>

namespace qx {
namespace {

class TParser {
 public:
  explicit TParser(std::u16string_view text) : text_(text) {}

  ComPtr<TFakeXmlElement> Parse(std::string& error) {
    SkipMisc();
    if (!Peek(u"<")) return Fail(error, "no root element");
    auto root = Element();
    if (!root) return Fail(error, error_);
    SkipMisc();
    if (pos_ != text_.size()) return Fail(error, "text after the root element");
    return root;
  }

 private:
  ComPtr<TFakeXmlElement> Fail(std::string& error, std::string message) {
    error = message + " at " + std::to_string(pos_);
    return nullptr;
  }
  bool Peek(std::u16string_view s) const { return text_.substr(pos_, s.size()) == s; }
  bool AtEnd() const { return pos_ >= text_.size(); }
  static bool IsSpace(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }
  static bool IsNameChar(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_' ||
           c == u'-' || c == u'.' || c == u':' || c > 0x7F;
  }
  void SkipSpace() {
    while (!AtEnd() && IsSpace(text_[pos_])) ++pos_;
  }
  bool SkipPast(std::u16string_view end) {
    const auto found = text_.find(end, pos_);
    if (found == std::u16string_view::npos) return false;
    pos_ = found + end.size();
    return true;
  }
  // Declaration, comments, processing instructions and doctype between elements.
  bool SkipMisc() {
    for (;;) {
      SkipSpace();
      if (Peek(u"<?")) {
        if (!SkipPast(u"?>")) return false;
      } else if (Peek(u"<!--")) {
        if (!SkipPast(u"-->")) return false;
      } else if (Peek(u"<!DOCTYPE") || Peek(u"<!doctype")) {
        if (!SkipPast(u">")) return false;
      } else {
        return true;
      }
    }
  }
  std::optional<std::u16string> Name() {
    const auto start = pos_;
    while (!AtEnd() && IsNameChar(text_[pos_])) ++pos_;
    if (pos_ == start) return std::nullopt;
    return std::u16string(text_.substr(start, pos_ - start));
  }
  // Replaces references in raw text; false on an unknown or broken one.
  bool Decode(std::u16string_view raw, std::u16string& out) {
    for (std::size_t i = 0; i < raw.size(); ++i) {
      if (raw[i] != u'&') {
        out += raw[i];
        continue;
      }
      const auto semi = raw.find(u';', i);
      if (semi == std::u16string_view::npos) return false;
      const auto name = raw.substr(i + 1, semi - i - 1);
      if (name == u"lt") out += u'<';
      else if (name == u"gt") out += u'>';
      else if (name == u"amp") out += u'&';
      else if (name == u"quot") out += u'"';
      else if (name == u"apos") out += u'\'';
      else if (name.size() > 1 && name[0] == u'#') {
        const bool hex = name[1] == u'x' || name[1] == u'X';
        const auto digits = name.substr(hex ? 2 : 1);
        if (digits.empty() || digits.size() > 8) return false;
        std::uint32_t code = 0;
        for (const char16_t c : digits) {
          int d = -1;
          if (c >= u'0' && c <= u'9') d = c - u'0';
          else if (hex && c >= u'a' && c <= u'f') d = c - u'a' + 10;
          else if (hex && c >= u'A' && c <= u'F') d = c - u'A' + 10;
          if (d < 0) return false;
          code = code * (hex ? 16u : 10u) + static_cast<std::uint32_t>(d);
        }
        if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
        if (code < 0x10000) {
          out += static_cast<char16_t>(code);
        } else {
          code -= 0x10000;
          out += static_cast<char16_t>(0xD800 + (code >> 10));
          out += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
        }
      } else {
        return false;
      }
      i = semi;
    }
    return true;
  }
  ComPtr<TFakeXmlElement> Element() {
    // Iterative over the nesting, so deep input cannot exhaust the stack.
    std::vector<ComPtr<TFakeXmlElement>> open;
    ComPtr<TFakeXmlElement> root;
    for (;;) {
      if (AtEnd()) return Error("unexpected end");
      if (Peek(u"</")) {
        pos_ += 2;
        const auto name = Name();
        SkipSpace();
        if (!name || open.empty() || *name != open.back()->Name() || !Peek(u">")) return Error("bad end tag");
        ++pos_;
        open.pop_back();
        if (open.empty()) return root;
      } else if (Peek(u"<!--")) {
        if (!SkipPast(u"-->")) return Error("unterminated comment");
      } else if (Peek(u"<![CDATA[")) {
        pos_ += 9;
        const auto end = text_.find(u"]]>", pos_);
        if (end == std::u16string_view::npos || open.empty()) return Error("bad CDATA");
        open.back()->InnerText() += text_.substr(pos_, end - pos_);
        pos_ = end + 3;
      } else if (Peek(u"<?")) {
        if (!SkipPast(u"?>")) return Error("unterminated instruction");
      } else if (Peek(u"<")) {
        ++pos_;
        const auto name = Name();
        if (!name) return Error("bad element name");
        auto element = MakeCom<TFakeXmlElement>(*name);
        if (!Attributes(*element)) return Error("bad attribute");
        if (open.empty()) {
          if (root) return Error("second root");
          root = element;
        } else {
          open.back()->AddChild(element);
        }
        if (Peek(u"/>")) {
          pos_ += 2;
          if (open.empty()) return root;
        } else if (Peek(u">")) {
          ++pos_;
          open.push_back(element);
        } else {
          return Error("bad tag end");
        }
      } else {
        const auto end = text_.find(u'<', pos_);
        if (end == std::u16string_view::npos) return Error("unexpected end");
        std::u16string decoded;
        if (!Decode(text_.substr(pos_, end - pos_), decoded)) return Error("bad reference");
        if (!open.empty()) open.back()->InnerText() += decoded;
        pos_ = end;
      }
    }
  }
  bool Attributes(TFakeXmlElement& element) {
    for (;;) {
      const auto before = pos_;
      SkipSpace();
      if (Peek(u"/>") || Peek(u">")) return true;
      if (pos_ == before) return false;  // attributes are separated by space
      const auto name = Name();
      if (!name) return false;
      SkipSpace();
      if (!Peek(u"=")) return false;
      ++pos_;
      SkipSpace();
      if (AtEnd() || (text_[pos_] != u'"' && text_[pos_] != u'\'')) return false;
      const char16_t quote = text_[pos_++];
      const auto end = text_.find(quote, pos_);
      if (end == std::u16string_view::npos) return false;
      const auto raw = text_.substr(pos_, end - pos_);
      if (raw.find(u'<') != std::u16string_view::npos) return false;
      std::u16string value;
      if (!Decode(raw, value)) return false;
      if (element.Attribute(*name)) return false;  // duplicate
      element.SetAttribute(*name, value);
      pos_ = end + 1;
    }
  }
  ComPtr<TFakeXmlElement> Error(const char* message) {
    error_ = message;
    return nullptr;
  }

  std::u16string_view text_;
  std::size_t pos_ = 0;
  std::string error_;
};

}  // namespace

ComPtr<TFakeXmlElement> ParseFakeXml(std::u16string_view text, std::string* error) {
  std::string message;
  auto root = TParser(text).Parse(message);
  if (error) *error = message;
  return root;
}

}  // namespace qx
