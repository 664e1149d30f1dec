#pragma once

// The toolkit lives inside this library, which can stay loaded after its windows are
// gone; its global state is taken down by hand when the last control goes.

#include <cstdint>

#include "base/ComObject.h"

namespace qx {

struct IResourceReleaser : IUnknown {
  static constexpr TGUID IID = MakeGuid("7BD45D82-4C2F-4F71-852A-3C78F795336F");
  virtual void AddUse() = 0;
  // At zero the toolkit is finalized.
  virtual void ReleaseUse() = 0;
};

// The module's one releaser, made on first request and kept until the module ends.
void GetResourceReleaser(ComPtr<IResourceReleaser>& out);

void FinalizeVisualToolkit();

// For tests: how often the toolkit was taken down, and the controls that hold it now.
int VisualToolkitFinalizeCount();
std::int32_t ResourceReleaserUseCount();

}  // namespace qx
