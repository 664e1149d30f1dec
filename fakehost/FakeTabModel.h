#pragma once

// The browser's tab model and the events it raises.
//
// Every change goes through this class, whether the module asked for it through a host
// interface or a scenario did, and raises the events a browser raises, in this order.
// G is the group's GUID text, T and N tab GUID texts, B a browser's "browser-id".
// "TabGroup.Changed" always carries "id" = G, "event", "timing"; "TabManager.Changed"
// carries "event" and "id" = G and is raised once, after the change.
//
// Add a tab (AddTab: at the end of the group; InsertTab: anywhere else):
//   1. TabGroup.Changed   {event=AddTab|InsertTab, timing=before, tab-id=T, index}
//   2. the tab enters the group (its section, its browser, its values are already set)
//   3. TabManager.Changed {event=AddTab|InsertTab, tab-id=T, index}
//   4. TabGroup.Changed   {event=AddTab|InsertTab, timing=after, tab-id=T, index}
// Select a tab (T the old active tab, empty for none; N the new one):
//   TabGroup.Changed before {event=SetActiveTab, tab-id=T, new-tab-id=N}, the change,
//   TabManager.Changed {event=SetActiveTab, tab-id=T, new-tab-id=N}, TabGroup.Changed after.
//   Selecting a tab of another group switches to that group first.
// Close a tab:
//   1. if it is the active tab of its group, the neighbour is selected first (the next
//      tab to the right, else to the left), with the events above
//   2. RemoveTab: before {tab-id=T}, removal, TabManager.Changed, after
//   3. if its section is now empty and not the group's only one, RemoveTabSection:
//      before {section-index}, removal, TabManager.Changed, after
//   4. its browser and its page data go.
// Move a tab inside its group, also into another or a new section:
//   SetTabIndex before {tab-id=T, index, old-index, section-index}, the move,
//   TabManager.Changed, after; then RemoveTabSection as above for a section left empty.
// Swap two tabs: SwapTab before {tab-id=T, new-tab-id=N}, the swap, TabManager.Changed, after.
// New group: TabManager.Changed {event=AddTabGroup, id=G}.
// Switch group: TabManager.Changed {event=SetCurrentGroup, id=G, old-id}, then
//   TabBarControl.Update {} so that the tab bar shows the other group.
// Group value (e.g. "private"): TabManager.Changed {event=SetProperty, id=G, key, value};
//   making a group private or public then raises TabGroupBar.TogglePrivate {id=G}.
// Tab value of a tab in a group, when its text form changes:
//   Tab.Changed {event=SetProperty, id=T, key, old-value, value}.
// Hide or show a tab: Tab.Changed {SetProperty, key=hidden}, then TabBarControl.Update {}.
// Navigate a tab (B its browser, if any):
//   1. Browser.Changed {event=OnBrowseBegin, browser-id=B, uri}
//   2. Tab.Changed for "uri", then for "title" when a title is given
//   3. TabBarControl.UpdateTab {tab-id=T}
//   A new tab's first navigation is only step 1, after its add (and select) events.
// Finish loading: Browser.Changed {event=OnBrowseComplete, browser-id=B, uri},
//   Tab.LoadingStop {tab-id=T}.
// Thumbnail ready: ChromiumEngine.ThumbnailCreated {tab-id=T, browser-id=B}.
// Script answer: Browser.ExecuteJavascript {event=Result, browser-id=B, script-id, result},
//   raised inside the "ExecuteJavascript" command, posted, or never (see EScriptAnswer).
//
// A listener may change the model from inside any of these events; each step checks
// again that what it works on is still there.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "fakehost/FakeCom.h"
#include "fakehost/FakeEventService.h"
#include "fakehost/FakeTab.h"
#include "fakehost/FakeTabGroup.h"
#include "fakehost/FakeTabSection.h"
#include "fakehost/FakeWebView.h"

