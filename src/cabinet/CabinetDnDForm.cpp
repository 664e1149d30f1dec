#include "cabinet/CabinetDnDForm.h"

#include <algorithm>
#include <cmath>

#include "base/PathDelim.h"
#include "cabinet/CabinetDragImage.h"
#include "host/HostKeys.h"

namespace qx {
namespace {

constexpr float kRatioDuration = 0.15f;
constexpr float kMoveDuration = 0.25f;
constexpr float kShrinkDuration = 0.2f;
constexpr int kBadgeSize = 32;

int Round(float v) { return static_cast<int>(std::lround(v)); }

float ClampedRatio(int value, int size) {
  if (size <= 0) return 0;
  return std::min(1.0f, static_cast<float>(value) / static_cast<float>(size));
}

// The page writes its pictures under the host's temporary folder.
TString CabinetImageFolder(IServiceCoreWrap* serviceCore) {
  TString folder;
  if (serviceCore) serviceCore->DirectoryPath(dir_key::UserTemp, true, folder);
  return folder + u"chrome" + kPathDelim + u"cabinet" + kPathDelim + u"img";
}

}  // namespace

TCabinetDnDForm::TCabinetDnDForm(TFmxObject* owner, IServiceCoreWrap* serviceCore,
                                 TTabbarImageRes* tabbarImageRes, HWnd clientWindowHandle)
    : TBaseFormXE7(owner),
      FServiceCore(serviceCore),
      FImageRes(std::make_unique<TCabinetImageRes>(CabinetImageFolder(serviceCore))),
      FTabbarImageRes(tabbarImageRes),
      FClientWindowHandle(clientWindowHandle) {
  BorderStyle = TFmxFormBorderStyle::None;
  Transparency = true;
  FormStyle = TFormStyle::Popup;
  SetBounds(0, 0, kDragImageWidth, 239);
  FImage = new TImage(this);
  AddObject(FImage);
  FImage->SetHitTest(false);
  FImage->SetOpacity(0.8f);
  FImage->SetWrapMode(TImageWrapMode::Stretch);
  FImage->SetBounds(0, 0, kDragImageWidth, kDragImageHeight);
  FimgClose = new TImage(this);
  AddObject(FimgClose);
  FimgClose->SetHitTest(false);
  FimgClose->SetWrapMode(TImageWrapMode::Original);
  FimgClose->SetBounds(0, 0, kBadgeSize, kBadgeSize);
  FimgClose->SetOpacity(0);
  if (FTabbarImageRes) FimgClose->SetBitmap(FTabbarImageRes->CabinetTabDragBadgeClose());
  FCloseImageOpacityAnimation = new TFloatAnimation(FimgClose);
  FimgClose->AddObject(FCloseImageOpacityAnimation);
  FCloseImageOpacityAnimation->Duration = kRatioDuration;
  FCloseImageOpacityAnimation->PropertyName = "Opacity";
  FCloseImageOpacityAnimation->StartFromCurrent = true;
  // The window is layered: every step of an animation repaints it whole.
  FCloseImageOpacityAnimation->OnProcess = [this](TFmxObject*) { Invalidate(); };
  FDragImageRatioAnimation = new TFloatAnimation(this);
  AddObject(FDragImageRatioAnimation);
  FDragImageRatioAnimation->Duration = kRatioDuration;
  FDragImageRatioAnimation->PropertyName = "DragImageRatio";
  FDragImageRatioAnimation->StartFromCurrent = true;
  FHideAnimation = new TFloatAnimation(this);
  AddObject(FHideAnimation);
  FHideAnimation->Duration = kShrinkDuration;
  FHideAnimation->PropertyName = "HideAnimationRatio";
  FHideAnimation->OnFinish = [this](TFmxObject*) { HideAnimationFinish(); };
  FtmHide = new TTimer(this);
  FtmHide->SetEnabled(false);
  FtmHide->SetInterval(2000);
  FtmHide->SetOnTimer([this](TFmxObject*) { tmHideTimer(); });
  FtmCheckHide = new TTimer(this);
  FtmCheckHide->SetEnabled(false);
  FtmCheckHide->SetInterval(100);
  FtmCheckHide->SetOnTimer([this](TFmxObject*) { tmCheckHideTimer(); });
}

TCabinetDnDForm::~TCabinetDnDForm() {
  FtmCheckHide->SetEnabled(false);
  FtmHide->SetEnabled(false);
  FHideAnimation->Stop();
}

const TPropertyTable& TCabinetDnDForm::ClassProperties() {
  static const TPropertyTable table = [] {
    auto F = [](TFmxObject* o) { return static_cast<TCabinetDnDForm*>(o); };
    TPropertyTable t(&TBaseFormXE7::ClassProperties());
    t.Float("DragImageRatio", {[F](TFmxObject* o) { return F(o)->DragImageRatio(); },
                               [F](TFmxObject* o, float v) { F(o)->SetDragImageRatio(v); }});
    t.Float("HideAnimationRatio", {[F](TFmxObject* o) { return F(o)->HideAnimationRatio(); },
                                   [F](TFmxObject* o, float v) { F(o)->SetHideAnimationRatio(v); }});
    return t;
  }();
  return table;
}

void TCabinetDnDForm::HandleCreated() {
  TBaseFormXE7::HandleCreated();
  // Mouse input goes through to the page under the drag, and the window stays on top.
  IPlatform& os = Platform();
  const HWnd window = FormHandle();
  if (!window) return;
  const auto style = static_cast<std::uint32_t>(os.GetWindowLongW(window, win::GWL_EXSTYLE));
  os.SetWindowLongW(
      window, win::GWL_EXSTYLE,
      static_cast<std::int32_t>(style | win::WS_EX_TRANSPARENT | win::WS_EX_TOPMOST | win::WS_EX_LAYERED));
}

void TCabinetDnDForm::FormClose() {
  FHiding = false;
  FtmCheckHide->SetEnabled(false);
}

TSizeF TCabinetDnDForm::BitmapSize() const {
  if (!FDragImageBitmap) return {0, 0};
  return {static_cast<float>(FDragImageBitmap->Width()), static_cast<float>(FDragImageBitmap->Height())};
}

void TCabinetDnDForm::ShowForm(std::int32_t sourceType, std::int32_t destType,
                               const TCabinetDragImageInfoList& images, TPoint offset, TPoint mousePoint) {
  FHideAnimation->Stop();
  FtmHide->SetEnabled(false);
  FHiding = false;
  FHideStart = 0;
  FtmCheckHide->SetEnabled(true);
  FMouseUpTime = 0;
  TCabinetDragImageInfoList list = images;
  // A picture wider than the window's width is brought down to it, with its grip point.
  if (!list.empty() && list.front().FImageRect.Width() > kDragImageWidth) {
    const double k = static_cast<double>(list.front().FImageRect.Width()) / kDragImageWidth;
    for (TCabinetDragImageInfo& info : list) {
      const int left = static_cast<int>(std::lround(info.FImageRect.Left / k));
      const int top = static_cast<int>(std::lround(info.FImageRect.Top / k));
      info.FImageRect = {left, top, left + kDragImageWidth, top + kDragImageHeight};
    }
    offset = {static_cast<int>(std::lround(offset.X / k)), static_cast<int>(std::lround(offset.Y / k))};
  }
  if (!list.empty()) FSaveTopImagePoint = {list.front().FImageRect.Left, list.front().FImageRect.Top};
  FSaveOffset = offset;
  if (!UpdateDragImage(sourceType, destType, list, offset)) return;
  MoveWindow(mousePoint);
  Invalidate();
  if (!Visible()) {
    HandleNeed();
    if (const HWnd window = FormHandle()) Platform().ShowWindow(window, win::SW_SHOWNA);
    SetVisible(true);
  }
}

bool TCabinetDnDForm::UpdateDragImage(std::int32_t sourceType, std::int32_t destType,
                                      const TCabinetDragImageInfoList& images, TPoint offset) {
  FDragImageBitmap.reset();
  TComposedDragImage composed =
      ComposeDragImage(images, FImageRes.get(), {Round(FimgClose->Width()), Round(FimgClose->Height())});
  FDragImageBitmap = std::move(composed.Bitmap);
  if (!FDragImageBitmap || FDragImageBitmap->IsEmpty()) return false;
  const int w = FDragImageBitmap->Width(), h = FDragImageBitmap->Height();
  FOffsetRatioX = ClampedRatio(offset.X, w);
  FOffsetRatioY = ClampedRatio(offset.Y, h);
  FCenterPointRatioX = ClampedRatio(composed.CenterPoint.X, w);
  FCenterPointRatioY = ClampedRatio(composed.CenterPoint.Y, h);
  FTopImageLeftRatio = static_cast<float>(composed.TopImagePoint.X) / static_cast<float>(w);
  FTopImageTopRatio = static_cast<float>(composed.TopImagePoint.Y) / static_cast<float>(h);
  SetBounds(Left(), Top(), w, h);
  FImage->SetBitmap(FDragImageBitmap.get());
  // Written even when equal, so the image and the badge take the new bitmap's place.
  FDragImageRatio = -1;
  SetDragImageRatio(DragImageRatioFor(sourceType, destType, false));
  return true;
}

void TCabinetDnDForm::SetDragImageRatio(float value) {
  if (value == FDragImageRatio) return;
  FDragImageRatio = value;
  const TSizeF bitmap = BitmapSize();
  const auto width = static_cast<float>(Width()), height = static_cast<float>(Height());
  const float x = width * FOffsetRatioX - value * bitmap.cx * FOffsetRatioX;
  const float y = height * FOffsetRatioY - value * bitmap.cy * FOffsetRatioY;
  FImage->SetBounds(x, y, std::trunc(value * bitmap.cx), std::trunc(value * bitmap.cy));
  FimgClose->SetBounds(FImage->Width() * FTopImageLeftRatio + x - FimgClose->Width() / 2,
                       FImage->Height() * FTopImageTopRatio + y - FimgClose->Height() / 2, FimgClose->Width(),
                       FimgClose->Height());
  Invalidate();
}

void TCabinetDnDForm::MoveWindow(TPoint mousePoint) {
  const int left = mousePoint.X - Round(FImage->Width() * FOffsetRatioX) - Round(FImage->Position().X());
  const int top = mousePoint.Y - Round(FImage->Height() * FOffsetRatioY) - Round(FImage->Position().Y());
  SetBounds(left, top, Width(), Height());
  if (const HWnd window = FormHandle())
    Platform().SetWindowPos(
        window, nullptr, left, top, 0, 0,
        win::SWP_NOSIZE | win::SWP_NOZORDER | win::SWP_NOOWNERZORDER | win::SWP_NOACTIVATE);
}

void TCabinetDnDForm::AnimateDragImageRatio(float target, float duration) {
  if (target == FDragImageRatio || FDragImageRatioAnimation->Running()) return;
  FDragImageRatioAnimation->Duration = duration;
  FDragImageRatioAnimation->StopValue = target;
  FDragImageRatioAnimation->Start();
}

void TCabinetDnDForm::FadeCloseBadge(float target) {
  if (FimgClose->Opacity() == target || FCloseImageOpacityAnimation->Running()) return;
  FCloseImageOpacityAnimation->Enabled = true;
  FCloseImageOpacityAnimation->StopValue = target;
  FCloseImageOpacityAnimation->Start();
}

void TCabinetDnDForm::Move(std::int32_t sourceType, std::int32_t destType, TPoint mousePoint) {
  AnimateDragImageRatio(DragImageRatioFor(sourceType, destType, false), kRatioDuration);
  FadeCloseBadge(destType == drag_type::Archives && sourceType != drag_type::Archives ? 1.0f : 0.0f);
  MoveWindow(mousePoint);
}

void TCabinetDnDForm::HideDragImage(bool animated, TCabinetDragImageHideAnimationType animationType,
                                    TPointF destinationPoint, const std::u16string& dragSourceId,
                                    std::int32_t sourceType, std::int32_t destType, bool cancel) {
  if (!Visible()) return;
  FDragSourceId = dragSourceId;
  FHiding = true;
  FHideStart = Platform().GetTickCount();
  FtmHide->SetEnabled(false);
  if (!animated || animationType == TCabinetDragImageHideAnimationType::atNormal) {
    HideImmediately();
    return;
  }
  FHideAnimation->Stop();
  FDragImageRatioAnimation->Stop();
  FCloseImageOpacityAnimation->Stop();
  FCloseImageOpacityAnimation->Enabled = false;
  FHideAnimationType = animationType;
  FHideAnimationDestinationPoint = destinationPoint;
  const TSizeF bitmap = BitmapSize();
  FHideAnimationStartPoint = {static_cast<float>(Left()) + bitmap.cx * FOffsetRatioX,
                              static_cast<float>(Top()) + bitmap.cy * FOffsetRatioY};
  FHideAnimationRatio = 0;
  FHideAnimation->StartValue = 0;
  FHideAnimation->StopValue = 1;
  if (animationType == TCabinetDragImageHideAnimationType::atMove) {
    const float r = DragImageRatioFor(sourceType, destType, cancel);
    const float w = bitmap.cx * r, h = bitmap.cy * r;
    // The top image's corner lands on the point, not the grip.
    FHideAnimationDestinationPoint.X += w * FOffsetRatioX - w * FTopImageLeftRatio;
    FHideAnimationDestinationPoint.Y += h * FOffsetRatioY - h * FTopImageTopRatio;
    FHideAnimation->Duration = kMoveDuration;
    FHideAnimation->Interpolation = TInterpolationType::Exponential;
    FHideAnimation->AnimationType = TAnimationType::Out;
    FHideAnimation->Start();
    FDragImageRatioAnimation->Duration = kMoveDuration;
    FDragImageRatioAnimation->StopValue = r;
    if (r != FDragImageRatio) FDragImageRatioAnimation->Start();
  } else {
    FShrinkStartDragImageRatio = FDragImageRatio;
    FHideAnimation->Duration = kShrinkDuration;
    FHideAnimation->Interpolation = TInterpolationType::Linear;
    FHideAnimation->AnimationType = TAnimationType::In;
    FHideAnimation->Start();
  }
}

void TCabinetDnDForm::SetHideAnimationRatio(float value) {
  if (value == FHideAnimationRatio) return;
  FHideAnimationRatio = value;
  const TPointF& s = FHideAnimationStartPoint;
  const TPointF& d = FHideAnimationDestinationPoint;
  MoveWindow({Round(s.X + (d.X - s.X) * value), Round(s.Y + (d.Y - s.Y) * value)});
  if (FHideAnimationType == TCabinetDragImageHideAnimationType::atShrink)
    SetDragImageRatio(FShrinkStartDragImageRatio * (1 - value));
}

void TCabinetDnDForm::HideAnimationFinish() {
  if (FHideAnimationType == TCabinetDragImageHideAnimationType::atMove) {
    // The page is told the image has arrived; the timers take the window down.
    if (FOnDragImageHide) FOnDragImageHide(FDragSourceId);
    return;
  }
  HideImmediately();
}

void TCabinetDnDForm::HideImmediately() {
  if (Visible()) {
    Hide();
    FormClose();
  }
  FDragSourceId.clear();
}

TPoint TCabinetDnDForm::DragImageCenterPoint() const {
  const TSizeF bitmap = BitmapSize();
  return {Left() + Round(bitmap.cx * FCenterPointRatioX), Top() + Round(bitmap.cy * FCenterPointRatioY)};
}

void TCabinetDnDForm::tmHideTimer() {
  FtmHide->SetEnabled(false);
  HideImmediately();
}

bool TCabinetDnDForm::ClientWindowEnabled() const {
  IPlatform& os = Platform();
  if (!FClientWindowHandle || !os.IsWindow(FClientWindowHandle)) return true;
  const auto style = static_cast<std::uint32_t>(os.GetWindowLongW(FClientWindowHandle, win::GWL_STYLE));
  return (style & win::WS_DISABLED) == 0;
}

void TCabinetDnDForm::tmCheckHideTimer() {
  FtmCheckHide->SetEnabled(false);
  // A modal dialog over the main window holds everything as it is.
  if (!ClientWindowEnabled()) {
    FtmCheckHide->SetEnabled(true);
    return;
  }
  IPlatform& os = Platform();
  if (Visible()) {
    const std::uint32_t now = os.GetTickCount();
    if (FHiding) {
      if (now - FHideStart >= kHideTimeout) {
        FHideAnimation->Stop();
        HideImmediately();
        return;
      }
    } else if (os.GetKeyState(win::VK_LBUTTON) >= 0) {
      if (FMouseUpTime == 0) FMouseUpTime = now;
      if (now - FMouseUpTime >= kMouseUpTimeout && !FHideAnimation->Running()) {
        HideAnimationFinish();
        HideImmediately();
        return;
      }
    }
  }
  FtmCheckHide->SetEnabled(true);
}

}  // namespace qx
