#include "smartsearch/ComposeThreeSlice.h"

#include <algorithm>

#include "toolkit/Canvas.h"

namespace qx {
namespace {

float WidthOf(const TBitmap* piece) { return piece ? static_cast<float>(piece->Width()) : 0.0f; }

void Draw(TCanvas& canvas, const TBitmap& piece, const TRectF& target) {
  const TRectF source{0, 0, static_cast<float>(piece.Width()), static_cast<float>(piece.Height())};
  canvas.DrawBitmap(piece, source, target, 1.0f);
}

}  // namespace

std::unique_ptr<TBitmap> ComposeThreeSliceBitmap(const TBitmap* left, const TBitmap* fill, int height,
                                                 int width, const TBitmap* right) {
  auto result = std::make_unique<TBitmap>(std::max(width, 0), std::max(height, 0));
  result->Clear(0);
  if (width <= 0 || height <= 0) return result;
  TCanvas& canvas = result->Canvas();
  if (!canvas.BeginScene()) return result;
  const float w = static_cast<float>(width);
  const float leftWidth = WidthOf(left), rightWidth = WidthOf(right);
  if (left && left->Width() > 0) Draw(canvas, *left, {0, 0, leftWidth, static_cast<float>(left->Height())});
  if (right && right->Width() > 0)
    Draw(canvas, *right, {w - rightWidth, 0, w, static_cast<float>(right->Height())});
  if (fill && fill->Width() > 0 && w - rightWidth > leftWidth)
    Draw(canvas, *fill, {leftWidth, 0, w - rightWidth, static_cast<float>(fill->Height())});
  canvas.EndScene();
  return result;
}

}  // namespace qx
