#pragma once

// For a host executable that loads the module: put QX_EXPORT_PORTABLE_OS() in one of
// its source files and build it with ENABLE_EXPORTS, so the module finds the host's
// emulation and both share one window system. The module itself never exports it.

#include "platform/portable/PlatformInstance.h"

#define QX_EXPORT_PORTABLE_OS()                                                    \
  extern "C" __attribute__((visibility("default"))) qx::IPlatform* QxPortableOs() { \
    return &qx::LocalPlatform();                                                    \
  }
