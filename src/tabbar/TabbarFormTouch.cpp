// Raw touch on the strip: taps, double taps, the flick that closes a tab, and
// the feedback of the host's hold-and-go gesture.

#include <cmath>

#include "base/Text.h"
#include "tabbar/FlickWipeFeedbackWindow.h"
#include "tabbar/HoldAndGoFeedbackForm.h"
#include "tabbar/TabbarForm.h"

namespace qx {

namespace {

constexpr float kFlickStartDistance = 30;
constexpr float kFlickCancelDistance = 5;
constexpr float kChromiumHoldOffset = 20;

std::uint32_t Now() { return Platform().GetTickCount(); }

bool Unset(TPointF p) { return p.X == -1 || p.Y == -1; }

}  // namespace

void TTabbarFrame::TouchEventDown(float x, float y) {
  FLastTouchMessage = Now();
  FFlickMouseDownPoint = {x, y};
  FFlickingTab = nullptr;
  HideFlickWipeWindow();
  if (TTabImage* tab = TabImageAtPoint(ScreenToScrollBox({x, y}))) {
    FTouchCapturedTab = tab;
    FActivatingTab = tab;
    SetActiveTabImage(tab, true);
  }
}

void TTabbarFrame::TouchEventMove(float /*x*/, float y) {
  FLastTouchMessage = Now();
  if (FFlickingTab) {
    if (IsFlickCancelled(y)) {
      FFlickingTab = nullptr;
      HideFlickWipeWindow();
    }
    return;
  }
  if (FdragTarget || !IsFlickStart(y) || FTabScrollBox->AniCalculations().Moving()) return;
  // The tab under the finger's start, not under the finger now.
  FFlickingTab = TabImageAtPoint(ScreenToScrollBox(FFlickMouseDownPoint));
  if (FFlickingTab) ShowFlickWipeWindow(FFlickingTab);
}

void TTabbarFrame::TouchEventUp(float x, float y) {
  FLastTouchMessage = Now();
  FFlickMouseDownPoint = {-1, -1};
  HideFlickWipeWindow();
  const TPointF point = ScreenToScrollBox({x, y});
  if (FdragTarget) {
    ProcessMouseUp(TMouseButton::mbLeft, point);
    FLastTouchEventDrop = Now();
  }
  if (FFlickingTab) {
    CloseTabFromImage(FFlickingTab);
  } else if (TTabImage* tab = TabImageAtPoint(point); tab && tab == FTouchCapturedTab) {
    if (tab == FTouchWaitDblClickTab && FTouchWaitDblClickTime + Platform().GetDoubleClickTime() > Now()) {
      ExecuteTabClickAction(tab, u"Tab.DblClick", point);
    } else {
      FTouchWaitDblClickTab = tab;
      FTouchCapturedTab = nullptr;
      FTouchWaitDblClickTime = Now();
      FFlickingTab = nullptr;
      return;
    }
  }
  FTouchWaitDblClickTab = nullptr;
  FTouchCapturedTab = nullptr;
  FTouchWaitDblClickTime = 0;
  FFlickingTab = nullptr;
}

void TTabbarFrame::TabTouchMouseDown(float x, float y) {
  TTabImage* tab = TabImageAtPoint({x, y});
  FActivatingTab = tab;
  SetActiveTabImage(tab, true);
}

bool TTabbarFrame::IsFlickStart(float y) const {
  if (Unset(FFlickMouseDownPoint)) return false;
  return y - FFlickMouseDownPoint.Y >= kFlickStartDistance;
}

bool TTabbarFrame::IsFlickCancelled(float y) const {
  if (Unset(FFlickMouseDownPoint)) return true;
  return y - FFlickMouseDownPoint.Y <= kFlickCancelDistance;
}

void TTabbarFrame::ShowFlickWipeWindow(TTabImage* tab) {
  if (!tab) return;
  IPlatform& os = Platform();
  if (!FFlickWipeWindow) {
    FFlickWipeWindow = new TFlickWipeFeedbackWindow(nullptr, FImageRes);
    FFlickWipeWindow->HandleNeed();
    FFlickWipeWindow->SetWidth(TFlickWipeFeedbackWindow::kWidth);
    FFlickWipeWindow->BorderStyle = TFmxFormBorderStyle::None;
    const HWnd window = FFlickWipeWindow->FormHandle();
    if (window && FClientWindowHandle && os.GetParent(window) != FClientWindowHandle)
      os.SetParent(window, FClientWindowHandle);
  }
  PositionFlickWipeWindow(tab);
  if (const HWnd window = FFlickWipeWindow->FormHandle()) os.ShowWindow(window, win::SW_SHOWNA);
  FFlickWipeWindow->SetVisible(true);
}

void TTabbarFrame::PositionFlickWipeWindow(TTabImage* tab) {
  const TPointF at = tab->TabImageRootScreenPosition();
  FFlickWipeWindow->SetBounds(static_cast<int>(std::lround(at.X - 1)),
                              static_cast<int>(std::lround(at.Y + 1)), FFlickWipeWindow->Width(),
                              FFlickWipeWindow->Height());
}

void TTabbarFrame::HideFlickWipeWindow() {
  if (FFlickWipeWindow && FFlickWipeWindow->Visible()) FFlickWipeWindow->Hide();
}

void TTabbarFrame::ShowHoldAndGoFeedback(TPoint screenPoint) {
  if (!FHoldAndGoFeedbackForm)
    FHoldAndGoFeedbackForm =
        new THoldAndGoFeedbackForm(this, FServiceCore.get(), FImageRes, FClientWindowHandle);
  FHoldAndGoFeedbackForm->StartHoldAndGo(screenPoint);
}

void TTabbarFrame::ProcessHoldAndGoStart(IQxIStringDictionaryWrap* parameters) {
  if (!parameters) return;
  auto integer = [&](std::u16string_view key) {
    return static_cast<std::int32_t>(StrToIntDef(parameters->Value(key), -1));
  };
  TPoint point{integer(u"mouse-x"), integer(u"mouse-y")};
  if (parameters->Value(u"origin") == u"chromium-engine")
    point.Y -= static_cast<std::int32_t>(kChromiumHoldOffset);
  ShowHoldAndGoFeedback(point);
}

}  // namespace qx
