#include <gtest/gtest.h>

#include <utility>
#include <vector>

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

// Each operation is called through the raw table at 3 + position - 1, so a
// misplaced slot calls the wrong operation and the list ends up different.
class GenericListSlots : public ::testing::Test {
 protected:
  using IList = IGenericList<double>;
  using TVector = std::vector<double>;
  using TLess = IList::TLess;

  template <class Signature>
  struct TSlot;
  template <class R, class... A>
  struct TSlot<R(A...)> {
    using Fn = R(QX_STDCALL*)(IList*, A...);
  };

  // Signature is the operation's own, without the object.
  template <class Signature, class... Args>
  decltype(auto) Call(int position, Args&&... args) {
    IList* raw = list_.get();
    void** table = *reinterpret_cast<void***>(raw);
    return reinterpret_cast<typename TSlot<Signature>::Fn>(table[3 + position - 1])(
        raw, std::forward<Args>(args)...);
  }
  TVector Items() { return Call<TVector&()>(34); }

  ComPtr<IList> list_ = MakeCom<TGenericListImpl<double>>();
};

TEST_F(GenericListSlots, OneToSixteen) {
  using I = std::int32_t;
  Call<void(I)>(2, 40);                          // SetCapacity
  EXPECT_EQ(Call<I()>(16), 40);                  // Capacity
  EXPECT_EQ(Call<I(const double&)>(5, 3.0), 0);  // Add
  Call<I(const double&)>(5, 5.0);
  EXPECT_EQ(Call<HResult(I, const double&)>(6, 0, 1.0), kOk);  // Insert
  EXPECT_EQ(Call<I()>(1), 3);                                  // Count
  double item = 0;
  EXPECT_EQ(Call<HResult(I, double&)>(3, 1, item), kOk);  // GetItem
  EXPECT_EQ(item, 3.0);
  EXPECT_EQ(Call<HResult(I, const double&)>(4, 1, 4.0), kOk);  // SetItem
  EXPECT_EQ(Call<I(const double&)>(9, 5.0), 2);                // IndexOf
  EXPECT_EQ(Call<HResult(I, I)>(11, 0, 2), kOk);               // Exchange
  EXPECT_EQ(Items(), (TVector{5, 4, 1}));
  EXPECT_EQ(Call<HResult(I, I)>(12, 0, 1), kOk);  // Move
  EXPECT_EQ(Items(), (TVector{4, 5, 1}));
  Call<void()>(15);                                  // Reverse
  EXPECT_EQ(Call<HResult(double&)>(13, item), kOk);  // First
  EXPECT_EQ(item, 1.0);
  EXPECT_EQ(Call<HResult(double&)>(14, item), kOk);  // Last
  EXPECT_EQ(item, 4.0);
  EXPECT_EQ(Call<I(const double&)>(10, 5.0), 1);  // Remove
  EXPECT_EQ(Call<HResult(I)>(7, 0), kOk);         // Delete
  EXPECT_EQ(Items(), (TVector{4}));
  Call<void()>(8);  // Clear
  EXPECT_TRUE(Items().empty());
}

TEST_F(GenericListSlots, SeventeenToThirtyFour) {
  using I = std::int32_t;
  Call<void(const TVector&)>(18, TVector{2, 7, 2});                        // AddRange
  EXPECT_EQ(Call<HResult(I, const TVector&)>(19, 1, TVector{9, 0}), kOk);  // InsertRange
  EXPECT_EQ(Items(), (TVector{2, 9, 0, 7, 2}));
  EXPECT_TRUE(Call<bool(const double&)>(23, 7.0));  // Contains
  EXPECT_EQ(Call<I(const double&)>(24, 2.0), 4);    // LastIndexOf
  EXPECT_EQ(Call<I(const double&)>(25, 2.0), 4);    // RemoveLast
  Call<void()>(28);                                 // Pack drops the zero
  EXPECT_EQ(Items(), (TVector{2, 9, 7}));
  double taken = 0;
  EXPECT_EQ(Call<HResult(const double&, double&)>(21, 9.0, taken), kOk);  // Extract
  EXPECT_EQ(taken, 9.0);
  EXPECT_EQ(Call<HResult(I, double&)>(22, 1, taken), kOk);  // ExtractAt
  EXPECT_EQ(taken, 7.0);
  EXPECT_EQ(Items(), (TVector{2}));

  const TLess less = [](const double& a, const double& b) { return a < b; };
  Call<void(const TVector&)>(32, TVector{8, 3, 6});  // Assign
  Call<void(const TLess&)>(26, less);                // Sort
  EXPECT_EQ(Items(), (TVector{3, 6, 8}));
  I at = -1;
  EXPECT_FALSE((Call<bool(const double&, I&, const TLess&)>(27, 7.0, at, less)));  // BinarySearch
  EXPECT_EQ(at, 2);
  Call<void(IList*)>(33, list_.get());            // AddList, from itself
  EXPECT_EQ(Call<HResult(I, I)>(20, 1, 2), kOk);  // DeleteRange
  EXPECT_EQ(Items(), (TVector{3, 3, 6, 8}));
  Call<void(I)>(17, 5);  // SetCount
  TVector copy;
  Call<void(TVector&)>(31, copy);  // ToArray
  EXPECT_EQ(copy, (TVector{3, 3, 6, 8, 0}));
  Call<void()>(29);  // TrimExcess
  EXPECT_EQ(list_->Capacity(), 5);
  EXPECT_EQ(Call<I()>(30), 10);  // Expand doubles a full list
}

}  // namespace
}  // namespace qx
