#include <gtest/gtest.h>

#include "toolkit/RegularExpression.h"

namespace qx {
namespace {

struct TCase {
  const char16_t* Pattern;
  const char16_t* Text;
  bool Match;
};

// Patterns of the kind site lists hold, run through both engines: they must agree.
const TCase kCases[] = {
    {u"example\\.com", u"https://www.EXAMPLE.com/x", true},  // ignore-case
    {u"EXAMPLE", u"example", true},
    {u"example\\.com", u"https://exampleXcom/", false},  // an escaped dot is literal
    {u"example.com", u"https://exampleXcom/", true},
    {u"^https:\\/\\/shop\\.example\\-site\\.jp\\/.*", u"https://shop.example-site.jp/item?id=1", true},
    {u"^https:\\/\\/shop\\.example\\-site\\.jp\\/.*", u"see https://shop.example-site.jp/",
     false},  // anchored
    {u"\\/search$", u"http://a.b/search", true},
    {u"\\/search$", u"http://a.b/search?q=1", false},
    {u"[0-9]+\\.html", u"http://a.b/page12.html", true},
    {u"[^a-z]x", u"http://a.b/ax", false},
    {u"\\d{3}-\\d{4}", u"zip 123-4567", true},
    {u"(news|blog)\\.", u"https://blog.example.org", true},
    {u"(news|blog)\\.", u"https://shop.example.org", false},
    {u"\\bshop\\b", u"https://shop.example", true},
    {u"\\?q=\\w+&", u"http://a/s?q=abc&x", true},
    {u"", u"anything", true},
    {u"\u691c\u7d22", u"http://a/\u691c\u7d22/", true},  // text beyond ASCII
};

struct TEngine {
  const char* Name;
  std::unique_ptr<TRegEx> (*Compile)(std::u16string_view);
};

TEST(RegularExpressionTest, BothEnginesAgreeOnThePatternTable) {
  const TEngine engines[] = {
#ifndef _WIN32
      {"pcre2", regex_backend::CompilePcre2},
#endif
      {"std", regex_backend::CompileStd},
      {"platform", CompileRegEx}};
  for (const auto& engine : engines) {
    for (const auto& c : kCases) {
      EXPECT_EQ(engine.Compile(c.Pattern)->IsMatch(c.Text), c.Match)
          << engine.Name << ": "
          << std::string(c.Pattern, c.Pattern + std::char_traits<char16_t>::length(c.Pattern));
    }
    for (const char16_t* bad : {u"(", u"[a-", u"a)", u"*abc", u"a{2,1}"}) {
      EXPECT_THROW(engine.Compile(bad), ERegularExpressionError) << engine.Name;
    }
  }
}

TEST(RegularExpressionTest, MalformedPatternMessageNamesThePattern) {
  try {
    CompileRegEx(u"shop(");
    FAIL();
  } catch (const ERegularExpressionError& e) {
    EXPECT_NE(std::string(e.what()).find("\"shop(\""), std::string::npos) << e.what();
  }
}

}  // namespace
}  // namespace qx
