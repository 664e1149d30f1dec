// Writes the default skin: every picture of the four image sets as a PNG, in the folders
// the host's "skin://" paths name, and optionally a contact sheet of all of them.
//
//   qx_skingen <output folder> [--sheet <file.png>] [--preview <file.png>]

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

// A mock-up of the strip built from the pictures, to judge them together.
std::unique_ptr<TBitmap> Preview() {
  auto pic = [](const char* key) { return skin::DrawPicture(key); };
  constexpr int kWidth = 640, kHeight = 94;
  auto strip = std::make_unique<TBitmap>(kWidth, kHeight);
  strip->Clear(0xFF1E2024u);
  TCanvas& c = strip->Canvas();
  c.BeginScene();
  auto draw = [&](const TBitmap& b, float x, float y, float w = -1, float h = -1) {
    const float bw = static_cast<float>(b.Width()), bh = static_cast<float>(b.Height());
    c.DrawBitmap(b, TRectF(0, 0, bw, bh), TRectF(x, y, x + (w < 0 ? bw : w), y + (h < 0 ? bh : h)), 1);
  };
  auto top = pic("TopBarBackground");
  draw(*top, 0, 0, kWidth, 30);
  auto left = pic("TabbarBackgroundLeft"), fill = pic("TabbarBackgroundFill"), right = pic("TabbarBackgroundRight");
  draw(*left, 0, 30);
  draw(*fill, 24, 30, kWidth - 48, 64);
  draw(*right, kWidth - 24, 30);
  auto group = pic("TabGroupbarBackground");
  draw(*group, 0, 0, kWidth, 24);
  auto gl = pic("TabGroupLeftActive"), gf = pic("TabGroupActive"), gr = pic("TabGroupRightActive");
  draw(*gl, 40, 0);
  draw(*gf, 50, 0, 90, 24);
  draw(*gr, 140, 0);
  auto dot = pic("TabGroup1Active");
  draw(*dot, 52, 0);
  auto mune = pic("TabGroupActiveMune");
  draw(*mune, 120, 0);
  auto sep = pic("TabgroupbarSeparator");
  draw(*sep, 156, 0);
  auto dot2 = pic("TabGroup2");
  draw(*dot2, 164, 0);
  auto dot3 = pic("TabGroupPrivate5");
  draw(*dot3, 190, 0);
  auto blank = pic("TabBlank");
  auto active = pic("TabActive"), bound = pic("TabBoundHovered");
  auto close = pic("TabCloseHovered"), closeNormal = pic("TabClose");
  auto badge = pic("TabBadgeBookmarked"), pin = pic("TabBadgeProtected");
  for (int i = 0; i < 5; ++i) {
    const float x = 48 + static_cast<float>(i) * 104, y = 38;
    c.FillRect(TRectF(x, y, x + 98, y + 49), 0xFF6A6A6Au, 1);
    draw(*blank, x + 1, y + 1);
    if (i == 1) draw(*active, x, y);
    if (i == 3) draw(*bound, x, y);
    if (i == 1) draw(*close, x + 76, y + 1);
    if (i == 3) draw(*closeNormal, x + 76, y + 1);
    if (i == 2) draw(*badge, x + 76, y + 1);
    if (i == 4) draw(*pin, x + 76, y + 1);
  }
  auto name = pic("TabNameBackground1");
  draw(*name, 10, 64);
  auto add = pic("TabbarAdd1"), cabinet = pic("TabbarCabinet1Hovered");
  draw(*add, 572, 48);
  draw(*cabinet, 604, 48);
  c.EndScene();
  auto big = std::make_unique<TBitmap>(kWidth * 2, kHeight * 2);
  big->Canvas().BeginScene();
  big->Canvas().DrawBitmap(*strip, TRectF(0, 0, kWidth, kHeight), TRectF(0, 0, kWidth * 2, kHeight * 2), 1, true);
  big->Canvas().EndScene();
  return big;
}

int Run(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s <output folder> [--sheet <file.png>] [--preview <file.png>]\n", argv[0]);
    return 2;
  }
  const std::filesystem::path out = argv[1];
  std::filesystem::path sheetPath, previewPath;
  for (int i = 2; i + 1 < argc; ++i) {
    if (std::string_view(argv[i]) == "--sheet") sheetPath = argv[i + 1];
    if (std::string_view(argv[i]) == "--preview") previewPath = argv[i + 1];
  }

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
  if (!previewPath.empty()) Preview()->SaveToFile(previewPath);
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
