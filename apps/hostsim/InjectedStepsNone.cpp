#include "InputSteps.h"

namespace qx {

// Input is put into the window system's queue through the emulation's injection hooks; a
// real window system offers no such door here, so a scenario's input steps are skipped.
std::unique_ptr<IScenarioHands> MakeScenarioHands(HWnd, HWnd, std::uint32_t) { return nullptr; }

}  // namespace qx
