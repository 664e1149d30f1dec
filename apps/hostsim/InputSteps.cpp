#include "InputSteps.h"

#include <filesystem>

#include "InputPath.h"
#include "tabview/PreviewStripIntf.h"

namespace qx {
namespace {

// A browser always has its default icon; without one no title popup shows.
void GiveHostItsDefaultIcon(TFakeHost& host) {
  const std::filesystem::path file = host.Favicons().DefaultPath();
  if (std::filesystem::exists(file)) return;
  TBitmap icon(16, 16);
  icon.Clear(0xFF3A7BD5);
  std::error_code error;
  std::filesystem::create_directories(file.parent_path(), error);
  icon.SaveToFile(file.u16string());
}

}  // namespace

void PlayInputSteps(TStripScenario& scenario, const TSnap& snap) {
  ComPtr<IPreviewStrip> strip = ComPtr<IUnknown>(scenario.StripPlugin()).As<IPreviewStrip>();
  if (!strip) return;
  TRectF box{};
  strip->TabScrollBoxScreenRect(box);
  if (box.Right <= box.Left) return;
  const int top = static_cast<int>(box.Top), bottom = static_cast<int>(box.Bottom);
  const int left = static_cast<int>(box.Left), right = static_cast<int>(box.Right);
  const int middleY = (top + bottom) / 2;
  const int middleX = (left + right) / 2;
  TInputPath hands(scenario.ControlWindow());
  GiveHostItsDefaultIcon(scenario.Host());

  hands.MoveTo({left + 10, middleY});
  hands.Glide({middleX + 60, middleY});
  snap("hovered", "the pointer glides along the strip: the tab under it lifts, its title hangs under it");

  // A tab of the long second section, pulled to the left end: the strip scrolls until the
  // first section comes in, and the tab joins it there.
  hands.Press({middleX + 60, middleY});
  hands.Glide({left + 20, middleY}, 8);
  hands.Wait(1500);
  snap("dragging", "a tab of the second section held at the left end: the strip scrolls under it");
  // Back over the first tab, so the dragged one joins its section.
  hands.Glide({left + 90, middleY}, 8);
  hands.Release(hands.Last());
  hands.MoveTo({middleX, bottom + 60});
  snap("dropped", "the tab dropped into the first section");

  // A finger pulls the tab under it downward: the flick-wipe feedback shows; lifted, the tab closes.
  const TPoint flick{middleX + 40, middleY};
  hands.TouchDown(flick);
  hands.TouchMove({flick.X, flick.Y + 20});
  hands.TouchMove({flick.X, flick.Y + 40});
  snap("flicking", "a tab pulled downward by a finger: the flick-wipe feedback under it");
  hands.TouchUp({flick.X, flick.Y + 40});
  snap("flicked", "the finger lifted: the tab is closed");

  hands.Swipe({middleX + 150, middleY}, {middleX - 250, middleY}, 25);
  snap("swiped", "a finger swipes the strip to the left: it scrolls on with inertia and comes to rest");
}

}  // namespace qx
