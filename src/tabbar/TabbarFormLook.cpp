// The strip's look: group colour on the buttons, active and inactive skins.

#include "host/QuillmarV3Interface.h"
#include "tabbar/TabbarForm.h"

namespace qx {

namespace {

constexpr std::int32_t kGroupNotFound = 99;
constexpr std::int32_t kLastColourIndex = 5;

std::int32_t GroupIndexOf(IServiceCoreWrap* serviceCore, IQxITabGroup* group) {
  ComPtr<IQxITabManager> manager;
  serviceCore->TabManager(manager);
  if (!manager || !group) return kGroupNotFound;
  std::int32_t count = 0;
  if (Failed(manager->GetTabGroupCount(&count))) return kGroupNotFound;
  for (std::int32_t i = 0; i < count; ++i) {
    ComPtr<IQxITabGroup> candidate;
    if (Succeeded(manager->GetTabGroup(i, candidate.put())) && SameInterface(candidate.get(), group))
      return i;
  }
  return kGroupNotFound;
}

void SetButtonImages(TImageButton& button, TBitmap* normal, TBitmap* hover, TBitmap* pushed) {
  button.SetNormalBitmap(normal);
  button.SetHoverBitmap(hover);
  button.SetPushedBitmap(pushed);
}

}  // namespace

void TTabbarFrame::UpdateGroupImageFromGroup(IQxITabGroup* group) {
  if (!FServiceCore) return;
  const std::int32_t index = GroupIndexOf(FServiceCore.get(), group);
  const bool isPrivate = FServiceCore->IsPrivateTabGroup(group);
  UpdateGroupButtonImages(index, isPrivate);
}

void TTabbarFrame::UpdateGroupButtonImages(std::int32_t index, bool isPrivate) {
  if (FGroupImageInit && index == FGroupIndex && isPrivate == FIsPrivateGroup) return;
  if (index > kLastColourIndex || index < 0 || !FImageRes) return;
  TTabbarImageRes& res = *FImageRes;
  // One set per colour; the group button has its own for private groups.
  struct TColourSet {
    TBitmap *Cabinet, *CabinetHovered, *CabinetPressed;
    TBitmap *Private, *PrivateHovered, *PrivatePressed;
    TBitmap *Add, *AddHovered, *AddPressed;
  };
#define QX_COLOUR_SET(n)                             \
  TColourSet{res.TabbarCabinet##n(),                 \
             res.TabbarCabinet##n##Hovered(),        \
             res.TabbarCabinet##n##Pressed(),        \
             res.TabbarCabinetPrivate##n(),          \
             res.TabbarCabinetPrivate##n##Hovered(), \
             res.TabbarCabinetPrivate##n##Pressed(), \
             res.TabbarAdd##n(),                     \
             res.TabbarAdd##n##Hovered(),            \
             res.TabbarAdd##n##Pressed()}
  TColourSet set;
  switch (index) {
    case 0:
      set = QX_COLOUR_SET(1);
      break;
    case 1:
      set = QX_COLOUR_SET(2);
      break;
    case 2:
      set = QX_COLOUR_SET(3);
      break;
    case 3:
      set = QX_COLOUR_SET(4);
      break;
    case 4:
      set = QX_COLOUR_SET(5);
      break;
    default:
      set = QX_COLOUR_SET(6);
      break;
  }
#undef QX_COLOUR_SET
  if (isPrivate)
    SetButtonImages(*FbtnGroup, set.Private, set.PrivateHovered, set.PrivatePressed);
  else
    SetButtonImages(*FbtnGroup, set.Cabinet, set.CabinetHovered, set.CabinetPressed);
  SetButtonImages(*FbtnAddTab, set.Add, set.AddHovered, set.AddPressed);
  FGroupIndex = index;
  FIsPrivateGroup = isPrivate;
  FGroupImageInit = true;
}

void TTabbarFrame::UpdateMainWindowActive(bool active) {
  if (FMainWindowIsActiveSet && active == FMainWindowIsActive) return;
  FMainWindowIsActive = active;
  FMainWindowIsActiveSet = true;
  if (FImageRes) {
    TTabbarImageRes& res = *FImageRes;
    FimgActiveTab->SetBitmap(active ? res.TabActive() : res.TabActiveInactive());
    FimgTabbarLeft->SetBitmap(active ? res.TabbarBackgroundLeft() : res.TabbarBackgroundInactiveLeft());
    FimgTabbarRight->SetBitmap(active ? res.TabbarBackgroundRight() : res.TabbarBackgroundInactiveRight());
    FimgTabbarMiddle->SetBitmap(active ? res.TabbarBackgroundFill() : res.TabbarBackgroundInactiveFill());
  }
  // The parent swaps its own background pictures.
  ParentUpdateMainWindowActive(active);
  if (ICabinetIconBar* bar = GetCabinetIconBar()) bar->ChangeActiveState(active);
}

}  // namespace qx
