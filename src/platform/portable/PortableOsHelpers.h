#pragma once

// Small pieces that several parts of the emulation share.

#include <atomic>
#include <cstdint>
#include <string>

#include "platform/Platform.h"

namespace qx::portable_os {

// Handles are never reused in a process, so a stale one stays invalid.
inline std::atomic<std::uintptr_t> gNextHandle{0x00010010};

inline HWnd NewHandle() { return reinterpret_cast<HWnd>(gNextHandle.fetch_add(4)); }
inline std::uintptr_t Key(HWnd hwnd) { return reinterpret_cast<std::uintptr_t>(hwnd); }
inline std::u16string FromZ(const char16_t* text) { return text ? std::u16string(text) : std::u16string(); }

inline bool Contains(const TRect& r, TPoint p) {
  return p.X >= r.Left && p.X < r.Right && p.Y >= r.Top && p.Y < r.Bottom;
}

// The built-in tooltip class's procedure.
LResult QX_STDCALL TooltipProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam);

}  // namespace qx::portable_os
