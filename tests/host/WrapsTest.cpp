#include "WrapFixture.h"
#include "host/QxIDictionaryImpl.h"
#include "host/TabWraps.h"

namespace qx {
namespace {

using WrapsTest = WrapFixture;

TEST_F(WrapsTest, FilteredGroupLeavesOutHiddenTabsAndIsASnapshot) {
  TFakeTab* a = Open(u"http://a/");
  TFakeTab* b = Open(u"http://b/");
  host_.Model().SetHidden(a, true);
  ComPtr<IQxITabManagerWrap> manager;
  wrap_->FilteredTabManagerWrap(manager);
  ComPtr<IQxITabGroupWrap> group;
  ASSERT_TRUE(manager->GetActiveGroup(group));
  ASSERT_EQ(group->GetTabCount(), 1);
  ComPtr<IQxITab> first;
  group->GetTab(0, first);
  EXPECT_TRUE(SameInterface(first.get(), Tab(b)));
  host_.Model().SetHidden(b, true);
  EXPECT_EQ(group->GetTabCount(), 1);  // hidden after the wrap was made: still there
  EXPECT_THROW(group->GetTab(1, first), std::out_of_range);
}

TEST_F(WrapsTest, AllHiddenGivesNoTabsAndNoSectionsInTheExForm) {
  TFakeTab* a = Open(u"http://a/");
  TFakeTab* b = Open(u"http://b/", InSection(1));
  host_.Model().SetHidden(a, true);
  host_.Model().SetHidden(b, true);
  ComPtr<IQxITabManagerWrap> filtered, ex, plain;
  wrap_->FilteredTabManagerWrap(filtered);
  wrap_->FilteredTabManagerWrapEx(ex);
  wrap_->TabManagerWrap(plain);
  ComPtr<IQxITabGroupWrap> group;
  filtered->GetActiveGroup(group);
  EXPECT_EQ(group->GetTabCount(), 0);
  ex->GetActiveGroup(group);
  EXPECT_EQ(group->GetTabCount(), 0);
  EXPECT_EQ(group->GetSectionCount(), 0);
  plain->GetActiveGroup(group);
  EXPECT_EQ(group->GetTabCount(), 2);
  EXPECT_EQ(group->GetSectionCount(), 2);
}

TEST_F(WrapsTest, ExFormOrdersTabsSectionBySectionAndDropsEmptySections) {
  TFakeTab* a = Open(u"http://a/");
  TFakeTab* hidden = Open(u"http://h/", InSection(1));
  TFakeTab* c = Open(u"http://c/", InSection(2));
  host_.Model().SetHidden(hidden, true);
  ComPtr<IQxITabManagerWrap> ex;
  wrap_->FilteredTabManagerWrapEx(ex);
  ComPtr<IQxITabGroupWrap> group;
  ex->GetActiveGroup(group);
  ASSERT_EQ(group->GetSectionCount(), 2);
  ASSERT_EQ(group->GetTabCount(), 2);
  ComPtr<IQxITab> tab;
  group->GetTab(0, tab);
  EXPECT_TRUE(SameInterface(tab.get(), Tab(a)));
  group->GetTab(1, tab);
  EXPECT_TRUE(SameInterface(tab.get(), Tab(c)));
}

TEST_F(WrapsTest, StringArrayStringDictionaryAndTypedDictionaryWraps) {
  ComPtr<IQxIStringArray> rawArray;
  wrap_->CreateStringArray(rawArray);
  ComPtr<IQxIStringArrayWrap> array = WrapStringArray(rawArray.get());
  array->AddText(u"x");
  array->AddText(u"y");
  EXPECT_EQ(array->IndexOfText(u"y"), 1);
  EXPECT_EQ(array->IndexOfText(u"missing"), -1);
  EXPECT_EQ(WrapStringArray(nullptr)->GetCount(), 0);

  ComPtr<IQxIStringDictionary> rawDictionary;
  wrap_->CreateStringDictionary(rawDictionary);
  ComPtr<IQxIStringDictionaryWrap> dictionary = WrapStringDictionary(rawDictionary.get());
  dictionary->SetValue(u"empty", u"");
  EXPECT_TRUE(dictionary->Exists(u"empty"));
  EXPECT_FALSE(dictionary->Exists(u"absent"));
  EXPECT_FALSE(WrapStringDictionary(nullptr));

  ComPtr<IQxIDictionary> raw;
  wrap_->CreateLocalDictionary(raw);
  ComPtr<IQxIDictionaryWrap> typed = WrapDictionary(raw.get(), wrap_.get());
  EXPECT_TRUE(typed->SetText(u"t", u"text"));
  EXPECT_TRUE(typed->SetBool(u"b", true));
  EXPECT_TRUE(typed->SetInt64(u"i", 1LL << 40));
  TString text;
  EXPECT_TRUE(typed->GetText(u"t", text));
  EXPECT_EQ(text, u"text");
  EXPECT_TRUE(typed->GetBool(u"b"));
  EXPECT_EQ(typed->GetInt64(u"i"), 1LL << 40);
  EXPECT_EQ(typed->GetInt64(u"none"), 0);
  // A stored object that is no variant reads as empty.
  typed->SetValue(u"obj", rawArray.get());
  EXPECT_FALSE(typed->GetText(u"obj", text));
  EXPECT_TRUE(text.empty());
}

TEST_F(WrapsTest, LocalDictionaryCountsRemovesAndEnumerates) {
  ComPtr<IQxIDictionary> dictionary;
  wrap_->CreateLocalDictionary(dictionary);
  ComPtr<IQxIVariant> value;
  wrap_->CreateVariantText(u"v", value);
  dictionary->SetValue(u"b", value.get());
  dictionary->SetValue(u"a", value.get());
  std::int32_t count = 0;
  dictionary->GetCount(&count);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(dictionary->Remove(u"a"), kOk);
  EXPECT_EQ(dictionary->Remove(u"a"), kFalse);
  IUnknown* out = reinterpret_cast<IUnknown*>(0x1);
  EXPECT_EQ(dictionary->GetValue(u"a", &out), kFail);
  EXPECT_EQ(out, nullptr);
  ComPtr<IQxIStringArray> keys;
  ASSERT_EQ(dictionary->GetKeys(keys.put()), kOk);
  EXPECT_EQ(WrapStringArray(keys.get())->GetCount(), 1);
}

TEST_F(WrapsTest, MergeReadsEveryKeyAtIndexCount) {
  ComPtr<IQxIDictionary> other, target;
  wrap_->CreateLocalDictionary(other);
  wrap_->CreateLocalDictionary(target);
  ComPtr<IQxIVariant> one, two, three;
  wrap_->CreateVariantText(u"1", one);
  wrap_->CreateVariantText(u"2", two);
  wrap_->CreateVariantText(u"3", three);
  other->SetValue(u"a", one.get());
  other->SetValue(u"b", two.get());
  other->SetValue(u"c", three.get());
  ASSERT_EQ(target->MergeOverwrite(other.get()), kOk);
  std::int32_t count = 0;
  target->GetCount(&count);
  ASSERT_EQ(count, 1);
  // Index 3 of a three-key list answers nothing: every value went in under the empty key,
  // and the last one stayed.
  ComPtr<IUnknown> stored;
  ASSERT_EQ(target->GetValue(u"", stored.put()), kOk);
  TString text;
  WrapDictionary(target.get(), wrap_.get())->GetText(u"", text);
  EXPECT_EQ(text, u"3");
  EXPECT_EQ(target->MergeMissing(nullptr), kOk);
}

}  // namespace
}  // namespace qx
