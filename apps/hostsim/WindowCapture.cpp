#include "WindowCapture.h"

#include <algorithm>
#include <vector>

#include "platform/portable/PortableOs.h"
#include "toolkit/Canvas.h"

namespace qx {
namespace {

void CopyPixels(const TWindowPixels& pixels, TBitmap& target) {
  const int width = std::min(pixels.width, target.Width());
  const int height = std::min(pixels.height, target.Height());
  // Row by row: the live window copies every window's pixels each frame.
  std::uint32_t* bits = target.Bits();
  for (int y = 0; y < height; ++y)
    std::copy_n(pixels.pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels.width),
                width, bits + static_cast<std::size_t>(y) * static_cast<std::size_t>(target.Width()));
}

// Children front to back, as the system keeps them.
std::vector<HWnd> Children(HWnd window) {
  std::vector<HWnd> children;
  IPlatform& os = Platform();
  for (HWnd child = os.GetWindow(window, win::GW_CHILD); child; child = os.GetWindow(child, win::GW_HWNDNEXT))
    children.push_back(child);
  return children;
}

// Top-level windows in front of window, front first: the popups over it.
std::vector<HWnd> TopLevelsInFront(HWnd window) {
  struct TWalk {
    HWnd Window;
    std::vector<HWnd> Found;
    bool Reached = false;
  } walk{window, {}};
  Platform().EnumWindows(
      [](HWnd hwnd, LParam data) -> std::int32_t {
        auto& w = *reinterpret_cast<TWalk*>(data);
        if (hwnd == w.Window) {
          w.Reached = true;
          return 0;
        }
        if (Platform().IsWindowVisible(hwnd)) w.Found.push_back(hwnd);
        return 1;
      },
      reinterpret_cast<LParam>(&walk));
  return walk.Reached ? walk.Found : std::vector<HWnd>{};
}

void DrawWindowAt(TBitmap& picture, HWnd window, HWnd onto, TAlphaColor background);

void DrawWindows(TBitmap& picture, const std::vector<HWnd>& frontFirst, HWnd onto) {
  for (auto it = frontFirst.rbegin(); it != frontFirst.rend(); ++it)
    if (Platform().IsWindowVisible(*it)) DrawWindowAt(picture, *it, onto, 0x00000000u);
}

}  // namespace

std::unique_ptr<TBitmap> CaptureWindow(HWnd window, TAlphaColor background) {
  IPlatform& os = Platform();
  TRect client{};
  if (!os.IsWindow(window) || !os.GetClientRect(window, &client)) return nullptr;
  auto picture = std::make_unique<TBitmap>(std::max(1, client.Width()), std::max(1, client.Height()));
  picture->Clear(background);
  TWindowPixels pixels;
  if (PortableOs().ReadWindowPixels(window, &pixels) && pixels.width > 0 && pixels.height > 0)
    CopyPixels(pixels, *picture);
  DrawWindows(*picture, Children(window), window);
  // Popups are windows of their own: as a person sees them, over the window at their screen place.
  if (!os.GetParent(window)) DrawWindows(*picture, TopLevelsInFront(window), window);
  return picture;
}

namespace {

void DrawWindowAt(TBitmap& picture, HWnd window, HWnd onto, TAlphaColor background) {
  IPlatform& os = Platform();
  TRect rect{};
  if (!os.GetWindowRect(window, &rect)) return;
  TPoint origin{rect.Left, rect.Top};
  os.ScreenToClient(onto, &origin);
  // A window that never painted shows as transparent, not as a black hole.
  std::unique_ptr<TBitmap> part = CaptureWindow(window, background);
  if (!part) return;
  const auto w = static_cast<float>(part->Width()), h = static_cast<float>(part->Height());
  const auto x = static_cast<float>(origin.X), y = static_cast<float>(origin.Y);
  TCanvas& canvas = picture.Canvas();
  canvas.BeginScene();
  canvas.DrawBitmap(*part, TRectF(0, 0, w, h), TRectF(x, y, x + w, y + h), 1, true);
  canvas.EndScene();
}

}  // namespace

}  // namespace qx