namespace qx {

class TFakePageDataManager;

// One command a browser received, for tests to read.
struct TFakeBrowserCommand {
  std::u16string BrowserId;
  std::u16string TabId;
  std::u16string Command;
  TFakeParams Parameters;
  HResult Result = kOk;
};

// Where and how a new tab opens.
struct TFakeOpenTab {
  TFakeTabGroup* Group = nullptr;  // nil: the group of After, else the active group
  TFakeTab* After = nullptr;       // the new tab goes right after this one
  std::int32_t Section = -1;       // else at the end of this section (== count: a new one)
  bool Activate = true;
  bool NoBrowser = false;
  std::u16string Title;
  std::u16string EngineId;         // empty: the model's default engine
  std::optional<TGUID> Guid;
  TFakeParams Values;              // further tab values, set before the tab is added
};

class TFakeTabModel : public std::enable_shared_from_this<TFakeTabModel> {
 public:
  enum class EScriptAnswer { Immediate, Posted, Never };
  using TSnapshotProvider =
      std::function<std::optional<std::vector<std::uint8_t>>(TFakeWebView& browser, int width, int height)>;

  explicit TFakeTabModel(ComPtr<TFakeEventService> events);
  ~TFakeTabModel();
  TFakeTabModel(const TFakeTabModel&) = delete;
  TFakeTabModel& operator=(const TFakeTabModel&) = delete;

  TFakeEventService& Events() { return *events_.get(); }
  void SetPageData(TFakePageDataManager* pageData) { pageData_ = pageData; }

  // Settings.
  std::function<std::int64_t()> FileDateClock;  // "create-time" of new tabs
  std::u16string DefaultEngineId;
  EScriptAnswer ScriptAnswer = EScriptAnswer::Immediate;
  TSnapshotProvider SnapshotProvider;

  // Groups.
  const std::vector<ComPtr<TFakeTabGroup>>& Groups() const { return groups_; }
  TFakeTabGroup* ActiveGroup() const { return activeGroup_.get(); }
  std::int32_t GroupIndex(const TFakeTabGroup* group) const;
  ComPtr<TFakeTabGroup> AddGroup(std::u16string_view title);
  HResult SwitchGroup(TFakeTabGroup* group);
  HResult SetGroupValue(TFakeTabGroup* group, std::u16string_view key, std::u16string_view value);
  HResult SetPrivate(TFakeTabGroup* group, bool on);

  // Tabs and browsers.
  ComPtr<TFakeTab> CreateTab();
  ComPtr<TFakeTab> CreateTabWithGuid(const TGUID& guid);
  ComPtr<TFakeWebView> CreateBrowser(std::u16string_view engineId, std::u16string_view uri);
  HResult AttachBrowser(TFakeTab* tab, TFakeWebView* browser);
  // A browser value the engine keeps by itself, with no event.
  void SetBrowserText(TFakeWebView* browser, std::u16string_view key, std::u16string_view text);
  // Adds a detached tab: at the end (-1, -1), or at indexInSection of sectionIndex
  // (sectionIndex == section count makes a new last section).
  HResult AddTab(TFakeTabGroup* group, TFakeTab* tab, std::int32_t sectionIndex = -1,
                 std::int32_t indexInSection = -1);
  // Adds a detached tab before the tab now at flatIndex, in its section; at the end past the last.
  HResult InsertTabAt(TFakeTabGroup* group, TFakeTab* tab, std::int32_t flatIndex);
  // Makes a tab with its browser, adds it, selects it if asked, and starts its navigation.
  ComPtr<TFakeTab> OpenTab(std::u16string_view uri, const TFakeOpenTab& how = {});
  HResult SelectInGroup(TFakeTabGroup* group, TFakeTab* tab);
  HResult Activate(TFakeTab* tab);
  HResult CloseTab(TFakeTab* tab);
  // Moves an attached tab to indexInSection of a section of its group; sectionIndex equal
  // to the section count, or newSection, makes a new section there.
  HResult MoveTab(TFakeTab* tab, std::int32_t sectionIndex, std::int32_t indexInSection, bool newSection = false);
  // Moves a tab to a flat index of the group as it stands without the tab.
  HResult MoveTabTo(TFakeTab* tab, std::int32_t flatIndex);
  HResult SwapTabs(TFakeTab* a, TFakeTab* b);
  HResult InsertSectionWithTab(TFakeTabGroup* group, std::int32_t sectionIndex, TFakeTab* tab);
  HResult SetHidden(TFakeTab* tab, bool hidden);
  HResult SetTabValue(TFakeTab* tab, std::u16string_view key, IQxIVariant* value);
  HResult SetTabText(TFakeTab* tab, std::u16string_view key, std::u16string_view text);

