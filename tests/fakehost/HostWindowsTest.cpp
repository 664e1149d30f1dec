#include <gtest/gtest.h>

#include "fakehost/FakeBrowser.h"
#include "platform/portable/ScopedPortableOs.h"

namespace qx {
namespace {

TEST(FakeHostWindowsTest, MainWindowFullScreenAndItsToolbar) {
  TScopedPortableOs os;
  TFakeBrowser browser;
  auto& windows = browser.Host().HostWindows();
  const HWnd main = windows.CreateMainWindow(TRect{10, 20, 1290, 820});
  ASSERT_NE(main, nullptr);
  EXPECT_EQ(windows.CreateMainWindow(TRect{}), main);  // one main window

  ComPtr<IQxIWindow> window;
  ASSERT_EQ(browser.Host().Windows().GetMainWindow(window.put()), kOk);
  ComPtr<IQxIHandle> handle;
  window->GetHandle(handle.put());
  std::uintptr_t value = 0;
  handle->GetValue(&value);
  EXPECT_EQ(value, reinterpret_cast<std::uintptr_t>(main));

  const auto style = [&] {
    return static_cast<std::uint32_t>(Platform().GetWindowLongW(main, win::GWL_STYLE));
  };
  EXPECT_NE(style() & 0xC00000u, 0u);
  windows.SetFullscreen(true);
  EXPECT_EQ(style() & 0xC00000u, 0u);
  windows.SetFullscreen(false);
  EXPECT_NE(style() & 0xC00000u, 0u);

  EXPECT_EQ(Platform().FindWindowW(u"FullscreenToolbar", u"XmlWidgetWindow"), nullptr);
  const HWnd toolbar = windows.ShowFullscreenToolbar(TRect{0, 0, 1280, 43});
  EXPECT_EQ(Platform().FindWindowW(u"FullscreenToolbar", u"XmlWidgetWindow"), toolbar);
  TRect bar{};
  ASSERT_TRUE(Platform().GetWindowRect(toolbar, &bar));
  EXPECT_EQ(bar.Bottom, 43);
  windows.HideFullscreenToolbar();
  EXPECT_EQ(Platform().FindWindowW(u"FullscreenToolbar", u"XmlWidgetWindow"), nullptr);
}

}  // namespace
}  // namespace qx
