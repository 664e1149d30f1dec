#pragma once

#include <thread>

namespace qx {

// The thread that loaded the module: the host's user-interface thread.
std::thread::id MainThreadId();
bool IsMainThread();
// Tests that run the main loop elsewhere say which thread it is.
void SetMainThreadId(std::thread::id id);

}  // namespace qx
