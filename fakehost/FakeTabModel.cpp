#include "fakehost/FakeTabModel.h"

#include <algorithm>

#include "base/Text.h"
#include "fakehost/FakeArray.h"
#include "fakehost/FakeEnginePainter.h"
#include "fakehost/FakeFileDate.h"
#include "fakehost/FakeGlobalStorage.h"
#include "fakehost/FakePageDataManager.h"
#include "fakehost/FakeStringDictionary.h"
#include "fakehost/FakeVariant.h"
#include "host/HostKeys.h"
#include "host/V3EventTypes.h"

namespace qx {
namespace {

constexpr std::u16string_view kTabGroupChanged = u"TabGroup.Changed";
constexpr std::u16string_view kTabManagerChanged = u"TabManager.Changed";
constexpr std::u16string_view kTabChanged = u"Tab.Changed";
constexpr std::u16string_view kTabBarUpdate = u"TabBarControl.Update";
constexpr std::u16string_view kTabBarUpdateTab = u"TabBarControl.UpdateTab";

std::u16string IndexText(std::size_t index) { return IntToStr(static_cast<std::int64_t>(index)); }

// Text of a value in either kind of host dictionary.
std::u16string DictionaryText(IQxIDictionary* dictionary, std::u16string_view key) {
  ComPtr<IUnknown> value;
  const std::u16string name(key);
  if (!dictionary || Failed(dictionary->GetValue(name.c_str(), value.put())) || !value) return {};
  if (const auto text = value.As<IQxIString>()) return ReadString(text.get());
  if (const auto variant = value.As<IQxIVariant>()) return ReadVariantText(variant.get());
  return {};
}

TFakeParams ReadAnyDictionary(IUnknown* parameters) {
  if (!parameters) return {};
  ComPtr<IUnknown> object(parameters);
  if (const auto strings = object.As<IQxIStringDictionary>()) return ReadStringDictionary(strings.get());
  TFakeParams params;
  const auto dictionary = object.As<IQxIDictionary>();
  if (!dictionary) return params;
  ComPtr<IQxIStringArray> keys;
  if (Failed(dictionary->GetKeys(keys.put())) || !keys) return params;
  std::int32_t count = 0;
  keys->GetCount(&count);
  for (std::int32_t i = 0; i < count; ++i) {
    ComPtr<IQxIString> key;
    keys->GetItem(i, key.put());
    const auto name = ReadString(key.get());
    params.emplace_back(name, DictionaryText(dictionary.get(), name));
  }
  return params;
}

}  // namespace

TFakeTabModel::TFakeTabModel(ComPtr<TFakeEventService> events) : events_(std::move(events)) {
  FileDateClock = &FileDateNow;
  DefaultEngineId = kChromiumEngineClassGuid;
}

TFakeTabModel::~TFakeTabModel() {
  // Objects that the module still holds stay valid but forget the model.
  for (const auto& group : groups_) {
    for (const auto& section : group->sections_) {
      for (const auto& tab : section->tabs_) {
        tab->group_ = nullptr;
        tab->section_ = nullptr;
      }
      section->group_ = nullptr;
      section->tabs_.clear();
    }
    group->sections_.clear();
    group->active_ = nullptr;
    group->menuTab_ = nullptr;
  }
  for (const auto& tab : tabs_) tab->browser_ = nullptr;
  for (const auto& browser : browsers_) browser->tab_ = nullptr;
}

// ---- events ----

void TFakeTabModel::GroupChanged(TFakeTabGroup* group, std::u16string_view event, std::u16string_view timing,
                                 const TFakeParams& extra) {
  TFakeParams params{{u"id", group->GuidText()}, {u"event", std::u16string(event)}, {u"timing", std::u16string(timing)}};
  params.insert(params.end(), extra.begin(), extra.end());
  events_->FireFromHost(kTabGroupChanged, params);
}

void TFakeTabModel::ManagerChanged(std::u16string_view event, TFakeTabGroup* group, const TFakeParams& extra) {
  TFakeParams params{{u"event", std::u16string(event)}};
  if (group) params.emplace_back(u"id", group->GuidText());
  params.insert(params.end(), extra.begin(), extra.end());
  events_->FireFromHost(kTabManagerChanged, params);
}

// ---- groups ----

std::int32_t TFakeTabModel::GroupIndex(const TFakeTabGroup* group) const {
  for (std::size_t i = 0; i < groups_.size(); ++i)
    if (groups_[i].get() == group) return static_cast<std::int32_t>(i);
  return -1;
}

ComPtr<TFakeTabGroup> TFakeTabModel::AddGroup(std::u16string_view title) {
  auto group = MakeCom<TFakeTabGroup>(weak_from_this(), NewGuid());
  group->values_.emplace_back(u"title", std::u16string(title));
  groups_.push_back(group);
  if (!activeGroup_) activeGroup_ = group;
  ManagerChanged(u"AddTabGroup", group.get(), {});
  return group;
}

HResult TFakeTabModel::SwitchGroup(TFakeTabGroup* group) {
  if (!group || GroupIndex(group) < 0) return kInvalidArg;
  if (group == activeGroup_.get()) return kOk;
  const std::u16string old = activeGroup_ ? activeGroup_->GuidText() : std::u16string();
  activeGroup_ = group;
  ManagerChanged(tab_event::SetCurrentGroup, group, {{u"old-id", old}});
  events_->FireFromHost(kTabBarUpdate, {});
  return kOk;
}

HResult TFakeTabModel::SetGroupValue(TFakeTabGroup* group, std::u16string_view key, std::u16string_view value) {
  if (!group) return kInvalidArg;
  bool found = false;
  for (auto& entry : group->values_) {
    if (entry.first == key) {
      if (entry.second == value) return kOk;
      entry.second = value;
      found = true;
    }
  }
  if (!found) group->values_.emplace_back(std::u16string(key), std::u16string(value));
  ManagerChanged(tab_event::SetProperty, group, {{u"key", std::u16string(key)}, {u"value", std::u16string(value)}});
  return kOk;
}

HResult TFakeTabModel::SetPrivate(TFakeTabGroup* group, bool on) {
  if (!group) return kInvalidArg;
  const std::u16string value = on ? u"true" : u"false";
  if (group->TextValue(group_key::Private) == value) return kOk;
  SetGroupValue(group, group_key::Private, value);
  events_->FireFromHost(u"TabGroupBar.TogglePrivate", {{u"id", group->GuidText()}});
  return kOk;
}

// ---- tabs and browsers ----

ComPtr<TFakeTab> TFakeTabModel::CreateTab() { return CreateTabWithGuid(NewGuid()); }

ComPtr<TFakeTab> TFakeTabModel::CreateTabWithGuid(const TGUID& guid) {
  auto tab = MakeCom<TFakeTab>(weak_from_this(), guid, nextDockId_++);
  tab->StoreValue(tab_key::CreateTime, TFakeVariant::FromInt64(FileDateClock ? FileDateClock() : 0).get());
  tabs_.push_back(tab);
  tabsByInterface_.emplace(static_cast<const IQxITab*>(tab.get()), tab.get());
  tabsByGuid_.emplace(guid, tab.get());
  return tab;
}

ComPtr<TFakeWebView> TFakeTabModel::CreateBrowser(std::u16string_view engineId, std::u16string_view uri) {
  auto browser = MakeCom<TFakeWebView>(weak_from_this(), NewGuid(), nextListId_++);
  browser->StoreText(browser_key::Uri, uri);
  browser->StoreText(browser_key::Title, u"");
  browser->StoreText(browser_key::EngineId, engineId.empty() ? std::u16string_view(DefaultEngineId) : engineId);
  browser->StoreText(browser_key::BrowserId, browser->GuidText());
  browser->StoreValue(browser_key::WindowHandle,
                      TFakeVariant::FromInt64(static_cast<std::int64_t>(nextWindowHandle_)).get());
  nextWindowHandle_ += 0x10;
  browser->StoreValue(browser_key::ZoomRatio, TFakeVariant::FromInt64(100).get());
  browser->StoreValue(browser_key::BackHistory, TFakeVariant::FromUnknown(MakeCom<TFakeArray>().get()).get());
  browsers_.push_back(browser);
  return browser;
}

HResult TFakeTabModel::AttachBrowser(TFakeTab* tab, TFakeWebView* browser) {
  if (!tab) return kInvalidArg;
  if (tab->browser_.get() == browser) return kOk;
  if (tab->browser_) tab->browser_->tab_ = nullptr;
  if (browser) {
    if (browser->tab_ && browser->tab_ != tab) browser->tab_->browser_ = nullptr;
    browser->tab_ = tab;
  }
  tab->browser_ = browser;
  return kOk;
}

void TFakeTabModel::SetBrowserText(TFakeWebView* browser, std::u16string_view key, std::u16string_view text) {
  if (browser) browser->StoreText(key, text);
}

bool TFakeTabModel::Locate(const TFakeTab* tab, std::size_t& section, std::size_t& index) {
  const TFakeTabGroup* group = tab ? tab->group_ : nullptr;
  if (!group) return false;
  for (section = 0; section < group->sections_.size(); ++section) {
    const auto& tabs = group->sections_[section]->tabs_;
    for (index = 0; index < tabs.size(); ++index)
      if (tabs[index].get() == tab) return true;
  }
  return false;
}

void TFakeTabModel::Detach(TFakeTab* tab) {
  std::size_t section = 0, index = 0;
  TFakeTabGroup* group = tab->group_;
  if (Locate(tab, section, index)) {
    auto& tabs = group->sections_[section]->tabs_;
    tabs.erase(tabs.begin() + static_cast<std::ptrdiff_t>(index));
  }
  tab->group_ = nullptr;
  tab->section_ = nullptr;
}

void TFakeTabModel::Place(TFakeTabGroup* group, TFakeTab* tab, std::size_t section, std::size_t index,
                          bool newSection) {
  auto& sections = group->sections_;
  section = std::min(section, sections.size());
  if (newSection || section == sections.size()) {
    auto created = MakeCom<TFakeTabSection>();
    created->group_ = group;
    sections.insert(sections.begin() + static_cast<std::ptrdiff_t>(section), created);
    index = 0;
  }
  auto& tabs = sections[section]->tabs_;
  index = std::min(index, tabs.size());
  tabs.insert(tabs.begin() + static_cast<std::ptrdiff_t>(index), ComPtr<TFakeTab>(tab));
  tab->group_ = group;
  tab->section_ = sections[section].get();
}

HResult TFakeTabModel::AddTab(TFakeTabGroup* group, TFakeTab* tab, std::int32_t sectionIndex,
                              std::int32_t indexInSection) {
  if (!group || !tab || GroupIndex(group) < 0) return kInvalidArg;
  if (tab->group_) return kFail;
  ComPtr<TFakeTab> keep(tab);
  const auto where = [&](std::size_t& section, std::size_t& index, bool& created) {
    const auto& sections = group->sections_;
    created = sections.empty();
    if (sectionIndex < 0 || sections.empty()) {
      section = sections.empty() ? 0 : sections.size() - 1;
      index = sections.empty() ? 0 : sections.back()->tabs_.size();
      return;
    }
    section = std::min(static_cast<std::size_t>(sectionIndex), sections.size());
    created = section == sections.size();
    const std::size_t size = created ? 0 : sections[section]->tabs_.size();
    index = indexInSection < 0 ? size : std::min(static_cast<std::size_t>(indexInSection), size);
  };
  std::size_t section = 0, index = 0;
  bool created = false;
  where(section, index, created);
  std::size_t flat = index;
  for (std::size_t s = 0; s < section && s < group->sections_.size(); ++s) flat += group->sections_[s]->tabs_.size();
  std::int32_t count = 0;
  group->GetTabCount(&count);
  const std::u16string_view event =
      flat == static_cast<std::size_t>(count) ? tab_event::AddTab : tab_event::InsertTab;
  const TFakeParams params{{u"tab-id", tab->GuidText()}, {u"index", IndexText(flat)}};
  GroupChanged(group, event, u"before", params);
  if (tab->group_) return kFail;  // a listener placed it meanwhile
  where(section, index, created);
  Place(group, tab, section, index, created);
  ManagerChanged(event, group, params);
  GroupChanged(group, event, u"after", params);
  if (!group->active_ && tab->group_ == group) SelectInGroup(group, tab);
  return kOk;
}

HResult TFakeTabModel::InsertTabAt(TFakeTabGroup* group, TFakeTab* tab, std::int32_t flatIndex) {
  if (!group || !tab || flatIndex < 0) return kInvalidArg;
  if (tab->group_) return kFail;
  const auto tabs = group->FlatTabs();
  if (static_cast<std::size_t>(flatIndex) >= tabs.size()) return AddTab(group, tab);
  std::size_t section = 0, index = 0;
  Locate(tabs[static_cast<std::size_t>(flatIndex)].get(), section, index);
  return AddTab(group, tab, static_cast<std::int32_t>(section), static_cast<std::int32_t>(index));
}

ComPtr<TFakeTab> TFakeTabModel::OpenTab(std::u16string_view uri, const TFakeOpenTab& how) {
  TFakeTabGroup* group = how.Group;
  if (!group && how.After) group = how.After->group_;
  if (!group) group = activeGroup_.get();
  if (!group) return nullptr;
  ComPtr<TFakeTabGroup> keepGroup(group);
  auto tab = how.Guid ? CreateTabWithGuid(*how.Guid) : CreateTab();
  tab->StoreValue(tab_key::Uri, TFakeVariant::FromText(std::u16string(uri)).get());
  if (!how.Title.empty()) tab->StoreValue(tab_key::Title, TFakeVariant::FromText(how.Title).get());
  for (const auto& [key, value] : how.Values) tab->StoreValue(key, TFakeVariant::FromText(value).get());
  ComPtr<TFakeWebView> browser;
  if (!how.NoBrowser) {
    browser = CreateBrowser(how.EngineId, uri);
    if (!how.Title.empty()) browser->StoreText(browser_key::Title, how.Title);
    AttachBrowser(tab.get(), browser.get());
  }
  HResult added = kFail;
  if (how.After && how.After->group_ == group)
    added = InsertTabAt(group, tab.get(), group->IndexOf(how.After) + 1);
  else if (how.Section >= 0)
    added = AddTab(group, tab.get(), how.Section, -1);
  else
    added = AddTab(group, tab.get());
  if (Failed(added)) {
    CloseTab(tab.get());
    return nullptr;
  }
  if (how.Activate && tab->group_) Activate(tab.get());
  if (browser && browser->tab_ == tab.get())
    events_->FireFromHost(u"Browser.Changed", {{u"event", u"OnBrowseBegin"},
                                               {u"browser-id", browser->GuidText()},
                                               {u"uri", std::u16string(uri)}});
  return tab;
}

HResult TFakeTabModel::SelectInGroup(TFakeTabGroup* group, TFakeTab* tab) {
  if (!group || !tab || tab->group_ != group) return kInvalidArg;
  if (group->active_.get() == tab) return kOk;
  ComPtr<TFakeTab> keep(tab);
  const std::u16string old = group->active_ ? group->active_->GuidText() : std::u16string();
  const TFakeParams params{{u"tab-id", old}, {u"new-tab-id", tab->GuidText()}};
  GroupChanged(group, tab_event::SetActiveTab, u"before", params);
  if (tab->group_ != group) return kFail;
  group->active_ = tab;
  ManagerChanged(tab_event::SetActiveTab, group, params);
  GroupChanged(group, tab_event::SetActiveTab, u"after", params);
  return kOk;
}

HResult TFakeTabModel::Activate(TFakeTab* tab) {
  if (!tab || !tab->group_) return kInvalidArg;
  ComPtr<TFakeTabGroup> group(tab->group_);
  if (group.get() != activeGroup_.get()) SwitchGroup(group.get());
  return SelectInGroup(group.get(), tab);
}

void TFakeTabModel::RemoveSectionIfEmpty(TFakeTabGroup* group, TFakeTabSection* section) {
  if (!group || !section || section->group_ != group || !section->tabs_.empty() || group->sections_.size() < 2)
    return;
  ComPtr<TFakeTabSection> keep(section);
  const auto position = [&] {
    const auto& sections = group->sections_;
    return static_cast<std::size_t>(
        std::find_if(sections.begin(), sections.end(), [&](const auto& s) { return s.get() == section; }) -
        sections.begin());
  };
  const TFakeParams params{{u"section-index", IndexText(position())}};
  GroupChanged(group, tab_event::RemoveTabSection, u"before", params);
  const std::size_t at = position();
  if (at >= group->sections_.size() || !section->tabs_.empty() || group->sections_.size() < 2) return;
  group->sections_.erase(group->sections_.begin() + static_cast<std::ptrdiff_t>(at));
  section->group_ = nullptr;
  ManagerChanged(tab_event::RemoveTabSection, group, params);
  GroupChanged(group, tab_event::RemoveTabSection, u"after", params);
}

HResult TFakeTabModel::CloseTab(TFakeTab* tab) {
  if (!tab) return kInvalidArg;
  ComPtr<TFakeTab> keep(tab);
  if (!tabsByInterface_.contains(static_cast<const IQxITab*>(tab))) return kFail;
  // A listener that closes the tab again while its closing is announced changes nothing.
  if (std::find(closing_.begin(), closing_.end(), tab) != closing_.end()) return kFalse;
  closing_.push_back(tab);
  struct TDone {
    std::vector<const TFakeTab*>& list;
    const TFakeTab* tab;
    ~TDone() { std::erase(list, tab); }
  } done{closing_, tab};
  if (ComPtr<TFakeTabGroup> group = tab->group_) {
    if (group->active_.get() == tab) {
      const auto flat = group->FlatTabs();
      const auto at = static_cast<std::size_t>(group->IndexOf(tab));
      TFakeTab* next = nullptr;
      for (std::size_t i = at + 1; i < flat.size() && !next; ++i)
        if (!flat[i]->hidden_) next = flat[i].get();
      for (std::size_t i = at; i-- > 0 && !next;)
        if (!flat[i]->hidden_) next = flat[i].get();
      if (next) SelectInGroup(group.get(), next);
    }
    if (tab->group_ == group.get()) {
      const TFakeParams params{{u"tab-id", tab->GuidText()}};
      GroupChanged(group.get(), tab_event::RemoveTab, u"before", params);
      if (tab->group_ == group.get()) {
        ComPtr<TFakeTabSection> section(tab->section_);
        Detach(tab);
        if (group->active_.get() == tab) group->active_ = nullptr;
        if (group->menuTab_.get() == tab) group->menuTab_ = nullptr;
        ManagerChanged(tab_event::RemoveTab, group.get(), params);
        GroupChanged(group.get(), tab_event::RemoveTab, u"after", params);
        RemoveSectionIfEmpty(group.get(), section.get());
      }
    }
  }
  if (tab->group_) return kOk;  // a listener put it back
  if (ComPtr<TFakeWebView> browser = tab->browser_) {
    browser->tab_ = nullptr;
    tab->browser_ = nullptr;
    if (focused_ == browser.get()) focused_ = nullptr;
    std::erase_if(browsers_, [&](const auto& b) { return b.get() == browser.get(); });
  }
  if (pageData_) pageData_->RemovePage(tab->GuidText());
  tabsByInterface_.erase(static_cast<const IQxITab*>(tab));
  if (const auto named = tabsByGuid_.find(tab->Guid()); named != tabsByGuid_.end() && named->second == tab) {
    // Another tab made with the same GUID, if any, answers for it from now on.
    tabsByGuid_.erase(named);
    for (const auto& other : tabs_)
      if (other.get() != tab && other->Guid() == tab->Guid()) {
        tabsByGuid_.emplace(other->Guid(), other.get());
        break;
      }
  }
  std::erase_if(tabs_, [&](const auto& t) { return t.get() == tab; });
  return kOk;
}

HResult TFakeTabModel::MoveTab(TFakeTab* tab, std::int32_t sectionIndex, std::int32_t indexInSection,
                               bool newSection) {
  if (!tab || !tab->group_ || sectionIndex < 0) return kInvalidArg;
  ComPtr<TFakeTab> keep(tab);
  ComPtr<TFakeTabGroup> group(tab->group_);
  std::size_t s0 = 0, i0 = 0;
  Locate(tab, s0, i0);
  const auto& sections = group->sections_;
  const auto target = static_cast<std::size_t>(sectionIndex);
  if (target > sections.size()) return kInvalidArg;
  newSection = newSection || target == sections.size();
  // Where the tab lands, counted in the group as it stands without the tab.
  std::size_t flat = 0;
  for (std::size_t s = 0; s < target; ++s) flat += sections[s]->tabs_.size() - (s == s0 ? 1 : 0);
  std::size_t index = 0;
  if (!newSection) {
    const std::size_t size = sections[target]->tabs_.size() - (target == s0 ? 1 : 0);
    index = indexInSection < 0 ? size : std::min(static_cast<std::size_t>(indexInSection), size);
    if (target == s0 && index == i0) return kOk;
    flat += index;
  }
  const TFakeParams params{{u"tab-id", tab->GuidText()},
                           {u"index", IndexText(flat)},
                           {u"old-index", IndexText(static_cast<std::size_t>(group->IndexOf(tab)))},
                           {u"section-index", IndexText(target)}};
  GroupChanged(group.get(), tab_event::SetTabIndex, u"before", params);
  if (tab->group_ != group.get() || target > group->sections_.size()) return kFail;
  ComPtr<TFakeTabSection> oldSection(tab->section_);
  Detach(tab);
  Place(group.get(), tab, target, index, newSection);
  ManagerChanged(tab_event::SetTabIndex, group.get(), params);
  GroupChanged(group.get(), tab_event::SetTabIndex, u"after", params);
  RemoveSectionIfEmpty(group.get(), oldSection.get());
  return kOk;
}

HResult TFakeTabModel::MoveTabTo(TFakeTab* tab, std::int32_t flatIndex) {
  if (!tab || !tab->group_ || flatIndex < 0) return kInvalidArg;
  TFakeTabGroup* group = tab->group_;
  std::size_t s0 = 0, i0 = 0;
  Locate(tab, s0, i0);
  auto others = group->FlatTabs();
  std::erase_if(others, [&](const auto& t) { return t.get() == tab; });
  if (static_cast<std::size_t>(flatIndex) < others.size()) {
    std::size_t s = 0, i = 0;
    Locate(others[static_cast<std::size_t>(flatIndex)].get(), s, i);
    if (s == s0 && i > i0) --i;
    return MoveTab(tab, static_cast<std::int32_t>(s), static_cast<std::int32_t>(i));
  }
  const std::size_t last = group->sections_.size() - 1;
  return MoveTab(tab, static_cast<std::int32_t>(last), -1);
}

HResult TFakeTabModel::SwapTabs(TFakeTab* a, TFakeTab* b) {
  if (!a || !b || a == b || !a->group_ || a->group_ != b->group_) return kInvalidArg;
  ComPtr<TFakeTab> keepA(a), keepB(b);
  ComPtr<TFakeTabGroup> group(a->group_);
  const TFakeParams params{{u"tab-id", a->GuidText()}, {u"new-tab-id", b->GuidText()}};
  GroupChanged(group.get(), tab_event::SwapTab, u"before", params);
  std::size_t sa = 0, ia = 0, sb = 0, ib = 0;
  if (a->group_ != group.get() || b->group_ != group.get() || !Locate(a, sa, ia) || !Locate(b, sb, ib))
    return kFail;
  std::swap(group->sections_[sa]->tabs_[ia], group->sections_[sb]->tabs_[ib]);
  std::swap(a->section_, b->section_);
  ManagerChanged(tab_event::SwapTab, group.get(), params);
  GroupChanged(group.get(), tab_event::SwapTab, u"after", params);
  return kOk;
}

HResult TFakeTabModel::InsertSectionWithTab(TFakeTabGroup* group, std::int32_t sectionIndex, TFakeTab* tab) {
  if (!group || !tab || sectionIndex < 0) return kInvalidArg;
  const auto at = std::min(static_cast<std::size_t>(sectionIndex), group->sections_.size());
  if (!tab->group_) {
    // A new section of its own: place it, then announce it as an add.
    if (group->sections_.empty() || at == group->sections_.size())
      return AddTab(group, tab, static_cast<std::int32_t>(group->sections_.size()), 0);
    ComPtr<TFakeTab> keep(tab);
    std::size_t flat = 0;
    for (std::size_t s = 0; s < at; ++s) flat += group->sections_[s]->tabs_.size();
    const TFakeParams params{{u"tab-id", tab->GuidText()}, {u"index", IndexText(flat)}};
    GroupChanged(group, tab_event::InsertTab, u"before", params);
    if (tab->group_) return kFail;
    Place(group, tab, std::min(at, group->sections_.size()), 0, true);
    ManagerChanged(tab_event::InsertTab, group, params);
    GroupChanged(group, tab_event::InsertTab, u"after", params);
    if (!group->active_) SelectInGroup(group, tab);
    return kOk;
  }
  if (tab->group_ != group) return kInvalidArg;
  return MoveTab(tab, static_cast<std::int32_t>(at), 0, true);
}

HResult TFakeTabModel::SetHidden(TFakeTab* tab, bool hidden) {
  if (!tab) return kInvalidArg;
  if (tab->hidden_ == hidden) return kOk;
  tab->hidden_ = hidden;
  if (!tab->group_) return kOk;
  events_->FireFromHost(kTabChanged, {{u"event", std::u16string(tab_event::SetProperty)},
                                      {u"id", tab->GuidText()},
                                      {u"key", u"hidden"},
                                      {u"old-value", hidden ? u"false" : u"true"},
                                      {u"value", hidden ? u"true" : u"false"}});
  events_->FireFromHost(kTabBarUpdate, {});
  return kOk;
}

HResult TFakeTabModel::SetTabValue(TFakeTab* tab, std::u16string_view key, IQxIVariant* value) {
  if (!tab) return kInvalidArg;
  const bool had = static_cast<bool>(tab->Value(key));
  const std::u16string old = tab->TextValue(key);
  tab->StoreValue(key, value);
  const std::u16string now = tab->TextValue(key);
  if (tab->group_ && (!had || old != now))
    events_->FireFromHost(kTabChanged, {{u"event", std::u16string(tab_event::SetProperty)},
                                        {u"id", tab->GuidText()},
                                        {u"key", std::u16string(key)},
                                        {u"old-value", old},
                                        {u"value", now}});
  return kOk;
}

HResult TFakeTabModel::SetTabText(TFakeTab* tab, std::u16string_view key, std::u16string_view text) {
  return SetTabValue(tab, key, TFakeVariant::FromText(std::u16string(text)).get());
}

// ---- browsing ----

namespace {

void StoreHistory(TFakeWebView& browser, const std::vector<std::u16string>& history,
                  const std::function<void(std::u16string_view, IQxIVariant*)>& store) {
  auto array = MakeCom<TFakeArray>();
  for (const auto& uri : history) {
    auto entry = MakeCom<TFakeStringDictionary>();
    entry->Set(u"uri", uri);
    array->Add(static_cast<IQxIStringDictionary*>(entry.get()));
  }
  (void)browser;
  store(browser_key::BackHistory, TFakeVariant::FromUnknown(static_cast<IQxIArray*>(array.get())).get());
}

}  // namespace

HResult TFakeTabModel::NavigateTab(TFakeTab* tab, std::u16string_view uri, std::optional<std::u16string> title) {
  if (!tab) return kInvalidArg;
  ComPtr<TFakeTab> keep(tab);
  if (ComPtr<TFakeWebView> browser = tab->browser_) {
    const auto previous = browser->TextValue(browser_key::Uri);
    if (!previous.empty()) {
      browser->history_.push_back(previous);
      StoreHistory(*browser.get(), browser->history_,
                   [&](std::u16string_view k, IQxIVariant* v) { browser->StoreValue(k, v); });
    }
    browser->StoreText(browser_key::Uri, uri);
    if (title) browser->StoreText(browser_key::Title, *title);
    events_->FireFromHost(u"Browser.Changed", {{u"event", u"OnBrowseBegin"},
                                               {u"browser-id", browser->GuidText()},
                                               {u"uri", std::u16string(uri)}});
  }
  SetTabText(tab, tab_key::Uri, uri);
  if (title) SetTabText(tab, tab_key::Title, *title);
  if (tab->group_) events_->FireFromHost(kTabBarUpdateTab, {{u"tab-id", tab->GuidText()}});
  return kOk;
}

HResult TFakeTabModel::NavigateBrowser(TFakeWebView* browser, std::u16string_view uri) {
  if (!browser) return kInvalidArg;
  if (browser->tab_) return NavigateTab(browser->tab_, uri);
  const auto previous = browser->TextValue(browser_key::Uri);
  if (!previous.empty()) browser->history_.push_back(previous);
  StoreHistory(*browser, browser->history_, [&](std::u16string_view k, IQxIVariant* v) { browser->StoreValue(k, v); });
  browser->StoreText(browser_key::Uri, uri);
  return kOk;
}

HResult TFakeTabModel::GoBack(TFakeWebView* browser) {
  if (!browser || browser->history_.empty()) return kFail;
  ComPtr<TFakeWebView> keep(browser);
  const std::u16string uri = browser->history_.back();
  browser->history_.pop_back();
  // Navigating pushes the page being left; going back must not.
  auto history = browser->history_;
  const HResult result = NavigateBrowser(browser, uri);
  browser->history_ = history;
  StoreHistory(*browser, browser->history_, [&](std::u16string_view k, IQxIVariant* v) { browser->StoreValue(k, v); });
  return result;
}

HResult TFakeTabModel::FinishLoading(TFakeTab* tab) {
  if (!tab) return kInvalidArg;
  ComPtr<TFakeTab> keep(tab);
  if (ComPtr<TFakeWebView> browser = tab->browser_)
    events_->FireFromHost(u"Browser.Changed", {{u"event", u"OnBrowseComplete"},
                                               {u"browser-id", browser->GuidText()},
                                               {u"uri", browser->TextValue(browser_key::Uri)}});
  events_->FireFromHost(u"Tab.LoadingStop", {{u"tab-id", tab->GuidText()}});
  return kOk;
}

HResult TFakeTabModel::ThumbnailReady(TFakeTab* tab) {
  if (!tab) return kInvalidArg;
  TFakeParams params{{u"tab-id", tab->GuidText()}};
  if (tab->browser_) params.emplace_back(u"browser-id", tab->browser_->GuidText());
  events_->FireFromHost(u"ChromiumEngine.ThumbnailCreated", params);
  return kOk;
}

void TFakeTabModel::AnswerScript(TFakeWebView* browser, std::u16string_view scriptId, std::u16string_view result) {
  const TFakeParams params{{u"event", u"Result"},
                           {u"browser-id", browser->GuidText()},
                           {u"script-id", std::u16string(scriptId)},
                           {u"result", std::u16string(result)}};
  const auto eventId = V3EventId(kEvBrowserExecuteJavascript);
  switch (ScriptAnswer) {
    case EScriptAnswer::Immediate:
      events_->FireFromHost(eventId, params);
      break;
    case EScriptAnswer::Posted:
      events_->PostFromHost(eventId, params);
      break;
    case EScriptAnswer::Never:
      break;
  }
}

HResult TFakeTabModel::ExecuteCommand(TFakeWebView* browser, std::u16string_view command,
                                      IQxIStringDictionary* parameters) {
  if (!browser) return kInvalidArg;
  ComPtr<TFakeWebView> keep(browser);
  const std::size_t record = commands_.size();
  commands_.push_back({browser->GuidText(), browser->tab_ ? browser->tab_->GuidText() : std::u16string(),
                       std::u16string(command), ReadAnyDictionary(parameters), kOk});
  const TFakeParams params = commands_[record].Parameters;
  HResult result = kOk;
  if (SameText(command, u"focus")) {
    focused_ = browser;
  } else if (SameText(command, u"UpdateSecurity")) {
    // The security indicator reads the page data again; nothing to keep here.
  } else if (SameText(command, u"post")) {
    const auto uri = ParamValue(params, u"uri");
    if (!uri.empty()) browser->StoreText(u"post", ParamValue(params, u"post"));
    result = uri.empty() ? kInvalidArg : NavigateBrowser(browser, uri);
  } else if (SameText(command, u"ExecuteJavascript")) {
    const auto code = ParamValue(params, script_key::Code);
    const bool force = IsTrueText(ParamValue(params, script_key::ForceEnableScript));
    if (!browser->page_.ScriptsBlocked || force) {
      std::u16string answer;
      if (code.find(u"getSelection()") != std::u16string::npos) {
        answer = browser->page_.Selection;
      } else if (const auto found = browser->page_.ScriptResults.find(code);
                 found != browser->page_.ScriptResults.end()) {
        answer = found->second;
      }
      const auto scriptId = ParamValue(params, script_key::ScriptId);
      if (!scriptId.empty()) AnswerScript(browser, scriptId, answer);
    }
  } else if (SameText(command, u"refresh")) {
    events_->FireFromHost(u"Browser.Changed", {{u"event", u"OnBrowseBegin"},
                                               {u"browser-id", browser->GuidText()},
                                               {u"uri", browser->TextValue(browser_key::Uri)}});
  } else if (SameText(command, u"goback")) {
    result = GoBack(browser);
  } else if (SameText(command, u"snapshot")) {
    ComPtr<IQxIDictionary> dictionary;
    if (parameters) dictionary = ComPtr<IUnknown>(parameters).As<IQxIDictionary>();
    if (!dictionary) {
      result = kInvalidArg;
    } else {
      const int width = static_cast<int>(StrToIntDef(DictionaryText(dictionary.get(), u"width"), 0));
      const int height = static_cast<int>(StrToIntDef(DictionaryText(dictionary.get(), u"height"), 0));
      std::vector<std::uint8_t> bytes = browser->page_.Snapshot;
      if (SnapshotProvider) {
        if (auto provided = SnapshotProvider(*browser, width, height)) bytes = std::move(*provided);
      } else if (bytes.empty()) {
        bytes = PaintPageSnapshot(browser->TextValue(browser_key::Uri), width, height);
      }
      if (browser->page_.SnapshotFails) bytes.clear();
      if (bytes.empty()) {
        result = kFail;
      } else {
        auto image = MakeCom<TFakeGlobalStoreItem>(std::move(bytes));
        result = dictionary->SetValue(u"result", static_cast<IQxIGlobalStoreItem*>(image.get()));
      }
    }
  } else {
    result = kFail;
  }
  commands_[record].Result = result;
  return result;
}

// ---- lookups ----

TFakeTab* TFakeTabModel::FindTab(const IQxITab* tab) const {
  if (!tab) return nullptr;
  const auto found = tabsByInterface_.find(tab);
  return found == tabsByInterface_.end() ? nullptr : found->second;
}

TFakeTabGroup* TFakeTabModel::FindGroup(const IQxITabGroup* group) const {
  if (!group) return nullptr;
  for (const auto& candidate : groups_)
    if (static_cast<const IQxITabGroup*>(candidate.get()) == group) return candidate.get();
  return nullptr;
}

TFakeTabSection* TFakeTabModel::FindSection(const IQxITabSection* section) const {
  if (!section) return nullptr;
  for (const auto& group : groups_)
    for (const auto& candidate : group->sections_)
      if (static_cast<const IQxITabSection*>(candidate.get()) == section) return candidate.get();
  return nullptr;
}

TFakeWebView* TFakeTabModel::FindBrowser(const IQxIBrowser* browser) const {
  if (!browser) return nullptr;
  for (const auto& candidate : browsers_)
    if (static_cast<const IQxIBrowser*>(candidate.get()) == browser) return candidate.get();
  return nullptr;
}

TFakeTab* TFakeTabModel::TabByGuid(std::u16string_view guid) const {
  const auto parsed = TryParseGuid(guid);
  if (!parsed) return nullptr;
  const auto found = tabsByGuid_.find(*parsed);
  return found == tabsByGuid_.end() ? nullptr : found->second;
}

TFakeTab* TFakeTabModel::TabByDockId(std::int32_t id) const {
  for (const auto& tab : tabs_)
    if (tab->DockId() == id) return tab.get();
  return nullptr;
}

TFakeTab* TFakeTabModel::TabByBrowserId(std::u16string_view browserId) const {
  for (const auto& tab : tabs_)
    if (tab->browser_ && SameText(tab->browser_->BrowserIdText(), browserId)) return tab.get();
  return nullptr;
}

TFakeWebView* TFakeTabModel::BrowserByGuid(std::u16string_view guid) const {
  const auto parsed = TryParseGuid(guid);
  if (!parsed) return nullptr;
  for (const auto& browser : browsers_)
    if (browser->Guid() == *parsed) return browser.get();
  return nullptr;
}

TFakeWebView* TFakeTabModel::BrowserByListId(std::int32_t id) const {
  for (const auto& browser : browsers_)
    if (browser->ListId() == id) return browser.get();
  return nullptr;
}

}  // namespace qx
