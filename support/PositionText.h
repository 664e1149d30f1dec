#pragma once

#include <string>
#include <vector>

#include "support/LayoutPass.h"

namespace qx::support {

// The tabs' left edges of a pass in one line, sections apart by "|", for
// example "0 98 196 | 310 408". Whole pixels print bare, others with their fraction.
std::string TabLefts(const std::vector<TFrameInfo>& frames);

}  // namespace qx::support
