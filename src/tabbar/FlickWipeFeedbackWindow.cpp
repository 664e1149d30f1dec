#include "tabbar/FlickWipeFeedbackWindow.h"

namespace qx {

TFlickWipeFeedbackWindow::TFlickWipeFeedbackWindow(TFmxObject* owner, TTabbarImageRes* imageRes)
    : TBaseFormXE7(owner), FImageRes(imageRes) {
  BorderStyle = TFmxFormBorderStyle::None;
  Transparency = true;
  FormStyle = TFormStyle::Popup;
  SetBounds(0, 0, kWidth, kHeight);
  FImage = new TImage(this);
  AddObject(FImage);
  FImage->SetAlign(TAlignLayout::Client);
  FImage->SetWrapMode(TImageWrapMode::Original);
  FImage->SetHitTest(false);
  if (FImageRes) FImage->SetBitmap(FImageRes->TabCloseFlickWipe());
}

}  // namespace qx
