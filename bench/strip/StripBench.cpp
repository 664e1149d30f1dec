// The tab strip with thousands of tabs: one tab added (the host's event through sync,
// layout and placing of every tab image), one full frame of the strip at 1,920 by 54, the
// first sync of 2,000 tabs, and the memory that 1,000 tabs take with their thumbnails.
// The frame stands in a plain form; the host's events arrive synchronously.

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <string>

#include "fakehost/FakeHost.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"
#include "tabbar/TabbarForm.h"
#include "toolkit/Application.h"
#include "toolkit/Canvas.h"
#include "toolkit/Form.h"

namespace qx {
namespace {

constexpr int kStripWidth = 1920;
constexpr int kStripHeight = 54;

std::filesystem::path NewFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-bench-strip-XXXXXX").string();
  return mkdtemp(pattern.data());
}

// A browser with tabs tabs in one group, each with a thumbnail of its own colour in the
// module's cache folder.
class TBenchBrowser {
 public:
  explicit TBenchBrowser(int tabs) : FRoot(NewFolder()) {
    TToolkit::Finalize();
    FHost.UseFolder(FRoot);
    FHost.Resources().SetSkinRoot(QX_SKIN_DIR);
    FWrap = MakeCom<TServiceCoreWrapImpl>(FHost.ServiceCore().get(), false);
    FGroup = FHost.Model().AddGroup(u"bench").get();
    FHost.Model().SwitchGroup(FGroup);
    const auto thumbnails = FRoot / "user/setting/client/thumbnail";
    std::filesystem::create_directories(thumbnails);
    for (int i = 0; i < tabs; ++i) {
      TFakeOpenTab how;
      how.Group = FGroup;
      how.Activate = i == tabs / 2;
      TFakeTab* tab = FHost.Model().OpenTab(u"https://example.com/", how).get();
      TBitmap picture(static_cast<int>(TTabImage::kThumbnailWidth),
                      static_cast<int>(TTabImage::kThumbnailHeight));
      picture.Clear(0xFF000000u |
                    static_cast<TAlphaColor>((static_cast<unsigned>(i) * 2654435761u) & 0xFFFFFFu));
      picture.SaveToFile(thumbnails / (tab->GuidText() + u".png"));
    }
  }
  ~TBenchBrowser() {
    FWrap = nullptr;
    TToolkit::Finalize();
    std::error_code error;
    std::filesystem::remove_all(FRoot, error);
  }

  TFakeHost& Host() { return FHost; }
  TFakeTabGroup* Group() { return FGroup; }
  IServiceCoreWrap* Wrap() { return FWrap.get(); }

 private:
  TScopedPortableOs FOs;
  std::filesystem::path FRoot;
  TFakeHost FHost;
  ComPtr<TServiceCoreWrapImpl> FWrap;
  TFakeTabGroup* FGroup = nullptr;
};

// The strip in a form of its own size, synced once with the browser.
class TBenchStrip {
 public:
  explicit TBenchStrip(TBenchBrowser& browser)
      : FImageRes(std::make_unique<TTabbarImageRes>(browser.Wrap())), FForm(std::make_unique<TForm>()) {
    FForm->SetBounds(0, 0, kStripWidth, kStripHeight);
    FFrame = new TTabbarFrame(FForm.get(), FImageRes.get(), nullptr, browser.Wrap(), nullptr);
    FFrame->SetParent(FForm.get());
    FFrame->SetBounds(0, 0, kStripWidth, kStripHeight);
    // The host comes up: the strip's first sync, and from now on it follows the events.
    browser.Host().Events().FireFromHost(u"Client.Initialized", {});
  }
  ~TBenchStrip() {
    FForm.reset();
    FImageRes.reset();
    TTabImage::ReleaseBlankPicture();
    // As when the last control goes: the next strip installs its animation thread anew.
    TToolkit::Finalize();
  }
  TTabbarFrame& Frame() { return *FFrame; }
  TForm& Form() { return *FForm; }

 private:
  std::unique_ptr<TTabbarImageRes> FImageRes;
  std::unique_ptr<TForm> FForm;
  TTabbarFrame* FFrame = nullptr;
};

void BM_AddOneTabTo2000(benchmark::State& state) {
  TBenchBrowser browser(2000);
  TBenchStrip strip(browser);
  for (auto _ : state) {
    TFakeOpenTab how;
    how.Group = browser.Group();
    how.Activate = false;
    ComPtr<TFakeTab> tab = browser.Host().Model().OpenTab(u"https://example.com/new", how);
    state.PauseTiming();
    browser.Host().Model().CloseTab(tab.get());
    state.ResumeTiming();
  }
  state.counters["tabs"] = static_cast<double>(strip.Frame().TabList()->TabCount());
}
BENCHMARK(BM_AddOneTabTo2000)->Unit(benchmark::kMillisecond);

void BM_StripFullFrame(benchmark::State& state) {
  TBenchBrowser browser(2000);
  TBenchStrip strip(browser);
  for (auto _ : state) {
    strip.Form().Invalidate();
    benchmark::DoNotOptimize(&strip.Form().RenderToBitmap());
  }
}
BENCHMARK(BM_StripFullFrame)->Unit(benchmark::kMillisecond);

void BM_FirstSync2000(benchmark::State& state) {
  TBenchBrowser browser(2000);
  for (auto _ : state) {
    auto strip = std::make_unique<TBenchStrip>(browser);
    benchmark::DoNotOptimize(strip->Frame().TabList());
    state.PauseTiming();
    strip.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_FirstSync2000)->Unit(benchmark::kMillisecond);

void BM_MemoryPer1000Tabs(benchmark::State& state) {
  TBenchBrowser browser(1000);
  double megabytes = 0;
  for (auto _ : state) {
    const std::size_t before = mallinfo2().uordblks;
    auto strip = std::make_unique<TBenchStrip>(browser);
    megabytes = static_cast<double>(mallinfo2().uordblks - before) / (1024.0 * 1024.0);
    state.PauseTiming();
    strip.reset();
    state.ResumeTiming();
  }
  state.counters["MB_per_1000_tabs"] = megabytes;
}
BENCHMARK(BM_MemoryPer1000Tabs)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace qx

BENCHMARK_MAIN();
