#include "tabview/CabinetDnDIntf.h"

namespace qx {
namespace {

TCabinetDnDWindowMaker& Maker() {
  static TCabinetDnDWindowMaker maker;
  return maker;
}

}  // namespace

std::int32_t StrToDragSourceType(std::u16string_view text) {
  if (text == u"topSites") return drag_type::TopSites;
  if (text == u"archives") return drag_type::Archives;
  if (text == u"opentabs") return drag_type::OpenTabs;
  if (text.empty()) return drag_type::TabStrip;
  if (text == u"left-group-button") return drag_type::LeftGroupButton;
  if (text == u"right-group-button") return drag_type::RightGroupButton;
  return drag_type::Other;
}

float DragTypeWidthRatio(std::int32_t type) {
  switch (type) {
    case drag_type::Archives:
      return 144.0f / 208.0f;
    case drag_type::TabStrip:
    case drag_type::LeftGroupButton:
    case drag_type::RightGroupButton:
      return 96.0f / 208.0f;
    default:
      return 1.0f;
  }
}

float DragImageRatioFor(std::int32_t sourceType, std::int32_t destType, bool cancel) {
  return DragTypeWidthRatio(destType == drag_type::Other || cancel ? sourceType : destType);
}

void SetCabinetDnDWindowMaker(TCabinetDnDWindowMaker maker) { Maker() = std::move(maker); }

const TCabinetDnDWindowMaker& CabinetDnDWindowMaker() { return Maker(); }

}  // namespace qx
