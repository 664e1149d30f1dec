#include "text/JSONFileText.h"

#include "base/Text.h"

namespace qx {
namespace {

constexpr std::string_view kBomUtf8("\xEF\xBB\xBF", 3);
constexpr std::string_view kBomUtf16LE("\xFF\xFE", 2);
constexpr std::string_view kBomUtf16BE("\xFE\xFF", 2);

std::string_view BomOf(TJSONFileEncoding e) {
  switch (e) {
    case TJSONFileEncoding::UTF8:
      return kBomUtf8;
    case TJSONFileEncoding::UTF16LE:
      return kBomUtf16LE;
    case TJSONFileEncoding::UTF16BE:
      return kBomUtf16BE;
    case TJSONFileEncoding::Ansi:
      break;
  }
  return {};
}

std::u16string DecodeUtf16(std::string_view bytes, bool bigEndian) {
  std::u16string out;
  out.resize(bytes.size() / 2);  // an odd last byte is no character
  for (std::size_t i = 0; i < out.size(); ++i) {
    const auto b0 = static_cast<unsigned char>(bytes[2 * i]);
    const auto b1 = static_cast<unsigned char>(bytes[2 * i + 1]);
    out[i] = static_cast<char16_t>(bigEndian ? (b0 << 8 | b1) : (b1 << 8 | b0));
  }
  return out;
}

// ANSI bytes widen to the same code points, as the base's ANSI conversion does.
std::u16string DecodeAnsi(std::string_view bytes) {
  std::u16string out(bytes.size(), u'\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) out[i] = static_cast<unsigned char>(bytes[i]);
  return out;
}

}  // namespace

std::u16string DecodeJSONFileText(std::string_view bytes, TJSONFileEncoding encoding) {
  const std::string_view bom = BomOf(encoding);
  if (!bom.empty() && bytes.substr(0, bom.size()) == bom) bytes.remove_prefix(bom.size());
  switch (encoding) {
    case TJSONFileEncoding::UTF8:
      return FromUtf8(bytes);
    case TJSONFileEncoding::UTF16LE:
      return DecodeUtf16(bytes, false);
    case TJSONFileEncoding::UTF16BE:
      return DecodeUtf16(bytes, true);
    case TJSONFileEncoding::Ansi:
      break;
  }
  return DecodeAnsi(bytes);
}

std::u16string DecodeJSONFileText(std::string_view bytes) {
  for (TJSONFileEncoding e :
       {TJSONFileEncoding::UTF8, TJSONFileEncoding::UTF16LE, TJSONFileEncoding::UTF16BE}) {
    if (bytes.substr(0, BomOf(e).size()) == BomOf(e)) return DecodeJSONFileText(bytes, e);
  }
  return DecodeAnsi(bytes);
}

}  // namespace qx
