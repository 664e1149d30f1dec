#include "tabbar/HoldAndGoFeedbackForm.h"

#include <cmath>

namespace qx {

namespace {

struct TStep {
  float Start, Stop;
  TAnimationType Type;
  float Duration;
};

// Drops in from under its place, overshoots, settles, bounces once.
constexpr TStep kSteps[4] = {{40, -40, TAnimationType::Out, 0.35f * 0.45f},
                             {-40, 0, TAnimationType::In, 0.35f * 0.45f},
                             {0, -10, TAnimationType::Out, 0.15f * 0.45f},
                             {-10, 0, TAnimationType::In, 0.15f * 0.45f}};

}  // namespace

THoldAndGoFeedbackForm::THoldAndGoFeedbackForm(TFmxObject* owner, IServiceCoreWrap* serviceCore,
                                               TTabbarImageRes* imageRes, HWnd parentHandle)
    : TBaseFormXE7(owner), FImageRes(imageRes), FServiceCore(serviceCore), FParentHandle(parentHandle) {
  BorderStyle = TFmxFormBorderStyle::None;
  Transparency = true;
  FormStyle = TFormStyle::Popup;
  SetBounds(0, 0, kSize, kSize);
  FImage = new TImage(this);
  AddObject(FImage);
  FImage->SetAlign(TAlignLayout::Client);
  FImage->SetWrapMode(TImageWrapMode::Original);
  FImage->SetHitTest(false);
  if (FImageRes) FImage->SetBitmap(FImageRes->HoldAndGoFeedback());
  FFadeoutFloatAnimation = new TFloatAnimation(FImage);
  FImage->AddObject(FFadeoutFloatAnimation);
  FFadeoutFloatAnimation->Duration = 0.25f;
  FFadeoutFloatAnimation->PropertyName = "Opacity";
  FFadeoutFloatAnimation->StartValue = 1;
  FFadeoutFloatAnimation->StopValue = 0;
  FFadeoutFloatAnimation->OnFinish = [this](TFmxObject*) { Hide(); };
  FtmStart = new TTimer(this);
  FtmStart->SetEnabled(false);
  FtmStart->SetInterval(200);
  FtmStart->SetOnTimer([this](TFmxObject*) { tmStartTimer(); });
  for (int i = 0; i < 4; ++i) {
    auto* animation = new TFloatAnimation(this);
    AddObject(animation);
    animation->PropertyName = "YPositionOffset";
    animation->StartValue = kSteps[i].Start;
    animation->StopValue = kSteps[i].Stop;
    animation->AnimationType = kSteps[i].Type;
    animation->Interpolation = TInterpolationType::Quadratic;
    animation->Duration = kSteps[i].Duration;
    FAnimations[i] = animation;
  }
  for (int i = 0; i < 3; ++i)
    FAnimations[i]->OnFinish = [next = FAnimations[i + 1]](TFmxObject*) { next->Start(); };
  FAnimations[3]->OnFinish = [this](TFmxObject*) { FFadeoutFloatAnimation->Start(); };
}

const TPropertyTable& THoldAndGoFeedbackForm::ClassProperties() {
  static const TPropertyTable table = [] {
    auto F = [](TFmxObject* o) { return static_cast<THoldAndGoFeedbackForm*>(o); };
    TPropertyTable t(&TBaseFormXE7::ClassProperties());
    t.Float("YPositionOffset", {[F](TFmxObject* o) { return F(o)->YPositionOffset(); },
                                [F](TFmxObject* o, float v) { F(o)->SetYPositionOffset(v); }});
    return t;
  }();
  return table;
}

void THoldAndGoFeedbackForm::SetYPositionOffset(float value) {
  if (value == FYPositionOffset) return;
  FYPositionOffset = value;
  SetTop(static_cast<int>(std::lround(static_cast<float>(FOrigin.Y) + value)));
}

void THoldAndGoFeedbackForm::StartHoldAndGo(TPoint point) {
  SetVisible(false);
  HandleNeed();
  SetBounds(Left(), Top(), kSize, kSize);
  FOrigin.X = point.X - static_cast<int>(std::lround(static_cast<float>(Width()) / 2));
  FOrigin.Y = point.Y - Height() + 8;
  IPlatform& os = Platform();
  const HWnd window = FormHandle();
  if (window && FParentHandle && os.GetParent(window) != FParentHandle) os.SetParent(window, FParentHandle);
  for (TFloatAnimation* animation : FAnimations) animation->Stop();
  FFadeoutFloatAnimation->Stop();
  FImage->SetOpacity(1);
  SetBounds(FOrigin.X, FOrigin.Y, Width(), Height());
  // The delay lets a quick release cancel the effect before anything shows.
  FtmStart->SetEnabled(true);
}

void THoldAndGoFeedbackForm::tmStartTimer() {
  FtmStart->SetEnabled(false);
  FAnimations[0]->Start();
  if (!Visible()) {
    if (const HWnd window = FormHandle()) Platform().ShowWindow(window, win::SW_SHOWNA);
    SetVisible(true);
  }
}

void THoldAndGoFeedbackForm::HandleCreated() {
  TBaseFormXE7::HandleCreated();
  SubclassWindow(FormHandle());
}

void THoldAndGoFeedbackForm::WndMethod(TWndMessage& message) {
  if (message.Msg == kFadeOutMessage) {
    FFadeoutFloatAnimation->Stop();
    // Both writes go to the start value: what remains is the wait until the form hides.
    FFadeoutFloatAnimation->StartValue = 1.0f;
    FFadeoutFloatAnimation->StartValue = 0;
    FFadeoutFloatAnimation->Start();
    return;
  }
  DefaultHandler(message);
}

}  // namespace qx
