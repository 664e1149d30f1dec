// Any query text gives one of the three charset names.

#include <cstdlib>
#include <string_view>

#include "FuzzInput.h"
#include "text/EncodeDetect.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qx;
  const std::string_view raw(reinterpret_cast<const char*>(data), size);
  if (PercentDecodeQuery(raw).size() > raw.size()) std::abort();
  std::u16string charset;
  DetectQueryCharset(fuzz::TextOf(data, size), charset);
  if (charset != u"UTF-8" && charset != u"SHIFT-JIS" && charset != u"EUC-JP") std::abort();
  return 0;
}
