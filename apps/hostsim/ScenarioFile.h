#pragma once

// Scenario files: a JSON object with a one-line description and a list of steps, each
// an object naming what to do ("do") and its arguments. The whole file is checked before
// any step runs; a bad one gives one error with the line and column where it stands.
// The format is documented in scenarios/README.md.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

namespace qx {

enum class TStepKind : std::uint8_t {
  PrepareHost,
  CreateStrip,
  DestroyStrip,
  Select,
  AddPage,
  AddPages,
  Close,
  FreshThumbnails,
  SwitchGroup,
  OpenCabinet,
  CloseCabinet,
  CabinetDrag,
  SelectText,
  Move,
  Glide,
  Press,
  Release,
  Wheel,
  TouchDown,
  TouchMove,
  TouchUp,
  Swipe,
  Wait,
  Capture,
};

// A point in the host's main window, or the centre of a page's tab where the strip shows
// it when the step runs.
struct TScenarioPoint {
  TPoint At{};
  int Page = 0;  // not zero: the tab of this page
};

inline constexpr int kDefaultStride = 12;

// A drag on the cabinet page as the page reports it; the pointer is the step's point.
struct TCabinetDragArgs {
  std::string Event;             // "dragstart", "drag", "drop", "dragend" or "hide"
  bool HasPointer = false;       // "hide" may go without a point
  std::optional<TPoint> Offset;  // the grip from the top picture's corner; its centre if not given
  std::u16string Source = u"opentabs";
  std::u16string Dest = u"none";  // no target of a type of its own
  std::u16string Id;
  bool Cancel = false;
  std::vector<int> ImagePages;  // the pictures of the drag, top first: these pages
};

struct TScenarioStep {
  TStepKind Kind{};
  std::string Name;  // as the file spells it
  std::int32_t Line = 0;
  std::int32_t Column = 0;
  TScenarioPoint Point;  // the input steps but swipe; cabinet-drag
  TPoint From{}, To{};   // swipe
  int Stride = kDefaultStride;
  int Notches = 0;
  int Page = 0;  // select, close
  int First = 0, Last = 0;
  int Group = 0;
  std::uint32_t Milliseconds = 0;
  std::u16string Text;  // select-text
  std::string CaptureName, Caption, Golden;
  TCabinetDragArgs CabinetDrag;
};

inline constexpr std::uint32_t kDefaultInputMs = 16;

struct TScenario {
  std::string Description;
  // Clock time each input event lets pass; a recording carries its time in waits and says 0.
  std::uint32_t InputMs = kDefaultInputMs;
  std::vector<TScenarioStep> Steps;
};

struct TScenarioRead {
  std::optional<TScenario> Scenario;
  // When there is no scenario: "line L column C: what is wrong".
  std::string Error;
  std::int32_t Line = 0;
  std::int32_t Column = 0;
};

TScenarioRead ReadScenario(std::string_view utf8Text);
// The error, if any, starts with the file's path.
TScenarioRead ReadScenarioFile(const std::filesystem::path& file);

}  // namespace qx
