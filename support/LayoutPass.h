#pragma once

#include <vector>

#include "tabview/TabGroupViewLayout.h"

namespace qx::support {

// One tab's attributes of a pass, copied out.
struct TFrameInfo {
  TRectD Frame;
  TRectD ClipFrame;
  double StraightPosition = 0;
  double ZPosition = 0;
  bool Hidden = false;
  bool Active = false;
  bool FirstInSection = false;
  bool LastInSection = false;
  bool InDraggedSection = false;
  bool OverlapsLeft = false;
  bool OverlapsRight = false;
};

// Runs one pass and ends its list as the frame does, so nothing of it stays alive.
std::vector<TFrameInfo> RunLayout(TTabGroupViewLayout& layout);

}  // namespace qx::support
