#include "resources/FMXDllResourceFinalizer.h"

#include <mutex>

#include "toolkit/Application.h"

namespace qx {
namespace {

std::mutex gReleaserLock;
ComPtr<IResourceReleaser> gReleaser;
int gFinalizeCount = 0;

class TResourceReleaserImpl : public TInterfacedObject<IResourceReleaser> {
 public:
  void AddUse() override {
    std::lock_guard guard(FLock);
    ++FUseCount;
  }
  void ReleaseUse() override {
    bool finalize = false;
    {
      std::lock_guard guard(FLock);
      finalize = --FUseCount == 0;
    }
    if (finalize) FinalizeVisualToolkit();
  }

 private:
  std::mutex FLock;
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

}  // namespace qx
