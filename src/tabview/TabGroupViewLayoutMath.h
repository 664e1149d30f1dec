#pragma once

#include <algorithm>

#include "tabview/TabImageItem.h"

// Constants and small helpers shared by the layout's units.
namespace qx::layout_detail {

// sumWidth and straightRatio have always used the literal; the rest asks the tab.
inline constexpr double kTabWidthLiteral = 98;
inline constexpr double kTabWidth = TTabImageItem::size().cx;
inline constexpr double kTabHeight = TTabImageItem::size().cy;
inline constexpr double kMinimumStraightShare = 0.7;
inline constexpr double kEndSlope = 0.001;
inline constexpr double kLadderStep = 2;
inline constexpr double kEdgeTolerance = 0.001;
inline constexpr double kZScale = 150;
inline constexpr double kDraggedZ = 200;
inline constexpr double kDragOverhang = 8.0;

// Rounds through single precision; used where that precision shapes the strip.
inline double ToSingle(double value) { return static_cast<double>(static_cast<float>(value)); }

inline double Clamp01(double value) { return std::min(std::max(value, 0.0), 1.0); }

}  // namespace qx::layout_detail
