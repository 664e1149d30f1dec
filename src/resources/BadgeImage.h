#pragma once

// The badge of a tab: bookmarked, pinned, or both, faded from one to the next.

#include "resources/TabbarImageRes.h"
#include "toolkit/Animation.h"
#include "toolkit/Image.h"

namespace qx {

class TBadgeImage : public TImage {
 public:
  // imageRes isn't owned and must outlive the badge.
  TBadgeImage(TFmxObject* owner, TTabbarImageRes* imageRes);
  std::string ClassName() const override { return "TBadgeImage"; }

  bool Bookmarked() const { return FBookmarked; }
  void SetBookmarked(bool value);
  bool Pinned() const { return FPinned; }
  void SetPinned(bool value);
  bool HasBadge() const { return FBookmarked || FPinned; }

  TBitmap* CurrentBadgeBitmap() const { return FCurrentBadgeBitmap; }
  TBitmapAnimation* BitmapAnimation() const { return FBitmapAnimation; }

 private:
  void UpdateBadge();

  TTabbarImageRes* FImageRes;
  bool FBookmarked = false;
  bool FPinned = false;
  TBitmapAnimation* FBitmapAnimation = nullptr;  // child, freed with the badge
  TBitmap* FCurrentBadgeBitmap = nullptr;
};

}  // namespace qx
