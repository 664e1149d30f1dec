// Lays out a strip of tabs in sections for one view width, progress and pointer,
// and draws the result: the frames in stacking order, hidden tabs marked below
// the strip, each tab's section, and the map from straight to curve positions.
//
//   qx_layoutpng [--tabs N] [--sections a,b,c] [--section-count K] [--width W]
//                [--progress P] [--pointer X] [--active I] [--drag I] [--out file.png]

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <string>
#include <vector>

#include "PngWriter.h"
#include "support/LayoutPass.h"
#include "support/LayoutStrip.h"

namespace {

using namespace qx;
using layoutpng::TPicture;

struct TOptions {
  std::vector<int> sections{40, 25, 35};
  double width = 1200;
  double progress = 0.5;
  bool hasPointer = false;
  double pointer = 0;
  int active = -1;
  int drag = -1;
  std::string out = "layout.png";
};

[[noreturn]] void Usage(const std::string& problem) {
  std::fprintf(stderr, "qx_layoutpng: %s\n", problem.c_str());
  std::fprintf(stderr,
               "usage: qx_layoutpng [--tabs N] [--sections a,b,c] [--section-count K] [--width W]\n"
               "                    [--progress P] [--pointer X] [--active I] [--drag I] [--out file.png]\n");
  std::exit(2);
}

double Number(const char* text, const char* option) {
  char* end = nullptr;
  const double value = std::strtod(text, &end);
  if (!end || *end != '\0' || !std::isfinite(value))
    Usage(std::string("bad number for ") + option + ": " + text);
  return value;
}

TOptions Parse(int argc, char** argv) {
  TOptions o;
  int tabs = -1;
  int sectionCount = -1;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (i + 1 >= argc) Usage("missing value after " + arg);
    const char* value = argv[++i];
    if (arg == "--tabs") {
      tabs = static_cast<int>(Number(value, "--tabs"));
    } else if (arg == "--section-count") {
      sectionCount = static_cast<int>(Number(value, "--section-count"));
    } else if (arg == "--sections") {
      o.sections.clear();
      std::string list = value;
      std::size_t start = 0;
      while (start <= list.size()) {
        const std::size_t comma = std::min(list.find(',', start), list.size());
        o.sections.push_back(
            static_cast<int>(Number(list.substr(start, comma - start).c_str(), "--sections")));
        start = comma + 1;
      }
    } else if (arg == "--width") {
      o.width = Number(value, "--width");
    } else if (arg == "--progress") {
      o.progress = Number(value, "--progress");
    } else if (arg == "--pointer") {
      o.hasPointer = true;
      o.pointer = Number(value, "--pointer");
    } else if (arg == "--active") {
      o.active = static_cast<int>(Number(value, "--active"));
    } else if (arg == "--drag") {
      o.drag = static_cast<int>(Number(value, "--drag"));
    } else if (arg == "--out") {
      o.out = value;
    } else {
      Usage("unknown option " + arg);
    }
  }
  if (tabs >= 0 || sectionCount >= 0) {
    if (tabs < 0) tabs = std::accumulate(o.sections.begin(), o.sections.end(), 0);
    o.sections = support::SpreadTabs(tabs, sectionCount);
  }
  for (int count : o.sections) {
    if (count < 0 || count > 100000) Usage("section sizes run from 0 to 100000");
  }
  if (o.width < 100 || o.width > 20000) Usage("the width runs from 100 to 20000");
  return o;
}

constexpr std::uint32_t kSectionColours[] = {0x7FB3D5, 0x82E0AA, 0xF7DC6F, 0xBB8FCE, 0xF0B27A, 0x76D7C4};
constexpr std::uint32_t kActive = 0xE67E22;
constexpr std::uint32_t kDragged = 0xC0392B;
constexpr std::uint32_t kBorder = 0x2C3E50;
constexpr std::uint32_t kHidden = 0xE74C3C;

}  // namespace

