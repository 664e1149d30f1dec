#pragma once

// The tab strip's pictures, from "skin://widget/toolbar/PreviewStrip/".
// One lazy getter per key; the file is key + ".png".

#include <memory>
#include <string_view>
#include <vector>

#include "resources/BitmapResourceMgr.h"

namespace qx {

#define QX_TABBAR_IMAGE_KEYS(X) \
  X(TabProgress) \
  X(TabClose) \
  X(TabCloseHovered) \
  X(TabClosePressed) \
  X(TabBadgeProtected) \
  X(TabBadgeProtectedReady) \
  X(TabBadgeProtectedHovered) \
  X(TabBadgeProtectedPressed) \
  X(TabBadgeBookmarked) \
  X(TabBadgeBookmarkedReady) \
  X(TabBadgeBookmarkedHovered) \
  X(TabBadgeBookmarkedPressed) \
  X(TabBoundHovered) \
  X(TabBlank) \
  X(TabbarBackgroundRight) \
  X(TabActive) \
  X(TabActiveInactive) \
  X(TabNameBackground1) \
  X(TabNameBackground2) \
  X(TabNameBackground3) \
  X(TabNameBackground4) \
  X(TabNameBackground5) \
  X(TabNameBackground6) \
  X(TabBadgeBookmarkedProtected) \
  X(TabbarBackgroundFill) \
  X(TabbarBackgroundLeft) \
  X(TopBarBackground) \
  X(HoldAndGoFeedback) \
  X(TabCloseFlickWipe) \
  X(TabbarBackgroundInactiveRight) \
  X(TabbarBackgroundInactiveFill) \
  X(TabbarBackgroundInactiveLeft) \
  X(TopbarBackgroundInactive) \
  X(TabGroupLeftActive) \
  X(TabGroupActive) \
  X(TabGroupRightActive) \
  X(TabgroupbarSeparator) \
  X(TabGroupbarBackground) \
  X(TabGroupActiveMunePressed) \
  X(TabGroupActiveMune) \
  X(TabGroupLeftActiveInactive) \
  X(TabGroupActiveInactive) \
  X(TabGroupRightActiveInactive) \
  X(CabinetTabDragBadgeClose) \
  X(TabGroupDragHoveredLeft) \
  X(TabGroupDragHoveredRight) \
  X(TabGroupDragHoveredFill) \
  X(TabGroup1) \
  X(TabGroup1Active) \
  X(TabbarCabinet1) \
  X(TabbarCabinet1Hovered) \
  X(TabbarCabinet1Pressed) \
  X(TabbarAdd1) \
  X(TabbarAdd1Hovered) \
  X(TabbarAdd1Pressed) \
  X(TabbarCabinetPrivate1) \
  X(TabbarCabinetPrivate1Hovered) \
  X(TabbarCabinetPrivate1Pressed) \
  X(TabGroupPrivate1) \
  X(TabGroupPrivate1Active) \
  X(TabGroup2) \
  X(TabGroup2Active) \
  X(TabbarCabinet2) \
  X(TabbarCabinet2Hovered) \
  X(TabbarCabinet2Pressed) \
  X(TabbarAdd2) \
  X(TabbarAdd2Hovered) \
  X(TabbarAdd2Pressed) \
  X(TabbarCabinetPrivate2) \
  X(TabbarCabinetPrivate2Hovered) \
  X(TabbarCabinetPrivate2Pressed) \
  X(TabGroupPrivate2) \
  X(TabGroupPrivate2Active) \
  X(TabGroup3) \
  X(TabGroup3Active) \
  X(TabbarCabinet3) \
  X(TabbarCabinet3Hovered) \
  X(TabbarCabinet3Pressed) \
  X(TabbarAdd3) \
  X(TabbarAdd3Hovered) \
  X(TabbarAdd3Pressed) \
  X(TabbarCabinetPrivate3) \
  X(TabbarCabinetPrivate3Hovered) \
  X(TabbarCabinetPrivate3Pressed) \
  X(TabGroupPrivate3) \
  X(TabGroupPrivate3Active) \
  X(TabGroup4) \
  X(TabGroup4Active) \
  X(TabbarCabinet4) \
  X(TabbarCabinet4Hovered) \
  X(TabbarCabinet4Pressed) \
  X(TabbarAdd4) \
  X(TabbarAdd4Hovered) \
  X(TabbarAdd4Pressed) \
  X(TabbarCabinetPrivate4) \
  X(TabbarCabinetPrivate4Hovered) \
  X(TabbarCabinetPrivate4Pressed) \
  X(TabGroupPrivate4) \
  X(TabGroupPrivate4Active) \
  X(TabGroup5) \
  X(TabGroup5Active) \
  X(TabbarCabinet5) \
  X(TabbarCabinet5Hovered) \
  X(TabbarCabinet5Pressed) \
  X(TabbarAdd5) \
  X(TabbarAdd5Hovered) \
  X(TabbarAdd5Pressed) \
  X(TabbarCabinetPrivate5) \
  X(TabbarCabinetPrivate5Hovered) \
  X(TabbarCabinetPrivate5Pressed) \
  X(TabGroupPrivate5) \
  X(TabGroupPrivate5Active) \
  X(TabGroup6) \
  X(TabGroup6Active) \
  X(TabbarCabinet6) \
  X(TabbarCabinet6Hovered) \
  X(TabbarCabinet6Pressed) \
  X(TabbarAdd6) \
  X(TabbarAdd6Hovered) \
  X(TabbarAdd6Pressed) \
  X(TabbarCabinetPrivate6) \
  X(TabbarCabinetPrivate6Hovered) \
  X(TabbarCabinetPrivate6Pressed) \
  X(TabGroupPrivate6) \
  X(TabGroupPrivate6Active) \
  X(TabbarCabinetOpened) \
  X(TabbarCabinetOpenedHovered) \
  X(TabbarCabinetOpenedPressed)

class TTabbarImageRes : public TQuillmarBitmapResourceManager {
 public:
  explicit TTabbarImageRes(IServiceCoreWrap* serviceCore, std::u16string_view resourcePath = kTabbarSkinPath)
      : TQuillmarBitmapResourceManager(serviceCore, resourcePath) {}
  explicit TTabbarImageRes(std::u16string_view folder) : TQuillmarBitmapResourceManager(folder) {}

