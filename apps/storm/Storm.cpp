#include "Storm.h"

#include <stdlib.h>

#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <vector>

#include "base/Text.h"
#include "fakehost/FakeEnginePainter.h"
#include "fakehost/FakeHost.h"
#include "host/HostKeys.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"
#include "runtime/MMTimerService.h"
#include "tabbar/TabbarForm.h"
#include "tabbar/TitleForm.h"
#include "toolkit/Application.h"

namespace qx {
namespace {

constexpr std::size_t kMaxGroups = 4;
constexpr std::size_t kMaxTabs = 40;
// The event queue runs a task a millisecond, the capture queue one in 200.
constexpr int kEventStep = 4;
constexpr int kCaptureStep = 200;
// Far more than any queue needs: a thumbnail that keeps failing takes eleven tries.
constexpr int kMaxDrainSteps = 20000;
// Event ids the strip subscribes, and the id spelled differently at removal.
const char16_t* const kStripEvents[] = {u"TabGroup.Changed",
                                        u"TabBarControl.Update",
                                        u"TabBarControl.UpdateTab",
                                        u"BookmarkManagerV3.Update",
                                        u"Browser.Changed",
                                        u"Client.Initialized",
                                        u"action",
                                        u"HoldAndGo.Start",
                                        u"ChromiumEngine.ThumbnailCreated",
                                        u"MainWindow.ActiveChanged",
                                        u"XmlWidget.Update",
                                        u"XmlWidget.UpdateNow",
                                        u"Tab.Changed",
                                        u"Cabinet.DragAndDrop",
                                        u"Cabinet.CreateBlurImage",
                                        u"QxCabinetDataManager.Cabinet.Enter",
                                        u"QxCabinetDataManager.Cabinet.Exit",
                                        u"TabManager.Changed",
                                        u"XmlWidget.MenuHide",
                                        u"TabGroupBar.EditTitle",
                                        u"Tab.LoadingStop",
                                        u"TabGroupBar.TogglePrivate"};

std::filesystem::path MakeStormFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-storm-XXXXXX").string();
  const char* made = mkdtemp(pattern.data());
  if (!made) throw std::runtime_error("mkdtemp failed");
  return made;
}

class TStormRun {
 public:
  explicit TStormRun(const TStormOptions& options)
      : FOptions(options), FRandom(options.Seed), FDir(MakeStormFolder()) {
    TToolkit::Finalize();
    FHost.UseFolder(FDir / "host");
    std::filesystem::create_directories(FDir / "skin");
    FWrap = MakeCom<TServiceCoreWrapImpl>(FHost.ServiceCore().get(), true);
    FImageRes = std::make_unique<TTabbarImageRes>((FDir / "skin").u16string());
    FHost.Model().SwitchGroup(FHost.Model().AddGroup(u"Group 1").get());
    // The host always has its default icon; without any the title popup never shows.
    TBitmap icon(16, 16);
    icon.Clear(0xFF2080C0);
    std::filesystem::create_directories(FHost.Favicons().DefaultPath().parent_path());
    icon.SaveToFile(FHost.Favicons().DefaultPath().u16string());
    // The toolkit's timers run on the system's clock, as they do in the module.
    CurrentTimerService();
    FTimers.emplace();
    FFrame = std::make_unique<TTabbarFrame>(nullptr, FImageRes.get(), nullptr, FWrap.get(), nullptr);
    FFrame->SetBounds(0, 0, 1000, 54);
    FHost.Events().FireFromHost(u"Client.Initialized", {});
  }

  ~TStormRun() {
    FFrame.reset();
    FTimers.reset();
    FWrap = nullptr;
    FImageRes.reset();
    TTabImage::ReleaseBlankPicture();
    TToolkit::Finalize();
    std::error_code ignored;
    std::filesystem::remove_all(FDir, ignored);
  }