int main(int argc, char** argv) {
  const TOptions options = Parse(argc, argv);

  const double viewHeight = 59;
  support::TLayoutStrip strip(options.sections, options.width, viewHeight);
  const int tabCount = static_cast<int>(strip.tabCount());
  if (options.active >= 0 && options.active < tabCount) strip.setActive(options.active);
  TTabGroupViewLayout& layout = strip.layout();
  if (options.drag >= 0 && options.drag < tabCount)
    layout.startDragging(strip.tab(static_cast<std::size_t>(options.drag)));

  // Scroll the stretch's middle to the asked progress, then walk the pointer from
  // the middle of the view to its place, as the mouse would.
  layout.calculateParameters();
  layout.scroll(options.progress - layout.progress());
  layout.calculateParameters();
  if (options.hasPointer) {
    const TRectD frame = layout.viewFrame();
    double x = frame.Left + frame.Width() / 2;
    layout.mouseEntered(TPointD(x, 20));
    const double step = options.pointer > x ? 4 : -4;
    while (std::fabs(options.pointer - x) > 4) {
      x += step;
      layout.mouseMoved(TPointD(x, 20));
    }
    layout.mouseMoved(TPointD(options.pointer, 20));
  }

  const std::vector<support::TFrameInfo> placed = support::RunLayout(layout);

  const int width = static_cast<int>(std::ceil(options.width));
  const int stripTop = 10;
  const int hiddenTop = stripTop + 49 + 6;
  const int sectionTop = hiddenTop + 12;
  const int plotTop = sectionTop + 14;
  const int plotHeight = 320;
  TPicture picture(width, plotTop + plotHeight + 10, 0xF4F6F7);

  // The view and its frame.
  const TRectD bounds = layout.viewBounds();
  const TRectD frame = layout.viewFrame();
  picture.fillRect(static_cast<int>(bounds.Left), stripTop - 4, static_cast<int>(bounds.Right),
                   stripTop + 49 + 4, 0xE5E8E8);
  picture.fillRect(static_cast<int>(frame.Left), stripTop - 2, static_cast<int>(frame.Right),
                   stripTop + 49 + 2, 0xFDFEFE);

  // Frames from back to front; hidden ones are not drawn but marked below.
  std::vector<std::size_t> order(placed.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&placed](std::size_t a, std::size_t b) {
    return placed[a].ZPosition < placed[b].ZPosition;
  });
  const std::int32_t dragged = layout.draggingTab() ? layout.draggingTab()->Index() : -1;
  for (std::size_t index : order) {
    const support::TFrameInfo& t = placed[index];
    if (t.Hidden) continue;
    const int l = static_cast<int>(std::lround(t.Frame.Left));
    const int r = static_cast<int>(std::lround(t.Frame.Right));
    const int top = stripTop + static_cast<int>(t.Frame.Top);
    const int bottom = stripTop + static_cast<int>(t.Frame.Bottom);
    std::uint32_t fill = kSectionColours[strip.sectionOf(index) % 6];
    if (t.Active) fill = kActive;
    if (static_cast<std::int32_t>(index) == dragged) fill = kDragged;
    picture.fillRect(l, top, r, bottom, fill);
    picture.frameRect(l, top, r, bottom, kBorder);
    if (t.InDraggedSection) picture.frameRect(l + 1, top + 1, r - 1, bottom - 1, kBorder);
  }
  int hiddenCount = 0;
  for (std::size_t index = 0; index < placed.size(); ++index) {
    const support::TFrameInfo& t = placed[index];
    const int l = static_cast<int>(std::lround(t.Frame.Left));
    picture.fillRect(l, sectionTop, l + 1, sectionTop + 8,
                     kSectionColours[strip.sectionOf(index) % 6] & 0x7F7F7F);
    if (t.Hidden) {
      ++hiddenCount;
      picture.fillRect(l, hiddenTop, l + 1, hiddenTop + 8, kHidden);
    }
  }

  // The map: straight position across, curve position up.
  const int plotLeft = 10;
  const int plotWidth = std::max(width - 20, 10);
  const int plotBottom = plotTop + plotHeight;
  picture.frameRect(plotLeft - 1, plotTop - 1, plotLeft + plotWidth + 1, plotBottom + 1, 0xAAB7B8);
  if (layout.parameters() && !layout.parameters()->GetIsDefault()) {
    TPointD start, end;
    layout.parameters()->GetStartPoint(start);
    layout.parameters()->GetEndPoint(end);
    picture.fillRect(plotLeft + static_cast<int>(start.X * plotWidth), plotTop,
                     plotLeft + static_cast<int>(end.X * plotWidth), plotBottom, 0xEAF2F8);
    int lastX = plotLeft, lastY = plotBottom;
    for (int i = 0; i <= plotWidth; ++i) {
      const double s = static_cast<double>(i) / plotWidth;
      const int y = plotBottom -
                    static_cast<int>(std::lround(layout.curvePositionFromStraightPosition(s) * plotHeight));
      picture.line(lastX, lastY, plotLeft + i, y, 0x1F618D);
      lastX = plotLeft + i;
      lastY = y;
    }
    for (const support::TFrameInfo& t : placed) {
      const double s = t.StraightPosition;
      const int x = plotLeft + static_cast<int>(std::lround(s * plotWidth));
      const int y = plotBottom -
                    static_cast<int>(std::lround(layout.curvePositionFromStraightPosition(s) * plotHeight));
      picture.fillRect(x - 1, y - 1, x + 2, y + 2, t.Hidden ? kHidden : kBorder);
    }
    if (layout.pin()) {
      const TPointD p = layout.pin()->GetPoint();
      const int x = plotLeft + static_cast<int>(std::lround(p.X * plotWidth));
      const int y = plotBottom - static_cast<int>(std::lround(p.Y * plotHeight));
      picture.line(x - 6, y - 6, x + 6, y + 6, kHidden);
      picture.line(x - 6, y + 6, x + 6, y - 6, kHidden);
    }
  }

  std::string error;
  if (!picture.save(options.out, error)) {
    std::fprintf(stderr, "qx_layoutpng: %s\n", error.c_str());
    return 1;
  }
  std::printf("%d tabs in %zu sections, view %.0f, progress %.4f%s, %d hidden -> %s\n", tabCount,
              options.sections.size(), options.width, layout.progress(), layout.pin() ? ", pinned" : "",
              hiddenCount, options.out.c_str());
  return 0;
}
