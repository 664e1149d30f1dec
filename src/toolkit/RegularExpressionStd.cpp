// Regular expressions through std::wregex (ECMAScript grammar): the Windows build's
// engine. It builds everywhere; where wchar_t is 32 bits wide the text is widened from
// UTF-16 first.

#include <regex>

#include "toolkit/RegularExpression.h"

namespace qx {
namespace {

std::wstring ToWide(std::u16string_view text) {
  std::wstring wide;
  wide.reserve(text.size());
  if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
    for (char16_t c : text) wide += static_cast<wchar_t>(c);
  } else {
    for (std::size_t i = 0; i < text.size(); ++i) {
      const char32_t c = text[i];
      const bool pair =
          c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
      if (pair) {
        wide += static_cast<wchar_t>(0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00));
        ++i;
      } else {
        wide += static_cast<wchar_t>(c);
      }
    }
  }
  return wide;
}

class TStdRegEx final : public TRegEx {
 public:
  explicit TStdRegEx(std::wregex regex) : FRegex(std::move(regex)) {}
  bool IsMatch(std::u16string_view text) const override { return std::regex_search(ToWide(text), FRegex); }

 private:
  std::wregex FRegex;
};

}  // namespace

namespace regex_backend {

std::string CompileErrorMessage(std::u16string_view pattern, std::string_view reason) {
  std::string text = "Invalid regular expression \"";
  for (char16_t c : pattern) text += c < 0x80 ? static_cast<char>(c) : '?';
  text += "\": ";
  text += reason;
  return text;
}

std::unique_ptr<TRegEx> CompileStd(std::u16string_view pattern) {
  try {
    return std::make_unique<TStdRegEx>(
        std::wregex(ToWide(pattern), std::regex_constants::ECMAScript | std::regex_constants::icase));
  } catch (const std::regex_error& error) {
    throw ERegularExpressionError(CompileErrorMessage(pattern, error.what()));
  }
}

}  // namespace regex_backend

#ifdef _WIN32
std::unique_ptr<TRegEx> CompileRegEx(std::u16string_view pattern) {
  return regex_backend::CompileStd(pattern);
}
#endif

}  // namespace qx