  // Browsing.
  HResult NavigateTab(TFakeTab* tab, std::u16string_view uri, std::optional<std::u16string> title = std::nullopt);
  HResult NavigateBrowser(TFakeWebView* browser, std::u16string_view uri);
  HResult FinishLoading(TFakeTab* tab);
  HResult ThumbnailReady(TFakeTab* tab);
  HResult GoBack(TFakeWebView* browser);
  HResult ExecuteCommand(TFakeWebView* browser, std::u16string_view command, IQxIStringDictionary* parameters);
  const std::vector<TFakeBrowserCommand>& Commands() const { return commands_; }
  TFakeWebView* FocusedBrowser() const { return focused_; }

  // Lookups; nil when not found.
  TFakeTab* FindTab(const IQxITab* tab) const;
  TFakeTabGroup* FindGroup(const IQxITabGroup* group) const;
  TFakeTabSection* FindSection(const IQxITabSection* section) const;
  TFakeWebView* FindBrowser(const IQxIBrowser* browser) const;
  TFakeTab* TabByGuid(std::u16string_view guid) const;
  TFakeTab* TabByDockId(std::int32_t id) const;
  TFakeTab* TabByBrowserId(std::u16string_view browserId) const;
  TFakeWebView* BrowserByGuid(std::u16string_view guid) const;
  TFakeWebView* BrowserByListId(std::int32_t id) const;
  const std::vector<ComPtr<TFakeTab>>& AllTabs() const { return tabs_; }
  const std::vector<ComPtr<TFakeWebView>>& AllBrowsers() const { return browsers_; }

 private:
  void GroupChanged(TFakeTabGroup* group, std::u16string_view event, std::u16string_view timing,
                    const TFakeParams& extra);
  void ManagerChanged(std::u16string_view event, TFakeTabGroup* group, const TFakeParams& extra);
  // Index of the section and the tab's place in it; false when not in a group.
  static bool Locate(const TFakeTab* tab, std::size_t& section, std::size_t& index);
  void Detach(TFakeTab* tab);
  void Place(TFakeTabGroup* group, TFakeTab* tab, std::size_t section, std::size_t index, bool newSection);
  void RemoveSectionIfEmpty(TFakeTabGroup* group, TFakeTabSection* section);
  void AnswerScript(TFakeWebView* browser, std::u16string_view scriptId, std::u16string_view result);

  ComPtr<TFakeEventService> events_;
  TFakePageDataManager* pageData_ = nullptr;
  std::vector<ComPtr<TFakeTabGroup>> groups_;
  ComPtr<TFakeTabGroup> activeGroup_;
  std::vector<ComPtr<TFakeTab>> tabs_;
  std::unordered_map<const IQxITab*, TFakeTab*> tabsByInterface_;  // constant-time lookups among thousands
  struct TGuidHash {
    std::size_t operator()(const TGUID& g) const noexcept {
      std::uint64_t tail = 0;
      for (std::uint8_t b : g.D4) tail = tail << 8 | b;
      return std::hash<std::uint64_t>{}(tail ^
                                        (std::uint64_t{g.D1} << 32 | std::uint64_t{g.D2} << 16 | g.D3));
    }
  };
  std::unordered_map<TGUID, TFakeTab*, TGuidHash> tabsByGuid_;  // the first tab made with each GUID
  std::vector<ComPtr<TFakeWebView>> browsers_;
  std::vector<TFakeBrowserCommand> commands_;
  TFakeWebView* focused_ = nullptr;
  std::vector<const TFakeTab*> closing_;  // tabs whose closing is under way
  std::int32_t nextDockId_ = 1;
  std::int32_t nextListId_ = 1;
  std::uintptr_t nextWindowHandle_ = 0x20000;
};

}  // namespace qx
