#pragma once

#include "platform/Platform.h"

namespace qx {

// This binary's own platform: the one installed for tests, else a process-local
// emulation on the real clock. A host executable hands it to the modules it loads.
IPlatform& LocalPlatform();

}  // namespace qx
