#pragma once

// The drag window's picture: the drag's pictures stacked with their shadows, the top
// one full width, and room at its corner for the close badge.

#include <memory>

#include "resources/CabinetImageRes.h"
#include "tabview/CabinetDnDIntf.h"
#include "toolkit/Bitmap.h"

namespace qx {

struct TComposedDragImage {
  std::unique_ptr<TBitmap> Bitmap;
  // In the bitmap's pixels.
  TPoint CenterPoint;
  TPoint TopImagePoint;
};

inline constexpr int kDragImageWidth = 208;
inline constexpr int kDragImageHeight = 156;
inline constexpr int kDragShadowMargin = 8;

// No bitmap for an empty list or a top image without width. Missing or unreadable
// picture files are left out; the shadows are drawn all the same.
TComposedDragImage ComposeDragImage(const TCabinetDragImageInfoList& images, TCabinetImageRes* imageRes,
                                    TPoint badgeSize);

}  // namespace qx
