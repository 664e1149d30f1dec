#include "CabinetDragStep.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "PagePictures.h"
#include "base/Text.h"

namespace qx {
namespace {

namespace fs = std::filesystem;

constexpr int kShadowMargin = 8;
// As long as an input step lets pass after each event.
constexpr std::uint32_t kStepMilliseconds = 16;

void AppendEscaped(std::string& json, std::u16string_view text) {
  json += '"';
  for (const char c : ToUtf8(text)) {
    if (c == '"' || c == '\\') json += '\\';
    json += c;
  }
  json += '"';
}

void AppendMember(std::string& json, std::string_view name, int value) {
  json += ",\"";
  json += name;
  json += "\":";
  json += std::to_string(value);
}

fs::path PictureOfPage(const fs::path& folder, int page) {
  return folder / ("page-" + std::to_string(page) + ".png");
}

// The page's address of a local file: three slashes, then the path with forward slashes.
std::string FileUrl(const fs::path& file) {
  std::string path = file.generic_string();
  path.erase(0, path.find_first_not_of('/'));
  return "file:///" + path;
}

// The page's shadow picture, stretched around each picture of the stack: a soft dark
// edge outside, a hairline at the picture's border, and for the pictures behind a veil
// that sets the top one apart.
std::unique_ptr<TBitmap> DrawShadow(bool behind) {
  const int width = kDragPictureWidth + 2 * kShadowMargin;
  const int height = kDragPictureHeight + 2 * kShadowMargin;
  auto shadow = std::make_unique<TBitmap>(width, height);
  std::uint32_t* bits = shadow->Bits();
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const int dx = std::max({kShadowMargin - x, x - (width - 1 - kShadowMargin), 0});
      const int dy = std::max({kShadowMargin - y, y - (height - 1 - kShadowMargin), 0});
      double alpha = 0;
      if (dx > 0 || dy > 0) {
        const double fade = 1.0 - std::hypot(dx, dy) / (kShadowMargin + 1);
        alpha = fade > 0 ? 0.45 * fade * fade : 0;
      } else if (x == kShadowMargin || y == kShadowMargin || x == width - 1 - kShadowMargin ||
                 y == height - 1 - kShadowMargin) {
        alpha = 0.35;
      } else if (behind) {
        alpha = 0.18;
      }
      // Black, premultiplied: only the alpha byte.
      bits[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)] =
          static_cast<std::uint32_t>(std::lround(alpha * 255)) << 24;
    }
  return shadow;
}

}  // namespace

std::u16string CabinetDragInfo(const TCabinetDragArgs& drag, TPoint pointer, TPoint screenPointer,
                               const fs::path& pictureFolder) {
  std::string json = "{\"event\":";
  AppendEscaped(json, FromUtf8(drag.Event));
  if (drag.Event == "hide") return FromUtf8(json + "}");
  const TPoint offset = drag.Offset.value_or(TPoint{kDragPictureWidth / 2, kDragPictureHeight / 2});
  AppendMember(json, "offset_x", offset.X);
  AppendMember(json, "offset_y", offset.Y);
  // The simulated page has no window of its own: its client pixels are the screen's.
  AppendMember(json, "dest_x", screenPointer.X);
  AppendMember(json, "dest_y", screenPointer.Y);
  json += ",\"id\":";
  AppendEscaped(json, drag.Id);
  json += ",\"source\":";
  AppendEscaped(json, drag.Source);
  json += ",\"dest\":";
  AppendEscaped(json, drag.Dest);
  json += drag.Cancel ? ",\"cancel\":true" : ",\"cancel\":false";
  if (!drag.ImagePages.empty()) {
    // In the page's pixels, below the strip; the top picture held at the grip.
    const int left = pointer.X - offset.X;
    const int top = pointer.Y - (kStripTop + kStripHeight) - offset.Y;
    json += ",\"image\":[";
    for (std::size_t i = 0; i < drag.ImagePages.size(); ++i) {
      const int step = static_cast<int>(i);
      const int width = kDragPictureWidth - step * kDragStackNarrowing;
      json += i ? ",{\"src\":" : "{\"src\":";
      AppendEscaped(json, FromUtf8(FileUrl(PictureOfPage(pictureFolder, drag.ImagePages[i]))));
      AppendMember(json, "left", left + (kDragPictureWidth - width) / 2);
      AppendMember(json, "top", top - step * kDragStackRise);
      AppendMember(json, "width", width);
      AppendMember(json, "height", kDragPictureHeight * width / kDragPictureWidth);
      json += '}';
    }
    json += ']';
  }
  return FromUtf8(json + "}");
}

void TCabinetDragStep::Run(const TCabinetDragArgs& drag, std::optional<TPoint> pointer) {
  WritePictures(drag);
  TPoint screen = pointer.value_or(TPoint{});
  if (pointer) {
    Platform().ClientToScreen(FScenario.MainWindow(), &screen);
    Platform().SetCursorPos(screen.X, screen.Y);
  }
  const std::u16string info = CabinetDragInfo(drag, pointer.value_or(TPoint{}), screen, FPictureFolder);
  std::fprintf(FLog, "cabinet page: drag-info %s\n", ToUtf8(info).c_str());
  const std::size_t before = FScenario.Host().Events().EventLog().size();
  FScenario.Host().ReportCabinetDrag(info);
  FScenario.Settle(kStepMilliseconds);
  LogRequestsSince(before);
}

void TCabinetDragStep::WritePictures(const TCabinetDragArgs& drag) {
  std::error_code error;
  if (!FShadowsWritten) {
    // Where the page keeps them: the host's temporary folder.
    const fs::path folder = FScenario.TempFolder() / "chrome" / "cabinet" / "img";
    fs::create_directories(folder, error);
    DrawShadow(false)->SaveToFile(folder / "CabinetTabLargeShadow.png");
    DrawShadow(true)->SaveToFile(folder / "CabinetTabLargeBackShadow.png");
    FShadowsWritten = true;
  }
  fs::create_directories(FPictureFolder, error);
  for (const int page : drag.ImagePages) {
    const fs::path file = PictureOfPage(FPictureFolder, page);
    if (!fs::exists(file)) DrawPagePicture(page, kDragPictureWidth, kDragPictureHeight)->SaveToFile(file);
  }
}

void TCabinetDragStep::LogRequestsSince(std::size_t eventCount) {
  const std::vector<TFakeEventRecord> events = FScenario.Host().Events().EventLog();
  for (std::size_t i = eventCount; i < events.size(); ++i) {
    const TFakeEventRecord& event = events[i];
    if (event.FromHost || event.Id != u"BrowserExternalAPI.talvokPrivateAPI") continue;
    std::fprintf(FLog, "cabinet page: %s(\"%s\", \"%s\")\n", ToUtf8(event.Value(u"funcname")).c_str(),
                 ToUtf8(event.Value(u"p1")).c_str(), ToUtf8(event.Value(u"p2")).c_str());
  }
}

}  // namespace qx
