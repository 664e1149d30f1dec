#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace qx {

// What a browser shows, as far as scripts and snapshots can see it.
struct TFakePage {
  // The page's text selection; the selection scripts answer with it.
  std::u16string Selection;
  // Scripts that are not forced run only while this is false.
  bool ScriptsBlocked = false;
  // Answers for other scripts by exact code; an unknown script answers empty text.
  std::map<std::u16string, std::u16string> ScriptResults;
  // Encoded picture the "snapshot" command answers with; empty: the model's snapshot
  // provider answers, and without one the engine paints the page (FakeEnginePainter.h).
  std::vector<std::uint8_t> Snapshot;
  // The engine cannot take a picture of this page: every snapshot fails.
  bool SnapshotFails = false;
};

}  // namespace qx
