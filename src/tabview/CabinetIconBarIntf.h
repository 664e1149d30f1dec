#pragma once

// How the tab strip reaches the cabinet icon bar; each call forwards to the bar's form
// and does nothing without one.

#include <cstdint>

#include "base/Unknown.h"
#include "tabview/PreviewStripIntf.h"

namespace qx {

struct ICabinetIconBar : IUnknown {
  static constexpr TGUID IID = MakeGuid("4A0F3061-066D-4007-BBDC-C831D8984873");
  virtual void UpdateIcon(TTabImage* tab) = 0;
  // Always false, whatever the form answers; callers compare against that constant.
  virtual bool ExistIcon(TTabImage* tab) = 0;
  virtual void layoutCabinetIcon(bool animated, float duration, std::int32_t animationType,
                                 TTabImage* dragTarget) = 0;
  virtual void ChangeActiveState(bool active) = 0;
  virtual void NotifyScrollBoxRect(const TRectF& rect) = 0;
  virtual void DebugPrintIconPosition() = 0;
  virtual bool MouseInCabinetBar() = 0;
};

}  // namespace qx
