#pragma once

// The live window's pointer, wheel and fingers, handed to the emulated window system the
// way the scenario's hands do it: SDL window pixels are the host main window's pixels.

#include <SDL.h>

#include <optional>

#include "InputPath.h"
#include "LiveStep.h"

namespace qx {

class TLiveInput {
 public:
  // mainWindow: the host window the SDL window shows; touchWindow: the one whose touch
  // messages the strip reads. width, height: the SDL window's size in pixels.
  TLiveInput(HWnd mainWindow, HWnd touchWindow, int width, int height);

  // The step an SDL event stands for; nullopt for events that are not pointer input,
  // for the mouse events SDL makes from touch (the finger's own steps make them) and for
  // fingers other than the first one down.
  std::optional<TLiveStep> Map(const SDL_Event& event);
  // Delivers a pointer step to the window under its point or the capture window.
  void Apply(const TLiveStep& step);

 private:
  TPoint FingerPoint(float x, float y) const;
  TPoint ToScreen(TPoint client) const;

  HWnd FMainWindow;
  TInputPath FHands;
  int FWidth;
  int FHeight;
  std::optional<SDL_FingerID> FFinger;
};

}  // namespace qx
