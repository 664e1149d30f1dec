#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "runtime/IfThen.h"
#include "runtime/SystemLanguage.h"

namespace qx {
namespace {

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
  if (saved)
    setenv("LC_ALL", savedValue.c_str(), 1);
  else
    unsetenv("LC_ALL");
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
