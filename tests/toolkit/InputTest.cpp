#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MouseLog.h"
#include "ToolkitFixture.h"
#include "toolkit/Edit.h"
#include "toolkit/Form.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"

namespace qx {
namespace {

class ToolkitInput : public test::ToolkitTest {
 protected:
  void SetUp() override {
    test::ToolkitTest::SetUp();
    form = std::make_unique<TForm>();
    form->SetBounds(0, 0, 200, 100);
    a = Make(u"a", 0, 0);
    b = Make(u"b", 100, 0);
  }
  void TearDown() override {
    form.reset();
    test::ToolkitTest::TearDown();
  }
  TImage* Make(const std::u16string& name, float x, float y) {
    auto* c = new TImage(form.get());
    c->Name = name;
    c->SetBounds(x, y, 100, 100);
    form->AddObject(c);
    std::string n(name.begin(), name.end());
    test::LogMouseEvents(c, n, log);
    return c;
  }
  std::unique_ptr<TForm> form;
  TImage* a = nullptr;
  TImage* b = nullptr;
  std::vector<std::string> log;
};

TEST_F(ToolkitInput, EnterLeaveMoveAndClick) {
  form->MouseMove(0, 10, 10);
  form->MouseMove(0, 110, 10);
  form->MouseDown(TMouseButton::mbLeft, ss::Left, 120, 30);
  form->MouseUp(TMouseButton::mbLeft, 0, 121, 30);
  form->MouseLeave();
  std::vector<std::string> expected = {"a.enter",      "a.move 10", "a.leave", "b.enter", "b.move 10",
                                       "b.down 20,30", "b.up",      "b.click", "b.leave"};
  EXPECT_EQ(log, expected);
}

TEST_F(ToolkitInput, CaptureKeepsMovesAndUpOnThePressedControl) {
  form->MouseDown(TMouseButton::mbLeft, ss::Left, 50, 50);
  EXPECT_EQ(form->Captured(), a);
  log.clear();
  form->MouseMove(ss::Left, 150, 50);  // over b, but a has the capture
  form->MouseUp(TMouseButton::mbLeft, 0, 150, 50);
  std::vector<std::string> expected = {"a.leave", "a.move 150", "a.up", "b.enter"};
  EXPECT_EQ(log, expected);  // released outside: no click
  EXPECT_EQ(form->Captured(), nullptr);
}

TEST_F(ToolkitInput, DoubleClickAndReleasedCapture) {
  form->MouseDown(TMouseButton::mbLeft, ss::Left | ss::Double, 10, 10);
  EXPECT_NE(std::find(log.begin(), log.end(), "a.dblclick"), log.end());
  a->ReleaseCapture();
  EXPECT_EQ(form->Captured(), nullptr);
  b->Capture();
  EXPECT_EQ(form->Captured(), b);
}

TEST_F(ToolkitInput, DestroyedCapturedControlIsForgotten) {
  form->MouseDown(TMouseButton::mbLeft, ss::Left, 10, 10);
  ASSERT_EQ(form->Captured(), a);
  a->SetFocus();
  delete a;
  EXPECT_EQ(form->Captured(), nullptr);
  EXPECT_EQ(form->Hovered(), nullptr);
  EXPECT_EQ(form->Focused(), nullptr);
  form->MouseMove(0, 10, 10);  // nothing there any more
  form->MouseUp(TMouseButton::mbLeft, 0, 10, 10);
}

TEST_F(ToolkitInput, FormEventsWhenNoControlIsHit) {
  a->SetVisible(false);
  int downs = 0;
  form->OnMouseDown = [&](TFmxObject* sender, TMouseButton, TShiftState, float, float) {
    EXPECT_EQ(sender, form.get());
    ++downs;
  };
  form->MouseDown(TMouseButton::mbLeft, 0, 10, 10);
  form->MouseDown(TMouseButton::mbLeft, 0, 110, 10);
  EXPECT_EQ(downs, 1);
}

TEST_F(ToolkitInput, WheelBubblesToParents) {
  auto* inner = new TLayout(form.get());
  inner->SetBounds(0, 0, 10, 10);
  inner->SetHitTest(true);
  a->AddObject(inner);
  int seen = 0;
  a->OnMouseWheel = [&](TFmxObject*, TShiftState, int delta, bool& handled) {
    seen = delta;
    handled = true;
  };
  form->MouseMove(0, 5, 5);
  bool handled = false;
  form->MouseWheel(0, -120, handled);
  EXPECT_TRUE(handled);
  EXPECT_EQ(seen, -120);
}

TEST_F(ToolkitInput, DragEnterOverDropLeave) {
  std::vector<std::string> drag;
  for (TImage* c : {a, b}) {
    std::string n = c == a ? "a" : "b";
    c->OnDragEnter = [&drag, n](TFmxObject*, const TDragObject&, const TPointF& p) {
      drag.push_back(n + ".enter " + std::to_string(int(p.X)));
    };
    c->OnDragOver = [&drag, n](TFmxObject*, const TDragObject&, const TPointF&, TDragOperation& op) {
      drag.push_back(n + ".over");
      op = TDragOperation::Move;
    };
    c->OnDragDrop = [&drag, n](TFmxObject*, const TDragObject& data, const TPointF&) {
      drag.push_back(n + ".drop " + std::to_string(data.Files.size()));
    };
    c->OnDragLeave = [&drag, n](TFmxObject*) { drag.push_back(n + ".leave"); };
  }
  TDragObject data;
  data.Files = {u"x.txt"};
  TDragOperation op = TDragOperation::None;
  form->DragEnter(data, {10, 10});
  form->DragOver(data, {20, 10}, op);
  EXPECT_EQ(op, TDragOperation::Move);
  form->DragOver(data, {150, 10}, op);
  form->DragDrop(data, {150, 10});
  std::vector<std::string> expected = {"a.enter 10",  "a.over", "a.leave",
                                       "b.enter 150", "b.over", "b.drop 1"};
  EXPECT_EQ(drag, expected);
}

TEST_F(ToolkitInput, PanGestureBeginsMovesAndEnds) {
  auto* strip = new TLayout(form.get());  // not hit-testable, still gets pans
  strip->SetBounds(0, 0, 200, 100);
  strip->Touch().InteractiveGestures = GestureBit(TInteractiveGesture::Pan);
  form->AddObject(strip);
  std::vector<TGestureEventInfo> events;
  strip->OnGesture = [&](TFmxObject*, const TGestureEventInfo& info, bool& handled) {
    events.push_back(info);
    handled = true;
  };
  form->TouchDown({50, 50});
  form->TouchMove({52, 50});  // below the threshold
  form->TouchMove({60, 50});
  form->TouchMove({80, 50});
  form->TouchUp({90, 50});
  ASSERT_EQ(events.size(), 3u);
  EXPECT_EQ(events[0].GestureID, igiPan);
  EXPECT_EQ(events[0].Flags, gf::Begin);
  EXPECT_EQ(events[0].Distance, 10);
  EXPECT_EQ(events[1].Flags, 0u);
  EXPECT_EQ(events[1].Location, TPointF(80, 50));
  EXPECT_EQ(events[2].Flags, gf::End);
  EXPECT_EQ(events[2].Distance, 40);
}

TEST_F(ToolkitInput, EditTakesKeysAndCaretBlinksOnTicks) {
  auto* edit = new TEdit(form.get());
  edit->SetBounds(0, 0, 100, 20);
  form->AddObject(edit);
  form->MouseDown(TMouseButton::mbLeft, ss::Left, 5, 5);
  form->MouseUp(TMouseButton::mbLeft, 0, 5, 5);
  ASSERT_EQ(form->Focused(), edit);
  for (char16_t ch : std::u16string(u"abc")) {
    int key = 0;
    char16_t c = ch;
    form->KeyDown(key, c, 0);
  }
  int back = TEdit::vkBack;
  char16_t none = 0;
  form->KeyDown(back, none, 0);
  EXPECT_EQ(edit->Text(), u"ab");
  EXPECT_EQ(edit->CaretPosition(), 2);
  EXPECT_TRUE(edit->Caret().Running());
  EXPECT_TRUE(edit->Caret().FlashVisible());
  Clock().Advance(600);
  EXPECT_FALSE(edit->Caret().FlashVisible());
  Clock().Advance(500);
  EXPECT_TRUE(edit->Caret().FlashVisible());
  edit->Caret().ResetFlash();
  form->SetFocused(nullptr);
  EXPECT_FALSE(edit->Caret().Running());
}

}  // namespace
}  // namespace qx
