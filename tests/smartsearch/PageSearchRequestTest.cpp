#include <gtest/gtest.h>

#include "SmartSearchFixture.h"
#include "smartsearch/PageSearchRequest.h"

namespace qx {
namespace {

using PageSearchRequestTest = SmartSearchFixture;

TEST_F(PageSearchRequestTest, DomainPartsAndTheirComparison) {
  EXPECT_EQ(SearchUrlDomainPart(u"https://www.shop.example/x?y=1"), u"shop.example");
  EXPECT_EQ(SearchUrlDomainPart(u"https://shop.example/"), u"shop.example");  // two labels stay whole
  EXPECT_EQ(SearchUrlDomainPart(u"not a url"), u"");
  // Four labels against the same host without its first label.
  EXPECT_TRUE(IsSameSearchDomain(SearchUrlDomainPart(u"http://a.b.shop.example/"),
                                 SearchUrlDomainPart(u"http://b.shop.example/")));
  EXPECT_TRUE(IsSameSearchDomain(u"SHOP.example", u"www.shop.EXAMPLE"));
  EXPECT_FALSE(IsSameSearchDomain(u"a.jp", u"a.jp.a.jp"));  // only the first occurrence counts
  EXPECT_FALSE(IsSameSearchDomain(u"hop.example", u"shop.exampl"));
  EXPECT_FALSE(IsSameSearchDomain(u"", u""));
}

TEST_F(PageSearchRequestTest, TakesTheFirstKnownParameterOfASearchAddress) {
  TString keyword, request;
  bool same = false;
  EXPECT_TRUE(TryParseSearchUrl(u"https://www.shop.example/search?x=1&q=abc&s=def",
                                u"https://shop.example/item", keyword, request, same));
  EXPECT_EQ(keyword, u"abc");
  EXPECT_EQ(request, u"https://www.shop.example/search?x=1&q={searchTerms}&s=def");

  EXPECT_TRUE(TryParseSearchUrl(u"https://shop.example/cse?flag&Query=%E9%9D%B4&a=b=c",
                                u"https://shop.example/", keyword, request, same));
  EXPECT_EQ(keyword, u"%E9%9D%B4");
  EXPECT_EQ(request, u"https://shop.example/cse?flag&Query={searchTerms}&a=b=c");

  EXPECT_FALSE(TryParseSearchUrl(u"https://shop.example/search?x=1", u"https://shop.example/", keyword,
                                 request, same));
  EXPECT_TRUE(same);
  EXPECT_EQ(keyword + request, u"");
  EXPECT_FALSE(
      TryParseSearchUrl(u"https://shop.example/list?q=1", u"https://shop.example/", keyword, request, same));
  EXPECT_FALSE(TryParseSearchUrl(u"https://other.example/search?q=1", u"https://shop.example/", keyword,
                                 request, same));
  EXPECT_FALSE(same);
}

TEST_F(PageSearchRequestTest, BackHistoryGoesOnOnTheSameDomainAndStopsAtAnother) {
  TFakeTab* tab = Open(u"https://shop.example/search?x=1");  // same domain, no known parameter
  host_.Model().NavigateTab(tab, u"https://shop.example/search?kw=1&p=%B8%A1%BA%F7%B8%A1%BA%F7");
  host_.Model().NavigateTab(tab, u"https://shop.example/item/1");
  TSiteSearchList none;
  TPageSearch found = FindPageSearch(*wrap_, none, u"");
  EXPECT_EQ(found.Request, u"https://shop.example/search?kw=1&p={searchTerms}");
  EXPECT_EQ(found.CharSet, u"EUC-JP");
  // Japanese words in Shift_JIS, in the page's own address.
  host_.Model().NavigateTab(tab, u"https://shop.example/search?q=%93%FA%96%7B%8C%EA%82%CC%8C%9F%8D%F5");
  found = FindPageSearch(*wrap_, none, u"");
  EXPECT_EQ(found.Request, u"https://shop.example/search?q={searchTerms}");
  EXPECT_EQ(found.CharSet, u"SHIFT-JIS");

  TFakeTab* other = Open(u"https://other.example/");
  host_.Model().NavigateTab(other, u"https://shop.example/search?q=old");
  host_.Model().NavigateTab(other, u"https://shop.example/item/2");
  found = FindPageSearch(*wrap_, none, u"");
  EXPECT_EQ(found.Request, u"");
  // The referer comes before the history.
  found = FindPageSearch(*wrap_, none, u"https://shop.example/search?s=");
  EXPECT_EQ(found.Request, u"https://shop.example/search?s={searchTerms}");
  EXPECT_EQ(found.CharSet, u"UTF-8");
}

TEST_F(PageSearchRequestTest, SiteListFirstThenTheTabsSearchForm) {
  TFakeTab* tab = Open(u"https://shop.example/search?q=abc");
  TSiteSearchList list;
  EXPECT_EQ(FindPageSearch(*wrap_, list, u"").Request, u"https://shop.example/search?q={searchTerms}");

  host_.Model().SetTabText(tab, u"search_form_url", u"https://shop.example/form?k={searchTerms}");
  host_.Model().SetTabText(tab, u"search_form_charset", u"Shift_JIS");
  TPageSearch found = FindPageSearch(*wrap_, list, u"");
  EXPECT_EQ(found.Request, u"https://shop.example/form?k={searchTerms}");
  EXPECT_EQ(found.CharSet, u"Shift_JIS");

  auto item = std::make_unique<TSiteSearchItem>();
  item->FQuery = u"https://shop.example/find?w={searchTerms}";
  item->FEncode = u"euc";
  item->FSiteList = {u"^https://SHOP\\."};
  list.Add(std::move(item));
  found = FindPageSearch(*wrap_, list, u"");
  EXPECT_EQ(found.Request, u"https://shop.example/find?w={searchTerms}");
  EXPECT_EQ(found.CharSet, u"euc");
}

}  // namespace
}  // namespace qx
