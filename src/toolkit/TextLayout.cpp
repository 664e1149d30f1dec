#include "toolkit/TextLayout.h"

#include <cmath>

#include "toolkit/GlyphSource.h"
#include "toolkit/Managers.h"

namespace qx {

std::u32string DecodeUtf16(const std::u16string& text) {
  std::u32string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00);
      ++i;
    }
    out.push_back(c);
  }
  return out;
}

std::u16string EncodeUtf16(const std::u32string& text) {
  std::u16string out;
  for (char32_t c : text) {
    if (c >= 0x10000) {
      c -= 0x10000;
      out.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
    } else {
      out.push_back(static_cast<char16_t>(c));
    }
  }
  return out;
}

namespace {

constexpr char32_t kEllipsis = 0x2026;

float Advance(glyphs::IFontFace& face, const std::u32string& chars, std::size_t from, std::size_t to) {
  float w = 0;
  for (std::size_t i = from; i < to; ++i) w += face.Glyph(chars[i]).Advance;
  return w;
}

bool BreaksAnywhere(char32_t c) { return c >= 0x2E80; }  // CJK and beyond: no spaces between words

// Cuts a line so that it and an ellipsis fit in maxWidth.
void Ellipsize(glyphs::IFontFace& face, std::u32string& chars, float maxWidth, TTextTrimming trimming) {
  float ellipsis = face.Glyph(kEllipsis).Advance;
  float w = 0;
  std::size_t fit = 0;
  for (; fit < chars.size(); ++fit) {
    float a = face.Glyph(chars[fit]).Advance;
    if (w + a + ellipsis > maxWidth) break;
    w += a;
  }
  if (trimming == TTextTrimming::Word) {
    std::size_t space = chars.find_last_of(U' ', fit);
    if (space != std::u32string::npos && space > 0 && space < fit) fit = space;
  }
  chars.resize(fit);
  while (!chars.empty() && chars.back() == U' ') chars.pop_back();
  chars.push_back(kEllipsis);
}

}  // namespace

void TTextLayout::EndUpdate() {
  if (FUpdating > 0 && --FUpdating == 0) Ensure();
}

void TTextLayout::Ensure() {
  TInputs now{Text, Font, MaxSize, WordWrap, Trimming};
  if (FValid && now == FLast) return;
  FLast = now;
  DoLayout();
  FValid = true;
}

void TTextLayout::DoLayout() {
  glyphs::IFontFace& face = TTextLayoutManager::Face(Font);
  glyphs::TFontMetrics m = face.Metrics();
  FLineHeight = m.LineHeight;
  FAscent = m.Ascent;
  FLines.clear();
  std::u32string all = DecodeUtf16(Text);
  const float maxW = MaxSize.X;
  std::size_t start = 0;
  while (start <= all.size()) {
    std::size_t end = all.find(U'\n', start);
    if (end == std::u32string::npos) end = all.size();
    std::u32string para = all.substr(start, end - start);
    if (!para.empty() && para.back() == U'\r') para.pop_back();
    if (!WordWrap) {
      FLines.push_back({para, 0});
    } else {
      // Greedy wrap: break after the last space that fits, or anywhere in CJK text,
      // or inside a word that is wider than the box on its own.
      std::size_t i = 0;
      if (para.empty()) FLines.push_back({});
      while (i < para.size()) {
        float w = 0;
        std::size_t j = i, lastBreak = std::u32string::npos;
        for (; j < para.size(); ++j) {
          float a = face.Glyph(para[j]).Advance;
          if (w + a > maxW && j > i) break;
          w += a;
          if (para[j] == U' ') lastBreak = j + 1;
          else if (BreaksAnywhere(para[j])) lastBreak = j + 1;
        }
        std::size_t cut = j;
        if (j < para.size() && lastBreak != std::u32string::npos && lastBreak > i) cut = lastBreak;
        std::u32string line = para.substr(i, cut - i);
        while (!line.empty() && line.back() == U' ') line.pop_back();
        FLines.push_back({line, 0});
        i = cut;
        while (i < para.size() && para[i] == U' ') ++i;
      }
    }
    start = end + 1;
  }
  if (WordWrap && FLineHeight > 0) {
    std::size_t fits = std::max<std::size_t>(1, static_cast<std::size_t>(std::floor(MaxSize.Y / FLineHeight + 1e-3f)));
    if (FLines.size() > fits) {
      FLines.resize(fits);
      if (Trimming != TTextTrimming::None) {
        std::u32string& last = FLines.back().Chars;
        last.push_back(U' ');
        last.push_back(kEllipsis);  // marks the cut even when the last line is short
        if (Advance(face, last, 0, last.size()) > maxW) {
          last.pop_back();
          Ellipsize(face, last, maxW, Trimming);
        }
      }
    }
  }
  for (TLine& line : FLines) {
    line.Width = Advance(face, line.Chars, 0, line.Chars.size());
    if (Trimming != TTextTrimming::None && line.Width > maxW) {
      Ellipsize(face, line.Chars, maxW, Trimming);
      line.Width = Advance(face, line.Chars, 0, line.Chars.size());
    }
  }
}

