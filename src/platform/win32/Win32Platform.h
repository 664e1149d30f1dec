#pragma once

// The real system: every operation is the Win32 call of the same name.

#include "platform/Platform.h"

namespace qx {

class TWin32Platform final : public IPlatform {
 public:
#define QX_PLATFORM_OP(result, name, parameters) result name parameters override;
#include "platform/PlatformOperations.inc"
#undef QX_PLATFORM_OP
};

}  // namespace qx
