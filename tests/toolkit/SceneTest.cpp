#include <gtest/gtest.h>

#include <vector>

#include "ToolkitFixture.h"
#include "toolkit/Form.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"

namespace qx {
namespace {

class ToolkitScene : public test::ToolkitTest {};

// A new child of the parent at x, y with the given size.
template <class T>
T* Place(TFmxObject& parent, float x, float y, float width, float height) {
  auto* child = new T(&parent);
  child->SetBounds(x, y, width, height);
  parent.AddObject(child);
  return child;
}

// A new image filling the parent's top left corner, showing one colour.
TImage* Solid(TFmxObject& parent, int width, int height, TAlphaColor color) {
  auto* image = Place<TImage>(parent, 0, 0, static_cast<float>(width), static_cast<float>(height));
  image->Bitmap().SetSize(width, height);
  image->Bitmap().Clear(color);
  return image;
}

struct Watcher : IFreeNotification {
  std::vector<TFmxObject*> Told;
  void FreeNotification(TFmxObject* object) override { Told.push_back(object); }
};

TEST_F(ToolkitScene, ChildrenDieWithParentAndWatchersAreTold) {
  auto* root = new TLayout();
  auto* a = new TLayout(root);
  a->SetParent(root);
  auto* b = new TLayout(root);
  root->AddObject(b);
  auto* grandchild = new TLayout();
  a->AddObject(grandchild);
  Watcher w;
  grandchild->AddFreeNotify(&w);
  b->AddFreeNotify(&w);
  EXPECT_EQ(root->ChildrenCount(), 2);
  EXPECT_EQ(a->Owner(), root);
  EXPECT_EQ(grandchild->Parent(), a);

  root->RemoveObject(0);  // a leaves the tree but stays owned
  EXPECT_EQ(a->Parent(), nullptr);
  EXPECT_EQ(root->ChildrenCount(), 1);
  delete a;
  ASSERT_EQ(w.Told.size(), 1u);
  EXPECT_EQ(w.Told[0], grandchild);

  b->RemoveFreeNotify(&w);
  delete root;
  EXPECT_EQ(w.Told.size(), 1u);
}

TEST_F(ToolkitScene, FindComponentAndReparent) {
  TLayout root;
  auto* child = new TImage(&root);
  child->Name = u"Thumb";
  EXPECT_EQ(root.FindComponent(u"thumb"), child);
  TLayout other;
  other.AddObject(child);
  EXPECT_EQ(child->Parent(), &other);
  EXPECT_THROW(child->AddObject(&other), EToolkitError);  // no cycles
}

TEST_F(ToolkitScene, AlignmentPlacesChildren) {
  TLayout root;
  root.SetBounds(0, 0, 200, 100);
  root.Padding().Set({5, 5, 5, 5});
  auto* top = new TLayout(&root);
  top->SetHeight(10);
  top->SetAlign(TAlignLayout::Top);
  auto* left = new TLayout(&root);
  left->SetWidth(20);
  left->SetAlign(TAlignLayout::Left);
  auto* right = new TLayout(&root);
  right->SetWidth(30);
  right->Margins().Set({0, 0, -10, 0});  // negative margin: reaches past the padding
  right->SetAlign(TAlignLayout::Right);
  auto* client = new TLayout(&root);
  client->Margins().Set({1, 2, 3, 4});
  client->SetAlign(TAlignLayout::Client);
  for (TLayout* c : {top, left, right, client}) root.AddObject(c);

  EXPECT_EQ(top->BoundsRect(), TRectF(5, 5, 195, 15));
  EXPECT_EQ(left->BoundsRect(), TRectF(5, 15, 25, 95));
  EXPECT_EQ(right->BoundsRect(), TRectF(175, 15, 205, 95));
  EXPECT_EQ(client->BoundsRect(), TRectF(26, 17, 172, 91));

  root.SetWidth(300);  // a resize realigns
  EXPECT_EQ(top->Width(), 290);
  EXPECT_EQ(right->Position().X(), 275);
}

TEST_F(ToolkitScene, HorzCenterCentersAndStretchesHeight) {
  TLayout root;
  root.SetBounds(0, 0, 100, 50);
  auto* c = Place<TLayout>(root, 0, 0, 40, 10);
  c->Margins().Set({0, 5, 0, 5});
  c->SetAlign(TAlignLayout::HorzCenter);
  EXPECT_EQ(c->BoundsRect(), TRectF(30, 5, 70, 45));
}

TEST_F(ToolkitScene, BeginUpdateDefersRealign) {
  TLayout root;
  root.SetBounds(0, 0, 100, 50);
  auto* c = new TLayout(&root);
  root.AddObject(c);
  c->SetAlign(TAlignLayout::Client);
  root.BeginUpdate();
  root.SetWidth(300);
  EXPECT_EQ(c->Width(), 100);
  root.EndUpdate();
  EXPECT_EQ(c->Width(), 300);
}

TEST_F(ToolkitScene, HitTestFindsTopmostHitTestableControl) {
  TForm form;
  form.SetBounds(0, 0, 200, 100);
  auto* layout = Place<TLayout>(form, 10, 10, 100, 50);  // a layout does not hit-test itself
  auto* under = Place<TImage>(*layout, 0, 0, 50, 50);
  auto* over = Place<TImage>(*layout, 20, 0, 50, 50);
  EXPECT_EQ(form.ObjectAtPoint({15, 15}), under);
  EXPECT_EQ(form.ObjectAtPoint({35, 15}), over);
  EXPECT_EQ(form.ObjectAtPoint({105, 15}), nullptr);  // inside the layout only
  over->SetHitTest(false);
  EXPECT_EQ(form.ObjectAtPoint({35, 15}), under);
  under->SetVisible(false);
  EXPECT_EQ(form.ObjectAtPoint({15, 15}), nullptr);
  layout->SetClipChildren(true);
  over->SetHitTest(true);
  over->SetBounds(80, 0, 50, 50);
  EXPECT_EQ(form.ObjectAtPoint({115, 15}), nullptr);  // outside the clipping parent
  EXPECT_EQ(form.ObjectAtPoint({95, 15}), over);
  EXPECT_EQ(over->AbsoluteToLocal({95, 15}), TPointF(5, 5));
}

TEST_F(ToolkitScene, OpacityMultipliesDownTheTree) {
  TLayout root;
  root.SetOpacity(0.5f);
  auto* child = new TLayout(&root);
  root.AddObject(child);
  child->SetOpacity(0.5f);
  EXPECT_FLOAT_EQ(child->AbsoluteOpacity(), 0.25f);
  child->SetOpacity(7);
  EXPECT_FLOAT_EQ(child->Opacity(), 1);
}

TEST_F(ToolkitScene, ZOrderDecidesPaintOrder) {
  TForm form;
  form.SetBounds(0, 0, 4, 4);
  auto* red = Solid(form, 4, 4, TAlphaColors::Red);
  auto* blue = Solid(form, 4, 4, TAlphaColors::Blue);
  EXPECT_EQ(form.RenderToBitmap().PixelColor(1, 1), TAlphaColors::Blue);
  red->BringToFront();
  EXPECT_EQ(form.RenderToBitmap().PixelColor(1, 1), TAlphaColors::Red);
  form.SortChildren([&](TFmxObject* a, TFmxObject*) { return a == blue; });
  EXPECT_EQ(form.ChildList().front(), blue);
  EXPECT_EQ(form.RenderToBitmap().PixelColor(1, 1), TAlphaColors::Red);
}

// A box that fills its bounds with one opaque colour and says so, or not, to
// the painting of its siblings; it notes the clip each paint was given.
class TOpaqueBox : public TControl {
 public:
  TOpaqueBox(TFmxObject* owner, TAlphaColor color, bool declares)
      : TControl(owner), FColor(color), FDeclares(declares) {}
  std::vector<TRectF> Clips;

