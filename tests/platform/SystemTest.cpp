#include <gtest/gtest.h>

#include <string>

#include "platform/PortableOs.h"
#include "tests/platform/TestWindows.h"

namespace qx::test {
namespace {

using namespace win;

using SystemTest = PlatformTest;

TEST_F(SystemTest, TheInstalledEmulationIsThePlatform) {
  EXPECT_EQ(&Platform(), static_cast<IPlatform*>(&Os()));
  EXPECT_EQ(Platform().Portable(), &Os());
  EXPECT_EQ(&PortableOs(), &Os());
  EXPECT_EQ(Os().ClockMode(), TClockMode::Manual);
}

TEST(SystemInstall, AFreshEmulationStartsEmpty) {
  HWnd leftover = nullptr;
  {
    TScopedPortableOs first;
    leftover = MakeWindow();
    ASSERT_NE(leftover, nullptr);
    EXPECT_EQ(first->WindowCount(), 1u);
  }
  TScopedPortableOs second;
  EXPECT_EQ(second->WindowCount(), 0u);
  EXPECT_FALSE(Platform().IsWindow(leftover));
  EXPECT_FALSE(Platform().GetClassInfoW(kTestClass, nullptr));
}

TEST_F(SystemTest, MetricsAndScreenResolution) {
  EXPECT_EQ(P().GetSystemMetrics(SM_CXSCREEN), 1920);
  EXPECT_EQ(P().GetSystemMetrics(SM_CYSCREEN), 1080);
  EXPECT_EQ(P().GetSystemMetrics(SM_DIGITIZER), 0);
  EXPECT_EQ(P().GetSystemMetrics(12345), 0);
  Os().SetSystemMetric(SM_CXSCREEN, 1280);
  Rect desktop;
  ASSERT_TRUE(P().GetWindowRect(P().GetDesktopWindow(), &desktop));
  EXPECT_EQ(desktop.right, 1280);
  EXPECT_EQ(P().GetLogPixelsY(), 96);
  Os().SetLogPixelsY(120);
  EXPECT_EQ(P().GetLogPixelsY(), 120);
}

TEST_F(SystemTest, LocaleLanguageIsHexadecimalText) {
  char16_t buffer[16];
  // The system default language, as the module asks for it.
  EXPECT_EQ(P().GetLocaleInfoW(2048, 1, buffer, 16), 5);
  EXPECT_EQ(std::u16string(buffer), u"0409");
  EXPECT_EQ(P().GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SNAME, nullptr, 0), 6);
  EXPECT_EQ(P().GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SNAME, buffer, 3), 0);
  EXPECT_EQ(P().GetLocaleInfoW(LOCALE_USER_DEFAULT, 0x7777, buffer, 16), 0);
  Os().SetLocaleInfo(LOCALE_ILANGUAGE, u"0407");
  EXPECT_EQ(P().GetLocaleInfoW(2048, LOCALE_ILANGUAGE, buffer, 16), 5);
  EXPECT_EQ(std::u16string(buffer), u"0407");
}

TEST_F(SystemTest, MessageBoxesAreRecordedAndAnswered) {
  HWnd hwnd = MakeWindow();
  EXPECT_EQ(P().MessageBoxW(hwnd, u"Text", u"Caption", MB_OK | MB_ICONERROR), IDOK);
  Os().SetMessageBoxAnswer(IDNO);
  EXPECT_EQ(P().MessageBoxW(nullptr, u"Sure?", nullptr, MB_YESNO), IDNO);
  const auto calls = Os().MessageBoxCalls();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].hwnd, hwnd);
  EXPECT_EQ(calls[0].text, u"Text");
  EXPECT_EQ(calls[0].caption, u"Caption");
  EXPECT_EQ(calls[0].type, MB_OK | MB_ICONERROR);
  EXPECT_EQ(calls[1].caption, u"");
}

TEST_F(SystemTest, WindowSurfacesCarryPixels) {
  HWnd hwnd = MakeWindow();
  TWindowPixels pixels;
  ASSERT_TRUE(Os().ReadWindowPixels(hwnd, &pixels));
  EXPECT_EQ(pixels.width, 0);
  EXPECT_TRUE(pixels.pixels.empty());
  const std::uint32_t data[6] = {1, 2, 3, 4, 5, 0xFF00FF00u};
  ASSERT_TRUE(Os().SetWindowSurface(hwnd, 3, 2, data));
  ASSERT_TRUE(Os().ReadWindowPixels(hwnd, &pixels));
  EXPECT_EQ(pixels.width, 3);
  EXPECT_EQ(pixels.height, 2);
  EXPECT_EQ(pixels.pixels, (std::vector<std::uint32_t>{1, 2, 3, 4, 5, 0xFF00FF00u}));
  EXPECT_FALSE(Os().SetWindowSurface(hwnd, 3, 2, nullptr));
  EXPECT_FALSE(Os().SetWindowSurface(hwnd, -1, 2, data));
  EXPECT_FALSE(Os().ReadWindowPixels(hwnd, nullptr));
  P().DestroyWindow(hwnd);
  EXPECT_FALSE(Os().ReadWindowPixels(hwnd, &pixels));
}

TEST_F(SystemTest, ThreadAndProcessIds) {
  HWnd hwnd = MakeWindow();
  std::uint32_t pid = 0;
  EXPECT_EQ(P().GetWindowThreadProcessId(hwnd, &pid), P().GetCurrentThreadId());
  EXPECT_EQ(pid, P().GetCurrentProcessId());
  EXPECT_NE(P().GetCurrentThreadId(), 0u);
}

}  // namespace
}  // namespace qx::test
