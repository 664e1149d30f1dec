#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>

#include "text/EncodeDetect.h"
#include "text/JapaneseSamples.h"

namespace qx {
namespace {

int Detect(std::string_view bytes, std::uint8_t exclude = 0) {
  return DetectEncoding(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                        static_cast<std::int32_t>(bytes.size()) - 1, exclude);
}

TEncodeScore Score(TEncodeScore (*scorer)(const std::uint8_t*, std::int32_t, std::uint8_t),
                   std::string_view bytes) {
  return scorer(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                static_cast<std::int32_t>(bytes.size()) - 1, 0);
}

using namespace std::string_view_literals;

TEST(EncodeDetectMarks, ByteOrderMarksAndEmptyBuffers) {
  EXPECT_EQ(Detect("\xFF\xFE\x00\x00"sv), kEncodeUTF32LE);  // UTF-32, not UTF-16
  EXPECT_EQ(Detect("\x00\x00\xFE\xFF"sv), kEncodeUTF32BE);
  EXPECT_EQ(Detect("\xFF\xFE\x41\x00"sv), kEncodeUTF16LE);
  EXPECT_EQ(Detect("\xFF\xFE"sv), kEncodeUTF16LE);
  EXPECT_EQ(Detect("\xFE\xFF\x00\x41"sv), kEncodeUTF16BE);
  EXPECT_EQ(Detect("\xEF\xBB\xBF"sv), kEncodeUTF8BOM);
  EXPECT_EQ(Detect("\xEF\xBB\xBF"
                   "abc"sv),
            kEncodeUTF8BOM);
  // Two bytes of the UTF-8 mark are no mark; they score as a Shift-JIS and an EUC-JP pair.
  EXPECT_EQ(Detect("\xEF\xBB"sv), kEncodeUnknown);
  EXPECT_EQ(Detect("\xFF\xFE\x41\x00"sv, kExcludeBOM), kEncodeUnknown);
  EXPECT_EQ(Detect("\xEF\xBB\xBF\xE3\x81\x82"sv, kExcludeBOM), kEncodeUTF8);

  EXPECT_EQ(Detect(""), kEncodeUnknown);
  EXPECT_EQ(DetectEncoding(nullptr, -5, 0), kEncodeUnknown);
  const std::uint8_t byte = 0xFF;
  EXPECT_EQ(DetectEncoding(&byte, -1, 0), kEncodeUnknown);
}

TEST(EncodeDetectISO2022JP, EscapeSequences) {
  for (std::string_view esc :
       {"\x1B(B"sv, "\x1B(J"sv, "\x1B(I"sv, "\x1B$@"sv, "\x1B$B"sv, "\x1B$(D"sv, "\x1B&@\x1B$B"sv}) {
    EXPECT_EQ(Detect("plain " + std::string(esc) + " text"), kEncodeISO2022JP) << esc.size();
    EXPECT_EQ(Detect(std::string(esc)), kEncodeISO2022JP) << esc.size();  // the last bytes just fit
  }
  EXPECT_EQ(Detect("ab\x1B$"sv), kEncodeUnknown);  // too few bytes follow
  EXPECT_EQ(Detect("ab\x1B$("sv), kEncodeUnknown);
  EXPECT_EQ(Detect("ab\x1B(Z"sv), kEncodeUnknown);
  // A byte above 127 before the escape ends the scan with no.
  EXPECT_NE(Detect("\xA4\xA2\x1B$B"sv), kEncodeISO2022JP);
  EXPECT_EQ(Detect("\x1B$B\xA4\xA2"sv), kEncodeISO2022JP);
  EXPECT_NE(Detect("abc\x1B$Bxyz"sv, kExcludeISO2022JP), kEncodeISO2022JP);
  EXPECT_EQ(Detect(test::kJapaneseISO2022JP), kEncodeISO2022JP);
  // Long plain runs are scanned eight bytes at a time; the escape may sit anywhere.
  for (std::size_t pad = 0; pad < 20; ++pad) {
    EXPECT_EQ(Detect(std::string(pad, 'a') + "\x1B$B" + std::string(pad, 'b')), kEncodeISO2022JP) << pad;
    EXPECT_EQ(Detect(std::string(pad, 'a') + "\x80" + std::string(pad, 'b') + "\x1B$B"), kEncodeUnknown)
        << pad;
  }
}

TEST(EncodeDetectScorers, EachScorerCountsItsMultiByteCharactersAndRefusesBrokenOnes) {
  EXPECT_EQ(Score(ScoreUTF8, "a\xC3\xA9\xE3\x81\x82\xF0\x9F\x98\x80").Score, 9);
  EXPECT_TRUE(Score(ScoreUTF8, "a\xC3\xA9").Valid);
  // Cut off by the end of the buffer: neither counted nor broken.
  const TEncodeScore cut = Score(ScoreUTF8, "\xC3\xA9\xE3\x81");
  EXPECT_TRUE(cut.Valid);
  EXPECT_EQ(cut.Score, 2);
  EXPECT_FALSE(Score(ScoreUTF8, "\xC3\x41z").Valid);
  EXPECT_FALSE(Score(ScoreUTF8, "\xF8\x80\x80\x80\x80").Valid);
  EXPECT_FALSE(Score(ScoreUTF8, "\x80").Valid);
  EXPECT_TRUE(Score(ScoreUTF8, "\xC3\xA9\xC3").Valid);
  EXPECT_EQ(Detect("\xC3\xA9\xC3\xA9\xC3\xA9\xE3\x81\x82\xE3\x81"sv), kEncodeUTF8);

  EXPECT_EQ(Score(ScoreShiftJIS, "\x82\xA0\x82\xA2\xB1").Score, 4);  // half-width katakana adds nothing
  EXPECT_TRUE(Score(ScoreShiftJIS, test::kHalfWidthKanaShiftJIS).Valid);
  EXPECT_EQ(Score(ScoreShiftJIS, test::kHalfWidthKanaShiftJIS).Score, 0);
  EXPECT_FALSE(Score(ScoreShiftJIS, "\xA0").Valid);
  EXPECT_FALSE(Score(ScoreShiftJIS, "\xFD\x40").Valid);
  EXPECT_FALSE(Score(ScoreShiftJIS, "\x82\x20").Valid);
  EXPECT_FALSE(Score(ScoreShiftJIS, "\x82\x7F").Valid);
  EXPECT_TRUE(Score(ScoreShiftJIS, "\x82\x80\xE0\xFC\xFC\x40").Valid);

  EXPECT_EQ(Score(ScoreEUCJP,
                  "\xA4\xA2"
                  "a"
                  "\x8E\xB1"
                  "\x8F\xA1\xA1")
                .Score,
            7);
  EXPECT_FALSE(Score(ScoreEUCJP, "\x8E\xE0").Valid);
  EXPECT_FALSE(Score(ScoreEUCJP, "\x8F\xA1\x41").Valid);
  EXPECT_FALSE(Score(ScoreEUCJP, "\xFF\xA1").Valid);
  EXPECT_FALSE(Score(ScoreEUCJP, "\x90\xA1").Valid);
  EXPECT_FALSE(Score(ScoreEUCJP, "\xA4\xA0").Valid);

  EXPECT_EQ(Score(ScoreUTF7, "Hi +ZeVnLIqe- there").Score, 16);
  EXPECT_TRUE(Score(ScoreUTF7, "plain text, with (some) punctuation.").Valid);
  for (char c : std::string("!\"#$%&*;<=>@[\\]^_`{|}~"))
    EXPECT_FALSE(Score(ScoreUTF7, std::string("a") + c).Valid) << c;
  EXPECT_FALSE(Score(ScoreUTF7, "+AB C-").Valid);  // base-64 state takes letters, digits, + and / only
  EXPECT_FALSE(Score(ScoreUTF7, "\x80").Valid);
  EXPECT_EQ(Detect("+ZeVnLIqe-"), kEncodeUTF7);

  const auto* d = reinterpret_cast<const std::uint8_t*>("abc");
  EXPECT_FALSE(ScoreShiftJIS(d, 2, kExcludeShiftJIS).Valid);
  EXPECT_FALSE(ScoreEUCJP(d, 2, kExcludeEUCJP).Valid);
  EXPECT_FALSE(ScoreUTF8(d, 2, kExcludeUTF8).Valid);
  EXPECT_FALSE(ScoreUTF7(d, 2, kExcludeUTF7).Valid);
  EXPECT_TRUE(ScoreUTF8(d, -1, 0).Valid);
  EXPECT_EQ(Detect("+ZeVnLIqe-", kExcludeUTF7), kEncodeUnknown);
}

// Byte-by-byte scorers written straight from their rules, against which the fast ones
// are checked on random buffers.
TEncodeScore ReferenceScore(int kind, const std::string& d) {
  TEncodeScore s;
  const std::size_t n = d.size();
  auto at = [&d](std::size_t i) { return static_cast<unsigned char>(d[i]); };
  auto in = [](unsigned b, unsigned lo, unsigned hi) { return b >= lo && b <= hi; };
  bool base64 = false;
  for (std::size_t i = 0; i < n;) {
    const unsigned b = at(i);
    if (kind == 0) {  // Shift-JIS
      if (b < 128 || in(b, 161, 223)) {
        ++i;
        continue;
      }
      if (!in(b, 129, 159) && !in(b, 224, 252)) return TEncodeScore{s.Score, false};
      if (i + 1 >= n) break;
      if (!in(at(i + 1), 64, 126) && !in(at(i + 1), 128, 252)) return TEncodeScore{s.Score, false};
      s.Score += 2, i += 2;
    } else if (kind == 1) {  // EUC-JP
      if (b < 128) {
        ++i;
        continue;
      }
      const std::size_t len = b == 143 ? 3 : 2;
      if (!in(b, 161, 254) && b != 142 && b != 143) return TEncodeScore{s.Score, false};
      if (i + len - 1 >= n) break;
      for (std::size_t k = 1; k < len; ++k) {
        if (!in(at(i + k), 161, b == 142 ? 223 : 254)) return TEncodeScore{s.Score, false};
      }
      s.Score += static_cast<std::int32_t>(len), i += len;
    } else if (kind == 2) {  // UTF-8
      const std::size_t extra = b < 128           ? 0
                                : in(b, 192, 223) ? 1
                                : in(b, 224, 239) ? 2
                                : in(b, 240, 247) ? 3
                                                  : 9;
      if (extra == 9) return TEncodeScore{s.Score, false};
      if (extra == 0) {
        ++i;
        continue;
      }
      if (i + extra >= n) break;
      for (std::size_t k = 1; k <= extra; ++k) {
        if (!in(at(i + k), 128, 191)) return TEncodeScore{s.Score, false};
      }
      s.Score += static_cast<std::int32_t>(extra + 1), i += extra + 1;
    } else {  // UTF-7
      ++i;
      if (b >= 128) return TEncodeScore{s.Score, false};
      if (base64) {
        if (b == '-')
          base64 = false;
        else if (std::isalnum(static_cast<int>(b)) || b == '+' || b == '/')
          s.Score += 2;
        else
          return TEncodeScore{s.Score, false};
      } else if (b == '+') {
        base64 = true;
      } else if (in(b, 33, 38) || b == 42 || in(b, 59, 62) || b == 64 || in(b, 91, 96) || in(b, 123, 126)) {
        return TEncodeScore{s.Score, false};
      }
    }
  }
  return s;
}

TEST(EncodeDetectScorers, MatchTheirRulesOnRandomBuffers) {
  std::mt19937 rng(7);
  const auto scorers = {ScoreShiftJIS, ScoreEUCJP, ScoreUTF8, ScoreUTF7};
  for (int round = 0; round < 3000; ++round) {
    // Mostly one byte family per buffer, so that scorers get far before breaking.
    const int family = round % 5;
    std::string d(rng() % 40, '\0');
    for (char& c : d) {
      const unsigned r = rng();
      switch (family) {
        case 0:
          c = static_cast<char>(r % 128);
          break;
        case 1:
          c = static_cast<char>(r % 3 ? 0x80 + r % 128 : 'a' + r % 26);
          break;
        case 2:
          c = static_cast<char>(r % 2 ? 0xA1 + r % 94 : 0x8E + r % 2);
          break;
        case 3:
          c = static_cast<char>(r % 4 ? "+AZaz09/-"[r % 9] : ' ');
          break;
        default:
          c = static_cast<char>(r);
          break;
      }
    }
    int kind = 0;
    for (auto scorer : scorers) {
      const TEncodeScore fast = Score(scorer, d), slow = ReferenceScore(kind, d);
      ASSERT_EQ(fast.Score, slow.Score) << kind << " round " << round;
      ASSERT_EQ(fast.Valid, slow.Valid) << kind << " round " << round;
      ++kind;
    }
  }
}

TEST(EncodeDetectVerdicts, JapaneseSamplesPlainAsciiAndTies) {
  EXPECT_EQ(Detect(test::kJapaneseUtf8), kEncodeUTF8);
  EXPECT_EQ(Detect(test::kJapaneseShiftJIS), kEncodeShiftJIS);
  EXPECT_EQ(Detect(test::kJapaneseEUCJP), kEncodeEUCJP);
  EXPECT_EQ(Detect(test::kJapaneseISO2022JP), kEncodeISO2022JP);
  // Switching the winner off leaves no verdict rather than a wrong one.
  EXPECT_EQ(Detect(test::kJapaneseEUCJP, kExcludeEUCJP), kEncodeUnknown);
  EXPECT_EQ(Detect(test::kJapaneseShiftJIS, kExcludeShiftJIS), kEncodeUnknown);

  EXPECT_EQ(Detect("Plain ASCII text: all scores are 0."), kEncodeUnknown);
  // EUC-JP and Shift-JIS both score 2: a tie gives no verdict.
  EXPECT_EQ(Detect("\xE0\xA1"sv), kEncodeUnknown);
}

TEST(EncodeDetectStream, ReadsAtMostTheLimit) {
  std::istringstream empty("");
  EXPECT_EQ(DetectEncoding(empty, 0), kEncodeUnknown);
  std::istringstream sjis{std::string(test::kJapaneseShiftJIS)};
  EXPECT_EQ(DetectEncoding(sjis, 0), kEncodeShiftJIS);
  std::istringstream marked("\xEF\xBB\xBF" + std::string(test::kJapaneseUtf8));
  EXPECT_EQ(DetectEncoding(marked, 2), kEncodeUnknown);  // two bytes only: no mark
  EXPECT_EQ(DetectEncoding(marked, 3), kEncodeUTF8BOM);
  EXPECT_EQ(DetectEncoding(marked, 1 << 30), kEncodeUTF8BOM);  // above the size: the whole stream
  EXPECT_EQ(DetectEncoding(marked, -1, kExcludeBOM), kEncodeUTF8);
}

TEST(DetectQueryCharset, PercentDecoding) {
  EXPECT_EQ(PercentDecodeQuery("a%41%62c"), "aAbc");
  EXPECT_EQ(PercentDecodeQuery("%e3%81%82"), "\xE3\x81\x82");
  EXPECT_EQ(PercentDecodeQuery("x% 4y"), std::string("x\x04y"));  // leading blank skipped
  EXPECT_EQ(PercentDecodeQuery("%4z!"), std::string("\x04!"));    // one digit only
  EXPECT_EQ(PercentDecodeQuery("%zz"), std::string(1, '\0'));
  EXPECT_EQ(PercentDecodeQuery("ab%4"), "ab%4");  // "%" in the last two places: copied as it is
  EXPECT_EQ(PercentDecodeQuery("ab%"), "ab%");
  EXPECT_EQ(PercentDecodeQuery("%%41"), std::string("\0"
                                                    "1",
                                                    2));
}

TEST(DetectQueryCharset, Verdicts) {
  std::u16string charset;
  DetectQueryCharset(u"%E3%81%82%E3%81%84", charset);
  EXPECT_EQ(charset, u"UTF-8");
  DetectQueryCharset(u"%82%A0%82%A2", charset);
  EXPECT_EQ(charset, u"SHIFT-JIS");
  DetectQueryCharset(u"%A4%A2%A4%A4", charset);
  EXPECT_EQ(charset, u"EUC-JP");
  DetectQueryCharset(u"plain ascii", charset);
  EXPECT_EQ(charset, u"UTF-8");
  charset = u"unchanged?";
  DetectQueryCharset(u"", charset);
  EXPECT_EQ(charset, u"UTF-8");
  DetectQueryCharset(u"\u3042\u3044", charset);  // unencoded text goes in as UTF-8
  EXPECT_EQ(charset, u"UTF-8");
  DetectQueryCharset(u"%1B%24%42", charset);  // ISO-2022-JP is no answer of this wrapper
  EXPECT_EQ(charset, u"UTF-8");
  // Only the first 1024 bytes count: Shift-JIS there, broken afterwards.
  std::u16string longQuery;
  for (int i = 0; i < 600; ++i) longQuery += u"%82%A0";
  longQuery += u"%FF%FF";
  DetectQueryCharset(longQuery, charset);
  EXPECT_EQ(charset, u"SHIFT-JIS");
}

}  // namespace
}  // namespace qx
