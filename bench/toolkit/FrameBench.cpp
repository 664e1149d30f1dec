// One full frame of a strip-sized scene: 1,920 by 54 with 200 image layers of 96 by 47
// at varied opacity, drawn by the software canvas; and the same frame shown in the
// form's window (invalidate, paint message, picture copied into the window).

#include <benchmark/benchmark.h>

#include "platform/portable/ScopedPortableOs.h"
#include "toolkit/Form.h"
#include "toolkit/Image.h"

namespace qx {
namespace {

// The thumbnail is the caller's, so it outlives the images that show it.
void BuildStrip(TForm& form, TBitmap& thumbnail) {
  form.SetBounds(0, 0, 1920, 54);
  thumbnail.SetSize(96, 47);
  thumbnail.Clear(0xFF4A7BD0u);
  for (int i = 0; i < 200; ++i) {
    auto* image = new TImage(&form);
    image->SetParent(&form);
    image->SetBitmap(&thumbnail);
    image->SetWrapMode(TImageWrapMode::Stretch);
    image->SetBounds(static_cast<float>(i * 9), 3.0f, 96.0f, 47.0f);
    image->SetOpacity(0.3f + 0.7f * static_cast<float>(i % 10) / 9.0f);
  }
}

void BM_StripFrame(benchmark::State& state) {
  TForm form;
  TBitmap thumbnail;
  BuildStrip(form, thumbnail);
  for (auto _ : state) benchmark::DoNotOptimize(&form.RenderToBitmap());
  state.counters["layers"] = 200;
}
BENCHMARK(BM_StripFrame)->Unit(benchmark::kMillisecond);

void BM_StripFrameInWindow(benchmark::State& state) {
  TScopedPortableOs os;
  TBitmap thumbnail;
  std::size_t painted = 0;
  {
    TForm form;
    BuildStrip(form, thumbnail);
    form.Show();
    os->ProcessMessages();
    for (auto _ : state) {
      form.Invalidate();
      painted += os->ProcessMessages();
    }
  }
  state.counters["paints"] =
      benchmark::Counter(static_cast<double>(painted), benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_StripFrameInWindow)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qx

BENCHMARK_MAIN();
