// When the strip shows and hides the title popup, and what else floats over it.

#include "base/Text.h"
#include "host/QuillmarV3Interface.h"
#include "tabbar/FlickWipeFeedbackWindow.h"
#include "tabbar/HoldAndGoFeedbackForm.h"
#include "tabbar/TabbarForm.h"
#include "tabbar/TabbarParentForm.h"
#include "tabbar/TitleForm.h"

namespace qx {

namespace {

constexpr std::uint32_t kTitleOutlivesPointer = 1000;

std::uint32_t Now() { return Platform().GetTickCount(); }

}  // namespace

void TTabbarFrame::ShowTabTitle(TTabImage* tab, bool animated) {
  // The title would also yield to the landing plug-in's own popup, but the host's plug-in
  // catalogue offers no object or operation through which to ask whether it shows.
  if (FParentForm && FParentForm->ShowingTabgroupBar()) return;
  if (ICabinetIconBar* bar = GetCabinetIconBar(); bar && bar->MouseInCabinetBar()) return;
  if (!FTitleForm)
    FTitleForm =
        new TTitleForm(nullptr, FServiceCore.get(), FImageRes, FClientWindowHandle, GetCabinetIconBar());
  const bool parentVisible =
      !FParentForm || (FParentForm->FormHandle() && Platform().IsWindowVisible(FParentForm->FormHandle()));
  if (!parentVisible || !tab) return;
  ComPtr<IQxITab> host = HostTabOf(tab);
  if (!host || !FFaviconCache) return;
  ComPtr<ISharedFMXBitmap> favicon;
  FFaviconCache->GetFavicon(host.get(), tab->TabId(), favicon);
  if (!favicon) return;
  const TString title = FServiceCore->TabTitle(host.get());
  const TString uri = FServiceCore->TabUri(host.get());
  if (title.empty() || uri.empty() || SameText(uri, u"about:blank")) return;
  TPointF anchor = tab->LocalToAbsolute({tab->Width() / 2, tab->Height()});
  if (TCommonCustomForm* form = tab->Form()) anchor = form->ClientToScreen(anchor);
  FTitleForm->ShowTitle(favicon->GetBitmap(), title, FGroupIndex, anchor.X, anchor.Y, animated,
                        tab->TabGuid());
  FLastShowTitle = Now();
  FHideTitleTimer->SetEnabled(true);
}

void TTabbarFrame::HideTitleForm(float duration) {
  if (!FTitleForm || !FTitleForm->Visible()) return;
  if (duration <= 0)
    FTitleForm->Hide();
  else
    FTitleForm->HideAnimation(duration);
}

void TTabbarFrame::HideTitleTimerTimer() {
  FHideTitleTimer->SetEnabled(false);
  if (!FTitleForm) return;
  if (FTitleForm->Visible() && Now() - FLastShowTitle > kTitleOutlivesPointer &&
      !FScrollBoxAdapter->MouseInScrollBox())
    HideTitleForm(0.15f);
  if (!FTitleForm->IsHidingOrHidden()) FHideTitleTimer->SetEnabled(true);
}

void TTabbarFrame::ShowActiveTabTitleTimerTimer() {
  FShowActiveTabTitleTimer->SetEnabled(false);
  if (!FActiveTab) return;
  // The title shows only once the strip has come to rest.
  if (FActiveTabIndicatorFloatAnimation->Running() || FScrolling) {
    FShowActiveTabTitleTimer->SetEnabled(true);
    return;
  }
  FHideTitleTimer->SetEnabled(false);
  ShowTabTitle(FActiveTab, true);
}

void TTabbarFrame::UpdateChildFormsPosition(std::uint32_t message) {
  if (FFlickWipeWindow && FFlickWipeWindow->Visible() && FFlickingTab) PositionFlickWipeWindow(FFlickingTab);
  // At a widget update the title stays where it is.
  if (message == kWidgetUpdateMessage || !FTitleForm || !FTitleForm->Visible() || !FHoveredTab) return;
  TPointF anchor = FHoveredTab->LocalToAbsolute({FHoveredTab->Width() / 2, FHoveredTab->Height()});
  if (TCommonCustomForm* form = FHoveredTab->Form()) anchor = form->ClientToScreen(anchor);
  FTitleForm->UpdatePosition(anchor.X, anchor.Y);
}

void TTabbarFrame::DestroyFloatingForms() {
  // Popups parented to the host's window must not outlive the strip on screen.
  delete FTitleForm;
  FTitleForm = nullptr;
  delete FFlickWipeWindow;
  FFlickWipeWindow = nullptr;
  delete FHoldAndGoFeedbackForm;
  FHoldAndGoFeedbackForm = nullptr;
}

}  // namespace qx
