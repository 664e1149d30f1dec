#include "LiveSession.h"

#include <algorithm>
#include <cstdio>
#include <fstream>

#include "WindowCapture.h"
#include "platform/portable/PortableOs.h"

namespace qx {
namespace {

// The host's shown group starts with five pages; the others it knows run to page 8.
constexpr int kHostPages = 5;
constexpr int kFirstFreePage = 9;
// A recording begun later starts with the session rebuilt and come to rest.
constexpr std::uint64_t kSettleMs = 1000;

TLiveStep Step(TLiveStepKind kind) {
  TLiveStep step;
  step.Kind = kind;
  return step;
}

std::uint64_t Now() { return PortableOs().Now(); }

}  // namespace

TLiveSession::TLiveSession(TModuleLoader& loader, TLiveOptions options)
    : FLoader(loader),
      FOptions(std::move(options)),
      FScenario(FHost, std::filesystem::absolute(FOptions.OutDir) / "host", FOptions.SkinDir) {}

TLiveSession::~TLiveSession() { Finish(); }

std::filesystem::path TLiveSession::RecordFile() const {
  return FOptions.RecordFile.empty() ? FOptions.OutDir / "recording.json" : FOptions.RecordFile;
}

bool TLiveSession::Start() {
  FScenario.PrepareHost();
  FHistory.push_back(Step(TLiveStepKind::PrepareHost));
  FKeys = std::make_unique<TLiveKeys>(FScenario, kFirstFreePage);
  // A crowded session comes up as a browser restores one: the tabs are there before the strip.
  if (FOptions.Tabs > kHostPages) {
    TLiveStep add = Step(TLiveStepKind::AddPages);
    add.First = kFirstFreePage;
    add.Last = kFirstFreePage + FOptions.Tabs - kHostPages - 1;
    FKeys->Apply(add);
    FHistory.push_back(add);
  }
  if (Failed(FScenario.CreateStrip(FLoader)) || !FScenario.ControlWindow()) return false;
  FHistory.push_back(Step(TLiveStepKind::CreateStrip));
  FInput = std::make_unique<TLiveInput>(FScenario.MainWindow(), FScenario.ControlWindow(), Width(), Height());
  FScenario.Settle(0);
  if (!FOptions.RecordFile.empty()) FRecorder.Start(Now(), FHistory);
  return true;
}

void TLiveSession::Play(const TLiveStep& step) {
  if (IsPointerStep(step.Kind)) {
    FInput->Apply(step);
  } else if (step.Kind != TLiveStepKind::Capture) {
    FKeys->Apply(step);
    FHistory.push_back(step);
  }
  FRecorder.Add(step, Now());
}

bool TLiveSession::Handle(const SDL_Event& event) {
  if (!FInput) return event.type != SDL_QUIT;
  if (event.type == SDL_QUIT) return false;
  if (std::optional<TLiveStep> step = FInput->Map(event)) {
    Play(*step);
    return true;
  }
  if (event.type != SDL_KEYDOWN || event.key.repeat) return true;
  const TLiveKeyAction action = FKeys->Map(event.key.keysym.sym);
  for (const TLiveStep& step : action.Steps) Play(step);
  switch (action.Command) {
    case TLiveCommand::Quit:
      return false;
    case TLiveCommand::ToggleRecording:
      ToggleRecording();
      break;
    case TLiveCommand::Capture:
      CapturePicture();
      break;
    case TLiveCommand::None:
      break;
  }
  return true;
}

void TLiveSession::Advance(std::uint64_t milliseconds) {
  // The way a scenario's wait lets time pass, so a recorded wait replays this frame.
  FScenario.Settle(static_cast<std::uint32_t>(milliseconds));
}

std::unique_ptr<TBitmap> TLiveSession::Picture() const { return CaptureWindow(FScenario.MainWindow()); }

void TLiveSession::ToggleRecording() {
  if (FRecorder.Recording()) {
    Finish();
    return;
  }
  std::vector<TLiveStep> prelude = FHistory;
  TLiveStep settle = Step(TLiveStepKind::Wait);
  settle.Ms = kSettleMs;
  prelude.push_back(settle);
  FRecorder.Start(Now(), std::move(prelude));
  std::printf("recording\n");
}

void TLiveSession::Finish() {
  if (!FRecorder.Recording()) return;
  FRecorder.Stop(Now());
  const std::filesystem::path file = RecordFile();
  std::error_code error;
  if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path(), error);
  std::ofstream(file, std::ios::binary) << FRecorder.Text();
  std::printf("recording written: %s\n", file.string().c_str());
}

void TLiveSession::CapturePicture() {
  ++FPictures;
  TLiveStep capture = Step(TLiveStepKind::Capture);
  capture.Text = "picture-" + std::to_string(FPictures);
  Play(capture);
  std::error_code error;
  std::filesystem::create_directories(FOptions.OutDir, error);
  const std::filesystem::path file =
      FOptions.OutDir / (std::to_string(FPictures) + "-" + capture.Text + ".png");
  if (std::unique_ptr<TBitmap> picture = Picture()) picture->SaveToFile(file);
  std::printf("picture: %s\n", file.string().c_str());
}

}  // namespace qx
