#include <atomic>
#include <mutex>

#include "platform/win32/Win32Platform.h"

namespace qx {

namespace {

std::mutex gInstallLock;
std::unique_ptr<IPlatform> gInstalled;
std::atomic<IPlatform*> gInstalledPtr{nullptr};

}  // namespace

IPlatform& Platform() {
  if (IPlatform* installed = gInstalledPtr.load(std::memory_order_acquire)) return *installed;
  static TWin32Platform system;
  return system;
}

std::unique_ptr<IPlatform> SetPlatformForTesting(std::unique_ptr<IPlatform> platform) {
  std::lock_guard<std::mutex> guard(gInstallLock);
  std::unique_ptr<IPlatform> previous = std::move(gInstalled);
  gInstalled = std::move(platform);
  gInstalledPtr.store(gInstalled.get(), std::memory_order_release);
  return previous;
}

}  // namespace qx
