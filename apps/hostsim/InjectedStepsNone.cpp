#include "InputSteps.h"
#include "SmartSearchStep.h"

namespace qx {

// These steps put input into the window system's queue through the emulation's injection
// hooks; a real window system offers no such door here, so the run goes on without them.
void PlayInputSteps(TStripScenario&, const TSnap&) {}
void PlaySmartSearchSteps(TStripScenario&, const TSnap&) {}

}  // namespace qx
