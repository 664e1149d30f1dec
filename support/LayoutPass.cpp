#include "support/LayoutPass.h"

namespace qx::support {

std::vector<TFrameInfo> RunLayout(TTabGroupViewLayout& layout) {
  auto list = layout.layoutAttributes();
  std::vector<TFrameInfo> result;
  result.reserve(static_cast<std::size_t>(list->Count()));
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
  ComPtr<ITabViewLayoutAttributes> first;
  if (list->GetItem(0, first) == kOk) first->UnChain();
  return result;
}

}  // namespace qx::support
