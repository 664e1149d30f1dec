// The pointer over a strip of 2,000 tabs: one mouse move from the form's window message
// to the placed tab images (hover, layout, placing), and one auto-scroll tick of a drag
// held at the strip's right end. Input goes in as window messages of the strip's form.
// The strip stands in its parent form inside a host window, as in the module: a frame
// on its own is as wide as its tabs, so nothing would stack or scroll.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <string>

#include "fakehost/FakeHost.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"
#include "tabbar/TabbarForm.h"
#include "tabbar/TabbarParentForm.h"
#include "toolkit/Application.h"

namespace qx {
namespace {

constexpr int kTabs = 2000;
constexpr int kStripWidth = 1920;
constexpr int kStripHeight = 54;

std::filesystem::path NewFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-bench-input-XXXXXX").string();
  return mkdtemp(pattern.data());
}

// A browser of kTabs tabs in one group and the strip in its parent form, embedded in a
// shown host window.
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
    FOs->RegisterClassW(u"QxBenchHost", &DefaultProc);
    FHostWindow = FOs->CreateWindowExW(0, u"QxBenchHost", u"host", win::WS_POPUP | win::WS_VISIBLE, 0, 0,
                                       kStripWidth, 200, nullptr, nullptr);
    FForm = std::make_unique<TTabbarParentForm>(nullptr, FImageRes.get(), FWrap.get(), FHostWindow);
    EmbedChildForm(*FForm, FHostWindow);
    FForm->SetBounds(0, 0, kStripWidth, kStripHeight);
    FForm->Show();
    FOs->ShowWindow(FForm->FormHandle(), win::SW_SHOWNA);
    FFrame = FForm->TabbarChildFrame();
    FHost.Events().FireFromHost(u"Client.Initialized", {});
    Settle(1000);
  }
  ~TInputBench() {
    FForm.reset();
    FOs->DestroyWindow(FHostWindow);
    FImageRes.reset();
    TTabImage::ReleaseBlankPicture();
    TToolkit::Finalize();
    FWrap = nullptr;
    std::error_code error;
    std::filesystem::remove_all(FRoot, error);
  }

  TTabbarFrame& Frame() { return *FFrame; }
  // x and y in the form's client coordinates; the host window stands at the screen's origin.
  void Send(std::uint32_t msg, int x, int y, WParam keys) { FOs->InjectMouseAtScreen(msg, {x, y}, keys); }
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
  HWnd FHostWindow = nullptr;
  std::unique_ptr<TTabbarParentForm> FForm;
  TTabbarFrame* FFrame = nullptr;

  static LResult QX_STDCALL DefaultProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
    return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
  }
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
