// Regular expressions through PCRE2's 16-bit library, which takes our UTF-16 text as it is.

#ifndef _WIN32

#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

#include "toolkit/RegularExpression.h"

namespace qx {
namespace {

class TPcre2RegEx final : public TRegEx {
 public:
  explicit TPcre2RegEx(pcre2_code* code)
      : FCode(code), FMatchData(pcre2_match_data_create_from_pattern(code, nullptr)) {}
  ~TPcre2RegEx() override {
    pcre2_match_data_free(FMatchData);
    pcre2_code_free(FCode);
  }
  TPcre2RegEx(const TPcre2RegEx&) = delete;
  TPcre2RegEx& operator=(const TPcre2RegEx&) = delete;

  bool IsMatch(std::u16string_view text) const override {
    const auto* subject = reinterpret_cast<PCRE2_SPTR>(text.data());
    return pcre2_match(FCode, subject, text.size(), 0, 0, FMatchData, nullptr) >= 0;
  }

 private:
  pcre2_code* FCode;
  pcre2_match_data* FMatchData;
};

}  // namespace

namespace regex_backend {

std::unique_ptr<TRegEx> CompilePcre2(std::u16string_view pattern) {
  int errorCode = 0;
  PCRE2_SIZE errorOffset = 0;
  // Addresses may carry stray surrogates; they must not make a match fail outright.
  const std::uint32_t options = PCRE2_CASELESS | PCRE2_UTF | PCRE2_MATCH_INVALID_UTF;
  pcre2_code* code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(), options,
                                   &errorCode, &errorOffset, nullptr);
  if (!code) {
    PCRE2_UCHAR buffer[256];
    const int length = pcre2_get_error_message(errorCode, buffer, sizeof buffer / sizeof buffer[0]);
    std::string reason;
    for (int i = 0; i < length; ++i) reason += buffer[i] < 0x80 ? static_cast<char>(buffer[i]) : '?';
    throw ERegularExpressionError(CompileErrorMessage(pattern, reason));
  }
  return std::make_unique<TPcre2RegEx>(code);
}

}  // namespace regex_backend

std::unique_ptr<TRegEx> CompileRegEx(std::u16string_view pattern) {
  return regex_backend::CompilePcre2(pattern);
}

}  // namespace qx

#endif
