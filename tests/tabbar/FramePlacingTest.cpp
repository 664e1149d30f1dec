#include "tabbar/FrameFixture.h"
#include "tabbar/ParentFormFixture.h"
#include "tabview/CabinetIconBarIntf.h"

namespace qx {
namespace {

// The cabinet icon bar as the strip finds it among the host's plug-ins; it
// answers each layout pass with a nested one, as an animation callback might.
class TNestingCabinetBar final : public TInterfacedObject<IQxIControl, ICabinetIconBar> {
 public:
  HResult QX_STDCALL CreateControl(IQxIHandle*, IQxIHandle**) override { return kFail; }
  HResult QX_STDCALL DestroyControl() override { return kOk; }
  HResult QX_STDCALL ControlReservedA() override { return kOk; }
  HResult QX_STDCALL ControlReservedB() override { return kOk; }
  HResult QX_STDCALL GetControlGuid(IQxIString**) override { return kFail; }
  HResult QX_STDCALL GetChildFrameLeft(std::int32_t*) override { return kFail; }
  HResult QX_STDCALL GetChildFrameRight(std::int32_t*) override { return kFail; }
  HResult QX_STDCALL GetChildFrameTop(std::int32_t*) override { return kFail; }
  HResult QX_STDCALL GetChildFrameBottom(std::int32_t*) override { return kFail; }
  void UpdateIcon(TTabImage*) override {}
  bool ExistIcon(TTabImage*) override { return false; }
  void layoutCabinetIcon(bool, float, std::int32_t, TTabImage*) override {
    ++Passes;
    if (Frame) Frame->layoutSubviews(true);
  }
  void ChangeActiveState(bool active) override { ActiveStates.push_back(active); }
  void NotifyScrollBoxRect(const TRectF&) override { ++RectNotes; }
  void DebugPrintIconPosition() override {}
  bool MouseInCabinetBar() override { return false; }

