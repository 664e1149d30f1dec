#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tabview/TabImageItem.h"

namespace qx {

class TTabImageSectionList;

// Raised by an EndUpdate without its BeginUpdate.
class ETabImageUpdateError : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

// An ordered run of tabs. It does not own them; adding a tab makes this its
// section, removing it clears that.
class TTabImageSection {
 public:
  TTabImageSection() = default;
  TTabImageSection(const TTabImageSection&) = delete;
  TTabImageSection& operator=(const TTabImageSection&) = delete;
  ~TTabImageSection();

  void Add(TTabImageItem* tab);
  void Insert(std::int32_t index, TTabImageItem* tab);
  void Delete(std::int32_t index);
  // Deletes by the tab's section index, so the indexes must be up to date.
  void Remove(TTabImageItem* tab);
  void Swap(std::int32_t i, std::int32_t j);
  // Answers from the tab's section index, without a search.
  std::int32_t IndexOf(const TTabImageItem* tab) const;
  std::int32_t Count() const { return static_cast<std::int32_t>(FTabImages.size()); }
  TTabImageItem* TabImages(std::int32_t index) const;
  void SetTabImages(std::int32_t index, TTabImageItem* tab);

  void BeginUpdate() { ++FUpdateCount; }
  void EndUpdate();

  TTabImageSectionList* Owner() const { return FOwner; }
  auto begin() const { return FTabImages.begin(); }
  auto end() const { return FTabImages.end(); }

 private:
  friend class TTabImageSectionList;
  friend class TTabImageItem;

  void CheckIndex(std::int32_t index, std::size_t limit) const;
  void Notify(TTabImageItem* tab, bool added);
  void Changed();
  void Renumber();
  // Drops a tab that is going away, found by identity rather than by index.
  void Forget(TTabImageItem* tab);

  std::vector<TTabImageItem*> FTabImages;
  TTabImageSectionList* FOwner = nullptr;
  std::int32_t FUpdateCount = 0;
};

// The strip's sections in order, a flat index of all tabs and a map from tab
// GUID to tab. Owns the sections, not the tabs.
class TTabImageSectionList {
 public:
  TTabImageSectionList() = default;
  TTabImageSectionList(const TTabImageSectionList&) = delete;
  TTabImageSectionList& operator=(const TTabImageSectionList&) = delete;
  ~TTabImageSectionList();

  // A negative index appends.
  TTabImageSection* AddSection(std::int32_t index = -1);
  void AddTab(TTabImageItem* tab);
  // Frees the section.
  void RemoveSection(TTabImageSection* section);
  void RemoveTab(TTabImageItem* tab);
  void Clear();
  TTabImageSection* DefaultSection();

  TTabImageSection* Sections(std::int32_t index) const;
  std::int32_t Count() const { return static_cast<std::int32_t>(FSections.size()); }
  // Nil out of range.
  TTabImageItem* TabImages(std::int32_t index) const;
  std::int32_t TabCount() const { return static_cast<std::int32_t>(FTabImages.size()); }
  std::int32_t IndexOfSection(const TTabImageSection* section) const;
  std::int32_t IndexOfTab(const TTabImageItem* tab) const;
  TTabImageItem* NextTab(const TTabImageItem* tab) const;
  TTabImageItem* PrevTab(const TTabImageItem* tab) const;
  bool IsLeftSectionEdge(const TTabImageItem* tab) const;
  bool IsRightSectionEdge(const TTabImageItem* tab) const;
  void Swap(TTabImageItem* tabA, TTabImageItem* tabB);
  TTabImageItem* FindTabImageFromId(std::u16string_view guid) const;

  // Iterates the sections.
  class const_iterator {
   public:
    explicit const_iterator(std::vector<std::unique_ptr<TTabImageSection>>::const_iterator it) : it_(it) {}
    TTabImageSection* operator*() const { return it_->get(); }
    const_iterator& operator++() {
      ++it_;
      return *this;
    }
    bool operator==(const const_iterator&) const = default;

   private:
    std::vector<std::unique_ptr<TTabImageSection>>::const_iterator it_;
  };
  const_iterator begin() const { return const_iterator(FSections.begin()); }
  const_iterator end() const { return const_iterator(FSections.end()); }

  void BeginUpdate() { ++FUpdateCount; }
  void EndUpdate();
  void ReIndex();

 private:
  friend class TTabImageSection;
  friend class TTabImageItem;

  void SectionsChanged();
  // Drops a tab that is going away from every section, also from one it was
  // written into without leaving its own.
  void Forget(TTabImageItem* tab);

  std::vector<std::unique_ptr<TTabImageSection>> FSections;
  std::vector<TTabImageItem*> FTabImages;
  // Built on the first lookup after a change: a strip of thousands changes far more
  // often than it looks a tab up by its id.
  mutable std::unordered_map<std::u16string, TTabImageItem*> FTabMap;
  mutable bool FTabMapValid = false;
  static constexpr int kWalksBeforeMap = 4;
  mutable int FLookupsSinceChange = 0;
  std::int32_t FUpdateCount = 0;
  bool FDestroying = false;
};

}  // namespace qx
