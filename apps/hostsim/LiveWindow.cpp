#include "LiveWindow.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "LiveKeys.h"

namespace qx {
namespace {

// A frame after a stall (a debugger, a slow step) does not let the animations jump.
constexpr std::uint64_t kLongestFrameMs = 250;

bool DisplayNamed() {
  return std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY") || std::getenv("SDL_VIDEODRIVER");
}

}  // namespace

TLiveWindow::TLiveWindow(TLiveSession& session, TLiveClock clock)
    : FSession(session), FClock(std::move(clock)) {}

TLiveWindow::~TLiveWindow() {
  if (FTexture) SDL_DestroyTexture(FTexture);
  if (FRenderer) SDL_DestroyRenderer(FRenderer);
  if (FWindow) SDL_DestroyWindow(FWindow);
  if (FSdl) SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

bool TLiveWindow::Open(std::string& error) {
  if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
    error = SDL_GetError();
    return false;
  }
  FSdl = true;
  FWindow = SDL_CreateWindow("hostsim", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, FSession.Width(),
                             FSession.Height(), 0);
  if (FWindow) FRenderer = SDL_CreateRenderer(FWindow, -1, SDL_RENDERER_PRESENTVSYNC);
  if (FWindow && !FRenderer) FRenderer = SDL_CreateRenderer(FWindow, -1, SDL_RENDERER_SOFTWARE);
  if (FRenderer)
    FTexture = SDL_CreateTexture(FRenderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STREAMING,
                                 FSession.Width(), FSession.Height());
  if (!FTexture) {
    error = SDL_GetError();
    return false;
  }
  SDL_RendererInfo info{};
  FVsync = SDL_GetRendererInfo(FRenderer, &info) == 0 && (info.flags & SDL_RENDERER_PRESENTVSYNC);
  FLastFrame = FClock();
  ShowTitle();
  return true;
}

void TLiveWindow::ShowTitle() {
  FRecordingShown = FSession.Recorder().Recording();
  const std::string title =
      std::string(FRecordingShown ? "hostsim (recording) - " : "hostsim - ") + kLiveKeysHelp;
  SDL_SetWindowTitle(FWindow, title.c_str());
}

bool TLiveWindow::Frame() {
  SDL_Event event;
  while (SDL_PollEvent(&event))
    if (!FSession.Handle(event)) return false;
  const std::uint64_t now = FClock();
  FSession.Advance(std::min(now - FLastFrame, kLongestFrameMs));
  FLastFrame = now;
  if (FRecordingShown != FSession.Recorder().Recording()) ShowTitle();
  Draw();
  return true;
}

void TLiveWindow::Draw() {
  std::unique_ptr<TBitmap> picture = FSession.Picture();
  if (!picture) return;
  SDL_UpdateTexture(FTexture, nullptr, picture->Bits(), picture->Width() * 4);
  SDL_RenderClear(FRenderer);
  SDL_RenderCopy(FRenderer, FTexture, nullptr, nullptr);
  SDL_RenderPresent(FRenderer);
}

void TLiveWindow::Run() {
  SDL_DisplayMode mode{};
  const int rate =
      SDL_GetCurrentDisplayMode(SDL_GetWindowDisplayIndex(FWindow), &mode) == 0 && mode.refresh_rate > 0
          ? mode.refresh_rate
          : 60;
  const std::uint64_t interval = 1000 / static_cast<std::uint64_t>(rate);
  std::uint64_t frames = 0, busy = 0, slowest = 0;
  for (;;) {
    const std::uint64_t start = SDL_GetTicks64();
    if (!Frame()) break;
    const std::uint64_t took = SDL_GetTicks64() - start;
    ++frames;
    busy += took;
    slowest = std::max(slowest, took);
    // Without vsync the renderer does not wait for the display; the loop does.
    if (!FVsync && took < interval) SDL_Delay(static_cast<std::uint32_t>(interval - took));
  }
  // How responsive the window was (with vsync a frame includes its wait for the display).
  if (frames)
    std::printf("live window: %llu frames, %llu ms of work each on average, %llu ms at most\n",
                static_cast<unsigned long long>(frames), static_cast<unsigned long long>(busy / frames),
                static_cast<unsigned long long>(slowest));
}

int RunLiveWindow(TModuleLoader& loader, const TLiveOptions& options) {
  if (!DisplayNamed()) {
    std::printf("live window: no display (neither DISPLAY nor WAYLAND_DISPLAY is set)\n");
    return -1;
  }
  TLiveSession session(loader, options);
  TLiveWindow window(session, [] { return SDL_GetTicks64(); });
  std::string error;
  if (!window.Open(error)) {
    std::printf("live window: no display (%s)\n", error.c_str());
    return -1;
  }
  const std::uint64_t start = SDL_GetTicks64();
  if (!session.Start()) {
    std::printf("live window: the strip's control was not created\n");
    return 1;
  }
  std::printf("live window: ready in %llu ms\n  %s\n",
              static_cast<unsigned long long>(SDL_GetTicks64() - start), kLiveKeysHelp);
  window.Run();
  session.Finish();
  return 0;
}

}  // namespace qx
