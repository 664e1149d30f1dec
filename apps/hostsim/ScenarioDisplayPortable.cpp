#include <algorithm>

#include "ScenarioDisplay.h"
#include "platform/portable/PortableOs.h"

namespace qx {

// The emulation's manual clock moves in steps of at most 10 ms, so every timer fires as
// it would, and never past the time asked for: a recorded wait of 16 ms is 16 ms.
void LetTimePass(std::uint32_t milliseconds) {
  IPortableOs& os = PortableOs();
  for (std::uint32_t passed = 0; passed < milliseconds; passed += 10)
    os.AdvanceClock(std::min(10u, milliseconds - passed));
  os.ProcessMessages();
}

void ShowWindowPicture(HWnd window, const TBitmap& picture) {
  PortableOs().SetWindowSurface(window, picture.Width(), picture.Height(), picture.Bits());
}

}  // namespace qx
