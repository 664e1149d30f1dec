// Scenes compared with golden PNGs (see common/GoldenPicture.h to regenerate).

#include <gtest/gtest.h>

#include "ToolkitFixture.h"
#include "platform/portable/ScopedPortableOs.h"
#include "common/GoldenPicture.h"
#include "toolkit/Effects.h"
#include "toolkit/Form.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"

namespace qx {
namespace {

class ToolkitGolden : public test::ToolkitTest {};

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
  test::ExpectMatchesGolden(form.RenderToBitmap(), "toolkit/golden/small_scene.png");
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
    test::ExpectMatchesGolden(shown, "toolkit/golden/small_scene.png");
  }
  os->DestroyWindow(host);
}

}  // namespace
}  // namespace qx
