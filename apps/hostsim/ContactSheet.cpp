#include "ContactSheet.h"

#include <algorithm>

#include "toolkit/Canvas.h"

namespace qx {

std::unique_ptr<TBitmap> MakeContactSheet(const std::vector<const TBitmap*>& pictures) {
  int width = 0, height = kContactSheetGap;
  for (const TBitmap* picture : pictures) {
    if (!picture) continue;
    width = std::max(width, picture->Width());
    height += picture->Height() + kContactSheetGap;
  }
  if (width == 0) return nullptr;
  auto sheet = std::make_unique<TBitmap>(width + 2 * kContactSheetGap, height);
  sheet->Clear(0xFF202226u);
  TCanvas& canvas = sheet->Canvas();
  canvas.BeginScene();
  float top = kContactSheetGap;
  for (const TBitmap* picture : pictures) {
    if (!picture) continue;
    const auto w = static_cast<float>(picture->Width()), h = static_cast<float>(picture->Height());
    canvas.DrawBitmap(*picture, TRectF(0, 0, w, h),
                      TRectF(kContactSheetGap, top, kContactSheetGap + w, top + h), 1, true);
    top += h + kContactSheetGap;
  }
  canvas.EndScene();
  return sheet;
}

}  // namespace qx
