// Replays the strip's storm: storm [--seed N] [--actions N] [--burst N] [--threads PERCENT] [--trace]

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "Storm.h"

int main(int argc, char** argv) {
  qx::TStormOptions options;
  options.Actions = 100000;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    const bool hasValue = i + 1 < argc;
    if (arg == "--seed" && hasValue) {
      options.Seed = static_cast<std::uint32_t>(std::strtoul(argv[++i], nullptr, 10));
    } else if (arg == "--actions" && hasValue) {
      options.Actions = std::atoi(argv[++i]);
    } else if (arg == "--burst" && hasValue) {
      options.MaxActionsPerDrain = std::atoi(argv[++i]);
    } else if (arg == "--threads" && hasValue) {
      options.OtherThreadPercent = std::atoi(argv[++i]);
    } else if (arg == "--trace") {
      options.Trace = stdout;
    } else {
      std::fprintf(stderr, "usage: %s [--seed N] [--actions N] [--burst N] [--threads PERCENT] [--trace]\n",
                   argv[0]);
      return 2;
    }
  }
  const qx::TStormResult result = qx::RunStorm(options);
  std::printf(
      "seed %u: %d actions, %d drains, %d cached thumbnails at the end, %d title popups checked: %s\n",
      options.Seed, result.ActionsRun, result.Drains, result.ThumbnailsShown, result.TitlePopupsChecked,
      result.Passed ? "passed" : "FAILED");
  if (!result.Passed) std::printf("%s\n", result.Failure.c_str());
  return result.Passed ? 0 : 1;
}
