#pragma once

// Smart search in the simulated browser: text dragged over in the page brings the popup
// up beside the selection, and its default search opens the result in a new tab.

#include "InputSteps.h"

namespace qx {

// Runs after the strip's own steps; the popup is hidden again at the end.
void PlaySmartSearchSteps(TStripScenario& scenario, const TSnap& snap);

// Smart search on, with the engines and texts the steps use; for the live window's keys.
void ConfigureSmartSearch(TFakeHost& host);

}  // namespace qx
