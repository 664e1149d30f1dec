#include "resources/FMXDllResourceFinalizer.h"

#include <mutex>

#include "toolkit/Application.h"

namespace qx {
namespace {

// One lock for the singleton and its count: both plug-ins reach them.
std::mutex gReleaserLock;
ComPtr<IResourceReleaser> gReleaser;
int gFinalizeCount = 0;

class TResourceReleaserImpl : public TInterfacedObject<IResourceReleaser> {
 public:
  void AddUse() override {
    std::lock_guard guard(gReleaserLock);
    ++FUseCount;
  }
  void ReleaseUse() override {
    bool last = false;
    {
      std::lock_guard guard(gReleaserLock);
      last = --FUseCount == 0;
    }
    // Outside the lock: the teardown takes other locks, and none is held together with this one.
    if (last) FinalizeVisualToolkit();
  }
  std::int32_t UseCountLocked() const { return FUseCount; }

 private:
  std::int32_t FUseCount = 0;
};

}  // namespace

void GetResourceReleaser(ComPtr<IResourceReleaser>& out) {
  std::lock_guard guard(gReleaserLock);
  if (!gReleaser) gReleaser = MakeCom<TResourceReleaserImpl>();
  out = gReleaser;
}

void FinalizeVisualToolkit() {
  ++gFinalizeCount;
  TToolkit::Finalize();
}

int VisualToolkitFinalizeCount() { return gFinalizeCount; }

std::int32_t ResourceReleaserUseCount() {
  std::lock_guard guard(gReleaserLock);
  return gReleaser ? static_cast<TResourceReleaserImpl*>(gReleaser.get())->UseCountLocked() : 0;
}

}  // namespace qx
