#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <vector>

#include "tabview/TabImage.h"
#include "tabview/TabImageSection.h"

namespace qx {
namespace {

std::vector<std::unique_ptr<TTabImage>> MakeTabs(int count) {
  std::vector<std::unique_ptr<TTabImage>> tabs;
  for (int i = 0; i < count; ++i) {
    tabs.push_back(std::make_unique<TTabImage>());
    tabs.back()->SetTabGuid(u"{G" + std::u16string(1, static_cast<char16_t>(u'A' + i)) + u"}");
  }
  return tabs;
}

// A new section at the end of the list, holding the given tabs in order.
TTabImageSection* AddSectionWith(TTabImageSectionList& list, std::initializer_list<TTabImage*> tabs) {
  TTabImageSection* section = list.AddSection(-1);
  for (TTabImage* tab : tabs) section->Add(tab);
  return section;
}

TEST(TabImageSection, StandaloneSectionRenumbersItsTabs) {
  auto tabs = MakeTabs(3);
  TTabImageSection section;
  section.Add(tabs[0].get());
  section.Add(tabs[1].get());
  section.Insert(0, tabs[2].get());
  EXPECT_EQ(tabs[2]->Section(), &section);
  EXPECT_EQ(section.IndexOf(tabs[2].get()), 0);
  EXPECT_EQ(section.IndexOf(tabs[0].get()), 1);
  EXPECT_EQ(section.IndexOf(tabs[1].get()), 2);
  section.Remove(tabs[0].get());
  EXPECT_EQ(tabs[0]->Section(), nullptr);
  EXPECT_EQ(section.IndexOf(tabs[1].get()), 1);
  EXPECT_EQ(section.IndexOf(nullptr), -1);
}

TEST(TabImageSection, UpdateHoldsRenumberingUntilTheEnd) {
  auto tabs = MakeTabs(2);
  TTabImageSection section;
  section.BeginUpdate();
  section.Add(tabs[0].get());
  section.Insert(0, tabs[1].get());
  EXPECT_EQ(tabs[1]->SectionIndex(), -1);
  section.EndUpdate();
  EXPECT_EQ(tabs[1]->SectionIndex(), 0);
  EXPECT_EQ(tabs[0]->SectionIndex(), 1);
}

TEST(TabImageSection, UnbalancedEndUpdateRaises) {
  TTabImageSection section;
  try {
    section.EndUpdate();
    FAIL() << "no exception";
  } catch (const ETabImageUpdateError& e) {
    EXPECT_STREQ(e.what(), "Failed to Update Cache");
  }
  TTabImageSectionList list;
  EXPECT_THROW(list.EndUpdate(), ETabImageUpdateError);
  // The count is back at rest: a batch still holds re-indexing.
  auto tabs = MakeTabs(1);
  list.BeginUpdate();
  list.AddTab(tabs[0].get());
  EXPECT_EQ(list.TabCount(), 0);
  list.EndUpdate();
  EXPECT_EQ(list.TabCount(), 1);
}

TEST(TabImageSection, BadIndexesAreClearErrors) {
  auto tabs = MakeTabs(1);
  TTabImageSection section;
  EXPECT_THROW(section.Delete(0), std::out_of_range);
  EXPECT_THROW(section.Insert(2, tabs[0].get()), std::out_of_range);
  EXPECT_THROW(section.TabImages(0), std::out_of_range);
  EXPECT_THROW(section.Add(nullptr), std::invalid_argument);
  TTabImageSectionList list;
  EXPECT_THROW(list.Sections(0), std::out_of_range);
  EXPECT_THROW(list.AddSection(3), std::out_of_range);
}

TEST(TabImageSectionList, ReIndexBuildsFlatIndexAndMap) {
  auto tabs = MakeTabs(5);
  TTabImageSectionList list;
  TTabImageSection* first = AddSectionWith(list, {tabs[0].get(), tabs[1].get()});
  TTabImageSection* second = AddSectionWith(list, {tabs[2].get(), tabs[3].get()});
  TTabImageSection* front = list.AddSection(0);
  front->Add(tabs[4].get());
  EXPECT_EQ(second->Owner(), &list);
  EXPECT_EQ(list.Count(), 3);
  EXPECT_EQ(list.TabCount(), 5);
  EXPECT_EQ(list.IndexOfSection(front), 0);
  EXPECT_EQ(list.IndexOfSection(second), 2);
  EXPECT_EQ(list.TabImages(0), tabs[4].get());
  EXPECT_EQ(list.IndexOfTab(tabs[2].get()), 3);
  EXPECT_EQ(tabs[2]->SectionIndex(), 0);
  EXPECT_EQ(list.IndexOfTab(nullptr), -1);
  EXPECT_EQ(list.TabImages(5), nullptr);
  EXPECT_EQ(list.TabImages(-1), nullptr);
  EXPECT_EQ(list.NextTab(tabs[1].get()), tabs[2].get());
  EXPECT_EQ(list.PrevTab(tabs[4].get()), nullptr);
  EXPECT_EQ(list.NextTab(tabs[3].get()), nullptr);
  EXPECT_EQ(list.NextTab(nullptr), nullptr);
  EXPECT_TRUE(list.IsLeftSectionEdge(tabs[2].get()));
  EXPECT_FALSE(list.IsRightSectionEdge(tabs[2].get()));
  EXPECT_TRUE(list.IsRightSectionEdge(tabs[3].get()));
  EXPECT_TRUE(list.IsLeftSectionEdge(tabs[4].get()) && list.IsRightSectionEdge(tabs[4].get()));
  EXPECT_EQ(list.FindTabImageFromId(u"{GC}"), tabs[2].get());
  EXPECT_EQ(list.FindTabImageFromId(u"{GZ}"), nullptr);
  std::vector<TTabImageSection*> seen;
  for (TTabImageSection* section : list) seen.push_back(section);
  EXPECT_EQ(seen, (std::vector<TTabImageSection*>{front, first, second}));
}

TEST(TabImageSectionList, LaterTabWithSameGuidWinsAndEmptyGuidIsSkipped) {
  auto tabs = MakeTabs(3);
  tabs[2]->SetTabGuid(u"{GA}");
  tabs[1]->SetTabGuid(u"");
  TTabImageSectionList list;
  for (auto& tab : tabs) list.AddTab(tab.get());
  EXPECT_EQ(list.FindTabImageFromId(u"{GA}"), tabs[2].get());
  EXPECT_EQ(list.FindTabImageFromId(u""), nullptr);
}

TEST(TabImageSectionList, DuringUpdateTheMapIsTheLastOne) {
  auto tabs = MakeTabs(2);
  TTabImageSectionList list;
  list.AddTab(tabs[0].get());
  list.BeginUpdate();
  list.AddTab(tabs[1].get());
  list.RemoveTab(tabs[0].get());
  EXPECT_EQ(list.FindTabImageFromId(u"{GA}"), tabs[0].get());
  EXPECT_EQ(list.FindTabImageFromId(u"{GB}"), nullptr);
  list.EndUpdate();
  EXPECT_EQ(list.FindTabImageFromId(u"{GA}"), nullptr);
  EXPECT_EQ(list.FindTabImageFromId(u"{GB}"), tabs[1].get());
  EXPECT_EQ(tabs[0]->Section(), nullptr);
}

// A section of a list counts its tabs among all the strip's, also after its own update.
TEST(TabImageSectionList, SectionUpdateKeepsTheStripIndexes) {
  auto tabs = MakeTabs(4);
  TTabImageSectionList list;
  list.AddSection()->Add(tabs[0].get());
  list.Sections(0)->Add(tabs[1].get());
  TTabImageSection* second = list.AddSection();
  second->BeginUpdate();
  second->Add(tabs[3].get());
  second->Insert(0, tabs[2].get());
  second->EndUpdate();
  EXPECT_EQ(list.IndexOfTab(tabs[2].get()), 2);
  EXPECT_EQ(second->IndexOf(tabs[2].get()), 0);
  EXPECT_EQ(list.PrevTab(tabs[2].get()), tabs[1].get());
  EXPECT_EQ(list.TabImages(3), tabs[3].get());
}

TEST(TabImageSectionList, SwapInTheOnceMadeDefaultSectionExchanges) {
  auto tabs = MakeTabs(3);
  TTabImageSectionList list;
  TTabImageSection* section = list.DefaultSection();
  EXPECT_EQ(list.DefaultSection(), section);
  EXPECT_EQ(list.Count(), 1);
  for (auto& tab : tabs) list.AddTab(tab.get());
  list.Swap(tabs[0].get(), tabs[2].get());
  EXPECT_EQ(list.TabImages(0), tabs[2].get());
  EXPECT_EQ(list.TabImages(2), tabs[0].get());
  EXPECT_EQ(tabs[0]->SectionIndex(), 2);
  EXPECT_EQ(tabs[0]->Section(), list.DefaultSection());
}

TEST(TabImageSectionList, SwapAcrossSectionsWritesIntoTheFirstTabsSection) {
  auto tabs = MakeTabs(4);
  TTabImageSectionList list;
  TTabImageSection* a = AddSectionWith(list, {tabs[0].get(), tabs[1].get()});  // A0 A1
  TTabImageSection* b = AddSectionWith(list, {tabs[2].get(), tabs[3].get()});  // B0 B1
  // tabA = A0 (index 0), tabB = B1 (index 1): both land in section a.
  list.Swap(tabs[0].get(), tabs[3].get());
  EXPECT_EQ(a->TabImages(0), tabs[3].get());
  EXPECT_EQ(a->TabImages(1), tabs[0].get());
  EXPECT_EQ(tabs[1]->Section(), nullptr);     // the tab that stood at index 1 of a was written over
  EXPECT_EQ(b->TabImages(1), tabs[3].get());  // section b is left as it stood
  EXPECT_EQ(tabs[3]->Section(), a);
  // Freeing that tab takes it out of both sections.
  tabs[3].reset();
  EXPECT_EQ(a->Count(), 1);
  EXPECT_EQ(b->Count(), 1);
  EXPECT_EQ(list.TabCount(), 2);
}

TEST(TabImageSectionList, SwapNeedsSectionsAndIndexes) {
  auto tabs = MakeTabs(3);
  TTabImageSectionList list;
  list.AddTab(tabs[0].get());
  list.Swap(tabs[0].get(), tabs[1].get());  // tabs[1] has no section
  list.Swap(nullptr, tabs[0].get());
  EXPECT_EQ(list.TabImages(0), tabs[0].get());
  // An index beyond the first tab's section changes nothing.
  TTabImageSection* other = AddSectionWith(list, {tabs[1].get(), tabs[2].get()});
  list.Swap(tabs[0].get(), tabs[2].get());
  EXPECT_EQ(list.TabImages(0), tabs[0].get());
  EXPECT_EQ(other->TabImages(1), tabs[2].get());
}

TEST(TabImageSectionList, RemovingASectionFreesItAndReleasesItsTabs) {
  auto tabs = MakeTabs(3);
  TTabImageSectionList list;
  TTabImageSection* a = AddSectionWith(list, {tabs[0].get()});
  AddSectionWith(list, {tabs[1].get(), tabs[2].get()});
  list.RemoveSection(a);
  EXPECT_EQ(tabs[0]->Section(), nullptr);
  EXPECT_EQ(list.Count(), 1);
  EXPECT_EQ(list.IndexOfTab(tabs[1].get()), 0);
  list.Clear();
  EXPECT_EQ(list.Count(), 0);
  EXPECT_EQ(list.TabCount(), 0);
  EXPECT_EQ(tabs[2]->Section(), nullptr);
}

TEST(TabImageSectionList, ADestroyedTabLeavesItsSection) {
  auto tabs = MakeTabs(3);
  TTabImageSectionList list;
  for (auto& tab : tabs) list.AddTab(tab.get());
  tabs[1].reset();
  EXPECT_EQ(list.TabCount(), 2);
  EXPECT_EQ(list.TabImages(1), tabs[2].get());
  EXPECT_EQ(list.FindTabImageFromId(u"{GB}"), nullptr);
}

TEST(TabImageSectionList, SetTabImagesNotifiesBothTabs) {
  auto tabs = MakeTabs(2);
  TTabImageSectionList list;
  list.AddTab(tabs[0].get());
  list.DefaultSection()->SetTabImages(0, tabs[1].get());
  EXPECT_EQ(tabs[0]->Section(), nullptr);
  EXPECT_EQ(tabs[1]->Section(), list.DefaultSection());
  EXPECT_EQ(list.TabImages(0), tabs[1].get());
}

}  // namespace
}  // namespace qx
