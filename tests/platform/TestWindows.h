#pragma once

// Window procedures that record what they receive, for the platform tests.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Platform.h"
#ifndef _WIN32
#include "platform/portable/ScopedPortableOs.h"
#endif

namespace qx::test {

struct TRecord {
  HWnd hwnd = nullptr;
  std::uint32_t msg = 0;
  WParam wParam = 0;
  LParam lParam = 0;
  std::uint32_t threadId = 0;
};

// One log per test; procedures are plain functions, so it is a global.
std::vector<TRecord>& Log();
std::vector<std::uint32_t> Messages(HWnd hwnd);
std::vector<std::uint32_t> MessagesExcept(HWnd hwnd, std::initializer_list<std::uint32_t> skip);

LResult QX_STDCALL RecordingProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam);
LResult QX_STDCALL SecondProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam);

// Registers the recording class once per test platform and makes a window of it.
HWnd MakeWindow(std::uint32_t style = 0, HWnd parent = nullptr, TRect bounds = {0, 0, 100, 100},
                const char16_t* title = u"");

inline constexpr char16_t kTestClass[] = u"QxTestWindow";

#ifdef _WIN32
// On Windows the same sources run on the real system, which has no manual clock.
class PlatformTest : public ::testing::Test {
 protected:
  PlatformTest() { Log().clear(); }
  ~PlatformTest() override { Log().clear(); }
  IPlatform& P() { return Platform(); }
};
#else
// Every test starts from a clean emulated system on the manual clock.
class PlatformTest : public ::testing::Test {
 protected:
  PlatformTest() { Log().clear(); }
  ~PlatformTest() override { Log().clear(); }
  TPortableOs& Os() { return FOs.Os(); }
  IPlatform& P() { return Platform(); }

 private:
  TScopedPortableOs FOs;
};
#endif

}  // namespace qx::test
