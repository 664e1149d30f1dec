#include "tabview/ScrollBoxExInput.h"

#include <cstdint>

namespace qx {

namespace {
TStyleDescriptionTargetFunc& TargetFunc() {
  static TStyleDescriptionTargetFunc func;
  return func;
}
}  // namespace

int InputSourceFromExtraInfo(LParam extraInfo) {
  auto info = static_cast<std::uint32_t>(extraInfo) & ~std::uint32_t{0x7F};
  if (info == win::MI_WP_SIGNATURE) return kInputSourcePen;
  if (info == win::MI_WP_TOUCH) return kInputSourceTouch;
  return kInputSourceMouse;
}

bool IsTouchInput() {
  IPlatform& os = Platform();
  InputMessageSource source;
  if (os.GetCurrentInputMessageSource(&source)) return (source.deviceType & win::IMDT_TOUCH) != 0;
  return InputSourceFromExtraInfo(os.GetMessageExtraInfo()) == kInputSourceTouch &&
         os.CheckWin32Version(6, 1);
}

void SetStyleDescriptionTargetFunc(TStyleDescriptionTargetFunc func) { TargetFunc() = std::move(func); }

std::u16string StyleDescriptionTarget(const TFmxObject* control) {
  return TargetFunc() ? TargetFunc()(control) : std::u16string();
}

}  // namespace qx
