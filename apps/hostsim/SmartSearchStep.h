#pragma once

// Smart search in the simulated browser: text dragged over in the page brings the popup
// up beside the selection, and the host opens each search the module asks for in a new tab.

#include <cstddef>
#include <string_view>

#include "InputSteps.h"
#include "ScenarioFile.h"
#include "StripScenario.h"

namespace qx {

// The host's engines set up, a drag over a word of the active page, the word shown
// selected and the release reported to the module. False when no page is shown.
bool SelectTextInPage(TStripScenario& scenario, IScenarioHands& hands, std::u16string_view text);
// The host runs the searches asked for after the first served ones, each opening its
// result in a new tab after the active one; served counts them.
void OpenRequestedSearches(TStripScenario& scenario, std::size_t& served);

// Smart search on, with the engines and texts the steps use; for the live window's keys.
void ConfigureSmartSearch(TFakeHost& host);

}  // namespace qx
