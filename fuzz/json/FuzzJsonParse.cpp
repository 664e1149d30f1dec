// Any text gives a value or a parse error with its location, nothing else.

#include <cstdlib>
#include <string_view>

#include "FuzzInput.h"
#include "text/JSONLibrary.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qx;
  const std::u16string text = fuzz::TextOf(data, size);
  std::u16string message;
  ComPtr<IJSONValue> value;
  if (TJSONParser::ParseJSONText(text, message, value)) {
    if (!value || !message.empty() || !(value->IsObject() || value->IsArray())) std::abort();
  } else if (value || message.rfind(u"Error at line ", 0) != 0) {
    std::abort();
  }
  // The file path: bytes decoded by their byte order mark, then parsed.
  const std::u16string decoded =
      DecodeJSONFileText(std::string_view(reinterpret_cast<const char*>(data), size));
  TJSONParser::ParseJSONText(decoded, message, value);
  // Scalars through the factories of a parse context.
  TJSONParseContext context(text);
  while (context.Current() < context.DataLen()) {
    try {
      if (!context.ParseJSONValue(value)) context.GetChar();
    } catch (const EJsonParseError&) {
      context.GetChar();
    }
  }
  return 0;
}
