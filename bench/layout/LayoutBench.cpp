// Cost of one layout pass of the tab strip, and of a pointer step followed by a
// pass, the two things that run on every mouse move and scroll tick.
// Goals: a 1,000-tab pass within 0.25 ms, growing linearly with the tab count;
// a pointer step plus pass at 1,000 tabs within 0.5 ms.

#include <benchmark/benchmark.h>

#include "support/LayoutStrip.h"

namespace {

using namespace qx;

// A strip spread over sections, a third of the way in selected, scrolled to the middle.
class TBenchStrip {
 public:
  TBenchStrip(int tabs, int sectionCount, double viewWidth)
      : strip_(support::SpreadTabs(tabs, sectionCount), viewWidth) {
    strip_.setActive(static_cast<int>(strip_.tabCount() / 3));
    layout().calculateParameters();
    layout().scroll(0.5 - layout().progress());
  }

  TTabGroupViewLayout& layout() { return strip_.layout(); }

  // One pass as the frame runs it: lay out, read, end the list.
  void pass() {
    auto list = layout().layoutAttributes();
    benchmark::DoNotOptimize(list.get());
    ComPtr<ITabViewLayoutAttributes> first;
    if (list->GetItem(0, first) == kOk) first->UnChain();
  }

 private:
  support::TLayoutStrip strip_;
};

void BM_LayoutAttributes(benchmark::State& state) {
  const int tabs = static_cast<int>(state.range(0));
  TBenchStrip strip(tabs, tabs >= 10 ? 10 : 1, 1280);
  for (auto _ : state) strip.pass();
  state.SetComplexityN(state.range(0));
  state.SetItemsProcessed(state.iterations() * tabs);
}
BENCHMARK(BM_LayoutAttributes)
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);

// The pointer wanders over the left stack and back into the straight stretch,
// so pins are made, given slopes, moved and dropped.
void BM_MouseStepThenLayout(benchmark::State& state) {
  const int tabs = static_cast<int>(state.range(0));
  TBenchStrip strip(tabs, 10, 1280);
  TTabGroupViewLayout& layout = strip.layout();
  const TRectD frame = layout.viewFrame();
  const double low = frame.Left + 10;
  const double high = frame.Left + frame.Width() / 2;
  double x = high;
  double step = -7;
  layout.mouseEntered(TPointD(x, 20));
  for (auto _ : state) {
    x += step;
    if (x < low || x > high) step = -step;
    benchmark::DoNotOptimize(layout.mouseMoved(TPointD(x, 20)));
    strip.pass();
  }
}
BENCHMARK(BM_MouseStepThenLayout)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
