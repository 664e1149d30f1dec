#include "LiveInput.h"

#include <algorithm>
#include <cmath>

namespace qx {

// No clock time between events: the live window lets real time pass between frames.
TLiveInput::TLiveInput(HWnd mainWindow, HWnd touchWindow, int width, int height)
    : FMainWindow(mainWindow), FHands(touchWindow, 0), FWidth(width), FHeight(height) {}

TPoint TLiveInput::FingerPoint(float x, float y) const {
  const auto px = static_cast<int>(std::lround(x * static_cast<float>(FWidth)));
  const auto py = static_cast<int>(std::lround(y * static_cast<float>(FHeight)));
  return {std::clamp(px, 0, std::max(0, FWidth - 1)), std::clamp(py, 0, std::max(0, FHeight - 1))};
}

std::optional<TLiveStep> TLiveInput::Map(const SDL_Event& event) {
  TLiveStep step;
  switch (event.type) {
    case SDL_MOUSEMOTION:
      if (event.motion.which == SDL_TOUCH_MOUSEID) return std::nullopt;
      step.Kind = TLiveStepKind::Move;
      step.At = {event.motion.x, event.motion.y};
      return step;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      if (event.button.which == SDL_TOUCH_MOUSEID || event.button.button != SDL_BUTTON_LEFT)
        return std::nullopt;
      step.Kind = event.type == SDL_MOUSEBUTTONDOWN ? TLiveStepKind::Press : TLiveStepKind::Release;
      step.At = {event.button.x, event.button.y};
      return step;
    case SDL_MOUSEWHEEL: {
      if (event.wheel.which == SDL_TOUCH_MOUSEID || event.wheel.y == 0) return std::nullopt;
      step.Kind = TLiveStepKind::Wheel;
      step.At = {event.wheel.mouseX, event.wheel.mouseY};
      step.Notches = event.wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -event.wheel.y : event.wheel.y;
      return step;
    }
    case SDL_FINGERDOWN:
      if (FFinger) return std::nullopt;
      FFinger = event.tfinger.fingerId;
      step.Kind = TLiveStepKind::TouchDown;
      step.At = FingerPoint(event.tfinger.x, event.tfinger.y);
      return step;
    case SDL_FINGERMOTION:
    case SDL_FINGERUP:
      if (!FFinger || *FFinger != event.tfinger.fingerId) return std::nullopt;
      if (event.type == SDL_FINGERUP) FFinger.reset();
      step.Kind = event.type == SDL_FINGERUP ? TLiveStepKind::TouchUp : TLiveStepKind::TouchMove;
      step.At = FingerPoint(event.tfinger.x, event.tfinger.y);
      return step;
    default:
      return std::nullopt;
  }
}

TPoint TLiveInput::ToScreen(TPoint client) const {
  Platform().ClientToScreen(FMainWindow, &client);
  return client;
}

void TLiveInput::Apply(const TLiveStep& step) {
  const TPoint screen = ToScreen(step.At);
  switch (step.Kind) {
    case TLiveStepKind::Move:
      FHands.MoveTo(screen);
      break;
    case TLiveStepKind::Press:
      FHands.Press(screen);
      break;
    case TLiveStepKind::Release:
      FHands.Release(screen);
      break;
    case TLiveStepKind::Wheel:
      FHands.Wheel(screen, step.Notches);
      break;
    case TLiveStepKind::TouchDown:
      FHands.TouchDown(screen);
      break;
    case TLiveStepKind::TouchMove:
      FHands.TouchMove(screen);
      break;
    case TLiveStepKind::TouchUp:
      FHands.TouchUp(screen);
      break;
    default:
      break;
  }
}

}  // namespace qx
