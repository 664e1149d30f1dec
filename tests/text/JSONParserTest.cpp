#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/Text.h"
#include "text/JSONLibrary.h"
#include "text/ParseJSON.h"

namespace qx {
namespace {

using test::Parse;

// The message of the parse error the text raises, or "no error".
std::string ErrorOf(std::u16string_view text) {
  try {
    Parse(text);
  } catch (const EJsonParseError& e) {
    return e.what();
  }
  return "no error";
}

// The messages that several broken texts share.
const std::string kValue = "Expecting value(false/null/true/object/array/number/string).";
const std::string kValueOrEndArray =
    "Expecting value(false/null/true/object/array/number/string) or end-array(\"]\").";
const std::string kSepOrEndArray = "Expecting value-sep(\",\") or end-array(\"]\").";
const std::string kMemberValue = "Expecting value(false / null / true / object / array / number / string).";
const std::string kTrailing = "Parse Error. There is an unnecessary charactor after JSON text.";

std::u16string Packed(std::u16string_view text) { return Parse(text)->ToPackedJSONText(); }

TEST(JSONParserErrors, EachBrokenTextHasItsMessage) {
  EXPECT_EQ(ErrorOf(u""), "Error at line 0 column 0: Parse Error. Cannot parse text.");
  EXPECT_EQ(ErrorOf(u"123"), "Error at line 0 column 0: Parse Error. Cannot parse text.");
  EXPECT_EQ(ErrorOf(u"  \"text\""), "Error at line 0 column 0: Parse Error. Cannot parse text.");
  EXPECT_EQ(ErrorOf(u"true"), "Error at line 0 column 0: Parse Error. Cannot parse text.");
  EXPECT_EQ(ErrorOf(u"{} x"), "Error at line 1 column 3: " + kTrailing);
  EXPECT_EQ(ErrorOf(u"[]]"), "Error at line 1 column 2: " + kTrailing);
  EXPECT_EQ(ErrorOf(std::u16string(u"[]\0", 3)), "Error at line 1 column 2: " + kTrailing);

  EXPECT_EQ(ErrorOf(u"{\"a\" 1}"), "Error at line 1 column 6: Expecting name-separator(\":\").");
  EXPECT_EQ(ErrorOf(u"{\"a\":}"), "Error at line 1 column 5: " + kMemberValue);
  EXPECT_EQ(ErrorOf(u"{\"a\":1,}"), "Error at line 1 column 7: Expecting field name(string).");
  EXPECT_EQ(ErrorOf(u"{1}"), "Error at line 1 column 2: Expecting field name(string) or end-object(\"}\").");
  EXPECT_EQ(ErrorOf(u"{"), "Error at line 1 column 1: Expecting field name(string) or end-object(\"}\").");
  EXPECT_EQ(ErrorOf(u"{\"a\":1 \"b\":2}"),
            "Error at line 1 column 8: Expecting value-sep(\",\") or end-object(\"}\").");
  EXPECT_EQ(ErrorOf(u"{\"a\":1"),
            "Error at line 1 column 6: Expecting value-sep(\",\") or end-object(\"}\").");

  EXPECT_EQ(ErrorOf(u"[1,]"), "Error at line 1 column 3: " + kValue);
  EXPECT_EQ(ErrorOf(u"[:]"), "Error at line 1 column 2: " + kValueOrEndArray);
  EXPECT_EQ(ErrorOf(u"[1 2]"), "Error at line 1 column 4: " + kSepOrEndArray);
  EXPECT_EQ(ErrorOf(u"[nul]"), "Error at line 1 column 2: " + kValueOrEndArray);
  EXPECT_EQ(ErrorOf(u"[True]"), "Error at line 1 column 2: " + kValueOrEndArray);

  EXPECT_EQ(ErrorOf(u"[-]"), "Error at line 1 column 2: Expecting number.");
  EXPECT_EQ(ErrorOf(u"[-x]"), "Error at line 1 column 2: Expecting number.");
  EXPECT_EQ(ErrorOf(u"[1.]"), "Error at line 1 column 3: Expecting fraction.");
  EXPECT_EQ(ErrorOf(u"[1e]"), "Error at line 1 column 3: Expecting exponent digit");
  EXPECT_EQ(ErrorOf(u"[1E+]"), "Error at line 1 column 4: Expecting exponent digit");
  EXPECT_EQ(ErrorOf(u"[99999999999999999999]"),
            "Error at line 1 column 21: Cannot convert \"99999999999999999999\" to number.");
  EXPECT_EQ(ErrorOf(u"[-9223372036854775809]"),
            "Error at line 1 column 21: Cannot convert \"-9223372036854775809\" to number.");
  // The exponent letter is put together in lower case.
  EXPECT_EQ(ErrorOf(u"[1.5E99999]"), "Error at line 1 column 10: Cannot convert \"1.5e99999\" to number.");
  // A leading zero is the whole integer part: 012 is 0 followed by stray text.
  EXPECT_EQ(ErrorOf(u"[012]"), "Error at line 1 column 3: " + kSepOrEndArray);

  EXPECT_EQ(ErrorOf(u"[\"a\tb\"]"), "Error at line 1 column 4: Invalid charactor for JSON string: #09");
  EXPECT_EQ(ErrorOf(u"[\"a\nb\"]"), "Error at line 1 column 4: Invalid charactor for JSON string: #0A");
  EXPECT_EQ(ErrorOf(u"[\"\x19\"]"), "Error at line 1 column 3: Invalid charactor for JSON string: #19");
  EXPECT_EQ(ErrorOf(u"[\"abc"), "Error at line 1 column 5: End quotation mark not found");
  EXPECT_EQ(ErrorOf(u"[\"abc\\"), "Error at line 1 column 6: End quotation mark not found");
  EXPECT_EQ(ErrorOf(std::u16string(u"[\"a\0b\"]", 7)),
            "Error at line 1 column 4: End quotation mark not found");
  // A bad unicode escape is no string at all: the array sees no value.
  EXPECT_EQ(ErrorOf(u"[\"\\u12G4\"]"), "Error at line 1 column 2: " + kValueOrEndArray);
  EXPECT_EQ(ErrorOf(u"[1, \"\\u12\"]"), "Error at line 1 column 4: " + kValue);
}

TEST(JSONParserErrors, CarryLineAndColumn) {
  try {
    Parse(u"{\n  \"a\": tru\n}");
    FAIL() << "no error";
  } catch (const EJsonParseError& e) {
    EXPECT_EQ(e.Line(), 2);
    EXPECT_EQ(e.Column(), 7);
    EXPECT_EQ(e.Message(),
              u"Error at line 2 column 7: Expecting value(false / null / true / object / array / number / "
              u"string).");
  }
  std::u16string message;
  ComPtr<IJSONValue> value = TJSONNullFactory::CreateValue();
  EXPECT_FALSE(TJSONParser::ParseJSONText(u"[1,", message, value));
  EXPECT_EQ(ToUtf8(message), "Error at line 1 column 3: " + kValue);
  EXPECT_FALSE(value);
  EXPECT_TRUE(TJSONParser::ParseJSONText(u"[1]", message, value));
  EXPECT_TRUE(message.empty());
  ASSERT_TRUE(value);
  EXPECT_TRUE(value->IsArray());
}

TEST(JSONParserLines, LineEndsEscapedLineEndsAndKeywordsMoveTheLineAsTheNextCharacterIsRead) {
  // The line count moves with the character after the line end.
  EXPECT_EQ(ErrorOf(u"[\r\n1,\r\n]"), "Error at line 2 column 4: " + kValue);
  EXPECT_EQ(ErrorOf(u"[\n1,\n]"), "Error at line 2 column 3: " + kValue);
  EXPECT_EQ(ErrorOf(u"[\r1,\r]"), "Error at line 2 column 3: " + kValue);
  EXPECT_EQ(ErrorOf(u"[\r\n\r\n\n\r1 x]"), "Error at line 5 column 3: " + kSepOrEndArray);

  // A backslash takes the raw line end after it; the string's next characters are on the next line.
  EXPECT_EQ(ErrorOf(u"[\"a\\\nbc\x01\"]"),
            "Error at line 2 column 3: Invalid charactor for JSON string: #01");
  EXPECT_EQ(ErrorOf(u"[\"a\\\rbc\x01\"]"),
            "Error at line 2 column 3: Invalid charactor for JSON string: #01");
  EXPECT_EQ(ErrorOf(u"[\"a\\\nb\" x]"), "Error at line 2 column 4: " + kSepOrEndArray);
  // CR LF is one line end: the LF after an escaped CR is still on the first line.
  EXPECT_EQ(ErrorOf(u"[\"a\\\r\nb\"]"), "Error at line 1 column 6: Invalid charactor for JSON string: #0A");

  // "null" after a line end is matched in place, so the line only moves on the next
  // character read, and the column starts over there.
  EXPECT_EQ(ErrorOf(u"[\nnull x]"), "Error at line 2 column 2: " + kSepOrEndArray);
  EXPECT_EQ(ErrorOf(u"[1,\ntrue x]"), "Error at line 2 column 2: " + kSepOrEndArray);
  EXPECT_EQ(ErrorOf(u"[1,\n2 x]"), "Error at line 2 column 3: " + kSepOrEndArray);
}

TEST(JSONParserValues, ContainersAndKeywords) {
  EXPECT_TRUE(Parse(u"{}")->IsObject());
  EXPECT_TRUE(Parse(u" \t\r\n[ ] \r\n")->IsArray());
  EXPECT_EQ(Packed(u"[true,false,null,{},[]]"), u"[true,false,null,{},[]]");
  EXPECT_EQ(Packed(u"{ \"a\" : [ 1 , { \"b\" : null } ] , \"c\" : \"d\" }"),
            u"{\"a\":[1,{\"b\":null}],\"c\":\"d\"}");
}

TEST(JSONParserValues, RepeatedNameKeepsFirstPlaceAndLastValueAndAnEmptyNameIsDropped) {
  const ComPtr<IJSONObject> o = Parse(u"{\"a\":1,\"b\":2,\"a\":3}")->AsObject();
  EXPECT_EQ(o->ToPackedJSONText(), u"{\"a\":3,\"b\":2}");
  EXPECT_EQ(o->GetCount(), 2);
  EXPECT_EQ(o->GetValueAt(0)->GetIntValue(), 1);  // the member list keeps the first value
  EXPECT_EQ(o->GetInt(u"a"), 3);
  EXPECT_EQ(Packed(u"{\"\":1,\"x\":2}"), u"{\"x\":2}");
}

TEST(JSONParserValues, StringEscapesControlCharactersFrom26AndLoneSurrogates) {
  const ComPtr<IJSONArray> a =
      Parse(u"[\"\\b\\f\\n\\r\\t\\\"\\/\\\\\", \"\\u0041\\u00e9\\uD83D\\ude00\", \"\\q\\x\"]")->AsArray();
  EXPECT_EQ(a->GetString(0), u"\b\f\n\r\t\"/\\");
  EXPECT_EQ(a->GetString(1), u"A\u00e9\U0001F600");
  // An unknown escape gives a backslash and loses the letter.
  EXPECT_EQ(a->GetString(2), u"\\\\");

  // Control characters from 26 on pass.
  const std::u16string text = u"[\"\x1A\x1E\x1F\x7F\"]";
  EXPECT_EQ(Parse(text)->AsArray()->GetString(0), u"\x1A\x1E\x1F\x7F");

  // Lone surrogates are kept.
  const ComPtr<IJSONArray> lone = Parse(u"[\"\\ud800\", \"\\udc00x\"]")->AsArray();
  EXPECT_EQ(lone->GetString(0), std::u16string(1, char16_t(0xD800)));
  EXPECT_EQ(lone->GetString(1), std::u16string(u"\xDC00x"));
  std::u16string raw = u"[\"?\"]";
  raw[2] = 0xDBFF;
  EXPECT_EQ(Parse(raw)->AsArray()->GetString(0), std::u16string(1, char16_t(0xDBFF)));
}

TEST(JSONParserValues, Numbers) {
  const ComPtr<IJSONArray> a =
      Parse(
          u"[1E5, -0, 0, 12, -9223372036854775808, 9223372036854775807, 1.5, 0.1, 1e-99999, -2.5e-3, 1e400]")
          ->AsArray();
  EXPECT_TRUE(a->GetItem(0)->AsNumber()->GetIsFloat());
  EXPECT_EQ(a->GetItem(0)->GetText(), u"100000");
  EXPECT_FALSE(a->GetItem(1)->AsNumber()->GetIsFloat());
  EXPECT_EQ(a->GetItem(1)->GetText(), u"0");
  EXPECT_EQ(a->GetInt(3), 12);
  EXPECT_EQ(a->GetInt(4), INT64_MIN);
  EXPECT_EQ(a->GetInt(5), INT64_MAX);
  EXPECT_EQ(a->GetItem(6)->GetText(), u"1.5");
  EXPECT_EQ(a->GetItem(7)->GetText(), u"0.1");
  EXPECT_EQ(a->GetFloat(8), 0.0L);  // too small to represent
  EXPECT_EQ(a->GetItem(9)->GetText(), u"-0.0025");
  EXPECT_EQ(a->GetItem(10)->GetText(), u"1E400");  // within the 80-bit range
  EXPECT_EQ(Parse(u"[-0.0]")->AsArray()->GetItem(0)->GetText(), u"0");
}

TEST(JSONParserValues, VeryLongNumbersConvertQuickly) {
  std::u16string digits(200000, u'1');
  const ComPtr<IJSONValue> v = Parse(u"[0." + digits + u", " + u"1" + digits + u".5e-200000]");
  EXPECT_EQ(v->AsArray()->GetItem(0)->GetText(), u"0.111111111111111");
  EXPECT_EQ(v->AsArray()->GetItem(1)->GetText(), u"1.11111111111111");
}

TEST(JSONParseContext, GetCharCountsLinesAndColumns) {
  TJSONParseContext c(u"ab\r\ncd\re");
  EXPECT_EQ(c.Line(), 0);
  EXPECT_EQ(c.LookAhead(), u'a');
  EXPECT_EQ(c.GetChar(), u'a');
  EXPECT_EQ(c.Line(), 1);
  EXPECT_EQ(c.Column(), 1);
  c.GetChar();
  c.GetChar();
  c.GetChar();  // CR LF
  EXPECT_EQ(c.Line(), 1);
  EXPECT_EQ(c.Column(), 4);
  EXPECT_EQ(c.GetChar(), u'c');
  EXPECT_EQ(c.Line(), 2);
  EXPECT_EQ(c.Column(), 1);
  c.GetChar();
  c.GetChar();  // CR
  EXPECT_EQ(c.GetChar(), u'e');
  EXPECT_EQ(c.Line(), 3);
  EXPECT_EQ(c.Column(), 1);
  EXPECT_EQ(c.GetChar(), 0);
  EXPECT_EQ(c.LookAhead(), 0);
  EXPECT_EQ(c.Column(), 1);
}

TEST(JSONParseContext, SavePointsGrowAndRestore) {
  TJSONParseContext c(u"xyz");
  EXPECT_EQ(c.SavePointsLen(), 0);
  c.SaveContext();
  EXPECT_EQ(c.SavePointsLen(), 16);
  c.GetChar();
  for (int i = 0; i < 16; ++i) c.SaveContext();
  EXPECT_EQ(c.SavePointsLen(), 32);
  EXPECT_EQ(c.SavePointCount(), 17);
  for (int i = 0; i < 16; ++i) c.ResolveSavePoint(true);
  EXPECT_EQ(c.Current(), 1u);
  c.ResolveSavePoint(false);
  EXPECT_EQ(c.Current(), 0u);
  EXPECT_EQ(c.Line(), 0);
  EXPECT_EQ(c.Column(), 0);
  EXPECT_EQ(c.SavePointCount(), 0);
  c.ResolveSavePoint(false);  // nothing to resolve: no harm
}

TEST(JSONParseContext, ScalarsThroughTheFactories) {
  TJSONParseContext c(u"  42 nul \"s\" -");
  ComPtr<IJSONValue> v;
  ASSERT_TRUE(c.ParseJSONValue(v));
  EXPECT_EQ(v->GetIntValue(), 42);
  c.ConsumeWhiteSpaces();
  const std::size_t before = c.Current();
  EXPECT_FALSE(c.ParseJSONValue(v));  // "nul" is no keyword: nothing consumed
  EXPECT_FALSE(v);
  EXPECT_EQ(c.Current(), before);
  EXPECT_FALSE(c.GetJSONNull());
  EXPECT_FALSE(c.ParseJSONValue(TJSONValueTypes{jvtString}, v));  // the type set decides
  TJSONParseContext s(u" \"s\"");
  EXPECT_FALSE(s.ParseJSONValue(jvtNumber, v));
  EXPECT_TRUE(s.ParseJSONValue(jvtString, v));
  EXPECT_EQ(v->GetStringValue(), u"s");
  std::u16string digits;
  TJSONParseContext d(u"123x");
  EXPECT_TRUE(d.GetDigitStr(digits));
  EXPECT_EQ(digits, u"123");
  EXPECT_FALSE(d.GetDigitStr(digits));
  EXPECT_EQ(JSONValueFactory(jvtBool).ParseJSONValue(d, v), false);
}

TEST(JSONParserHostile, DeepNestingParsesWithoutRecursion) {
  constexpr int kDepth = 100000;
  std::u16string text(kDepth, u'[');
  text.append(kDepth, u']');
  ComPtr<IJSONValue> v = Parse(text);
  int depth = 0;
  for (ComPtr<IJSONValue> cur = v; cur && cur->IsArray(); cur = cur->AsArray()->GetItem(0)) ++depth;
  EXPECT_EQ(depth, kDepth);
  EXPECT_EQ(v->ToPackedJSONText(), text);
  int visited = 0;
  WalkJSONValues(v.get(), [&visited](IJSONValue*) { ++visited; });
  EXPECT_EQ(visited, kDepth);
  v.reset();  // freeing the tree must not recurse either

  std::u16string objects;
  for (int i = 0; i < kDepth / 4; ++i) objects += u"{\"b\":1,\"a\":";
  objects += u"null";
  objects.append(kDepth / 4, u'}');
  v = Parse(objects);
  v->SortObjectMembers();
  const std::u16string packed = v->ToPackedJSONText();
  EXPECT_EQ(packed.substr(0, 22), u"{\"a\":{\"a\":{\"a\":{\"a\":{\"");
}

TEST(JSONParserHostile, UnclosedDeepNestingIsAnError) {
  const std::u16string text(100000, u'[');
  EXPECT_EQ(ErrorOf(text), "Error at line 1 column 100000: " + kValueOrEndArray);
  std::u16string objects;
  for (int i = 0; i < 50000; ++i) objects += u"{\"a\":";
  EXPECT_EQ(ErrorOf(objects), "Error at line 1 column 250000: " + kMemberValue);
}

TEST(JSONParserHostile, LargeString) {
  std::u16string text = u"[\"";
  text.append(8 * 1024 * 1024, u'x');
  text += u"\"]";
  const ComPtr<IJSONValue> v = Parse(text);
  EXPECT_EQ(v->AsArray()->GetItem(0)->GetStringValue().size(), 8u * 1024 * 1024);
}

TEST(JSONParserHostile, EveryCodeUnitGivesValueOrParseError) {
  auto count = [](std::u16string pattern, const std::vector<char32_t>& units) {
    int values = 0;
    for (char32_t c : units) {
      std::u16string text = pattern;
      text[text.find(u'?')] = static_cast<char16_t>(c);
      try {
        if (Parse(text)) ++values;
      } catch (const EJsonParseError&) {
      }
    }
    return values;
  };
  std::vector<char32_t> all, bytes;
  for (char32_t c = 0; c <= 0xFFFF; ++c) all.push_back(c);
  for (char32_t c = 0; c <= 0xFF; ++c) bytes.push_back(c);
  bytes.insert(bytes.end(), {0xD800, 0xDFFF, 0xFEFF, 0xFFFF});
  // In a string every code unit passes but 0, 1..25, '"' and '\'.
  EXPECT_EQ(count(u"[\"?\"]", all), 0x10000 - 1 - 25 - 2);
  // A bare item can be a digit or white space; an object can only hold white space.
  EXPECT_EQ(count(u"[?]", bytes), 10 + 4);
  EXPECT_EQ(count(u"{?}", bytes), 4);
  EXPECT_EQ(count(u"?", bytes), 0);
}

TEST(JSONParserHostile, EveryPairOfSignificantCharactersAfterBracket) {
  const std::u16string chars = u" \t\r\n[]{}:,\"\\-0123456789.eEtrufalsn/x\x01\x1a\x7f\u00e9\xd800";
  for (char16_t a : chars) {
    for (char16_t b : chars) {
      const std::u16string text{u'[', a, b};
      std::u16string message;
      ComPtr<IJSONValue> v;
      if (!TJSONParser::ParseJSONText(text, message, v)) {
        ASSERT_EQ(message.rfind(u"Error at line ", 0), 0u);
      }
    }
  }
}

}  // namespace
}  // namespace qx
