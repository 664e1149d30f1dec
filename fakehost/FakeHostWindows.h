#pragma once

#include "platform/Platform.h"

namespace qx {

class TFakeWindowService;

// The host's own top-level windows in the platform's window system: the main window
// (whose handle the window service then hands out) and the toolbar that full screen
// mode shows, found by class "FullscreenToolbar" and title "XmlWidgetWindow". Made only
// on request, because many tests need no window system at all.
class TFakeHostWindows {
 public:
  explicit TFakeHostWindows(TFakeWindowService& windows) : windows_(windows) {}
  ~TFakeHostWindows();
  TFakeHostWindows(const TFakeHostWindows&) = delete;
  TFakeHostWindows& operator=(const TFakeHostWindows&) = delete;

  HWnd CreateMainWindow(const TRect& rect);
  HWnd MainWindow() const { return main_; }
  // Full screen drops the caption and frame bits, as the host does.
  void SetFullscreen(bool on);
  HWnd ShowFullscreenToolbar(const TRect& rect);
  void HideFullscreenToolbar();

 private:
  TFakeWindowService& windows_;
  HWnd main_ = nullptr;
  HWnd toolbar_ = nullptr;
};

}  // namespace qx
