#include <gtest/gtest.h>

#include "toolkit/Bitmap.h"
#include "toolkit/Canvas.h"
#include "toolkit/Effects.h"

namespace qx {
namespace {

TEST(ToolkitBitmap, PremultipliesAndBack) {
  EXPECT_EQ(PremultiplyColor(0x80FF0000u), 0x80800000u);
  EXPECT_EQ(PremultiplyColor(0x00FFFFFFu), 0u);
  EXPECT_EQ(PremultiplyColor(0xFF123456u), 0xFF123456u);
  EXPECT_EQ(UnpremultiplyColor(0x80800000u), 0x80FF0000u);
}

TEST(ToolkitBitmap, SetSizeMapAssign) {
  TBitmap b;
  EXPECT_TRUE(b.IsEmpty());
  int changes = 0;
  b.OnChange = [&] { ++changes; };
  b.SetSize(3, 2);
  EXPECT_EQ(b.Width(), 3);
  EXPECT_EQ(b.Height(), 2);
  TBitmapData data;
  ASSERT_TRUE(b.Map(TMapAccess::Write, data));
  EXPECT_EQ(data.Pitch, 12);
  TBitmapData again;
  EXPECT_FALSE(b.Map(TMapAccess::Read, again));  // one map at a time
  data.Line(1)[2] = 0xFF00FF00u;
  int before = changes;
  b.Unmap(data);
  EXPECT_EQ(changes, before + 1);
  EXPECT_EQ(b.PixelColor(2, 1), 0xFF00FF00u);

  TBitmap copy;
  copy.Assign(&b);
  EXPECT_EQ(copy.Width(), 3);
  EXPECT_EQ(copy.Pixel(2, 1), 0xFF00FF00u);
  copy.Assign(nullptr);
  EXPECT_TRUE(copy.IsEmpty());
  EXPECT_THROW(b.SetSize(-1, 4), EToolkitError);
}

TEST(ToolkitCanvas, FillRectWithOpacityAndClip) {
  TBitmap b(10, 10);
  TCanvas& c = b.Canvas();
  c.BeginScene();
  c.Clear(TAlphaColors::White);
  c.FillRect(TRectF(0, 0, 5, 10), TAlphaColors::Black, 0.5f);
  c.SetClipRect(TRectF(0, 0, 10, 3));
  c.FillRect(TRectF(5, 0, 10, 10), TAlphaColors::Red, 1);
  c.EndScene();
  TAlphaColor half = b.PixelColor(2, 5);
  EXPECT_EQ(half >> 24, 0xFFu);
  EXPECT_NEAR(static_cast<int>(half & 0xFF), 128, 2);
  EXPECT_EQ(b.PixelColor(7, 1), TAlphaColors::Red);
  EXPECT_EQ(b.PixelColor(7, 5), TAlphaColors::White);  // clipped away
}

TEST(ToolkitCanvas, DrawBitmapSameSizeScaledAndOffset) {
  TBitmap src(2, 2);
  src.Clear(TAlphaColors::Blue);
  src.Bits()[0] = PremultiplyColor(TAlphaColors::Red);
  TBitmap b(8, 8);
  TCanvas& c = b.Canvas();
  c.BeginScene();
  c.Clear(TAlphaColors::Null);
  c.SetOffset({1, 1});
  c.DrawBitmap(src, TRectF(0, 0, 2, 2), TRectF(0, 0, 2, 2), 1);
  c.SetOffset({0, 0});
  c.DrawBitmap(src, TRectF(0, 0, 2, 2), TRectF(4, 4, 8, 8), 1);
  c.EndScene();
  EXPECT_EQ(b.PixelColor(1, 1), TAlphaColors::Red);
  EXPECT_EQ(b.PixelColor(2, 2), TAlphaColors::Blue);
  EXPECT_EQ(b.PixelColor(0, 0), 0u);
  // Scaled up twice: the corners keep their colours, the middle blends.
  EXPECT_EQ(b.PixelColor(4, 4), TAlphaColors::Red);
  EXPECT_EQ(b.PixelColor(7, 7), TAlphaColors::Blue);
  TAlphaColor mid = b.PixelColor(5, 4);
  EXPECT_GT((mid >> 16) & 0xFF, 0u);
  EXPECT_GT(mid & 0xFF, 0u);
}

TEST(ToolkitCanvas, DrawBitmapOpacityBlendsOver) {
  TBitmap src(1, 1);
  src.Clear(TAlphaColors::Black);
  TBitmap b(1, 1);
  b.Clear(TAlphaColors::White);
  b.Canvas().DrawBitmap(src, TRectF(0, 0, 1, 1), TRectF(0, 0, 1, 1), 0.25f);
  EXPECT_NEAR(static_cast<int>(b.PixelColor(0, 0) & 0xFF), 191, 2);
}

TEST(ToolkitCanvas, RoundRectLeavesCornersOpen) {
  TBitmap b(20, 20);
  b.Canvas().FillRoundRect(TRectF(0, 0, 20, 20), 6, TAlphaColors::Black, 1);
  EXPECT_EQ(b.PixelColor(0, 0) >> 24, 0u);
  EXPECT_EQ(b.PixelColor(10, 10), TAlphaColors::Black);
  EXPECT_EQ(b.PixelColor(10, 0), TAlphaColors::Black);
}

TEST(ToolkitBlur, SpreadsAndKeepsTotal) {
  TBitmap b(21, 21);
  b.Canvas().FillRect(TRectF(8, 8, 13, 13), TAlphaColors::White, 1);
  auto total = [&] {
    long sum = 0;
    for (int y = 0; y < 21; ++y)
      for (int x = 0; x < 21; ++x) sum += b.Pixel(x, y) >> 24;
    return sum;
  };
  long before = total();
  TBlurEffect blur;
  blur.SetSoftness(0.3f);
  blur.ProcessEffect(b);
  EXPECT_GT(b.Pixel(5, 10) >> 24, 0u);        // spread outwards
  EXPECT_LT(b.Pixel(10, 10) >> 24, 255u);     // centre softened
  EXPECT_NEAR(total(), before, before / 10);  // roughly the same amount of ink
}

}  // namespace
}  // namespace qx
