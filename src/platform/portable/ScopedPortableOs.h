#pragma once

// Gives a test a fresh emulated window system for its lifetime (manual clock by
// default) and puts the former platform back afterwards.

#include <memory>

#include "platform/portable/PortableOsImpl.h"

namespace qx {

class TScopedPortableOs {
 public:
  explicit TScopedPortableOs(TClockMode mode = TClockMode::Manual, std::uint64_t startMilliseconds = 0) {
    auto os = std::make_unique<TPortableOs>(mode, startMilliseconds);
    FOs = os.get();
    FPrevious = SetPlatformForTesting(std::move(os));
  }
  ~TScopedPortableOs() { SetPlatformForTesting(std::move(FPrevious)); }
  TScopedPortableOs(const TScopedPortableOs&) = delete;
  TScopedPortableOs& operator=(const TScopedPortableOs&) = delete;

  TPortableOs& Os() const { return *FOs; }
  TPortableOs* operator->() const { return FOs; }

 private:
  TPortableOs* FOs = nullptr;
  std::unique_ptr<IPlatform> FPrevious;
};

}  // namespace qx
