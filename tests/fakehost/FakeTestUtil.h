#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "base/Text.h"
#include "fakehost/FakeBrowser.h"

namespace qx::test {

// "Id" or "Id:event:timing" for each logged event whose id is among those given (all when none).
inline std::vector<std::string> Steps(const std::vector<TFakeEventRecord>& log,
                                      const std::vector<std::u16string>& only = {}) {
  std::vector<std::string> steps;
  for (const auto& record : log) {
    if (!only.empty() && std::find(only.begin(), only.end(), record.Id) == only.end()) continue;
    std::string step = ToUtf8(record.Id);
    for (const char16_t* key : {u"event", u"timing"}) {
      if (!record.Has(key)) continue;
      step += ':';
      step += ToUtf8(record.Value(key));
    }
    steps.push_back(step);
  }
  return steps;
}

inline std::u16string U(const char* text) { return FromUtf8(text); }

}  // namespace qx::test
