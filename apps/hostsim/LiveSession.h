#pragma once

// The simulated browser behind the live window: the fake host with the strip, driven by
// SDL events, its clock moved on by the time that really passed, its steps recorded.

#include <SDL.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "LiveInput.h"
#include "LiveKeys.h"
#include "LiveRecorder.h"
#include "StripScenario.h"

namespace qx {

struct TLiveOptions {
  // Tabs of the shown group at the start; fewer than the host's own five leaves those.
  int Tabs = 0;
  // Where a recording goes; with a file given, recording starts at once.
  std::filesystem::path RecordFile;
  std::filesystem::path OutDir = "hostsim-out";
  std::filesystem::path SkinDir;
};

class TLiveSession {
 public:
  TLiveSession(TModuleLoader& loader, TLiveOptions options);
  ~TLiveSession();
  TLiveSession(const TLiveSession&) = delete;
  TLiveSession& operator=(const TLiveSession&) = delete;

  // Prepares the host, creates the strip, opens the tabs asked for; false when the
  // strip's control was not made.
  bool Start();
  // One SDL event at the present clock time; false when the person asked to quit.
  bool Handle(const SDL_Event& event);
  // Lets milliseconds pass with timers and animations running, then paints.
  void Advance(std::uint64_t milliseconds);
  // The host window as shown: its children and popups at their places.
  std::unique_ptr<TBitmap> Picture() const;
  // Ends a recording that is still running and writes it.
  void Finish();

  TStripScenario& Scenario() { return FScenario; }
  const TLiveRecorder& Recorder() const { return FRecorder; }
  std::filesystem::path RecordFile() const;
  int Width() const { return kHostWidth; }
  int Height() const { return kHostHeight; }

 private:
  void Play(const TLiveStep& step);
  void ToggleRecording();
  void CapturePicture();

  TModuleLoader& FLoader;
  TLiveOptions FOptions;
  TFakeHost FHost;
  TStripScenario FScenario;
  std::unique_ptr<TLiveInput> FInput;
  std::unique_ptr<TLiveKeys> FKeys;
  TLiveRecorder FRecorder{"recorded in the live window"};
  // The host steps since the start, so a recording begun later rebuilds the session.
  std::vector<TLiveStep> FHistory;
  int FPictures = 0;
};

}  // namespace qx
