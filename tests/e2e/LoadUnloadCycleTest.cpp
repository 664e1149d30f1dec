// The browser may load, use and unload the module many times in one process: nothing of
// it may stay behind, neither in the window system nor in the process.

#include <dirent.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "StripFixture.h"
#include "platform/portable/PortableOsExport.h"

QX_EXPORT_PORTABLE_OS()

// Sanitizers keep freed memory in quarantine, so resident memory says nothing there.
// GCC names them with macros, clang answers __has_feature.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QX_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QX_SANITIZED 1
#endif
#endif
#ifndef QX_SANITIZED
#define QX_SANITIZED 0
#endif

namespace qx::test {
namespace {

std::size_t EntriesIn(const char* folder) {
  std::size_t count = 0;
  if (DIR* dir = opendir(folder)) {
    while (const dirent* entry = readdir(dir))
      if (entry->d_name[0] != '.') ++count;
    closedir(dir);
  }
  return count;
}

long ResidentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("VmRSS:", 0) == 0) return std::stol(line.substr(6));
  return 0;
}

int CyclesWanted() {
  const char* text = std::getenv("QX_LOAD_CYCLES");
  return text ? std::max(2, std::atoi(text)) : 200;
}

struct TProcessState {
  long Kilobytes = 0;
  std::size_t Files = 0;
  std::size_t Threads = 0;
};

TProcessState Measure() {
  return {ResidentKilobytes(), EntriesIn("/proc/self/fd"), EntriesIn("/proc/self/task")};
}

class LoadUnloadCycle : public ::testing::Test {
 protected:
  LoadUnloadCycle() : root_(NewE2eFolder()) {}
  ~LoadUnloadCycle() override {
    std::error_code error;
    std::filesystem::remove_all(root_, error);
  }

  // Load, build the strip in a host window with its tabs and thumbnails, let it animate a
  // new tab in, take it down, release everything, unload.
  void OneCycle() {
    {
      TModuleLoader loader;
      ASSERT_TRUE(loader.Load(QX_MODULE_PATH)) << loader.Error();
      {
        TFakeHost host;
        TStripScenario scenario(host, root_, QX_SKIN_DIR);
        scenario.PrepareHost();
        ASSERT_EQ(scenario.CreateStrip(loader), kOk);
        scenario.Settle(50);
        scenario.AddPage();
        scenario.Settle(300);
        scenario.DestroyStrip();
      }
      EXPECT_EQ(os_->WindowCount(), 0u);
      loader.Unload();
    }
    EXPECT_EQ(dlopen(QX_MODULE_PATH, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the module stayed loaded";
    // The host's own class stays; none of the module's may.
    EXPECT_EQ(os_->RegisteredClassNames(), std::vector<std::u16string>{u"QxFakeHostMainWindow"});
    EXPECT_EQ(os_->TimerCount(), 0u);
    EXPECT_EQ(os_->HookCount(), 0u);
    os_->ProcessMessages();
    EXPECT_EQ(os_->PendingMessageCount(), 0u);
  }

  TScopedPortableOs os_;
  std::filesystem::path root_;
};

TEST_F(LoadUnloadCycle, NothingOfTheModuleOutlivesItsUnload) {
  const int cycles = CyclesWanted();
  // The first cycles fill the allocator's and the libraries' own caches.
  const int warmUp = std::min(10, cycles / 2);
  for (int i = 0; i < warmUp; ++i) ASSERT_NO_FATAL_FAILURE(OneCycle());
  const TProcessState before = Measure();
  for (int i = warmUp; i < cycles; ++i) {
    ASSERT_NO_FATAL_FAILURE(OneCycle());
    if (HasFailure()) break;
  }
  const TProcessState after = Measure();
  EXPECT_EQ(after.Files, before.Files);
  EXPECT_EQ(after.Threads, before.Threads);
#if !QX_SANITIZED
  // One leaked form, frame and image set a cycle would pass this many times over.
  const long perCycle = (after.Kilobytes - before.Kilobytes) / std::max(1, cycles - warmUp);
  EXPECT_LE(perCycle, 16) << "resident memory grew from " << before.Kilobytes << " kB to " << after.Kilobytes
                          << " kB over " << cycles - warmUp << " cycles";
#endif
}

}  // namespace
}  // namespace qx::test
