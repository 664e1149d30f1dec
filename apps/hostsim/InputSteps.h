#pragma once

// The strip under a person's hands in the simulated browser: hover, a drag across
// sections with auto-scroll, a flick that closes a tab, a touch scroll.

#include <functional>

#include "StripScenario.h"

namespace qx {

// snap(name, what) takes a picture of the host window with a caption.
using TSnap = std::function<void(const char* name, const char* what)>;

void PlayInputSteps(TStripScenario& scenario, const TSnap& snap);

}  // namespace qx
