#include "runtime/SystemClockTimers.h"

#include <cstddef>
#include <optional>

#include "runtime/MMTimerService.h"

namespace qx {
namespace {

std::size_t users = 0;
std::optional<TMMTimerServiceScope> scope;

}  // namespace

TSystemClockTimers::TSystemClockTimers() {
  if (users++ == 0) {
    // The toolkit installs its default service on first use; only a standing one is swapped.
    CurrentTimerService();
    scope.emplace();
  }
}

TSystemClockTimers::~TSystemClockTimers() {
  if (--users == 0) scope.reset();
}

}  // namespace qx
