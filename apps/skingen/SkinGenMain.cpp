// Writes the default skin: every picture of the four image sets as a PNG, in the folders
// the host's "skin://" paths name, and optionally a contact sheet of all of them.
//
//   qx_skingen <output folder> [--sheet <file.png>]

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "SkinPictures.h"
#include "base/Text.h"
#include "resources/CabinetIconBarImageRes.h"
#include "resources/CabinetImageRes.h"
#include "resources/SmartSearchImageRes.h"
#include "resources/TabbarImageRes.h"
#include "toolkit/Canvas.h"

namespace {

using namespace qx;

struct TSet {
  const char* folder;
  const std::vector<std::u16string_view>* keys;
};

void Checker(TBitmap& sheet, int left, int top, int width, int height) {
  for (int y = top; y < top + height; ++y)
    for (int x = left; x < left + width; ++x)
      sheet.Bits()[static_cast<std::size_t>(y) * static_cast<std::size_t>(sheet.Width()) + static_cast<std::size_t>(x)] =
          ((x / 6 + y / 6) % 2) ? 0xFF8C9096u : 0xFF9EA2A8u;
}

std::unique_ptr<TBitmap> ContactSheet(const std::vector<std::unique_ptr<TBitmap>>& pictures) {
  constexpr int kColumns = 10, kCellW = 150, kCellH = 80, kGap = 6;
  const int rows = (static_cast<int>(pictures.size()) + kColumns - 1) / kColumns;
  auto sheet = std::make_unique<TBitmap>(kColumns * (kCellW + kGap) + kGap, rows * (kCellH + kGap) + kGap);
  sheet->Clear(0xFF1E2024u);
  TCanvas& canvas = sheet->Canvas();
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const int col = static_cast<int>(i) % kColumns, row = static_cast<int>(i) / kColumns;
    const int left = kGap + col * (kCellW + kGap), top = kGap + row * (kCellH + kGap);
    Checker(*sheet, left, top, kCellW, kCellH);
    const TBitmap& p = *pictures[i];
    const float w = static_cast<float>(p.Width()), h = static_cast<float>(p.Height());
    const float scale = std::min({2.0f, (kCellW - 8) / w, (kCellH - 8) / h});
    const float dw = std::round(w * scale), dh = std::round(h * scale);
    const float x = static_cast<float>(left) + (kCellW - dw) / 2, y = static_cast<float>(top) + (kCellH - dh) / 2;
    canvas.BeginScene();
    canvas.DrawBitmap(p, TRectF(0, 0, w, h), TRectF(x, y, x + dw, y + dh), 1, scale == 2.0f);
    canvas.EndScene();
  }
  return sheet;
}

int Run(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s <output folder> [--sheet <file.png>]\n", argv[0]);
    return 2;
  }
  const std::filesystem::path out = argv[1];
  std::filesystem::path sheetPath;
  for (int i = 2; i + 1 < argc; ++i)
    if (std::string_view(argv[i]) == "--sheet") sheetPath = argv[i + 1];

  const TSet sets[] = {
      {"widget/toolbar/PreviewStrip", &TTabbarImageRes::Keys()},
      {"widget/toolbar/CabinetBar", &TCabinetIconBarImageRes::Keys()},
      {"widget/module/SmartSearch", &TSmartSearchImageRes::Keys()},
      {"chrome/cabinet/img", &TCabinetImageRes::Keys()},
  };
  std::vector<std::unique_ptr<TBitmap>> drawn;
  int missing = 0;
  for (const TSet& set : sets) {
    const std::filesystem::path folder = out / set.folder;
    std::filesystem::create_directories(folder);
    for (std::u16string_view key : *set.keys) {
      const std::string name = ToUtf8(key);
      auto picture = skin::DrawPicture(name);
      if (!picture) {
        std::fprintf(stderr, "no drawing for %s\n", name.c_str());
        ++missing;
        continue;
      }
      picture->SaveToFile(folder / (name + ".png"));
      drawn.push_back(std::move(picture));
    }
  }
  if (!sheetPath.empty()) {
    if (sheetPath.has_parent_path()) std::filesystem::create_directories(sheetPath.parent_path());
    ContactSheet(drawn)->SaveToFile(sheetPath);
  }
  std::printf("%zu pictures written to %s\n", drawn.size(), out.string().c_str());
  return missing == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "skingen: %s\n", e.what());
    return 1;
  }
}
