#pragma once

// The system's UI font for the module's labels, at the toolkit's 96 DPI base.

#include "toolkit/Canvas.h"

namespace qx {

// Gives font the system UI font's family and its size plus adjustment points; the style
// stays. False, with font untouched, when the system names no font.
bool ApplySystemFont(TFont& font, float adjustment);

}  // namespace qx
