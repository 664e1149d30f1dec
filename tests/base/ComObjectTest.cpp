#include <gtest/gtest.h>

#include "base/ComObject.h"

namespace qx {
namespace {

struct IAnimal : IUnknown {
  static constexpr TGUID IID = MakeGuid("11111111-0000-0000-0000-000000000001");
  virtual int QX_STDCALL Legs() = 0;
};
struct IDog : IAnimal {
  static constexpr TGUID IID = MakeGuid("11111111-0000-0000-0000-000000000002");
  using Parent = IAnimal;
  virtual int QX_STDCALL Barks() = 0;
};
struct IPet : IUnknown {
  static constexpr TGUID IID = MakeGuid("11111111-0000-0000-0000-000000000003");
  virtual int QX_STDCALL Name() = 0;
};
struct IUnrelated : IUnknown {
  static constexpr TGUID IID = MakeGuid("11111111-0000-0000-0000-000000000004");
};

int gAlive = 0;

class Dog : public TInterfacedObject<IDog, IPet> {
 public:
  Dog() { ++gAlive; }
  ~Dog() override { --gAlive; }
  int QX_STDCALL Legs() override { return 4; }
  int QX_STDCALL Barks() override { return 2; }
  int QX_STDCALL Name() override { return 7; }
};

TEST(ComObjectTest, LifetimeFollowsReferences) {
  gAlive = 0;
  {
    ComPtr<Dog> dog = MakeCom<Dog>();
    EXPECT_EQ(dog->RefCount(), 1u);
    ComPtr<IPet> pet = dog.As<IPet>();
    EXPECT_EQ(dog->RefCount(), 2u);
    dog = nullptr;
    EXPECT_EQ(gAlive, 1);
    EXPECT_EQ(pet->Name(), 7);
  }
  EXPECT_EQ(gAlive, 0);
}

TEST(ComObjectTest, QueryInterfaceFindsParentsAndRefusesOthers) {
  ComPtr<Dog> dog = MakeCom<Dog>();
  EXPECT_EQ(dog.As<IAnimal>()->Legs(), 4);
  EXPECT_EQ(dog.As<IDog>()->Barks(), 2);
  EXPECT_FALSE(dog.As<IUnrelated>());
  void* out = reinterpret_cast<void*>(1);
  EXPECT_EQ(dog->QueryInterface(IUnrelated::IID, &out), kNoInterface);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(dog->QueryInterface(IUnknown::IID, nullptr), kInvalidArg);
}

TEST(ComObjectTest, SameInterfaceComparesIdentity) {
  ComPtr<Dog> a = MakeCom<Dog>(), b = MakeCom<Dog>();
  ComPtr<IPet> pet = a.As<IPet>();
  ComPtr<IAnimal> animal = a.As<IAnimal>();
  EXPECT_NE(static_cast<void*>(pet.get()), static_cast<void*>(animal.get()));
  EXPECT_TRUE(SameInterface(pet.get(), animal.get()));
  EXPECT_FALSE(SameInterface(pet.get(), b.As<IPet>().get()));
  EXPECT_FALSE(SameInterface(pet.get(), nullptr));
  EXPECT_TRUE(SameInterface(nullptr, nullptr));
}

TEST(ComObjectTest, ComPtrPutReleasesPreviousValue) {
  gAlive = 0;
  ComPtr<IPet> pet = MakeCom<Dog>().As<IPet>();
  EXPECT_EQ(gAlive, 1);
  IPet** slot = pet.put();
  EXPECT_EQ(*slot, nullptr);
  EXPECT_EQ(gAlive, 0);
}

}  // namespace
}  // namespace qx
