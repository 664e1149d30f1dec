#include "host/TabWraps.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace qx {
namespace {

using TabList = std::vector<ComPtr<IQxITab>>;

const ComPtr<IQxITab>& ListItem(const TabList& list, std::int32_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= list.size())
    throw std::out_of_range("List index out of bounds (" + std::to_string(index) + ")");
  return list[static_cast<std::size_t>(index)];
}

ComPtr<IQxITabDock> DockOf(IQxITabManager* manager) {
  ComPtr<IQxITabDock> dock;
  if (manager) manager->GetTabDock(dock.put());
  return dock;
}

class TQxITabSectionWrapImpl : public TInterfacedObject<IQxITabSectionWrap> {
 public:
  explicit TQxITabSectionWrapImpl(IQxITabSection* section) : FSection(section) {}
  std::int32_t GetTabCount() override {
    std::int32_t count = 0;
    if (!FSection || Failed(FSection->GetTabCount(&count))) return 0;
    return count;
  }
  bool GetTab(std::int32_t index, ComPtr<IQxITab>& tab) override {
    tab = nullptr;
    return FSection && Succeeded(FSection->GetTab(index, tab.put())) && tab;
  }
  void GetRaw(ComPtr<IQxITabSection>& raw) override { raw = FSection; }

 protected:
  ComPtr<IQxITabSection> FSection;
};

class TFilteredTabSectionWrapImpl : public TQxITabSectionWrapImpl {
 public:
  TFilteredTabSectionWrapImpl(IQxITabSection* section, IQxITabManager* manager)
      : TQxITabSectionWrapImpl(section), FTabManager(manager) {
    ComPtr<IQxITabDock> dock = DockOf(manager);
    const std::int32_t count = TQxITabSectionWrapImpl::GetTabCount();
    for (std::int32_t i = 0; i < count; ++i) {
      ComPtr<IQxITab> tab;
      TQxITabSectionWrapImpl::GetTab(i, tab);
      if (dock && dock->IsTabHidden(tab.get()) == 0) FList.push_back(tab);
    }
  }
  std::int32_t GetTabCount() override { return static_cast<std::int32_t>(FList.size()); }
  bool GetTab(std::int32_t index, ComPtr<IQxITab>& tab) override {
    tab = ListItem(FList, index);
    return static_cast<bool>(tab);
  }

 private:
  TabList FList;
  ComPtr<IQxITabManager> FTabManager;
};

class TQxITabGroupWrapImpl : public TInterfacedObject<IQxITabGroupWrap> {
 public:
  explicit TQxITabGroupWrapImpl(IQxITabGroup* group) : FTabGroup(group) {}

  bool GetActiveTab(ComPtr<IQxITab>& tab) override {
    tab = nullptr;
    return FTabGroup && Succeeded(FTabGroup->GetActiveTab(tab.put())) && tab;
  }
  std::int32_t GetTabCount() override {
    std::int32_t count = 0;
    if (!FTabGroup || Failed(FTabGroup->GetTabCount(&count))) return 0;
    return count;
  }
  bool GetTab(std::int32_t index, ComPtr<IQxITab>& tab) override {
    tab = nullptr;
    return FTabGroup && Succeeded(FTabGroup->GetTab(index, tab.put())) && tab;
  }
  void GetRaw(ComPtr<IQxITabGroup>& raw) override { raw = FTabGroup; }
  std::int32_t GetSectionCount() override {
    std::int32_t count = 0;
    if (!FTabGroup || Failed(FTabGroup->GetSectionCount(&count))) return 0;
    return count;
  }
  bool GetSection(std::int32_t index, ComPtr<IQxITabSectionWrap>& section) override {
    section = nullptr;
    ComPtr<IQxITabSection> raw;
    if (!FTabGroup || Failed(FTabGroup->GetSection(index, raw.put())) || !raw) return false;
    WrapSection(raw.get(), section);
    return static_cast<bool>(section);
  }
  virtual void WrapSection(IQxITabSection* section, ComPtr<IQxITabSectionWrap>& wrap) {
    wrap = MakeCom<TQxITabSectionWrapImpl>(section);
  }

 protected:
  ComPtr<IQxITabGroup> FTabGroup;
};

class TFilteredTabGroupWrapImpl : public TQxITabGroupWrapImpl {
 public:
  TFilteredTabGroupWrapImpl(IQxITabGroup* group, IQxITabManager* manager)
      : TQxITabGroupWrapImpl(group), FTabManager(manager) {}
  std::int32_t GetTabCount() override { return static_cast<std::int32_t>(List().size()); }
  bool GetTab(std::int32_t index, ComPtr<IQxITab>& tab) override {
    tab = ListItem(List(), index);
    return static_cast<bool>(tab);
  }
  void WrapSection(IQxITabSection* section, ComPtr<IQxITabSectionWrap>& wrap) override {
    wrap = MakeCom<TFilteredTabSectionWrapImpl>(section, FTabManager.get());
  }

