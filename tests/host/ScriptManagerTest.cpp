#include "WrapFixture.h"
#include "host/HostKeys.h"
#include "host/WebkitScriptManager.h"

namespace qx {
namespace {

class ScriptManagerTest : public WrapFixture {
 protected:
  void SetUp() override {
    tab_ = Open(u"http://page/", WithEngine(std::u16string(kChromiumEngineClassGuid)));
    wrap_->BrowserOfTab(tab_, browser_);
    manager_ = MakeCom<TWebkitScriptManagerImpl>(wrap_.get(), false, browser_.get());
  }

  void Answer(std::u16string_view browserId, std::u16string_view scriptId, std::u16string_view result) {
    host_.Events().FireFromHost(u"Browser.ExecuteJavascript", {{u"event", u"result"},
                                                               {u"browser-id", std::u16string(browserId)},
                                                               {u"script-id", std::u16string(scriptId)},
                                                               {u"result", std::u16string(result)}});
  }

  TString BrowserId() { return wrap_->BrowserIdTextOfBrowser(browser_.get()); }

  TFakeTab* tab_ = nullptr;
  ComPtr<IQxIBrowser> browser_;
  ComPtr<TWebkitScriptManagerImpl> manager_;
};

TEST_F(ScriptManagerTest, AnswerInsideTheCallIsTaken) {
  host_.Model().ScriptAnswer = TFakeTabModel::EScriptAnswer::Immediate;
  TString result;
  EXPECT_TRUE(manager_->ExecuteAndWait(u"1+1", result));
  EXPECT_EQ(os_->Now(), 0u);  // no waiting
}

TEST_F(ScriptManagerTest, AnswerFromAnotherThreadIsTakenWhilePumping) {
  // Delivered on the host's worker thread, handed over to this one by the delay task.
  host_.Events().SetDeliverOnWorkerThread(true);
  TString result;
  EXPECT_TRUE(manager_->ExecuteAndWaitPumping(u"document.title", result));
  EXPECT_LT(os_->Now(), kScriptWaitLimitMs);
}

TEST_F(ScriptManagerTest, NoAnswerRunsOutAfterTheLimit) {
  host_.Model().ScriptAnswer = TFakeTabModel::EScriptAnswer::Never;
  TString result = u"stale";
  EXPECT_FALSE(manager_->ExecuteAndWaitPumping(u"x", result));
  EXPECT_TRUE(result.empty());
  EXPECT_GE(os_->Now(), kScriptWaitLimitMs);
  EXPECT_EQ(manager_->ExecuteFloat(u"x"), 0.0);
}

TEST_F(ScriptManagerTest, FinalizingLeavesAtOnce) {
  host_.Model().ScriptAnswer = TFakeTabModel::EScriptAnswer::Never;
  wrap_->SetFinalizing(true);
  TString result;
  EXPECT_FALSE(manager_->ExecuteAndWaitPumping(u"x", result));
  EXPECT_LT(os_->Now(), 10u);
}

TEST_F(ScriptManagerTest, ScriptIdsDifferInTheSequenceNumber) {
  host_.Model().ScriptAnswer = TFakeTabModel::EScriptAnswer::Never;
  manager_->ExecuteNoResult(u"a");
  TString result;
  wrap_->SetFinalizing(true);
  manager_->ExecuteAndWait(u"b", result);
  manager_->ExecuteAndWait(u"c", result);
  std::vector<TString> ids;
  for (const auto& command : host_.Model().Commands())
    if (command.Command == u"ExecuteJavascript") ids.push_back(ParamValue(command.Parameters, u"script-id"));
  ASSERT_EQ(ids.size(), 3u);
  EXPECT_TRUE(ids[0].empty());
  EXPECT_EQ(ids[1], manager_->GuidStr() + u"_1");
  EXPECT_EQ(ids[2], manager_->GuidStr() + u"_2");
}

TEST_F(ScriptManagerTest, AnswersForOtherManagersOrBrowsersAreIgnored) {
  host_.Model().ScriptAnswer = TFakeTabModel::EScriptAnswer::Never;
  ComPtr<TWebkitScriptManagerImpl> other =
      MakeCom<TWebkitScriptManagerImpl>(wrap_.get(), false, browser_.get());
  // Answer the next id of each manager before it asks, so the wait sees it at once.
  Answer(BrowserId(), other->GuidStr() + u"_1", u"theirs");
  Answer(u"999", manager_->GuidStr() + u"_1", u"wrong browser");
  TString result;
  EXPECT_FALSE(manager_->ExecuteAndWait(u"x", result));
  Answer(BrowserId(), manager_->GuidStr() + u"_2", u"mine");
  EXPECT_TRUE(manager_->ExecuteAndWait(u"x", result));
  EXPECT_EQ(result, u"mine");
}

TEST_F(ScriptManagerTest, SelectedTextComesFromThePage) {
  host_.Model().ScriptAnswer = TFakeTabModel::EScriptAnswer::Immediate;
  tab_->Browser()->Page().Selection = u"selected words";
  TString text;
  EXPECT_TRUE(wrap_->SelectedTextOfActiveBrowser(text));
  EXPECT_EQ(text, u"selected words");
}

}  // namespace
}  // namespace qx