 protected:
  void Paint(TCanvas& canvas, float opacity) override {
    Clips.push_back(canvas.ClipRect());
    canvas.FillRect(LocalRect(), FColor, opacity);
  }
  TRectF OpaqueRect() const override { return FDeclares ? LocalRect() : TRectF{}; }
  bool PaintsInsideBounds() const override { return FDeclares; }

 private:
  TAlphaColor FColor;
  bool FDeclares;
};

TEST_F(ToolkitScene, SiblingsCoveredByOpaqueOnesPaintOnlyWhatShows) {
  // A stack as the strip makes it, the topmost last, at fractional places: each
  // box a little left of the one beneath, one box apart on the right, and a
  // narrow one wholly under the stack.
  const float lefts[] = {14.3f, 12.7f, 10.5f, 7.2f, 33.6f};
  const float widths[] = {8, 20, 20, 20, 20};
  const TAlphaColor colors[] = {TAlphaColors::Red, 0xFF00FF00, TAlphaColors::Blue, 0xFF808080,
                                TAlphaColors::Black};
  auto build = [&](TForm& form, bool declares) {
    form.SetBounds(0, 0, 60, 10);
    form.Fill.Color = TAlphaColors::White;
    auto* row = Place<TLayout>(form, 0, 0, 60, 10);
    std::vector<TOpaqueBox*> boxes;
    for (int i = 0; i < 5; ++i) {
      boxes.push_back(new TOpaqueBox(row, colors[i], declares));
      boxes.back()->SetBounds(lefts[i], 1, widths[i], 8);
      row->AddObject(boxes.back());
    }
    return boxes;
  };
  TForm culled, plain;
  std::vector<TOpaqueBox*> boxes = build(culled, true), plainBoxes = build(plain, false);
  auto expectSamePixels = [&] {
    const TBitmap& expected = plain.RenderToBitmap();
    const TBitmap& got = culled.RenderToBitmap();
    for (int y = 0; y < 10; ++y)
      for (int x = 0; x < 60; ++x)
        ASSERT_EQ(got.PixelColor(x, y), expected.PixelColor(x, y)) << x << "," << y;
  };
  expectSamePixels();
  EXPECT_TRUE(boxes[0]->Clips.empty());
  // The green box shows only right of the blue one: pixels 30 to 32.
  ASSERT_EQ(boxes[1]->Clips.size(), 1u);
  EXPECT_EQ(boxes[1]->Clips[0].Left, 30);
  EXPECT_EQ(boxes[1]->Clips[0].Right, 33);

  // Half see-through boxes cover nothing.
  for (int i = 1; i <= 3; ++i) {
    boxes[i]->SetOpacity(0.5f);
    plainBoxes[i]->SetOpacity(0.5f);
  }
  expectSamePixels();
  EXPECT_FALSE(boxes[0]->Clips.empty());
}

TEST_F(ToolkitScene, RepaintMarksTheFormDirty) {
  TForm form;
  form.SetBounds(0, 0, 100, 100);
  auto* c = Place<TLayout>(form, 0, 0, 0, 0);
  form.RenderToBitmap();
  EXPECT_FALSE(form.NeedsRepaint());
  c->SetBounds(10, 10, 5, 5);
  EXPECT_TRUE(form.NeedsRepaint());
  form.RenderToBitmap();
  c->InvalidateRect(TRectF(0, 0, 2, 2));
  EXPECT_EQ(form.UpdateRect(), TRectF(10, 10, 12, 12));
}

TEST_F(ToolkitScene, WrapModes) {
  TForm form;
  form.SetBounds(0, 0, 8, 4);
  form.Fill.Color = TAlphaColors::White;
  auto* img = Solid(form, 2, 2, TAlphaColors::Black);
  img->SetBounds(0, 0, 8, 4);
  img->SetWrapMode(TImageWrapMode::Original);
  TBitmap& out = form.RenderToBitmap();
  EXPECT_EQ(out.PixelColor(1, 1), TAlphaColors::Black);
  EXPECT_EQ(out.PixelColor(3, 1), TAlphaColors::White);
  img->SetWrapMode(TImageWrapMode::Tile);
  EXPECT_EQ(form.RenderToBitmap().PixelColor(7, 3), TAlphaColors::Black);
  img->SetWrapMode(TImageWrapMode::Fit);  // 4 by 4 in the middle
  EXPECT_EQ(form.RenderToBitmap().PixelColor(0, 1), TAlphaColors::White);
  EXPECT_EQ(form.RenderToBitmap().PixelColor(3, 1), TAlphaColors::Black);
  img->SetWrapMode(TImageWrapMode::Stretch);
  EXPECT_EQ(form.RenderToBitmap().PixelColor(0, 1), TAlphaColors::Black);
  EXPECT_EQ(form.RenderToBitmap().PixelColor(7, 3), TAlphaColors::Black);
}

}  // namespace
}  // namespace qx
