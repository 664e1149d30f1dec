#include <gtest/gtest.h>

#include "ToolkitFixture.h"
#include "toolkit/Canvas.h"
#include "toolkit/Managers.h"
#include "toolkit/TextLayout.h"

namespace qx {
namespace {

class ToolkitText : public test::ToolkitTest {};

TEST_F(ToolkitText, WidthsAreSane) {
  TFont font;
  font.Family = u"DejaVu Sans";
  font.Size = 12;
  float i3 = TTextLayout::MeasureWidth(font, u"iii");
  float w3 = TTextLayout::MeasureWidth(font, u"WWW");
  EXPECT_GT(i3, 3);
  EXPECT_GT(w3, i3 * 1.5f);
  EXPECT_NEAR(TTextLayout::MeasureWidth(font, u"abcabc"), 2 * TTextLayout::MeasureWidth(font, u"abc"), 1.0f);
  TFont big = font;
  big.Size = 24;
  float hello = TTextLayout::MeasureWidth(font, u"Hello");  // hinted advances: whole pixels
  EXPECT_NEAR(TTextLayout::MeasureWidth(big, u"Hello"), 2 * hello, 0.1f * 2 * hello);
  EXPECT_EQ(TTextLayout::MeasureWidth(font, u""), 0);
  // Japanese comes from a fallback font and still has a width.
  EXPECT_GT(TTextLayout::MeasureWidth(font, u"\u65E5\u672C"), 12);
  // An unknown family falls back to a real font.
  TFont unknown;
  unknown.Family = u"No Such Family";
  EXPECT_GT(TTextLayout::MeasureWidth(unknown, u"Hello"), 10);
}

TEST_F(ToolkitText, TrimmingAddsEllipsis) {
  TTextLayout layout;
  layout.BeginUpdate();
  layout.Text = u"A rather long title of a web page";
  layout.MaxSize = {60, 20};
  layout.Trimming = TTextTrimming::Character;
  layout.EndUpdate();
  EXPECT_LE(layout.TextWidth(), 60);
  std::u16string line = layout.LineText(0);
  ASSERT_FALSE(line.empty());
  EXPECT_EQ(line.back(), u'\u2026');
  layout.Trimming = TTextTrimming::None;  // read again: lays out anew
  EXPECT_GT(layout.TextWidth(), 60);
}

TEST_F(ToolkitText, WordWrapBreaksAtSpaces) {
  TTextLayout layout;
  layout.BeginUpdate();
  layout.Text = u"one two three four five six";
  layout.MaxSize = {70, 1000};
  layout.WordWrap = true;
  layout.EndUpdate();
  EXPECT_GT(layout.LineCount(), 1);
  for (int i = 0; i < layout.LineCount(); ++i) {
    std::u16string line = layout.LineText(i);
    EXPECT_FALSE(line.empty());
    EXPECT_NE(line.front(), u' ');
    EXPECT_NE(line.back(), u' ');
  }
  EXPECT_LE(layout.TextWidth(), 70);
}

TEST_F(ToolkitText, AlignmentMovesInk) {
  auto inkLeft = [](TTextAlign align) {
    TBitmap b(100, 20);
    TCanvas& c = b.Canvas();
    c.BeginScene();
    c.Fill.Color = TAlphaColors::Black;
    c.FillText(TRectF(0, 0, 100, 20), u"ab", false, 1, align);
    c.EndScene();
    for (int x = 0; x < 100; ++x)
      for (int y = 0; y < 20; ++y)
        if ((b.Pixel(x, y) >> 24) > 64) return x;
    return -1;
  };
  int left = inkLeft(TTextAlign::Leading), centre = inkLeft(TTextAlign::Center), right = inkLeft(TTextAlign::Trailing);
  ASSERT_GE(left, 0);
  EXPECT_LT(left, 5);
  EXPECT_GT(centre, left + 30);
  EXPECT_GT(right, centre + 30);
}

TEST_F(ToolkitText, FontCacheKeepsOneFacePerFont) {
  TFont a;
  a.Size = 11;
  TTextLayout::MeasureWidth(a, u"x");
  TTextLayout::MeasureWidth(a, u"y");
  std::size_t n = TTextLayoutManager::CachedFaceCount();
  TFont b = a;
  b.Style = unsigned(TFontStyle::Bold);
  TTextLayout::MeasureWidth(b, u"x");
  EXPECT_EQ(TTextLayoutManager::CachedFaceCount(), n + 1);
  TTextLayoutManager::UnInitialize();
  EXPECT_EQ(TTextLayoutManager::CachedFaceCount(), 0u);
}

}  // namespace
}  // namespace qx
