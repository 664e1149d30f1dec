#include "PagePictures.h"

#include <array>
#include <cmath>
#include <string>

#include "base/Text.h"
#include "toolkit/Canvas.h"

namespace qx {
namespace {

TAlphaColor Hue(int number, float lightness) {
  // Hues picked so that any two pages of a run are told apart at a glance.
  constexpr std::array<float, 8> kHues = {0, 210, 120, 30, 280, 180, 55, 320};
  const float h = kHues[static_cast<std::size_t>(number) % kHues.size()] / 60.0f;
  const float c = lightness, x = c * (1 - std::fabs(std::fmod(h, 2.0f) - 1));
  float r = 0, g = 0, b = 0;
  switch (static_cast<int>(h)) {
    case 0:
      r = c, g = x;
      break;
    case 1:
      r = x, g = c;
      break;
    case 2:
      g = c, b = x;
      break;
    case 3:
      g = x, b = c;
      break;
    case 4:
      r = x, b = c;
      break;
    default:
      r = c, b = x;
      break;
  }
  auto byte = [](float v) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(v, 0.0f, 1.0f) * 255));
  };
  return 0xFF000000u | byte(r + 0.15f) << 16 | byte(g + 0.15f) << 8 | byte(b + 0.15f);
}

// Segments a..g of a seven-segment digit.
constexpr std::array<std::uint8_t, 10> kSegments = {0x3F, 0x06, 0x5B, 0x4F, 0x66,
                                                    0x6D, 0x7D, 0x07, 0x7F, 0x6F};

void DrawDigit(TCanvas& canvas, int digit, float left, float top, float w, float h, TAlphaColor colour) {
  const float t = std::max(2.0f, w / 5), half = h / 2;
  const TRectF bars[7] = {
      {left, top, left + w, top + t},                           // a
      {left + w - t, top, left + w, top + half},                // b
      {left + w - t, top + half, left + w, top + h},            // c
      {left, top + h - t, left + w, top + h},                   // d
      {left, top + half, left + t, top + h},                    // e
      {left, top, left + t, top + half},                        // f
      {left, top + half - t / 2, left + w, top + half + t / 2}  // g
  };
  for (int s = 0; s < 7; ++s)
    if (kSegments[static_cast<std::size_t>(digit)] & (1u << s)) canvas.FillRect(bars[s], colour, 1);
}

}  // namespace

std::unique_ptr<TBitmap> DrawPagePicture(int number, int width, int height) {
  auto picture = std::make_unique<TBitmap>(width, height);
  picture->Clear(0xFFF4F4F0u);
  TCanvas& canvas = picture->Canvas();
  canvas.BeginScene();
  const auto w = static_cast<float>(width), h = static_cast<float>(height);
  const TAlphaColor strong = Hue(number, 0.75f), soft = Hue(number, 0.35f) | 0xFF000000u;
  canvas.FillRect(TRectF(0, 0, w, h * 0.22f), strong, 1);
  // Content blocks whose arrangement also changes with the number.
  for (int i = 0; i < 3; ++i) {
    const float top = h * (0.32f + 0.2f * static_cast<float>(i));
    const float length = w * (0.25f + 0.1f * static_cast<float>((number + i) % 3));
    canvas.FillRect(TRectF(w * 0.06f, top, w * 0.06f + length, top + h * 0.1f), soft, 0.6f);
  }
  const std::string digits = std::to_string(number);
  const float dh = h * 0.58f, dw = dh * 0.5f, gap = dw * 0.3f;
  float left = w * 0.94f - static_cast<float>(digits.size()) * (dw + gap) + gap;
  for (char d : digits) {
    DrawDigit(canvas, d - '0', left, h * 0.32f, dw, dh, strong);
    left += dw + gap;
  }
  canvas.EndScene();
  return picture;
}

bool WriteThumbnail(const std::filesystem::path& folder, std::u16string_view guid, const TBitmap& picture) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  try {
    picture.SaveToFile(folder / (ToUtf8(guid) + ".png"));
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

std::unique_ptr<TBitmap> DrawHostWindow(int width, int height, int stripTop, int stripHeight,
                                        const TBitmap* page) {
  auto picture = std::make_unique<TBitmap>(width, height);
  picture->Clear(0xFF3A3F47u);
  TCanvas& canvas = picture->Canvas();
  canvas.BeginScene();
  const auto w = static_cast<float>(width), h = static_cast<float>(height);
  canvas.FillRect(TRectF(0, 0, w, static_cast<float>(stripTop)), 0xFF2B2F36u, 1);
  const auto pageTop = static_cast<float>(stripTop + stripHeight);
  if (page) {
    const auto pw = static_cast<float>(page->Width()), ph = static_cast<float>(page->Height());
    canvas.DrawBitmap(*page, TRectF(0, 0, pw, ph), TRectF(0, pageTop, w, h), 1);
  } else {
    canvas.FillRect(TRectF(0, pageTop, w, h), 0xFFFFFFFFu, 1);
  }
  canvas.EndScene();
  return picture;
}

}  // namespace qx
