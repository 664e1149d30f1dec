// The host simulator: loads the module through its exports, builds both plug-ins against
// the fake browser, plays a scenario file (the built-in one by default) and reports what
// the module answered and where its pictures are.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "ModuleLoader.h"
#include "ScenarioFile.h"
#include "ScenarioRunner.h"
#include "StripScenario.h"
#if defined(QX_HOSTSIM_LIVE)
#include "LiveWindow.h"
#endif
#include "base/Text.h"
#include "fakehost/FakeHost.h"
#include "host/WrapV3Intf.h"
#if !defined(_WIN32)
#include "platform/portable/PortableOsExport.h"
#include "platform/portable/ScopedPortableOs.h"

QX_EXPORT_PORTABLE_OS()
#endif

namespace qx {
namespace {

struct TOptions {
  std::string ModulePath;
  std::string OutDir = "hostsim-out";
  std::string SkinDir = QX_DEFAULT_SKIN_DIR;
  // The live window: --live, --tabs N, --record FILE.
  bool Live = false;
  int Tabs = 0;
  std::string RecordFile;
  std::string ScenarioPath = QX_DEFAULT_SCENARIO;
};

std::string HResultText(HResult status) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "0x%08X", static_cast<unsigned>(status));
  return buffer;
}

std::string TextOf(IQxIString* value) { return value ? ToUtf8(StringText(value)) : std::string("(nil)"); }

void ReportText(const char* label, HResult status, IQxIString* value) {
  std::printf("    %-16s %s  %s\n", label, HResultText(status).c_str(), TextOf(value).c_str());
}

// The scenario against a fresh host whose folders live under the output folder.
int PlayStrip(TModuleLoader& loader, const TOptions& options, const TScenario& steps) {
  const std::filesystem::path out = std::filesystem::absolute(options.OutDir);
  std::error_code error;
  std::filesystem::remove_all(out / "host", error);
  std::printf("scenario file: %s (pictures in %s)\n", options.ScenarioPath.c_str(), out.string().c_str());
  TFakeHost host;
  TStripScenario scenario(host, out / "host", options.SkinDir);
  const TScenarioReport report = TScenarioRunner(scenario, loader, out, stdout).Play(steps);
  if (Failed(report.CreateResult)) {
    std::printf("the strip's control was not created: the pictures show the host window only\n");
    return 1;
  }
  return 0;
}

int Run(const TOptions& options, const TScenario& steps) {
  TModuleLoader loader;
  if (!loader.Load(options.ModulePath)) {
    std::fprintf(stderr, "hostsim: %s\n", loader.Error().c_str());
    return 2;
  }
  std::printf("module: %s\n", options.ModulePath.c_str());
  TFakeHost host;
  const auto ids = loader.PluginIds();
  std::printf("plug-ins: %zu\n", ids.size());
  for (const std::string& id : ids) {
    std::printf("  %s\n", id.c_str());
    ComPtr<IUnknown> object;
    const HResult status = loader.GetPlugin()(id.c_str(), host.ServiceCore().get(), object.put());
    if (Failed(status) || !object) {
      std::printf("    QxGetPlugin failed: %s\n", HResultText(status).c_str());
      continue;
    }
    host.RegisterPlugin(id, object.get());
    if (ComPtr<IQxIPlugin> plugin = object.As<IQxIPlugin>()) {
      ComPtr<IQxIString> guid, version;
      const HResult guidStatus = plugin->GetGuid(guid.put());
      ReportText("GetGuid", guidStatus, guid.get());
      const HResult versionStatus = plugin->GetVersion(version.put());
      ReportText("GetVersion", versionStatus, version.get());
    }
    if (ComPtr<IQxIControl> control = object.As<IQxIControl>()) {
      ComPtr<IQxIString> guid;
      const HResult status = control->GetControlGuid(guid.put());
      ReportText("GetControlGuid", status, guid.get());
    }
  }
  std::printf("exports: QxEnumPlugin=%p QxGetPlugin=%p GetFunction(\"QxGetPlugin\")=%p\n",
              reinterpret_cast<void*>(loader.EnumPlugin()), reinterpret_cast<void*>(loader.GetPlugin()),
              loader.GetFunction()("QxGetPlugin"));
  for (const std::string& id : ids) host.RegisterPlugin(id, nullptr);
  if (options.Live) {
#if defined(QX_HOSTSIM_LIVE)
    TLiveOptions live;
    live.Tabs = options.Tabs;
    live.RecordFile = options.RecordFile;
    live.OutDir = options.OutDir;
    live.SkinDir = options.SkinDir;
    if (const int status = RunLiveWindow(loader, live); status >= 0) return status;
#endif
    std::printf("no live window: running headless\n");
  }
  return PlayStrip(loader, options, steps);
}

}  // namespace
}  // namespace qx

int main(int argc, char** argv) {
  qx::TOptions options;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--module" && i + 1 < argc) {
      options.ModulePath = argv[++i];
    } else if (arg == "--out" && i + 1 < argc) {
      options.OutDir = argv[++i];
    } else if (arg == "--skin" && i + 1 < argc) {
      options.SkinDir = argv[++i];
    } else if (arg == "--scenario" && i + 1 < argc) {
      options.ScenarioPath = argv[++i];
    } else if (arg == "--live") {
      options.Live = true;
    } else if (arg == "--tabs" && i + 1 < argc) {
      options.Tabs = std::atoi(argv[++i]);
    } else if (arg == "--record" && i + 1 < argc) {
      options.RecordFile = argv[++i];
    } else if (arg == "--help") {
      std::printf(
          "usage: hostsim [--scenario FILE] [--module PATH] [--out DIR] [--skin DIR]\n"
          "               [--live [--tabs N] [--record FILE]]\n");
      return 0;
    } else {
      std::fprintf(stderr, "hostsim: unknown argument %s\n", arg.c_str());
      return 2;
    }
  }
  if (options.ModulePath.empty()) options.ModulePath = QX_DEFAULT_MODULE_PATH;
  // The whole file is checked before anything runs.
  const qx::TScenarioRead read = qx::ReadScenarioFile(options.ScenarioPath);
  if (!read.Scenario) {
    std::fprintf(stderr, "hostsim: %s\n", read.Error.c_str());
    return 2;
  }
#if !defined(_WIN32)
  // A manual clock: the scenario lets time pass step by step, so every run draws the same pictures.
  qx::TScopedPortableOs os;
#endif
  return qx::Run(options, *read.Scenario);
}
