#include <dlfcn.h>
#include <gtest/gtest.h>

#include "platform/portable/PortableOsExport.h"
#include "tests/platform/TestWindows.h"

QX_EXPORT_PORTABLE_OS()

namespace qx::test {
namespace {

using namespace win;

class ModuleSharing : public PlatformTest {
 protected:
  ModuleSharing() { FModule = ::dlopen(QX_SHARING_MODULE, RTLD_NOW | RTLD_LOCAL); }
  ~ModuleSharing() override {
    if (FModule) ::dlclose(FModule);
  }
  template <typename F>
  F Get(const char* name) {
    return reinterpret_cast<F>(::dlsym(FModule, name));
  }
  void* FModule = nullptr;
};

TEST_F(ModuleSharing, TheLoadedModuleSeesTheHostsWindowSystem) {
  ASSERT_NE(FModule, nullptr) << ::dlerror();
  auto modulePlatform = Get<IPlatform* (*)()>("QxTestModulePlatform");
  auto moduleIsWindow = Get<bool (*)(HWnd)>("QxTestModuleIsWindow");
  auto modulePost = Get<bool (*)(HWnd, std::uint32_t)>("QxTestModulePost");
  ASSERT_TRUE(modulePlatform && moduleIsWindow && modulePost);
  // The module's own copy of Platform() answers the host's (here: this test's) instance.
  EXPECT_EQ(modulePlatform(), &Platform());
  EXPECT_EQ(modulePlatform(), static_cast<IPlatform*>(&Os()));
  HWnd hostWindow = MakeWindow();
  EXPECT_TRUE(moduleIsWindow(hostWindow));
  Log().clear();
  EXPECT_TRUE(modulePost(hostWindow, WM_USER + 3));
  Os().ProcessMessages();
  EXPECT_EQ(Messages(hostWindow), (std::vector<std::uint32_t>{WM_USER + 3}));
  P().DestroyWindow(hostWindow);
  EXPECT_FALSE(moduleIsWindow(hostWindow));
}

TEST_F(ModuleSharing, OnlyTheHostExportsTheEmulation) {
  ASSERT_NE(FModule, nullptr) << ::dlerror();
  EXPECT_EQ(::dlsym(FModule, "QxPortableOs"), nullptr);
  EXPECT_NE(::dlsym(RTLD_DEFAULT, "QxPortableOs"), nullptr);
}

}  // namespace
}  // namespace qx::test
