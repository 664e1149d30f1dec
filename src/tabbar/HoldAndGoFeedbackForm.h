#pragma once

// The icon that drops in, bounces and fades where the host's hold-and-go
// gesture began.

#include "base/ComPtr.h"
#include "host/ServiceCoreWrapIntf.h"
#include "resources/BaseFormXE7.h"
#include "resources/TabbarImageRes.h"
#include "toolkit/Animation.h"
#include "toolkit/Image.h"
#include "toolkit/Timer.h"

namespace qx {

class THoldAndGoFeedbackForm : public TBaseFormXE7 {
 public:
  static constexpr int kSize = 64;
  // Posted by the host when the gesture is cut short: the icon fades at once.
  static constexpr std::uint32_t kFadeOutMessage = 0x8071;

  THoldAndGoFeedbackForm(TFmxObject* owner, IServiceCoreWrap* serviceCore, TTabbarImageRes* imageRes,
                         HWnd parentHandle);
  std::string ClassName() const override { return "THoldAndGoFeedbackForm"; }

  // Point: screen pixels of the parent window.
  void StartHoldAndGo(TPoint point);
  float YPositionOffset() const { return FYPositionOffset; }
  void SetYPositionOffset(float value);
  TPoint Origin() const { return FOrigin; }
  TImage* Image() const { return FImage; }
  TTimer* tmStart() const { return FtmStart; }
  TFloatAnimation* Animation(int index) const { return FAnimations[index]; }
  TFloatAnimation* FadeoutFloatAnimation() const { return FFadeoutFloatAnimation; }

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  void HandleCreated() override;
  void WndMethod(TWndMessage& message) override;

 private:
  void tmStartTimer();

  TTabbarImageRes* FImageRes = nullptr;
  ComPtr<IServiceCoreWrap> FServiceCore;
  HWnd FParentHandle = nullptr;
  TPoint FOrigin{0, 0};
  float FYPositionOffset = 0;
  TImage* FImage = nullptr;
  TFloatAnimation* FFadeoutFloatAnimation = nullptr;
  TTimer* FtmStart = nullptr;
  TFloatAnimation* FAnimations[4] = {};
};

}  // namespace qx
