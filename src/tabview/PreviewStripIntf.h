#pragma once

// How the cabinet bar reaches the tab strip: in-process only, plain object references.

#include <string_view>

#include "base/Unknown.h"
#include "toolkit/Types.h"

namespace qx {

class TTabImageSectionList;
class TTabImage;

struct IPreviewStrip : IUnknown {
  static constexpr TGUID IID = MakeGuid("7BF6AB0E-9D28-4A7D-9B0A-D41DEBFAD63B");
  // Each is null-safe: without a frame, nil, all-zero or nothing.
  virtual TTabImageSectionList* GetTabList() = 0;
  virtual TTabImage* GetActiveTab() = 0;
  virtual void TabScrollBoxScreenRect(TRectF& rect) = 0;
  virtual void HideTitleForm(bool flag) = 0;
  // Where the strip shows the tab of a host tab, on the screen; false for no such tab. Last,
  // so the slots above stay where the cabinet bar calls them.
  virtual bool TabScreenRectOf(std::u16string_view tabGuid, TRectF& rect) = 0;
};

}  // namespace qx
