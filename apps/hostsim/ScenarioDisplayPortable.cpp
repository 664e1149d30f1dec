#include "ScenarioDisplay.h"
#include "platform/portable/PortableOs.h"

namespace qx {

// The emulation's manual clock moves in 10 ms steps, so every timer fires as it would.
void LetTimePass(std::uint32_t milliseconds) {
  IPortableOs& os = PortableOs();
  for (std::uint32_t passed = 0; passed < milliseconds; passed += 10) os.AdvanceClock(10);
  os.ProcessMessages();
}

void ShowWindowPicture(HWnd window, const TBitmap& picture) {
  PortableOs().SetWindowSurface(window, picture.Width(), picture.Height(), picture.Bits());
}

}  // namespace qx
