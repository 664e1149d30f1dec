#include "cabinet/CabinetIconBarForm.h"

#include <cmath>

#include "cabinet/CabinetIconBarFrame.h"
#include "resources/CabinetIconBarImageRes.h"
#include "tabview/PreviewStripIntf.h"

namespace qx {

TCabinetIconBarForm::TCabinetIconBarForm(TFmxObject* owner, TCabinetIconBarImageRes* imageRes,
                                         IServiceCoreWrap* serviceCore, HWnd clientWindowHandle)
    : TBaseFormXE7(owner),
      FImageRes(imageRes),
      FServiceCore(serviceCore),
      FClientWindowHandle(clientWindowHandle) {
  BorderStyle = TFmxFormBorderStyle::None;
  SetBounds(0, 0, 363, 23);
  FBackGroundImage = new TImage(this);
  FBackGroundImage->Name = u"BackGroundImage";
  FBackGroundImage->SetParent(this);
  FBackGroundImage->SetAlign(TAlignLayout::Client);
  FBackGroundImage->SetWrapMode(TImageWrapMode::Tile);
  FBackGroundImage->SetHitTest(false);
  FormCreate();
  if (FImageRes) {
    FBackImage = FImageRes->CabinetbarBackground();
    FBackImage_Inactive = FImageRes->CabinetbarBackgroundInactive();
  }
  ChangeActiveState(true);
  if (FServiceCore)
    FServiceCore->AddEventHandler(0, u"PreviewStrip.UpdateContentWidth",
                                  FPreviewStripUpdateContentWidthEventListener, false,
                                  [this](const TString&, IQxIEvent*) -> HResult {
                                    FormResize();
                                    return kOk;
                                  });
}

TCabinetIconBarForm::~TCabinetIconBarForm() {
  if (FServiceCore && FPreviewStripUpdateContentWidthEventListener)
    FServiceCore->RemoveEventListener(u"PreviewStrip.UpdateContentWidth",
                                      FPreviewStripUpdateContentWidthEventListener.get());
  delete FCabinetIconBarFrame;
  FCabinetIconBarFrame = nullptr;
}

void TCabinetIconBarForm::FormCreate() {
  FCabinetIconBarFrame =
      new TCabinetIconBarFrame(nullptr, FImageRes, FServiceCore.get(), FClientWindowHandle, this);
  FCabinetIconBarFrame->Name = u"CabinetIconBarFrame";
  FCabinetIconBarFrame->SetParent(this);
}

void TCabinetIconBarForm::Resize() {
  TBaseFormXE7::Resize();
  FormResize();
}

void TCabinetIconBarForm::FormResize() {
  if (!FCabinetIconBarFrame) return;
  TRectF rect{0, 0, FCabinetIconBarFrame->Width(), 0};
  if (IPreviewStrip* strip = FCabinetIconBarFrame->PreviewStrip()) strip->TabScrollBoxScreenRect(rect);
  NotifyScrollBoxRect(rect);
}

void TCabinetIconBarForm::NotifyScrollBoxRect(const TRectF& rect) {
  UpdateFrameWidth(rect.Left, rect.Width());
}

void TCabinetIconBarForm::UpdateFrameWidth(float screenLeft, float width) {
  TCabinetIconBarFrame* frame = FCabinetIconBarFrame;
  if (!frame) return;
  const float left = std::round(ScreenToClient({screenLeft, 0}).X);
  if (frame->Position().X() != left) frame->Position().SetX(left);
  if (frame->Width() != width) frame->SetWidth(width);
  frame->SetHeight(static_cast<float>(ClientHeight()));
}

void TCabinetIconBarForm::ChangeActiveState(bool active) {
  TBitmap* picture = active ? FBackImage : FBackImage_Inactive;
  if (picture)
    FBackGroundImage->SetBitmap(picture);
  else
    FBackGroundImage->Bitmap().SetSize(0, 0);
}

TRectF TCabinetIconBarForm::GetChildFrameRect() const {
  if (!FCabinetIconBarFrame) return {};
  return FCabinetIconBarFrame->BoundsRect();
}

}  // namespace qx
