// The cabinet bar over a strip of 2,000 tabs in 300 runs of one site each: one layout
// pass of the bar, every icon moved to its run, as the strip asks after each of its own
// layout passes. Both plug-ins stand in the host's main window, found by each other
// through the host's plug-in service.

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "cabinet/CabinetBarIcon.h"
#include "cabinet/CabinetIconBarForm.h"
#include "cabinet/CabinetIconBarFrame.h"
#include "cabinet/CabinetIconBarPlugin.h"
#include "fakehost/FakeHandle.h"
#include "fakehost/FakeHost.h"
#include "module/PluginTable.h"
#include "platform/portable/ScopedPortableOs.h"
#include "resources/CabinetIconBarImageRes.h"
#include "toolkit/Application.h"

namespace qx {
namespace {

constexpr int kTabs = 2000;
constexpr int kRuns = 300;

std::filesystem::path NewFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-bench-cabinet-XXXXXX").string();
  return mkdtemp(pattern.data());
}

void WritePicture(const std::filesystem::path& path, int width, int height) {
  std::filesystem::create_directories(path.parent_path());
  TBitmap bitmap(width, height);
  bitmap.Clear(0xFF336699u);
  bitmap.SaveToFile(path);
}

class TBenchBar {
 public:
  TBenchBar() : FRoot(NewFolder()) {
    TToolkit::Finalize();
    FHost.UseFolder(FRoot);
    const auto skin = FRoot / "rc/skins/current/widget/toolbar/CabinetBar";
    for (std::u16string_view key : TCabinetIconBarImageRes::Keys())
      WritePicture(skin / (std::u16string(key) + u".png"), 22, 22);
    TBitmap icon(16, 16);
    icon.Clear(0xFF000000u);
    std::ostringstream png;
    icon.SaveToStream(png);
    const std::string bytes = png.str();
    FHost.Favicons().StoreDefaultIcon({bytes.begin(), bytes.end()});
    FMain = FHost.HostWindows().CreateMainWindow(TRect{0, 0, 1920, 200});
    TFakeTabGroup* group = FHost.Model().AddGroup(u"bench").get();
    FHost.Model().SwitchGroup(group);
    FStrip = Create(0, 24, 53);
    for (const char16_t* id :
         {u"Client.Initialize", u"Client.Visible", u"Client.Loaded", u"Client.Initialized"})
      FHost.Events().FireFromHost(id, {});
    FBar = Create(1, 0, 24);
    for (int i = 0; i < kTabs; ++i) {
      TFakeOpenTab how;
      how.Group = group;
      how.Activate = i == kTabs / 2;
      const int run = i * kRuns / kTabs;
      FHost.Model().OpenTab(u"https://site" + std::u16string(FromNumber(run)) + u".example/", how);
    }
  }
  ~TBenchBar() {
    for (auto* control : {FBar.get(), FStrip.get()}) control->DestroyControl();
    FBar = nullptr;
    FStrip = nullptr;
    FHost.RegisterPlugin("PreviewStripPlugin", nullptr);
    FHost.RegisterPlugin("CabinetIconBarControl", nullptr);
    TToolkit::Finalize();
    std::error_code error;
    std::filesystem::remove_all(FRoot, error);
  }

  ICabinetIconBar& Bar() { return *FBar.As<ICabinetIconBar>(); }
  TCabinetIconBarFrame& Frame() {
    return *static_cast<TCabinetIconBarPluginImpl*>(FBar.get())->CabinetIconBarForm()->CabinetIconBarFrame();
  }

 private:
  static std::u16string FromNumber(int n) {
    const std::string text = std::to_string(n);
    return {text.begin(), text.end()};
  }
  ComPtr<IQxIControl> Create(std::size_t index, int top, int height) {
    ComPtr<IUnknown> plugin = kPluginClasses[index](FHost.ServiceCore().get());
    FHost.RegisterPlugin(kPluginIds[index], plugin.get());
    ComPtr<IQxIControl> control = plugin.As<IQxIControl>();
    ComPtr<IQxIHandle> parent = MakeCom<TFakeHandle>(reinterpret_cast<std::uintptr_t>(FMain));
    ComPtr<IQxIHandle> handle;
    control->CreateControl(parent.get(), handle.put());
    std::uintptr_t value = 0;
    if (handle) handle->GetValue(&value);
    FOs->SetWindowPos(reinterpret_cast<HWnd>(value), nullptr, 0, top, 1920, height,
                      win::SWP_NOZORDER | win::SWP_NOACTIVATE);
    return control;
  }

  TScopedPortableOs FOs;
  std::filesystem::path FRoot;
  TFakeHost FHost;
  HWnd FMain = nullptr;
  ComPtr<IQxIControl> FStrip;
  ComPtr<IQxIControl> FBar;
};

// Alternating durations give every pass new stop values, so each icon's animations are
// really restarted, as when the strip scrolls.
void BM_LayoutPassOver2000TabsIn300Runs(benchmark::State& state) {
  TBenchBar bench;
  ICabinetIconBar& bar = bench.Bar();
  bool odd = false;
  for (auto _ : state) {
    bar.layoutCabinetIcon(true, odd ? 0.2f : 0.25f, 0, nullptr);
    odd = !odd;
  }
  std::size_t shown = 0;
  for (TCabinetIcon2* icon : bench.Frame().IconList().Items()) shown += icon->Visible() ? 1 : 0;
  state.counters["icons"] = static_cast<double>(bench.Frame().IconList().Items().size());
  state.counters["runs"] = static_cast<double>(shown);
}
BENCHMARK(BM_LayoutPassOver2000TabsIn300Runs)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qx

BENCHMARK_MAIN();
