// One animation tick through the module's timer path: the 10 ms multimedia timer
// posts to the timer service's window, the message is dispatched on this thread,
// and the animation thread hands the tick to every running float animation.

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "platform/portable/ScopedPortableOs.h"
#include "runtime/ReplaceAniThread.h"
#include "toolkit/Application.h"
#include "toolkit/Layout.h"

namespace qx {
namespace {

void BM_AnimationTick(benchmark::State& state) {
  TScopedPortableOs os;
  TToolkit::Finalize();
  InstallAnimationThread();
  {
    const auto count = static_cast<std::size_t>(state.range(0));
    std::vector<std::unique_ptr<TLayout>> targets;
    targets.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      auto target = std::make_unique<TLayout>();
      auto* animation = new TFloatAnimation(target.get());
      animation->SetParent(target.get());
      animation->PropertyName = "Position.X";
      animation->StartValue = 0;
      animation->StopValue = 1000;
      animation->Duration = 1e9f;  // runs through the whole measurement
      animation->Start();
      targets.push_back(std::move(target));
    }
    for (auto _ : state) os->AdvanceClock(10);
    state.counters["animations"] = static_cast<double>(TAniThread::Installed()->Count());
  }
  TToolkit::Finalize();
}

// 1 is the cost of the emulated multimedia thread and queue alone; 1000 is the goal's case.
BENCHMARK(BM_AnimationTick)->Arg(1)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace qx

BENCHMARK_MAIN();
