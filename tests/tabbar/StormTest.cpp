#include <gtest/gtest.h>

#include "Storm.h"

namespace qx {
namespace {

TEST(StormTest, TheStripMirrorsTheHostAfterEveryDrainOfTenThousandRandomActions) {
  TStormOptions options;
  options.Seed = 20240611;
  options.Actions = 10000;
  const TStormResult result = RunStorm(options);
  EXPECT_TRUE(result.Passed) << result.Failure;
  EXPECT_EQ(result.ActionsRun, options.Actions);
  EXPECT_GT(result.Drains, options.Actions / options.MaxActionsPerDrain);
  // The check of a shown title popup must have had something to check.
  EXPECT_GT(result.TitlePopupsChecked, 0);
}

}  // namespace
}  // namespace qx
