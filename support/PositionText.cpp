#include "support/PositionText.h"

#include <cmath>
#include <cstdio>

namespace qx::support {

std::string TabLefts(const std::vector<TFrameInfo>& frames) {
  std::string text;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    char number[40];
    const double left = frames[i].Frame.Left;
    if (left == std::floor(left) && std::fabs(left) < 1e15) {
      std::snprintf(number, sizeof number, "%.0f", left);
    } else {
      std::snprintf(number, sizeof number, "%.2f", left);
    }
    text += number;
    if (i + 1 < frames.size()) text += frames[i].LastInSection ? " | " : " ";
  }
  return text;
}

}  // namespace qx::support
