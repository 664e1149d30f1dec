#include <gtest/gtest.h>

#include "fakehost/FakeCom.h"
#include "fakehost/FakeDictionary.h"
#include "fakehost/FakeFactoryService.h"
#include "fakehost/FakeStringArray.h"
#include "fakehost/FakeStringDictionary.h"
#include "fakehost/FakeVariant.h"
#include "host/ServiceIds.h"

namespace qx {
namespace {

template <class I>
ComPtr<I> Create(TFakeFactoryService& factory, std::string_view shortName) {
  const auto name = FromAscii(ServiceId(shortName));
  ComPtr<IUnknown> object;
  EXPECT_EQ(factory.CreateObject(name.c_str(), object.put()), kOk) << shortName;
  return object.As<I>();
}

TEST(FakeValueObjects, FactoryMakesEveryObjectByIdAndRefusesOthers) {
  auto factory = MakeCom<TFakeFactoryService>();
  EXPECT_TRUE(Create<IQxIStringDictionary>(*factory, factory_object::QxIStringDictionary));
  EXPECT_TRUE(Create<IQxIDictionary>(*factory, factory_object::QxIDictionary));
  EXPECT_TRUE(Create<IQxIArray>(*factory, factory_object::QxIArray));
  EXPECT_TRUE(Create<IQxIStringArray>(*factory, factory_object::QxIStringArray));
  EXPECT_TRUE(Create<IQxIStringBuilder>(*factory, factory_object::QxIStringBuilder));
  EXPECT_TRUE(Create<IQxIVariantBuilder>(*factory, factory_object::QxIVariantBuilder));
  EXPECT_TRUE(Create<IQxIHandleBuilder>(*factory, factory_object::QxIHandleBuilder));

  ComPtr<IUnknown> object;
  EXPECT_EQ(factory->CreateObject(u"QxIStringDictionary", object.put()), kFail);  // no suffix
  EXPECT_FALSE(object);
  EXPECT_EQ(factory->CreateObject(u"Nothing.QxV3", object.put()), kFail);
  EXPECT_EQ(factory->CreateObject(nullptr, object.put()), kInvalidArg);
  EXPECT_EQ(factory->CreateObject(u"QxIArray.QxV3", nullptr), kInvalidArg);
}

TEST(FakeValueObjects, BuildersMakeStringsVariantsAndHandles) {
  auto factory = MakeCom<TFakeFactoryService>();
  auto strings = Create<IQxIStringBuilder>(*factory, factory_object::QxIStringBuilder);
  ComPtr<IQxIString> text;
  ASSERT_EQ(strings->Create(text.put(), u"caf\u00e9"), kOk);
  EXPECT_EQ(ReadString(text.get()), u"caf\u00e9");
  ASSERT_EQ(strings->Create(text.put(), nullptr), kOk);
  EXPECT_EQ(ReadString(text.get()), u"");

  auto variants = Create<IQxIVariantBuilder>(*factory, factory_object::QxIVariantBuilder);
  ComPtr<IQxIVariant> v;
  ASSERT_EQ(variants->FromInt64(v.put(), 0x00000002u, 0x00000001u), kOk);
  std::int64_t number = 0;
  ASSERT_EQ(v->AsInt64(&number, 0, 0), kOk);
  EXPECT_EQ(number, 0x100000002LL);
  EXPECT_EQ(ReadVariantText(v.get()), u"4294967298");
  ASSERT_EQ(variants->FromInt64(v.put(), 0xFFFFFFFFu, 0xFFFFFFFFu), kOk);
  v->AsInt64(&number, 0, 0);
  EXPECT_EQ(number, -1);

  ASSERT_EQ(variants->FromBoolean(v.put(), true), kOk);
  std::uint8_t flag = 0;
  ASSERT_EQ(v->AsBoolean(&flag, 0), kOk);
  EXPECT_EQ(flag, 1);
  EXPECT_EQ(ReadVariantText(v.get()), u"true");

  auto handles = Create<IQxIHandleBuilder>(*factory, factory_object::QxIHandleBuilder);
  ComPtr<IQxIHandle> handle;
  ASSERT_EQ(handles->Create(handle.put(), 0x1234, 65537, 0, 0), kOk);
  std::uintptr_t value = 0;
  ASSERT_EQ(handle->GetValue(&value), kOk);
  EXPECT_EQ(value, 0x1234u);
}

TEST(FakeValueObjects, VariantConversionsFollowTheHostsRules) {
  auto text = TFakeVariant::FromText(u"42");
  std::int64_t number = 0;
  EXPECT_EQ(text->AsInt64(&number, 0, 0), kOk);
  EXPECT_EQ(number, 42);
  std::uint8_t flag = 7;
  EXPECT_EQ(text->AsBoolean(&flag, 0), kFail);
  EXPECT_EQ(TFakeVariant::FromText(u"TRUE")->AsBoolean(&flag, 0), kOk);
  EXPECT_EQ(flag, 1);
  EXPECT_EQ(TFakeVariant::FromText(u"x1")->AsInt64(&number, 0, 0), kFail);

  ComPtr<IUnknown> object;
  EXPECT_EQ(text->AsUnknown(object.put()), kFail);
  auto array = MakeCom<TFakeStringArray>();
  auto holder = TFakeVariant::FromUnknown(static_cast<IQxIStringArray*>(array.get()));
  ASSERT_EQ(holder->AsUnknown(object.put()), kOk);
  EXPECT_TRUE(SameInterface(object.get(), static_cast<IQxIStringArray*>(array.get())));
  ComPtr<IQxIString> none;
  EXPECT_EQ(holder->AsText(none.put()), kFail);
  EXPECT_FALSE(none);
  EXPECT_EQ(text->AsInt64(nullptr, 0, 0), kInvalidArg);
}

TEST(FakeValueObjects, StringDictionaryKeepsInsertionOrderAndFailsOnMissingKeys) {
  auto dictionary = MakeCom<TFakeStringDictionary>();
  dictionary->SetValue(u"zeta", u"1");
  dictionary->SetValue(u"alpha", u"2");
  dictionary->SetValue(u"zeta", u"3");  // keeps its place
  dictionary->SetValue(u"empty", nullptr);
  const auto entries = ReadStringDictionary(dictionary.get());
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0], (std::pair<std::u16string, std::u16string>{u"zeta", u"3"}));
  EXPECT_EQ(entries[1].first, u"alpha");
  EXPECT_EQ(entries[2], (std::pair<std::u16string, std::u16string>{u"empty", u""}));