 private:
  // Built on first need: the wrap that goes by sections never asks for it, and a
  // big group would pay for a walk of all its tabs.
  const TabList& List() {
    if (FListBuilt) return FList;
    FListBuilt = true;
    ComPtr<IQxITabDock> dock = DockOf(FTabManager.get());
    const std::int32_t count = TQxITabGroupWrapImpl::GetTabCount();
    for (std::int32_t i = 0; i < count; ++i) {
      ComPtr<IQxITab> tab;
      TQxITabGroupWrapImpl::GetTab(i, tab);
      if (dock && dock->IsTabHidden(tab.get()) == 0) FList.push_back(tab);
    }
    return FList;
  }

  TabList FList;
  bool FListBuilt = false;
  ComPtr<IQxITabManager> FTabManager;
};

class TFilteredTabGroupWrapExImpl : public TQxITabGroupWrapImpl {
 public:
  TFilteredTabGroupWrapExImpl(IQxITabGroup* group, IQxITabManager* manager)
      : TQxITabGroupWrapImpl(group), FTabManager(manager) {
    ComPtr<TFilteredTabGroupWrapImpl> filtered = MakeCom<TFilteredTabGroupWrapImpl>(group, manager);
    for (std::int32_t s = 0, n = filtered->GetSectionCount(); s < n; ++s) {
      ComPtr<IQxITabSectionWrap> section;
      if (!filtered->GetSection(s, section) || section->GetTabCount() == 0) continue;
      FSectionList.push_back(section);
      for (std::int32_t t = 0, m = section->GetTabCount(); t < m; ++t) {
        ComPtr<IQxITab> tab;
        section->GetTab(t, tab);
        FTabList.push_back(tab);
      }
    }
  }
  std::int32_t GetTabCount() override { return static_cast<std::int32_t>(FTabList.size()); }
  bool GetTab(std::int32_t index, ComPtr<IQxITab>& tab) override {
    tab = ListItem(FTabList, index);
    return static_cast<bool>(tab);
  }
  std::int32_t GetSectionCount() override { return static_cast<std::int32_t>(FSectionList.size()); }
  bool GetSection(std::int32_t index, ComPtr<IQxITabSectionWrap>& section) override {
    if (index < 0 || static_cast<std::size_t>(index) >= FSectionList.size())
      throw std::out_of_range("List index out of bounds (" + std::to_string(index) + ")");
    section = FSectionList[static_cast<std::size_t>(index)];
    return static_cast<bool>(section);
  }

 private:
  TabList FTabList;
  std::vector<ComPtr<IQxITabSectionWrap>> FSectionList;
  ComPtr<IQxITabManager> FTabManager;
};

class TQxITabManagerWrap : public TInterfacedObject<IQxITabManagerWrap> {
 public:
  TQxITabManagerWrap(IQxITabManager* manager, TTabManagerWrapKind kind) : FTabManager(manager), FKind(kind) {}

  bool GetActiveGroup(ComPtr<IQxITabGroupWrap>& group) override {
    group = nullptr;
    ComPtr<IQxITabGroup> raw;
    if (!FTabManager || Failed(FTabManager->GetActiveTabGroup(raw.put())) || !raw) return false;
    group = MakeTabGroupWrap(raw.get(), FTabManager.get(), FKind);
    return true;
  }
  std::int32_t GetGroupCount() override {
    std::int32_t count = 0;
    if (!FTabManager || Failed(FTabManager->GetTabGroupCount(&count))) return 0;
    return count;
  }
  bool GetGroup(std::int32_t index, ComPtr<IQxITabGroupWrap>& group) override {
    group = nullptr;
    ComPtr<IQxITabGroup> raw;
    if (!FTabManager || Failed(FTabManager->GetTabGroup(index, raw.put())) || !raw) return false;
    group = MakeTabGroupWrap(raw.get(), FTabManager.get(), FKind);
    return true;
  }

 private:
  ComPtr<IQxITabManager> FTabManager;
  TTabManagerWrapKind FKind;
};

}  // namespace

ComPtr<IQxITabManagerWrap> MakeTabManagerWrap(IQxITabManager* manager, TTabManagerWrapKind kind) {
  return MakeCom<TQxITabManagerWrap>(manager, kind);
}

ComPtr<IQxITabGroupWrap> MakeTabGroupWrap(IQxITabGroup* group, IQxITabManager* manager, TTabManagerWrapKind kind) {
  switch (kind) {
    case TTabManagerWrapKind::Filtered:
      return MakeCom<TFilteredTabGroupWrapImpl>(group, manager);
    case TTabManagerWrapKind::FilteredEx:
      return MakeCom<TFilteredTabGroupWrapExImpl>(group, manager);
    case TTabManagerWrapKind::Plain:
      break;
  }
  return MakeCom<TQxITabGroupWrapImpl>(group);
}

ComPtr<IQxITabSectionWrap> MakeTabSectionWrap(IQxITabSection* section, IQxITabManager* manager, bool filtered) {
  if (filtered) return MakeCom<TFilteredTabSectionWrapImpl>(section, manager);
  return MakeCom<TQxITabSectionWrapImpl>(section);
}

}  // namespace qx
