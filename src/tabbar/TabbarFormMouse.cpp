// The mouse over the strip: press, hover, release, click settings and the tab menu.

#include <cmath>

#include "base/Text.h"
#include "host/QuillmarV3Interface.h"
#include "tabbar/TabbarForm.h"
#include "tabbar/TitleForm.h"
#include "tabview/ScrollBoxExInput.h"
#include "toolkit/Form.h"

namespace qx {

namespace {

// A mouse message made from touch this soon after a touch message hovers nothing.
constexpr std::uint32_t kTouchHoverQuiet = 200;
// A right release this soon after a touch drop runs no click action.
constexpr std::uint32_t kTouchDropQuiet = 500;

std::uint32_t Now() { return Platform().GetTickCount(); }

bool Unset(TPointF p) { return p.X < 0 || p.Y < 0; }

}  // namespace

void TTabbarFrame::BindInputHandlers() {
  TalvokScrollBoxUnit::TTalvokScrollBox& box = *FTabScrollBox;
  box.OnMouseDown = [this](TFmxObject*, TMouseButton button, TShiftState, float x, float y) {
    TabScrollBoxMouseDown(button, x, y);
  };
  box.OnMouseMove = [this](TFmxObject*, TShiftState, float x, float y) { TabScrollBoxMouseMove(x, y); };
  // The click must see the close button's capture before the release clears it.
  box.OnMouseUp = [this](TFmxObject*, TMouseButton button, TShiftState, float x, float y) {
    if (button == TMouseButton::mbLeft) TabScrollBoxClick();
    ProcessMouseUp(button, {x, y});
  };
  box.OnMouseEnter = [this](TFmxObject*) { TabScrollBoxMouseEnter(); };
  box.OnMouseLeave = [this](TFmxObject*) { TabScrollBoxMouseLeave(); };
  // The toolkit looks for a gesture handler; the pan itself is the scroll box's.
  box.OnGesture = [](TFmxObject*, const TGestureEventInfo&, bool&) {};
  box.OnBeforeMouseUp = [this](TFmxObject*, TMouseButton, TShiftState, float, float) {
    TabScrollBoxBeforeMouseUp();
  };
  box.OnAfterMouseUp = [this](TFmxObject*, TMouseButton button, TShiftState, float x, float y) {
    TabScrollBoxAfterMouseUp(button, x, y);
  };
  box.OnTouchMouseDown = [this](TFmxObject*, float x, float y) { TabTouchMouseDown(x, y); };
  FAutoScrollTimer->SetOnTimer([this](TFmxObject*) { AutoScrollTimerTimer(); });
  FUpdateCloseBtnTimer->SetOnTimer([this](TFmxObject*) { UpdateCloseBtnTimerTimer(); });
  FHideTitleTimer->SetOnTimer([this](TFmxObject*) { HideTitleTimerTimer(); });
  FShowActiveTabTitleTimer->SetOnTimer([this](TFmxObject*) { ShowActiveTabTitleTimerTimer(); });
}

void TTabbarFrame::RouteTabInput(TTabImage* tab) {
  // The strip decides from its own hit test which tab and which close button a
  // press meant, so presses over a tab reach the scroll box itself.
  tab->Base()->SetHitTest(false);
  tab->CloseButton()->SetHitTest(false);
}

bool TTabbarFrame::IsMouseMessageFromTouch() { return IsTouchInput(); }

bool TTabbarFrame::ClientWindowMaximized() const {
  return FClientWindowHandle &&
         (static_cast<std::uint32_t>(Platform().GetWindowLongW(FClientWindowHandle, win::GWL_STYLE)) &
          win::WS_MAXIMIZE) != 0;
}

TPointF TTabbarFrame::ScreenToScrollBox(TPointF screen) const {
  TPointF client = screen;
  if (TCommonCustomForm* form = FTabScrollBox->Form()) client = form->ScreenToClient(screen);
  return FTabScrollBox->AbsoluteToLocal(client);
}

TPointF TTabbarFrame::ScrollBoxToScreen(TPointF point) const {
  const TPointF client = FTabScrollBox->LocalToAbsolute(point);
  if (TCommonCustomForm* form = FTabScrollBox->Form()) return form->ClientToScreen(client);
  return client;
}

TPointF TTabbarFrame::MouseInScrollBoxCoordinates() const {
  TPoint cursor;
  Platform().GetCursorPos(&cursor);
  return ScreenToScrollBox({static_cast<float>(cursor.X), static_cast<float>(cursor.Y)});
}

TTabImage* TTabbarFrame::TabImageAtPoint(TPointF point) {
  TFmxObject* content = FTabScrollBox->Content();
  if (!content) return nullptr;
  TPointF absolute = FTabScrollBox->LocalToAbsolute(point);
  // At the top edge of a maximized window the pointer counts as on the tab.
  const TPointF inContent = static_cast<TControl*>(content)->AbsoluteToLocal(absolute);
  if (ClientWindowMaximized() && inContent.Y < 5.0f)
    absolute = static_cast<TControl*>(content)->LocalToAbsolute({inContent.X, 5.0f});
  const TPointF origin = static_cast<TControl*>(content)->LocalToAbsolute({0, 0});
  for (int i = content->ChildrenCount() - 1; i >= 0; --i)
    if (auto* tab = dynamic_cast<TTabImage*>(content->Children(i));
        tab && tab->PtInTabImage(absolute, origin))
      return tab;
  return nullptr;
}

// ---- press

void TTabbarFrame::TabScrollBoxMouseDown(TMouseButton button, float x, float y) {
  FLastMouseDownButton = button;
  ProcessMouseDown(button, {x, y});
}

void TTabbarFrame::ProcessMouseDown(TMouseButton button, TPointF point) {
  FExecutingMouseEvent = false;
  FMouseDownTab = nullptr;
  if (button == TMouseButton::mbMiddle) {
    FireTabMouseEvent(u"Tab.MMouseDown", point);
    return;
  }
  if (button != TMouseButton::mbLeft) return;
  FdragTarget = nullptr;
  FWaitUpdateTabbar = false;
  FMouseDirectionOrigin = {-1, -1};
  FAutoScrollTimer->SetEnabled(false);
  // The flick measures in screen pixels, as raw touch comes; the press a finger's touch
  // brings along must not turn its start into scroll-box coordinates.
  FFlickMouseDownPoint = ScrollBoxToScreen(point);
  FMouseDownPoint = point;
  FActivatingTab = nullptr;

  TTabImage* tab = TabImageAtPoint(point);
  if (!tab) return;
  const TPointF absolute = FTabScrollBox->LocalToAbsolute(point);
  if (tab->PtInCloseButton(absolute)) {
    tab->CloseButton()->MouseDown(TMouseButton::mbLeft, 0, 0, 0);
    FScrollBoxCloseButtonCaptureImage = tab;
    return;
  }
  tab->StartCloseButtonAnimation(false, true);
  FActivatingTab = tab;
  FMouseDownTab = tab;
  // A press on the active tab hides its title at once.
  if (tab == FActiveTab) HideTitleForm(0.2f);
  SetActiveTabImage(tab, true);
}

// ---- move

void TTabbarFrame::TabScrollBoxMouseMove(float x, float y) {
  if (x < 0 && y < 0) return;
  const TPointF point{x, y};
  const bool fromTouch = IsMouseMessageFromTouch();
  if (x != FLastMouseMoveX || y != FLastMouseMoveY) {
    const TPointF absolute = FTabScrollBox->LocalToAbsolute(point);
    const bool dragging = FdragTarget && !Unset(FMouseDownPoint);
    if (dragging) {
      if (x != FLastMouseMoveX) {
        bool left = false, right = false;
        GetAutoScrollDirection(absolute, left, right);
        if (left || right) {
          FAutoScrollTimer->Tag = right ? 1 : 0;
          FAutoScrollTimer->SetEnabled(true);
        } else {
          FAutoScrollTimer->SetEnabled(false);
        }
        DragTabTo(absolute.X < FMouseDirectionOrigin.X, absolute, false);
        SyncViewportToProgress();
      }
    } else {
      if (FActivatingTab && IsDragThresholdPassed(absolute)) StartTabDrag();
      if (!FdragTarget) {
        if (!fromTouch && (FLastTouchMessage == 0 || Now() - FLastTouchMessage > kTouchHoverQuiet)) {
          if (!FTabScrollBox->AniCalculations().Down()) SetHoveredTab(TabImageAtPoint(point));
          if (!FTabbarWidthAnimation->Running()) {
            GetLayout()->mouseMoved(point);
            layoutSubviews(true, 0.35f);
            SyncViewportToProgress();
          }
        } else {
          SetHoveredTab(nullptr);
        }
      }
    }
    FLastMouseMoveX = x;
    FLastMouseMoveY = y;
  }
  if (fromTouch) return;
  TTabImage* tab = TabImageAtPoint(point);
  if (!tab) return;
  TImageButton* button = tab->CloseButton();
  if (tab->PtInCloseButton(FTabScrollBox->LocalToAbsolute(point))) {
    if (!button->IsHovered()) button->DoMouseEnter();
    if (!tab->CloseButtonVisible()) tab->StartCloseButtonAnimation(true, false);
  } else if (button->IsHovered()) {
    button->DoMouseLeave();
  }
}

bool TTabbarFrame::IsDragThresholdPassed(TPointF point) const {
  if (Unset(FMouseDownPoint)) return false;
  const float threshold = IsMouseMessageFromTouch() ? 10.0f : 3.0f;
  const TPointF pressed = FTabScrollBox->LocalToAbsolute(FMouseDownPoint);
  return std::fabs(point.X - pressed.X) > threshold;
}

// ---- enter and leave

void TTabbarFrame::TabScrollBoxMouseEnter() {
  GetLayout()->mouseEntered(TPointD(MouseInScrollBoxCoordinates().X, MouseInScrollBoxCoordinates().Y));
  layoutSubviews(true);
  SyncViewportToProgress();
}

void TTabbarFrame::TabScrollBoxMouseLeave() {
  SetHoveredTab(nullptr);
  HideTitleForm(0.15f);
  if (FShowingTabMenu)
    FDelayMouseLeaveFlag = true;
  else
    FActiveCenterTimer->SetEnabled(true);
}

// ---- release

void TTabbarFrame::ProcessMouseUp(TMouseButton /*button*/, TPointF point) {
  FScrollBoxCloseButtonCaptureImage = nullptr;
  if (FActivatingTab && FActivatingTab == FActiveTab) {
    FActivatingTab = nullptr;
    HideTitleForm(0.2f);
  }
  TTabImage* tab = TabImageAtPoint(point);
  // Taps are counted by the raw touch route; the mouse the system makes of them is no second click.
  if (tab != FMouseDownTab || IsMouseMessageFromTouch()) tab = nullptr;
  const std::uint32_t now = Now();
  if (tab && tab == FClickedTab && now - FLastTabClickedTime <= Platform().GetDoubleClickTime()) {
    FireTabMouseEvent(u"Tab.DblClick", point);
    tab = nullptr;
  }
  FClickedTab = tab;
  FLastTabClickedTime = tab ? now : 0;

  FActivatingTab = nullptr;
  FMouseDownPoint = FFlickMouseDownPoint = FDragOrigin = FMouseDirectionOrigin = {-1, -1};
  for (std::int32_t i = 0; i < TabImageCount(); ++i)
    if (TTabImage* each = GetTabImages(i); each && each->CloseButton()->IsPressed())
      each->CloseButton()->MouseUp(TMouseButton::mbLeft, 0, -1, -1);

  TTabImage* dropped = FdragTarget;
  try {
    if (dropped) CommitDrop(dropped);
  } catch (...) {
    FWaitUpdateTabbar = false;
    FdragTarget = nullptr;
    FMouseDownTab = nullptr;
    FAutoScrollTimer->SetEnabled(false);
    throw;
  }
  FWaitUpdateTabbar = false;
  FdragTarget = nullptr;
  FMouseDownTab = nullptr;
  FAutoScrollTimer->SetEnabled(false);
}

void TTabbarFrame::MouseCaptureLost() {
  // Nothing will be released over the strip any more; what was pressed ends here.
  if (!FdragTarget && !FActivatingTab && !FScrollBoxCloseButtonCaptureImage && Unset(FMouseDownPoint)) return;
  ProcessMouseUp(TMouseButton::mbLeft, MouseInScrollBoxCoordinates());
  FTabScrollBox->AniCalculations().MouseLeave();
}

void TTabbarFrame::TabScrollBoxBeforeMouseUp() {
  const auto& ani = FTabScrollBox->AniCalculations();
  FExecutingMouseEvent = (FLastTouchEventDrop == 0 || Now() - FLastTouchEventDrop > kTouchDropQuiet) &&
                         !(ani.Down() && ani.Moving());
}

void TTabbarFrame::TabScrollBoxAfterMouseUp(TMouseButton button, float x, float y) {
  if (FExecutingMouseEvent && button == TMouseButton::mbRight) FireTabMouseEvent(u"Tab.RMouseDown", {x, y});
  FExecutingMouseEvent = false;
}

// ---- close button

void TTabbarFrame::TabScrollBoxClick() {
  if (!FScrollBoxCloseButtonCaptureImage) return;
  CloseButtonClicked(MouseInScrollBoxCoordinates());
}

void TTabbarFrame::CloseButtonClicked(TPointF point) {
  TTabImage* tab = FScrollBoxCloseButtonCaptureImage;
  if (!tab->PtInCloseButton(FTabScrollBox->LocalToAbsolute(point))) {
    tab->CloseButton()->MouseUp(TMouseButton::mbLeft, 0, -1, -1);
    return;
  }
  if (!tab->CloseButtonVisible() && !IsMouseMessageFromTouch()) return;
  if (!HostTabOf(tab)) return;
  const std::u16string guid = tab->TabGuid();
  if (guid.empty() || !FServiceCore) return;
  FServiceCore->FireEventWithStrings(u"TabBar.CloseTab", {u"tab-id"}, {guid});
  FUpdateCloseBtnTimer->SetEnabled(true);
}

void TTabbarFrame::UpdateCloseBtnTimerTimer() {
  FUpdateCloseBtnTimer->SetEnabled(false);
  // The tab that slid under the pointer shows its close button at once.
  const TPointF point = MouseInScrollBoxCoordinates();
  TabScrollBoxMouseMove(point.X, point.Y);
}

// ---- click settings

ComPtr<IQxITab> TTabbarFrame::HostTabOf(TTabImage* tab) {
  ComPtr<IQxITab> host;
  if (tab && FServiceCore && tab->TabId() != 0) FServiceCore->TabById(tab->TabId(), host);
  return host;
}

void TTabbarFrame::FireTabMouseEvent(std::u16string_view eventId, TPointF point) {
  if (TTabImage* tab = TabImageAtPoint(point)) ExecuteTabClickAction(tab, eventId, point);
}

void TTabbarFrame::ExecuteTabClickAction(TTabImage* tab, std::u16string_view eventId, TPointF point) {
  if (!FServiceCore) return;
  std::u16string_view key;
  if (eventId == u"Tab.DblClick")
    key = u"client.TabDockSetting-LeftDblClick";
  else if (eventId == u"Tab.RMouseDown")
    key = u"client.TabDockSetting-RightClick";
  else if (eventId == u"Tab.MMouseDown")
    key = u"client.TabDockSetting-WheelClick";
  else
    return;
  TString action;
  FServiceCore->GetPropertyText(key, u"", action);
  if (action == u"popup")
    ShowTabMenu(tab, point);
  else if (action == u"close")
    CloseTabFromImage(tab);
  else if (action == u"reload")
    ExecuteBrowserAction(tab, u"refresh");
  else if (action == u"back")
    ExecuteBrowserAction(tab, u"goback");
  // "navilock" needs a dock operation that the host interfaces here do not carry.
}

void TTabbarFrame::CloseTabFromImage(TTabImage* tab) {
  const std::u16string guid = tab ? tab->TabGuid() : std::u16string();
  if (guid.empty() || !FServiceCore) return;
  ComPtr<IQxIEventService> events;
  FServiceCore->EventService(events);
  ComPtr<IQxIStringDictionary> raw;
  FServiceCore->CreateStringDictionary(raw);
  if (!events || !raw) return;
  raw->SetValue(u"tab-id", guid.c_str());
  events->Post(u"TabBar.CloseTab", u"", raw.get(), 0, 0, 0);
}

void TTabbarFrame::ExecuteBrowserAction(TTabImage* tab, std::u16string_view action) {
  ComPtr<IQxITab> host = HostTabOf(tab);
  if (!host) return;
  ComPtr<IQxIBrowser> browser;
  FServiceCore->BrowserOfTab(host.get(), browser);
  if (!browser) return;
  const TString name(action);
  browser->Execute(name.c_str(), nullptr, 0);
}

void TTabbarFrame::ShowTabMenu(TTabImage* tab, TPointF point) {
  ComPtr<IQxITabGroup> group = FHostGroup;
  TPointF screen = FTabScrollBox->LocalToAbsolute(point);
  if (TCommonCustomForm* form = FTabScrollBox->Form()) screen = form->ClientToScreen(screen);
  ComPtr<IQxITab> host = HostTabOf(tab);
  const std::u16string id = tab ? tab->TabGuid() : std::u16string();
  if (!group || !tab || id.empty() || !FServiceCore) return;

  ComPtr<IQxITabManager> manager;
  FServiceCore->TabManager(manager);
  if (manager) manager->SetMenuTabGroup(group.get());
  group->SetMenuTab(host.get());
  FDelayMouseLeaveFlag = false;
  FShowingTabMenu = true;
  try {
    FServiceCore->FireEventWithStrings(
        u"XmlWidget.MenuOpen",
        {u"window-id", u"menu-id", u"screen-x", u"screen-y", u"menu-parent-id", u"id", u"tab-id"},
        {u"MainWindow", u"tab-menu", IntToStr(std::lround(screen.X)), IntToStr(std::lround(screen.Y)), id, id,
         id});
  } catch (...) {
    FShowingTabMenu = false;
    throw;
  }
  FShowingTabMenu = false;
  if (FDelayMouseLeaveFlag) {
    FDelayMouseLeaveFlag = false;
    TPoint cursor;
    Platform().GetCursorPos(&cursor);
    if (!TabScrollBoxScreenRect().Contains({static_cast<float>(cursor.X), static_cast<float>(cursor.Y)}))
      FActiveCenterTimer->SetEnabled(true);
  }
  // The menu's own commands read the tab first; then no tab is in question any more.
  FDelayTaskFast->AddAnonTask(u"TTabbarFrame.ShowTabMenu", [group]() { group->SetMenuTab(nullptr); });
}

}  // namespace qx
