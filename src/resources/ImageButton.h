#pragma once

// An image with normal, hover and pushed pictures. Normal and hover fade into each
// other; a press shows at once.

#include <memory>

#include "toolkit/Animation.h"
#include "toolkit/Image.h"

namespace qx {

class TImageButton : public TImage {
 public:
  explicit TImageButton(TFmxObject* owner = nullptr);
  ~TImageButton() override;
  std::string ClassName() const override { return "TImageButton"; }

  // Assigning copies the picture.
  TBitmap& NormalBitmap() { return *FNormalBitmap; }
  TBitmap& HoverBitmap() { return *FHoverBitmap; }
  TBitmap& PushedBitmap() { return *FPushedBitmap; }
  void SetNormalBitmap(const TBitmap* bitmap) { FNormalBitmap->Assign(bitmap); }
  void SetHoverBitmap(const TBitmap* bitmap) { FHoverBitmap->Assign(bitmap); }
  void SetPushedBitmap(const TBitmap* bitmap) { FPushedBitmap->Assign(bitmap); }

  // Cuts the three pictures from a strip of ColCount cells; the strip isn't owned.
  void SetBitmapList(TBitmap* bitmap);
  TBitmap* BitmapList() const { return FListBitmap; }
  void UpdateBitmap();

  bool Animate() const { return FAnimate; }
  void SetAnimate(bool value) { FAnimate = value; }
  bool EnableRightClick() const { return FEnableRightClick; }
  void SetEnableRightClick(bool value) { FEnableRightClick = value; }
  // True inside the click handler when the click came from the right button.
  bool RightClick() const { return FRightClick; }
  TMouseButton LastMouseUpButton() const { return FLastMouseUpButton; }

  int ColCount = 3;
  int HoverImageIndex = 1;
  int PushedImageIndex = 2;
  int NormalImageIndex = 0;

  bool IsHovered() const { return FIsHovered; }
  bool IsPressed() const { return FIsPressed; }
  TBitmapAnimation* BitmapAnimation() const { return FBitmapAnimation; }

  void MouseDown(TMouseButton button, TShiftState shift, float x, float y) override;
  void MouseUp(TMouseButton button, TShiftState shift, float x, float y) override;
  void Click() override;
  void DoMouseEnter() override;
  void DoMouseLeave() override;

 protected:
  void ParentChanged() override;

 private:
  void BitmapChanged();
  void CutCell(TBitmap& target, int index);

  TBitmapAnimation* FBitmapAnimation = nullptr;  // child, freed with the button
  std::unique_ptr<TBitmap> FHoverBitmap, FPushedBitmap, FNormalBitmap;
  TBitmap* FListBitmap = nullptr;
  bool FIsHovered = false;
  bool FIsPressed = false;
  TBitmap* FLastStopBitmap = nullptr;
  bool FAnimate = true;
  bool FEnableRightClick = false;
  TMouseButton FLastMouseUpButton = TMouseButton::mbLeft;
  bool FRightClick = false;
};

}  // namespace qx
