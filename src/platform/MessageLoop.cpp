#include "platform/MessageLoop.h"

#include "platform/Platform.h"
#include "platform/PortableOs.h"

namespace qx {

void DispatchPendingMessages() {
  IPlatform& os = Platform();
  if (IPortableOs* portable = os.Portable()) {
    portable->ProcessMessages();
    return;
  }
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

}  // namespace qx
