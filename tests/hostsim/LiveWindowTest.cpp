// The live window on SDL's dummy driver (the offscreen one loads EGL, whose allocations
// outlive SDL's shutdown): the module loaded through its exports, SDL events queued as a
// display would queue them, frames driven one at a time on a stepped clock.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "LiveWindow.h"
#include "ScenarioRunner.h"
#include "base/Text.h"
#include "common/GoldenPicture.h"
#include "platform/portable/PortableOsExport.h"
#include "platform/portable/ScopedPortableOs.h"
#include "tabview/PreviewStripIntf.h"
#include "text/JSONLibrary.h"

QX_EXPORT_PORTABLE_OS()

namespace qx::test {
namespace {

std::filesystem::path NewLiveFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-live-XXXXXX").string();
  return mkdtemp(pattern.data());
}

class LiveWindowTest : public ::testing::Test {
 protected:
  LiveWindowTest() : root_(NewLiveFolder()) { setenv("SDL_VIDEODRIVER", "dummy", 1); }
  ~LiveWindowTest() override {
    window_.reset();
    session_.reset();
    loader_.Unload();
    std::error_code error;
    std::filesystem::remove_all(root_, error);
  }

  void Open(TLiveOptions options) {
    ASSERT_TRUE(loader_.Load(QX_MODULE_PATH)) << loader_.Error();
    options.OutDir = root_ / "out";
    options.SkinDir = QX_SKIN_DIR;
    session_ = std::make_unique<TLiveSession>(loader_, options);
    window_ = std::make_unique<TLiveWindow>(*session_, [this] { return clock_; });
    std::string error;
    ASSERT_TRUE(window_->Open(error)) << error;
    ASSERT_TRUE(session_->Start());
    Frames(60);
  }
  // Frames 16 ms apart; false when one of them asked to quit.
  bool Frames(int count) {
    for (int i = 0; i < count; ++i) {
      clock_ += 16;
      if (!window_->Frame()) return false;
    }
    return true;
  }
  void Push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 1) << SDL_GetError(); }
  void Key(SDL_Keycode key) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.keysym.sym = key;
    Push(event);
  }
  void Click(TPoint at) {
    SDL_Event event{};
    event.type = SDL_MOUSEBUTTONDOWN;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.x = at.X;
    event.button.y = at.Y;
    Push(event);
    event.type = SDL_MOUSEBUTTONUP;
    Push(event);
  }
  // A point of the strip's scroll box, in the SDL window's pixels: from its left end.
  TPoint InStrip(int fromLeft) {
    ComPtr<IPreviewStrip> strip = ComPtr<IUnknown>(session_->Scenario().StripPlugin()).As<IPreviewStrip>();
    TRectF box{};
    if (strip) strip->TabScrollBoxScreenRect(box);
    TPoint at{static_cast<int>(box.Left) + fromLeft, static_cast<int>((box.Top + box.Bottom) / 2)};
    Platform().ScreenToClient(session_->Scenario().MainWindow(), &at);
    return at;
  }
  int Active() { return session_->Scenario().ActivePage(); }
  void Mouse(std::uint32_t type, TPoint at) {
    SDL_Event event{};
    event.type = type;
    if (type == SDL_MOUSEMOTION) {
      event.motion.x = at.X;
      event.motion.y = at.Y;
    } else {
      event.button.button = SDL_BUTTON_LEFT;
      event.button.x = at.X;
      event.button.y = at.Y;
    }
    Push(event);
  }
  void FingerAt(std::uint32_t type, TPoint at) {
    SDL_Event event{};
    event.type = type;
    event.tfinger.fingerId = 1;
    event.tfinger.x = static_cast<float>(at.X) / static_cast<float>(session_->Width());
    event.tfinger.y = static_cast<float>(at.Y) / static_cast<float>(session_->Height());
    Push(event);
  }

  TScopedPortableOs os_;
  std::filesystem::path root_;
  TModuleLoader loader_;
  std::uint64_t clock_ = 1000;
  std::unique_ptr<TLiveSession> session_;
  std::unique_ptr<TLiveWindow> window_;
};

TEST_F(LiveWindowTest, KeysSelectAndAClickOnATabSelectsItInTheHost) {
  Open({});
  ASSERT_EQ(Active(), 1);
  Key(SDLK_4);
  ASSERT_TRUE(Frames(30));
  EXPECT_EQ(Active(), 4);
  Click(InStrip(20));
  ASSERT_TRUE(Frames(30));
  EXPECT_EQ(Active(), 1) << "the first tab stands at the strip's left end";
  Key(SDLK_ESCAPE);
  EXPECT_FALSE(Frames(1));
}

TEST_F(LiveWindowTest, AWheelTurnOverACrowdedStripScrollsItAndAnAddedPageIsSelected) {
  TLiveOptions options;
  options.Tabs = 60;
  Open(options);
  // The wheel goes to what the pointer hovers, as on the system.
  const TPoint middle = InStrip(300);
  SDL_Event move{};
  move.type = SDL_MOUSEMOTION;
  move.motion.x = middle.X;
  move.motion.y = middle.Y;
  Push(move);
  SDL_Event wheel{};
  wheel.type = SDL_MOUSEWHEEL;
  wheel.wheel.y = -5;
  wheel.wheel.mouseX = middle.X;
  wheel.wheel.mouseY = middle.Y;
  Push(wheel);
  ASSERT_TRUE(Frames(90));
  Click(InStrip(20));
  ASSERT_TRUE(Frames(30));
  EXPECT_NE(Active(), 1) << "the strip moved on: another tab is at its left end";
  Key(SDLK_a);
  ASSERT_TRUE(Frames(5));
  EXPECT_EQ(Active(), 64) << "the added page comes after the sixty tabs and is selected";
}

