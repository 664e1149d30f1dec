#pragma once

// Regular expressions for matching page addresses. The engine is a platform part: PCRE2
// on Linux, the standard library's on Windows. Ignore-case is the only option there is,
// and a match is searched for anywhere in the text: only the pattern itself anchors.

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qx {

// Raised when a pattern does not compile; the message names the pattern.
class ERegularExpressionError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class TRegEx {
 public:
  virtual ~TRegEx() = default;
  virtual bool IsMatch(std::u16string_view text) const = 0;
};

// Compiles with the platform's engine. Raises ERegularExpressionError.
std::unique_ptr<TRegEx> CompileRegEx(std::u16string_view pattern);

namespace regex_backend {
#ifndef _WIN32
std::unique_ptr<TRegEx> CompilePcre2(std::u16string_view pattern);
#endif
// Built everywhere, so that the two engines can be held against each other in tests.
std::unique_ptr<TRegEx> CompileStd(std::u16string_view pattern);
// The message of a failed compile.
std::string CompileErrorMessage(std::u16string_view pattern, std::string_view reason);
}  // namespace regex_backend

}  // namespace qx
