// The mirror of the host's current tab group: comparison, rebuild, tab images.

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
  FTabScrollBox->BeginUpdate();
  try {
    ComPtr<IQxITabManagerWrap> manager;
    FServiceCore->FilteredTabManagerWrapEx(manager);
    ComPtr<IQxITabGroupWrap> group;
    if (manager) manager->GetActiveGroup(group);
    if (group && !MirrorIsCurrent(group.get())) {
      changed = true;
      RebuildMirror(group.get(), newActive);
    }
  } catch (...) {
    FTabScrollBox->EndUpdate();
    throw;
  }
  FTabScrollBox->EndUpdate();

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

void TTabbarFrame::RebuildMirror(IQxITabGroupWrap* group, TTabImage*& newActive) {
  ComPtr<IQxITabGroup> raw;
  group->GetRaw(raw);
  UpdateGroupImageFromGroup(raw.get());
  FHostGroup = raw;
  FHostGroupIdentity = IdentityOf(raw.get());

  // Images that survive are found by their host tab; the rest belong to closed tabs.
  std::unordered_map<IUnknown*, TTabImage*> byTab;
  byTab.reserve(FHostTabs.size());
  for (std::int32_t i = 0; i < FTabList->TabCount(); ++i) {
    TTabImage* image = AsTabImage(FTabList->TabImages(i));
    auto it = FHostTabs.find(image);
    if (image && it != FHostTabs.end()) byTab.emplace(it->second.get(), image);
  }
  std::vector<TTabImage*> orphans;
  for (std::int32_t i = 0; i < FTabList->TabCount(); ++i) {
    TTabImage* image = AsTabImage(FTabList->TabImages(i));
    if (image && !FHostTabs.count(image)) orphans.push_back(image);
  }
  FTabList->Clear();
  FHostSections.clear();
  FTabList->BeginUpdate();

  ComPtr<IQxITab> activeTab;
  group->GetActiveTab(activeTab);
  const ComPtr<IUnknown> activeIdentity = IdentityOf(activeTab.get());
  const std::int32_t sectionCount = group->GetSectionCount();
  for (std::int32_t s = 0; s < sectionCount; ++s) {
    ComPtr<IQxITabSectionWrap> hostSection;
    if (!group->GetSection(s, hostSection) || !hostSection) continue;
    TTabImageSection* section = FTabList->AddSection(-1);
    ComPtr<IQxITabSection> rawSection;
    hostSection->GetRaw(rawSection);
    FHostSections[section] = IdentityOf(rawSection.get());
    const std::int32_t tabCount = hostSection->GetTabCount();
    for (std::int32_t t = 0; t < tabCount; ++t) {
      ComPtr<IQxITab> hostTab;
      if (!hostSection->GetTab(t, hostTab) || !hostTab) continue;
      const ComPtr<IUnknown> identity = IdentityOf(hostTab.get());
      TTabImage* image = nullptr;
      if (auto it = byTab.find(identity.get()); it != byTab.end()) {
        image = it->second;
        byTab.erase(it);
        section->Add(image);
      } else {
        image = AddTabImage(section, hostTab.get());
      }
      if (identity.get() == activeIdentity.get()) newActive = image;
    }
  }
  FTabList->EndUpdate();

  for (const auto& entry : byTab) orphans.push_back(entry.second);
  for (TTabImage* image : orphans) {
    RemoveUpdateImageTask(image);
    FTabScrollBox->Content()->RemoveObject(image);
    delete image;
  }
}

TTabImage* TTabbarFrame::AddTabImage(TTabImageSection* section, IQxITab* tab) {
  const std::int32_t tabId = FServiceCore && tab ? FServiceCore->TabIdOf(tab) : 0;
  auto* image = new TTabImage(FTabScrollBox, FImageRes, FServiceCore.get(), tabId);
  image->SetScrollBox(FScrollBoxAdapter.get());
  image->SetOnGetActive([this](const TTabImageItem& item) { return GetTabActive(item); });
  image->OnDragOffsetAnimationFinish = [this](TFmxObject* sender) { TabDragOffsetAnimationFinish(sender); };
  image->OnCloseButtonShown = [this](TFmxObject* sender) { CancelOtherCloseButtonHover(sender); };
  image->Position().SetY(kTabTop);
  // Right of every image that stands, so a new tab slides in from the far right.
  image->Position().SetX(static_cast<float>(FHostTabs.size()) * kTabWidth);
  if (tab) FHostTabs[image] = IdentityOf(tab);

  (section ? section : FTabList->DefaultSection())->Add(image);
  FTabScrollBox->AddObject(image);
  if (FTabImageCacheMgr) image->LoadCacheImage(*FTabImageCacheMgr);
  image->UpdateTabStatus();
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
