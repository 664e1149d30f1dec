#include <gtest/gtest.h>

#include "base/Text.h"

namespace qx {
namespace {

TEST(TextTest, Utf8RoundTripsSurrogatePairsAndReplacesBrokenInput) {
  const std::u16string text = u"tab \u00e9\u65e5\U0001F600";
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
  EXPECT_EQ(ToUtf8(u"\u65e5"), "\xE6\x97\xA5");

  EXPECT_EQ(FromUtf8("a\xFF"
                     "b"),
            u"a\uFFFDb");
  EXPECT_EQ(FromUtf8("\xE6\x97"), u"\uFFFD");
  EXPECT_EQ(FromUtf8("\xC0\x80"), u"\uFFFD");  // overlong
  EXPECT_EQ(ToUtf8(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");
}

TEST(TextTest, CaseInsensitiveCompareIsAsciiOnly) {
  EXPECT_TRUE(SameText(u"PreviewStripPlugin", u"previewstripplugin"));
  EXPECT_FALSE(SameText(u"\u00e9", u"\u00c9"));
  EXPECT_LT(CompareText(u"abc", u"ABD"), 0);
  EXPECT_GT(CompareText(u"abcd", u"ABC"), 0);
  EXPECT_EQ(UpperCase(u"a-z"), u"A-Z");
  EXPECT_EQ(LowerCase(u"A-Z"), u"a-z");
  EXPECT_TRUE(StartsText(u"client.", u"CLIENT.Tab"));
}

TEST(TextTest, TrimAndIntegers) {
  EXPECT_EQ(Trim(u" \t True \r\n"), u"True");
  EXPECT_EQ(Trim(u"   "), u"");
  EXPECT_EQ(TryStrToInt(u"-42"), -42);
  EXPECT_EQ(TryStrToInt(u"$1F"), 31);
  EXPECT_EQ(TryStrToInt(u"0x10"), 16);
  EXPECT_FALSE(TryStrToInt(u" 1"));
  EXPECT_FALSE(TryStrToInt(u"12a"));
  EXPECT_FALSE(TryStrToInt(u"99999999999999999999"));
  EXPECT_EQ(TryStrToInt(u"-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(StrToIntDef(u"x", 100), 100);
  EXPECT_EQ(IntToStr(-7), u"-7");
}

}  // namespace
}  // namespace qx
