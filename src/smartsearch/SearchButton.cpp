#include "smartsearch/SearchButton.h"

namespace qx {

TSearchButton::TSearchButton(TFmxObject* owner) : TImageButton(owner) {
  FIconImage = new TImage(this);
  FIconImage->SetParent(this);
  FIconImage->SetWrapMode(TImageWrapMode::Fit);
  FIconImage->SetHitTest(false);
  FIconImage->SetBounds(3, 7, 16, 16);
}

}  // namespace qx
