#include "support/LayoutStrip.h"

#include <algorithm>

namespace qx::support {

std::vector<int> SpreadTabs(int tabs, int sectionCount) {
  sectionCount = std::max(sectionCount, 1);
  tabs = std::max(tabs, 0);
  std::vector<int> sizes(static_cast<std::size_t>(sectionCount), tabs / sectionCount);
  for (int i = 0; i < tabs % sectionCount; ++i) ++sizes[static_cast<std::size_t>(i)];
  return sizes;
}

TLayoutStrip::TLayoutStrip(const std::vector<int>& sectionSizes, double viewWidth, double viewHeight)
    : viewWidth_(viewWidth), viewHeight_(viewHeight) {
  sections_.BeginUpdate();
  for (std::size_t s = 0; s < sectionSizes.size(); ++s) {
    TTabImageSection* section = sections_.AddSection(-1);
    for (int i = 0; i < sectionSizes[s]; ++i) {
      tabs_.push_back(std::make_unique<TTabImageItem>());
      tabs_.back()->SetOnGetActive([this](const TTabImageItem& sender) { return &sender == active_; });
      section->Add(tabs_.back().get());
      sectionOf_.push_back(static_cast<int>(s));
    }
  }
  sections_.EndUpdate();
  layout_.setSections(&sections_);
  layout_.setOnGetViewSize(
      [this](TTabGroupViewLayout&, TSizeD& size) { size = TSizeD(viewWidth_, viewHeight_); });
}

TLayoutStrip::~TLayoutStrip() { layout_.setSections(nullptr); }

void TLayoutStrip::setActive(int index) {
  active_ = index < 0 ? nullptr : tabs_[static_cast<std::size_t>(index)].get();
}

}  // namespace qx::support
