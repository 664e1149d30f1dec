#pragma once

// The cabinet bar's content: one icon per run of tabs of one domain, each over its
// tabs, moved in step with every layout pass of the strip.

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "base/ComPtr.h"
#include "cabinet/CabinetBarIconList.h"
#include "host/ServiceCoreWrapIntf.h"
#include "platform/Platform.h"
#include "resources/FaviconCache.h"
#include "tabview/PreviewStripIntf.h"
#include "toolkit/Frame.h"
#include "toolkit/Layout.h"

namespace qx {

class TCabinetIcon2;
class TCabinetIconBarForm;
class TCabinetIconBarImageRes;
class TTabImage;

class TCabinetIconBarFrame : public TFrame {
 public:
  static constexpr std::int32_t kFaviconSize = 12;

  TCabinetIconBarFrame(TFmxObject* owner, TCabinetIconBarImageRes* imageRes, IServiceCoreWrap* serviceCore,
                       HWnd clientWindowHandle, TCabinetIconBarForm* parentForm);
  ~TCabinetIconBarFrame() override;
  std::string ClassName() const override { return "TCabinetIconBarFrame"; }

  void layoutCabinetIcon(bool animated, float duration, std::int32_t animationType, TTabImage* dragTarget);
  void UpdateIcon(TTabImage* tab);
  bool ExistIcon(TTabImage* tab);
  bool MouseInCabinetBar();

  // The strip, through the host's plug-in service; asked again until found.
  IPreviewStrip* PreviewStrip();
  const TCabinetBarIconList& IconList() const { return *FIconList; }
  TLayout* IconLayout() const { return FIconLayout; }
  TFaviconCacheFMX& FaviconCache() { return *FFaviconCache; }
  const std::u16string& FontName() const { return FFontName; }
  std::int32_t FontSize() const { return FFontSize; }

 private:
  void InitializeEvents();
  void UnInitializeEvents();
  void InitFont();
  void SortZOrder();
  void ResolveOverlap(int pivot);
  void IconClick(TCabinetIcon2* icon);
  void FaviconCacheNotifyUpdate(const TString& uri, ISharedFMXBitmap* favicon);
  void IconLayoutMouseMove();
  TCabinetIcon2* MakeIcon(const std::u16string& id, IQxITab* tab, ISharedFMXBitmap* favicon);
  // The first step of a layout pass: the icons in tab order, each over its tab, one shown
  // per run; gives the frontmost.
  TCabinetIcon2* CollectIcons(TTabImage* dragTarget);
  void RefreshTitle(IQxICabinetManager* manager, TCabinetIcon2* icon);
  // The icon of a tab image: found by the image itself when it stood there in an earlier
  // pass, else by the tab's id, which is then left in id.
  TCabinetIcon2* KnownIcon(TTabImage* tab, std::u16string& id);
  void RememberImage(TCabinetIcon2* icon, TTabImage* tab);
  void ForgetImage(TCabinetIcon2* icon);

  TCabinetIconBarImageRes* FImageRes = nullptr;
  ComPtr<IServiceCoreWrap> FServiceCore;
  HWnd FClientWindowHandle = nullptr;
  ComPtr<IUnknown> FTabControl;
  ComPtr<IPreviewStrip> FPreviewStrip;
  ComPtr<IQxIEventListener> FPreviewStripChangedListener;
  ComPtr<IQxIEventListener> FCabinetDataManagerCabinetExitListener;
  std::unique_ptr<TCabinetBarIconList> FIconList;
  std::unique_ptr<TFaviconCacheFMX> FFaviconCache;
  bool FInitFont = false;
  std::u16string FFontName;
  std::int32_t FFontSize = 0;
  TCabinetIconBarForm* FParentForm = nullptr;
  TLayout* FIconLayout = nullptr;
  // Each icon by the tab image it stood over in the last pass that placed it.
  std::unordered_map<const TTabImage*, TCabinetIcon2*> FIconOfImage;
};

}  // namespace qx
