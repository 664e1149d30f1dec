#pragma once

// Where the six group tabs of the tab group bar stand: the active group is 110
// pixels wide, the others share what is left, each at least 46.

#include <array>
#include <cstdint>

namespace qx {

inline constexpr int kGroupbarGroups = 6;
inline constexpr float kActiveGroupWidth = 110;
inline constexpr float kMinGroupWidth = 46;
// Below this width a group's name has no room and is hidden.
inline constexpr float kMinNamedGroupWidth = 66;

struct TGroupbarSlot {
  float SeparatorX = 0;  // the separator before the group (none for group 0)
  float X = 0;
  float Width = 0;
  bool NameVisible = false;
};

struct TGroupbarMetrics {
  float InactiveWidth = 0;
  std::array<TGroupbarSlot, kGroupbarGroups> Slots;
  float GroupButtonLayoutWidth = 0;
};

// exitWidth: width of the exit button's area; formWidth: the form's width;
// current: index of the active group (-1 for none).
TGroupbarMetrics CalcGroupbarLayout(float exitWidth, float formWidth, std::int32_t current);

}  // namespace qx
