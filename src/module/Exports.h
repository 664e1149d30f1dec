#pragma once

// The module's whole surface towards the host: three functions, stdcall on 32-bit
// Windows, ANSI ids, 0 or 0x80004005.

#include <cstdint>

#include "base/Status.h"
#include "host/QuillmarV3Interface.h"

#if defined(_WIN32)
#define QX_EXPORT __declspec(dllexport)
#else
#define QX_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {
QX_EXPORT qx::HResult QX_STDCALL QxEnumPlugin(std::int32_t* count, const char* const** ids);
QX_EXPORT qx::HResult QX_STDCALL QxGetPlugin(const char* id, qx::IQxIServiceCore* serviceCore,
                                             qx::IUnknown** plugin);
QX_EXPORT void* QX_STDCALL GetFunction(const char* name);
}