  TStormResult Run() {
    TStormResult result;
    std::uniform_int_distribution<int> burst(1, std::max(FOptions.MaxActionsPerDrain, 1));
    int untilDrain = burst(FRandom);
    for (int i = 0; i < FOptions.Actions; ++i) {
      Act(i);
      ++result.ActionsRun;
      if (--untilDrain > 0 && i + 1 < FOptions.Actions) continue;
      untilDrain = burst(FRandom);
      ++result.Drains;
      if (!Drain()) return Fail(result, "the strip's queues never emptied");
      if (std::string difference = Compare(result.ThumbnailsShown); !difference.empty())
        return Fail(result, difference);
    }
    FFrame.reset();
    for (const char16_t* id : kStripEvents)
      if (FHost.Events().ListenerCount(id) != 0)
        return Fail(result, "a listener for " + ToUtf8(id) + " outlived the strip");
    result.TitlePopupsChecked = FTitlesSeen;
    result.Passed = true;
    return result;
  }

 private:
  TStormResult& Fail(TStormResult& result, const std::string& what) {
    std::ostringstream text;
    text << "seed " << FOptions.Seed << ", after action " << result.ActionsRun << ": " << what
         << "\nlast actions:";
    for (const std::string& line : FRecent) text << "\n  " << line;
    result.Failure = text.str();
    return result;
  }

  int Pick(int count) { return std::uniform_int_distribution<int>(0, std::max(count, 1) - 1)(FRandom); }
  bool Chance(int percent) { return Pick(100) < percent; }

  static std::vector<TFakeTab*> TabsOf(const TFakeTabGroup* group) {
    std::vector<TFakeTab*> tabs;
    for (const auto& section : group->Sections())
      for (const auto& tab : section->Tabs()) tabs.push_back(tab.get());
    return tabs;
  }
  std::vector<TFakeTab*> AllTabs() {
    std::vector<TFakeTab*> tabs;
    for (const auto& group : FHost.Model().Groups())
      for (TFakeTab* tab : TabsOf(group.get())) tabs.push_back(tab);
    return tabs;
  }
  // Mostly a tab of the shown group, where the strip has something to do.
  TFakeTab* SomeTab() {
    std::vector<TFakeTab*> tabs = Chance(80) ? TabsOf(FHost.Model().ActiveGroup()) : AllTabs();
    if (tabs.empty()) tabs = AllTabs();
    return tabs.empty() ? nullptr : tabs[static_cast<std::size_t>(Pick(static_cast<int>(tabs.size())))];
  }
  TFakeTabGroup* SomeGroup() {
    const auto& groups = FHost.Model().Groups();
    return groups[static_cast<std::size_t>(Pick(static_cast<int>(groups.size())))].get();
  }
  std::u16string SomeUri() {
    return u"https://site" + IntToStr(Pick(40)) + u".example/p" + IntToStr(Pick(5));
  }
  static std::int32_t SectionIndexOf(const TFakeTab* tab) {
    const auto& sections = tab->Group()->Sections();
    for (std::size_t s = 0; s < sections.size(); ++s)
      if (sections[s].get() == tab->Section()) return static_cast<std::int32_t>(s);
    return 0;
  }

  void Record(std::string line) {
    if (FOptions.Trace) std::fprintf(FOptions.Trace, "%s\n", line.c_str());
    FRecent.push_back(std::move(line));
    if (FRecent.size() > 12) FRecent.pop_front();
  }

  void Act(int index) {
    const bool elsewhere = Chance(FOptions.OtherThreadPercent);
    FHost.Events().SetDeliverOnWorkerThread(elsewhere);
    std::string what = ActOnce();
    FHost.Events().SetDeliverOnWorkerThread(false);
    Record(std::to_string(index) + (elsewhere ? " [other thread] " : " ") + what);
  }

