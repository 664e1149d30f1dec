// The mirror of the host's current tab group: comparison, rebuild, tab images.

#include <algorithm>
#include <vector>

#include "host/WrapV3Intf.h"
#include "tabbar/TabbarForm.h"

namespace qx {

namespace {

// The identity of a host object: its IUnknown, whatever wrapper handed it out.
ComPtr<IUnknown> IdentityOf(IUnknown* object) {
  ComPtr<IUnknown> identity;
  if (object) object->QueryInterface(IUnknown::IID, identity.put_void());
  return identity;
}

template <class T>
bool SameIdentity(const ComPtr<IUnknown>& identity, const ComPtr<T>& object) {
  return identity.get() == IdentityOf(object.get()).get();
}

}  // namespace

void TTabbarFrame::UpdateTabbar(bool tabAdded, bool animated) { InternalUpdateTabbar(tabAdded, animated); }

void TTabbarFrame::InternalUpdateTabbar(bool /*tabAdded*/, bool animated) {
  if (FFinishing || FWaitUpdateTabbar || !FServiceCore) return;
  if (!FTabbarUpdated) CheckCabinetStartupScreen();
  FTabbarUpdated = true;

  ComPtr<IQxITabDock> dock;
  FServiceCore->TabDock(dock);
  if (!dock) return;

  bool changed = false;
  TTabImage* newActive = nullptr;
  ComPtr<IQxITabManagerWrap> manager;
  FServiceCore->FilteredTabManagerWrapEx(manager);
  ComPtr<IQxITabGroupWrap> group;
  if (manager) manager->GetActiveGroup(group);
  if (group && !MirrorIsCurrent(group.get())) {
    changed = true;
    if (!InsertOneTab(group.get(), newActive)) RebuildMirror(group.get(), newActive);
  }

  if (changed) {
    if (newActive != FActiveTab)
      SetActiveTabImage(newActive, false);
    else
      layoutSubviews(animated);
  }
  ParentSetTabbarChildFrameVisible();
}

bool TTabbarFrame::MirrorIsCurrent(IQxITabGroupWrap* group) {
  ComPtr<IQxITabGroup> raw;
  group->GetRaw(raw);
  if (!FHostGroupIdentity || !SameIdentity(FHostGroupIdentity, raw)) return false;
  const std::int32_t sectionCount = group->GetSectionCount();
  if (sectionCount != FTabList->Count()) return false;
  for (std::int32_t s = 0; s < sectionCount; ++s) {
    ComPtr<IQxITabSectionWrap> hostSection;
    if (!group->GetSection(s, hostSection) || !hostSection) return false;
    ComPtr<IQxITabSection> rawSection;
    hostSection->GetRaw(rawSection);
    TTabImageSection* section = FTabList->Sections(s);
    ComPtr<IUnknown>& known = FHostSections[section];
    // A section the drag made meets its host section here.
    if (!known) known = IdentityOf(rawSection.get());
    if (!SameIdentity(known, rawSection)) return false;
    const std::int32_t tabCount = hostSection->GetTabCount();
    if (tabCount != section->Count()) return false;
    for (std::int32_t t = 0; t < tabCount; ++t) {
      ComPtr<IQxITab> hostTab;
      if (!hostSection->GetTab(t, hostTab)) return false;
      auto it = FHostTabs.find(AsTabImage(section->TabImages(t)));
      if (it == FHostTabs.end() || !SameIdentity(it->second, hostTab)) return false;
    }
  }
  return true;
}

namespace {

struct THostTab {
  ComPtr<IQxITab> Tab;
  ComPtr<IUnknown> Identity;
};

struct THostSection {
  ComPtr<IUnknown> Identity;
  std::vector<THostTab> Tabs;
};

std::vector<THostSection> ReadHostSections(IQxITabGroupWrap* group) {
  std::vector<THostSection> sections;
  const std::int32_t sectionCount = group->GetSectionCount();
  sections.reserve(static_cast<std::size_t>(std::max(sectionCount, 0)));
  for (std::int32_t s = 0; s < sectionCount; ++s) {
    ComPtr<IQxITabSectionWrap> hostSection;
    if (!group->GetSection(s, hostSection) || !hostSection) continue;
    ComPtr<IQxITabSection> raw;
    hostSection->GetRaw(raw);
    THostSection& section = sections.emplace_back();
    section.Identity = IdentityOf(raw.get());
    const std::int32_t tabCount = hostSection->GetTabCount();
    section.Tabs.reserve(static_cast<std::size_t>(std::max(tabCount, 0)));
    for (std::int32_t t = 0; t < tabCount; ++t) {
      ComPtr<IQxITab> tab;
      if (hostSection->GetTab(t, tab) && tab) section.Tabs.push_back({tab, IdentityOf(tab.get())});
    }
  }
  return sections;
}

// Brackets the scene while it changes in more than one place: one change
// alone gains nothing from it, and the bracket walks every control of the strip.
class TSceneUpdate {
 public:
  TSceneUpdate(TControl* scene, bool open) : FScene(open ? scene : nullptr) {
    if (FScene) FScene->BeginUpdate();
  }
  ~TSceneUpdate() {
    if (FScene) FScene->EndUpdate();
  }
  TSceneUpdate(const TSceneUpdate&) = delete;
  TSceneUpdate& operator=(const TSceneUpdate&) = delete;

