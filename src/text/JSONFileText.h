#pragma once

// Text of a JSON file's bytes, read the way the platform's string list reads a file.

#include <string>
#include <string_view>

namespace qx {

enum class TJSONFileEncoding { Ansi, UTF8, UTF16LE, UTF16BE };

// By byte order mark (UTF-8, UTF-16 LE, UTF-16 BE), else as ANSI text.
std::u16string DecodeJSONFileText(std::string_view bytes);
// In the given encoding; that encoding's own byte order mark is skipped.
std::u16string DecodeJSONFileText(std::string_view bytes, TJSONFileEncoding encoding);

}  // namespace qx