float TTextLayout::TextWidth() {
  Ensure();
  float w = 0;
  for (const TLine& line : FLines) w = std::max(w, line.Width);
  return w;
}

float TTextLayout::TextHeight() {
  Ensure();
  return FLineHeight * static_cast<float>(FLines.size());
}

int TTextLayout::LineCount() {
  Ensure();
  return static_cast<int>(FLines.size());
}

std::u16string TTextLayout::LineText(int index) {
  Ensure();
  if (index < 0 || index >= static_cast<int>(FLines.size())) return {};
  return EncodeUtf16(FLines[static_cast<std::size_t>(index)].Chars);
}

float TTextLayout::LineLeft(const TLine& line) const {
  switch (HorizontalAlign) {
    case TTextAlign::Center:
      return TopLeft.X + (MaxSize.X - line.Width) / 2;
    case TTextAlign::Trailing:
      return TopLeft.X + MaxSize.X - line.Width;
    default:
      return TopLeft.X;
  }
}

float TTextLayout::BlockTop() const {
  float h = FLineHeight * static_cast<float>(FLines.size());
  switch (VerticalAlign) {
    case TTextAlign::Center:
      return TopLeft.Y + (MaxSize.Y - h) / 2;
    case TTextAlign::Trailing:
      return TopLeft.Y + MaxSize.Y - h;
    default:
      return TopLeft.Y;
  }
}

TRectF TTextLayout::TextRect() {
  Ensure();
  TRectF r;
  float top = BlockTop();
  for (std::size_t i = 0; i < FLines.size(); ++i) {
    float left = LineLeft(FLines[i]);
    float y = top + FLineHeight * static_cast<float>(i);
    r = r.Union(TRectF(left, y, left + std::max(FLines[i].Width, 0.001f), y + FLineHeight));
  }
  return r;
}

void TTextLayout::RenderLayout(TCanvas* canvas) {
  if (!canvas) canvas = FCanvas;
  if (!canvas) return;
  Ensure();
  glyphs::IFontFace& face = TTextLayoutManager::Face(Font);
  TPointF offset = canvas->Offset();
  float top = BlockTop();
  for (std::size_t i = 0; i < FLines.size(); ++i) {
    float pen = LineLeft(FLines[i]) + offset.X;
    float baseline = std::round(top + offset.Y + FAscent + FLineHeight * static_cast<float>(i));
    for (char32_t c : FLines[i].Chars) {
      const glyphs::TGlyphImage& g = face.Glyph(c);
      if (g.Width > 0)
        canvas->BlendMask(static_cast<int>(std::lround(pen)) + g.Left, static_cast<int>(baseline) - g.Top, g.Width,
                          g.Height, g.Coverage.data(), g.Width, Color, Opacity);
      pen += g.Advance;
    }
  }
}

float TTextLayout::MeasureWidth(const TFont& font, const std::u16string& text) {
  glyphs::IFontFace& face = TTextLayoutManager::Face(font);
  std::u32string chars = DecodeUtf16(text);
  float w = 0, best = 0;
  for (char32_t c : chars) {
    if (c == U'\n') {
      best = std::max(best, w);
      w = 0;
      continue;
    }
    w += face.Glyph(c).Advance;
  }
  return std::max(best, w);
}

}  // namespace qx
