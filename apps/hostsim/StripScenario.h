#pragma once

// The tab strip in a simulated browser: the fake host with its tabs, their thumbnails in
// the module's cache folder and a main window; the module reached through its exports
// only. Runs on the window system of this process (emulated or Win32), on its clock.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CabinetBarStep.h"
#include "ModuleLoader.h"
#include "fakehost/FakeHost.h"
#include "toolkit/Bitmap.h"

namespace qx {

inline constexpr int kHostWidth = 960;
inline constexpr int kHostHeight = 200;
inline constexpr int kStripTop = 28;
inline constexpr int kStripHeight = 53;
inline constexpr int kThumbnailWidth = 192;
inline constexpr int kThumbnailHeight = 94;

class TStripScenario {
 public:
  // root: a folder of the run's own for the host's directories; skinRoot: the default skin.
  TStripScenario(TFakeHost& host, std::filesystem::path root, const std::filesystem::path& skinRoot);
  ~TStripScenario();
  TStripScenario(const TStripScenario&) = delete;
  TStripScenario& operator=(const TStripScenario&) = delete;

  // Two groups; the first, shown, has pages 1 to 5 in two sections, page 1 active; the
  // second has pages 7 and 8. Every page's thumbnail goes into the cache folder, and so
  // does that of page 6, which AddTab opens later.
  void PrepareHost();
  // QxGetPlugin for the tab strip, registered with the host, then CreateControl with the
  // main window as parent; the control's window is placed under the title band.
  HResult CreateStrip(TModuleLoader& loader);
  // DestroyControl, then the host forgets and releases the plug-in.
  void DestroyStrip();

  void SelectPage(int number);
  // Opens page 6 at the end of the shown group's last section and selects it.
  void AddPage();
  // The engine reports a thumbnail of every tab of the shown group; the strip asks each
  // tab's browser for a snapshot, which the fake engine paints per page.
  void FreshThumbnails();
  // Opens pages first..last behind the others in the last section, thumbnails cached.
  void AddPages(int first, int last);
  // The host closes the tab of a page.
  void ClosePage(int number);
  // The host shows its group of this index, in the order the groups were made.
  void SwitchGroup(int index);
  // The host enters or leaves its cabinet screen.
  void SetInCabinet(bool in);
  // The centre of a page's tab in the main window's client pixels, as the strip shows it now.
  std::optional<TPoint> TabCentreOfPage(int number) const;
  // Lets milliseconds pass with timers and animations running, then paints the strip.
  void Settle(std::uint32_t milliseconds);
  // The host window as shown, from the window system's pixels.
  std::unique_ptr<TBitmap> Capture();

  TFakeHost& Host() const { return FHost; }
  HWnd MainWindow() const { return FMainWindow; }
  HWnd ControlWindow() const { return FControlWindow; }
  HWnd CabinetBarWindow() const { return FCabinetBar.Window(); }
  IUnknown* StripPlugin() const { return FPlugin.get(); }
  std::filesystem::path ThumbnailFolder() const;
  // The host's temporary folder, where its pages keep their files.
  std::filesystem::path TempFolder() const { return FRoot / "user/temp"; }
  std::u16string GuidOfPage(int number) const;
  int ActivePage() const;

 private:
  void PaintHostWindow();

  TFakeHost& FHost;
  std::filesystem::path FRoot;
  HWnd FMainWindow = nullptr;
  HWnd FControlWindow = nullptr;
  ComPtr<IUnknown> FPlugin;
  ComPtr<IQxIControl> FControl;
  // The cabinet bar above the strip, made with it and gone with it.
  TCabinetBarStep FCabinetBar{FHost};
};

}  // namespace qx
