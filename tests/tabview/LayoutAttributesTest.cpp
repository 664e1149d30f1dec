#include <gtest/gtest.h>

#include <vector>

#include "tabview/TabViewLayoutAttributes.h"

namespace qx {
namespace {

using Attributes = ComPtr<ITabViewLayoutAttributes>;

// A chained list built the way the layout builds one.
ComPtr<ITabViewLayoutAttributeList> MakeChain(int count,
                                              std::vector<TTabViewLayoutAttributesImpl*>* raw = nullptr) {
  auto list = MakeCom<TTabViewLayoutAttributeList>();
  Attributes previous;
  for (int i = 0; i < count; ++i) {
    auto* item = new TTabViewLayoutAttributesImpl();
    Attributes held(item);
    if (previous) {
      held->SetPrevious(previous.get());
      previous->SetNext(held.get());
    }
    list->Add(held);
    if (raw) raw->push_back(item);
    previous = held;
  }
  return ComPtr<ITabViewLayoutAttributeList>(list);
}

TEST(RectD, OperationsKeepSizeAndCompareExactly) {
  TRectD r = TRectD::FromBounds(10, 20, 98, 49);
  EXPECT_EQ(r.Width(), 98);
  EXPECT_EQ(r.Height(), 49);
  r.SetWidth(50);
  EXPECT_EQ(r.Left, 10);
  EXPECT_EQ(r.Right, 60);
  r.Offset(5, -20);
  EXPECT_EQ(r, TRectD(TPointD(15, 0), TPointD(65, 49)));
  r.SetLocation(TPointD(-3, 7));
  EXPECT_EQ(r.Size(), TSizeD(50, 49));
  EXPECT_EQ(r.TopLeft(), TPointD(-3, 7));
  TRectD nudged = r;
  nudged.Right += 1e-12;
  EXPECT_FALSE(nudged == r);
}

TEST(LayoutAttributes, CenterReadsVerticalFromLeft) {
  auto item = MakeCom<TTabViewLayoutAttributesImpl>();
  item->SetFrame(TRectD::FromBounds(100, 5, 98, 49));
  EXPECT_EQ(item->GetCenter(), TPointD(149, 124.5));
}

// The clip frame crosses to the controls' single precision and back.
TEST(LayoutAttributes, ClipFrameCrossesSinglePrecisionBothWays) {
  auto item = MakeCom<TTabViewLayoutAttributesImpl>();
  item->SetClipFrame(TRectD::FromBounds(1.5, 2, 3, 4));
  EXPECT_EQ(item->GetClipFrameF(), (TRectF{1.5f, 2.f, 4.5f, 6.f}));
  item->SetClipFrameF(TRectF{0.1f, 1.f, 2.f, 3.f});
  EXPECT_EQ(item->GetClipFrame().Left, static_cast<double>(0.1f));
  EXPECT_EQ(item->GetClipFrame().Bottom, 3.0);
}

TEST(LayoutAttributes, QueryInterfaceKnowsItsIdentity) {
  auto item = MakeCom<TTabViewLayoutAttributesImpl>();
  ComPtr<ITabViewLayoutAttributes> same = ComPtr<IUnknown>(item.get()).As<ITabViewLayoutAttributes>();
  ASSERT_TRUE(same);
  EXPECT_TRUE(SameInterface(same.get(), item.get()));
}

TEST(LayoutAttributes, SingleItemCountsAndUnChain) {
  auto list = MakeChain(1);
  Attributes first;
  ASSERT_EQ(list->GetItem(0, first), kOk);
  EXPECT_EQ(first->GetPrecedingCount(), 0);
  EXPECT_EQ(first->GetFollowingCount(), 0);
  EXPECT_EQ(first->GetIndex(), 0);
  first->UnChain();
  EXPECT_FALSE(first->GetNext());
  EXPECT_FALSE(first->GetPrevious());
  first->SetZPosition(3);  // still a live object
  EXPECT_EQ(first->GetZPosition(), 3);
}

TEST(LayoutAttributes, CountsWalkTheChain) {
  auto list = MakeChain(5);
  Attributes third;
  ASSERT_EQ(list->GetItem(2, third), kOk);
  EXPECT_EQ(third->GetPrecedingCount(), 2);
  EXPECT_EQ(third->GetIndex(), 2);
  EXPECT_EQ(third->GetFollowingCount(), 2);
  third->UnChain();
}

TEST(LayoutAttributes, UnChainOnFirstBreaksEveryLinkAndFreesAll) {
  std::vector<TTabViewLayoutAttributesImpl*> raw;
  auto list = MakeChain(3, &raw);
  Attributes first;
  ASSERT_EQ(list->GetItem(0, first), kOk);
  first->UnChain();
  for (int i = 0; i < 3; ++i) {
    Attributes item;
    ASSERT_EQ(list->GetItem(i, item), kOk);
    EXPECT_FALSE(item->GetNext()) << i;
    EXPECT_FALSE(item->GetPrevious()) << i;
  }
  first = nullptr;
  // Only the list holds them now: one reference each.
  for (auto* item : raw) EXPECT_EQ(item->RefCount(), 1u);
}

TEST(LayoutAttributes, UnChainFromTheMiddleWalksBothWays) {
  std::vector<TTabViewLayoutAttributesImpl*> raw;
  auto list = MakeChain(6, &raw);
  Attributes middle;
  ASSERT_EQ(list->GetItem(3, middle), kOk);
  middle->UnChain();
  middle = nullptr;
  for (auto* item : raw) {
    EXPECT_FALSE(item->GetNext());
    EXPECT_FALSE(item->GetPrevious());
    EXPECT_EQ(item->RefCount(), 1u);
  }
}

TEST(LayoutAttributes, SlotsSitInDeclaredOrder) {
  // Through the raw table: slot 3 + k is operation k + 1.
  auto item = MakeCom<TTabViewLayoutAttributesImpl>();
  item->SetZPosition(7.5);
  item->SetActive(true);
  void** table = *reinterpret_cast<void***>(static_cast<ITabViewLayoutAttributes*>(item.get()));
  using GetBool = bool(QX_STDCALL*)(ITabViewLayoutAttributes*);
  using GetDouble = double(QX_STDCALL*)(ITabViewLayoutAttributes*);
  using SetBool = void(QX_STDCALL*)(ITabViewLayoutAttributes*, bool);
  using Plain = void(QX_STDCALL*)(ITabViewLayoutAttributes*);
  ITabViewLayoutAttributes* self = item.get();
  EXPECT_TRUE(reinterpret_cast<GetBool>(table[3 + 0])(self));        // GetActive
  EXPECT_EQ(reinterpret_cast<GetDouble>(table[3 + 17])(self), 7.5);  // GetZPosition
  reinterpret_cast<SetBool>(table[3 + 22])(self, true);              // SetHidden
  EXPECT_TRUE(item->GetHidden());
  reinterpret_cast<SetBool>(table[3 + 30])(self, true);  // SetReserved
  EXPECT_TRUE(item->GetReserved());
  EXPECT_TRUE(reinterpret_cast<GetBool>(table[3 + 14])(self));  // GetReserved
  reinterpret_cast<Plain>(table[3 + 36])(self);                 // UnChain, harmless alone
}

}  // namespace
}  // namespace qx