  ComPtr<IQxIString> value;
  EXPECT_EQ(dictionary->GetValue(u"empty", value.put()), kOk);   // present, though empty
  EXPECT_EQ(dictionary->GetValue(u"Zeta", value.put()), kFail);  // keys are exact
  EXPECT_FALSE(value);
  EXPECT_EQ(dictionary->SetValue(nullptr, u"x"), kInvalidArg);
}

TEST(FakeValueObjects, StringArrayIndexOfAnswersOneWhenMissing) {
  auto array = MakeCom<TFakeStringArray>();
  array->Add(u"a");
  array->Add(u"b");
  array->Insert(0, u"c");
  std::int32_t index = 0;
  EXPECT_EQ(array->IndexOf(u"b", &index), kOk);
  EXPECT_EQ(index, 2);
  EXPECT_EQ(array->IndexOf(u"x", &index), kFalse);
  EXPECT_EQ(index, -1);
  EXPECT_EQ(array->Move(0, 2), kOk);
  EXPECT_EQ(array->Items(), (std::vector<std::u16string>{u"a", u"b", u"c"}));
  EXPECT_EQ(array->Exchange(0, 5), kInvalidArg);
  ComPtr<IQxIString> item;
  EXPECT_EQ(array->GetItem(3, item.put()), kInvalidArg);
  EXPECT_EQ(array->Insert(4, u"x"), kInvalidArg);
}

TEST(FakeValueObjects, DictionaryMergesByMode) {
  auto target = MakeCom<TFakeDictionary>();
  auto other = MakeCom<TFakeDictionary>();
  auto one = TFakeVariant::FromText(u"1"), two = TFakeVariant::FromText(u"2"),
       three = TFakeVariant::FromText(u"3");
  target->SetValue(u"a", one.get());
  other->SetValue(u"a", two.get());
  other->SetValue(u"b", three.get());

  auto existing = MakeCom<TFakeDictionary>();
  existing->SetValue(u"a", one.get());
  ASSERT_EQ(existing->MergeExisting(other.get()), kOk);
  EXPECT_EQ(existing->TextValue(u"a"), u"2");
  EXPECT_FALSE(existing->Find(u"b"));

  ASSERT_EQ(target->MergeMissing(other.get()), kOk);
  EXPECT_EQ(target->TextValue(u"a"), u"1");
  EXPECT_EQ(target->TextValue(u"b"), u"3");
  ASSERT_EQ(target->MergeOverwrite(other.get()), kOk);
  EXPECT_EQ(target->TextValue(u"a"), u"2");

  std::int32_t count = 0;
  target->GetCount(&count);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(target->Remove(u"a"), kOk);
  EXPECT_EQ(target->Remove(u"a"), kFalse);
  ComPtr<IUnknown> value;
  EXPECT_EQ(target->GetValue(u"a", value.put()), kFail);
  EXPECT_EQ(target->MergeOverwrite(nullptr), kInvalidArg);
}

}  // namespace
}  // namespace qx
