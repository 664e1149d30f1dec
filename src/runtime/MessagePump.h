#pragma once

namespace qx {

// One step of a busy wait. On the emulation's manual clock time passes only when it is
// advanced, so each step advances it by a millisecond (which also runs what falls due);
// elsewhere a pumping step dispatches waiting messages and a plain step yields.
void WaitStep(bool pumpMessages);

}  // namespace qx
