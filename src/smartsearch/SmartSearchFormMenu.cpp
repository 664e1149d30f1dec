// The menu of the engines without a button: opened by a press on the arrow or by hovering
// over it, closed when the mouse has stayed away from it for a while.

#include <cmath>

#include "smartsearch/SmartSearchForm.h"

namespace qx {
namespace {

constexpr std::uint32_t kClickIgnoreAfterShowMs = 300;
constexpr std::uint32_t kRefuseHideAfterShowMs = 500;
constexpr std::uint32_t kMouseAwayCloseMs = 600;
constexpr int kMenuMouseSlack = 10;

}  // namespace

HWnd TSmartSearchForm::LiveEngineMenuWindow() {
  if (FEngineMenuWindowHandle && !Platform().IsWindow(FEngineMenuWindowHandle))
    FEngineMenuWindowHandle = nullptr;
  return FEngineMenuWindowHandle;
}

bool TSmartSearchForm::MouseOverMoreButton() const {
  TPoint cursor;
  if (!MoreButton_->Visible() || !Platform().GetCursorPos(&cursor)) return false;
  const TPointF client = ScreenToClient(TPointF{static_cast<float>(cursor.X), static_cast<float>(cursor.Y)});
  const TRectF r = MoreButton_->AbsoluteRect();
  return client.X >= r.Left && client.X < r.Right && client.Y >= r.Top && client.Y < r.Bottom;
}

void TSmartSearchForm::MoreButtonMouseEnter() { MoreButtonMouseMove(); }

void TSmartSearchForm::MoreButtonMouseMove() {
  if (!FShowingMenu && !FStopAutoShowMenu) {
    if (!tmAutoSearchMenuShow_->Enabled()) tmAutoSearchMenuShow_->SetEnabled(true);
  } else {
    tmAutoSearchMenuShow_->SetEnabled(false);
  }
}

void TSmartSearchForm::MoreButtonMouseLeave() {
  tmAutoSearchMenuShow_->SetEnabled(false);
  if (!FShowingMenu) FStopAutoShowMenu = false;
}

void TSmartSearchForm::AutoSearchMenuShowTimer() {
  tmAutoSearchMenuShow_->SetEnabled(false);
  if (Visible() && MouseOverMoreButton()) ShowEngineMenu();
}

void TSmartSearchForm::MoreButtonMouseDown() {
  if (!FShowingMenu) {
    ShowEngineMenu();
    return;
  }
  // The press that follows an opening by hovering must not shut the menu again.
  if (Platform().GetTickCount() - FEngineMenuShowTime > kClickIgnoreAfterShowMs) {
    FStopAutoShowMenu = true;
    CloseEngineMenu();
  }
}

void TSmartSearchForm::ShowEngineMenu() {
  tmAutoSearchMenuShow_->SetEnabled(false);
  IPlatform& os = Platform();
  const TPointF topLeft = ClientToScreen(MoreButton_->LocalToAbsolute({0, 0}));
  TPoint owner{static_cast<int>(std::lround(topLeft.X)), static_cast<int>(std::lround(topLeft.Y))};
  os.ScreenToClient(FParentHandle, &owner);
  FShowingMenu = true;
  FEngineMenuShowTime = os.GetTickCount();
  tmCheckEngineMenuMouseLeave_->SetEnabled(true);
  FEngineMenuMouseLeaveTime = 0;
  // The host's menu is modal: the call returns when the menu has closed.
  FireEvent(u"XmlWidget.MenuOpen",
            {{u"window-id", u"MainWindow"},
             {u"menu-id", TString(kSmartSearchEngineMenuId)},
             {u"popup-pos", u"top-left"},
             {u"owner-left", IntToStr(owner.X)},
             {u"owner-top", IntToStr(owner.Y)},
             {u"owner-width", IntToStr(static_cast<int>(std::lround(MoreButton_->Width())))},
             {u"owner-height", IntToStr(static_cast<int>(std::lround(MoreButton_->Height())))}});
  tmCheckEngineMenuMouseLeave_->SetEnabled(false);
  FShowingMenu = false;
  FEngineMenuShowTime = 0;
}

void TSmartSearchForm::CloseEngineMenu() {
  FireEvent(u"XmlWidget.MenuHide", {{u"id", TString(kSmartSearchEngineMenuId)}});
}

void TSmartSearchForm::CheckEngineMenuMouseLeave() {
  const HWnd menu = LiveEngineMenuWindow();
  IPlatform& os = Platform();
  if (!Visible() || !menu || !os.IsWindowVisible(menu)) return;
  TPoint cursor;
  os.GetCursorPos(&cursor);
  TRect r{};
  const bool inMenu = os.GetWindowRect(menu, &r) && cursor.X >= r.Left - kMenuMouseSlack &&
                      cursor.X < r.Right + kMenuMouseSlack && cursor.Y >= r.Top - kMenuMouseSlack &&
                      cursor.Y < r.Bottom + kMenuMouseSlack;
  if (inMenu || MouseOverMoreButton()) {
    FEngineMenuMouseLeaveTime = 0;
    return;
  }
  const std::uint32_t now = os.GetTickCount();
  if (FEngineMenuMouseLeaveTime == 0)
    FEngineMenuMouseLeaveTime = now;
  else if (now - FEngineMenuMouseLeaveTime > kMouseAwayCloseMs)
    CloseEngineMenu();
}

HResult TSmartSearchForm::XmlWidgetPopupDoModal(const TString&, IQxIEvent* event) {
  FEngineMenuWindowHandle = nullptr;
  ComPtr<IQxIStringDictionaryWrap> params = FServiceCore->EventParameters(event);
  if (!params || params->Value(u"timing") != u"before" || params->Value(u"id") != kSmartSearchEngineMenuId)
    return kOk;
  const auto value = static_cast<std::uintptr_t>(StrToIntDef(params->Value(u"menu-window-handle"), 0));
  const auto window = reinterpret_cast<HWnd>(value);
  if (window && Platform().IsWindow(window)) FEngineMenuWindowHandle = window;
  return kOk;
}

// Asked before a menu hides: a press on the arrow right after the menu opened keeps it.
HResult TSmartSearchForm::XmlWidgetDoMenuHide(const TString&, IQxIEvent* event) {
  if (!FShowingMenu || !MouseOverMoreButton()) return kOk;
  if (Platform().GetTickCount() - FEngineMenuShowTime <= kRefuseHideAfterShowMs) {
    if (ComPtr<IQxIStringDictionaryWrap> params = FServiceCore->EventParameters(event))
      params->SetValue(u"result", u"false");
  } else {
    FStopAutoShowMenu = true;
  }
  return kOk;
}

HResult TSmartSearchForm::XmlWidgetMenuHide(const TString&, IQxIEvent* event) {
  ComPtr<IQxIStringDictionaryWrap> params = FServiceCore->EventParameters(event);
  if (!params) return kOk;
  const TString id = params->Value(u"id");
  if (id.empty() || id == kSmartSearchEngineMenuId) return kOk;
  if (FShowingMenu) {
    TPoint cursor;
    Platform().GetCursorPos(&cursor);
    HitTestForm(cursor, false);
  } else {
    Hide();
  }
  return kOk;
}

}  // namespace qx
