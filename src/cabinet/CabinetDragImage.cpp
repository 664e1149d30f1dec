#include "cabinet/CabinetDragImage.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "resources/ResourceFiles.h"
#include "toolkit/Canvas.h"

namespace qx {
namespace {

TRect Inflated(TRect r, int by) { return {r.Left - by, r.Top - by, r.Right + by, r.Bottom + by}; }

TRect Union(const TRect& a, const TRect& b) {
  return {std::min(a.Left, b.Left), std::min(a.Top, b.Top), std::max(a.Right, b.Right),
          std::max(a.Bottom, b.Bottom)};
}

TRect Shifted(TRect r, int dx, int dy) { return {r.Left + dx, r.Top + dy, r.Right + dx, r.Bottom + dy}; }

int Scaled(int v, double scale) { return static_cast<int>(std::lround(v * scale)); }

TRect Scaled(const TRect& r, double scale) {
  return {Scaled(r.Left, scale), Scaled(r.Top, scale), Scaled(r.Right, scale), Scaled(r.Bottom, scale)};
}

TRectF ToF(const TRect& r) {
  return TRectF(static_cast<float>(r.Left), static_cast<float>(r.Top), static_cast<float>(r.Right),
                static_cast<float>(r.Bottom));
}

void DrawStretched(TCanvas& canvas, const TBitmap& bitmap, const TRect& target) {
  canvas.DrawBitmap(bitmap,
                    TRectF(0, 0, static_cast<float>(bitmap.Width()), static_cast<float>(bitmap.Height())),
                    ToF(target), 1, false);
}

}  // namespace

TComposedDragImage ComposeDragImage(const TCabinetDragImageInfoList& images, TCabinetImageRes* imageRes,
                                    TPoint badgeSize) {
  TComposedDragImage result;
  if (images.empty() || images.front().FImageRect.Width() <= 0) return result;
  const double scale = static_cast<double>(kDragImageWidth) / images.front().FImageRect.Width();

  std::vector<TRect> rects;
  rects.reserve(images.size());
  TRect badge{};
  for (std::size_t i = 0; i < images.size(); ++i) {
    TRect r = images[i].FImageRect;
    if (i == 0) {
      badge.Left = r.Left - badgeSize.X / 2;
      badge.Top = r.Top - badgeSize.Y / 2;
      badge.Right = badge.Left + badgeSize.X;
      badge.Bottom = badge.Top + badgeSize.Y;
      result.TopImagePoint = {r.Left, r.Top};
    } else {
      // Each picture stands centred under the one above it.
      const TRect& previous = images[i - 1].FImageRect;
      const int width = r.Width();
      r.Left = previous.Left + (previous.Width() - width) / 2;
      r.Right = r.Left + width;
    }
    rects.push_back(r);
  }
  for (TRect& r : rects) r = Inflated(r, kDragShadowMargin);

  TRect imagesUnion = rects.front();
  for (const TRect& r : rects) imagesUnion = Union(imagesUnion, r);
  const TRect whole = Union(imagesUnion, badge);
  if (whole.Width() > 0 && whole.Height() > 0) {
    const int dx = -whole.Left, dy = -whole.Top;
    for (TRect& r : rects) r = Shifted(r, dx, dy);
    imagesUnion = Shifted(imagesUnion, dx, dy);
    badge = Shifted(badge, dx, dy);
    result.TopImagePoint = {result.TopImagePoint.X + dx, result.TopImagePoint.Y + dy};
  }
  result.TopImagePoint = {Scaled(result.TopImagePoint.X, scale), Scaled(result.TopImagePoint.Y, scale)};
  for (TRect& r : rects) r = Scaled(r, scale);
  imagesUnion = Scaled(imagesUnion, scale);
  const TRect size = Scaled(Shifted(whole, -whole.Left, -whole.Top), scale);
  result.CenterPoint = {(imagesUnion.Left + imagesUnion.Right) / 2,
                        (imagesUnion.Top + imagesUnion.Bottom) / 2};
  if (size.Width() <= 0 || size.Height() <= 0) return result;

  result.Bitmap = std::make_unique<TBitmap>(size.Width(), size.Height());
  result.Bitmap->Clear(0x00FFFFFFu);
  TCanvas& canvas = result.Bitmap->Canvas();
  canvas.BeginScene();
  for (std::size_t i = images.size(); i-- > 0;) {
    const TRect& frame = rects[i];
    if (ResourceFileExists(images[i].FImagePath)) {
      if (std::unique_ptr<TBitmap> picture = LoadResourceBitmap(images[i].FImagePath)) {
        // Every picture inside its own shadow, the top one too: moved by the grip, it would
        // stand beside its shadow and out of the window.
        DrawStretched(canvas, *picture, Inflated(frame, -kDragShadowMargin));
      }
    }
    TBitmap* shadow = nullptr;
    if (imageRes) shadow = i == 0 ? imageRes->CabinetTabLargeShadow() : imageRes->CabinetTabLargeBackShadow();
    if (shadow) DrawStretched(canvas, *shadow, frame);
  }
  canvas.EndScene();
  return result;
}

}  // namespace qx