  // Every key of the set, in order.
  static const std::vector<std::u16string_view>& Keys();
  // The getter of a key by name; null for a key the set doesn't have.
  TBitmap* ByKey(std::u16string_view key);

#define QX_GETTER(key) \
  TBitmap* key() { return Lazy(F##key, u## #key); }
  QX_TABBAR_IMAGE_KEYS(QX_GETTER)
#undef QX_GETTER

  // Left, fill and right thirds of the three-part backgrounds.
#define QX_SLICES(key) \
  TBitmap* key##Left() { return LazySlice(F##key##Left, key(), 3, 0); } \
  TBitmap* key##Fill() { return LazySlice(F##key##Fill, key(), 3, 1); } \
  TBitmap* key##Right() { return LazySlice(F##key##Right, key(), 3, 2); }
  QX_SLICES(TabNameBackground1)
  QX_SLICES(TabNameBackground2)
  QX_SLICES(TabNameBackground3)
  QX_SLICES(TabNameBackground4)
  QX_SLICES(TabNameBackground5)
  QX_SLICES(TabNameBackground6)
  QX_SLICES(TabGroupbarBackground)
#undef QX_SLICES

 private:
#define QX_FIELD(key) std::unique_ptr<TBitmap> F##key;
  QX_TABBAR_IMAGE_KEYS(QX_FIELD)
#define QX_SLICE_FIELDS(key) std::unique_ptr<TBitmap> F##key##Left, F##key##Fill, F##key##Right;
  QX_SLICE_FIELDS(TabNameBackground1)
  QX_SLICE_FIELDS(TabNameBackground2)
  QX_SLICE_FIELDS(TabNameBackground3)
  QX_SLICE_FIELDS(TabNameBackground4)
  QX_SLICE_FIELDS(TabNameBackground5)
  QX_SLICE_FIELDS(TabNameBackground6)
  QX_SLICE_FIELDS(TabGroupbarBackground)
#undef QX_SLICE_FIELDS
#undef QX_FIELD
};

}  // namespace qx
