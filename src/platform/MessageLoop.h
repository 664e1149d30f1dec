#pragma once

namespace qx {

// Dispatches the messages waiting for the calling thread (the emulation's own pump,
// or PeekMessageW and DispatchMessageW on the system). A WM_QUIT stays for the
// thread's real loop.
void DispatchPendingMessages();

}  // namespace qx
