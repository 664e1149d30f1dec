#include <gtest/gtest.h>

#include "fakehost/FakeDictionary.h"
#include "fakehost/FakeEnginePainter.h"
#include "fakehost/FakeGlobalStorage.h"
#include "fakehost/FakeStringDictionary.h"
#include "fakehost/FakeTestUtil.h"
#include "fakehost/FakeVariant.h"
#include "host/HostKeys.h"
#include "toolkit/Bitmap.h"

namespace qx {
namespace {

using test::Steps;

class FakeBrowserCommands : public ::testing::Test {
 protected:
  void SetUp() override { tab_ = browser_.OpenTab(u"https://a.example/"); }
  HResult Run(const char16_t* command, TFakeParams params) {
    auto dictionary = MakeCom<TFakeStringDictionary>(std::move(params));
    return tab_->Browser()->Execute(command, dictionary.get(), 0);
  }
  std::vector<TFakeEventRecord> Answers() {
    std::vector<TFakeEventRecord> answers;
    for (const auto& record : browser_.EventLog())
      if (record.Id == u"Browser.ExecuteJavascript") answers.push_back(record);
    return answers;
  }

  TFakeBrowser browser_;
  ComPtr<TFakeTab> tab_;
};

TEST_F(FakeBrowserCommands, SelectionScriptIsAnsweredWithThePagesSelection) {
  browser_.SelectText(tab_.get(), u"selected words");
  browser_.ClearEventLog();
  const char16_t* script =
      u"(function (){var ret = \"\";var sel = window.getSelection(); if (sel && (!sel.isCollapsed)) ret = "
      u"sel.toString();return ret;})()";
  ASSERT_EQ(Run(u"ExecuteJavascript", {{u"code", script}, {u"script-id", u"{G}_1"}}), kOk);
  auto answers = Answers();
  ASSERT_EQ(answers.size(), 1u);
  EXPECT_EQ(answers[0].Value(u"event"), u"Result");
  EXPECT_EQ(answers[0].Value(u"browser-id"), tab_->Browser()->GuidText());
  EXPECT_EQ(answers[0].Value(u"script-id"), u"{G}_1");
  EXPECT_EQ(answers[0].Value(u"result"), u"selected words");

  tab_->Browser()->Page().ScriptResults[u"doneCabinet()"] = u"ok";
  Run(u"ExecuteJavascript", {{u"code", u"doneCabinet()"}, {u"script-id", u"{G}_2"}});
  Run(u"ExecuteJavascript", {{u"code", u"unknown()"}, {u"script-id", u"{G}_3"}});
  Run(u"ExecuteJavascript", {{u"code", u"noAnswer()"}, {u"script-id", u""}});
  answers = Answers();
  ASSERT_EQ(answers.size(), 3u);
  EXPECT_EQ(answers[1].Value(u"result"), u"ok");
  EXPECT_EQ(answers[2].Value(u"result"), u"");
}

TEST_F(FakeBrowserCommands, ScriptAnswersCanBePostedOrLostAndBlockedScriptsNeedForce) {
  browser_.SelectText(tab_.get(), u"x");
  browser_.ClearEventLog();
  browser_.Model().ScriptAnswer = TFakeTabModel::EScriptAnswer::Posted;
  Run(u"ExecuteJavascript", {{u"code", u"document.getSelection()"}, {u"script-id", u"s1"}});
  EXPECT_EQ(browser_.Events().PendingPosts(), 1u);
  EXPECT_EQ(browser_.RunPending(), 1u);
  browser_.Model().ScriptAnswer = TFakeTabModel::EScriptAnswer::Never;
  Run(u"ExecuteJavascript", {{u"code", u"document.getSelection()"}, {u"script-id", u"s2"}});
  EXPECT_EQ(Answers().size(), 1u);

  browser_.Model().ScriptAnswer = TFakeTabModel::EScriptAnswer::Immediate;
  tab_->Browser()->Page().ScriptsBlocked = true;
  Run(u"ExecuteJavascript", {{u"code", u"a()"}, {u"script-id", u"s3"}});
  EXPECT_EQ(Answers().size(), 1u);
  Run(u"ExecuteJavascript", {{u"code", u"a()"}, {u"script-id", u"s4"}, {u"force-enable-script", u"true"}});
  EXPECT_EQ(Answers().size(), 2u);
}

TEST_F(FakeBrowserCommands, SnapshotAnswersInTheHostDictionary) {
  auto request = MakeCom<TFakeDictionary>();
  request->SetValue(u"width", TFakeVariant::FromText(u"96").get());
  request->SetValue(u"height", TFakeVariant::FromText(u"47").get());
  auto* asStrings = reinterpret_cast<IQxIStringDictionary*>(static_cast<IQxIDictionary*>(request.get()));
  tab_->Browser()->Page().SnapshotFails = true;
  EXPECT_EQ(tab_->Browser()->Execute(u"snapshot", asStrings, 0), kFail);
  tab_->Browser()->Page().SnapshotFails = false;
  ASSERT_EQ(tab_->Browser()->Execute(u"snapshot", asStrings, 0), kOk);  // the engine paints the page
  TBitmap painted;
  auto painting = request->Find(u"result").As<IQxIGlobalStoreItem>();
  ASSERT_TRUE(painting);
  std::int32_t paintedSize = 0;
  const void* paintedBytes = nullptr;
  painting->GetSize(&paintedSize);
  painting->GetData(&paintedBytes);
  painted.LoadFromMemory(static_cast<const std::uint8_t*>(paintedBytes),
                         static_cast<std::size_t>(paintedSize));
  EXPECT_EQ(painted.Width(), 96);
  EXPECT_EQ(painted.PixelColor(0, 0), PageSnapshotColour(tab_->Browser()->TextValue(browser_key::Uri)));

  int askedWidth = 0;
  browser_.Model().SnapshotProvider = [&](TFakeWebView&, int width, int) {
    askedWidth = width;
    return std::optional<std::vector<std::uint8_t>>(std::vector<std::uint8_t>{0x89, 'P', 'N', 'G'});
  };
  ASSERT_EQ(tab_->Browser()->Execute(u"snapshot", asStrings, 0), kOk);
  EXPECT_EQ(askedWidth, 96);
  auto result = request->Find(u"result").As<IQxIGlobalStoreItem>();
  ASSERT_TRUE(result);
  std::int32_t size = 0;
  result->GetSize(&size);
  EXPECT_EQ(size, 4);
  EXPECT_EQ(Run(u"snapshot", {{u"width", u"96"}}), kInvalidArg);  // a string dictionary cannot carry it
  EXPECT_EQ(tab_->Browser()->Execute(u"snapshot", nullptr, 0), kInvalidArg);
}

TEST_F(FakeBrowserCommands, BackFocusRefreshPostAndUnknownCommands) {
  EXPECT_EQ(Run(u"goback", {}), kFail);
  browser_.Navigate(tab_.get(), u"https://b.example/");
  browser_.ClearEventLog();
  ASSERT_EQ(Run(u"goback", {}), kOk);
  EXPECT_EQ(tab_->TextValue(tab_key::Uri), u"https://a.example/");
  EXPECT_TRUE(tab_->Browser()->BackHistory().empty());

  ASSERT_EQ(Run(u"focus", {}), kOk);
  EXPECT_EQ(browser_.Model().FocusedBrowser(), tab_->Browser());
  browser_.ClearEventLog();
  ASSERT_EQ(Run(u"refresh", {}), kOk);
  EXPECT_EQ(Steps(browser_.EventLog()), std::vector<std::string>{"Browser.Changed:OnBrowseBegin"});
  ASSERT_EQ(Run(u"post", {{u"uri", u"https://form.example/"}, {u"post", u"a=1"}}), kOk);
  EXPECT_EQ(tab_->TextValue(tab_key::Uri), u"https://form.example/");
  EXPECT_EQ(tab_->Browser()->TextValue(u"post"), u"a=1");
  EXPECT_EQ(Run(u"post", {}), kInvalidArg);
  EXPECT_EQ(Run(u"UpdateSecurity", {}), kOk);
  EXPECT_EQ(Run(u"explode", {}), kFail);
  EXPECT_EQ(tab_->Browser()->Execute(nullptr, nullptr, 0), kInvalidArg);

  const auto& commands = browser_.Model().Commands();
  ASSERT_GE(commands.size(), 2u);
  EXPECT_EQ(commands.back().Command, u"explode");
  EXPECT_EQ(commands.back().Result, kFail);
  EXPECT_EQ(commands.back().TabId, tab_->GuidText());
}

TEST_F(FakeBrowserCommands, ValuesSetThroughTheInterfacesAnnounceChanges) {
  browser_.ClearEventLog();
  auto uri = TFakeVariant::FromText(u"https://b.example/");
  ASSERT_EQ(tab_->Browser()->SetValue(u"uri", uri.get()), kOk);  // the browser navigates
  EXPECT_EQ(tab_->TextValue(tab_key::Uri), u"https://b.example/");
  browser_.ClearEventLog();
  auto lock = TFakeVariant::FromText(u"locked");
  tab_->SetValue(u"status-navi-lock", lock.get());
  tab_->SetValue(u"status-navi-lock", lock.get());  // unchanged: no second event
  const auto log = browser_.EventLog();
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0].Value(u"key"), u"status-navi-lock");
  EXPECT_EQ(log[0].Value(u"value"), u"locked");
  ComPtr<IQxIVariant> value;
  EXPECT_EQ(tab_->GetValue(u"missing", value.put()), kFail);
  EXPECT_EQ(tab_->Browser()->GetValue(u"missing", value.put()), kFail);
}

