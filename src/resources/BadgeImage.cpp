#include "resources/BadgeImage.h"

namespace qx {

TBadgeImage::TBadgeImage(TFmxObject* owner, TTabbarImageRes* imageRes) : TImage(owner), FImageRes(imageRes) {
  SetWrapMode(TImageWrapMode::Original);
  FBitmapAnimation = new TBitmapAnimation(this);
  FBitmapAnimation->PropertyName = "Bitmap";
  FBitmapAnimation->Duration = 0.2f;
  AddObject(FBitmapAnimation);
  if (TBitmap* pinned = FImageRes ? FImageRes->TabBadgeProtected() : nullptr)
    SetBounds(Position().X(), Position().Y(), static_cast<float>(pinned->Width()),
              static_cast<float>(pinned->Height()));
}

void TBadgeImage::SetBookmarked(bool value) {
  if (value == FBookmarked) return;
  FBookmarked = value;
  UpdateBadge();
}

void TBadgeImage::SetPinned(bool value) {
  if (value == FPinned) return;
  FPinned = value;
  UpdateBadge();
}

void TBadgeImage::UpdateBadge() {
  TBitmap* wanted = nullptr;
  if (FImageRes) {
    if (FBookmarked && FPinned) {
      wanted = FImageRes->TabBadgeBookmarkedProtected();
    } else if (FBookmarked) {
      wanted = FImageRes->TabBadgeBookmarked();
    } else if (FPinned) {
      wanted = FImageRes->TabBadgeProtected();
    }
  }
  if (FCurrentBadgeBitmap && wanted) {
    FBitmapAnimation->Stop();
    FBitmapAnimation->StartValue().Assign(FCurrentBadgeBitmap);
    FBitmapAnimation->StopValue().Assign(wanted);
    FBitmapAnimation->Start();
  } else {
    FBitmapAnimation->Stop();
    SetBitmap(wanted);  // null clears
  }
  FCurrentBadgeBitmap = wanted;
}

}  // namespace qx
