#pragma once

// Compares a drawn picture with a golden PNG kept in the source tree.
//
// Every channel of every pixel may differ by kGoldenTolerance, for rounding in
// blending and filters; more than that fails. On a failure the picture drawn and
// a difference picture (the largest channel difference of each pixel, scaled up,
// in red) are written under <build>/golden-failures/, and the message names both.
//
// To regenerate the goldens after an intended change, run the test with the
// variable QX_UPDATE_GOLDEN set, for example
//   QX_UPDATE_GOLDEN=1 <build>/tests/toolkit/qx_toolkit_tests --gtest_filter='ToolkitGolden*'
// and look at the pictures before committing them.

#include <string>

#include "toolkit/Bitmap.h"

namespace qx::test {

inline constexpr int kGoldenTolerance = 3;

// golden is relative to the tests folder, for example "toolkit/golden/small_scene.png".
void ExpectMatchesGolden(const TBitmap& actual, const std::string& golden);

}  // namespace qx::test
