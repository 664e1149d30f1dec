#include "text/EncodeDetect.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "base/Text.h"

namespace qx {
namespace {

constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;

// Skips bytes below 128 eight at a time; they are single characters to every scorer
// except UTF-7, which has its own table.
inline std::int64_t SkipAscii(const std::uint8_t* d, std::int64_t i, std::int64_t n) {
  while (i + 8 <= n) {
    std::uint64_t w;
    std::memcpy(&w, d + i, 8);
    if (w & kHighBits) break;
    i += 8;
  }
  while (i < n && d[i] < 0x80) ++i;
  return i;
}

bool InRange(std::uint8_t b, int lo, int hi) { return b >= lo && b <= hi; }

// UTF-7 byte classes outside base-64 state.
enum : std::uint8_t { kDirect = 0, kForbidden = 1, kShiftIn = 2 };
// Lead byte classes of the Japanese scorers.
enum : std::uint8_t { kSingle, kKana, kPair, kKanaPair, kTriple, kInvalid };

struct TTables {
  std::uint8_t Utf7Direct[256];
  bool Base64[256];
  std::uint8_t SjisLead[256];
  bool SjisTrail[256];
  std::uint8_t EucLead[256];
  constexpr TTables() : Utf7Direct{}, Base64{}, SjisLead{}, SjisTrail{}, EucLead{} {
    for (int b = 0; b < 256; ++b) {
      const bool forbidden = b >= 128 || (b >= 33 && b <= 38) || b == 42 || (b >= 59 && b <= 62) || b == 64 ||
                             (b >= 91 && b <= 96) || (b >= 123 && b <= 126);
      Utf7Direct[b] = b == '+' ? kShiftIn : forbidden ? kForbidden : kDirect;
      Base64[b] =
          (b >= 'A' && b <= 'Z') || (b >= 'a' && b <= 'z') || (b >= '0' && b <= '9') || b == '+' || b == '/';
      SjisLead[b] = b < 128                                              ? kSingle
                    : (b >= 161 && b <= 223)                             ? kKana
                    : ((b >= 129 && b <= 159) || (b >= 224 && b <= 252)) ? kPair
                                                                         : kInvalid;
      SjisTrail[b] = (b >= 64 && b <= 126) || (b >= 128 && b <= 252);
      EucLead[b] = b < 128                  ? kSingle
                   : (b >= 161 && b <= 254) ? kPair
                   : b == 142               ? kKanaPair
                   : b == 143               ? kTriple
                                            : kInvalid;
    }
  }
};

constexpr TTables kTables;

bool HasEscapeOrHighByte(std::uint64_t w) {
  // A byte equal to 0x1B, found with the usual zero-byte test on w ^ 0x1B..1B.
  const std::uint64_t x = w ^ 0x1B1B1B1B1B1B1B1BULL;
  const bool hasEsc = ((x - 0x0101010101010101ULL) & ~x & kHighBits) != 0;
  return hasEsc || (w & kHighBits) != 0;
}

}  // namespace

int DetectByteOrderMark(const std::uint8_t* d, std::int32_t Last) {
  const std::int64_t len = static_cast<std::int64_t>(Last) + 1;
  if (len >= 4) {
    if (d[0] == 0xFF && d[1] == 0xFE && d[2] == 0x00 && d[3] == 0x00) return kEncodeUTF32LE;
    if (d[0] == 0x00 && d[1] == 0x00 && d[2] == 0xFE && d[3] == 0xFF) return kEncodeUTF32BE;
  }
  if (len >= 2) {
    if (d[0] == 0xFF && d[1] == 0xFE) return kEncodeUTF16LE;
    if (d[0] == 0xFE && d[1] == 0xFF) return kEncodeUTF16BE;
  }
  if (len >= 3 && d[0] == 0xEF && d[1] == 0xBB && d[2] == 0xBF) return kEncodeUTF8BOM;
  return kEncodeUnknown;
}

bool ScanISO2022JP(const std::uint8_t* d, std::int32_t Last) {
  const std::int64_t n = static_cast<std::int64_t>(Last) + 1;
  std::int64_t i = 0;
  while (i < n) {
    while (i + 8 <= n) {
      std::uint64_t w;
      std::memcpy(&w, d + i, 8);
      if (HasEscapeOrHighByte(w)) break;
      i += 8;
    }
    if (i >= n) break;
    const std::uint8_t b = d[i];
    if (b > 127) return false;
    if (b == 0x1B) {
      const std::int64_t follow = n - 1 - i;
      const std::uint8_t b1 = follow >= 1 ? d[i + 1] : 0;
      const std::uint8_t b2 = follow >= 2 ? d[i + 2] : 0;
      if (follow >= 2) {
        if (b1 == 0x28 && (b2 == 0x42 || b2 == 0x4A || b2 == 0x49)) return true;
        if (b1 == 0x24 && (b2 == 0x40 || b2 == 0x42)) return true;
      }
      if (follow >= 3 && b1 == 0x24 && b2 == 0x28 && d[i + 3] == 0x44) return true;
      if (follow >= 5 && b1 == 0x26 && b2 == 0x40 && d[i + 3] == 0x1B && d[i + 4] == 0x24 &&
          d[i + 5] == 0x42) {
        return true;
      }
    }
    ++i;
  }
  return false;
}

TEncodeScore ScoreShiftJIS(const std::uint8_t* d, std::int32_t Last, std::uint8_t Exclude) {
  TEncodeScore s;
  if (Exclude & kExcludeShiftJIS) return TEncodeScore{0, false};
  const std::int64_t n = static_cast<std::int64_t>(Last) + 1;
  std::int64_t i = 0;
  while (i < n) {
    const std::uint8_t b = d[i];
    switch (kTables.SjisLead[b]) {
      case kSingle:
        i = SkipAscii(d, i + 1, n);
        continue;
      case kKana:
        ++i;
        continue;  // half-width katakana
      case kInvalid:
        return s.Valid = false, s;
      default:
        break;
    }
    if (i + 1 >= n) break;  // a pair cut off by the end
    if (!kTables.SjisTrail[d[i + 1]]) return s.Valid = false, s;
    s.Score += 2;
    i += 2;
  }
  return s;
}

TEncodeScore ScoreEUCJP(const std::uint8_t* d, std::int32_t Last, std::uint8_t Exclude) {
  TEncodeScore s;
  if (Exclude & kExcludeEUCJP) return TEncodeScore{0, false};
  const std::int64_t n = static_cast<std::int64_t>(Last) + 1;
  std::int64_t i = 0;
  while (i < n) {
    const std::uint8_t b = d[i];
    switch (kTables.EucLead[b]) {
      case kSingle:
        i = SkipAscii(d, i + 1, n);
        continue;
      case kInvalid:
        return s.Valid = false, s;
      case kPair:
        if (i + 1 >= n) return s;
        if (!InRange(d[i + 1], 161, 254)) return s.Valid = false, s;
        break;
      case kKanaPair:  // 142: half-width katakana
        if (i + 1 >= n) return s;
        if (!InRange(d[i + 1], 161, 223)) return s.Valid = false, s;
        break;
      default:  // 143: three bytes
        if (i + 2 >= n) return s;
        if (!InRange(d[i + 1], 161, 254) || !InRange(d[i + 2], 161, 254)) return s.Valid = false, s;
        s.Score += 3;
        i += 3;
        continue;
    }
    s.Score += 2;
    i += 2;
  }
  return s;
}

TEncodeScore ScoreUTF8(const std::uint8_t* d, std::int32_t Last, std::uint8_t Exclude) {
  TEncodeScore s;
  if (Exclude & kExcludeUTF8) return TEncodeScore{0, false};
  const std::int64_t n = static_cast<std::int64_t>(Last) + 1;
  std::int64_t i = 0;
  while (i < n) {
    const std::uint8_t b = d[i];
    if (b < 0x80) {
      i = SkipAscii(d, i + 1, n);
      continue;
    }
    int extra;
    if (InRange(b, 192, 223))
      extra = 1;
    else if (InRange(b, 224, 239))
      extra = 2;
    else if (InRange(b, 240, 247))
      extra = 3;
    else
      return s.Valid = false, s;
    if (i + extra >= n) break;  // cut off by the end: neither counted nor broken
    for (int k = 1; k <= extra; ++k) {
      if ((d[i + k] & 0xC0) != 0x80) return s.Valid = false, s;
    }
    s.Score += extra + 1;
    i += extra + 1;
  }
  return s;
}

TEncodeScore ScoreUTF7(const std::uint8_t* d, std::int32_t Last, std::uint8_t Exclude) {
  TEncodeScore s;
  if (Exclude & kExcludeUTF7) return TEncodeScore{0, false};
  const std::int64_t n = static_cast<std::int64_t>(Last) + 1;
  bool base64 = false;
  std::int64_t i = 0;
  while (i < n) {
    if (!base64) {
      // Eight plain bytes at a time: any byte that is not plain shows in the OR.
      while (i + 8 <= n &&
             (kTables.Utf7Direct[d[i]] | kTables.Utf7Direct[d[i + 1]] | kTables.Utf7Direct[d[i + 2]] |
              kTables.Utf7Direct[d[i + 3]] | kTables.Utf7Direct[d[i + 4]] | kTables.Utf7Direct[d[i + 5]] |
              kTables.Utf7Direct[d[i + 6]] | kTables.Utf7Direct[d[i + 7]]) == kDirect) {
        i += 8;
      }
      if (i >= n) break;
    }
    const std::uint8_t b = d[i++];
    if (base64) {
      if (b == '-')
        base64 = false;
      else if (kTables.Base64[b])
        s.Score += 2;
      else
        return s.Valid = false, s;
    } else {
      switch (kTables.Utf7Direct[b]) {
        case kShiftIn:
          base64 = true;
          break;
        case kForbidden:
          return s.Valid = false, s;
        default:
          break;
      }
    }
  }
  return s;
}

int DetectEncoding(const std::uint8_t* Data, std::int32_t Last, std::uint8_t Exclude) {
  if (static_cast<std::int64_t>(Last) + 1 <= 0 || !Data) return kEncodeUnknown;
  if (!(Exclude & kExcludeBOM)) {
    const int bom = DetectByteOrderMark(Data, Last);
    if (bom != kEncodeUnknown) return bom;
  }
  if (!(Exclude & kExcludeISO2022JP) && ScanISO2022JP(Data, Last)) return kEncodeISO2022JP;
  const TEncodeScore sjis = ScoreShiftJIS(Data, Last, Exclude);
  const TEncodeScore euc = ScoreEUCJP(Data, Last, Exclude);
  const TEncodeScore utf8 = ScoreUTF8(Data, Last, Exclude);
  const TEncodeScore utf7 = ScoreUTF7(Data, Last, Exclude);
  // The first test sets the result; the later ones only fill an empty one.
  int result = kEncodeUnknown;
  if (euc.Score > sjis.Score && euc.Score > utf8.Score && euc.Score > utf7.Score && euc.Valid)
    result = kEncodeEUCJP;
  if (sjis.Score > euc.Score && sjis.Score > utf8.Score && sjis.Score > utf7.Score && sjis.Valid &&
      result == kEncodeUnknown) {
    result = kEncodeShiftJIS;
  }
  if (utf8.Score > euc.Score && utf8.Score > sjis.Score && utf8.Score > utf7.Score && utf8.Valid &&
      result == kEncodeUnknown) {
    result = kEncodeUTF8;
  }
  if (utf7.Score > euc.Score && utf7.Score > sjis.Score && utf7.Score > utf8.Score && utf7.Valid &&
      result == kEncodeUnknown) {
    result = kEncodeUTF7;
  }
  return result;
}

int DetectEncoding(std::istream& Stream, std::int64_t Limit, std::uint8_t Exclude) {
  Stream.clear();
  Stream.seekg(0, std::ios::end);
  const std::streamoff size = Stream.tellg();
  if (!Stream || size <= 0) return kEncodeUnknown;
  constexpr std::int64_t kMaxRead = 0x7FFFFFFF;
  const std::int64_t count = (Limit > 0 && Limit <= size) ? Limit : std::min<std::int64_t>(size, kMaxRead);
  Stream.seekg(0, std::ios::beg);
  std::vector<std::uint8_t> buffer(static_cast<std::size_t>(count));
  Stream.read(reinterpret_cast<char*>(buffer.data()), static_cast<std::streamsize>(count));
  const std::int64_t got = Stream.gcount();
  return DetectEncoding(buffer.data(), static_cast<std::int32_t>(got - 1), Exclude);
}

std::string PercentDecodeQuery(std::string_view Bytes) {
  std::string out;
  out.reserve(Bytes.size());
  std::size_t i = 0;
  while (i < Bytes.size()) {
    if (Bytes[i] != '%') {
      out += Bytes[i++];
      continue;
    }
    if (i + 2 >= Bytes.size()) {
      // A "%" in the last two places ends the decoding; the rest stays as it is.
      out.append(Bytes.substr(i));
      break;
    }
    // Up to two hexadecimal digits of the two bytes that follow, leading blanks skipped.
    std::size_t k = i + 1;
    const std::size_t end = i + 3;
    while (k < end && Bytes[k] == ' ') ++k;
    unsigned value = 0;
    for (; k < end; ++k) {
      const char c = Bytes[k];
      unsigned digit;
      if (c >= '0' && c <= '9')
        digit = static_cast<unsigned>(c - '0');
      else if (c >= 'a' && c <= 'f')
        digit = static_cast<unsigned>(c - 'a' + 10);
      else if (c >= 'A' && c <= 'F')
        digit = static_cast<unsigned>(c - 'A' + 10);
      else
        break;
      value = value * 16 + digit;
    }
    out += static_cast<char>(value);
    i = end;
  }
  return out;
}

void DetectQueryCharset(const std::u16string& Text, std::u16string& Charset) {
  Charset = u"UTF-8";
  const std::string bytes = PercentDecodeQuery(ToUtf8(Text));
  if (bytes.empty()) return;
  const std::int32_t last = static_cast<std::int32_t>(std::min<std::size_t>(bytes.size(), 1024) - 1);
  switch (DetectEncoding(reinterpret_cast<const std::uint8_t*>(bytes.data()), last, 0)) {
    case kEncodeShiftJIS:
      Charset = u"SHIFT-JIS";
      break;
    case kEncodeEUCJP:
      Charset = u"EUC-JP";
      break;
    default:
      break;  // UTF-8, and the default for anything else
  }
}

}  // namespace qx
