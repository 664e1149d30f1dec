#pragma once

// Mouse, drag and gesture event types.

#include <any>
#include <functional>
#include <string>
#include <vector>

#include "toolkit/Types.h"

namespace qx {

class TFmxObject;

enum class TMouseButton { mbLeft, mbRight, mbMiddle };

using TShiftState = unsigned;
namespace ss {
inline constexpr TShiftState Shift = 0x0001;
inline constexpr TShiftState Alt = 0x0002;
inline constexpr TShiftState Ctrl = 0x0004;
inline constexpr TShiftState Left = 0x0008;
inline constexpr TShiftState Right = 0x0010;
inline constexpr TShiftState Middle = 0x0020;
inline constexpr TShiftState Double = 0x0040;
inline constexpr TShiftState Touch = 0x0080;
inline constexpr TShiftState Pen = 0x0100;
inline constexpr TShiftState Command = 0x0200;
inline constexpr TShiftState Horizontal = 0x0400;
}  // namespace ss

enum class TDragOperation { None, Move, Copy, Link };

struct TDragObject {
  TFmxObject* Source = nullptr;
  std::vector<std::u16string> Files;
  std::any Data;
};

enum class TInteractiveGesture { Zoom, Pan, Rotate, TwoFingerTap, PressAndTap, LongTap, DoubleTap };
using TInteractiveGestures = unsigned;  // bit (1 << gesture)
constexpr TInteractiveGestures GestureBit(TInteractiveGesture g) { return 1u << static_cast<unsigned>(g); }

using TInteractiveGestureFlags = unsigned;
namespace gf {
inline constexpr TInteractiveGestureFlags Begin = 1;
inline constexpr TInteractiveGestureFlags Inertia = 2;
inline constexpr TInteractiveGestureFlags End = 4;
}  // namespace gf

// Gesture ids as the platform numbers them.
inline constexpr int igiPan = 260;

struct TGestureEventInfo {
  int GestureID = 0;
  TPointF Location;  // form client coordinates
  TInteractiveGestureFlags Flags = 0;
  int Distance = 0;  // from where the gesture began, in pixels
  TPointF InertiaVector;
  TPointF TapLocation;
  double Angle = 0;
};

using TMouseEvent = std::function<void(TFmxObject* sender, TMouseButton button, TShiftState shift, float x, float y)>;
using TMouseMoveEvent = std::function<void(TFmxObject* sender, TShiftState shift, float x, float y)>;
using TMouseWheelEvent = std::function<void(TFmxObject* sender, TShiftState shift, int wheelDelta, bool& handled)>;
using TDragEnterEvent = std::function<void(TFmxObject* sender, const TDragObject& data, const TPointF& point)>;
using TDragOverEvent =
    std::function<void(TFmxObject* sender, const TDragObject& data, const TPointF& point, TDragOperation& operation)>;
using TDragDropEvent = std::function<void(TFmxObject* sender, const TDragObject& data, const TPointF& point)>;
using TGestureEvent = std::function<void(TFmxObject* sender, const TGestureEventInfo& eventInfo, bool& handled)>;

// What a control accepts from touch input.
class TTouchManager {
 public:
  TInteractiveGestures InteractiveGestures = 0;
  bool Has(TInteractiveGesture g) const { return (InteractiveGestures & GestureBit(g)) != 0; }
};

}  // namespace qx
