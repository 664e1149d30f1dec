#include "runtime/MainThread.h"

#include <atomic>

namespace qx {
namespace {

std::thread::id& MainThreadSlot() {
  static std::thread::id id = std::this_thread::get_id();
  return id;
}

// Taken while the module loads, which happens on the host's user-interface thread.
const std::thread::id kLoadThread = MainThreadSlot();

}  // namespace

std::thread::id MainThreadId() { return MainThreadSlot(); }

bool IsMainThread() { return std::this_thread::get_id() == MainThreadSlot(); }

void SetMainThreadId(std::thread::id id) { MainThreadSlot() = id; }

}  // namespace qx