 private:
  TControl* FScene;
};

}  // namespace

bool TTabbarFrame::InsertOneTab(IQxITabGroupWrap* group, TTabImage*& newActive) {
  ComPtr<IQxITabGroup> raw;
  group->GetRaw(raw);
  if (!FHostGroupIdentity || !SameIdentity(FHostGroupIdentity, raw)) return false;
  const std::int32_t sectionCount = group->GetSectionCount();
  if (sectionCount != FTabList->Count()) return false;
  TTabImageSection* target = nullptr;
  std::int32_t at = -1;
  ComPtr<IQxITab> added;
  for (std::int32_t s = 0; s < sectionCount; ++s) {
    ComPtr<IQxITabSectionWrap> hostSection;
    if (!group->GetSection(s, hostSection) || !hostSection) return false;
    ComPtr<IQxITabSection> rawSection;
    hostSection->GetRaw(rawSection);
    TTabImageSection* section = FTabList->Sections(s);
    auto known = FHostSections.find(section);
    if (known == FHostSections.end() || !known->second || !SameIdentity(known->second, rawSection))
      return false;
    const std::int32_t tabCount = hostSection->GetTabCount();
    const std::int32_t extra = tabCount - section->Count();
    if (extra < 0 || extra > 1 || (extra == 1 && target)) return false;
    std::int32_t skipped = 0;
    for (std::int32_t t = 0; t < tabCount; ++t) {
      ComPtr<IQxITab> hostTab;
      if (!hostSection->GetTab(t, hostTab) || !hostTab) return false;
      if (t - skipped < section->Count()) {
        auto it = FHostTabs.find(AsTabImage(section->TabImages(t - skipped)));
        if (it != FHostTabs.end() && SameIdentity(it->second, hostTab)) continue;
      }
      if (extra == 0 || skipped == 1) return false;
      skipped = 1;
      target = section;
      at = t;
      added = hostTab;
    }
  }
  if (!target) return false;

  // The host's active tab is the new one or the one the strip shows already;
  // anything else is a wider change.
  ComPtr<IQxITab> activeTab;
  group->GetActiveTab(activeTab);
  const ComPtr<IUnknown> activeIdentity = IdentityOf(activeTab.get());
  const bool addedIsActive = activeIdentity && SameIdentity(activeIdentity, added);
  if (!addedIsActive) {
    auto shown = FActiveTab ? FHostTabs.find(FActiveTab) : FHostTabs.end();
    const bool same = activeIdentity ? shown != FHostTabs.end() && shown->second.get() == activeIdentity.get()
                                     : FActiveTab == nullptr;
    if (!same) return false;
  }

  UpdateGroupImageFromGroup(raw.get());
  FTabList->BeginUpdate();
  TTabImage* image = InsertTabImage(target, at, added.get());
  FTabList->EndUpdate();
  newActive = addedIsActive ? image : FActiveTab;
  return true;
}

void TTabbarFrame::RebuildMirror(IQxITabGroupWrap* group, TTabImage*& newActive) {
  ComPtr<IQxITabGroup> raw;
  group->GetRaw(raw);
  UpdateGroupImageFromGroup(raw.get());
  FHostGroup = raw;
  FHostGroupIdentity = IdentityOf(raw.get());
  const std::vector<THostSection> host = ReadHostSections(group);
  ComPtr<IQxITab> activeTab;
  group->GetActiveTab(activeTab);
  const ComPtr<IUnknown> activeIdentity = IdentityOf(activeTab.get());

  // Images that survive are found by their host tab; the rest belong to closed tabs.
  std::unordered_map<IUnknown*, TTabImage*> byTab;
  byTab.reserve(FHostTabs.size());
  std::vector<TTabImage*> closed;
  for (std::int32_t i = 0; i < FTabList->TabCount(); ++i) {
    TTabImage* image = AsTabImage(FTabList->TabImages(i));
    if (!image) continue;
    auto it = FHostTabs.find(image);
    if (it != FHostTabs.end())
      byTab.emplace(it->second.get(), image);
    else
      closed.push_back(image);
  }
  std::size_t added = 0;
  std::size_t kept = 0;
  for (const THostSection& section : host)
    for (const THostTab& tab : section.Tabs) (byTab.count(tab.Identity.get()) ? kept : added) += 1;
  const std::size_t sceneChanges = added + closed.size() + (byTab.size() - kept);

  TSceneUpdate update(FTabScrollBox, sceneChanges > 1);
  FTabList->Clear();
  FHostSections.clear();
  FTabList->BeginUpdate();
  for (const THostSection& hostSection : host) {
    TTabImageSection* section = FTabList->AddSection(-1);
    FHostSections[section] = hostSection.Identity;
    for (const THostTab& hostTab : hostSection.Tabs) {
      TTabImage* image = nullptr;
      if (auto it = byTab.find(hostTab.Identity.get()); it != byTab.end()) {
        image = it->second;
        byTab.erase(it);
        section->Add(image);
      } else {
        image = AddTabImage(section, hostTab.Tab.get());
      }
      if (hostTab.Identity.get() == activeIdentity.get()) newActive = image;
    }
  }
  FTabList->EndUpdate();

  for (const auto& entry : byTab) closed.push_back(entry.second);
  for (TTabImage* image : closed) {
    RemoveUpdateImageTask(image);
    FTabScrollBox->Content()->RemoveObject(image);
    delete image;
  }
}

TTabImage* TTabbarFrame::AddTabImage(TTabImageSection* section, IQxITab* tab) {
  return InsertTabImage(section, -1, tab);
}

TTabImage* TTabbarFrame::InsertTabImage(TTabImageSection* section, std::int32_t index, IQxITab* tab) {
  const std::int32_t tabId = FServiceCore && tab ? FServiceCore->TabIdOf(tab) : 0;
  auto* image = new TTabImage(FTabScrollBox, FImageRes, FServiceCore.get(), tabId);
  image->SetScrollBox(FScrollBoxAdapter.get());
  image->SetOnGetActive([this](const TTabImageItem& item) { return GetTabActive(item); });
  image->OnDragOffsetAnimationFinish = [this](TFmxObject* sender) { TabDragOffsetAnimationFinish(sender); };
  image->OnCloseButtonShown = [this](TFmxObject* sender) { CancelOtherCloseButtonHover(sender); };
  image->OnConvertLocalMatrix = [this](TTabImage* tab, float x) { return ConvertTabLocalMatrix(tab, x); };
  image->Position().SetY(kTabTop);
  // Right of every image that stands, so a new tab slides in from the far right.
  image->Position().SetX(static_cast<float>(FHostTabs.size()) * kTabWidth);
  if (tab) FHostTabs[image] = IdentityOf(tab);

  TTabImageSection* target = section ? section : FTabList->DefaultSection();
  if (index < 0 || index >= target->Count())
    target->Add(image);
  else
    target->Insert(index, image);
  FTabScrollBox->AddObject(image);
  RouteTabInput(image);
  if (FTabImageCacheMgr) image->LoadCacheImage(*FTabImageCacheMgr);
  image->UpdateTabStatus();
  // A new tab takes the dim of an unselected tab at once, like every tab beside it.
  image->UpdateDimAndShadow(image == FHoveredTab, true);
  return image;
}

void TTabbarFrame::RemoveUpdateImageTask(TTabImage* tab) {
  if (!FDelayTask || !FServiceCore || !tab) return;
  const std::u16string guid = tab->TabGuid();
  if (!guid.empty()) FDelayTask->RemoveTaskById(u"UpdateTabImage-" + guid);
}

bool TTabbarFrame::IsHostActiveTab(TTabImage* tab) {
  if (!FServiceCore) return true;
  ComPtr<IQxITab> active;
  FServiceCore->ActiveTab(active);
  auto it = FHostTabs.find(tab);
  return active && it != FHostTabs.end() && SameIdentity(it->second, active);
}

// ---- tab image callbacks

bool TTabbarFrame::GetTabActive(const TTabImageItem& tab) const {
  return FActiveTab && static_cast<const TTabImageItem*>(FActiveTab) == &tab;
}

void TTabbarFrame::CancelOtherCloseButtonHover(TFmxObject* sender) {
  for (std::int32_t i = 0; i < FTabList->TabCount(); ++i) {
    TTabImage* tab = AsTabImage(FTabList->TabImages(i));
    if (tab && tab != sender && tab->CloseButtonVisible()) tab->StartCloseButtonAnimation(false, false);
  }
}

void TTabbarFrame::TabDragOffsetAnimationFinish(TFmxObject* sender) {
  auto* tab = dynamic_cast<TTabImage*>(sender);
  if (!tab || FAfterDragTabs.erase(tab) == 0) return;
  if (tab == FActiveTab) FimgActiveTab->SetVisible(true);
}

float TTabbarFrame::ConvertTabLocalMatrix(TTabImage* tab, float x) const {
  x -= kContentMargin;
  const bool isDragTarget = tab == FdragTarget;
  if (tab->DragOffset() <= 0 && !isDragTarget) return x;
  x -= tab->DragOffset();
  const float boxWidth = FTabScrollBox->Width();
  const float tabWidth = tab->Width();
  // Only the dragged tab may use the overhang of the side margins.
  const float overhang = isDragTarget ? kSideMargin : 0;
  return std::clamp(x, -overhang, std::max(-overhang, boxWidth - tabWidth + overhang));
}

}  // namespace qx
