#pragma once

// The toolkit's own timer service is a manual clock that nothing advances inside a host.
// While one of these lives, the plain timers the module makes tick on the system's clock,
// as its animations do; the last one to go puts the former service back.

namespace qx {

class TSystemClockTimers {
 public:
  TSystemClockTimers();
  ~TSystemClockTimers();
  TSystemClockTimers(const TSystemClockTimers&) = delete;
  TSystemClockTimers& operator=(const TSystemClockTimers&) = delete;
};

}  // namespace qx
