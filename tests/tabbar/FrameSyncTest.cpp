#include "tabbar/FrameFixture.h"

namespace qx {
namespace {

// Host edits of every kind the strip must follow, chosen by a seeded generator.
class RandomHostEdits {
 public:
  // insideSections: new tabs may also open right after another, not only at a section's end.
  RandomHostEdits(TFakeHost& host, TFakeTabGroup* group, unsigned seed, bool insideSections = false)
      : host_(host), group_(group), random_(seed), insideSections_(insideSections) {}

  void Run(int edits) {
    for (int i = 0; i < edits; ++i) Edit();
  }

 private:
  int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
  TFakeTab* AnyTab() {
    const auto tabs = group_->FlatTabs();
    return tabs.empty() ? nullptr : tabs[static_cast<std::size_t>(Pick(static_cast<int>(tabs.size())))].get();
  }
  void Edit() {
    const int sections = static_cast<int>(group_->Sections().size());
    TFakeTab* tab = AnyTab();
    switch (tab ? Pick(6) : 0) {
      case 0: {
        TFakeOpenTab how;
        how.Group = group_;
        how.Section = Pick(sections + 1);
        if (insideSections_ && Pick(2) == 0) how.After = tab;
        how.Activate = Pick(2) == 0;
        how.NoBrowser = true;
        host_.Model().OpenTab(u"about:blank", how);
        break;
      }
      case 1:
        host_.Model().CloseTab(tab);
        break;
      case 2:
        host_.Model().MoveTabTo(tab, Pick(static_cast<int>(group_->FlatTabs().size())));
        break;
      case 3: {
        const int section = Pick(sections + 1);
        host_.Model().MoveTab(tab, section, 0, section == sections);
        break;
      }
      case 4:
        host_.Model().Activate(tab);
        break;
      default:
        if (TFakeTab* other = AnyTab()) host_.Model().SwapTabs(tab, other);
        break;
    }
  }

  TFakeHost& host_;
  TFakeTabGroup* group_;
  std::mt19937 random_;
  bool insideSections_;
};

TEST_F(FrameTest, OneSyncAfterRandomHostEditsMirrorsTabsSectionsOrderAndSelection) {
  TTabbarFrame& frame = MakeFrame();
  const std::pair<unsigned, int> runs[] = {{1, 20}, {2, 200}, {3, 2000}};
  for (const auto& [seed, edits] : runs) {
    SCOPED_TRACE(seed);
    RandomHostEdits random(host_, group_, seed);
    // Held off like a drag does, so the one sync below has all of it to do.
    frame.SetWaitUpdateTabbar(true);
    random.Run(edits);
    frame.SetWaitUpdateTabbar(false);
    frame.UpdateTabbar(false, true);
    ASSERT_EQ(MirrorText(), HostText());
    ASSERT_NE(group_->ActiveTab(), nullptr);
    ASSERT_NE(frame.ActiveTab(), nullptr);
    EXPECT_EQ(frame.ActiveTab()->TabGuid(), GuidOf(group_->ActiveTab()));
    EXPECT_EQ(frame.TabScrollBox()->Content()->ChildrenCount(), frame.TabImageCount());
    Advance(1000);
  }
  // Then one edit at a time, as the host's events bring them: single new tabs go into
  // the mirror in place.
  host_.Events().FireFromHost(u"Client.Initialized", {});
  RandomHostEdits random(host_, group_, 4, true);
  for (int i = 0; i < 300; ++i) {
    random.Run(1);
    ASSERT_EQ(MirrorText(), HostText()) << i;
    ASSERT_EQ(frame.ActiveTab() ? frame.ActiveTab()->TabGuid() : u"", GuidOf(group_->ActiveTab())) << i;
    ASSERT_EQ(frame.TabScrollBox()->Content()->ChildrenCount(), frame.TabImageCount()) << i;
  }
}

TEST_F(FrameTest, ASyncWithNothingChangedTouchesNoScene) {
  for (int i = 0; i < 5; ++i) Open(u"about:blank", i < 3 ? 0 : 1);
  TTabbarFrame& frame = MakeFrame();
  frame.UpdateTabbar(true, true);
  Advance(1000);
  TTabImageSection* first = frame.TabList()->Sections(0);
  const float width = frame.TabbarWidth();
  const std::vector<TFmxObject*> children = frame.TabScrollBox()->Content()->ChildList();

  frame.UpdateTabbar(false, true);
  EXPECT_EQ(frame.TabList()->Sections(0), first);
  EXPECT_EQ(frame.TabScrollBox()->Content()->ChildList(), children);
  EXPECT_FALSE(frame.TabbarWidthAnimation()->Running());
  EXPECT_FALSE(frame.ActiveTabIndicatorFloatAnimation()->Running());
  for (std::int32_t i = 0; i < frame.TabImageCount(); ++i)
    EXPECT_FALSE(frame.GetTabImages(i)->LeftAnimation()->Running());
  EXPECT_EQ(frame.TabbarWidth(), width);
  // A later animated pass at the same width has nothing to widen either.
  frame.layoutSubviews(true);
  EXPECT_FALSE(frame.TabbarWidthAnimation()->Running());
}

TEST_F(FrameTest, AMoveToAnotherSectionReusesTheImages) {
  TFakeTab* moved = Open(u"about:blank", 0);
  Open(u"about:blank", 0);
  Open(u"about:blank", 1);
  TTabbarFrame& frame = MakeFrame();
  frame.UpdateTabbar(true, false);
  std::vector<TTabImage*> before;
  for (std::int32_t i = 0; i < frame.TabImageCount(); ++i) before.push_back(frame.GetTabImages(i));

  frame.SetWaitUpdateTabbar(true);
  host_.Model().MoveTab(moved, 1, 1);
  frame.SetWaitUpdateTabbar(false);
  frame.UpdateTabbar(false, true);
  ASSERT_EQ(MirrorText(), HostText());
  EXPECT_EQ(frame.TabList()->Sections(1)->TabImages(1), before[0]);
  EXPECT_EQ(frame.GetTabImages(0), before[1]);
  EXPECT_EQ(frame.GetTabImages(1), before[2]);
}

TEST_F(FrameTest, SelectionIsSentToTheHostOnlyWhenItDiffersFromTheHosts) {
  Open();
  TFakeTab* second = Open();
  TTabbarFrame& frame = MakeFrame();
  frame.UpdateTabbar(true, false);
  auto selects = [&] {
    std::vector<std::u16string> ids;
    for (const TFakeEventRecord& record : host_.Events().EventLog())
      if (record.Id == u"TabBar.SelectTab") ids.push_back(record.Value(u"tab-id"));
    return ids;
  };
  EXPECT_TRUE(selects().empty());
  ASSERT_EQ(frame.ActiveTab()->TabGuid(), GuidOf(second));

  frame.SetActiveTabImage(frame.GetTabImages(0), false);
  const std::vector<std::u16string> sent = selects();
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_EQ(sent[0], frame.GetTabImages(0)->TabGuid());
  // The host selected it and said so; that echo sends nothing back.
  EXPECT_EQ(GuidOf(group_->ActiveTab()), sent[0]);
  EXPECT_EQ(selects().size(), 1u);
}

}  // namespace
}  // namespace qx
