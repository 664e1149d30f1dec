#include <gtest/gtest.h>

#include "ModuleLoader.h"
#include "fakehost/FakeServiceCore.h"

namespace qx {
namespace {

class ExportsTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(loader_.Load(QX_MODULE_PATH)) << loader_.Error(); }

  ComPtr<IUnknown> GetPlugin(const char* id, IQxIServiceCore* core, HResult expected) {
    IUnknown* raw = reinterpret_cast<IUnknown*>(0x1);
    EXPECT_EQ(loader_.GetPlugin()(id, core, &raw), expected);
    ComPtr<IUnknown> plugin;
    plugin.attach(raw);
    return plugin;
  }

  TModuleLoader loader_;
  ComPtr<TFakeServiceCore> core_ = MakeCom<TFakeServiceCore>();
};

TEST_F(ExportsTest, EnumPluginListsBothPluginsInTableOrderAndWritesNothingThroughANullPointer) {
  EXPECT_EQ(loader_.PluginIds(), (std::vector<std::string>{"PreviewStripPlugin", "CabinetIconBarControl"}));

  std::int32_t count = -1;
  const char* const* ids = reinterpret_cast<const char* const*>(0x2);
  EXPECT_EQ(loader_.EnumPlugin()(&count, nullptr), kFail);
  EXPECT_EQ(count, -1);
  EXPECT_EQ(loader_.EnumPlugin()(nullptr, &ids), kFail);
  EXPECT_EQ(ids, reinterpret_cast<const char* const*>(0x2));
}

TEST_F(ExportsTest, GetPluginMatchesIdsWhateverTheirCaseAndMakesAFreshObjectAnsweringItsInterfaces) {
  ComPtr<IUnknown> strip = GetPlugin("previewstripPLUGIN", core_.get(), kOk);
  ComPtr<IUnknown> bar = GetPlugin("CABINETICONBARCONTROL", core_.get(), kOk);
  ComPtr<IUnknown> again = GetPlugin("PreviewStripPlugin", core_.get(), kOk);
  ASSERT_TRUE(strip && bar && again);
  EXPECT_FALSE(SameInterface(strip.get(), again.get()));
  EXPECT_TRUE(strip.As<IQxIPlugin>());
  EXPECT_TRUE(strip.As<IQxIControl>());
  EXPECT_TRUE(bar.As<IQxIPlugin>());
  EXPECT_TRUE(bar.As<IQxIControl>());
  EXPECT_TRUE(SameInterface(strip.As<IQxIPlugin>().get(), strip.As<IQxIControl>().get()));
}

TEST_F(ExportsTest, GetPluginRefusesBadArgumentsWithANilReference) {
  EXPECT_FALSE(GetPlugin("PreviewStripPlugin", nullptr, kFail));
  EXPECT_FALSE(GetPlugin("NoSuchPlugin", core_.get(), kFail));
  EXPECT_FALSE(GetPlugin(nullptr, core_.get(), kFail));
  EXPECT_EQ(loader_.GetPlugin()("PreviewStripPlugin", core_.get(), nullptr), kFail);
}

TEST_F(ExportsTest, GetFunctionAnswersOnlyThisModulesExports) {
  EXPECT_EQ(loader_.GetFunction()("QxGetPlugin"), reinterpret_cast<void*>(loader_.GetPlugin()));
  EXPECT_EQ(loader_.GetFunction()("GetFunction"), reinterpret_cast<void*>(loader_.GetFunction()));
  EXPECT_EQ(loader_.GetFunction()("NoSuchFunction"), nullptr);
  EXPECT_EQ(loader_.GetFunction()("malloc"), nullptr);
  EXPECT_EQ(loader_.GetFunction()(nullptr), nullptr);
}

TEST(ModuleLoaderTest, MissingFileIsAClearError) {
  TModuleLoader loader;
  EXPECT_FALSE(loader.Load("/nonexistent/PreviewStrip.so"));
  EXPECT_FALSE(loader.Error().empty());
  EXPECT_TRUE(loader.PluginIds().empty());
}

}  // namespace
}  // namespace qx
