// Writing the thumbnail cache on the way out, and reading it back at the next
// start: 500 tabs with 96x47 pictures in a temporary folder. Saving runs when the
// strip closes, so it should stay well under a second for a large session.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "fakehost/FakeHost.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"
#include "tabview/TabImageCacheMgr.h"
#include "toolkit/Bitmap.h"

namespace {

using namespace qx;
namespace fs = std::filesystem;

// A page-like picture: bands and a gradient, so the encoder has real work.
std::unique_ptr<TBitmap> MakePagePicture(int seed) {
  auto bitmap = std::make_unique<TBitmap>(96, 47);
  TBitmapData data;
  bitmap->Map(TMapAccess::Write, data);
  for (int y = 0; y < data.Height; ++y) {
    std::uint32_t* line = data.Line(y);
    for (int x = 0; x < data.Width; ++x) {
      const std::uint32_t r = static_cast<std::uint32_t>((x * 3 + seed * 7) & 0xFF);
      const std::uint32_t g = static_cast<std::uint32_t>((y * 5 + seed * 13) & 0xFF);
      const std::uint32_t b = (y / 6) % 2 ? 0xF0u : static_cast<std::uint32_t>((x ^ y ^ seed) & 0xFF);
      line[x] = 0xFF000000u | (r << 16) | (g << 8) | b;
    }
  }
  bitmap->Unmap(data);
  return bitmap;
}

class TBenchSession {
 public:
  explicit TBenchSession(int tabs) {
    std::string pattern = (fs::temp_directory_path() / "qx-thumbbench-XXXXXX").string();
    dir_ = mkdtemp(pattern.data());
    wrap_ = MakeCom<TServiceCoreWrapImpl>(host_.ServiceCore().get(), true);
    host_.Model().SwitchGroup(host_.Model().AddGroup(u"main").get());
    cache_ = std::make_unique<TTabImageCacheMgr>(wrap_.get(), dir_.u16string());
    for (int i = 0; i < tabs; ++i) {
      TFakeTab* tab = host_.Model().OpenTab(u"https://site" + IntToStr(i) + u".example/").get();
      guids_.push_back(wrap_->TabGuid(tab));
      cache_->UpdateCache(guids_.back(), MakePagePicture(i).get());
    }
  }
  ~TBenchSession() {
    cache_.reset();
    std::error_code ignored;
    fs::remove_all(dir_, ignored);
  }
  TTabImageCacheMgr& Cache() { return *cache_; }
  IServiceCoreWrap* Wrap() { return wrap_.get(); }
  const fs::path& Dir() const { return dir_; }
  const std::vector<std::u16string>& Guids() const { return guids_; }

 private:
  TScopedPortableOs os_;
  fs::path dir_;
  TFakeHost host_;
  ComPtr<TServiceCoreWrapImpl> wrap_;
  std::unique_ptr<TTabImageCacheMgr> cache_;
  std::vector<std::u16string> guids_;
};

void BM_SaveThumbnailCache(benchmark::State& state) {
  TBenchSession session(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    if (!session.Cache().SaveThumbnailCache()) state.SkipWithError("saving failed");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_SaveThumbnailCache)->Arg(500)->Unit(benchmark::kMillisecond);

void BM_LoadThumbnailCache(benchmark::State& state) {
  TBenchSession session(static_cast<int>(state.range(0)));
  if (!session.Cache().SaveThumbnailCache()) state.SkipWithError("saving failed");
  for (auto _ : state) {
    TTabImageCacheMgr fresh(session.Wrap(), session.Dir().u16string());
    for (const std::u16string& guid : session.Guids()) benchmark::DoNotOptimize(fresh.GetCache(guid));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_LoadThumbnailCache)->Arg(500)->Unit(benchmark::kMillisecond);

}  // namespace
BENCHMARK_MAIN();
