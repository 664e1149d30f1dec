#include "platform/portable/PlatformInstance.h"

#include <dlfcn.h>

#include <atomic>
#include <mutex>

#include "platform/portable/PortableOsImpl.h"

namespace qx {

namespace {

using TExportedOs = IPlatform* (*)();

std::mutex gInstallLock;
std::unique_ptr<IPlatform> gInstalled;
std::atomic<IPlatform*> gInstalledPtr{nullptr};

// A host that loads this code as a module exports its emulation, so that both sides
// see one set of windows, queues and timers.
TExportedOs HostExport() {
  static const TExportedOs exported = reinterpret_cast<TExportedOs>(::dlsym(RTLD_DEFAULT, "QxPortableOs"));
  return exported;
}

}  // namespace

IPlatform& LocalPlatform() {
  if (IPlatform* installed = gInstalledPtr.load(std::memory_order_acquire)) return *installed;
  static TPortableOs os(TClockMode::Real);
  return os;
}

IPlatform& Platform() {
  if (TExportedOs exported = HostExport()) {
    if (IPlatform* shared = exported()) return *shared;
  }
  return LocalPlatform();
}

std::unique_ptr<IPlatform> SetPlatformForTesting(std::unique_ptr<IPlatform> platform) {
  std::lock_guard<std::mutex> guard(gInstallLock);
  std::unique_ptr<IPlatform> previous = std::move(gInstalled);
  gInstalled = std::move(platform);
  gInstalledPtr.store(gInstalled.get(), std::memory_order_release);
  return previous;
}

}  // namespace qx
