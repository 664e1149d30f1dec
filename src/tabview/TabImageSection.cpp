#include "tabview/TabImageSection.h"

#include <algorithm>
#include <string>

namespace qx {

namespace {

constexpr const char* kUpdateError = "Failed to Update Cache";

// Guards a batch on the list so that an exception still closes it.
class TListUpdate {
 public:
  explicit TListUpdate(TTabImageSectionList& list) : list_(list) { list_.BeginUpdate(); }
  ~TListUpdate() noexcept(false) { list_.EndUpdate(); }
  TListUpdate(const TListUpdate&) = delete;
  TListUpdate& operator=(const TListUpdate&) = delete;

 private:
  TTabImageSectionList& list_;
};

}  // namespace

// ---------------------------------------------------------------- section

TTabImageSection::~TTabImageSection() {
  for (TTabImageItem* tab : FTabImages) {
    if (tab->FSection == this) tab->FSection = nullptr;
  }
}

void TTabImageSection::CheckIndex(std::int32_t index, std::size_t limit) const {
  if (index < 0 || static_cast<std::size_t>(index) >= limit) {
    throw std::out_of_range("Tab index out of range (" + std::to_string(index) + ")");
  }
}

void TTabImageSection::Add(TTabImageItem* tab) {
  if (!tab) throw std::invalid_argument("A section takes no nil tab");
  FTabImages.push_back(tab);
  Notify(tab, true);
}

void TTabImageSection::Insert(std::int32_t index, TTabImageItem* tab) {
  if (!tab) throw std::invalid_argument("A section takes no nil tab");
  CheckIndex(index, FTabImages.size() + 1);
  FTabImages.insert(FTabImages.begin() + index, tab);
  Notify(tab, true);
}

void TTabImageSection::Delete(std::int32_t index) {
  CheckIndex(index, FTabImages.size());
  TTabImageItem* tab = FTabImages[static_cast<std::size_t>(index)];
  FTabImages.erase(FTabImages.begin() + index);
  Notify(tab, false);
}

void TTabImageSection::Remove(TTabImageItem* tab) {
  if (!tab) return;
  const std::int32_t index = tab->FSectionIndex;
  if (index >= 0 && index < Count() && FTabImages[static_cast<std::size_t>(index)] == tab) {
    Delete(index);
    return;
  }
  // Stale indexes (inside an update) must not cost another tab its place.
  const auto it = std::find(FTabImages.begin(), FTabImages.end(), tab);
  if (it != FTabImages.end()) Delete(static_cast<std::int32_t>(it - FTabImages.begin()));
}

void TTabImageSection::Swap(std::int32_t i, std::int32_t j) {
  CheckIndex(i, FTabImages.size());
  CheckIndex(j, FTabImages.size());
  std::swap(FTabImages[static_cast<std::size_t>(i)], FTabImages[static_cast<std::size_t>(j)]);
  Changed();
}

std::int32_t TTabImageSection::IndexOf(const TTabImageItem* tab) const {
  return tab ? tab->FSectionIndex : -1;
}

TTabImageItem* TTabImageSection::TabImages(std::int32_t index) const {
  CheckIndex(index, FTabImages.size());
  return FTabImages[static_cast<std::size_t>(index)];
}

void TTabImageSection::SetTabImages(std::int32_t index, TTabImageItem* tab) {
  if (!tab) throw std::invalid_argument("A section takes no nil tab");
  CheckIndex(index, FTabImages.size());
  TTabImageItem*& slot = FTabImages[static_cast<std::size_t>(index)];
  TTabImageItem* old = slot;
  slot = tab;
  Notify(old, false);
  Notify(tab, true);
}

void TTabImageSection::EndUpdate() {
  --FUpdateCount;
  if (FUpdateCount < 0) {
    FUpdateCount = 0;
    throw ETabImageUpdateError(kUpdateError);
  }
  // A section of a list is numbered by the list, among all the strip's tabs.
  if (FUpdateCount == 0) Changed();
}

void TTabImageSection::Notify(TTabImageItem* tab, bool added) {
  if (added) {
    tab->FSection = this;
  } else if (tab->FSection == this) {
    tab->FSection = nullptr;
  }
  Changed();
}

void TTabImageSection::Changed() {
  if (FOwner) {
    if (FOwner->FUpdateCount <= 0) FOwner->ReIndex();
  } else if (FUpdateCount <= 0) {
    Renumber();
  }
}

void TTabImageSection::Renumber() {
  std::int32_t index = 0;
  for (TTabImageItem* tab : FTabImages) {
    tab->FIndex = index;
    tab->FSectionIndex = index;
    ++index;
  }
}

void TTabImageSection::Forget(TTabImageItem* tab) {
  for (auto it = std::find(FTabImages.begin(), FTabImages.end(), tab); it != FTabImages.end();
       it = std::find(FTabImages.begin(), FTabImages.end(), tab)) {
    Delete(static_cast<std::int32_t>(it - FTabImages.begin()));
  }
}

// ---------------------------------------------------------------- list

TTabImageSectionList::~TTabImageSectionList() {
  FDestroying = true;
  FSections.clear();
}

TTabImageSection* TTabImageSectionList::AddSection(std::int32_t index) {
  if (index > Count()) {
    throw std::out_of_range("Section index out of range (" + std::to_string(index) + ")");
  }
  auto section = std::make_unique<TTabImageSection>();
  TTabImageSection* raw = section.get();
  raw->FOwner = this;
  if (index < 0) {
    FSections.push_back(std::move(section));
  } else {
    FSections.insert(FSections.begin() + index, std::move(section));
  }
  SectionsChanged();
  return raw;
}

void TTabImageSectionList::AddTab(TTabImageItem* tab) { DefaultSection()->Add(tab); }

void TTabImageSectionList::RemoveSection(TTabImageSection* section) {
  const auto it = std::find_if(FSections.begin(), FSections.end(),
                               [section](const auto& owned) { return owned.get() == section; });
  if (it == FSections.end()) return;
  std::unique_ptr<TTabImageSection> gone = std::move(*it);
  FSections.erase(it);
  gone->FOwner = nullptr;
  gone.reset();
  SectionsChanged();
}

void TTabImageSectionList::RemoveTab(TTabImageItem* tab) {
  if (tab && tab->FSection) tab->FSection->Remove(tab);
}

void TTabImageSectionList::Clear() {
  std::vector<std::unique_ptr<TTabImageSection>> gone;
  gone.swap(FSections);
  for (auto& section : gone) section->FOwner = nullptr;
  gone.clear();
  SectionsChanged();
}

TTabImageSection* TTabImageSectionList::DefaultSection() {
  if (FSections.empty()) return AddSection(-1);
  return FSections.front().get();
}

TTabImageSection* TTabImageSectionList::Sections(std::int32_t index) const {
  if (index < 0 || index >= Count()) {
    throw std::out_of_range("Section index out of range (" + std::to_string(index) + ")");
  }
  return FSections[static_cast<std::size_t>(index)].get();
}

TTabImageItem* TTabImageSectionList::TabImages(std::int32_t index) const {
  if (index < 0 || index >= TabCount()) return nullptr;
  return FTabImages[static_cast<std::size_t>(index)];
}

std::int32_t TTabImageSectionList::IndexOfSection(const TTabImageSection* section) const {
  for (std::size_t i = 0; i < FSections.size(); ++i) {
    if (FSections[i].get() == section) return static_cast<std::int32_t>(i);
  }
  return -1;
}

std::int32_t TTabImageSectionList::IndexOfTab(const TTabImageItem* tab) const {
  return tab ? tab->FIndex : -1;
}

TTabImageItem* TTabImageSectionList::NextTab(const TTabImageItem* tab) const {
  return tab ? TabImages(IndexOfTab(tab) + 1) : nullptr;
}

TTabImageItem* TTabImageSectionList::PrevTab(const TTabImageItem* tab) const {
  return tab ? TabImages(IndexOfTab(tab) - 1) : nullptr;
}

bool TTabImageSectionList::IsLeftSectionEdge(const TTabImageItem* tab) const {
  return tab && tab->FSection && tab->FSection->IndexOf(tab) == 0;
}

bool TTabImageSectionList::IsRightSectionEdge(const TTabImageItem* tab) const {
  return tab && tab->FSection && tab->FSection->IndexOf(tab) == tab->FSection->Count() - 1;
}

void TTabImageSectionList::Swap(TTabImageItem* tabA, TTabImageItem* tabB) {
  if (!tabA || !tabB || !tabA->FSection || !tabB->FSection) return;
  const std::int32_t indexA = tabA->FSectionIndex;
  const std::int32_t indexB = tabB->FSectionIndex;
  if (indexA < 0 || indexB < 0) return;
  TTabImageSection* section = tabA->FSection;
  // Both places are written in tabA's section, also when tabB lives in another
  // one; an index that section does not have leaves everything as it was.
  if (indexA >= section->Count() || indexB >= section->Count()) return;
  TListUpdate update(*this);
  if (section == tabB->FSection) {
    section->Swap(indexA, indexB);
  } else {
    section->SetTabImages(indexA, tabB);
    section->SetTabImages(indexB, tabA);
  }
}

TTabImageItem* TTabImageSectionList::FindTabImageFromId(std::u16string_view guid) const {
  // The first lookups after a change walk the tabs: an added tab is often followed
  // by a single event about it, and that walk costs far less than a new map.
  if (!FTabMapValid && FLookupsSinceChange < kWalksBeforeMap) {
    ++FLookupsSinceChange;
    if (guid.empty()) return nullptr;
    // From the end, as the map keeps the last of two tabs with one id.
    for (auto it = FTabImages.rbegin(); it != FTabImages.rend(); ++it)
      if ((*it)->HasTabGuid(guid)) return *it;
    return nullptr;
  }
  if (!FTabMapValid) {
    FTabMap.clear();
    FTabMap.reserve(FTabImages.size());
    for (TTabImageItem* tab : FTabImages) {
      std::u16string id = tab->TabGuid();
      if (!id.empty()) FTabMap[std::move(id)] = tab;
    }
    FTabMapValid = true;
  }
  const auto it = FTabMap.find(std::u16string(guid));
  return it == FTabMap.end() ? nullptr : it->second;
}

void TTabImageSectionList::Forget(TTabImageItem* tab) {
  TListUpdate update(*this);
  for (const auto& section : FSections) section->Forget(tab);
}

void TTabImageSectionList::EndUpdate() {
  --FUpdateCount;
  if (FUpdateCount < 0) {
    FUpdateCount = 0;
    throw ETabImageUpdateError(kUpdateError);
  }
  if (FUpdateCount == 0) ReIndex();
}

void TTabImageSectionList::SectionsChanged() {
  if (FUpdateCount <= 0) ReIndex();
}

void TTabImageSectionList::ReIndex() {
  if (FDestroying) return;
  FTabImages.clear();
  FTabMap.clear();
  FTabMapValid = false;
  FLookupsSinceChange = 0;
  for (const auto& section : FSections) {
    std::int32_t sectionIndex = 0;
    for (TTabImageItem* tab : section->FTabImages) {
      tab->FIndex = static_cast<std::int32_t>(FTabImages.size());
      tab->FSectionIndex = sectionIndex++;
      FTabImages.push_back(tab);
    }
  }
}

}  // namespace qx
