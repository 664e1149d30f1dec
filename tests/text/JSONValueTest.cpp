#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/Text.h"
#include "text/JSONLibrary.h"
#include "text/ParseJSON.h"

namespace qx {
namespace {

using test::Parse;

TEST(JSONValueModel, TypeTestsAndGenericReads) {
  const ComPtr<IJSONArray> a = Parse(u"[true, null, {}, [], 7, \"s\", 2.5]")->AsArray();
  struct Case {
    int index;
    const char* types;  // which of Object Array String Number Bool Null are true
    std::u16string text;
  };
  const Case cases[] = {{0, "....B.", u"true"}, {1, ".....N", u"null"}, {2, "O.....", u""},
                        {3, ".A....", u""},     {4, "...N..", u"7"},    {5, "..S...", u"s"}};
  for (const Case& c : cases) {
    const ComPtr<IJSONValue> v = a->GetItem(c.index);
    const std::string types = std::string(v->IsObject() ? "O" : ".") + (v->IsArray() ? "A" : ".") +
                              (v->IsString() ? "S" : ".") + (v->IsNumber() ? "N" : ".") +
                              (v->IsBool() ? "B" : ".") + (v->IsNull() ? "N" : ".");
    EXPECT_EQ(types, c.types) << c.index;
    EXPECT_EQ(bool(v->AsObject()), v->IsObject());
    EXPECT_EQ(bool(v->AsArray()), v->IsArray());
    EXPECT_EQ(bool(v->AsString()), v->IsString());
    EXPECT_EQ(bool(v->AsNumber()), v->IsNumber());
    EXPECT_EQ(bool(v->AsBool()), v->IsBool());
    EXPECT_EQ(bool(v->AsNull()), v->IsNull());
    EXPECT_EQ(bool(v->GetObjectValue()), v->IsObject());
    EXPECT_EQ(bool(v->GetArrayValue()), v->IsArray());
    EXPECT_EQ(v->GetText(), c.text);
  }
  // Reads of another type give false, 0 and empty.
  EXPECT_TRUE(a->GetItem(0)->GetBoolValue());
  EXPECT_FALSE(a->GetItem(5)->GetBoolValue());
  EXPECT_EQ(a->GetItem(5)->GetStringValue(), u"s");
  EXPECT_EQ(a->GetItem(4)->GetStringValue(), u"");
  EXPECT_EQ(a->GetItem(4)->GetIntValue(), 7);
  EXPECT_EQ(a->GetItem(5)->GetIntValue(), 0);
  EXPECT_EQ(a->GetItem(6)->GetFloatValue(), 2.5L);
  EXPECT_EQ(a->GetItem(6)->GetIntValue(), 2);
  EXPECT_EQ(a->GetItem(0)->GetFloatValue(), 0.0L);
  // Interfaces answer QueryInterface for themselves and IJSONValue only.
  EXPECT_TRUE(a->GetItem(4).As<IJSONNumber>());
  EXPECT_TRUE(a->GetItem(4).As<IJSONValue>());
  EXPECT_FALSE(a->GetItem(4).As<IJSONString>());
  EXPECT_TRUE(SameInterface(a->GetItem(2).get(), a->GetObject(2).get()));
}

TEST(JSONValueModel, NumberKeepsOneKind) {
  const ComPtr<IJSONNumber> n = TJSONNumberFactory::CreateValue(std::int64_t{42});
  EXPECT_FALSE(n->GetIsFloat());
  EXPECT_EQ(n->GetText(), u"42");
  n->SetFloatValue(-3.75L);
  EXPECT_TRUE(n->GetIsFloat());
  EXPECT_EQ(n->GetIntValue(), -3);
  EXPECT_EQ(n->GetText(), u"-3.75");
  n->SetIntValue(5);
  EXPECT_FALSE(n->GetIsFloat());
  EXPECT_EQ(n->GetFloatValue(), 5.0L);
  EXPECT_EQ(TJSONNumberFactory::CreateValue(1e20L)->GetText(), u"1E20");
  EXPECT_EQ(TJSONNumberFactory::CreateValue(1.5e-7L)->GetText(), u"1.5E-7");
  EXPECT_EQ(TJSONNumberFactory::CreateValue(0.0001L)->GetText(), u"0.0001");
  EXPECT_EQ(TJSONNumberFactory::CreateValue(123456789012345.0L)->GetText(), u"123456789012345");
  EXPECT_EQ(TJSONNumberFactory::CreateValue(1234567890123456.0L)->GetText(), u"1.23456789012346E15");
  EXPECT_EQ(TJSONNumberFactory::CreateValue(1e300L)->GetIntValue(), INT64_MAX);
}

TEST(JSONObjectModel, TypedReadsAndWrites) {
  const ComPtr<IJSONObject> o = TJSONObjectFactory::CreateValue();
  o->SetInt(u"i", 3);
  o->SetBool(u"b", true);
  o->SetString(u"s", u"text");
  o->SetFloat(u"f", 0.5L);
  o->SetObject(u"o", TJSONObjectFactory::CreateValue());
  o->SetArray(u"a", TJSONArrayFactory::CreateValue());
  EXPECT_EQ(o->ToPackedJSONText(), u"{\"i\":3,\"b\":true,\"s\":\"text\",\"f\":0.5,\"o\":{},\"a\":[]}");
  EXPECT_EQ(o->GetInt(u"i"), 3);
  EXPECT_TRUE(o->GetBool(u"b"));
  EXPECT_EQ(o->GetString(u"s"), u"text");
  EXPECT_EQ(o->GetFloat(u"f"), 0.5L);
  EXPECT_TRUE(o->GetObject(u"o"));
  EXPECT_TRUE(o->GetArray(u"a"));
  // Missing members and other types read as false, 0, empty, nil.
  EXPECT_FALSE(o->GetBool(u"s"));
  EXPECT_EQ(o->GetInt(u"missing"), 0);
  EXPECT_EQ(o->GetString(u"i"), u"");
  EXPECT_FALSE(o->GetObject(u"a"));
  EXPECT_FALSE(o->GetArray(u"missing"));
  EXPECT_FALSE(o->GetValue(u"missing"));
  // Case matters in names.
  EXPECT_FALSE(o->Exists(u"I"));
  EXPECT_EQ(o->IndexOfName(u"s"), 2);
  EXPECT_EQ(o->IndexOfName(u"S"), -1);
  EXPECT_EQ(o->GetName(5), u"a");
  EXPECT_EQ(o->GetName(6), u"");
  EXPECT_FALSE(o->GetValueAt(-1));
}

TEST(JSONObjectModel, TypedWritesAreInPlaceForTheSameType) {
  const ComPtr<IJSONObject> o = Parse(u"{\"n\":1,\"s\":\"x\",\"b\":false}")->AsObject();
  const ComPtr<IJSONValue> n = o->GetValue(u"n");
  o->SetInt(u"n", 2);
  EXPECT_EQ(o->GetValue(u"n").get(), n.get());
  o->SetFloat(u"n", 2.5L);  // a number is a number, int or float
  EXPECT_EQ(o->GetValue(u"n").get(), n.get());
  EXPECT_EQ(o->GetValueAt(0)->GetText(), u"2.5");  // one object, so the list sees it too
  const ComPtr<IJSONValue> s = o->GetValue(u"s");
  o->SetInt(u"s", 9);  // another type: a new value replaces it in the dictionary only
  EXPECT_NE(o->GetValue(u"s").get(), s.get());
  EXPECT_EQ(o->GetValueAt(1).get(), s.get());
  EXPECT_EQ(o->ToPackedJSONText(), u"{\"n\":2.5,\"s\":9,\"b\":false}");
  o->SetBool(u"b", true);
  o->SetString(u"s", u"back");
  EXPECT_EQ(o->ToPackedJSONText(), u"{\"n\":2.5,\"s\":\"back\",\"b\":true}");
}

TEST(JSONObjectModel, SetValueRemoveAndClear) {
  const ComPtr<IJSONObject> o = TJSONObjectFactory::CreateValue();
  o->SetValue(u"", TJSONNullFactory::CreateValue());  // an empty name is ignored
  o->SetInt(u"", 1);
  EXPECT_EQ(o->GetCount(), 0);
  o->SetInt(u"a", 1);
  o->SetInt(u"b", 2);
  o->SetInt(u"c", 3);
  o->SetValue(u"b", nullptr);  // nil removes
  EXPECT_EQ(o->ToPackedJSONText(), u"{\"a\":1,\"c\":3}");
  o->SetValue(u"zz", nullptr);  // removing what is absent does nothing
  o->Remove(u"a");
  EXPECT_EQ(o->GetCount(), 1);
  EXPECT_EQ(o->GetName(0), u"c");
  EXPECT_EQ(o->GetInt(u"c"), 3);
  const auto pairs = o->ToArray();
  ASSERT_EQ(pairs.size(), 1u);
  EXPECT_EQ(pairs[0].Name, u"c");
  EXPECT_EQ(pairs[0].Value->GetIntValue(), 3);
  o->Clear();
  EXPECT_EQ(o->GetCount(), 0);
  EXPECT_FALSE(o->Exists(u"c"));
  EXPECT_EQ(o->ToPackedJSONText(), u"{}");
}

TEST(JSONObjectModel, OverwrittenMemberKeepsItsStaleListValue) {
  const ComPtr<IJSONObject> o = TJSONObjectFactory::CreateValue();
  o->SetValue(u"k", TJSONStringFactory::CreateValue(u"old"));
  o->SetValue(u"k", TJSONStringFactory::CreateValue(u"new"));
  EXPECT_EQ(o->GetCount(), 1);
  EXPECT_EQ(o->GetValueAt(0)->GetStringValue(), u"old");
  EXPECT_EQ(o->GetValue(u"k")->GetStringValue(), u"new");
  EXPECT_EQ(o->ToPackedJSONText(), u"{\"k\":\"new\"}");
  EXPECT_EQ(o->ToArray()[0].Value->GetStringValue(), u"new");
}

TEST(JSONObjectModel, LargeObjectsStayConsistent) {
  // Appending to a prefix rather than `u"m" + temporary` keeps GCC 12's -O3 -Wrestrict quiet.
  const auto key = [](int i) {
    std::u16string name = u"m";
    name += IntToStr(i);
    return name;
  };
  const ComPtr<IJSONObject> o = TJSONObjectFactory::CreateValue();
  for (int i = 0; i < 500; ++i) o->SetInt(key(i), i);
  for (int i = 0; i < 500; i += 3) o->Remove(key(i));
  o->SetInt(u"m7", 7000);
  for (int i = 0; i < 500; ++i) {
    const bool present = i % 3 != 0;
    ASSERT_EQ(o->Exists(key(i)), present) << i;
    if (present) {
      ASSERT_EQ(o->GetInt(key(i)), i == 7 ? 7000 : i);
    }
  }
  EXPECT_EQ(o->GetCount(), 333);
  EXPECT_EQ(o->GetName(0), u"m1");
  EXPECT_EQ(o->IndexOfName(u"m499"), 332);
  o->SortMembersByName();
  EXPECT_EQ(o->GetName(0), u"m1");
  EXPECT_EQ(o->GetName(1), u"m10");
  EXPECT_EQ(o->GetInt(u"m10"), 10);
  EXPECT_EQ(o->GetValueAt(1)->GetIntValue(), 10);
}

TEST(JSONObjectModel, SortMembersByNameReachesNestedObjectsButNotArrays) {
  const ComPtr<IJSONObject> o = Parse(u"{\"b\":1,\"B\":2,\"a\":3,\"A\":4,\"ab\":5,\"_\":6}")->AsObject();
  o->SortMembersByName();
  std::u16string names;
  for (int i = 0; i < o->GetCount(); ++i) names += o->GetName(i) + u" ";
  EXPECT_EQ(names, u"_ a A ab b B ");
  EXPECT_EQ(o->GetInt(u"B"), 2);
  EXPECT_EQ(o->GetValueAt(1)->GetIntValue(), 3);
  o->SetInt(u"0", 0);  // a new name makes the order unsorted again
  o->SortMembersByName();
  EXPECT_EQ(o->GetName(0), u"_");
  EXPECT_EQ(o->GetName(1), u"0");

  const ComPtr<IJSONValue> v = Parse(u"{\"z\":{\"y\":1,\"x\":[{\"d\":1,\"c\":2},3,1,2]},\"a\":0}");
  v->SortObjectMembers();
  EXPECT_EQ(v->ToPackedJSONText(), u"{\"a\":0,\"z\":{\"x\":[{\"c\":2,\"d\":1},3,1,2],\"y\":1}}");
}

TEST(JSONArrayModel, ListOperations) {
  const ComPtr<IJSONArray> a = TJSONArrayFactory::CreateValue();
  const ComPtr<IJSONValue> one = TJSONNumberFactory::CreateValue(std::int64_t{1});
  const ComPtr<IJSONValue> two = TJSONStringFactory::CreateValue(u"two");
  EXPECT_EQ(a->Add(one), 0);
  EXPECT_EQ(a->Add(two), 1);
  a->Insert(0, TJSONBoolFactory::CreateValue(true));
  a->Insert(3, TJSONNullFactory::CreateValue());
  a->Insert(9, one);  // out of range: nothing
  EXPECT_EQ(a->ToPackedJSONText(), u"[true,1,\"two\",null]");
  EXPECT_EQ(a->IndexOf(two), 2);
  EXPECT_EQ(a->IndexOf(TJSONStringFactory::CreateValue(u"two")), -1);  // identity, not equality
  EXPECT_EQ(a->Remove(one), 1);
  EXPECT_EQ(a->Remove(one), -1);
  const ComPtr<IJSONValue> taken = a->Extract(two);
  EXPECT_EQ(taken.get(), two.get());
  EXPECT_FALSE(a->Extract(two));
  a->Delete(0);
  a->Delete(5);
  EXPECT_EQ(a->ToPackedJSONText(), u"[null]");
  a->SetItem(0, one);
  a->SetItem(1, two);  // out of range
  EXPECT_EQ(a->GetCount(), 1);
  EXPECT_FALSE(a->GetItem(1));
  EXPECT_FALSE(a->GetItem(-1));
}

TEST(JSONArrayModel, TypedAccessByIndex) {
  const ComPtr<IJSONArray> a = Parse(u"[1, \"s\", true, [], {}, 2.5]")->AsArray();
  EXPECT_EQ(a->GetInt(0), 1);
  EXPECT_EQ(a->GetString(1), u"s");
  EXPECT_TRUE(a->GetBool(2));
  EXPECT_TRUE(a->GetArray(3));
  EXPECT_TRUE(a->GetObject(4));
  EXPECT_EQ(a->GetFloat(5), 2.5L);
  EXPECT_EQ(a->GetInt(1), 0);
  EXPECT_FALSE(a->GetObject(3));
  EXPECT_EQ(a->GetString(99), u"");
  const ComPtr<IJSONValue> first = a->GetItem(0);
  a->SetInt(0, 10);
  EXPECT_EQ(a->GetItem(0).get(), first.get());
  a->SetFloat(0, 0.25L);
  EXPECT_EQ(a->GetItem(0).get(), first.get());
  a->SetString(0, u"now text");
  EXPECT_NE(a->GetItem(0).get(), first.get());
  a->SetBool(1, false);
  a->SetArray(3, nullptr);
  a->SetObject(4, TJSONObjectFactory::CreateValue());
  a->SetInt(17, 1);  // out of range: nothing
  EXPECT_EQ(a->ToPackedJSONText(), u"[\"now text\",false,true,null,{},2.5]");
}

TEST(JSONArrayModel, SortWithComparison) {
  const ComPtr<IJSONArray> a = Parse(u"[3, 1, 2, 1.5]")->AsArray();
  a->Sort([](IJSONValue* l, IJSONValue* r) {
    const long double d = l->GetFloatValue() - r->GetFloatValue();
    return d < 0 ? -1 : d > 0 ? 1 : 0;
  });
  EXPECT_EQ(a->ToPackedJSONText(), u"[1,1.5,2,3]");
}

TEST(JSONWalk, VisitsParentsFirstInOrder) {
  const ComPtr<IJSONValue> v = Parse(u"{\"a\":[1,{\"b\":2}],\"c\":3,\"a\":[4]}");
  std::vector<std::u16string> seen;
  WalkJSONValues(v.get(), [&seen](IJSONValue* x) {
    seen.push_back(x->IsArray() ? u"[" : x->IsObject() ? u"{" : x->GetText());
  });
  // The repeated "a" is walked once, with its last value.
  EXPECT_EQ(seen, (std::vector<std::u16string>{u"{", u"[", u"4", u"3"}));
}

TEST(JSONWalk, VisitorMayChangeTheTreeAndNestWalks) {
  const ComPtr<IJSONValue> v = Parse(u"[{\"x\":[1,2]},{\"y\":{\"z\":1}},[5]]");
  int outer = 0, inner = 0;
  WalkJSONValues(v.get(), [&](IJSONValue* x) {
    ++outer;
    if (const ComPtr<IJSONObject> o = x->AsObject()) {
      WalkJSONValues(x, [&inner](IJSONValue*) { ++inner; });
      o->Clear();  // its children are not visited any more
    }
  });
  EXPECT_EQ(outer, 5);  // root, two objects, [5], 5
  EXPECT_EQ(inner, 4 + 3);
  EXPECT_EQ(v->ToPackedJSONText(), u"[{},{},[5]]");
}

}  // namespace
}  // namespace qx
