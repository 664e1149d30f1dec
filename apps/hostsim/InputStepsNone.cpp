#include "InputSteps.h"

namespace qx {

// Input is put into the window system's queue through the emulation's injection hooks;
// a real window system offers no such door here, so the run goes on without these steps.
void PlayInputSteps(TStripScenario&, const TSnap&) {}

}  // namespace qx
