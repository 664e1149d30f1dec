#pragma once

// The picture that shows under a tab being pulled down to close.

#include "resources/BaseFormXE7.h"
#include "resources/TabbarImageRes.h"
#include "toolkit/Image.h"

namespace qx {

class TFlickWipeFeedbackWindow : public TBaseFormXE7 {
 public:
  static constexpr int kWidth = 100, kHeight = 67;
  TFlickWipeFeedbackWindow(TFmxObject* owner, TTabbarImageRes* imageRes);
  std::string ClassName() const override { return "TFlickWipeFeedbackWindow"; }
  TImage* Image() const { return FImage; }

 private:
  TTabbarImageRes* FImageRes = nullptr;
  TImage* FImage = nullptr;
};

}  // namespace qx
