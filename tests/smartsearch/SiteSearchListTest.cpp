#include <gtest/gtest.h>

#include "SmartSearchFixture.h"
#include "host/HostKeys.h"
#include "smartsearch/SiteSearchListFile.h"
#include "toolkit/RegularExpression.h"

namespace qx {
namespace {

using SiteSearchListTest = SmartSearchFixture;

std::string Entry(std::string_view query, std::string_view patterns) {
  return "{\"name\":\"x\",\"query\":\"" + std::string(query) + "\",\"encode\":\"EUC-JP\",\"site_list\":[" +
         std::string(patterns) + "]}";
}

TEST_F(SiteSearchListTest, MissingUserFileGetsTheDefaultListByteForByte) {
  TSiteSearchList list;
  LoadSiteSearchList(*wrap_, list);

  const std::string expected =
      "\xEF\xBB\xBF"
      "[\r\n"
      "    {\r\n"
      "        \"name\":  \"Quillmar Support\",\r\n"
      "        \"query\": "
      "\"https://www.quillmar-browser.example/support/search?q={searchTerms}&lang=ja\",\r\n"
      "        \"encode\": \"utf-8\",\r\n"
      "        \"site_list\" : [\r\n"
      "            \"https:\\\\/\\\\/www\\\\.quillmar\\\\-browser\\\\.example\\\\/support\\\\/.*\"\r\n"
      "        ]\r\n"
      "    }\r\n"
      "]\r\n";
  EXPECT_EQ(ReadFile(Folder(dir_key::UserSettingClient) / "site_search_list.json"), expected);
  EXPECT_FALSE(std::filesystem::exists(Folder(dir_key::UserSettingBase) / "site_search_list.json"));

  // The written list is also the list loaded, and its pattern selects the site.
  ASSERT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.Item(0).FEncode, u"utf-8");
  EXPECT_EQ(list.Item(0).FSiteList,
            std::vector<TString>{u"https:\\/\\/www\\.quillmar\\-browser\\.example\\/support\\/.*"});
  EXPECT_EQ(list.FindItem(u"HTTPS://www.quillmar-browser.example/support/faq"), &list.Item(0));
  EXPECT_EQ(list.FindItem(u"https://www.quillmar-browser.example/news/"), nullptr);
}

TEST_F(SiteSearchListTest, BaseFileFirstUserFileOverridesAndIsLeftAlone) {
  const std::string userText =
      "[" + Entry("user-shop", "\"example\\\\.com/shop\"") + ",7," + Entry("user-late", "\"nomatch\"") + "]";
  WriteFile(
      Folder(dir_key::UserSettingBase) / "site_search_list.json",
      "[" + Entry("base-a", "\"example\\\\.com\"") + "," + Entry("base-b", "\"example\\\\.com/shop\"") + "]");
  WriteFile(Folder(dir_key::UserSettingClient) / "site_search_list.json", userText);

  TSiteSearchList list;
  list.Add(std::make_unique<TSiteSearchItem>());  // emptied by the load
  LoadSiteSearchList(*wrap_, list);

  EXPECT_EQ(ReadFile(Folder(dir_key::UserSettingClient) / "site_search_list.json"), userText);
  ASSERT_EQ(list.Count(), 4u);  // the number 7 is no entry
  EXPECT_EQ(list.Item(0).FQuery, u"base-a");
  EXPECT_EQ(list.Item(2).FQuery, u"user-shop");
  EXPECT_EQ(list.Item(2).FEncode, u"EUC-JP");
  EXPECT_EQ(list.FindItem(u"http://EXAMPLE.com/shop/1")->FQuery, u"user-shop");
  EXPECT_EQ(list.FindItem(u"http://example.com/news")->FQuery, u"base-a");
}

TEST_F(SiteSearchListTest, UnparsableFileIsReportedAndTheOtherStillLoads) {
  const std::filesystem::path base = Folder(dir_key::UserSettingBase) / "site_search_list.json";
  WriteFile(base, "[{\"query\": ");
  WriteFile(Folder(dir_key::UserSettingClient) / "site_search_list.json", "[" + Entry("user", "\"a\"") + "]");

  TSiteSearchList list;
  LoadSiteSearchList(*wrap_, list);

  ASSERT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.Item(0).FQuery, u"user");
  const auto boxes = os_.Os().MessageBoxCalls();
  ASSERT_EQ(boxes.size(), 1u);
  TString baseFolder;
  wrap_->DirectoryPath(dir_key::UserSettingBase, true, baseFolder);
  EXPECT_EQ(boxes[0].text, u"Failed to load: " + baseFolder + u"site_search_list.json");
  EXPECT_EQ(boxes[0].caption, u"JSON Parse Error");
  EXPECT_EQ(boxes[0].type, 0u);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(boxes[0].hwnd), wrap_->MainWindowHandle());

  // A root that is not an array loads nothing and is no error.
  WriteFile(base, "{\"query\": \"q\"}");
  LoadSiteSearchList(*wrap_, list);
  EXPECT_EQ(list.Count(), 1u);
  EXPECT_EQ(os_.Os().MessageBoxCalls().size(), 1u);
}

TEST(SiteSearchItemTest, PatternsRunInOrderAndAMalformedOneRaisesEachTimeItIsReached) {
  TSiteSearchItem item;
  item.FSiteList = {u"^https?://shop\\.", u"(unclosed"};
  EXPECT_TRUE(item.IsMatch(u"HTTP://SHOP.example/"));  // decided before the bad pattern
  EXPECT_THROW(item.IsMatch(u"x https://shop.example/"), ERegularExpressionError);
  EXPECT_THROW(item.IsMatch(u"https://news.example/"), ERegularExpressionError);

  TSiteSearchList list;
  auto good = std::make_unique<TSiteSearchItem>();
  good->FSiteList = {u"news"};
  list.Add(std::move(good));
  auto bad = std::make_unique<TSiteSearchItem>();
  bad->FSiteList = {u"["};
  list.Add(std::move(bad));
  EXPECT_THROW(list.FindItem(u"https://news.example/"), ERegularExpressionError);  // last entry first
}

}  // namespace
}  // namespace qx
