#pragma once

// Where the message being handled came from, and how a scroll box may scroll.

#include <functional>
#include <string>

#include "base/ComObject.h"
#include "platform/Platform.h"

namespace qx {

class TFmxObject;

// Internal input kinds read from a mouse message's extra info.
inline constexpr int kInputSourceMouse = 0;
inline constexpr int kInputSourceTouch = 128;
inline constexpr int kInputSourcePen = 256;

// The kind that the extra info of a mouse message stamps on it.
int InputSourceFromExtraInfo(LParam extraInfo);

// True when the message being handled was made by a finger: from the input
// source where the system has it, else from the message's extra info.
bool IsTouchInput();

// ---- scrolling behaviour

using TScrollingBehaviours = unsigned;
namespace sbh {
inline constexpr TScrollingBehaviours ConstantSpeed = 1;
inline constexpr TScrollingBehaviours Animation = 2;
inline constexpr TScrollingBehaviours Bounces = 4;
inline constexpr TScrollingBehaviours TouchTracking = 8;
inline constexpr TScrollingBehaviours AutoShowing = 16;
}  // namespace sbh

// The platform's answer to how scrolling behaves, registered in TPlatformServices.
struct IFMXSystemInformationService : IUnknown {
  static constexpr TGUID IID = MakeGuid("2E01A60B-E297-4AC0-AA24-C5F52289EC1E");
  virtual TScrollingBehaviours GetScrollingBehaviour() = 0;
};

// The target text of the style description that applies to a control; the
// toolkit has no style books, so a host that loads one tells it through this.
using TStyleDescriptionTargetFunc = std::function<std::u16string(const TFmxObject* control)>;
void SetStyleDescriptionTargetFunc(TStyleDescriptionTargetFunc func);
std::u16string StyleDescriptionTarget(const TFmxObject* control);

}  // namespace qx