  std::string ActOnce() {
    TFakeTabModel& model = FHost.Model();
    TFakeTab* tab = SomeTab();
    int kind = Pick(100);
    // A browser of a few dozen tabs: beyond that, opening turns into closing.
    if (kind < 16 && AllTabs().size() > kMaxTabs) kind = 16;
    if (kind < 16 || !tab) {
      TFakeOpenTab how;
      how.Group = Chance(85) ? model.ActiveGroup() : SomeGroup();
      if (Chance(30)) how.Section = Pick(static_cast<int>(how.Group->Sections().size()) + 1);
      how.Activate = Chance(60);
      const std::u16string uri = Chance(10) ? u"about:blank" : SomeUri();
      ComPtr<TFakeTab> opened = model.OpenTab(uri, how);
      if (opened) FUris[opened->GuidText()].insert(uri);
      return "open " + ToUtf8(uri) + " in section " + std::to_string(how.Section);
    }
    const std::string name = ToUtf8(tab->GuidText()).substr(0, 9);
    if (kind < 28) {
      model.CloseTab(tab);
      return "close " + name;
    }
    if (kind < 38) {
      const std::int32_t section = SectionIndexOf(tab);
      const std::int32_t count = static_cast<std::int32_t>(tab->Section()->Tabs().size());
      const std::int32_t to = Pick(count);
      model.MoveTab(tab, section, to);
      return "move " + name + " within section " + std::to_string(section) + " to " + std::to_string(to);
    }
    if (kind < 46) {
      const std::int32_t sections = static_cast<std::int32_t>(tab->Group()->Sections().size());
      const std::int32_t section = Pick(sections);
      const std::int32_t count = static_cast<std::int32_t>(tab->Group()->Sections()[section]->Tabs().size());
      const std::int32_t to = Pick(count + 1);
      model.MoveTab(tab, section, to);
      return "move " + name + " to section " + std::to_string(section) + " at " + std::to_string(to);
    }
    if (kind < 50) {
      const std::int32_t sections = static_cast<std::int32_t>(tab->Group()->Sections().size());
      const std::int32_t at = Pick(sections + 1);
      model.MoveTab(tab, at, 0, true);
      return "new section " + std::to_string(at) + " with " + name;
    }
    if (kind < 62) {
      model.Activate(tab);
      return "select " + name;
    }
    if (kind < 67) {
      const std::u16string title = u"Title " + IntToStr(Pick(1000));
      model.SetTabText(tab, tab_key::Title, title);
      return "rename " + name + " to " + ToUtf8(title);
    }
    if (kind < 71) {
      const std::u16string uri = tab->TextValue(tab_key::Uri);
      FHost.Favicons().StoreFavicon(uri, PaintPageSnapshot(uri, 16, 16));
      return "favicon of " + ToUtf8(uri);
    }
    if (kind < 79) {
      if (Chance(50)) {
        const std::u16string uri = SomeUri();
        model.NavigateTab(tab, uri, u"Page " + IntToStr(Pick(100)));
        FUris[tab->GuidText()].insert(uri);
        return "navigate " + name + " to " + ToUtf8(uri);
      }
      model.FinishLoading(tab);
      return "finish loading " + name;
    }
    if (kind < 83) {
      if (model.Groups().size() < kMaxGroups && Chance(40)) {
        ComPtr<TFakeTabGroup> group =
            model.AddGroup(u"Group " + IntToStr(static_cast<std::int64_t>(model.Groups().size()) + 1));
        model.SwitchGroup(group.get());
        return "new group, switched to it";
      }
      model.SwitchGroup(SomeGroup());
      return "switch group";
    }
    if (kind < 86) {
      TFakeTabGroup* group = SomeGroup();
      const bool on = group->TextValue(group_key::Private) != u"true";
      model.SetPrivate(group, on);
      return on ? "group made private" : "group made public";
    }
    if (kind < 90) {
      model.SwapTabs(tab, SomeTab());
      return "swap " + name;
    }
    // A thumbnail arrives; now and then the engine cannot take the picture.
    if (TFakeWebView* browser = tab->Browser()) browser->Page().SnapshotFails = Chance(5);
    model.ThumbnailReady(tab);
    return "thumbnail of " + name;
  }

  std::size_t Pending() {
    // Tasks handed over by message reach their lists first.
    Platform().ProcessMessages();
    std::size_t pending = FFrame->DelayTask()->Count() + FHost.Events().PendingPosts();
    if (auto* shared = static_cast<TSharedDelayTaskImpl*>(FWrap->EventSharedDelayTask()))
      pending += shared->List().Count();
    return pending;
  }

  bool Drain() {
    for (int step = 0; step < kMaxDrainSteps; ++step) {
      FHost.Events().RunPosted();
      if (Pending() == 0) return true;
      // Only as far as the next queue needs: every simulated millisecond costs the
      // animation thread's ticks.
      FOs->AdvanceClock(FFrame->DelayTask()->Count() > 0 ? kCaptureStep : kEventStep);
    }
    return false;
  }

