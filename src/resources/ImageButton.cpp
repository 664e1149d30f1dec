#include "resources/ImageButton.h"

#include "toolkit/Canvas.h"

namespace qx {

TImageButton::TImageButton(TFmxObject* owner)
    : TImage(owner),
      FHoverBitmap(std::make_unique<TBitmap>()),
      FPushedBitmap(std::make_unique<TBitmap>()),
      FNormalBitmap(std::make_unique<TBitmap>()) {
  for (TBitmap* bitmap : {FHoverBitmap.get(), FPushedBitmap.get(), FNormalBitmap.get()})
    bitmap->OnChange = [this] { BitmapChanged(); };
  SetHitTest(true);
}

TImageButton::~TImageButton() {
  for (TBitmap* bitmap : {FHoverBitmap.get(), FPushedBitmap.get(), FNormalBitmap.get()}) bitmap->OnChange = nullptr;
}

void TImageButton::BitmapChanged() {
  FLastStopBitmap = nullptr;
  UpdateBitmap();
}

void TImageButton::ParentChanged() {
  TImage::ParentChanged();
  if (Parent() && !FBitmapAnimation) {
    // Made here rather than in the constructor: nothing animates before the button is placed.
    FBitmapAnimation = new TBitmapAnimation(this);
    FBitmapAnimation->PropertyName = "Bitmap";
    FBitmapAnimation->Duration = 0.2f;
    AddObject(FBitmapAnimation);
  }
}

void TImageButton::UpdateBitmap() {
  TBitmap* wanted = FIsPressed ? FPushedBitmap.get() : FIsHovered ? FHoverBitmap.get() : FNormalBitmap.get();
  if (wanted == FLastStopBitmap) return;
  const bool animated = FBitmapAnimation && FLastStopBitmap && FLastStopBitmap != FPushedBitmap.get() &&
                        wanted != FPushedBitmap.get() && FAnimate;
  if (animated) {
    FLastStopBitmap = wanted;
    FBitmapAnimation->Stop();
    FBitmapAnimation->StartValue().Assign(&Bitmap());
    FBitmapAnimation->StopValue().Assign(wanted);
    FBitmapAnimation->Start();
    return;
  }
  FLastStopBitmap = wanted;
  if (FBitmapAnimation) FBitmapAnimation->Stop();
  SetBitmap(wanted);
}

void TImageButton::CutCell(TBitmap& target, int index) {
  const int cellWidth = FListBitmap->Width() / (ColCount > 0 ? ColCount : 1);
  const int height = FListBitmap->Height();
  target.SetSize(cellWidth, height);
  if (cellWidth <= 0 || height <= 0) return;
  TCanvas& canvas = target.Canvas();
  if (!canvas.BeginScene()) return;
  canvas.Clear(TAlphaColors::Null);
  const float w = static_cast<float>(cellWidth), h = static_cast<float>(height);
  const float left = w * static_cast<float>(index);
  canvas.DrawBitmap(*FListBitmap, TRectF(left, 0, left + w, h), TRectF(0, 0, w, h), 1);
  canvas.EndScene();
  target.BitmapChanged();
}

void TImageButton::SetBitmapList(TBitmap* bitmap) {
  FListBitmap = bitmap;
  if (FListBitmap) {
    CutCell(*FNormalBitmap, NormalImageIndex);
    CutCell(*FHoverBitmap, HoverImageIndex);
    CutCell(*FPushedBitmap, PushedImageIndex);
  }
  FLastStopBitmap = nullptr;
  UpdateBitmap();
}

void TImageButton::DoMouseEnter() {
  TImage::DoMouseEnter();
  if (FIsHovered) return;
  FIsHovered = true;
  UpdateBitmap();
  Repaint();
}

void TImageButton::DoMouseLeave() {
  TImage::DoMouseLeave();
  if (!FIsHovered) return;
  FIsHovered = false;
  UpdateBitmap();
  Repaint();
}

void TImageButton::MouseDown(TMouseButton button, TShiftState shift, float x, float y) {
  // A right press counts as a press only when asked for, so that a click follows.
  if (button == TMouseButton::mbRight && FEnableRightClick) SetPressed(true);
  if (button == TMouseButton::mbLeft || (shift & ss::Left)) {
    FIsPressed = true;
    UpdateBitmap();
  }
  TImage::MouseDown(button, shift, x, y);
}

void TImageButton::MouseUp(TMouseButton button, TShiftState shift, float x, float y) {
  FLastMouseUpButton = button;
  FIsPressed = false;
  UpdateBitmap();
  const bool rightClick = button == TMouseButton::mbRight && FEnableRightClick && Pressed();
  TImage::MouseUp(button, shift, x, y);
  if (rightClick) {
    SetPressed(false);
    if (LocalRect().Contains({x, y}) && !IsDestroying()) Click();
  }
}

void TImageButton::Click() {
  FRightClick = FLastMouseUpButton == TMouseButton::mbRight;
  TImage::Click();
  FRightClick = false;
}

}  // namespace qx
