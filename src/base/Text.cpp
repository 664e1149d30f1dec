#include "base/Text.h"

#include <algorithm>
#include <limits>

namespace qx {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

void AppendUtf16(std::u16string& out, char32_t cp) {
  if (cp < 0x10000) {
    out += static_cast<char16_t>(cp);
  } else {
    cp -= 0x10000;
    out += static_cast<char16_t>(0xD800 + (cp >> 10));
    out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
  }
}

char16_t UpperAscii(char16_t c) { return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c; }
char16_t LowerAscii(char16_t c) { return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c; }

}  // namespace

std::string ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
      AppendUtf8(out, 0x10000 + ((char32_t(c) - 0xD800) << 10) + (char32_t(text[i + 1]) - 0xDC00));
      ++i;
    } else if (c >= 0xD800 && c <= 0xDFFF) {
      AppendUtf8(out, kReplacement);
    } else {
      AppendUtf8(out, c);
    }
  }
  return out;
}

std::u16string FromUtf8(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    const auto b0 = static_cast<unsigned char>(text[i]);
    int extra = 0;
    char32_t cp = 0;
    char32_t min = 0;
    if (b0 < 0x80) {
      out += static_cast<char16_t>(b0);
      ++i;
      continue;
    } else if ((b0 & 0xE0) == 0xC0) {
      extra = 1, cp = b0 & 0x1F, min = 0x80;
    } else if ((b0 & 0xF0) == 0xE0) {
      extra = 2, cp = b0 & 0x0F, min = 0x800;
    } else if ((b0 & 0xF8) == 0xF0) {
      extra = 3, cp = b0 & 0x07, min = 0x10000;
    } else {
      out += static_cast<char16_t>(kReplacement);
      ++i;
      continue;
    }
    std::size_t j = i + 1;
    bool ok = true;
    for (int k = 0; k < extra; ++k, ++j) {
      if (j >= text.size() || (static_cast<unsigned char>(text[j]) & 0xC0) != 0x80) {
        ok = false;
        break;
      }
      cp = (cp << 6) | (static_cast<unsigned char>(text[j]) & 0x3F);
    }
    if (!ok || cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
      out += static_cast<char16_t>(kReplacement);
      i = ok ? j : std::max(j, i + 1);
      continue;
    }
    AppendUtf16(out, cp);
    i = j;
  }
  return out;
}

std::u16string FromAnsi(const char* text) {
  if (!text) return {};
  std::u16string out;
  for (; *text; ++text) out += static_cast<char16_t>(static_cast<unsigned char>(*text));
  return out;
}

std::u16string FromAscii(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (char c : text) out += static_cast<char16_t>(static_cast<unsigned char>(c));
  return out;
}

int CompareText(std::u16string_view a, std::u16string_view b) {
  const std::size_t n = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < n; ++i) {
    const char16_t ca = UpperAscii(a[i]), cb = UpperAscii(b[i]);
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

bool SameText(std::u16string_view a, std::u16string_view b) {
  return a.size() == b.size() && CompareText(a, b) == 0;
}

std::u16string UpperCase(std::u16string_view text) {
  std::u16string out(text);
  std::transform(out.begin(), out.end(), out.begin(), UpperAscii);
  return out;
}

std::u16string LowerCase(std::u16string_view text) {
  std::u16string out(text);
  std::transform(out.begin(), out.end(), out.begin(), LowerAscii);
  return out;
}

std::u16string Trim(std::u16string_view text) {
  std::size_t first = 0, last = text.size();
  while (first < last && text[first] <= u' ') ++first;
  while (last > first && text[last - 1] <= u' ') --last;
  return std::u16string(text.substr(first, last - first));
}

std::u16string IntToStr(std::int64_t value) { return FromAscii(std::to_string(value)); }

std::optional<std::int64_t> TryStrToInt(std::u16string_view text) {
  if (text.empty()) return std::nullopt;
  std::size_t i = 0;
  bool negative = false;
  if (text[0] == u'-' || text[0] == u'+') {
    negative = text[0] == u'-';
    ++i;
  }
  int base = 10;
  if (i < text.size() && text[i] == u'$') {
    base = 16, ++i;
  } else if (i + 1 < text.size() && text[i] == u'0' && (text[i + 1] == u'x' || text[i + 1] == u'X')) {
    base = 16, i += 2;
  }
  if (i >= text.size()) return std::nullopt;
  std::uint64_t value = 0;
  const std::uint64_t limit = negative ? std::uint64_t{1} << 63 : (std::uint64_t{1} << 63) - 1;
  for (; i < text.size(); ++i) {
    const char16_t c = text[i];
    int digit;
    if (c >= u'0' && c <= u'9') digit = c - u'0';
    else if (base == 16 && c >= u'a' && c <= u'f') digit = c - u'a' + 10;
    else if (base == 16 && c >= u'A' && c <= u'F') digit = c - u'A' + 10;
    else return std::nullopt;
    if (value > (limit - static_cast<std::uint64_t>(digit)) / static_cast<std::uint64_t>(base)) return std::nullopt;
    value = value * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(digit);
  }
  if (negative) return value == (std::uint64_t{1} << 63) ? std::numeric_limits<std::int64_t>::min()
                                                         : -static_cast<std::int64_t>(value);
  return static_cast<std::int64_t>(value);
}

std::int64_t StrToIntDef(std::u16string_view text, std::int64_t fallback) {
  return TryStrToInt(text).value_or(fallback);
}

bool StartsText(std::u16string_view prefix, std::u16string_view text) {
  return text.size() >= prefix.size() && SameText(text.substr(0, prefix.size()), prefix);
}

}  // namespace qx
