// What the parent form asks of and forwards to the tab strip's frame.

#include "tabbar/TabbarForm.h"
#include "tabbar/TabbarParentForm.h"

namespace qx {

void TTabbarParentForm::CreateChildFrame() {
  auto* frame = new TTabbarFrame(this, FImageRes, this, FServiceCore.get(), FClientWindowHandle);
  frame->SetParent(TabbarChildFrame_);
  frame->SetAlign(TAlignLayout::Client);
  FTabbarChildFrame_ = frame;
}

void TTabbarParentForm::LayoutChildFrame() {
  if (FTabbarChildFrame_) FTabbarChildFrame_->layoutSubviews(false);
}

void TTabbarParentForm::SetFrameBottomBitmap(const TBitmap* bitmap) {
  if (FTabbarChildFrame_ && FTabbarChildFrame_->TabbarBottomImage())
    FTabbarChildFrame_->TabbarBottomImage()->SetBitmap(bitmap);
}

TRectF TTabbarParentForm::FrameGroupButtonRect() const {
  return FTabbarChildFrame_->GroupButtonAbsoluteRect();
}

TRectF TTabbarParentForm::FrameAddTabButtonRect() const {
  return FTabbarChildFrame_->AddTabButtonAbsoluteRect();
}

bool TTabbarParentForm::FrameHitTestTransparent(float x, float y) {
  return !FTabbarChildFrame_ || FTabbarChildFrame_->IsHitTestTranparent(x, y);
}

void TTabbarParentForm::FrameTouch(TTouchKind kind, float x, float y) {
  if (!FTabbarChildFrame_) return;
  switch (kind) {
    case TTouchKind::Down:
      FTabbarChildFrame_->TouchEventDown(x, y);
      break;
    case TTouchKind::Move:
      FTabbarChildFrame_->TouchEventMove(x, y);
      break;
    case TTouchKind::Up:
      FTabbarChildFrame_->TouchEventUp(x, y);
      break;
  }
}

void TTabbarParentForm::FrameCaptureLost() {
  if (FTabbarChildFrame_) FTabbarChildFrame_->MouseCaptureLost();
}

void TTabbarParentForm::UpdateChildFormsPosition(std::uint32_t message) {
  if (FTabbarChildFrame_) FTabbarChildFrame_->UpdateChildFormsPosition(message);
}

void TTabbarParentForm::HideTitleForm(float duration) {
  if (FTabbarChildFrame_) FTabbarChildFrame_->HideTitleForm(duration);
}

void TTabbarParentForm::SaveThumbnailCache() {
  if (FTabbarChildFrame_) FTabbarChildFrame_->SaveThumbnailCache();
}

void TTabbarParentForm::OnClientVisible() {
  if (FTabbarChildFrame_) FTabbarChildFrame_->OnClientVisible();
}

void TTabbarParentForm::OnClientInitialize() {
  if (FTabbarChildFrame_) FTabbarChildFrame_->OnClientInitialize();
}

}  // namespace qx
