#include "ScenarioRunner.h"

#include <utility>

#include "ApngWriter.h"
#include "ContactSheet.h"
#include "SmartSearchStep.h"

namespace qx {

TScenarioRunner::TScenarioRunner(TStripScenario& scenario, TModuleLoader& loader,
                                 std::filesystem::path outDir, std::FILE* log)
    : FScenario(scenario), FLoader(loader), FOutDir(std::move(outDir)), FLog(log) {}

TScenarioReport TScenarioRunner::Play(const TScenario& scenario) {
  FReport = {};
  FInputMs = scenario.InputMs;
  FHands.reset();
  std::error_code error;
  std::filesystem::create_directories(FOutDir, error);
  if (!scenario.Description.empty()) std::fprintf(FLog, "scenario: %s\n", scenario.Description.c_str());
  for (std::size_t i = 0; i < scenario.Steps.size(); ++i) Run(scenario.Steps[i], i);
  WriteSummaryPictures();
  return std::move(FReport);
}

void TScenarioRunner::Run(const TScenarioStep& step, std::size_t index) {
  switch (step.Kind) {
    case TStepKind::PrepareHost:
      FScenario.PrepareHost();
      std::fprintf(
          FLog,
          "host: group \"Work\" with pages 1-3 | 4-5 (two sections), group \"Travel\" with pages 7-8\n");
      std::fprintf(FLog, "host: thumbnails of pages 1-8 in %s\n",
                   FScenario.ThumbnailFolder().string().c_str());
      return;
    case TStepKind::CreateStrip:
      FHands.reset();
      FReport.CreateResult = FScenario.CreateStrip(FLoader);
      FReport.StripCreated = Succeeded(FReport.CreateResult) && FScenario.ControlWindow();
      std::fprintf(FLog, "CreateControl: 0x%08X, control window %p\n",
                   static_cast<unsigned>(FReport.CreateResult),
                   static_cast<void*>(FScenario.ControlWindow()));
      return;
    case TStepKind::DestroyStrip:
      FHands.reset();
      FScenario.DestroyStrip();
      std::fprintf(FLog, "DestroyControl: done\n");
      return;
    case TStepKind::Select:
      FScenario.SelectPage(step.Page);
      return;
    case TStepKind::AddPage:
      FScenario.AddPage();
      return;
    case TStepKind::AddPages:
      FScenario.AddPages(step.First, step.Last);
      return;
    case TStepKind::Close:
      FScenario.ClosePage(step.Page);
      return;
    case TStepKind::FreshThumbnails:
      FScenario.FreshThumbnails();
      return;
    case TStepKind::SwitchGroup:
      FScenario.SwitchGroup(step.Group);
      return;
    case TStepKind::OpenCabinet:
    case TStepKind::CloseCabinet:
      FScenario.SetInCabinet(step.Kind == TStepKind::OpenCabinet);
      return;
    case TStepKind::CabinetDrag:
      RunCabinetDrag(step, index);
      return;
    case TStepKind::Wait:
      FScenario.Settle(step.Milliseconds);
      return;
    case TStepKind::Capture:
      Capture(step);
      return;
    default:
      RunInput(step, index);
      return;
  }
}

std::optional<TPoint> TScenarioRunner::Resolve(const TScenarioPoint& point, std::size_t index) {
  if (point.Page == 0) return point.At;
  std::optional<TPoint> centre = FScenario.TabCentreOfPage(point.Page);
  if (!centre)
    std::fprintf(FLog, "file step %zu: page %d has no tab in the strip; the step is skipped\n", index + 1,
                 point.Page);
  return centre;
}

void TScenarioRunner::RunInput(const TScenarioStep& step, std::size_t index) {
  if (!FHands) FHands = MakeScenarioHands(FScenario.MainWindow(), FScenario.ControlWindow(), FInputMs);
  if (!FHands) {
    if (!FNoHandsReported)
      std::fprintf(FLog,
                   "file step %zu: this window system takes no injected input; input steps are skipped\n",
                   index + 1);
    FNoHandsReported = true;
    return;
  }
  IScenarioHands& hands = *FHands;
  if (step.Kind == TStepKind::SelectText) {
    if (!SelectTextInPage(FScenario, hands, step.Text))
      std::fprintf(FLog, "file step %zu: no page is shown to select text in; skipped\n", index + 1);
  } else if (step.Kind == TStepKind::Swipe) {
    hands.Swipe(step.From, step.To, step.Stride);
  } else if (const std::optional<TPoint> at = Resolve(step.Point, index)) {
    switch (step.Kind) {
      case TStepKind::Move:
        hands.Move(*at);
        break;
      case TStepKind::Glide:
        hands.Glide(*at, step.Stride);
        break;
      case TStepKind::Press:
        hands.Press(*at);
        break;
      case TStepKind::Release:
        hands.Release(*at);
        break;
      case TStepKind::Wheel:
        hands.Wheel(*at, step.Notches);
        break;
      case TStepKind::TouchDown:
        hands.TouchDown(*at);
        break;
      case TStepKind::TouchMove:
        hands.TouchMove(*at);
        break;
      case TStepKind::TouchUp:
        hands.TouchUp(*at);
        break;
      default:
        break;
    }
  }
  // A click may have asked the host for a search; a browser opens it at once.
  OpenRequestedSearches(FScenario, FSearchesServed);
}

void TScenarioRunner::RunCabinetDrag(const TScenarioStep& step, std::size_t index) {
  std::optional<TPoint> pointer;
  if (step.CabinetDrag.HasPointer && !(pointer = Resolve(step.Point, index))) return;
  if (!FCabinetDrag)
    FCabinetDrag = std::make_unique<TCabinetDragStep>(FScenario, FOutDir / "cabinet-page", FLog);
  FCabinetDrag->Run(step.CabinetDrag, pointer);
}

void TScenarioRunner::Capture(const TScenarioStep& step) {
  FScenario.Settle(0);
  TCapturedPicture captured;
  captured.Name = step.CaptureName;
  captured.Golden = step.Golden;
  captured.Picture = FScenario.Capture();
  captured.File = FOutDir / (std::to_string(FReport.Captures.size() + 1) + "-" + step.CaptureName + ".png");
  if (captured.Picture) captured.Picture->SaveToFile(captured.File);
  std::fprintf(FLog, "step %zu: %s\n    picture: %s\n", FReport.Captures.size() + 1,
               step.Caption.empty() ? step.CaptureName.c_str() : step.Caption.c_str(),
               captured.File.string().c_str());
  FReport.Captures.push_back(std::move(captured));
}

void TScenarioRunner::WriteSummaryPictures() {
  std::vector<const TBitmap*> pictures;
  for (const TCapturedPicture& captured : FReport.Captures) pictures.push_back(captured.Picture.get());
  if (std::unique_ptr<TBitmap> contact = MakeContactSheet(pictures)) {
    FReport.ContactSheet = FOutDir / "contact-sheet.png";
    contact->SaveToFile(FReport.ContactSheet);
    std::fprintf(FLog, "contact sheet: %s\n", FReport.ContactSheet.string().c_str());
  }
  const std::filesystem::path animation = FOutDir / "animation.png";
  if (WriteApng(animation, pictures)) {
    FReport.Animation = animation;
    std::fprintf(FLog, "animated picture: %s\n", FReport.Animation.string().c_str());
  }
}

}  // namespace qx
