#pragma once

// The cabinet bar's native window: the background and the icon frame, kept in the
// same horizontal coordinates as the strip's scroll box.

#include <cstdint>
#include <string>

#include "base/ComPtr.h"
#include "host/ServiceCoreWrapIntf.h"
#include "platform/Platform.h"
#include "resources/BaseFormXE7.h"
#include "toolkit/Image.h"

namespace qx {

class TCabinetIconBarFrame;
class TCabinetIconBarImageRes;

class TCabinetIconBarForm : public TBaseFormXE7 {
 public:
  TCabinetIconBarForm(TFmxObject* owner, TCabinetIconBarImageRes* imageRes, IServiceCoreWrap* serviceCore,
                      HWnd clientWindowHandle);
  ~TCabinetIconBarForm() override;
  std::string ClassName() const override { return "TCabinetIconBarForm"; }

  TCabinetIconBarFrame* CabinetIconBarFrame() const { return FCabinetIconBarFrame; }
  TImage* BackGroundImage() const { return FBackGroundImage; }

  void FormResize();
  void NotifyScrollBoxRect(const TRectF& rect);
  void ChangeActiveState(bool active);
  TRectF GetChildFrameRect() const;

 protected:
  void Resize() override;

 private:
  void FormCreate();
  void UpdateFrameWidth(float screenLeft, float width);

  TCabinetIconBarImageRes* FImageRes = nullptr;
  ComPtr<IServiceCoreWrap> FServiceCore;
  HWnd FClientWindowHandle = nullptr;
  TCabinetIconBarFrame* FCabinetIconBarFrame = nullptr;
  ComPtr<IQxIEventListener> FPreviewStripUpdateContentWidthEventListener;
  TBitmap* FBackImage = nullptr;
  TBitmap* FBackImage_Inactive = nullptr;
  TImage* FBackGroundImage = nullptr;
};

}  // namespace qx
