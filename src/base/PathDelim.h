#pragma once

namespace qx {

// The system's separator between folder and file names.
#ifdef _WIN32
inline constexpr char16_t kPathDelim = u'\\';
#else
inline constexpr char16_t kPathDelim = u'/';
#endif

}  // namespace qx
