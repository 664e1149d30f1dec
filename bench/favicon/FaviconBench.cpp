// GetFavicon on the repaint path: a URI whose icon is on hand, and one still being
// fetched. Neither may touch the disk; the file-system calls of the resources layer are
// counted and reported beside the time.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "fakehost/FakeHost.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"
#include "resources/FaviconCache.h"
#include "resources/ResourceFiles.h"
#include "toolkit/Bitmap.h"

namespace qx {
namespace {

std::vector<std::uint8_t> Png(TAlphaColor colour) {
  TBitmap bitmap(32, 32);
  bitmap.Clear(colour);
  std::ostringstream out;
  bitmap.SaveToStream(out);
  const std::string text = out.str();
  return {text.begin(), text.end()};
}

struct TBenchHost {
  TBenchHost() {
    std::string pattern = (std::filesystem::temp_directory_path() / "qx-favbench-XXXXXX").string();
    root = mkdtemp(pattern.data());
    host.UseFolder(root);
    host.Model().SwitchGroup(host.Model().AddGroup(u"main").get());
    host.Favicons().StoreDefaultIcon(Png(0xFF000000u));
    wrap = MakeCom<TServiceCoreWrapImpl>(host.ServiceCore().get(), true);
  }
  ~TBenchHost() {
    wrap = nullptr;
    std::error_code error;
    std::filesystem::remove_all(root, error);
  }
  TScopedPortableOs os;
  std::filesystem::path root;
  TFakeHost host;
  ComPtr<TServiceCoreWrapImpl> wrap;
};

void Run(benchmark::State& state, bool known) {
  TBenchHost bench;
  const std::u16string uri = known ? u"https://known.example/" : u"https://pending.example/";
  if (known) bench.host.Favicons().StoreFavicon(uri, Png(0xFFFF0000u));
  IQxITab* tab = bench.host.Model().OpenTab(uri).get();
  TFaviconCacheFMX cache(bench.wrap.get(), 16);
  cache.InitializeEvents();
  ComPtr<ISharedFMXBitmap> favicon;
  cache.GetFavicon(tab, 0, favicon);  // the first call may load and request
  const auto before = ResourceFileCallCount();
  for (auto _ : state) {
    cache.GetFavicon(tab, 0, favicon);
    benchmark::DoNotOptimize(favicon.get());
  }
  const auto calls = ResourceFileCallCount() - before;
  state.counters["fs_calls"] = static_cast<double>(calls);
  state.counters["requests"] = static_cast<double>(bench.host.Favicons().Requests().size());
  if (calls != 0) state.SkipWithError("GetFavicon touched the file system for a known URI");
  cache.UnInitializeEvents();
}

void BM_GetFaviconKnownUri(benchmark::State& state) { Run(state, true); }
void BM_GetFaviconUriBeingFetched(benchmark::State& state) { Run(state, false); }

BENCHMARK(BM_GetFaviconKnownUri);
BENCHMARK(BM_GetFaviconUriBeingFetched);

}  // namespace
}  // namespace qx

BENCHMARK_MAIN();
