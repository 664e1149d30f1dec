#include <gtest/gtest.h>

#include "SmartSearchFixture.h"
#include "host/HostKeys.h"
#include "smartsearch/SearchEncoding.h"
#include "smartsearch/SearchEngineList.h"

namespace qx {
namespace {

TEST(SearchEngineItemTest, QuotesAndMemberQuirks) {
  EXPECT_EQ(StripEngineItemQuotes(u"\"\"{}\"\""), u"\"{}\"");  // one quote at each end only
  EXPECT_EQ(StripEngineItemQuotes(u"\"{}"), u"{}");
  EXPECT_EQ(StripEngineItemQuotes(u"{}\""), u"{}");
  EXPECT_EQ(StripEngineItemQuotes(u"\""), u"");

  const auto full = ParseSearchEngineItem(
      uR"({"ActionName":"a","Request":"r","Method":"1","Encode":"4096","Guid":"g","SmartSearch":"FALSE",)"
      uR"("Icon":"i.ico","Name":"n"})");
  ASSERT_TRUE(full);
  EXPECT_EQ(full->Method, 1);
  EXPECT_EQ(full->Encode, 4096);
  EXPECT_FALSE(full->SmartSearch);
  EXPECT_EQ(full->Icon, u"i.ico");
  EXPECT_EQ(full->Name, u"n");

  // Members that are not JSON text count as absent.
  const auto typed = ParseSearchEngineItem(
      uR"({"ActionName":"a","Request":"r","Method":2,"Encode":"x","SmartSearch":false})");
  ASSERT_TRUE(typed);
  EXPECT_EQ(typed->Method, 0);
  EXPECT_EQ(typed->Encode, 0);
  EXPECT_TRUE(typed->SmartSearch);
  EXPECT_EQ(typed->Icon, u"QuillmarSearch.ico");
  EXPECT_EQ(typed->Guid, u"");

  EXPECT_FALSE(ParseSearchEngineItem(uR"({"ActionName":1,"Request":"r"})"));
  EXPECT_FALSE(ParseSearchEngineItem(uR"({"ActionName":"a"})"));
  EXPECT_FALSE(ParseSearchEngineItem(uR"(["ActionName"])"));
  EXPECT_FALSE(ParseSearchEngineItem(uR"({"ActionName":)"));
  EXPECT_FALSE(ParseSearchEngineItem(u""));
}

using SearchEngineListTest = SmartSearchFixture;

TEST_F(SearchEngineListTest, BuildsTheOfferedEnginesAndNoticesChanges) {
  const std::u16string items[] = {
      uR"("{"ActionName":"QuillmarSearch","Request":"def?q={searchTerms}","Encode":"16","Method":"1"}")",
      uR"({"ActionName":"b","Request":"r","Guid":"gb","Icon":"https://b.example/"})",
      u"",
      uR"({"ActionName":"c","Request":"r"})",                                    // no guid
      uR"({"ActionName":"d","Request":"r","Guid":"gd","SmartSearch":"false"})",  // hidden
      u"{broken",
      uR"({"ActionName":"e","Request":"r","Guid":"ge"})",
  };
  SetProperty(prop_key::SearchBarCount, u"7");
  SetProperty(prop_key::SearchBarSmartSearchCustomButtonCount, u"1");
  for (int i = 0; i < 7; ++i) SetProperty(u"client.SearchBarSetting-Item" + IntToStr(i), items[i]);

  TSearchEngineList list;
  list.Build(*wrap_);
  ASSERT_EQ(list.Engines().size(), 2u);
  EXPECT_EQ(list.Engines()[0].Guid, u"gb");
  EXPECT_EQ(list.Engines()[1].Guid, u"ge");
  EXPECT_EQ(list.FDefaultSearchRequest, u"def?q={searchTerms}");
  EXPECT_EQ(list.FDefaultSearchEncode, 16);
  EXPECT_EQ(list.FDefaultSearchMethod, 1);
  EXPECT_EQ(list.FCacheDefaultSearchActionName, u"QuillmarSearch");
  EXPECT_EQ(list.FCacheSmartSearchButtonCount, 1);
  ASSERT_EQ(list.FCacheEngineListStrings.size(), 7u);
  EXPECT_EQ(list.FCacheEngineListStrings[0].front(), u'{');
  EXPECT_FALSE(list.IsEngineSettingChanged(*wrap_));

  // Naming the built-in default explicitly is no change; anything else is.
  SetProperty(prop_key::SearchBarDefaultEngineAction, u"QuillmarSearch");
  EXPECT_FALSE(list.IsEngineSettingChanged(*wrap_));
  SetProperty(prop_key::SearchBarDefaultEngineAction, u"quillmarsearch");
  EXPECT_TRUE(list.IsEngineSettingChanged(*wrap_));
  SetProperty(prop_key::SearchBarDefaultEngineAction, u"");
  SetProperty(prop_key::SearchBarSmartSearchCustomButtonCount, u"2");
  EXPECT_TRUE(list.IsEngineSettingChanged(*wrap_));
  SetProperty(prop_key::SearchBarSmartSearchCustomButtonCount, u"1");
  SetProperty(u"client.SearchBarSetting-Item4",
              uR"({"ActionName":"d","Request":"r","Guid":"gd","SmartSearch":"true"})");
  EXPECT_TRUE(list.IsEngineSettingChanged(*wrap_));  // even a hidden engine counts
  SetProperty(u"client.SearchBarSetting-Item4", u"\"" + items[4] + u"\"");
  EXPECT_FALSE(list.IsEngineSettingChanged(*wrap_));  // compared after stripping
  SetProperty(prop_key::SearchBarCount, u"6");
  EXPECT_TRUE(list.IsEngineSettingChanged(*wrap_));
}

TEST(SearchEngineMenuTest, IconAndScriptOfAMenuItem) {
  EXPECT_EQ(EngineMenuIconUrl(u"https://e.example/f.ico"), u"favicon://https://e.example/f.ico");
  EXPECT_EQ(EngineMenuIconUrl(u"http://e.example/"), u"favicon://http://e.example/");
  EXPECT_EQ(EngineMenuIconUrl(u"HTTP://e.example/"), u"skin://widget/module/SearchEngine/HTTP://e.example/");
  EXPECT_EQ(EngineMenuIconUrl(u"Wiki.ico"), u"skin://widget/module/SearchEngine/Wiki.ico");
  EXPECT_EQ(EngineMenuScript(u"act", u"{G}"), u"SmartSearch.MenuSelect({'action':'act','id':'{G}'})");
}

TEST(SearchEncodingTest, CharSetNamesToHostNumbers) {
  for (auto name : {u"EUC_JP", u"euc-jp", u" EUC "})
    EXPECT_EQ(SearchEncodeOfCharSet(name), 16) << ToUtf8(name);
  for (auto name : {u"UTF-8", u"utf_8", u"Utf8"}) EXPECT_EQ(SearchEncodeOfCharSet(name), 256) << ToUtf8(name);
  for (auto name : {u"SHIFT_JIS", u"shift-jis\t", u"url_encode"})
    EXPECT_EQ(SearchEncodeOfCharSet(name), 4096) << ToUtf8(name);
  for (auto name : {u"", u"ISO-8859-1", u"SJIS", u"EUCJP"})
    EXPECT_EQ(SearchEncodeOfCharSet(name), 256) << ToUtf8(name);
}

}  // namespace
}  // namespace qx
