#pragma once

#include <memory>
#include <vector>

#include "tabview/TabGroupViewLayout.h"
#include "tabview/TabImage.h"
#include "tabview/TabImageSection.h"

namespace qx::testing_strip {

// Sections of tabs, a view size and a layout wired to them, as the frame does it.
class TStrip {
 public:
  TStrip(const std::vector<int>& sectionSizes, double viewWidth, double viewHeight = 59) : viewWidth_(viewWidth) {
    sections_.BeginUpdate();
    for (int size : sectionSizes) {
      TTabImageSection* section = sections_.AddSection(-1);
      for (int i = 0; i < size; ++i) {
        tabs_.push_back(std::make_unique<TTabImage>());
        TTabImage* tab = tabs_.back().get();
        tab->SetOnGetActive([this](const TTabImageItem& sender) { return &sender == active_; });
        section->Add(tab);
      }
    }
    sections_.EndUpdate();
    layout_.setSections(&sections_);
    layout_.setOnGetViewSize([this, viewHeight](TTabGroupViewLayout&, TSizeD& size) {
      size = TSizeD(viewWidth_, viewHeight);
    });
  }
  ~TStrip() {
    layout_.setSections(nullptr);
  }

  TTabGroupViewLayout& layout() { return layout_; }
  TTabImageSectionList& sections() { return sections_; }
  TTabImage* tab(std::size_t i) { return tabs_[i].get(); }
  std::size_t tabCount() const { return tabs_.size(); }
  void setActive(int index) { active_ = index < 0 ? nullptr : tabs_[static_cast<std::size_t>(index)].get(); }
  void setViewWidth(double width) { viewWidth_ = width; }

 private:
  double viewWidth_;
  TTabImageItem* active_ = nullptr;
  std::vector<std::unique_ptr<TTabImage>> tabs_;
  // Declared after the tabs: freed first, so tabs outlive their sections.
  TTabImageSectionList sections_;
  TTabGroupViewLayout layout_;
};

// The attributes of one pass, copied out, with the list unchained and released.
struct TFrameInfo {
  TRectD Frame;
  TRectD ClipFrame;
  double StraightPosition = 0;
  double ZPosition = 0;
  bool Hidden = false;
  bool Active = false;
  bool FirstInSection = false;
  bool LastInSection = false;
  bool InDraggedSection = false;
  bool OverlapsLeft = false;
  bool OverlapsRight = false;
};

inline std::vector<TFrameInfo> RunLayout(TTabGroupViewLayout& layout) {
  auto list = layout.layoutAttributes();
  std::vector<TFrameInfo> result;
  for (const auto& item : *list) {
    TFrameInfo info;
    info.Frame = item->GetFrame();
    info.ClipFrame = item->GetClipFrame();
    info.StraightPosition = item->GetStraightPosition();
    info.ZPosition = item->GetZPosition();
    info.Hidden = item->GetHidden();
    info.Active = item->GetActive();
    info.FirstInSection = item->GetFirstInSection();
    info.LastInSection = item->GetLastInSection();
    info.InDraggedSection = item->GetInDraggedSection();
    info.OverlapsLeft = item->GetOverlapsLeft();
    info.OverlapsRight = item->GetOverlapsRight();
    result.push_back(info);
  }
  if (list->Count() > 0) {
    ComPtr<ITabViewLayoutAttributes> first;
    list->GetItem(0, first);
    first->UnChain();
  }
  return result;
}

}  // namespace qx::testing_strip