TEST_F(LiveWindowTest, ARecordingWritesTheSessionAndWhatThePersonDidAsAScenarioFile) {
  TLiveOptions options;
  options.Tabs = 7;
  options.RecordFile = root_ / "recorded.json";
  Open(options);
  Key(SDLK_a);
  Click(InStrip(20));
  Key(SDLK_p);
  ASSERT_TRUE(Frames(10));
  EXPECT_TRUE(std::filesystem::exists(root_ / "out" / "1-picture-1.png"));
  Key(SDLK_r);
  ASSERT_TRUE(Frames(1));
  std::ifstream in(options.RecordFile);
  std::stringstream text;
  text << in.rdbuf();
  ComPtr<IJSONValue> value;
  std::u16string error;
  ASSERT_TRUE(TJSONParser::ParseJSONText(FromUtf8(text.str()), error, value)) << text.str();
  ComPtr<IJSONArray> steps = value->AsObject()->GetArray(u"steps");
  ASSERT_TRUE(steps);
  std::vector<std::u16string> done;
  for (std::int32_t i = 0; i < steps->GetCount(); ++i)
    done.push_back(steps->GetItem(i)->AsObject()->GetString(u"do"));
  const std::vector<std::u16string> expected{u"prepare-host", u"add-pages", u"create-strip", u"wait",
                                             u"add-pages",    u"select",    u"press",        u"release",
                                             u"capture",      u"wait"};
  EXPECT_EQ(done, expected) << text.str();
  EXPECT_EQ(steps->GetItem(1)->AsObject()->GetInt(u"last"), 10)
      << "seven tabs: the host's five and pages 9 and 10";
  EXPECT_EQ(steps->GetItem(3)->AsObject()->GetInt(u"ms"), 60 * 16) << "the frames before the first step";
  EXPECT_EQ(steps->GetItem(5)->AsObject()->GetInt(u"page"), 11);
}

// Pixels further apart than the golden tolerance in some channel.
int PixelsApart(const TBitmap& a, const TBitmap& b) {
  if (a.Width() != b.Width() || a.Height() != b.Height()) return a.Width() * a.Height() + 1;
  int apart = 0;
  for (int y = 0; y < a.Height(); ++y)
    for (int x = 0; x < a.Width(); ++x)
      for (int shift = 0; shift < 32; shift += 8) {
        const int one = static_cast<int>((a.Pixel(x, y) >> shift) & 0xFF);
        const int other = static_cast<int>((b.Pixel(x, y) >> shift) & 0xFF);
        if (std::abs(one - other) > test::kGoldenTolerance) {
          ++apart;
          break;
        }
      }
  return apart;
}

// Several events in one frame, a drag whose tab is still gliding home and a finger's
// inertia still running when the recording stops: the replay must give them the same clock.
TEST_F(LiveWindowTest, ARecordingReplayedHeadlessEndsOnTheLiveWindowsPicture) {
  TLiveOptions options;
  options.Tabs = 30;
  options.RecordFile = root_ / "recorded.json";
  Open(options);
  Mouse(SDL_MOUSEMOTION, InStrip(60));
  Mouse(SDL_MOUSEBUTTONDOWN, InStrip(60));
  ASSERT_TRUE(Frames(1));
  for (int x = 80; x <= 300; x += 20) {
    Mouse(SDL_MOUSEMOTION, InStrip(x));
    Mouse(SDL_MOUSEMOTION, InStrip(x + 10));
    ASSERT_TRUE(Frames(1));
  }
  Mouse(SDL_MOUSEBUTTONUP, InStrip(310));
  Key(SDLK_a);
  ASSERT_TRUE(Frames(3));
  const TPoint gap{InStrip(0).X + session_->Width() - 30, InStrip(0).Y};
  FingerAt(SDL_FINGERDOWN, gap);
  ASSERT_TRUE(Frames(1));
  for (int step = 1; step <= 6; ++step) {
    FingerAt(SDL_FINGERMOTION, {gap.X - step * 40, gap.Y});
    ASSERT_TRUE(Frames(1));
  }
  FingerAt(SDL_FINGERUP, {gap.X - 240, gap.Y});
  ASSERT_TRUE(Frames(4));
  const std::unique_ptr<TBitmap> live = session_->Picture();
  ASSERT_TRUE(live);
  Key(SDLK_r);
  ASSERT_TRUE(Frames(1));
  window_.reset();
  session_.reset();
  loader_.Unload();

  TScenarioRead read = ReadScenarioFile(options.RecordFile);
  ASSERT_TRUE(read.Scenario) << read.Error;
  TScenarioStep capture;
  capture.Kind = TStepKind::Capture;
  capture.CaptureName = "end";
  read.Scenario->Steps.push_back(capture);
  TScopedPortableOs os;
  TModuleLoader loader;
  ASSERT_TRUE(loader.Load(QX_MODULE_PATH)) << loader.Error();
  TFakeHost host;
  TStripScenario scenario(host, root_ / "replay" / "host", QX_SKIN_DIR);
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> log(std::tmpfile(), &std::fclose);
  const TScenarioReport report =
      TScenarioRunner(scenario, loader, root_ / "replay", log.get()).Play(*read.Scenario);
  ASSERT_EQ(report.Captures.size(), 1u);
  ASSERT_TRUE(report.Captures[0].Picture);
  EXPECT_EQ(PixelsApart(*live, *report.Captures[0].Picture), 0);
}

}  // namespace
}  // namespace qx::test
