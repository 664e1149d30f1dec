#pragma once

// The live window's keys: host actions on the simulated browser (add, close and select
// tabs, switch groups, the cabinet, a text selection for smart search) as scenario steps,
// and the window's own commands.

#include <SDL.h>

#include <vector>

#include "LiveStep.h"
#include "StripScenario.h"

namespace qx {

// One line for the window's title and the console.
inline constexpr char kLiveKeysHelp[] =
    "A add tab  W close  1-9 select  G group  C cabinet  S select text  R record  P picture  Esc quit";

enum class TLiveCommand { None, ToggleRecording, Capture, Quit };

struct TLiveKeyAction {
  TLiveCommand Command = TLiveCommand::None;
  std::vector<TLiveStep> Steps;
};

class TLiveKeys {
 public:
  // nextPage: the number the next added page gets.
  TLiveKeys(TStripScenario& scenario, int nextPage) : FScenario(scenario), FNextPage(nextPage) {}

  // What a key asks for in the host's present state; nothing for other keys.
  TLiveKeyAction Map(SDL_Keycode key) const;
  // Plays a host step on the scenario; pointer steps are not for it.
  void Apply(const TLiveStep& step);
  // The number of the page a tab shows; 0 for a tab that is none of the pages.
  int PageOf(const TFakeTab* tab) const;

 private:
  void ShowActivePage();
  void SelectText(const std::string& text);

  TStripScenario& FScenario;
  int FNextPage;
};

}  // namespace qx
