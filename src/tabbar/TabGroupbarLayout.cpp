#include "tabbar/TabGroupbarLayout.h"

#include <algorithm>
#include <cmath>

namespace qx {

TGroupbarMetrics CalcGroupbarLayout(float exitWidth, float formWidth, std::int32_t current) {
  TGroupbarMetrics m;
  float avail = std::min(formWidth - 24 - exitWidth, 683.0f);
  m.InactiveWidth = std::max(std::trunc((avail - 133) / 5), kMinGroupWidth);
  float x = exitWidth + 8 + 1;
  for (int i = 0; i < kGroupbarGroups; ++i) {
    TGroupbarSlot& slot = m.Slots[static_cast<std::size_t>(i)];
    slot.SeparatorX = x;
    slot.Width = i == current ? kActiveGroupWidth : m.InactiveWidth;
    slot.NameVisible = slot.Width >= kMinNamedGroupWidth;
    x += 1;
    slot.X = x;
    x += slot.Width;
  }
  float total = exitWidth + 16 + 7 + kActiveGroupWidth + 5 * m.InactiveWidth;
  m.GroupButtonLayoutWidth = formWidth > total ? total : formWidth;
  return m;
}

}  // namespace qx
