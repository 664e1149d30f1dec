#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "fakehost/FakeHost.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"

namespace qx {

// A new empty folder under the system's temporary folder.
inline std::filesystem::path MakeTempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-test-XXXXXX").string();
  return mkdtemp(pattern.data());
}

// A fresh emulated window system, a fake browser, and a wrapper over its service core.
class WrapFixture : public ::testing::Test {
 protected:
  explicit WrapFixture(bool useEventDelayTask = true)
      : wrap_(MakeCom<TServiceCoreWrapImpl>(host_.ServiceCore().get(), useEventDelayTask)) {
    host_.Model().SwitchGroup(host_.Model().AddGroup(u"main").get());
  }

  static TFakeOpenTab WithEngine(std::u16string_view engineId) {
    TFakeOpenTab how;
    how.EngineId = std::u16string(engineId);
    return how;
  }
  static TFakeOpenTab InSection(std::int32_t section) {
    TFakeOpenTab how;
    how.Section = section;
    return how;
  }

  TFakeTab* Open(std::u16string_view uri, TFakeOpenTab how = {}) { return host_.Model().OpenTab(uri, how).get(); }
  IQxITab* Tab(TFakeTab* tab) { return tab; }

  TScopedPortableOs os_;
  TFakeHost host_;
  ComPtr<TServiceCoreWrapImpl> wrap_;
};

}  // namespace qx
