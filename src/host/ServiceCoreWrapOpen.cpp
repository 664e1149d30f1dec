// Opening URIs and making tabs: the browser's conventions for where a new tab goes.

#include <cstdlib>

#include "base/FileDate.h"
#include "host/HostKeys.h"
#include "host/ServiceCoreWrap.h"

namespace qx {
namespace {

bool IsBlankUri(std::u16string_view uri) { return uri.empty() || uri == u"about:blank" || uri == u"http://"; }

void WriteTriState(IQxIStringDictionaryWrap& options, std::u16string_view key, TTriState state) {
  if (state == tsFalse) options.SetValue(key, u"false");
  if (state == tsTrue) options.SetValue(key, u"true");
}

void WriteIfGiven(IQxIStringDictionaryWrap& options, std::u16string_view key, std::u16string_view value) {
  if (!value.empty()) options.SetValue(key, value);
}

// Kept where a lookup of a group by key and text would go; it finds nothing.
void FindTabGroupByValue(std::u16string_view, std::u16string_view, ComPtr<IQxITabGroup>& group) { group = nullptr; }

}  // namespace

void TServiceCoreWrapImplBase::OpenUriFull(std::u16string_view uri, bool keepCurrentGroup, bool selectGroupFlag,
                                           std::u16string_view selectGroupKey, std::u16string_view selectGroupText,
                                           bool isNew, TTriState activate, TTriState reuseBlank, TTriState noBrowser,
                                           std::u16string_view browserGuid, std::u16string_view post,
                                           TTriState effectKeyboard, std::u16string_view tabGuid,
                                           std::u16string_view fromTabGuid, std::u16string_view individual,
                                           ComPtr<IQxITab>& tab) {
  tab = nullptr;
  ComPtr<IQxITabDock> dock;
  TabDock(dock);
  if (!dock) return;
  ComPtr<IQxIStringDictionary> raw;
  CreateStringDictionary(raw);
  ComPtr<IQxIStringDictionaryWrap> options = WrapStringDictionary(raw.get());
  if (!options) return;
  options->SetValue(open_key::New, isNew ? u"true" : u"false");
  WriteTriState(*options, open_key::Activate, activate);
  WriteTriState(*options, open_key::ReuseBlank, reuseBlank);
  WriteTriState(*options, open_key::NoBrowser, noBrowser);
  WriteTriState(*options, open_key::EffectKeyboard, effectKeyboard);
  WriteIfGiven(*options, open_key::TabGuid, tabGuid);
  WriteIfGiven(*options, open_key::FromTabGuid, fromTabGuid);
  WriteIfGiven(*options, open_key::BrowserGuid, browserGuid);
  WriteIfGiven(*options, open_key::Post, post);
  WriteIfGiven(*options, open_key::Individual, individual);

  ComPtr<IQxITabGroup> target;
  if (!keepCurrentGroup && isNew) {
    if (selectGroupFlag && !selectGroupText.empty())
      FindTabGroupByValue(selectGroupKey, selectGroupText, target);
    else if (Failed(dock->GetNewTabGroup(target.put())))
      target = nullptr;
  }
  ComPtr<IQxITab> newTab;
  const TString u(uri);
  if (Failed(dock->Navigate(u.c_str(), target.get(), raw.get(), newTab.put()))) return;
  if (target) {
    ComPtr<IQxITabManager> manager;
    TabManager(manager);
    if (manager) manager->SetActiveTabGroup(target.get());
  }
  tab = newTab;
}

void TServiceCoreWrapImplBase::OpenUri(std::u16string_view uri, ComPtr<IQxITab>& tab) {
  OpenUriFull(uri, false, false, u"", u"", true, tsNotSaid, tsNotSaid, tsNotSaid, u"", u"", tsNotSaid, u"", u"", u"",
              tab);
}

void TServiceCoreWrapImplBase::OpenUriOptions(std::u16string_view uri, bool keepCurrentGroup, bool selectGroupFlag,
                                              std::u16string_view selectGroupKey,
                                              std::u16string_view selectGroupText, bool isNew, TTriState activate,
                                              TTriState reuseBlank, TTriState noBrowser,
                                              std::u16string_view browserGuid, std::u16string_view post,
                                              std::u16string_view tabGuid, std::u16string_view fromTabGuid,
                                              std::u16string_view individual, ComPtr<IQxITab>& tab) {
  OpenUriFull(uri, keepCurrentGroup, selectGroupFlag, selectGroupKey, selectGroupText, isNew, activate, reuseBlank,
              noBrowser, browserGuid, post, tsFalse, tabGuid, fromTabGuid, individual, tab);
}

void TServiceCoreWrapImplBase::OpenUriIndividual(std::u16string_view uri, std::u16string_view individual,
                                                 bool reuseBlank, bool activate, ComPtr<IQxITab>& tab) {
  OpenUriFull(uri, false, false, u"", u"", true, activate ? tsTrue : tsFalse, reuseBlank ? tsTrue : tsFalse,
              tsNotSaid, u"", u"", tsNotSaid, u"", u"", individual, tab);
}

void TServiceCoreWrapImplBase::FindReusableBlankTab(ComPtr<IQxITab>& tab) {
  tab = nullptr;
  ComPtr<IQxITabDock> dock;
  TabDock(dock);
  ComPtr<IQxITab> active;
  ActiveTab(active);
  if (!dock || !active) return;
  const std::int64_t now = FileDateNow();
  auto blank = [&](IQxITab* t) { return IsBlankUri(TabUri(t)); };
  auto settled = [&](IQxITab* t) {
    const std::int64_t created = GetTabInt64(t, tab_key::CreateTime);
    return created != 0 && std::llabs(created - now) >= 3;
  };
  if (dock->GetGroupKind(active.get()) == 1) {
    if (blank(active.get()) && settled(active.get())) tab = active;
    return;
  }
  ComPtr<IQxITabGroup> group;
  if (Failed(active->GetTabGroup(group.put())) || !group) return;
  std::int32_t first = 0;
  if (Failed(dock->FirstContentIndex(group.get(), &first))) return;
  std::int32_t count = 0;
  if (Failed(group->GetTabCount(&count))) return;
  ComPtr<IQxITab> remembered;
  for (std::int32_t i = first; i < count; ++i) {
    ComPtr<IQxITab> candidate;
    if (Failed(group->GetTab(i, candidate.put())) || !candidate) continue;
    if (!blank(candidate.get())) return;
    if (!remembered && settled(candidate.get())) remembered = candidate;
  }
  tab = remembered;
}

void TServiceCoreWrapImplBase::CreateTabAfter(IQxITab* tab, bool copySecurity, ComPtr<IQxITab>& newTab) {
  newTab = nullptr;
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  if (!manager) return;
  ComPtr<IQxITabGroup> group;
  std::int32_t position = -1;
  if (tab) {
    if (Succeeded(tab->GetTabGroup(group.put())) && group) {
      std::int32_t index = -1;
      position = Succeeded(group->IndexOfTab(tab, &index)) ? index + 1 : -1;
    }
  } else {
    manager->GetActiveTabGroup(group.put());
  }
  if (Failed(manager->CreateTab(newTab.put())) || !newTab) return;
  if (tab && group) {
    if (position >= 0)
      group->InsertTab(newTab.get(), position);
    else
      group->AddTab(newTab.get());
  }
  if (copySecurity && tab && newTab && TabEngineKind(tab) == 2 && TabEngineKind(newTab.get()) == 2) {
    std::int32_t flags = 0;
    if (GetSecurityOfTab(tab, flags)) SetSecurityOfTab(newTab.get(), flags);
  }
}

void TServiceCoreWrapImplBase::CreateTabWithBrowser(std::u16string_view uri, std::u16string_view browserGuid,
                                                    ComPtr<IQxITab>& tab, std::int32_t securityFlags) {
  ComPtr<IQxITabDock> dock;
  TabDock(dock);
  ComPtr<IQxITabManager> manager;
  TabManager(manager);
  if (!dock || !manager) return;
  ComPtr<IQxITabGroup> group;
  if (Failed(dock->GetNewTabGroup(group.put())) || !group) manager->GetActiveTabGroup(group.put());
  if (!group) return;
  ComPtr<IQxITab> created;
  if (Failed(manager->CreateTab(created.put())) || !created) return;
  group->AddTab(created.get());
  SetSecurityOfTab(created.get(), securityFlags);
  // Written on what the out argument holds on entry, not on the new tab: a nil out
  // argument makes both writes do nothing. Callers rely on this.
  SetTabText(tab.get(), tab_key::Uri, uri);
  SetTabText(tab.get(), tab_key::InitBrowserGuid, browserGuid);
  ComPtr<IQxIBrowser> existing;
  created->GetBrowser(existing.put());
  if (existing) return;
  ComPtr<IQxIBrowserManager> browsers;
  BrowserManager(browsers);
  if (!browsers) return;
  ComPtr<IQxIBrowser> browser;
  const TString g(browserGuid), u(uri);
  if (Failed(browsers->CreateBrowser(g.c_str(), u.c_str(), 0, browser.put())) || !browser) return;
  created->SetBrowser(browser.get());
  SetBrowserProperty(browser.get(), browser_key::Uri, uri);
  manager->SetActiveTabGroup(group.get());
  group->SelectTab(created.get());
  tab = created;
}

}  // namespace qx
