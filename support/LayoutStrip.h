#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "tabview/TabGroupViewLayout.h"
#include "tabview/TabImageItem.h"
#include "tabview/TabImageSection.h"

namespace qx::support {

// Spreads a tab count over sections as evenly as it goes; the first sections
// take the remainder. Fewer than one section counts as one.
std::vector<int> SpreadTabs(int tabs, int sectionCount);

// Sections of plain tab items, a view size and a layout wired to them, as the
// frame wires its own. The items are all the layout reads of a tab, so a strip of
// thousands costs no controls.
class TLayoutStrip {
 public:
  explicit TLayoutStrip(const std::vector<int>& sectionSizes, double viewWidth = 1280,
                        double viewHeight = 59);
  TLayoutStrip(const TLayoutStrip&) = delete;
  TLayoutStrip& operator=(const TLayoutStrip&) = delete;
  ~TLayoutStrip();

  TTabGroupViewLayout& layout() { return layout_; }
  TTabImageSectionList& sections() { return sections_; }
  TTabImageItem* tab(std::size_t index) { return tabs_[index].get(); }
  std::size_t tabCount() const { return tabs_.size(); }
  // The section a tab was built into.
  int sectionOf(std::size_t index) const { return sectionOf_[index]; }

  // A negative index selects no tab.
  void setActive(int index);
  void setViewWidth(double width) { viewWidth_ = width; }

 private:
  double viewWidth_;
  double viewHeight_;
  TTabImageItem* active_ = nullptr;
  std::vector<std::unique_ptr<TTabImageItem>> tabs_;
  std::vector<int> sectionOf_;
  // Declared after the tabs: freed first, so tabs outlive their sections.
  TTabImageSectionList sections_;
  TTabGroupViewLayout layout_;
};

}  // namespace qx::support
