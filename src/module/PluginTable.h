#pragma once

#include <array>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// The two plug-ins, as two parallel arrays: ids, then the classes' factories.
using TPluginFactory = ComPtr<IUnknown> (*)(IQxIServiceCore* serviceCore);

inline constexpr std::size_t kPluginCount = 2;
extern const char* const kPluginIds[kPluginCount];
extern const TPluginFactory kPluginClasses[kPluginCount];

}  // namespace qx
