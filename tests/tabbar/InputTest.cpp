// Mouse and touch reach the strip as window messages of its form, so hit
// testing, capture and the scroll box take part as they do for a person.

#include "tabbar/FlickWipeFeedbackWindow.h"
#include "tabbar/HoldAndGoFeedbackForm.h"
#include "tabbar/InputFixture.h"
#include "tabbar/TitleForm.h"

namespace qx {
namespace {

TEST_F(InputTest, APressWithoutSidewaysMovementSelectsAndADropOnItsOwnPlaceStillCommits) {
  TTabbarFrame& frame = Strip(4);
  TTabImage* third = frame.GetTabImages(2);
  const std::u16string before = HostText();
  // Vertical movement alone never starts a drag.
  Press(At(third));
  MoveTo({At(third).X + 2, At(third).Y + 9});
  EXPECT_EQ(frame.DragTarget(), nullptr);
  Release(At(third));
  EXPECT_EQ(frame.ActiveTab(), third);
  EXPECT_EQ(group_->ActiveTab(), group_->FlatTabs()[2].get());
  EXPECT_TRUE(group_->MoveCalls().empty());

  // Out past the threshold and back: the drop lands where it started.
  Press(At(third));
  MoveTo(At(third, 6));
  ASSERT_EQ(frame.DragTarget(), third);
  EXPECT_TRUE(frame.WaitUpdateTabbar());
  MoveTo(At(third, -6));
  Release(At(third));
  EXPECT_EQ(frame.DragTarget(), nullptr);
  EXPECT_FALSE(frame.WaitUpdateTabbar());
  ASSERT_EQ(group_->MoveCalls().size(), 1u);
  EXPECT_EQ(group_->MoveCalls()[0].Section, 0);
  EXPECT_EQ(group_->MoveCalls()[0].Index, 2);
  EXPECT_FALSE(group_->MoveCalls()[0].NewSection);
  EXPECT_EQ(HostText(), before);
}

TEST_F(InputTest, ADraggedTabPassesItsNeighbourEvenAfterLeavingTheWindowAndComingBack) {
  TTabbarFrame& frame = Strip(3);
  TTabImage* first = frame.GetTabImages(0);
  TTabImage* second = frame.GetTabImages(1);
  const std::u16string movedGuid = first->TabGuid();
  Press(At(first));
  MoveTo(At(first, 5));
  ASSERT_EQ(frame.DragTarget(), first);
  // Below the window: the capture keeps the messages coming to the strip.
  MoveTo({At(first).X + 10, kHostY + 400});
  EXPECT_EQ(frame.DragTarget(), first);
  const TPoint beyond = At(second, 60);
  MoveTo({beyond.X, At(second).Y});
  Release({beyond.X, At(second).Y});
  EXPECT_EQ(frame.DragTarget(), nullptr);
  EXPECT_EQ(frame.GetTabImages(1)->TabGuid(), movedGuid);
  EXPECT_EQ(wrap_->TabGuid(group_->FlatTabs()[1].get()), movedGuid);
}

TEST_F(InputTest, ADragEndedByLostCaptureOrOverATabTheHostClosedLeavesNothingBehind) {
  TTabbarFrame& frame = Strip(3);
  TTabImage* first = frame.GetTabImages(0);
  Press(At(first));
  MoveTo(At(first, 8));
  ASSERT_EQ(frame.DragTarget(), first);
  const HWnd menu = os_->CreateWindowExW(0, u"QxTestHost", u"menu", win::WS_POPUP | win::WS_VISIBLE, 0, 0, 10,
                                         10, nullptr, nullptr);
  os_->SetCapture(menu);
  EXPECT_EQ(frame.DragTarget(), nullptr);
  EXPECT_FALSE(frame.WaitUpdateTabbar());
  EXPECT_FALSE(frame.AutoScrollTimer()->Enabled());
  EXPECT_EQ(group_->MoveCalls().size(), 1u);
  os_->ReleaseCapture();
  os_->DestroyWindow(menu);

  // The host closes the dragged tab: the sync waits for the drop, which commits nothing of it.
  TTabImage* second = frame.GetTabImages(1);
  const TPoint p = At(second);
  Press(p);
  MoveTo({p.X + 6, p.Y});
  ASSERT_EQ(frame.DragTarget(), second);
  host_.Model().CloseTab(group_->FlatTabs()[1].get());
  os_->ProcessMessages();
  EXPECT_EQ(frame.TabImageCount(), 3);
  MoveTo({p.X + 120, p.Y});
  Release({p.X + 120, p.Y});
  EXPECT_EQ(frame.DragTarget(), nullptr);
  EXPECT_FALSE(frame.WaitUpdateTabbar());
  EXPECT_EQ(frame.GetLayout()->draggingTab(), nullptr);
  EXPECT_EQ(group_->MoveCalls().size(), 1u);
  EXPECT_EQ(MirrorText(&frame), HostText());

  // The next press starts afresh.
  Press(At(frame.GetTabImages(1)));
  Release(At(frame.GetTabImages(1)));
  EXPECT_EQ(frame.ActiveTab(), frame.GetTabImages(1));
}

TEST_F(InputTest, ClickSettingsDecideWhatMiddleAndDoubleClicksDo) {
  TTabbarFrame& frame = Strip(3);
  TTabImage* second = frame.GetTabImages(1);
  const std::u16string guid = second->TabGuid();
  // Unset: a middle click does nothing.
  Send(win::WM_MBUTTONDOWN, At(second), win::MK_MBUTTON);
  Send(win::WM_MBUTTONUP, At(second), 0);
  EXPECT_TRUE(Sent(u"TabBar.CloseTab").empty());
  wrap_->SetPropertyText(u"client.TabDockSetting-WheelClick", u"close");
  Send(win::WM_MBUTTONDOWN, At(second), win::MK_MBUTTON);
  Send(win::WM_MBUTTONUP, At(second), 0);
  auto closes = Sent(u"TabBar.CloseTab");
  ASSERT_EQ(closes.size(), 1u);
  EXPECT_EQ(closes[0].Delivery, TFakeEventRecord::EDelivery::Posted);
  EXPECT_EQ(closes[0].Value(u"tab-id"), guid);
  // Double click within the system's time closes too; a third press starts a new pair.
  wrap_->SetPropertyText(u"client.TabDockSetting-LeftDblClick", u"close");
  for (int i = 0; i < 3; ++i) {
    Press(At(second));
    Release(At(second));
  }
  EXPECT_EQ(Sent(u"TabBar.CloseTab").size(), 2u);
  // Too slow: no double click.
  Advance(os_->GetDoubleClickTime() + 1);
  Press(At(second));
  Release(At(second));
  EXPECT_EQ(Sent(u"TabBar.CloseTab").size(), 2u);
}

TEST_F(InputTest, TouchFlickDownClosesTheTabUnderItsStart) {
  TTabbarFrame& frame = Strip(3);
  TTabImage* second = frame.GetTabImages(1);
  const TPoint start = At(second);
  auto touch = [&](std::uint32_t flags, int dx, int dy) { Touch(flags, {start.X + dx, start.Y + dy}); };
  touch(win::TOUCHEVENTF_DOWN, 0, 0);
  touch(win::TOUCHEVENTF_MOVE, 0, 29);
  EXPECT_EQ(frame.FlickingTab(), nullptr);
  touch(win::TOUCHEVENTF_MOVE, 0, 30);
  EXPECT_EQ(frame.FlickingTab(), second);
  ASSERT_NE(frame.FlickWipeWindow(), nullptr);
  EXPECT_TRUE(frame.FlickWipeWindow()->Visible());
  // Back to 5 pixels under the start: abandoned.
  touch(win::TOUCHEVENTF_MOVE, 0, 5);
  EXPECT_EQ(frame.FlickingTab(), nullptr);
  EXPECT_FALSE(frame.FlickWipeWindow()->Visible());
  touch(win::TOUCHEVENTF_MOVE, 0, 35);
  touch(win::TOUCHEVENTF_UP, 0, 35);
  auto closes = Sent(u"TabBar.CloseTab");
  ASSERT_EQ(closes.size(), 1u);
  EXPECT_EQ(closes[0].Value(u"tab-id"), second->TabGuid());
  EXPECT_FALSE(frame.FlickWipeWindow()->Visible());
}

TEST_F(InputTest, ADragHeldAtTheLeftEndScrollsTheStripUnderItAndTheTabEndsUnderThePointer) {
  TTabbarFrame& frame = Strip(24);
  frame.SetActiveTabImage(frame.GetTabImages(12), false);
  Advance(1000);
  TTabImage* dragged = frame.GetTabImages(14);
  Press(At(dragged));
  MoveTo(At(dragged, -5));
  ASSERT_EQ(frame.DragTarget(), dragged);
  // Gliding left never scrolls the strip the other way: the press carries the tab, not the strip.
  double previous = frame.GetLayout()->progress();
  const TPoint end{static_cast<int>(frame.TabScrollBoxScreenRect().Left) + 30, At(dragged).Y};
  for (int x = At(dragged).X - 8; x > end.X; x -= 8) {
    MoveTo({x, end.Y});
    ASSERT_LE(frame.GetLayout()->progress(), previous + 1e-9) << "pointer at " << x;
    previous = frame.GetLayout()->progress();
  }
  MoveTo(end);
  // No mouse moves now: only the timer scrolls, and keeps itself going while there is more.
  Advance(100);
  EXPECT_LT(frame.GetLayout()->progress(), previous);
  EXPECT_TRUE(frame.AutoScrollTimer()->Enabled());
  Advance(2500);
  EXPECT_EQ(frame.DragTarget(), dragged);
  // With nothing left to scroll the timer has stopped by itself.
  EXPECT_FALSE(frame.AutoScrollTimer()->Enabled());
  // At the strip's start the tab is let through to the pointer.
  const TRectF rect = dragged->AbsoluteRect();
  EXPECT_LE(Screen({rect.Left, rect.Top}).X, end.X);
  EXPECT_GE(Screen({rect.Right, rect.Top}).X, end.X);
  Release(end);
  EXPECT_FALSE(frame.AutoScrollTimer()->Enabled());
  ASSERT_EQ(group_->MoveCalls().size(), 1u);
  EXPECT_LE(group_->MoveCalls()[0].Index, 1);
}

TEST_F(InputTest, HoldAndGoPlacesItsFeedbackAroundTheHostsPointAndWaitsBeforeShowing) {
  TTabbarFrame& frame = Strip(1);
  host_.Events().FireFromHost(u"HoldAndGo.Start", {{u"mouse-x", u"300"}, {u"mouse-y", u"120"}});
  THoldAndGoFeedbackForm* feedback = frame.HoldAndGoFeedbackForm();
  ASSERT_NE(feedback, nullptr);
  EXPECT_FALSE(feedback->Visible());
  EXPECT_EQ(feedback->Origin().X, 300 - 32);
  EXPECT_EQ(feedback->Origin().Y, 120 - 64 + 8);
  Advance(190);
  EXPECT_FALSE(feedback->Visible());
  Advance(20);
  EXPECT_TRUE(feedback->Visible());
  EXPECT_TRUE(os_->IsWindowVisible(feedback->FormHandle()));
}

TEST_F(InputTest, HoverAndTitlePopupFollowThePointerAndEndWithTheTabOrWhenThePointerLeaves) {
  TTabbarFrame& frame = Strip(3);
  TTabImage* second = frame.GetTabImages(1);
  Send(win::WM_MOUSEMOVE, At(second), 0);
  EXPECT_EQ(frame.HoveredTab(), second);
  TTitleForm* popup = frame.TitleForm();
  ASSERT_NE(popup, nullptr);
  Advance(200);
  ASSERT_TRUE(popup->Visible());
  EXPECT_TRUE(os_->IsWindowVisible(popup->FormHandle()));
  EXPECT_EQ(popup->lbTitle()->Text, u"Site 1");
  EXPECT_EQ(popup->CurrentTabId(), second->TabGuid());
  EXPECT_EQ(Colour(popup->imgCenter()->Bitmap()), ColourOfKey(u"TabNameBackground2"));
  EXPECT_EQ(Colour(popup->imgFavicon()->Bitmap()), kIconColour);
  EXPECT_GT(popup->RootLayout()->Opacity(), 0.99f);
  // Hung from the middle of the tab's bottom edge.
  const TRectF tab = second->AbsoluteRect();
  EXPECT_NEAR(popup->Left() + popup->Width() / 2.0, kHostX + (tab.Left + tab.Right) / 2, 1.0);
  EXPECT_NEAR(popup->Top(), kHostY + tab.Bottom, 1.0);

  TTabImage* third = frame.GetTabImages(2);
  Send(win::WM_MOUSEMOVE, At(third), 0);
  EXPECT_EQ(popup->CurrentTabId(), third->TabGuid());
  EXPECT_EQ(popup->lbTitle()->Text, u"Site 2");
  EXPECT_GT(popup->Left(), kHostX + tab.Right - popup->Width() / 2.0);

  // The host closes the hovered tab: its title goes with it, and the next move hovers what is there.
  host_.Model().CloseTab(group_->FlatTabs()[2].get());
  os_->ProcessMessages();
  EXPECT_EQ(frame.HoveredTab(), nullptr);
  EXPECT_FALSE(popup->Visible());
  Send(win::WM_MOUSEMOVE, At(second), 0);
  EXPECT_EQ(frame.HoveredTab(), second);
  EXPECT_EQ(popup->CurrentTabId(), second->TabGuid());

  Send(win::WM_MOUSEMOVE, {kHostX + 5, kHostY + 150}, 0);
  os_->ProcessMessages();
  EXPECT_EQ(frame.HoveredTab(), nullptr);
  // The leave came while the popup was still fading in: the hide timer ends it a second after it showed.
  Advance(500);
  EXPECT_TRUE(popup->Visible());
  Advance(800);
  EXPECT_FALSE(popup->Visible());
  EXPECT_FALSE(os_->IsWindowVisible(popup->FormHandle()));
}

}  // namespace
}  // namespace qx
