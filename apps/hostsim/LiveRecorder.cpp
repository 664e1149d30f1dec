#include "LiveRecorder.h"

#include <cstdio>

namespace qx {
namespace {

std::string Quoted(const std::string& text) {
  std::string out = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
      out += escape;
    } else {
      out += c;
    }
  }
  return out + "\"";
}

std::string Member(const char* name, long long value) {
  return std::string(", \"") + name + "\": " + std::to_string(value);
}

std::string StepText(const TLiveStep& step) {
  std::string text = std::string("{\"do\": \"") + StepName(step.Kind) + "\"";
  switch (step.Kind) {
    case TLiveStepKind::Wheel:
      text += Member("x", step.At.X) + Member("y", step.At.Y) + Member("notches", step.Notches);
      break;
    case TLiveStepKind::AddPages:
      text += Member("first", step.First) + Member("last", step.Last);
      break;
    case TLiveStepKind::Select:
    case TLiveStepKind::Close:
      text += Member("page", step.Page);
      break;
    case TLiveStepKind::SwitchGroup:
      text += Member("group", step.Group);
      break;
    case TLiveStepKind::SelectText:
      text += ", \"text\": " + Quoted(step.Text);
      break;
    case TLiveStepKind::Wait:
      text += Member("ms", static_cast<long long>(step.Ms));
      break;
    case TLiveStepKind::Capture:
      text += ", \"name\": " + Quoted(step.Text);
      break;
    default:
      if (IsPointerStep(step.Kind)) text += Member("x", step.At.X) + Member("y", step.At.Y);
      break;
  }
  return text + "}";
}

}  // namespace

void TLiveRecorder::Start(std::uint64_t now, std::vector<TLiveStep> prelude) {
  FSteps = std::move(prelude);
  FLast = now;
  FRecording = true;
}

void TLiveRecorder::Stop(std::uint64_t now) {
  if (!FRecording) return;
  WaitUntil(now);
  FRecording = false;
}

void TLiveRecorder::WaitUntil(std::uint64_t now) {
  if (now <= FLast) return;
  TLiveStep wait;
  wait.Kind = TLiveStepKind::Wait;
  wait.Ms = now - FLast;
  FSteps.push_back(wait);
  FLast = now;
}

void TLiveRecorder::Add(const TLiveStep& step, std::uint64_t now) {
  if (!FRecording) return;
  // Moves in the same moment: only where the pointer ended up matters.
  if (step.Kind == TLiveStepKind::Move && now <= FLast && !FSteps.empty() &&
      FSteps.back().Kind == TLiveStepKind::Move) {
    FSteps.back() = step;
    return;
  }
  WaitUntil(now);
  FSteps.push_back(step);
}

std::string TLiveRecorder::Text() const {
  // The waits hold all the time that passed: input lets none pass of its own, as in the window.
  std::string text =
      "{\n  \"description\": " + Quoted(FDescription) + ",\n  \"input-ms\": 0,\n  \"steps\": [";
  for (std::size_t i = 0; i < FSteps.size(); ++i) text += (i ? ",\n    " : "\n    ") + StepText(FSteps[i]);
  return text + "\n  ]\n}\n";
}

}  // namespace qx
