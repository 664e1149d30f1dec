#pragma once

// The cabinet bar's control in the simulated browser: made through the module's exports
// like the strip's, registered with the host's plug-in service so the two find each
// other, and placed in the band right above the strip.

#include "ModuleLoader.h"
#include "fakehost/FakeHost.h"

namespace qx {

inline constexpr int kCabinetBarHeight = 24;
inline constexpr int kFaviconSize = 16;

class TCabinetBarStep {
 public:
  explicit TCabinetBarStep(TFakeHost& host) : FHost(host) {}
  ~TCabinetBarStep() { Destroy(); }
  TCabinetBarStep(const TCabinetBarStep&) = delete;
  TCabinetBarStep& operator=(const TCabinetBarStep&) = delete;

  // The bar shows a run only with its site's icon: the default icon in the host's
  // favicon store, and each page's site its own as the page is opened, the hue of its page.
  void StoreDefaultIcon();
  void StoreSiteIcon(int page);
  // QxGetPlugin for the bar, then CreateControl in mainWindow; the control's window
  // covers the full client width, its bottom on stripTop.
  HResult Create(TModuleLoader& loader, HWnd mainWindow, int stripTop);
  // DestroyControl, then the host forgets and releases the plug-in.
  void Destroy();
  // Paints what the bar invalidated.
  void Update();

  HWnd Window() const { return FWindow; }

 private:
  TFakeHost& FHost;
  HWnd FWindow = nullptr;
  ComPtr<IUnknown> FPlugin;
  ComPtr<IQxIControl> FControl;
};

}  // namespace qx
