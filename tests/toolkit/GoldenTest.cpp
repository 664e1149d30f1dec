// Pictures compared with golden PNGs. To regenerate after an intended change:
//   QX_UPDATE_GOLDENS=1 ./qx_toolkit_tests --gtest_filter='ToolkitGolden*'

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "ToolkitFixture.h"
#include "platform/portable/ScopedPortableOs.h"
#include "toolkit/Effects.h"
#include "toolkit/Form.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"

namespace qx {
namespace {

class ToolkitGolden : public test::ToolkitTest {};

void CompareWithGolden(const TBitmap& picture, const std::string& name) {
  std::filesystem::path golden = std::filesystem::path(QX_TEST_SOURCE_DIR) / "toolkit" / "golden" / name;
  if (std::getenv("QX_UPDATE_GOLDENS")) {
    picture.SaveToFile(golden);
    GTEST_SKIP() << "golden written: " << golden;
  }
  ASSERT_TRUE(std::filesystem::exists(golden)) << golden << " is missing; run with QX_UPDATE_GOLDENS=1";
  auto expected = TBitmap::CreateFromFile(golden);
  ASSERT_EQ(expected->Width(), picture.Width());
  ASSERT_EQ(expected->Height(), picture.Height());
  int off = 0, worst = 0;
  for (int y = 0; y < picture.Height(); ++y)
    for (int x = 0; x < picture.Width(); ++x) {
      std::uint32_t a = picture.Pixel(x, y), b = expected->Pixel(x, y);
      int diff = 0;
      for (int s = 0; s < 32; s += 8)
        diff =
            std::max(diff, std::abs(static_cast<int>((a >> s) & 0xFF) - static_cast<int>((b >> s) & 0xFF)));
      worst = std::max(worst, diff);
      if (diff > 2) ++off;
    }
  // A few pixels may differ by rounding; none by much.
  EXPECT_LE(off, picture.Width() * picture.Height() / 100) << "worst channel difference " << worst;
  EXPECT_LE(worst, 24);
}

// A background, a stretched translucent gradient, a clipped paint box and a blur.
void BuildSmallScene(TForm& form) {
  form.SetBounds(0, 0, 64, 32);
  form.Fill.Color = 0xFF203040u;

  TBitmap gradient(8, 8);
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x)
      gradient.Bits()[y * 8 + x] = PremultiplyColor(0xFF000000u | static_cast<std::uint32_t>(x * 32) << 16 |
                                                    static_cast<std::uint32_t>(y * 32) << 8 | 0x80u);

  auto* stretched = new TImage(&form);
  stretched->SetBounds(2, 2, 28, 28);
  stretched->SetWrapMode(TImageWrapMode::Stretch);
  stretched->SetBitmap(&gradient);
  stretched->SetOpacity(0.8f);
  form.AddObject(stretched);

  auto* clip = new TLayout(&form);
  clip->SetBounds(34, 4, 26, 24);
  clip->SetClipChildren(true);
  clip->SetOpacity(0.5f);
  form.AddObject(clip);
  auto* box = new TPaintBox(&form);
  box->SetBounds(-6, 6, 30, 30);  // partly outside the clipping parent
  box->OnPaint = [](TFmxObject*, TCanvas& canvas, const TRectF& rect) {
    canvas.FillRoundRect(rect, 6, 0xFFFFC000u, 1);
  };
  clip->AddObject(box);

  auto* blurred = new TImage(&form);
  blurred->SetBounds(40, 2, 6, 6);
  blurred->Bitmap().SetSize(6, 6);
  blurred->Bitmap().Clear(TAlphaColors::White);
  form.AddObject(blurred);
  auto* blur = new TBlurEffect(&form);
  blur->SetSoftness(0.2f);
  blurred->AddObject(blur);
}

TEST_F(ToolkitGolden, SmallScene) {
  TForm form;
  BuildSmallScene(form);
  CompareWithGolden(form.RenderToBitmap(), "small_scene.png");
}

TEST_F(ToolkitGolden, SmallSceneInAReparentedWindow) {
  TScopedPortableOs os;
  os->RegisterClassW(u"QxGoldenHost", os->DefWindowProcAddress());
  HWnd host = os->CreateWindowExW(0, u"QxGoldenHost", u"", win::WS_POPUP | win::WS_VISIBLE, 40, 40, 200, 100,
                                  nullptr, nullptr);
  {
    TForm form;
    BuildSmallScene(form);
    form.HandleNeed();
    HWnd hwnd = form.Handle();
    os->SetWindowLongW(hwnd, win::GWL_STYLE, static_cast<std::int32_t>(win::WS_CHILD));
    os->SetParent(hwnd, host);
    form.SetBounds(12, 8, 64, 32);
    form.Show();
    os->ProcessMessages();
    TWindowPixels pixels;
    ASSERT_TRUE(os->ReadWindowPixels(hwnd, &pixels));
    ASSERT_EQ(pixels.width, 64);
    ASSERT_EQ(pixels.height, 32);
    TBitmap shown(pixels.width, pixels.height);
    std::copy(pixels.pixels.begin(), pixels.pixels.end(), shown.Bits());
    CompareWithGolden(shown, "small_scene.png");
  }
  os->DestroyWindow(host);
}

}  // namespace
}  // namespace qx
