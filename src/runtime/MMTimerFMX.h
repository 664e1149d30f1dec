#pragma once

// A TTimer that runs on a multimedia timer service of its own, whatever service
// the toolkit has registered; every other timer stays where it was.

#include "runtime/MMTimerService.h"
#include "toolkit/Timer.h"

namespace qx {

namespace detail {
// Comes first among the bases, so the swap stands while TTimer's constructor runs.
struct TMMTimerServiceScopeBase {
  TMMTimerServiceScope FServiceScope;
};
}  // namespace detail

class TMMTimer : private detail::TMMTimerServiceScopeBase, public TTimer {
 public:
  explicit TMMTimer(TFmxObject* owner = nullptr);
  std::string ClassName() const override { return "TMMTimer"; }
};

}  // namespace qx
