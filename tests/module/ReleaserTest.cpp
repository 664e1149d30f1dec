#include <gtest/gtest.h>

#include "module/RegisterAppHandleProc.h"
#include "platform/portable/ScopedPortableOs.h"
#include "resources/FMXDllResourceFinalizer.h"
#include "runtime/DelayExec.h"
#include "toolkit/Application.h"
#include "toolkit/Form.h"

namespace qx {
namespace {

class ReleaserTest : public ::testing::Test {
 protected:
  ReleaserTest() { TToolkit::Finalize(); }
  ~ReleaserTest() override { TToolkit::Finalize(); }
  TScopedPortableOs os_;
};

TEST_F(ReleaserTest, TheToolkitGoesDownOnlyWithTheLastUse) {
  ComPtr<IResourceReleaser> strip, bar;
  GetResourceReleaser(strip);
  GetResourceReleaser(bar);
  ASSERT_TRUE(strip);
  EXPECT_EQ(strip.get(), bar.get());
  const int before = VisualToolkitFinalizeCount();
  strip->AddUse();
  bar->AddUse();
  EXPECT_EQ(ResourceReleaserUseCount(), 2);
  {
    TCommonCustomForm form;
    form.HandleNeed();
    form.DestroyHandle();
  }
  bar->ReleaseUse();
  EXPECT_EQ(VisualToolkitFinalizeCount(), before);
  EXPECT_TRUE(os_->GetClassInfoW(TCommonCustomForm::kWindowClassName, nullptr));
  strip->ReleaseUse();
  EXPECT_EQ(VisualToolkitFinalizeCount(), before + 1);
  EXPECT_EQ(ResourceReleaserUseCount(), 0);
  // Nothing of the module's stays registered with the system.
  EXPECT_TRUE(os_->RegisteredClassNames().empty());
}

TEST_F(ReleaserTest, TheHostsMainWindowOwnsTheModulesTopLevelForms) {
  const HWnd main =
      os_->CreateWindowExW(0, u"Static", u"main", win::WS_OVERLAPPED, 0, 0, 800, 600, nullptr, nullptr);
  RegisterAppHandle(main);
  EXPECT_EQ(Application().ApplicationWindow(), reinterpret_cast<std::uintptr_t>(main));
  {
    TCommonCustomForm form;
    form.HandleNeed();
    EXPECT_EQ(os_->GetWindow(form.Handle(), win::GW_OWNER), main);
  }
  // The teardown drops the callback; the next control registers it again.
  TToolkit::Finalize();
  EXPECT_EQ(Application().ApplicationWindow(), 0u);
  RegisterAppHandle(main);
  EXPECT_EQ(ApplicationWindowHandle(), main);
  EXPECT_EQ(Application().ApplicationWindow(), reinterpret_cast<std::uintptr_t>(main));
  os_->DestroyWindow(main);
}

}  // namespace
}  // namespace qx
