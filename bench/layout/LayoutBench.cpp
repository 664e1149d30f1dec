// Cost of one layout pass of the tab strip, and of a pointer step followed by a
// pass, the two things that run on every mouse move and scroll tick.
// Goals: a 1,000-tab pass within 0.25 ms, growing linearly with the tab count;
// a pointer step plus pass at 1,000 tabs within 0.5 ms.

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "tabview/TabGroupViewLayout.h"
#include "tabview/TabImage.h"
#include "tabview/TabImageSection.h"

namespace {

using namespace qx;

class TBenchStrip {
 public:
  TBenchStrip(int tabs, int sectionCount, double viewWidth) : viewWidth_(viewWidth) {
    sections_.BeginUpdate();
    for (int s = 0; s < sectionCount; ++s) {
      TTabImageSection* section = sections_.AddSection(-1);
      const int count = tabs / sectionCount + (s < tabs % sectionCount ? 1 : 0);
      for (int i = 0; i < count; ++i) {
        tabs_.push_back(std::make_unique<TTabImage>());
        tabs_.back()->SetOnGetActive([this](const TTabImageItem& sender) { return &sender == active_; });
        section->Add(tabs_.back().get());
      }
    }
    sections_.EndUpdate();
    active_ = tabs_[tabs_.size() / 3].get();
    layout_.setSections(&sections_);
    layout_.setOnGetViewSize([this](TTabGroupViewLayout&, TSizeD& size) { size = TSizeD(viewWidth_, 59); });
    layout_.calculateParameters();
    layout_.scroll(0.5 - layout_.progress());
  }
  ~TBenchStrip() { layout_.setSections(nullptr); }

  TTabGroupViewLayout& layout() { return layout_; }

  // One pass as the frame runs it: lay out, read, end the list.
  void pass() {
    auto list = layout_.layoutAttributes();
    benchmark::DoNotOptimize(list.get());
    ComPtr<ITabViewLayoutAttributes> first;
    if (list->GetItem(0, first) == kOk) first->UnChain();
  }

 private:
  double viewWidth_;
  TTabImageItem* active_ = nullptr;
  std::vector<std::unique_ptr<TTabImage>> tabs_;
  TTabImageSectionList sections_;
  TTabGroupViewLayout layout_;
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
