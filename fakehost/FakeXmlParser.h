#pragma once

#include <string>
#include <string_view>

#include "fakehost/FakeXmlElement.h"

namespace qx {

// Parses the XML the host's menus and widgets are written in: one root element with
// attributes (double or single quotes), nested and empty elements, text, the five named
// entities and numeric character references; the declaration, comments, processing
// instructions, CDATA and a doctype are skipped. Malformed input gives nil and a message.
ComPtr<TFakeXmlElement> ParseFakeXml(std::u16string_view text, std::string* error = nullptr);

}  // namespace qx
