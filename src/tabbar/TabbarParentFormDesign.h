#pragma once

// The stored layout of the tab strip's parent form and its tab group bar.

#include <string>

#include "toolkit/Types.h"

namespace qx {

// Font colour of group i's name (alpha 255).
TAlphaColor GroupNameColor(int index);
inline constexpr TAlphaColor kGroupNameShadowColor = 0x38000000u;
inline constexpr TAlphaColor kActiveGroupNameShadowColor = 0x6B000000u;

// The layout text; handlers named in it are registered by the form.
const std::string& TabbarParentFormDesign();

}  // namespace qx
