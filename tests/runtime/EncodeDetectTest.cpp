#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>

#include "runtime/EncodeDetect.h"
#include "runtime/IfThen.h"
#include "runtime/JapaneseSamples.h"
#include "runtime/SystemLanguage.h"

namespace qx {
namespace {

int Detect(std::string_view bytes, std::uint8_t exclude = 0) {
  return DetectEncoding(reinterpret_cast<const std::uint8_t*>(bytes.data()), static_cast<std::int32_t>(bytes.size()) - 1,
                        exclude);
}

TEncodeScore Score(TEncodeScore (*scorer)(const std::uint8_t*, std::int32_t, std::uint8_t), std::string_view bytes) {
  return scorer(reinterpret_cast<const std::uint8_t*>(bytes.data()), static_cast<std::int32_t>(bytes.size()) - 1, 0);
}

using namespace std::string_view_literals;

TEST(EncodeDetectMarks, ByteOrderMarks) {
  EXPECT_EQ(Detect("\xFF\xFE\x00\x00"sv), kEncodeUTF32LE);  // UTF-32, not UTF-16
  EXPECT_EQ(Detect("\x00\x00\xFE\xFF"sv), kEncodeUTF32BE);
  EXPECT_EQ(Detect("\xFF\xFE\x41\x00"sv), kEncodeUTF16LE);
  EXPECT_EQ(Detect("\xFF\xFE"sv), kEncodeUTF16LE);
  EXPECT_EQ(Detect("\xFE\xFF\x00\x41"sv), kEncodeUTF16BE);
  EXPECT_EQ(Detect("\xEF\xBB\xBF"sv), kEncodeUTF8BOM);
  EXPECT_EQ(Detect("\xEF\xBB\xBF" "abc"sv), kEncodeUTF8BOM);
  // Two bytes of the UTF-8 mark are no mark; they score as a Shift-JIS and an EUC-JP pair.
  EXPECT_EQ(Detect("\xEF\xBB"sv), kEncodeUnknown);
  EXPECT_EQ(Detect("\xFF\xFE\x41\x00"sv, kExcludeBOM), kEncodeUnknown);
  EXPECT_EQ(Detect("\xEF\xBB\xBF\xE3\x81\x82"sv, kExcludeBOM), kEncodeUTF8);
}

TEST(EncodeDetectMarks, EmptyBuffer) {
  EXPECT_EQ(Detect(""), kEncodeUnknown);
  EXPECT_EQ(DetectEncoding(nullptr, -5, 0), kEncodeUnknown);
  const std::uint8_t byte = 0xFF;
  EXPECT_EQ(DetectEncoding(&byte, -1, 0), kEncodeUnknown);
}

TEST(EncodeDetectISO2022JP, EscapeSequences) {
  for (std::string_view esc : {"\x1B(B"sv, "\x1B(J"sv, "\x1B(I"sv, "\x1B$@"sv, "\x1B$B"sv, "\x1B$(D"sv, "\x1B&@\x1B$B"sv}) {
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
    EXPECT_EQ(Detect(std::string(pad, 'a') + "\x80" + std::string(pad, 'b') + "\x1B$B"), kEncodeUnknown) << pad;
  }
}

TEST(EncodeDetectScorers, UTF8) {
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
}

TEST(EncodeDetectScorers, ShiftJIS) {
  EXPECT_EQ(Score(ScoreShiftJIS, "\x82\xA0\x82\xA2\xB1").Score, 4);  // half-width katakana adds nothing
  EXPECT_TRUE(Score(ScoreShiftJIS, test::kHalfWidthKanaShiftJIS).Valid);
  EXPECT_EQ(Score(ScoreShiftJIS, test::kHalfWidthKanaShiftJIS).Score, 0);
  EXPECT_FALSE(Score(ScoreShiftJIS, "\xA0").Valid);
  EXPECT_FALSE(Score(ScoreShiftJIS, "\xFD\x40").Valid);
  EXPECT_FALSE(Score(ScoreShiftJIS, "\x82\x20").Valid);
  EXPECT_FALSE(Score(ScoreShiftJIS, "\x82\x7F").Valid);
  EXPECT_TRUE(Score(ScoreShiftJIS, "\x82\x80\xE0\xFC\xFC\x40").Valid);
}

TEST(EncodeDetectScorers, EUCJP) {
  EXPECT_EQ(Score(ScoreEUCJP, "\xA4\xA2" "a" "\x8E\xB1" "\x8F\xA1\xA1").Score, 7);
  EXPECT_FALSE(Score(ScoreEUCJP, "\x8E\xE0").Valid);
  EXPECT_FALSE(Score(ScoreEUCJP, "\x8F\xA1\x41").Valid);
  EXPECT_FALSE(Score(ScoreEUCJP, "\xFF\xA1").Valid);
  EXPECT_FALSE(Score(ScoreEUCJP, "\x90\xA1").Valid);
  EXPECT_FALSE(Score(ScoreEUCJP, "\xA4\xA0").Valid);
}

TEST(EncodeDetectScorers, UTF7) {
  EXPECT_EQ(Score(ScoreUTF7, "Hi +ZeVnLIqe- there").Score, 16);
  EXPECT_TRUE(Score(ScoreUTF7, "plain text, with (some) punctuation.").Valid);
  for (char c : std::string("!\"#$%&*;<=>@[\\]^_`{|}~")) EXPECT_FALSE(Score(ScoreUTF7, std::string("a") + c).Valid) << c;
  EXPECT_FALSE(Score(ScoreUTF7, "+AB C-").Valid);  // base-64 state takes letters, digits, + and / only
  EXPECT_FALSE(Score(ScoreUTF7, "\x80").Valid);
  EXPECT_EQ(Detect("+ZeVnLIqe-"), kEncodeUTF7);
}

TEST(EncodeDetectScorers, ExcludedScorersAreInvalid) {
  const auto* d = reinterpret_cast<const std::uint8_t*>("abc");
  EXPECT_FALSE(ScoreShiftJIS(d, 2, kExcludeShiftJIS).Valid);
  EXPECT_FALSE(ScoreEUCJP(d, 2, kExcludeEUCJP).Valid);
  EXPECT_FALSE(ScoreUTF8(d, 2, kExcludeUTF8).Valid);
  EXPECT_FALSE(ScoreUTF7(d, 2, kExcludeUTF7).Valid);
  EXPECT_TRUE(ScoreUTF8(d, -1, 0).Valid);
  EXPECT_EQ(Detect("+ZeVnLIqe-", kExcludeUTF7), kEncodeUnknown);
}

TEST(EncodeDetectVerdicts, JapaneseSamples) {
  EXPECT_EQ(Detect(test::kJapaneseUtf8), kEncodeUTF8);
  EXPECT_EQ(Detect(test::kJapaneseShiftJIS), kEncodeShiftJIS);
  EXPECT_EQ(Detect(test::kJapaneseEUCJP), kEncodeEUCJP);
  EXPECT_EQ(Detect(test::kJapaneseISO2022JP), kEncodeISO2022JP);
  // Switching the winner off leaves no verdict rather than a wrong one.
  EXPECT_EQ(Detect(test::kJapaneseEUCJP, kExcludeEUCJP), kEncodeUnknown);
  EXPECT_EQ(Detect(test::kJapaneseShiftJIS, kExcludeShiftJIS), kEncodeUnknown);
}

TEST(EncodeDetectVerdicts, PlainAsciiAndTies) {
  EXPECT_EQ(Detect("Plain ASCII text: all scores are 0."), kEncodeUnknown);
  // EUC-JP and Shift-JIS both score 2: a tie gives no verdict.
  EXPECT_EQ(Detect("\xE0\xA1"sv), kEncodeUnknown);
}

TEST(EncodeDetectStream, ReadsAtMostTheLimit) {
  std::istringstream empty("");
  EXPECT_EQ(DetectEncoding(empty, 0), kEncodeUnknown);
  std::istringstream sjis(std::string(test::kJapaneseShiftJIS));
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
  EXPECT_EQ(PercentDecodeQuery("x% 4y"), std::string("x\x04y"));   // leading blank skipped
  EXPECT_EQ(PercentDecodeQuery("%4z!"), std::string("\x04!"));     // one digit only
  EXPECT_EQ(PercentDecodeQuery("%zz"), std::string(1, '\0'));
  EXPECT_EQ(PercentDecodeQuery("ab%4"), "ab%4");  // "%" in the last two places: copied as it is
  EXPECT_EQ(PercentDecodeQuery("ab%"), "ab%");
  EXPECT_EQ(PercentDecodeQuery("%%41"), std::string("\0" "1", 2));
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

TEST(SystemLanguage, FromLocaleNames) {
  EXPECT_EQ(LanguageIdOfLocaleName("ja_JP.UTF-8", 1033), 0x0411);
  EXPECT_EQ(LanguageIdOfLocaleName("en_GB", 1), 0x0809);
  EXPECT_EQ(LanguageIdOfLocaleName("de-CH@euro", 1), 0x0807);
  EXPECT_EQ(LanguageIdOfLocaleName("fr", 1), 0x040C);  // a bare language takes its main region
  EXPECT_EQ(LanguageIdOfLocaleName("C", 1033), 1033);
  EXPECT_EQ(LanguageIdOfLocaleName("xx_YY", 7), 7);
  EXPECT_EQ(LanguageIdOfLocaleName("", 7), 7);
}

TEST(SystemLanguage, FromTheEnvironment) {
  const char* saved = std::getenv("LC_ALL");
  const std::string savedValue = saved ? saved : "";
  setenv("LC_ALL", "ja_JP.UTF-8", 1);
  EXPECT_EQ(GetSystemDefaultLanguage(1033), 0x0411);
  setenv("LC_ALL", "POSIX", 1);
  EXPECT_EQ(GetSystemDefaultLanguage(1033), 1033);
  if (saved) setenv("LC_ALL", savedValue.c_str(), 1);
  else unsetenv("LC_ALL");
}

TEST(IfThen, ChoosesByFlag) {
  EXPECT_EQ(IfThen(true, u"a", u"b"), u"a");
  EXPECT_EQ(IfThen(false, u"a", u"b"), u"b");
  EXPECT_EQ(IfThen(false, std::u16string(u"a")), u"");
  EXPECT_EQ(IfThen(true, 1.5, 2.5), 1.5);
  EXPECT_EQ(IfThen(false, 1.5), 0.0);
}

}  // namespace
}  // namespace qx
