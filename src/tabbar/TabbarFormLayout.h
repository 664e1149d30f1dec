#pragma once

// The design-time component tree of the tab strip frame.

#include <string>

namespace qx {

// Layout text for TLoadStoredLayout; needs the strip's component classes registered.
const std::string& TabbarFrameLayoutText();
// Registers TImageButton and the strip's TScrollBox with the stored layouts.
void RegisterTabbarFrameClasses();

}  // namespace qx
