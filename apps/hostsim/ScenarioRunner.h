#pragma once

// Plays a scenario file's steps on the simulated browser: host actions on the fake host,
// input through the window system, time on its clock, and pictures of the host window
// written as PNG frames, a contact sheet and an animated PNG in the output folder.

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "CabinetDragStep.h"
#include "InputSteps.h"
#include "ModuleLoader.h"
#include "ScenarioFile.h"
#include "StripScenario.h"
#include "toolkit/Bitmap.h"

namespace qx {

struct TCapturedPicture {
  std::string Name;
  std::string Golden;  // as the file gives it: relative to the scenario file
  std::filesystem::path File;
  std::unique_ptr<TBitmap> Picture;
};

struct TScenarioReport {
  HResult CreateResult = 0;
  bool StripCreated = false;
  std::vector<TCapturedPicture> Captures;
  std::filesystem::path ContactSheet;
  std::filesystem::path Animation;
};

class TScenarioRunner {
 public:
  // What the run does goes to log, with the path of every file it writes.
  TScenarioRunner(TStripScenario& scenario, TModuleLoader& loader, std::filesystem::path outDir,
                  std::FILE* log);

  // The steps are run as read: the file was checked whole before.
  TScenarioReport Play(const TScenario& scenario);

 private:
  void Run(const TScenarioStep& step, std::size_t index);
  void RunInput(const TScenarioStep& step, std::size_t index);
  void RunCabinetDrag(const TScenarioStep& step, std::size_t index);
  // The point in the main window; nullopt, logged, for a page the strip does not show.
  std::optional<TPoint> Resolve(const TScenarioPoint& point, std::size_t index);
  void Capture(const TScenarioStep& step);
  void WriteSummaryPictures();

  TStripScenario& FScenario;
  TModuleLoader& FLoader;
  std::filesystem::path FOutDir;
  std::FILE* FLog;
  std::unique_ptr<IScenarioHands> FHands;
  std::uint32_t FInputMs = kDefaultInputMs;
  bool FNoHandsReported = false;
  std::size_t FSearchesServed = 0;
  std::unique_ptr<TCabinetDragStep> FCabinetDrag;
  TScenarioReport FReport;
};

}  // namespace qx
