// The module as the browser meets it on Windows: a DLL loaded with LoadLibrary and reached
// through GetProcAddress, its strip made in a real top-level window of the host, painted
// by the system and read back from the screen.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "ModuleLoader.h"
#include "ScenarioDisplay.h"
#include "StripScenario.h"
#include "common/GoldenPicture.h"
#include "fakehost/FakeHost.h"
#include "runtime/DelayExec.h"
#include "toolkit/Form.h"

// The system's names are macros: its header comes after the platform's.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace qx::test {
namespace {

std::filesystem::path NewFolder(const char* name) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                       (std::string(name) + "-" + std::to_string(GetCurrentProcessId()));
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  return folder;
}

class Win32HostSim : public ::testing::Test {
 protected:
  ~Win32HostSim() override {
    std::error_code error;
    std::filesystem::remove_all(root_, error);
  }
  std::filesystem::path root_ = NewFolder("qx-win32-hostsim");
};

// The same steps and the same crop as the Linux golden test of the strip in the host
// window: the pictures of both systems agree within the golden tolerance.
TEST_F(Win32HostSim, TheStripInARealHostWindowLooksAsOnLinuxAndIgnoresUnreadableTouch) {
  TModuleLoader loader;
  ASSERT_TRUE(loader.Load(QX_MODULE_PATH)) << loader.Error();
  TFakeHost host;
  TStripScenario scenario(host, root_ / "host", QX_SKIN_DIR);
  scenario.PrepareHost();
  ASSERT_EQ(scenario.CreateStrip(loader), kOk);
  char className[64] = {};
  GetClassNameA(reinterpret_cast<HWND>(scenario.MainWindow()), className, sizeof className);
  EXPECT_STREQ(className, "QxFakeHostMainWindow") << "the host's main window is a real window";
  EXPECT_EQ(GetParent(reinterpret_cast<HWND>(scenario.ControlWindow())),
            reinterpret_cast<HWND>(scenario.MainWindow()));
  scenario.Settle(1000);
  scenario.SelectPage(4);
  scenario.Settle(1000);
  scenario.AddPage();
  scenario.Settle(1000);
  std::unique_ptr<TBitmap> window = scenario.Capture();
  ASSERT_TRUE(window);
  ASSERT_GE(window->Height(), kStripTop + kStripHeight);
  TBitmap strip(window->Width(), kStripHeight);
  for (int y = 0; y < kStripHeight; ++y)
    for (int x = 0; x < window->Width(); ++x)
      strip.Bits()[static_cast<std::size_t>(y * strip.Width() + x)] = window->Pixel(x, kStripTop + y);
  ExpectMatchesGolden(strip, "e2e/golden/strip_in_host_window.png");

  // Wine, like a machine without a touch screen, delivers no readable touch input: touch
  // messages whose handle the system cannot read, and gesture messages beside them, leave
  // the strip as it was rather than act on points never filled in.
  const int active = scenario.ActivePage();
  const HWND control = reinterpret_cast<HWND>(scenario.ControlWindow());
  for (int i = 0; i < 3; ++i) {
    PostMessageW(control, WM_TOUCH, MAKEWPARAM(1, 0), static_cast<LPARAM>(0x5150 + i));
    PostMessageW(control, WM_GESTURE, 1 /* begin */, static_cast<LPARAM>(0x6160 + i));
  }
  scenario.Settle(500);
  EXPECT_TRUE(IsWindow(control));
  EXPECT_EQ(scenario.ActivePage(), active);
}

bool ClassRegistered(HINSTANCE instance, const char16_t* name) {
  WNDCLASSEXW info{};
  info.cbSize = sizeof info;
  return GetClassInfoExW(instance, reinterpret_cast<const wchar_t*>(name), &info) != FALSE;
}

bool TimerMessageArrives(std::uint32_t milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  MSG message;
  while (GetTickCount64() < end) {
    if (PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE)) return true;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
  return false;
}

// FreeLibrary and LoadLibrary again: each time the control is made anew, and once the
// module is gone none of its window classes stays registered under its instance and no
// timer of it fires (a multimedia timer left behind would call into unloaded code).
TEST_F(Win32HostSim, TheModuleUnloadsAndLoadsAgainWithoutLeftovers) {
  for (int cycle = 0; cycle < 3; ++cycle) {
    SCOPED_TRACE(cycle);
    HINSTANCE instance = nullptr;
    {
      TModuleLoader loader;
      ASSERT_TRUE(loader.Load(QX_MODULE_PATH)) << loader.Error();
      instance = GetModuleHandleW(std::filesystem::path(QX_MODULE_PATH).filename().wstring().c_str());
      ASSERT_NE(instance, nullptr);
      {
        TFakeHost host;
        TStripScenario scenario(host, root_ / ("host" + std::to_string(cycle)), QX_SKIN_DIR);
        scenario.PrepareHost();
        ASSERT_EQ(scenario.CreateStrip(loader), kOk);
        ASSERT_TRUE(IsWindow(reinterpret_cast<HWND>(scenario.ControlWindow())));
        scenario.AddPage();
        scenario.Settle(300);
        EXPECT_TRUE(ClassRegistered(instance, TForm::kWindowClassName));
      }
      loader.Unload();
    }
    EXPECT_EQ(GetModuleHandleW(std::filesystem::path(QX_MODULE_PATH).filename().wstring().c_str()), nullptr);
    for (const char16_t* name : {TForm::kWindowClassName, kDefaultUtilWindowClass}) {
      EXPECT_FALSE(ClassRegistered(instance, name))
          << "class left registered: " << std::filesystem::path(std::u16string(name)).string();
    }
    EXPECT_FALSE(TimerMessageArrives(100));
    LetTimePass(100);
  }
}

}  // namespace
}  // namespace qx::test
