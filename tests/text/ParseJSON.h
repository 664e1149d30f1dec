#pragma once

#include <string_view>

#include "text/JSONLibrary.h"

namespace qx::test {

// The tree of a JSON text; a parse error is thrown as it comes.
inline ComPtr<IJSONValue> Parse(std::u16string_view text) {
  ComPtr<IJSONValue> value;
  TJSONParser::ParseJSONText(text, value);
  return value;
}

}  // namespace qx::test
