#include "runtime/MessagePump.h"

#include <thread>

#include "platform/MessageLoop.h"
#include "platform/Platform.h"

#ifndef _WIN32
#include "platform/PortableOs.h"
#endif

namespace qx {

void WaitStep(bool pumpMessages) {
#ifndef _WIN32
  if (IPortableOs* portable = Platform().Portable();
      portable && portable->ClockMode() == TClockMode::Manual) {
    portable->AdvanceClock(1);
    return;
  }
#endif
  if (pumpMessages)
    DispatchPendingMessages();
  else
    std::this_thread::yield();
}

}  // namespace qx
