// The parent form's menus, tool tips and rebar border.

#include <cmath>

#include "host/ClientWidgets.h"
#include "host/HostKeys.h"
#include "resources/BitmapResourceMgr.h"
#include "resources/CustomCtrlToolTip2.h"
#include "resources/ImageButton.h"
#include "tabbar/TabbarParentForm.h"

namespace qx {

namespace {

constexpr char16_t kMenuOpenEvent[] = u"XmlWidget.MenuOpen";
constexpr char16_t kGroupMenuId[] = u"tabgroupbar-popup-menu";
constexpr std::uint32_t kMainToolId = 101;
constexpr std::uint32_t kAddTabToolId = 102;

TString Number(long value) { return FromUtf8(std::to_string(value)); }

TRect Rounded(const TRectF& r) {
  return {static_cast<std::int32_t>(std::lround(r.Left)), static_cast<std::int32_t>(std::lround(r.Top)),
          static_cast<std::int32_t>(std::lround(r.Right)), static_cast<std::int32_t>(std::lround(r.Bottom))};
}

}  // namespace

void TTabbarParentForm::RegisterTabGroupMenu() {
  FGroupbarMenuCreated = false;
  if (!FServiceCore) return;
  ComPtr<IQxIXmlElement> root;
  FGroupbarMenuCreated = FServiceCore->LoadXmlElement(kTabGroupPopupMenuPath, root) && root &&
                         RegisterPopupMenu(FServiceCore.get(), popup_menu_id::TabGroupbar, root.get());
}

void TTabbarParentForm::ShowGroupPopupMenu() {
  if (!FServiceCore) return;
  TPoint cursor;
  Platform().GetCursorPos(&cursor);
  FServiceCore->FireEventWithStrings(
      kMenuOpenEvent, {u"window-id", u"menu-id", u"screen-x", u"screen-y"},
      {u"MainWindow", kGroupMenuId, Number(cursor.X + 5), Number(cursor.Y + 5)});
}

void TTabbarParentForm::btnGroupMenu_0Click(TFmxObject* sender) {
  auto* button = dynamic_cast<TControl*>(sender);
  if (!FServiceCore || !button) return;
  const long offsetX = std::lround(button->LocalToAbsolute({0, 0}).X);
  FServiceCore->FireEventWithStrings(
      kMenuOpenEvent, {u"window-id", u"menu-id", u"menu-owner-id", u"offset-y", u"offset-x"},
      {u"MainWindow", kGroupMenuId, u"TabBarControl", u"-20", Number(offsetX)});
}

// The host draws a darker border under the strip when both bars stand above it.
void TTabbarParentForm::UpdateRebarBorder() {
  const bool bothShown = IsClientWidgetShown(FServiceCore.get(), rebar_widget::BookmarkBar) &&
                         IsClientWidgetShown(FServiceCore.get(), rebar_widget::CabinetBar);
  const TBitmap* border = bothShown ? FRebarBorderBitmap.get() : FRebarBorderBitmapLight.get();
  imgBackGroundBottom_->SetBitmap(border);
  imgTabGroupbarBackBottom_->SetBitmap(border);
  TabGroupbarExitButtonBackBottom_->SetBitmap(border);
  SetFrameBottomBitmap(border);
}

void TTabbarParentForm::SetWindowVisible(bool visible) {
  if (FWindowVisible == visible) return;
  FWindowVisible = visible;
  UpdateToolTip();
}

void TTabbarParentForm::UpdateToolTip() {
  if (!FTabbarChildFrame_) return;
  if (FWindowVisible != FShowingToolTip) {
    FShowingToolTip = FWindowVisible;
    if (FShowingToolTip)
      FToolTip = std::make_unique<TCustomControlToolTip>(FormHandle(), 0);
    else
      FToolTip.reset();
  }
  if (!FToolTip) return;
  // A text the host has no translation for stands as it is.
  auto translate = [this](std::u16string_view text) {
    TString translated = FServiceCore ? FServiceCore->TranslateText(text) : TString();
    return translated.empty() ? TString(text) : translated;
  };
  const HWnd window = FormHandle();
  if (ShowingTabgroupBar()) {
    FToolTip->UpdateTool(kMainToolId, translate(u"キャビネット画面を閉じる"), window,
                         Rounded(btnExitCabinet_->AbsoluteRect()));
    FToolTip->DeleteTool(kAddTabToolId);
  } else {
    FToolTip->UpdateTool(kMainToolId, translate(u"お気にタブを表示（右ダブルクリックでも入ります）"), window,
                         Rounded(FrameGroupButtonRect()));
    FToolTip->UpdateTool(kAddTabToolId, translate(u"新規タブを追加"), window,
                         Rounded(FrameAddTabButtonRect()));
  }
}

}  // namespace qx
