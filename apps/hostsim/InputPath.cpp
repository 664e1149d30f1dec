#include "InputPath.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "platform/portable/PortableOs.h"

namespace qx {

TInputPath::TInputPath(HWnd window, std::uint32_t stepMs, TTabLocator locator)
    : FWindow(window), FStepMs(stepMs), FLocator(std::move(locator)) {}

void TInputPath::Wait(std::uint32_t milliseconds) {
  IPortableOs& os = PortableOs();
  for (std::uint32_t passed = 0; passed < milliseconds; passed += 10)
    os.AdvanceClock(std::min(10u, milliseconds - passed));
  os.ProcessMessages();
}

void TInputPath::Mouse(std::uint32_t msg, TPoint screen, WParam keys, LParam extraInfo) {
  PortableOs().InjectMouseAtScreen(msg, screen, keys, extraInfo);
  FLast = screen;
  Wait(FStepMs);
}

void TInputPath::MoveTo(TPoint screen) {
  Mouse(win::WM_MOUSEMOVE, screen, FButtonDown ? win::MK_LBUTTON : 0);
}

void TInputPath::Glide(TPoint to, int stride) {
  const TPoint from = FLast.X < 0 ? to : FLast;
  const int steps =
      std::max(1, std::max(std::abs(to.X - from.X), std::abs(to.Y - from.Y)) / std::max(1, stride));
  for (int i = 1; i <= steps; ++i)
    MoveTo({from.X + (to.X - from.X) * i / steps, from.Y + (to.Y - from.Y) * i / steps});
}

void TInputPath::Press(TPoint screen) {
  FButtonDown = true;
  Mouse(win::WM_LBUTTONDOWN, screen, win::MK_LBUTTON);
}

void TInputPath::Release(TPoint screen) {
  FButtonDown = false;
  Mouse(win::WM_LBUTTONUP, screen, 0);
}

void TInputPath::Drag(TPoint from, TPoint to, int stride) {
  Press(from);
  Glide(to, stride);
  Release(to);
}

void TInputPath::Wheel(TPoint screen, int notches) {
  const auto delta = static_cast<std::uint16_t>(static_cast<std::int16_t>(notches * 120));
  PortableOs().InjectMouseAtScreen(win::WM_MOUSEWHEEL, screen, static_cast<WParam>(delta) << 16);
  FLast = screen;
  Wait(FStepMs);
}

void TInputPath::Touch(std::uint32_t flags, TPoint screen) {
  TouchInput input;
  input.x = screen.X * 100;
  input.y = screen.Y * 100;
  input.dwID = 1;
  input.dwFlags = flags | win::TOUCHEVENTF_PRIMARY;
  PortableOs().InjectTouch(FWindow, std::vector<TouchInput>{input});
  // The system promotes the touch to mouse input, marked as made from touch.
  const std::uint32_t msg = (flags & win::TOUCHEVENTF_DOWN) ? win::WM_LBUTTONDOWN
                            : (flags & win::TOUCHEVENTF_UP) ? win::WM_LBUTTONUP
                                                            : win::WM_MOUSEMOVE;
  Mouse(msg, screen, (flags & win::TOUCHEVENTF_UP) ? 0 : win::MK_LBUTTON,
        static_cast<LParam>(win::MI_WP_TOUCH));
}

void TInputPath::TouchDown(TPoint screen) { Touch(win::TOUCHEVENTF_DOWN, screen); }
void TInputPath::TouchMove(TPoint screen) { Touch(win::TOUCHEVENTF_MOVE, screen); }
void TInputPath::TouchUp(TPoint screen) { Touch(win::TOUCHEVENTF_UP, screen); }

void TInputPath::Swipe(TPoint from, TPoint to, int stride) {
  TouchDown(from);
  const int steps =
      std::max(1, std::max(std::abs(to.X - from.X), std::abs(to.Y - from.Y)) / std::max(1, stride));
  for (int i = 1; i <= steps; ++i)
    TouchMove({from.X + (to.X - from.X) * i / steps, from.Y + (to.Y - from.Y) * i / steps});
  TouchUp(to);
}

std::optional<TPoint> TInputPath::Tab(int index) const { return FLocator ? FLocator(index) : std::nullopt; }

}  // namespace qx
