#include "smartsearch/SearchEncoding.h"

#include "base/Text.h"

namespace qx {
namespace {

struct TCharSetNumber {
  std::u16string_view Name;
  std::int32_t Number;
};

// "URL_ENCODE" goes to the host with Shift JIS's number: the host treats the two alike.
constexpr TCharSetNumber kCharSets[] = {
    {u"EUC_JP", kSearchEncodeEucJp},        {u"EUC-JP", kSearchEncodeEucJp},
    {u"EUC", kSearchEncodeEucJp},           {u"UTF-8", kSearchEncodeUtf8},
    {u"UTF_8", kSearchEncodeUtf8},          {u"UTF8", kSearchEncodeUtf8},
    {u"SHIFT_JIS", kSearchEncodeShiftJis},  {u"SHIFT-JIS", kSearchEncodeShiftJis},
    {u"URL_ENCODE", kSearchEncodeShiftJis},
};

}  // namespace

std::int32_t SearchEncodeOfCharSet(std::u16string_view charSet) {
  const TString name = Trim(charSet);
  for (const auto& entry : kCharSets) {
    if (SameText(name, entry.Name)) return entry.Number;
  }
  return kSearchEncodeUtf8;
}

}  // namespace qx
