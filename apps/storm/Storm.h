#pragma once

// A storm of random browser actions against the tab strip frame over the fake host,
// on the manual clock: tabs opened, closed, moved within and across sections, selected,
// renamed and loaded, favicons and thumbnails arriving, sections and groups made and
// switched, groups made private; some of it raised from another thread. After every
// drain the strip must mirror the host's active group exactly. One seed, one run:
// a failure replays with the same seed and count.

#include <cstdint>
#include <cstdio>
#include <string>

namespace qx {

struct TStormOptions {
  std::uint32_t Seed = 1;
  int Actions = 10000;
  // Each drain comes after 1 to this many actions.
  int MaxActionsPerDrain = 6;
  // Out of 100: the share of actions whose events the host raises on another thread.
  int OtherThreadPercent = 15;
  // Every action and drain is written here when set.
  std::FILE* Trace = nullptr;
};

struct TStormResult {
  bool Passed = false;
  int ActionsRun = 0;
  int Drains = 0;
  int ThumbnailsShown = 0;
  // Drains after which a title popup was up, its title checked.
  int TitlePopupsChecked = 0;
  // What differed first, and the actions that led to it.
  std::string Failure;
};

TStormResult RunStorm(const TStormOptions& options);

}  // namespace qx