TEST_F(FakeBrowserCommands, TabsMadeThroughTheInterfaces) {
  ComPtr<IUnknown> object;
  ComPtr<IQxIPluginService> plugins;
  browser_.ServiceCore()->QueryService("PluginService.QxV3", object.put());
  plugins = object.As<IQxIPluginService>();
  plugins->GetPlugin("TabManager.QxV3", nullptr, object.put());
  auto manager = object.As<IQxITabManager>();
  plugins->GetPlugin("BrowserManager.QxV3", nullptr, object.put());
  auto browsers = object.As<IQxIBrowserManager>();
  ASSERT_TRUE(manager && browsers);

  ComPtr<IQxITab> tab;
  ASSERT_EQ(manager->CreateTab(tab.put()), kOk);
  ComPtr<IQxITabGroup> group;
  EXPECT_EQ(tab->GetTabGroup(group.put()), kFail);
  ASSERT_EQ(manager->GetActiveTabGroup(group.put()), kOk);
  ASSERT_EQ(group->InsertTab(tab.get(), 0), kOk);
  std::int32_t index = -1;
  ASSERT_EQ(group->IndexOfTab(tab.get(), &index), kOk);
  EXPECT_EQ(index, 0);
  EXPECT_EQ(group->AddTab(tab.get()), kFail);  // already placed

  ComPtr<IQxIBrowser> view;
  ASSERT_EQ(browsers->CreateBrowser(u"", u"https://c.example/", 0, view.put()), kOk);
  ASSERT_EQ(tab->SetBrowser(view.get()), kOk);
  ComPtr<IQxIBrowser> back;
  ASSERT_EQ(tab->GetBrowser(back.put()), kOk);
  EXPECT_EQ(back.get(), view.get());
  ComPtr<IQxIBrowserList> list;
  ASSERT_EQ(browsers->GetBrowserList(list.put()), kOk);
  std::int32_t id = 0;
  ASSERT_EQ(list->IdOf(view.get(), &id), kOk);
  ASSERT_EQ(list->ById(id, back.put()), kOk);
  EXPECT_EQ(back.get(), view.get());
  auto* fake = browser_.Model().FindBrowser(view.get());
  ASSERT_EQ(browsers->BrowserByGuid(fake->GuidText().c_str(), back.put()), kOk);
  EXPECT_EQ(back.get(), view.get());
  EXPECT_EQ(browsers->BrowserByGuid(u"nonsense", back.put()), kFail);

  ASSERT_EQ(manager->SetActiveTab(tab.get()), kOk);
  ComPtr<IQxITab> active;
  ASSERT_EQ(manager->GetActiveTab(active.put()), kOk);
  EXPECT_EQ(active.get(), tab.get());
  ComPtr<IQxITabSection> section;
  ASSERT_EQ(group->GetSection(0, section.put()), kOk);
  std::int32_t count = 0;
  section->GetTabCount(&count);
  EXPECT_EQ(count, 2);
  ASSERT_EQ(group->InsertSectionWithTab(1, tab.get()), kOk);
  group->GetSectionCount(&count);
  EXPECT_EQ(count, 2);
  ASSERT_EQ(group->MoveTabToSection(tab.get(), section.get(), 0), kOk);
  group->GetSectionCount(&count);
  EXPECT_EQ(count, 1);
  EXPECT_EQ(group->SelectTab(nullptr), kInvalidArg);
  EXPECT_EQ(manager->SetActiveTabGroup(nullptr), kInvalidArg);
  ASSERT_EQ(group->SetMenuTab(tab.get()), kOk);
  EXPECT_EQ(browser_.ActiveGroup()->MenuTab(), browser_.Model().FindTab(tab.get()));
  ASSERT_EQ(group->SetMenuTab(nullptr), kOk);
  EXPECT_EQ(browser_.ActiveGroup()->MenuTab(), nullptr);
  ASSERT_EQ(group->SetValue(u"title", u"Renamed"), kOk);
  ComPtr<IQxIString> title;
  ASSERT_EQ(group->GetValue(u"title", title.put()), kOk);
  EXPECT_EQ(ReadString(title.get()), u"Renamed");
}

}  // namespace
}  // namespace qx
