#include <gtest/gtest.h>

#include "SmartSearchFixture.h"
#include "smartsearch/SmartSearchEngines.h"

namespace qx {
namespace {

class SmartSearchEnginesTest : public SmartSearchFixture {
 protected:
  SmartSearchEnginesTest() : engines_(ComPtr<IServiceCoreWrap>(wrap_.get())) {}

  // What the module fired, in order, without the host's own events.
  std::vector<TFakeEventRecord> Sent() {
    std::vector<TFakeEventRecord> sent;
    for (auto& record : host_.Events().EventLog())
      if (!record.FromHost) sent.push_back(record);
    return sent;
  }
  std::int32_t Counter(std::u16string_view key) { return wrap_->GetPropertyInteger(key, 0); }

  TSmartSearchEngines engines_;
};

TEST_F(SmartSearchEnginesTest, PageSearchFiresSearchDirectIntoANewActiveTab) {
  TFakeTab* tab = Open(u"https://shop.example/item");
  host_.Events().ClearEventLog();
  engines_.PageSearch(u"https://shop.example/s?q={searchTerms}", u" shift_jis ", u"靴");

  const auto sent = Sent();
  ASSERT_EQ(sent.size(), 2u);
  EXPECT_EQ(sent[0].Id, u"SearchEngineManager.SearchDirect");
  const TFakeParams expected = {{u"request", u"https://shop.example/s?q={searchTerms}"},
                                {u"encode", u"4096"},
                                {u"method", u"0"},
                                {u"keyword", u"靴"},
                                {u"new", u"true"},
                                {u"activate", u"true"},
                                {u"from-tab-guid", tab->GuidText()}};
  EXPECT_EQ(sent[0].Parameters, expected);
  EXPECT_EQ(sent[1].Id, u"SearchDock.ApplySearchText");
  EXPECT_EQ(sent[1].Parameters, (TFakeParams{{u"keyword", u"靴"}}));
  EXPECT_EQ(Counter(u"client.SmartSearch-SiteSearch"), 1);
  EXPECT_EQ(host_.SearchHistory().Keywords(), std::vector<std::u16string>{u"靴"});
  EXPECT_EQ(host_.SearchBoxText(), u"靴");
}

TEST_F(SmartSearchEnginesTest, EngineSearchesGoThroughTheSearchManagerAndCountThemselves) {
  TFakeTab* tab = Open(u"https://a.example/");
  engines_.DefaultSearch(u"one");
  engines_.EngineButtonSearch(u"{B}", u"ActB", u"two");
  engines_.EngineMenuSearch(u"{M}", u"ActM", u"three");
  engines_.EngineMenuSearch(u"{M}", u"ActM", u"four");

  const auto& searches = host_.SearchEngines().Searches();
  ASSERT_EQ(searches.size(), 4u);
  EXPECT_EQ(searches[0].EngineGuid, u"{59C21CFA-639D-47DE-9642-E6EA065A4E2B}");
  EXPECT_EQ(searches[0].Keyword, u"one");
  const TFakeParams defaultOptions = {
      {u"effect-keyboard", u"false"}, {u"action", u"QuillmarSearch"}, {u"from-tab-guid", tab->GuidText()}};
  EXPECT_EQ(searches[0].Options, defaultOptions);
  EXPECT_EQ(searches[1].EngineGuid, u"{B}");
  EXPECT_EQ(ParamValue(searches[1].Options, u"action"), u"ActB");
  EXPECT_EQ(searches[2].EngineGuid, u"{M}");

  EXPECT_EQ(Counter(u"client.SmartSearch-DefaultSearch"), 1);
  EXPECT_EQ(Counter(u"client.SmartSearch-Search"), 1);
  EXPECT_EQ(Counter(u"client.SmartSearch-MenuSearch"), 2);
  EXPECT_EQ(Counter(u"client.SmartSearch-SiteSearch"), 0);
  EXPECT_EQ(host_.SearchHistory().Keywords(),
            (std::vector<std::u16string>{u"one", u"two", u"three", u"four"}));
  EXPECT_EQ(host_.SearchBoxText(), u"four");
}

TEST_F(SmartSearchEnginesTest, NoTabNoPrivateHistoryAndMissingServices) {
  // Without an active tab the options carry no tab guid and a direct search an empty one.
  engines_.SearchByEngine(u"{G}", u"Act", u"kw");
  ASSERT_EQ(host_.SearchEngines().Searches().size(), 1u);
  EXPECT_FALSE(HasParam(host_.SearchEngines().Searches()[0].Options, u"from-tab-guid"));
  host_.SetHostReactions(false);
  host_.Events().ClearEventLog();
  engines_.SearchDirect(u"r", 16, u"kw", 2);
  EXPECT_EQ(Sent()[0].Value(u"from-tab-guid"), u"");
  EXPECT_EQ(Sent()[0].Value(u"method"), u"2");

  // A private group leaves no search history.
  Open(u"https://a.example/");
  host_.Model().SetPrivate(host_.Model().ActiveGroup(), true);
  const auto historyBefore = host_.SearchHistory().Keywords().size();
  engines_.SearchByEngine(u"{G}", u"Act", u"secret");
  EXPECT_EQ(host_.SearchHistory().Keywords().size(), historyBefore);
  EXPECT_EQ(Sent().back().Value(u"keyword"), u"secret");

  // Without the search manager the search stops: no history, no search box text.
  host_.Model().SetPrivate(host_.Model().ActiveGroup(), false);
  host_.RemoveService("SearchManager");
  host_.Events().ClearEventLog();
  engines_.DefaultSearch(u"lost");
  EXPECT_EQ(host_.SearchEngines().Searches().size(), 2u);
  EXPECT_EQ(host_.SearchHistory().Keywords().size(), historyBefore);
  EXPECT_TRUE(Sent().empty());
  EXPECT_EQ(Counter(u"client.SmartSearch-DefaultSearch"), 1);

  // Without the event service a direct search still goes into the history.
  host_.RemoveService("EventService");
  engines_.SearchDirect(u"r", 256, u"quiet", 0);
  EXPECT_EQ(host_.SearchHistory().Keywords().back(), u"quiet");
}

}  // namespace
}  // namespace qx
