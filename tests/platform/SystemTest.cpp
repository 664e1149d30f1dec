#include <gtest/gtest.h>

#include <string>

#include "platform/portable/PortableOs.h"
#include "tests/platform/TestWindows.h"

namespace qx::test {
namespace {

using namespace win;

using SystemTest = PlatformTest;

TEST_F(SystemTest, TheInstalledEmulationIsThePlatformWithThisThreadAndProcess) {
  EXPECT_EQ(&Platform(), static_cast<IPlatform*>(&Os()));
  EXPECT_EQ(&PortableOs(), &Os());
  EXPECT_EQ(Os().ClockMode(), TClockMode::Manual);

  HWnd hwnd = MakeWindow();
  std::uint32_t pid = 0;
  EXPECT_EQ(P().GetWindowThreadProcessId(hwnd, &pid), P().GetCurrentThreadId());
  EXPECT_EQ(pid, P().GetCurrentProcessId());
  EXPECT_NE(P().GetCurrentThreadId(), 0u);
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

TEST_F(SystemTest, MetricsScreenResolutionAndVersionChecks) {
  EXPECT_EQ(P().GetSystemMetrics(SM_CXSCREEN), 1920);
  EXPECT_EQ(P().GetSystemMetrics(SM_CYSCREEN), 1080);
  EXPECT_EQ(P().GetSystemMetrics(SM_DIGITIZER), 0);
  EXPECT_EQ(P().GetSystemMetrics(12345), 0);
  Os().SetSystemMetric(SM_CXSCREEN, 1280);
  TRect desktop;
  ASSERT_TRUE(P().GetWindowRect(P().GetDesktopWindow(), &desktop));
  EXPECT_EQ(desktop.Right, 1280);
  EXPECT_EQ(P().GetLogPixelsY(), 96);
  Os().SetLogPixelsY(120);
  EXPECT_EQ(P().GetLogPixelsY(), 120);

  EXPECT_TRUE(P().CheckWin32Version(6, 1));
  EXPECT_TRUE(P().CheckWin32Version(6, 2));
  EXPECT_TRUE(P().CheckWin32Version(10, 0));
  EXPECT_FALSE(P().CheckWin32Version(10, 1));
  Os().SetWin32Version(6, 1);
  EXPECT_TRUE(P().CheckWin32Version(6, 1));
  EXPECT_FALSE(P().CheckWin32Version(6, 2));
  EXPECT_TRUE(P().CheckWin32Version(5, 9));
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
  // Painting keeps the picture and leaves the paint cycle to the default procedure.
  EXPECT_FALSE(P().PaintWindowPixels(hwnd, 3, 2, data));
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

TEST_F(SystemTest, TooltipWindowKeepsItsTools) {
  EXPECT_TRUE(P().InitCommonControlsEx(ICC_WIN95_CLASSES));
  HWnd parent = MakeWindow(WS_VISIBLE);
  HWnd tip = P().CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, TOOLTIPS_CLASSW, nullptr,
                                 WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, parent, nullptr);
  ASSERT_NE(tip, nullptr);
  EXPECT_FALSE(P().UnregisterClassW(TOOLTIPS_CLASSW));
  EXPECT_EQ(P().SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, 300), -1);
  char16_t text[] = u"Close tab";
  ToolInfoW info;
  info.uFlags = TTF_SUBCLASS;
  info.hwnd = parent;
  info.uId = 7;
  info.rect = {1, 2, 3, 4};
  info.lpszText = text;
  EXPECT_EQ(P().SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LParam>(&info)), 1);
  info.uId = 8;
  P().SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LParam>(&info));
  EXPECT_EQ(P().SendMessageW(tip, TTM_GETTOOLCOUNT, 0, 0), 2);
  char16_t other[] = u"New tab";
  info.lpszText = other;
  P().SendMessageW(tip, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LParam>(&info));
  info.rect = {5, 6, 7, 8};
  P().SendMessageW(tip, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LParam>(&info));
  info.uId = 7;
  P().SendMessageW(tip, TTM_DELTOOLW, 0, reinterpret_cast<LParam>(&info));
  info.uId = 99;  // unknown: ignored
  P().SendMessageW(tip, TTM_DELTOOLW, 0, reinterpret_cast<LParam>(&info));
  P().SendMessageW(tip, TTM_POP, 0, 0);
  P().SendMessageW(tip, TTM_ACTIVATE, 0, 0);
  TTooltipState state;
  ASSERT_TRUE(Os().ReadTooltip(tip, &state));
  EXPECT_FALSE(state.active);
  EXPECT_EQ(state.maxWidth, 300);
  EXPECT_EQ(state.pops, 1);
  ASSERT_EQ(state.tools.size(), 1u);
  EXPECT_EQ(state.tools[0].id, 8u);
  EXPECT_EQ(state.tools[0].hwnd, parent);
  EXPECT_EQ(state.tools[0].flags, TTF_SUBCLASS);
  EXPECT_EQ(state.tools[0].text, u"New tab");
  EXPECT_EQ(state.tools[0].rect, (TRect{5, 6, 7, 8}));
  // A short record is refused.
  info.cbSize = 8;
  EXPECT_EQ(P().SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LParam>(&info)), 0);
  EXPECT_EQ(P().SendMessageW(tip, TTM_ADDTOOLW, 0, 0), 0);
  EXPECT_FALSE(Os().ReadTooltip(parent, &state));
}

}  // namespace
}  // namespace qx::test
