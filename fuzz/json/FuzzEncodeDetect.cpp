// The detector answers one of its codes for any bytes and any exclude mask.

#include <cstdlib>
#include <sstream>
#include <string>

#include "text/EncodeDetect.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qx;
  if (size == 0) return 0;
  const std::uint8_t exclude = data[0];
  const std::uint8_t* bytes = data + 1;
  const auto last = static_cast<std::int32_t>(size) - 2;
  const int code = DetectEncoding(bytes, last, exclude);
  if (code < kEncodeUnknown || code > kEncodeUTF7) std::abort();
  if (DetectEncoding(bytes, last, 0) != DetectEncoding(bytes, last)) std::abort();
  for (auto scorer : {ScoreShiftJIS, ScoreEUCJP, ScoreUTF8, ScoreUTF7}) {
    const TEncodeScore s = scorer(bytes, last, exclude);
    if (s.Score < 0 || s.Score > static_cast<std::int32_t>(size) * 2) std::abort();
  }
  std::istringstream stream(std::string(reinterpret_cast<const char*>(bytes), size - 1));
  const int fromStream = DetectEncoding(stream, static_cast<std::int64_t>(exclude) - 64, exclude);
  if (fromStream < kEncodeUnknown || fromStream > kEncodeUTF7) std::abort();
  return 0;
}
