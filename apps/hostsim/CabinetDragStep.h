#pragma once

// Drags on the simulated cabinet page: the pointer goes where the page says it is, the
// drag's pictures and the page's shadow pictures are written where the page would keep
// them, and the page's report is raised on the host as the page raises it.

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "ScenarioFile.h"
#include "StripScenario.h"

namespace qx {

// Where the simulated page lays out what is dragged: its top picture's size, and how far
// each picture behind it stands higher and narrower.
inline constexpr int kDragPictureWidth = 208;
inline constexpr int kDragPictureHeight = 156;
inline constexpr int kDragStackRise = 7;
inline constexpr int kDragStackNarrowing = 16;

// The report's "drag-info" text for a step whose pointer is at pointer (main-window pixels);
// pictureFolder holds the drag's pictures as page-<n>.png.
std::u16string CabinetDragInfo(const TCabinetDragArgs& drag, TPoint pointer, TPoint screenPointer,
                               const std::filesystem::path& pictureFolder);

class TCabinetDragStep {
 public:
  TCabinetDragStep(TStripScenario& scenario, std::filesystem::path pictureFolder, std::FILE* log)
      : FScenario(scenario), FPictureFolder(std::move(pictureFolder)), FLog(log) {}

  // pointer: the step's point in the main window; none for "hide".
  void Run(const TCabinetDragArgs& drag, std::optional<TPoint> pointer);

 private:
  void WritePictures(const TCabinetDragArgs& drag);
  // What the strip asked of the page meanwhile, in the log.
  void LogRequestsSince(std::size_t eventCount);

  TStripScenario& FScenario;
  std::filesystem::path FPictureFolder;
  std::FILE* FLog;
  bool FShadowsWritten = false;
};

}  // namespace qx
