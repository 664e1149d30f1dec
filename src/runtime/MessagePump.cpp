#include "runtime/MessagePump.h"

#include <thread>

#include "platform/Platform.h"

#ifndef _WIN32
#include "platform/PortableOs.h"
#endif

namespace qx {

void ProcessPendingMessages() {
  IPlatform& os = Platform();
#ifndef _WIN32
  if (IPortableOs* portable = os.Portable()) {
    portable->ProcessMessages();
    return;
  }
#endif
  Msg msg;
  while (os.PeekMessageW(&msg, nullptr, 0, 0, win::PM_REMOVE)) {
    if (msg.message == win::WM_QUIT) {
      os.PostQuitMessage(static_cast<std::int32_t>(msg.wParam));
      break;
    }
    os.TranslateMessage(&msg);
    os.DispatchMessageW(&msg);
  }
}

void WaitStep(bool pumpMessages) {
#ifndef _WIN32
  if (IPortableOs* portable = Platform().Portable(); portable && portable->ClockMode() == TClockMode::Manual) {
    portable->AdvanceClock(1);
    return;
  }
#endif
  if (pumpMessages)
    ProcessPendingMessages();
  else
    std::this_thread::yield();
}

}  // namespace qx
