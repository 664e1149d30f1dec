#include "WindowCapture.h"

#include <vector>

#include "platform/portable/PortableOs.h"
#include "toolkit/Canvas.h"

namespace qx {
namespace {

void CopyPixels(const TWindowPixels& pixels, TBitmap& target) {
  const int width = std::min(pixels.width, target.Width());
  const int height = std::min(pixels.height, target.Height());
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      target.Bits()[static_cast<std::size_t>(y) * static_cast<std::size_t>(target.Width()) +
                    static_cast<std::size_t>(x)] =
          pixels.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels.width) +
                        static_cast<std::size_t>(x)];
}

// Children front to back, as the system keeps them.
std::vector<HWnd> Children(HWnd window) {
  std::vector<HWnd> children;
  IPlatform& os = Platform();
  for (HWnd child = os.GetWindow(window, win::GW_CHILD); child; child = os.GetWindow(child, win::GW_HWNDNEXT))
    children.push_back(child);
  return children;
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
  const std::vector<HWnd> children = Children(window);
  TCanvas& canvas = picture->Canvas();
  for (auto it = children.rbegin(); it != children.rend(); ++it) {
    if (!os.IsWindowVisible(*it)) continue;
    TRect rect{};
    if (!os.GetWindowRect(*it, &rect)) continue;
    TPoint origin{rect.Left, rect.Top};
    os.ScreenToClient(window, &origin);
    // A child that never painted shows as transparent, not as a black hole.
    std::unique_ptr<TBitmap> child = CaptureWindow(*it, 0x00000000u);
    if (!child) continue;
    const auto w = static_cast<float>(child->Width()), h = static_cast<float>(child->Height());
    const auto x = static_cast<float>(origin.X), y = static_cast<float>(origin.Y);
    canvas.BeginScene();
    canvas.DrawBitmap(*child, TRectF(0, 0, w, h), TRectF(x, y, x + w, y + h), 1, true);
    canvas.EndScene();
  }
  return picture;
}

}  // namespace qx
