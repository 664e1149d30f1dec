#pragma once

// What a person did in the live window, in the words of a scenario file: pointer and
// touch input at pixels of the host's main window, and the host actions the keys take.
// The live window plays each step and the recorder writes it down.

#include <cstdint>
#include <string>

#include "platform/Platform.h"

namespace qx {

enum class TLiveStepKind {
  PrepareHost,
  CreateStrip,
  Move,
  Press,
  Release,
  Wheel,
  TouchDown,
  TouchMove,
  TouchUp,
  AddPages,
  Select,
  Close,
  SwitchGroup,
  OpenCabinet,
  CloseCabinet,
  SelectText,
  Wait,
  Capture,
};

struct TLiveStep {
  TLiveStepKind Kind = TLiveStepKind::Move;
  // Pixels of the host's main window, origin at its top-left.
  TPoint At{};
  int Notches = 0;
  // AddPages: first..last; Select, Close: the page; SwitchGroup: the group index.
  int First = 0;
  int Last = 0;
  int Page = 0;
  int Group = 0;
  std::uint64_t Ms = 0;
  // SelectText: the selected text; Capture: the picture's name.
  std::string Text;
};

// The step's name in a scenario file.
const char* StepName(TLiveStepKind kind);
bool IsPointerStep(TLiveStepKind kind);

}  // namespace qx
