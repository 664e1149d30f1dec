// Cost of getting a host event to a module handler: directly on the main thread, and
// handed over from other threads through the shared delay task.

#include <benchmark/benchmark.h>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

#include "fakehost/FakeEvent.h"
#include "fakehost/FakeHost.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"
#include "runtime/MainThread.h"

namespace qx {
namespace {

struct TBenchHost {
  TBenchHost() : wrap(MakeCom<TServiceCoreWrapImpl>(host.ServiceCore().get(), true)) {
    SetMainThreadId(std::this_thread::get_id());
  }
  TScopedPortableOs os;
  TFakeHost host;
  ComPtr<TServiceCoreWrapImpl> wrap;
};

ComPtr<IQxIEvent> MakeEvent(TBenchHost& bench, int thread, int index) {
  ComPtr<IQxIStringDictionary> parameters;
  bench.wrap->CreateStringDictionary(parameters);
  WrapStringDictionary(parameters.get())->SetValue(u"thread", IntToStr(thread));
  WrapStringDictionary(parameters.get())->SetValue(u"index", IntToStr(index));
  return MakeCom<TFakeEvent>(parameters.get());
}

void BM_DirectDelivery(benchmark::State& state) {
  TBenchHost bench;
  std::int64_t handled = 0;
  ComPtr<IQxIEventListener> listener;
  bench.wrap->AddEventHandler(0, u"Tab.Changed", listener, false, [&](const TString&, IQxIEvent*) {
    ++handled;
    return kOk;
  });
  ComPtr<IQxIEvent> event = MakeEvent(bench, 0, 0);
  for (auto _ : state) listener->OnEvent(u"Tab.Changed", event.get());
  if (handled != static_cast<std::int64_t>(state.iterations())) state.SkipWithError("events lost");
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DirectDelivery);

// One event fired on another thread, then delivered on the main thread at the next tick.
void BM_HandedOverDelivery(benchmark::State& state) {
  TBenchHost bench;
  std::int64_t handled = 0;
  ComPtr<IQxIEventListener> listener;
  bench.wrap->AddEventHandler(0, u"Tab.Changed", listener, false, [&](const TString&, IQxIEvent*) {
    ++handled;
    return kOk;
  });
  ComPtr<IQxIEvent> event = MakeEvent(bench, 0, 0);
  constexpr int kBatch = 256;
  for (auto _ : state) {
    std::thread([&] {
      for (int i = 0; i < kBatch; ++i) listener->OnEvent(u"Tab.Changed", event.get());
    }).join();
    bench.os->AdvanceClock(10 * (kBatch + 1));
  }
  if (handled != static_cast<std::int64_t>(state.iterations()) * kBatch) state.SkipWithError("events lost");
  state.SetItemsProcessed(state.iterations() * kBatch);
}
BENCHMARK(BM_HandedOverDelivery)->Unit(benchmark::kMicrosecond);

// 10,000 events from 4 threads: every one arrives, in order per thread.
void BM_TenThousandFromFourThreads(benchmark::State& state) {
  TBenchHost bench;
  constexpr int kThreads = 4, kPerThread = 2500;
  std::vector<std::vector<ComPtr<IQxIEvent>>> events(kThreads);
  for (int t = 0; t < kThreads; ++t)
    for (int i = 0; i < kPerThread; ++i) events[t].push_back(MakeEvent(bench, t, i));
  std::map<int, int> next;
  std::int64_t handled = 0, outOfOrder = 0;
  ComPtr<IQxIEventListener> listener;
  bench.wrap->AddEventHandler(0, u"E", listener, false, [&](const TString&, IQxIEvent* event) {
    ComPtr<IQxIStringDictionaryWrap> parameters = bench.wrap->EventParameters(event);
    const int thread = static_cast<int>(StrToIntDef(parameters->Value(u"thread"), -1));
    const int index = static_cast<int>(StrToIntDef(parameters->Value(u"index"), -1));
    if (index != next[thread]++) ++outOfOrder;
    ++handled;
    return kOk;
  });
  for (auto _ : state) {
    next.clear();
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
      threads.emplace_back([&, t] {
        for (const auto& event : events[t]) listener->OnEvent(u"E", event.get());
      });
    for (auto& thread : threads) thread.join();
    bench.os->AdvanceClock(10 * (kThreads * kPerThread + 1));
  }
  state.counters["lost"] = static_cast<double>(static_cast<std::int64_t>(state.iterations()) * kThreads * kPerThread - handled);
  state.counters["out_of_order"] = static_cast<double>(outOfOrder);
  if (handled != static_cast<std::int64_t>(state.iterations()) * kThreads * kPerThread || outOfOrder)
    state.SkipWithError("events lost or out of order");
  state.SetItemsProcessed(state.iterations() * kThreads * kPerThread);
}
BENCHMARK(BM_TenThousandFromFourThreads)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qx

BENCHMARK_MAIN();
