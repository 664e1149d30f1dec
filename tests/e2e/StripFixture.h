#pragma once

// The built module loaded through its exports into a process that shares its emulated
// window system (manual clock) with it, and a fake browser with the strip scenario's tabs.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <string>

#include "ModuleLoader.h"
#include "StripScenario.h"
#include "fakehost/FakeHandle.h"
#include "fakehost/FakeHost.h"
#include "platform/portable/ScopedPortableOs.h"

namespace qx::test {

inline std::filesystem::path NewE2eFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-e2e-XXXXXX").string();
  return mkdtemp(pattern.data());
}

class StripTest : public ::testing::Test {
 protected:
  StripTest() : root_(NewE2eFolder()) {}
  ~StripTest() override {
    scenario_.reset();
    loader_.Unload();
    std::error_code error;
    std::filesystem::remove_all(root_, error);
  }
  void SetUp() override {
    ASSERT_TRUE(loader_.Load(QX_MODULE_PATH)) << loader_.Error();
    scenario_ = std::make_unique<TStripScenario>(host_, root_, QX_SKIN_DIR);
  }

  // A further plug-in object of the tab strip, as a second browser window would have.
  ComPtr<IQxIControl> NewStripControl() {
    ComPtr<IUnknown> plugin;
    EXPECT_EQ(loader_.GetPlugin()("PreviewStripPlugin", host_.ServiceCore().get(), plugin.put()), kOk);
    return plugin.As<IQxIControl>();
  }
  HWnd Create(IQxIControl* control, HWnd parent) {
    ComPtr<IQxIHandle> parentHandle = MakeCom<TFakeHandle>(reinterpret_cast<std::uintptr_t>(parent));
    ComPtr<IQxIHandle> handle;
    EXPECT_EQ(control->CreateControl(parentHandle.get(), handle.put()), kOk);
    std::uintptr_t value = 0;
    if (handle) handle->GetValue(&value);
    return reinterpret_cast<HWnd>(value);
  }
  bool FormClassRegistered() { return os_->GetClassInfoW(u"QxFormWindow", nullptr); }

  TScopedPortableOs os_;
  std::filesystem::path root_;
  TModuleLoader loader_;
  TFakeHost host_;
  std::unique_ptr<TStripScenario> scenario_;
};

}  // namespace qx::test
