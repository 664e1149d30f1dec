#include "text/JSONNumberText.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace qx {

std::u16string JSONFloatToStr(long double result) {
  if (std::isnan(result)) return u"NAN";
  if (std::isinf(result)) return result < 0 ? u"-INF" : u"INF";
  if (result == 0) return u"0";  // negative zero too
  char buf[64];
  const auto res = std::to_chars(buf, buf + sizeof buf, result, std::chars_format::general, 15);
  std::u16string out;
  out.reserve(static_cast<std::size_t>(res.ptr - buf));
  // "1e+20" is written "1E20", "1.5e-07" is written "1.5E-7".
  for (const char* p = buf; p < res.ptr; ++p) {
    if (*p != 'e') {
      out += static_cast<char16_t>(*p);
      continue;
    }
    out += u'E';
    ++p;
    if (p < res.ptr && *p == '-') out += u'-';
    if (p < res.ptr && (*p == '-' || *p == '+')) ++p;
    while (p + 1 < res.ptr && *p == '0') ++p;
    for (; p < res.ptr; ++p) out += static_cast<char16_t>(*p);
    break;
  }
  return out;
}

namespace {

// Decimal exponent of the first significant digit, to tell underflow from overflow.
// Saturates instead of overflowing on absurd exponents.
long long LeadingExponent(std::string_view text) {
  std::size_t i = 0;
  if (i < text.size() && text[i] == '-') ++i;
  long long intDigits = 0;
  bool seenNonZero = false;
  long long leadingFractionZeros = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    if (text[i] != '0') seenNonZero = true;
    if (seenNonZero) ++intDigits;
  }
  if (i < text.size() && text[i] == '.') {
    for (++i; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
      if (!seenNonZero && text[i] == '0')
        ++leadingFractionZeros;
      else
        seenNonZero = true;
    }
  }
  long long exp = 0;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
      if (exp < 1000000000LL) exp = exp * 10 + (text[i] - '0');
    }
    if (negative) exp = -exp;
  }
  return intDigits > 0 ? exp + intDigits : exp - leadingFractionZeros;
}

}  // namespace

bool JSONTryStrToFloat(std::string_view text, long double& result) {
  long double value = 0;
  const auto res = std::from_chars(text.data(), text.data() + text.size(), value);
  if (res.ptr != text.data() + text.size()) return false;
  if (res.ec == std::errc::result_out_of_range) {
    if (LeadingExponent(text) > 0) return false;
    value = (!text.empty() && text[0] == '-') ? -0.0L : 0.0L;
  } else if (res.ec != std::errc()) {
    return false;
  }
  result = value;
  return true;
}

bool JSONTryStrToInt64(std::string_view text, std::int64_t& result) {
  std::int64_t value = 0;
  const auto res = std::from_chars(text.data(), text.data() + text.size(), value);
  if (res.ec != std::errc() || res.ptr != text.data() + text.size()) return false;
  result = value;
  return true;
}

}  // namespace qx
