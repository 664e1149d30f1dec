#pragma once

#include <cstdint>

#if defined(_WIN32) && !defined(_WIN64)
#define QX_STDCALL __stdcall
#else
#define QX_STDCALL
#endif

namespace qx {

// 32-bit status of the host boundary: top bit set means failure.
using HResult = std::int32_t;

inline constexpr HResult kOk = 0;
inline constexpr HResult kFalse = 1;
inline constexpr HResult kFail = static_cast<HResult>(0x80004005u);
inline constexpr HResult kInvalidArg = static_cast<HResult>(0x80070057u);
inline constexpr HResult kNoInterface = static_cast<HResult>(0x80004002u);

constexpr bool Succeeded(HResult status) { return status >= 0; }
constexpr bool Failed(HResult status) { return status < 0; }

}  // namespace qx
