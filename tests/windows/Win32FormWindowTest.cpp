// A form on a real window inside a host's window: what it paints is read back from the
// screen, and the toolkit's teardown leaves no window class behind.

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "ToolkitFixture.h"
#include "tests/windows/WindowPixels.h"
#include "toolkit/Application.h"
#include "toolkit/Form.h"
#include "toolkit/Image.h"

namespace qx {
namespace {

constexpr char16_t kHostClass[] = u"QxWin32Host";

LResult QX_STDCALL HostProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

class Win32FormWindow : public test::ToolkitTest {
 protected:
  void SetUp() override {
    test::ToolkitTest::SetUp();
    if (!P().GetClassInfoW(kHostClass, nullptr)) P().RegisterClassW(kHostClass, &HostProc);
    host = P().CreateWindowExW(0, kHostClass, u"host", win::WS_POPUP | win::WS_VISIBLE, 0, 0, 300, 100,
                               nullptr, nullptr);
    ASSERT_NE(host, nullptr);
  }
  void TearDown() override {
    form.reset();
    if (P().IsWindow(host)) P().DestroyWindow(host);
    test::ToolkitTest::TearDown();
  }
  IPlatform& P() { return Platform(); }
  // A form of two coloured halves, put into the host's window as a plug-in does.
  HWnd EmbedTwoColours(int left, int top) {
    form = std::make_unique<TForm>();
    // A real window frames a bordered form, so the client area would shrink.
    form->BorderStyle = TFmxFormBorderStyle::None;
    form->SetBounds(0, 0, 200, 50);
    for (auto [x, colour] : {std::pair{0.0f, 0xFFCC2200u}, std::pair{100.0f, 0xFF0044AAu}}) {
      auto* half = new TImage(form.get());
      half->SetBounds(x, 0, 100, 50);
      half->SetWrapMode(TImageWrapMode::Stretch);
      half->Bitmap().SetSize(2, 2);
      half->Bitmap().Clear(colour);
      form->AddObject(half);
    }
    form->HandleNeed();
    HWnd hwnd = form->Handle();
    auto style = static_cast<std::uint32_t>(P().GetWindowLongW(hwnd, win::GWL_STYLE));
    P().SetWindowLongW(hwnd, win::GWL_STYLE,
                       static_cast<std::int32_t>((style | win::WS_CHILD) & ~win::WS_POPUP));
    P().SetParent(hwnd, host);
    P().SetWindowPos(hwnd, nullptr, left, top, 200, 50, win::SWP_NOZORDER);
    form->Show();
    // The system maps the window and sizes it through messages of its own first.
    P().ProcessMessages();
    P().InvalidateRect(hwnd, nullptr, true);
    P().UpdateWindow(hwnd);
    return hwnd;
  }

  HWnd host = nullptr;
  std::unique_ptr<TForm> form;
};

TEST_F(Win32FormWindow, PaintReachesTheRealWindowPixelForPixel) {
  HWnd hwnd = EmbedTwoColours(40, 20);
  EXPECT_EQ(P().GetParent(hwnd), host);
  TRect client;
  ASSERT_TRUE(P().GetClientRect(hwnd, &client));
  EXPECT_EQ(client, (TRect{0, 0, 200, 50}));
  const std::vector<std::uint32_t> pixels = test::ReadBack(hwnd, 200, 50);
  // Rows are not flipped and the channels are not swapped on the way to the screen.
  EXPECT_EQ(pixels[0], 0xCC2200u);
  EXPECT_EQ(pixels[25 * 200 + 50], 0xCC2200u);
  EXPECT_EQ(pixels[49 * 200 + 99], 0xCC2200u);
  EXPECT_EQ(pixels[25 * 200 + 150], 0x0044AAu);
  EXPECT_EQ(pixels[49 * 200 + 199], 0x0044AAu);
  // The host's window shows the form where it was placed.
  const std::vector<std::uint32_t> hostPixels = test::ReadBack(host, 300, 100);
  EXPECT_EQ(hostPixels[30 * 300 + 60], 0xCC2200u);
  EXPECT_EQ(hostPixels[30 * 300 + 200], 0x0044AAu);
}

TEST_F(Win32FormWindow, DestroyingTheHostTakesTheFormsWindowAndTeardownItsClass) {
  HWnd hwnd = EmbedTwoColours(0, 0);
  ASSERT_TRUE(P().DestroyWindow(host));
  EXPECT_FALSE(P().IsWindow(hwnd));
  // The form heard its window go and makes a new one when asked.
  EXPECT_EQ(form->Handle(), nullptr);
  form.reset();
  EXPECT_TRUE(P().GetClassInfoW(TCommonCustomForm::kWindowClassName, nullptr));
  TToolkit::Finalize();
  // A module unloaded after this leaves no class pointing into its freed code.
  EXPECT_FALSE(P().GetClassInfoW(TCommonCustomForm::kWindowClassName, nullptr));
}

}  // namespace
}  // namespace qx
