#pragma once

// The system's default language as a Windows language id (1041 Japanese, 1033 English
// US, ...), from the process environment's locale.

#include <string_view>

namespace qx {

// defaultValue when the locale is unset, "C"/"POSIX", or not one this module knows.
int GetSystemDefaultLanguage(int defaultValue);
// The id of a locale name such as "ja_JP.UTF-8" or "en-GB"; defaultValue when unknown.
int LanguageIdOfLocaleName(std::string_view locale, int defaultValue);

}  // namespace qx
