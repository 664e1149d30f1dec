// The pointer over a strip of 2,000 tabs: one mouse move from the form's window message
// to the placed tab images (hover, layout, placing), and one auto-scroll tick of a drag
// held at the strip's right end. Input goes in as window messages of the strip's form.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <string>

#include "fakehost/FakeHost.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"
#include "tabbar/TabbarForm.h"
#include "toolkit/Application.h"
#include "toolkit/Form.h"

namespace qx {
namespace {

constexpr int kTabs = 2000;
constexpr int kStripWidth = 1920;
constexpr int kStripHeight = 54;

std::filesystem::path NewFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-bench-input-XXXXXX").string();
  return mkdtemp(pattern.data());
}

// A browser of kTabs tabs in one group and the strip in a shown form of its own.
class TInputBench {
 public:
  TInputBench() : FRoot(NewFolder()) {
    TToolkit::Finalize();
    FHost.UseFolder(FRoot);
    FHost.Resources().SetSkinRoot(QX_SKIN_DIR);
    FWrap = MakeCom<TServiceCoreWrapImpl>(FHost.ServiceCore().get(), false);
    TFakeTabGroup* group = FHost.Model().AddGroup(u"bench").get();
    FHost.Model().SwitchGroup(group);
    for (int i = 0; i < kTabs; ++i) {
      TFakeOpenTab how;
      how.Group = group;
      how.Activate = i == 0;
      how.Title = u"Page";
      FHost.Model().OpenTab(u"https://example.com/", how);
    }
    FImageRes = std::make_unique<TTabbarImageRes>(FWrap.get());
    FForm = std::make_unique<TForm>();
    FForm->SetBounds(0, 0, kStripWidth, kStripHeight);
    FFrame = new TTabbarFrame(FForm.get(), FImageRes.get(), nullptr, FWrap.get(), nullptr);
    FFrame->SetParent(FForm.get());
    FFrame->SetBounds(0, 0, kStripWidth, kStripHeight);
    FHost.Events().FireFromHost(u"Client.Initialized", {});
    FForm->Show();
    Settle(1000);
  }
  ~TInputBench() {
    FForm.reset();
    FImageRes.reset();
    TTabImage::ReleaseBlankPicture();
    TToolkit::Finalize();
    FWrap = nullptr;
    std::error_code error;
    std::filesystem::remove_all(FRoot, error);
  }

  TTabbarFrame& Frame() { return *FFrame; }
  void Send(std::uint32_t msg, int x, int y, WParam keys) {
    FOs->InjectMouse(FForm->Handle(), msg, x, y, keys);
  }
  void Settle(std::uint64_t ms) {
    for (std::uint64_t t = 0; t < ms; t += 10) FOs->AdvanceClock(10);
  }
  // The centre of the n-th tab image on screen, in the form's client coordinates.
  TPoint TabCentre(int n) {
    const TRectF r = FFrame->GetTabImages(n)->Base()->AbsoluteRect();
    return {static_cast<int>((r.Left + r.Right) / 2), static_cast<int>((r.Top + r.Bottom) / 2)};
  }

 private:
  TScopedPortableOs FOs;
  std::filesystem::path FRoot;
  TFakeHost FHost;
  ComPtr<TServiceCoreWrapImpl> FWrap;
  std::unique_ptr<TTabbarImageRes> FImageRes;
  std::unique_ptr<TForm> FForm;
  TTabbarFrame* FFrame = nullptr;
};

void BM_MouseMoveOver2000(benchmark::State& state) {
  TInputBench bench;
  const TPoint a = bench.TabCentre(3), b = bench.TabCentre(6);
  bool even = false;
  for (auto _ : state) {
    const TPoint at = even ? a : b;
    // Each step lands a few pixels apart, so none is skipped as a repeat.
    bench.Send(win::WM_MOUSEMOVE, at.X + (even ? 1 : 2), at.Y, 0);
    even = !even;
  }
  state.counters["hovered"] = bench.Frame().HoveredTab() != nullptr;
}
BENCHMARK(BM_MouseMoveOver2000)->Unit(benchmark::kMicrosecond);

void BM_AutoScrollTickWhileDragging2000(benchmark::State& state) {
  TInputBench bench;
  auto startDrag = [&] {
    const TPoint from = bench.TabCentre(0);
    bench.Send(win::WM_LBUTTONDOWN, from.X, from.Y, win::MK_LBUTTON);
    bench.Send(win::WM_MOUSEMOVE, from.X + 20, from.Y, win::MK_LBUTTON);
    bench.Send(win::WM_MOUSEMOVE, kStripWidth - 5, from.Y, win::MK_LBUTTON);
  };
  startDrag();
  std::int64_t ticks = 0;
  for (auto _ : state) {
    if (!bench.Frame().AutoScrollTimer()->Enabled()) {
      state.PauseTiming();
      bench.Send(win::WM_LBUTTONUP, kStripWidth - 5, 20, 0);
      bench.Settle(500);
      startDrag();
      state.ResumeTiming();
    }
    // The clock's step fires the 10 ms tick and the animation frame that goes with it.
    bench.Settle(10);
    ++ticks;
  }
  state.counters["dragging"] = bench.Frame().DragTarget() != nullptr;
  state.counters["timer_on"] = bench.Frame().AutoScrollTimer()->Enabled();
}
BENCHMARK(BM_AutoScrollTickWhileDragging2000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace qx

BENCHMARK_MAIN();
