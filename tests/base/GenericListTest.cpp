#include <gtest/gtest.h>

#include "base/GenericList.h"

namespace qx {
namespace {

TEST(GenericListTest, OperationsAndBounds) {
  ComPtr<IGenericList<double>> list = MakeCom<TGenericListImpl<double>>();
  EXPECT_EQ(list->Add(1.5), 0);
  list->Add(2.5);
  EXPECT_EQ(list->Insert(0, 0.5), kOk);
  EXPECT_EQ(list->Count(), 3);
  double item = -1;
  EXPECT_EQ(list->GetItem(3, item), kInvalidArg);
  EXPECT_EQ(item, -1);
  EXPECT_EQ(list->GetItem(0, item), kOk);
  EXPECT_EQ(item, 0.5);
  EXPECT_EQ(list->Move(0, 2), kOk);
  EXPECT_EQ(list->IndexOf(0.5), 2);
  double sum = 0;
  for (double v : *list) sum += v;
  EXPECT_EQ(sum, 4.5);
  EXPECT_EQ(list->Remove(9.0), -1);
  list->Clear();
  EXPECT_EQ(list->Last(item), kInvalidArg);
}

TEST(GenericListTest, CountAndItemSitAtTheirSlots) {
  ComPtr<IGenericList<double>> list = MakeCom<TGenericListImpl<double>>();
  list->Add(7.0);
  // Slot 3 after IUnknown's three is Count, slot 5 is GetItem.
  using CountFn = std::int32_t(QX_STDCALL*)(void*);
  void** vtable = *reinterpret_cast<void***>(list.get());
  EXPECT_EQ(reinterpret_cast<CountFn>(vtable[3])(list.get()), 1);
}

}  // namespace
}  // namespace qx
