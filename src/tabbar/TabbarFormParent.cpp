// What the frame asks of its parent form. Without one the frame stands alone:
// its own width is the strip's width, unclamped.

#include <limits>

#include "tabbar/TabbarForm.h"
#if __has_include("tabbar/TabbarParentForm.h")
#include "tabbar/TabbarParentForm.h"
#define QX_HAS_PARENT_FORM 1
#endif

namespace qx {

#ifdef QX_HAS_PARENT_FORM

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

#else
// Until the parent form is in the tree, every frame stands alone.
float TTabbarFrame::ParentChildFrameWidth() const { return Width(); }
void TTabbarFrame::ParentSetChildFrameWidth(float width) { SetWidth(width); }
float TTabbarFrame::ParentFormWidth() const { return std::numeric_limits<float>::max(); }
void TTabbarFrame::ParentSetTabbarChildFrameVisible() {}
void TTabbarFrame::ParentUpdateMainWindowActive(bool) {}
#endif

}  // namespace qx
