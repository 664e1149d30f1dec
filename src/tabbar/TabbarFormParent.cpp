// What the frame asks of its parent form. Without one the frame stands alone:
// its own width is the strip's width, unclamped.

#include <limits>

#include "tabbar/TabbarForm.h"
#include "tabbar/TabbarParentForm.h"

namespace qx {

float TTabbarFrame::ParentChildFrameWidth() const {
  return FParentForm ? FParentForm->ChildFrameWidth() : Width();
}

void TTabbarFrame::ParentSetChildFrameWidth(float width) {
  if (FParentForm)
    FParentForm->SetChildFrameWidth(width);
  else
    SetWidth(width);
}

float TTabbarFrame::ParentFormWidth() const {
  return FParentForm ? static_cast<float>(FParentForm->Width()) : std::numeric_limits<float>::max();
}

void TTabbarFrame::ParentSetTabbarChildFrameVisible() {
  if (FParentForm) FParentForm->SetTabbarChildFrameVisible(true);
}

void TTabbarFrame::ParentUpdateMainWindowActive(bool active) {
  if (FParentForm) FParentForm->UpdateMainWindowActive(active);
}

}  // namespace qx
