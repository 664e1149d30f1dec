#include <gtest/gtest.h>

#include "platform/Platform.h"
#include "platform/portable/ScopedPortableOs.h"
#include "tabview/TabImageScrollBoxAdapter.h"
#include "toolkit/Application.h"
#include "toolkit/Form.h"

namespace qx {
namespace {

using StripBox = TalvokScrollBoxUnit::TTalvokScrollBox;

class TabImageScrollBoxAdapterTest : public ::testing::Test {
 protected:
  void SetUp() override { TToolkit::Finalize(); }
  void TearDown() override { TToolkit::Finalize(); }
  TScopedPortableOs os_;
};

TEST_F(TabImageScrollBoxAdapterTest, PressesDriveTheStripsInertia) {
  StripBox box;
  box.SetBounds(0, 0, 200, 100);
  auto* child = new TLayout(&box);
  child->SetBounds(0, 0, 1000, 100);
  child->SetParent(&box);
  TTabImageScrollBoxAdapter adapter(&box);
  adapter.PerfectRefresh();
  EXPECT_EQ(adapter.ScrollBoxControl(), &box);
  EXPECT_EQ(box.MaxHorzPosition(), 800);

  box.AniCalculations().TouchTracking = ttrack::Horizontal;
  adapter.AniMouseDown(150, 10);
  EXPECT_TRUE(box.AniCalculations().Down());
  os_->AdvanceClock(10);
  adapter.AniMouseMove(110, 10);
  EXPECT_NEAR(box.AniCalculations().ViewportPosition().X, 40, 0.5);
  adapter.AniMouseUp(110, 10);
  EXPECT_FALSE(box.AniCalculations().Down());

  adapter.AniMouseDown(150, 10);
  adapter.AniMouseLeave();
  EXPECT_FALSE(box.AniCalculations().Down());
}

TEST_F(TabImageScrollBoxAdapterTest, MouseInsideIsTheBoxAreaOnScreen) {
  StripBox loose;
  TTabImageScrollBoxAdapter looseAdapter(&loose);
  EXPECT_FALSE(looseAdapter.MouseInScrollBox());  // not on a form: nowhere on screen

  TForm form;
  form.SetBounds(100, 50, 400, 200);
  auto* box = new StripBox(&form);
  box->SetParent(&form);
  box->SetBounds(20, 10, 200, 60);
  TTabImageScrollBoxAdapter adapter(box);
  ASSERT_TRUE(Platform().SetCursorPos(100 + 20 + 5, 50 + 10 + 5));
  EXPECT_TRUE(adapter.MouseInScrollBox());
  ASSERT_TRUE(Platform().SetCursorPos(100 + 20 + 205, 50 + 10 + 5));
  EXPECT_FALSE(adapter.MouseInScrollBox());
}

}  // namespace
}  // namespace qx
