#pragma once

// Guesses the character encoding of bytes, Japanese encodings first in mind, and the
// charset of a percent-encoded query. Works on bytes only and keeps no state.

#include <cstdint>
#include <istream>
#include <string>
#include <string_view>

namespace qx {

// Results of the detector.
inline constexpr int kEncodeUnknown = -1;
inline constexpr int kEncodeShiftJIS = 0;
inline constexpr int kEncodeEUCJP = 1;
inline constexpr int kEncodeISO2022JP = 2;
inline constexpr int kEncodeUTF16LE = 3;  // by mark
inline constexpr int kEncodeUTF16BE = 4;  // by mark
inline constexpr int kEncodeUTF8 = 5;
inline constexpr int kEncodeUTF8BOM = 6;
inline constexpr int kEncodeUTF32LE = 7;  // by mark
inline constexpr int kEncodeUTF32BE = 8;  // by mark
inline constexpr int kEncodeUTF7 = 9;

// Exclude mask: each flag switches one test off.
inline constexpr std::uint8_t kExcludeShiftJIS = 1;
inline constexpr std::uint8_t kExcludeEUCJP = 2;
inline constexpr std::uint8_t kExcludeUTF8 = 4;
inline constexpr std::uint8_t kExcludeISO2022JP = 8;
inline constexpr std::uint8_t kExcludeBOM = 16;
inline constexpr std::uint8_t kExcludeUTF7 = 32;

struct TEncodeScore {
  std::int32_t Score = 0;
  bool Valid = true;
};

// Last is the index of the last byte; -1 or less is an empty buffer.
int DetectEncoding(const std::uint8_t* Data, std::int32_t Last, std::uint8_t Exclude = 0);
// Reads at most Limit bytes from the stream's start (the whole stream, up to 0x7FFFFFFF
// bytes, when Limit is 0 or less or above the size) and detects on them.
int DetectEncoding(std::istream& Stream, std::int64_t Limit, std::uint8_t Exclude = 0);

// The parts of the detector.
int DetectByteOrderMark(const std::uint8_t* Data, std::int32_t Last);
bool ScanISO2022JP(const std::uint8_t* Data, std::int32_t Last);
TEncodeScore ScoreShiftJIS(const std::uint8_t* Data, std::int32_t Last, std::uint8_t Exclude);
TEncodeScore ScoreEUCJP(const std::uint8_t* Data, std::int32_t Last, std::uint8_t Exclude);
TEncodeScore ScoreUTF8(const std::uint8_t* Data, std::int32_t Last, std::uint8_t Exclude);
TEncodeScore ScoreUTF7(const std::uint8_t* Data, std::int32_t Last, std::uint8_t Exclude);

// The query's UTF-8 bytes with each "%XX" replaced by its byte.
std::string PercentDecodeQuery(std::string_view Bytes);
// "SHIFT-JIS", "EUC-JP" or "UTF-8" (also the answer for anything else).
void DetectQueryCharset(const std::u16string& Text, std::u16string& Charset);

}  // namespace qx
