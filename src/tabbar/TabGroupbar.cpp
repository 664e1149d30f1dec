// The tab group bar of the parent form: six group tabs with name, colour and menu.

#include <cmath>

#include "base/ComPtr.h"
#include "host/QuillmarV3Interface.h"
#include "resources/BitmapResourceMgr.h"
#include "resources/ImageButton.h"
#include "resources/SystemFont.h"
#include "resources/TabbarImageRes.h"
#include "tabbar/TabGroupbarLayout.h"
#include "tabbar/TabbarParentForm.h"
#include "tabbar/TabbarParentFormDesign.h"

namespace qx {

namespace {

constexpr char16_t kTitleKey[] = u"title";
// Measures a label's height when it has no text yet.
constexpr char16_t kMeasureText[] = u"\u3042";

TBitmap* GroupColorBitmap(TTabbarImageRes& res, int index, bool active, bool isPrivate) {
  using Getter = TBitmap* (TTabbarImageRes::*)();
  static constexpr Getter kNormal[] = {&TTabbarImageRes::TabGroup1, &TTabbarImageRes::TabGroup2,
                                       &TTabbarImageRes::TabGroup3, &TTabbarImageRes::TabGroup4,
                                       &TTabbarImageRes::TabGroup5, &TTabbarImageRes::TabGroup6};
  static constexpr Getter kActive[] = {&TTabbarImageRes::TabGroup1Active, &TTabbarImageRes::TabGroup2Active,
                                       &TTabbarImageRes::TabGroup3Active, &TTabbarImageRes::TabGroup4Active,
                                       &TTabbarImageRes::TabGroup5Active, &TTabbarImageRes::TabGroup6Active};
  static constexpr Getter kPrivate[] = {
      &TTabbarImageRes::TabGroupPrivate1, &TTabbarImageRes::TabGroupPrivate2,
      &TTabbarImageRes::TabGroupPrivate3, &TTabbarImageRes::TabGroupPrivate4,
      &TTabbarImageRes::TabGroupPrivate5, &TTabbarImageRes::TabGroupPrivate6};
  static constexpr Getter kPrivateActive[] = {
      &TTabbarImageRes::TabGroupPrivate1Active, &TTabbarImageRes::TabGroupPrivate2Active,
      &TTabbarImageRes::TabGroupPrivate3Active, &TTabbarImageRes::TabGroupPrivate4Active,
      &TTabbarImageRes::TabGroupPrivate5Active, &TTabbarImageRes::TabGroupPrivate6Active};
  const Getter* set = isPrivate ? (active ? kPrivateActive : kPrivate) : (active ? kActive : kNormal);
  return (res.*set[index])();
}

}  // namespace

// ---- the host's groups

bool TTabbarParentForm::GroupAt(std::int32_t index, ComPtr<IQxITabGroup>& group) const {
  group = nullptr;
  if (!FServiceCore || index < 0) return false;
  ComPtr<IQxITabManager> manager;
  FServiceCore->TabManager(manager);
  return manager && Succeeded(manager->GetTabGroup(index, group.put())) && group;
}

bool TTabbarParentForm::IsPrivateGroup(std::int32_t index) const {
  ComPtr<IQxITabGroup> group;
  return GroupAt(index, group) && FServiceCore->IsPrivateTabGroup(group.get());
}

std::int32_t TTabbarParentForm::CurrentGroupIndex() const {
  if (!FServiceCore) return -1;
  ComPtr<IQxITabGroup> active;
  FServiceCore->ActiveTabGroup(active);
  if (!active) return -1;
  ComPtr<IQxITabManager> manager;
  FServiceCore->TabManager(manager);
  std::int32_t count = 0;
  if (!manager || Failed(manager->GetTabGroupCount(&count))) return -1;
  for (std::int32_t i = 0; i < count; ++i) {
    ComPtr<IQxITabGroup> group;
    if (Succeeded(manager->GetTabGroup(i, group.put())) && SameInterface(group.get(), active.get())) return i;
  }
  return -1;
}

// ---- showing

void TTabbarParentForm::ShowTabGroupbar() {
  if (!FInitGroupbar) InitTabGroupbar();
  if (!FTabGroupbarSetupDone) SetupTabGroupbar();
  TabGroupbarBackLayout_->SetVisible(true);
  UpdateToolTip();
}

void TTabbarParentForm::HideTabGroupbar() {
  TabGroupbarBackLayout_->SetVisible(false);
  UpdateToolTip();
}

bool TTabbarParentForm::ShowingTabgroupBar() const { return TabGroupbarBackLayout_->Visible(); }

void TTabbarParentForm::InitTabGroupbar() {
  FInitGroupbar = true;
  InitGroupButtons();
  RegisterTabGroupMenu();
}

void TTabbarParentForm::ApplySystemFontToGroupLabels() {
  TTextSettings& first = FGroups[0].NameShadow->TextSettings;
  ApplySystemFont(first.Font, 0);
  for (TGroupParts& g : FGroups)
    for (TLabel* label : {g.NameShadow, g.Name}) {
      label->TextSettings.Font.Family = first.Font.Family;
      label->TextSettings.Font.Size = first.Font.Size;
      label->TextSettings.Font.Style |= static_cast<TFontStyles>(TFontStyle::Bold);
    }
}

void TTabbarParentForm::SetupTabGroupbar() {
  FTabGroupbarSetupDone = true;
  // Before the labels are measured: their height follows the font.
  ApplySystemFontToGroupLabels();
  for (int i = 0; i < kTabGroupCount; ++i) {
    TGroupParts& g = FGroups[static_cast<std::size_t>(i)];
    TString title;
    ComPtr<IQxITabGroup> group;
    if (GroupAt(i, group)) FServiceCore->GetTabGroupProperty(group.get(), kTitleKey, title);
    g.Name->SetText(title);
    g.NameShadow->SetText(title);
    TTextPainter measure = *g.NameShadow;
    if (measure.Text.empty()) measure.Text.assign(1, kMeasureText[0]);
    g.NameShadow->SetHeight(measure.TextSize(0).cy + 4);
    if (FImageRes) {
      g.MenuButton->SetNormalBitmap(FImageRes->TabGroupActiveMune());
      g.MenuButton->SetHoverBitmap(FImageRes->TabGroupActiveMune());
      g.MenuButton->SetPushedBitmap(FImageRes->TabGroupActiveMunePressed());
      if (g.Separator) g.Separator->SetBitmap(FImageRes->TabgroupbarSeparator());
      auto* dragOver = g.DragOver;
      for (TControl* part : dragOver->Controls()) {
        auto* image = dynamic_cast<TImage*>(part);
        if (!image) continue;
        if (part->Align() == TAlignLayout::Left)
          image->SetBitmap(FImageRes->TabGroupDragHoveredLeft());
        else if (part->Align() == TAlignLayout::Right)
          image->SetBitmap(FImageRes->TabGroupDragHoveredRight());
        else
          image->SetBitmap(FImageRes->TabGroupDragHoveredFill());
      }
    }
    g.MenuButton->Tag = i;
    g.MenuButton->SetEnableRightClick(true);
    g.Layout->OnContextMenu = [this](TFmxObject* sender) { GroupLayoutContextMenu(sender); };
  }
  UpdateActiveGroup();
}

// ---- layout and state

void TTabbarParentForm::UpdateGroupbarLayout() {
  const TGroupbarMetrics m = CalcGroupbarLayout(TabGroupbarExitButtonBackLayout_->Width(),
                                                static_cast<float>(ClientWidth()), CurrentGroupIndex());
  for (int i = 0; i < kTabGroupCount; ++i) {
    TGroupParts& g = FGroups[static_cast<std::size_t>(i)];
    const TGroupbarSlot& slot = m.Slots[static_cast<std::size_t>(i)];
    if (g.Separator) g.Separator->Position().SetX(slot.SeparatorX);
    g.NameShadow->SetVisible(slot.NameVisible);
    g.Layout->SetBounds(slot.X, g.Layout->Position().Y(), slot.Width, g.Layout->Height());
    TGroupColorImage* colour = g.Color;
    colour->Position().SetX(std::trunc((slot.Width - colour->Width()) / 2));
    g.MenuButton->Position().SetX(colour->Position().X() + colour->Width());
    g.DragOver->SetBounds(0, 0, g.Layout->Width(), g.Layout->Height());
    g.DragOver->SetVisible(false);
  }
  GroupButtonLayout_->SetWidth(m.GroupButtonLayoutWidth);
}

void TTabbarParentForm::UpdateActiveGroup() {
  if (EditingGroupTitle()) HideEditAndUpdateTitle(false);
  UpdateGroupbarLayout();
  const std::int32_t current = CurrentGroupIndex();
  for (int i = 0; i < kTabGroupCount; ++i) {
    TGroupParts& g = FGroups[static_cast<std::size_t>(i)];
    const bool active = i == current;
    g.NameShadow->TextSettings.FontColor = active ? kActiveGroupNameShadowColor : kGroupNameShadowColor;
    g.NameShadow->Repaint();
    g.Name->SetHitTest(active);
    g.MenuButton->SetVisible(active);
    const bool isPrivate = active && IsPrivateGroup(i);
    SetGroupButtonImage(g.Color, i, active, isPrivate);
    if (!active) {
      g.Active->SetBitmap(nullptr);
      continue;
    }
    if (!FImageRes) continue;
    TBitmap* place = nullptr;
    if (i == 0)
      place = FMainWindowActive ? FImageRes->TabGroupLeftActive() : FImageRes->TabGroupLeftActiveInactive();
    else if (i == kTabGroupCount - 1)
      place = FMainWindowActive ? FImageRes->TabGroupRightActive() : FImageRes->TabGroupRightActiveInactive();
    else
      place = FMainWindowActive ? FImageRes->TabGroupActive() : FImageRes->TabGroupActiveInactive();
    g.Active->SetBitmap(place);
  }
}

void TTabbarParentForm::InitGroupButtons() {
  for (int i = 0; i < kTabGroupCount; ++i)
    SetGroupButtonImage(FGroups[static_cast<std::size_t>(i)].Color, i, false, false);
}

void TTabbarParentForm::SetGroupButtonImage(TGroupColorImage* image, int groupIndex, bool active,
                                            bool isPrivate) {
  if (image->FInit && image->FGroupIndex == groupIndex && image->FActive == active &&
      image->FPrivate == isPrivate)
    return;
  image->FInit = true;
  image->FGroupIndex = groupIndex;
  image->FActive = active;
  image->FPrivate = isPrivate;
  image->SetBitmap(FImageRes ? GroupColorBitmap(*FImageRes, groupIndex, active, isPrivate) : nullptr);
}

// ---- hover while a drag runs over the bar

void TTabbarParentForm::UpdateTabGroupDragHover(std::int32_t index) {
  const std::int32_t current = CurrentGroupIndex();
  const bool valid = index >= 0 && index < kTabGroupCount && index != current;
  for (int i = 0; i < kTabGroupCount; ++i)
    FGroups[static_cast<std::size_t>(i)].DragOver->SetVisible(valid && i == index);
}

std::int32_t TTabbarParentForm::GetGroupIndexFromScreenPoint(TPointF point) const {
  const TPointF client = ScreenToClient(point);
  for (int i = 0; i < kTabGroupCount; ++i) {
    TGroupLayout* layout = FGroups[static_cast<std::size_t>(i)].Layout;
    if (layout->LocalRect().Contains(layout->AbsoluteToLocal(client))) return i;
  }
  return -1;
}

TRectF TTabbarParentForm::GetGroupTabRect(std::int32_t index) const {
  if (index < 0 || index >= kTabGroupCount) return {};
  return FGroups[static_cast<std::size_t>(index)].Layout->AbsoluteRect();
}

bool TTabbarParentForm::ScreenPointInGroupTab(TPointF point) const {
  const std::int32_t index = GetGroupIndexFromScreenPoint(point);
  const std::int32_t current = CurrentGroupIndex();
  if (index < 0 || index == current) return false;
  return !IsPrivateGroup(index) && !IsPrivateGroup(current);
}

// ---- clicks

void TTabbarParentForm::GroupLayout_0Click(TFmxObject* sender) {
  HideEditAndUpdateTitle(false);
  const auto index = static_cast<std::int32_t>(sender->Tag);
  if (index == CurrentGroupIndex()) return;
  ComPtr<IQxITabGroup> group;
  if (!GroupAt(index, group)) return;
  ComPtr<IQxITabManager> manager;
  FServiceCore->TabManager(manager);
  if (manager) manager->SetActiveTabGroup(group.get());
}

void TTabbarParentForm::GroupLayoutContextMenu(TFmxObject* sender) {
  if (static_cast<std::int32_t>(sender->Tag) == CurrentGroupIndex()) ShowGroupPopupMenu();
}

}  // namespace qx
