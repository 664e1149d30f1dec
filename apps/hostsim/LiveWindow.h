#pragma once

// The host's main window on the real display: what the emulated window system shows
// (the window, its children, popups at their places) drawn at the display's rate, with
// the person's input fed back to it and the emulated clock moved on in real time.

#include <SDL.h>

#include <cstdint>
#include <functional>
#include <string>

#include "LiveSession.h"

namespace qx {

// Milliseconds from any fixed start: real in the simulator, stepped in tests.
using TLiveClock = std::function<std::uint64_t()>;

class TLiveWindow {
 public:
  TLiveWindow(TLiveSession& session, TLiveClock clock);
  ~TLiveWindow();
  TLiveWindow(const TLiveWindow&) = delete;
  TLiveWindow& operator=(const TLiveWindow&) = delete;

  // SDL's video, a window of the host window's size, a renderer; false with error set.
  bool Open(std::string& error);
  // Takes the queued events, lets the time since the last frame pass, draws; false
  // when the person asked to quit.
  bool Frame();
  // Frames at the display's rate until the person quits.
  void Run();

 private:
  void Draw();
  void ShowTitle();

  TLiveSession& FSession;
  TLiveClock FClock;
  std::uint64_t FLastFrame = 0;
  SDL_Window* FWindow = nullptr;
  SDL_Renderer* FRenderer = nullptr;
  SDL_Texture* FTexture = nullptr;
  bool FVsync = false;
  bool FSdl = false;
  bool FRecordingShown = false;
};

// The live window over a fresh session; -1 when there is no display to show it on, so
// the caller runs headless instead.
int RunLiveWindow(TModuleLoader& loader, const TLiveOptions& options);

}  // namespace qx