  TTabbarFrame* Frame = nullptr;
  int Passes = 0;
  int RectNotes = 0;
  std::vector<bool> ActiveStates;
};

TEST_F(FrameTest, ANestedLayoutPassReturnsAtOnce) {
  auto bar = MakeCom<TNestingCabinetBar>();
  host_.RegisterPlugin("CabinetIconBarControl", static_cast<IQxIControl*>(bar.get()));
  Open();
  TTabbarFrame& frame = MakeFrame();
  bar->Frame = &frame;
  int passes = bar->Passes;
  frame.layoutSubviews(false);
  EXPECT_EQ(bar->Passes, passes + 1);
  passes = bar->Passes;
  frame.UpdateTabbar(true, false);
  EXPECT_EQ(bar->Passes, passes + 1);
  EXPECT_GT(bar->RectNotes, 0);
  frame.UpdateMainWindowActive(true);
  EXPECT_EQ(bar->ActiveStates.back(), true);
  bar->Frame = nullptr;
  host_.RegisterPlugin("CabinetIconBarControl", nullptr);
}

TEST_F(FrameTest, ANewTabWidensTheStripOnTheClockAndStandsRightOfTheOthers) {
  for (int i = 0; i < 3; ++i) Open();
  TTabbarFrame& frame = MakeFrame();
  frame.UpdateTabbar(true, false);
  Advance(1000);
  const float sides = frame.imgTabbarLeft()->Width() + frame.imgTabbarRight()->Width();
  EXPECT_EQ(frame.TabbarWidth(), 3 * 98 + sides);
  std::vector<float> lefts;
  for (int i = 0; i < 3; ++i) lefts.push_back(frame.GetTabImages(i)->TabImageLeft());

  Open();
  frame.UpdateTabbar(true, true);
  ASSERT_EQ(frame.TabImageCount(), 4);
  EXPECT_TRUE(frame.TabbarWidthAnimation()->Running());
  EXPECT_EQ(frame.TabbarWidthAnimation()->StopValue, 4 * 98 + sides);
  Advance(100);
  EXPECT_GT(frame.TabbarWidth(), 3 * 98 + sides);
  EXPECT_LT(frame.TabbarWidth(), 4 * 98 + sides);
  Advance(400);
  EXPECT_EQ(frame.TabbarWidth(), 4 * 98 + sides);
  EXPECT_FALSE(frame.TabbarWidthAnimation()->Running());
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(frame.GetTabImages(i)->TabImageLeft(), lefts[static_cast<std::size_t>(i)]);
  EXPECT_EQ(frame.GetTabImages(3)->TabImageLeft(), lefts[2] + 98);
  // The indicator stands over the new active tab.
  EXPECT_TRUE(frame.imgActiveTab()->Visible());
  EXPECT_EQ(frame.ActiveTab(), frame.GetTabImages(3));
}

TEST_F(FrameTest, GroupColoursFollowTheGroupAndAnUnknownGroupLeavesThem) {
  TTabbarFrame& frame = MakeFrame();
  Open();
  frame.UpdateTabbar(true, false);
  EXPECT_EQ(frame.GroupIndex(), 0);
  EXPECT_EQ(Colour(frame.btnGroup()->NormalBitmap()), ColourOfKey(u"TabbarCabinet1"));
  EXPECT_EQ(Colour(frame.btnAddTab()->PushedBitmap()), ColourOfKey(u"TabbarAdd1Pressed"));

  frame.UpdateGroupButtonImages(2, true);
  EXPECT_EQ(Colour(frame.btnGroup()->HoverBitmap()), ColourOfKey(u"TabbarCabinetPrivate3Hovered"));
  EXPECT_EQ(Colour(frame.btnAddTab()->NormalBitmap()), ColourOfKey(u"TabbarAdd3"));

  frame.UpdateGroupImageFromGroup(nullptr);  // not among the host's groups: index 99
  EXPECT_EQ(frame.GroupIndex(), 2);
  EXPECT_EQ(Colour(frame.btnGroup()->HoverBitmap()), ColourOfKey(u"TabbarCabinetPrivate3Hovered"));
}

TEST_F(FrameTest, TheActiveLookSwapsTheStripsPictures) {
  TTabbarFrame& frame = MakeFrame();
  frame.UpdateMainWindowActive(true);
  EXPECT_EQ(Colour(frame.imgActiveTab()->Bitmap()), ColourOfKey(u"TabActive"));
  EXPECT_EQ(Colour(frame.imgTabbarMiddle()->Bitmap()), ColourOfKey(u"TabbarBackgroundFill"));
  frame.UpdateMainWindowActive(false);
  EXPECT_EQ(Colour(frame.imgActiveTab()->Bitmap()), ColourOfKey(u"TabActiveInactive"));
  EXPECT_EQ(Colour(frame.imgTabbarRight()->Bitmap()), ColourOfKey(u"TabbarBackgroundInactiveRight"));
}

TEST_F(FrameTest, OnlyTheTopBandOfTheTabsLetsTheWindowBeDragged) {
  Open();
  TTabbarFrame& frame = MakeFrame();
  frame.UpdateTabbar(true, false);
  const TRectF box = frame.TabScrollBox()->AbsoluteRect();
  const float middle = (box.Left + box.Right) / 2;
  EXPECT_TRUE(frame.IsHitTestTranparent(middle, box.Top + 2));
  EXPECT_FALSE(frame.IsHitTestTranparent(middle, box.Top + 20));
  const TRectF button = frame.AddTabButtonAbsoluteRect();
  EXPECT_FALSE(frame.IsHitTestTranparent(button.Left + 1, button.Top + 1));
  EXPECT_EQ(button, TRectF::FromSize(frame.Width() - 64 + 16, 15, 28, 28));
}

// Inside its form the strip is as wide as its tabs need, never wider than the
// form, and it appears only once it has mirrored the host.
TEST_F(ParentFormTest, TheStripInItsFormGrowsToTheFormsWidthAndShowsAfterTheFirstSync) {
  TTabbarParentForm& form = MakeForm(600);
  TTabbarFrame& frame = *form.TabbarChildFrame();
  EXPECT_FALSE(form.TabbarChildFrameImage()->Visible());
  for (int i = 0; i < 2; ++i) Open();
  host_.Events().FireFromHost(u"Client.Initialized", {});
  Advance(1000);
  EXPECT_TRUE(form.TabbarChildFrameImage()->Visible());
  EXPECT_EQ(frame.TabbarWidth(), 2 * 98 + 128);
  EXPECT_EQ(form.ChildFrameWidth(), 2 * 98 + 128);
  for (int i = 0; i < 8; ++i) Open();
  Advance(1000);
  EXPECT_EQ(frame.TabImageCount(), 10);
  EXPECT_EQ(frame.TabbarWidth(), 600);
}

}  // namespace
}  // namespace qx
