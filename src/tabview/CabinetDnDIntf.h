#pragma once

// How the tab strip drives the floating drag window of the cabinet screen. The window
// lives with the cabinet bar; the module hands the strip a maker for it, so neither
// side includes the other.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "host/ServiceCoreWrapIntf.h"
#include "platform/Platform.h"
#include "resources/TabbarImageRes.h"
#include "toolkit/Types.h"

namespace qx {

// One picture of a drag: a file the page wrote and its place in page coordinates.
struct TCabinetDragImageInfo {
  TString FImagePath;
  TRect FImageRect;
};
// The first item is the top image.
using TCabinetDragImageInfoList = std::vector<TCabinetDragImageInfo>;

enum class TCabinetDragImageHideAnimationType { atNormal, atMove, atShrink };

// Drag source and destination kinds as the page names them.
namespace drag_type {
inline constexpr std::int32_t TopSites = 0;
inline constexpr std::int32_t Archives = 1;
inline constexpr std::int32_t OpenTabs = 2;
inline constexpr std::int32_t TabStrip = 3;
inline constexpr std::int32_t LeftGroupButton = 4;
inline constexpr std::int32_t RightGroupButton = 5;
inline constexpr std::int32_t Other = 6;
}  // namespace drag_type

std::int32_t StrToDragSourceType(std::u16string_view text);
// The top image's width for a kind over the full width of 208.
float DragTypeWidthRatio(std::int32_t type);
// What the image is scaled to: the source's size over a foreign or refused target.
float DragImageRatioFor(std::int32_t sourceType, std::int32_t destType, bool cancel);

class ICabinetDnDWindow {
 public:
  using THideEvent = std::function<void(const std::u16string& dragSourceId)>;
  virtual ~ICabinetDnDWindow() = default;

  // Offsets and points in screen pixels; offset is the grip point from the top image's corner.
  virtual void ShowForm(std::int32_t sourceType, std::int32_t destType,
                        const TCabinetDragImageInfoList& images, TPoint offset, TPoint mousePoint) = 0;
  virtual void Move(std::int32_t sourceType, std::int32_t destType, TPoint mousePoint) = 0;
  // False when no picture could be composed; the old one is gone either way.
  virtual bool UpdateDragImage(std::int32_t sourceType, std::int32_t destType,
                               const TCabinetDragImageInfoList& images, TPoint offset) = 0;
  virtual void HideDragImage(bool animated, TCabinetDragImageHideAnimationType animationType,
                             TPointF destinationPoint, const std::u16string& dragSourceId,
                             std::int32_t sourceType, std::int32_t destType, bool cancel) = 0;
  virtual void HideImmediately() = 0;
  virtual bool Showing() const = 0;
  virtual TPoint DragImageCenterPoint() const = 0;
  // The top image's corner in page coordinates as the last show kept it.
  virtual TPoint SavedTopImagePoint() const = 0;
  virtual void SetOnDragImageHide(THideEvent handler) = 0;
};

using TCabinetDnDWindowMaker = std::function<std::unique_ptr<ICabinetDnDWindow>(
    IServiceCoreWrap* serviceCore, TTabbarImageRes* tabbarImageRes, HWnd clientWindowHandle)>;

// Set once by the module; without a maker the strip shows no drag window.
void SetCabinetDnDWindowMaker(TCabinetDnDWindowMaker maker);
const TCabinetDnDWindowMaker& CabinetDnDWindowMaker();

}  // namespace qx
