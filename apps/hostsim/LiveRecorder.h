#pragma once

// Writes down what a person does in the live window as a scenario file: the steps that
// brought the session to where the recording starts, then each step with a "wait" of the
// clock time that passed before it. Pointer motion keeps one "move" per moment, the last.

#include <cstdint>
#include <string>
#include <vector>

#include "LiveStep.h"

namespace qx {

class TLiveRecorder {
 public:
  explicit TLiveRecorder(std::string description) : FDescription(std::move(description)) {}

  // now: the emulated clock in milliseconds. prelude: the steps that rebuild the session.
  void Start(std::uint64_t now, std::vector<TLiveStep> prelude);
  // Ends with a wait up to now, so the file plays to the moment the person stopped.
  void Stop(std::uint64_t now);
  bool Recording() const { return FRecording; }
  void Add(const TLiveStep& step, std::uint64_t now);

  const std::vector<TLiveStep>& Steps() const { return FSteps; }
  // The scenario file's text: one JSON object, one step a line.
  std::string Text() const;

 private:
  void WaitUntil(std::uint64_t now);

  std::string FDescription;
  std::vector<TLiveStep> FSteps;
  std::uint64_t FLast = 0;
  bool FRecording = false;
};

}  // namespace qx
