#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "ModuleLoader.h"
#include "ScenarioFile.h"
#include "ScenarioRunner.h"
#include "StripScenario.h"
#include "common/GoldenPicture.h"
#include "fakehost/FakeHost.h"
#include "platform/portable/PortableOsExport.h"
#include "platform/portable/ScopedPortableOs.h"

QX_EXPORT_PORTABLE_OS()

namespace qx {
namespace {

namespace fs = std::filesystem;

class ScenarioRun : public ::testing::Test {
 protected:
  ScenarioRun() {
    std::string pattern = (fs::temp_directory_path() / "qx-scenario-XXXXXX").string();
    root_ = mkdtemp(pattern.data());
  }
  ~ScenarioRun() override {
    std::error_code error;
    fs::remove_all(root_, error);
  }

  // The shipped file played headless on a window system and clock of its own.
  TScenarioReport Play(const std::string& name, const fs::path& out) {
    const TScenarioRead read = ReadScenarioFile(fs::path(QX_SCENARIO_DIR) / name);
    EXPECT_TRUE(read.Scenario) << read.Error;
    if (!read.Scenario) return {};
    TScopedPortableOs os;
    TModuleLoader loader;
    EXPECT_TRUE(loader.Load(QX_MODULE_PATH)) << loader.Error();
    TFakeHost host;
    TStripScenario scenario(host, out / "host", QX_SKIN_DIR);
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> log(std::tmpfile(), &std::fclose);
    TScenarioReport report = TScenarioRunner(scenario, loader, out, log.get()).Play(*read.Scenario);
    EXPECT_TRUE(report.StripCreated);
    return report;
  }

  void PlayAndCompareGoldens(const std::string& name) {
    const TScenarioReport report = Play(name, root_ / "out");
    int goldens = 0;
    for (const TCapturedPicture& captured : report.Captures) {
      ASSERT_TRUE(captured.Picture) << captured.Name;
      if (captured.Golden.empty()) continue;
      ++goldens;
      SCOPED_TRACE(captured.Name);
      test::ExpectMatchesGolden(*captured.Picture, "../apps/hostsim/scenarios/" + captured.Golden);
    }
    EXPECT_GT(goldens, 0) << name << " names no golden picture";
  }

  fs::path root_;
};

TEST_F(ScenarioRun, DragAcrossSectionsMatchesItsGoldens) {
  PlayAndCompareGoldens("drag-across-sections.json");
}
TEST_F(ScenarioRun, SmartSearchMatchesItsGoldens) { PlayAndCompareGoldens("smart-search.json"); }
TEST_F(ScenarioRun, Session2000MatchesItsGoldens) { PlayAndCompareGoldens("session-2000.json"); }
TEST_F(ScenarioRun, CabinetDragMatchesItsGoldens) { PlayAndCompareGoldens("cabinet-drag.json"); }

std::string Bytes(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST_F(ScenarioRun, SameFileTwiceGivesTheSameFiles) {
  const TScenarioReport first = Play("drag-across-sections.json", root_ / "first");
  const TScenarioReport second = Play("drag-across-sections.json", root_ / "second");
  ASSERT_EQ(first.Captures.size(), 2u);
  ASSERT_EQ(second.Captures.size(), first.Captures.size());
  for (std::size_t i = 0; i < first.Captures.size(); ++i) {
    EXPECT_EQ(first.Captures[i].File.filename(), second.Captures[i].File.filename());
    EXPECT_FALSE(Bytes(first.Captures[i].File).empty());
    EXPECT_EQ(Bytes(first.Captures[i].File), Bytes(second.Captures[i].File)) << first.Captures[i].File;
  }
  ASSERT_FALSE(first.Animation.empty());
  EXPECT_EQ(Bytes(first.Animation).substr(1, 3), "PNG");
  EXPECT_EQ(Bytes(first.Animation), Bytes(second.Animation));
  EXPECT_EQ(Bytes(first.ContactSheet), Bytes(second.ContactSheet));
}

// The simulator checks the whole file before it loads anything: a bad step near the end
// leaves no picture behind.
TEST_F(ScenarioRun, SimulatorRunsNothingOfABadFile) {
  const fs::path bad = root_ / "bad.json";
  std::ofstream(bad) << R"({"steps": [{"do": "prepare-host"}, {"do": "create-strip"},
  {"do": "capture", "name": "first"},
  {"do": "jump"}]})";
  const fs::path out = root_ / "out";
  const std::string command = std::string(QX_HOSTSIM_PATH) + " --scenario " + bad.string() + " --out " +
                              out.string() + " >" + (root_ / "log").string() + " 2>&1";
  const int status = std::system(command.c_str());
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 2);
  EXPECT_FALSE(fs::exists(out));
  const std::string log = Bytes(root_ / "log");
  EXPECT_NE(log.find("line 3 column 3: unknown step \"jump\""), std::string::npos) << log;
}

}  // namespace
}  // namespace qx