  std::string Compare(int& thumbnails) {
    TFakeTabGroup* group = FHost.Model().ActiveGroup();
    std::ostringstream host, mirror;
    for (const auto& section : group->Sections()) {
      // The strip sees the host's group through its filtered view, which leaves empty sections out.
      if (section->Tabs().empty()) continue;
      host << "|";
      for (const auto& tab : section->Tabs()) host << ToUtf8(tab->GuidText()).substr(1, 8) << ",";
    }
    std::set<TFmxObject*> mirrored;
    for (TTabImageSection* section : *FFrame->TabList()) {
      mirror << "|";
      for (TTabImageItem* item : *section) {
        mirror << ToUtf8(item->TabGuid()).substr(1, 8) << ",";
        if (TTabImage* image = AsTabImage(item)) mirrored.insert(image);
      }
    }
    if (host.str() != mirror.str())
      return "the strip shows " + mirror.str() + " but the host has " + host.str();

    const std::u16string hostActive = group->ActiveTab() ? group->ActiveTab()->GuidText() : u"";
    const std::u16string stripActive = FFrame->ActiveTab() ? FFrame->ActiveTab()->TabGuid() : u"";
    if (!SameText(hostActive, stripActive))
      return "the strip's active tab is " + ToUtf8(stripActive) + ", the host's " + ToUtf8(hostActive);

    std::size_t images = 0;
    for (TFmxObject* child : FFrame->TabScrollBox()->Content()->ChildList()) {
      if (!dynamic_cast<TTabImage*>(child)) continue;
      ++images;
      if (!mirrored.count(child)) return "a tab image stands in the strip that the mirror does not hold";
    }
    if (images != mirrored.size()) return "the mirror holds tab images the strip does not show";

    // The popup keeps the title it was shown with until it is shown again or fades, as the
    // host's title changes do not reach it; it must never carry another tab's title.
    if (const TTitleForm* popup = FFrame->TitleForm();
        popup && popup->Visible() && !popup->IsHidingOrHidden())
      if (const TFakeTab* tab = FHost.Model().TabByGuid(popup->CurrentTabId())) {
        ++FTitlesSeen;
        const std::u16string& shown = popup->lbTitle()->Text;
        if (shown != tab->TextValue(tab_key::Title) && !FTitles[tab->GuidText()].count(shown))
          return "the title popup shows \"" + ToUtf8(shown) + "\", never a title of tab " +
                 ToUtf8(tab->GuidText());
      }
    for (const TFakeTab* tab : AllTabs()) FTitles[tab->GuidText()].insert(tab->TextValue(tab_key::Title));

    // A cached picture is one the engine painted for a page this very tab showed.
    thumbnails = 0;
    for (TFmxObject* object : mirrored) {
      auto* image = static_cast<TTabImage*>(object);
      const TBitmap* picture = FFrame->TabImageCacheMgr()->GetCache(image->TabGuid());
      if (!picture) continue;
      ++thumbnails;
      bool known = false;
      for (const std::u16string& uri : FUris[image->TabGuid()])
        known = known || picture->PixelColor(0, 0) == PageSnapshotColour(uri);
      if (!known) return "tab " + ToUtf8(image->TabGuid()) + " keeps a picture of another page";
    }
    return {};
  }

  TStormOptions FOptions;
  std::mt19937 FRandom;
  std::filesystem::path FDir;
  TScopedPortableOs FOs;
  TFakeHost FHost;
  ComPtr<TServiceCoreWrapImpl> FWrap;
  std::unique_ptr<TTabbarImageRes> FImageRes;
  std::optional<TMMTimerServiceScope> FTimers;
  std::unique_ptr<TTabbarFrame> FFrame;
  int FTitlesSeen = 0;
  // Every title a tab was seen with at the end of a drain.
  std::map<std::u16string, std::set<std::u16string>> FTitles;
  std::map<std::u16string, std::set<std::u16string>> FUris;
  std::deque<std::string> FRecent;
};

}  // namespace

TStormResult RunStorm(const TStormOptions& options) {
  TStormRun run(options);
  return run.Run();
}

}  // namespace qx
