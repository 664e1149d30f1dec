#pragma once

// What a real window shows on the screen, read back through the system's own drawing.

#include <cstdint>
#include <vector>

#include "platform/Platform.h"

namespace qx::test {

// The window's pixels as the screen shows them, 0x00RRGGBB, top row first.
std::vector<std::uint32_t> ReadBack(HWnd hwnd, int width, int height);

}  // namespace qx::test
