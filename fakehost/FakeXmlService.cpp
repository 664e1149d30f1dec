#include "fakehost/FakeXmlService.h"

#include "fakehost/FakeCom.h"
#include "fakehost/FakeXmlParser.h"

namespace qx {

HResult QX_STDCALL TFakeXmlService::Parse(Text text, IQxIXmlElement** element) {
  if (!element) return kInvalidArg;
  *element = nullptr;
  if (!text) return kInvalidArg;
  return HandOut(ParseFakeXml(text), element);
}

}  // namespace qx
