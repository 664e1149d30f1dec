// The host is a 32-bit program that calls into us through raw vtables and three exported
// functions; nothing checks their shape at run time, so the 32-bit build checks it here.

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "base/Guid.h"
#include "base/Status.h"
#include "base/Unknown.h"
#include "host/QuillmarV3Interface.h"
#include "module/Exports.h"
#include "platform/Platform.h"

namespace qx {
namespace {

// Interface identities are compared as the system's 16-byte GUID, passed by address.
static_assert(sizeof(TGUID) == 16 && alignof(TGUID) == 4);
static_assert(offsetof(TGUID, D2) == 4 && offsetof(TGUID, D3) == 6 && offsetof(TGUID, D4) == 8);
static_assert(sizeof(HResult) == 4);
// An interface pointer is the address of one vtable pointer and nothing else.
static_assert(sizeof(IUnknown) == sizeof(void*) && std::is_polymorphic_v<IUnknown>);
static_assert(sizeof(IQxIHandle) == sizeof(void*) && sizeof(IQxIServiceCore) == sizeof(void*));
// Window handles travel as the handle interface's integer and in message parameters.
static_assert(sizeof(std::uintptr_t) == sizeof(HWnd) && sizeof(WParam) == sizeof(void*) &&
              sizeof(LParam) == sizeof(void*) && sizeof(LResult) == sizeof(void*));

#if defined(_WIN32) && !defined(_WIN64)
// The host's own build: 32-bit window values and pointers.
static_assert(sizeof(void*) == 4 && sizeof(HWnd) == 4 && sizeof(WParam) == 4 && sizeof(LParam) == 4);
static_assert(sizeof(Msg) == 28 && offsetof(Msg, pt) == 20);
static_assert(sizeof(TRect) == 16 && sizeof(TPoint) == 8);
static_assert(sizeof(CreateStructW) == 48 && offsetof(CreateStructW, lpszClass) == 40);
// The three exports are stdcall: on 32 bits the calling convention is part of the type.
static_assert(
    std::is_same_v<decltype(&QxEnumPlugin), HResult(__stdcall*)(std::int32_t*, const char* const**)>);
static_assert(
    std::is_same_v<decltype(&QxGetPlugin), HResult(__stdcall*)(const char*, IQxIServiceCore*, IUnknown**)>);
static_assert(std::is_same_v<decltype(&GetFunction), void*(__stdcall*)(const char*)>);
static_assert(!std::is_same_v<decltype(&GetFunction), void*(__cdecl*)(const char*)>);
// Every interface operation is stdcall too, the window procedures and timer callbacks alike.
static_assert(std::is_same_v<decltype(&IUnknown::AddRef), std::uint32_t (__stdcall IUnknown::*)()>);
static_assert(std::is_same_v<WndProc, LongPtr(__stdcall*)(HWnd, std::uint32_t, WParam, LParam)>);
#endif

}  // namespace
}  // namespace qx
