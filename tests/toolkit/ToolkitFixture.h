#pragma once

#include <gtest/gtest.h>

#include "toolkit/Application.h"
#include "toolkit/TimerService.h"

namespace qx::test {

// Every test starts on a fresh toolkit with the manual clock.
class ToolkitTest : public ::testing::Test {
 protected:
  void SetUp() override { TToolkit::Finalize(); }
  void TearDown() override { TToolkit::Finalize(); }
  TManualTimerService& Clock() {
    TManualTimerService* clock = ManualTimerService();
    EXPECT_NE(clock, nullptr);
    return *clock;
  }
};

}  // namespace qx::test
