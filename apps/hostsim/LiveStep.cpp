#include "LiveStep.h"

namespace qx {

const char* StepName(TLiveStepKind kind) {
  switch (kind) {
    case TLiveStepKind::PrepareHost:
      return "prepare-host";
    case TLiveStepKind::CreateStrip:
      return "create-strip";
    case TLiveStepKind::Move:
      return "move";
    case TLiveStepKind::Press:
      return "press";
    case TLiveStepKind::Release:
      return "release";
    case TLiveStepKind::Wheel:
      return "wheel";
    case TLiveStepKind::TouchDown:
      return "touch-down";
    case TLiveStepKind::TouchMove:
      return "touch-move";
    case TLiveStepKind::TouchUp:
      return "touch-up";
    case TLiveStepKind::AddPages:
      return "add-pages";
    case TLiveStepKind::Select:
      return "select";
    case TLiveStepKind::Close:
      return "close";
    case TLiveStepKind::SwitchGroup:
      return "switch-group";
    case TLiveStepKind::OpenCabinet:
      return "open-cabinet";
    case TLiveStepKind::CloseCabinet:
      return "close-cabinet";
    case TLiveStepKind::SelectText:
      return "select-text";
    case TLiveStepKind::Wait:
      return "wait";
    case TLiveStepKind::Capture:
      return "capture";
  }
  return "";
}

bool IsPointerStep(TLiveStepKind kind) {
  return kind >= TLiveStepKind::Move && kind <= TLiveStepKind::TouchUp;
}

}  // namespace qx
