#include <gtest/gtest.h>

#include <string>

#include "text/JSONLibrary.h"
#include "text/JSONValueImpl.h"
#include "text/ParseJSON.h"

namespace qx {
namespace {

using test::Parse;

std::u16string Write(std::u16string_view text, const TJSONCreateTextOption& option) {
  return Parse(text)->ToJSONText(option);
}

TEST(JSONWriterDefaults, IndentsFourBlanksPerLevelWithCrLf) {
  EXPECT_EQ(Parse(u"{\"a\":{\"b\":1},\"c\":[1,2]}")->ToJSONText(),
            u"{\r\n"
            u"    \"a\": {\r\n"
            u"        \"b\": 1\r\n"
            u"    },\r\n"
            u"    \"c\": [\r\n"
            u"        1,\r\n"
            u"        2\r\n"
            u"    ]\r\n"
            u"}");
  EXPECT_EQ(Parse(u"{}")->ToJSONText(), u"{\r\n}");
  EXPECT_EQ(Parse(u"[{}]")->ToJSONText(), u"[\r\n    {\r\n    }\r\n]");
  EXPECT_EQ(Parse(u"{\"a\":[]}")->ToJSONText(), u"{\r\n    \"a\": [\r\n    ]\r\n}");
}

TEST(JSONWriterDefaults, EscapesSlashAndControlCharacters) {
  EXPECT_EQ(Parse(u"[\"a/b\"]")->ToPackedJSONText(), u"[\"a\\/b\"]");
  const ComPtr<IJSONArray> a = TJSONArrayFactory::CreateValue();
  a->Add(TJSONStringFactory::CreateValue(u"\b\t\n\f\r\"\\\x01\x1f\x7f\u00e9"));
  EXPECT_EQ(a->ToPackedJSONText(), u"[\"\\b\\t\\n\\f\\r\\\"\\\\\\u0001\\u001f\x7f\u00e9\"]");
}

TEST(JSONWriterOptions, SlashAndUnicodeEscapes) {
  TJSONCreateTextOption option;
  option.SetPackedArray(true);
  option.SetEscapeSlash(false);
  EXPECT_EQ(Write(u"[\"a/b\"]", option), u"[\"a/b\"]");
  option.SetEscapeUnicodeChar(true);
  std::u16string text = u"[\"\u00e9\x7f~?\"]";
  text[5] = 0xD800;  // a lone surrogate is one more code unit from 127 up
  EXPECT_EQ(Write(text, option), u"[\"\\u00e9\\u007f~\\ud800\"]");
}

TEST(JSONWriterOptions, PackedArrayAndObject) {
  TJSONCreateTextOption option;
  option.SetPackedArray(true);
  EXPECT_EQ(Write(u"{\"c\":[1,2]}", option), u"{\r\n    \"c\": [1,2]\r\n}");
  option = TJSONCreateTextOption();
  option.SetPackedObject(true);
  EXPECT_EQ(Write(u"{\"a\":{\"b\":1,\"c\":2}}", option), u"{\"a\": {\"b\": 1,\"c\": 2}}");
  option.SetSpaceAfterValueSeparator(true);
  option.SetSpaceAfterNameSeparator(false);
  EXPECT_EQ(Write(u"{\"a\":1,\"b\":2}", option), u"{\"a\":1, \"b\":2}");
}

TEST(JSONWriterOptions, IndentAndLineBreakTexts) {
  TJSONCreateTextOption option;
  option.SetNoLineBreak(true);
  EXPECT_EQ(Write(u"{\"a\":1,\"b\":[2]}", option), u"{\"a\": 1,\"b\": [2]}");
  option = TJSONCreateTextOption();
  option.SetNoIndent(true);
  EXPECT_EQ(Write(u"{\"a\":[1]}", option), u"{\r\n\"a\": [\r\n1\r\n]\r\n}");
  option = TJSONCreateTextOption();
  option.SetIndentString(u"\t");
  option.SetLineBreak(u"\n");
  EXPECT_EQ(Write(u"{\"a\":[1]}", option), u"{\n\t\"a\": [\n\t\t1\n\t]\n}");
  option.SetLineBreak(u"");
  EXPECT_EQ(Write(u"{\"a\":[1]}", option), u"{\"a\": [1]}");
}

TEST(JSONWriterOptions, PackingOfEmptyArraysArrayElementsAndOneFieldObjects) {
  TJSONCreateTextOption option;
  option.SetPackEmptyArray(true);
  EXPECT_EQ(Write(u"{\"a\":[]}", option), u"{\r\n    \"a\": []\r\n}");
  EXPECT_EQ(Write(u"[[],[1]]", option), u"[\r\n    [],\r\n    [\r\n        1\r\n    ]\r\n]");

  option = TJSONCreateTextOption();
  option.SetArrayElementPack(true);
  EXPECT_EQ(Write(u"[{\"a\":1,\"b\":2}]", option), u"[\r\n    {\"a\": 1,\r\n    \"b\": 2}\r\n]");
  // Only objects directly inside an array are packed.
  EXPECT_EQ(Write(u"{\"o\":{\"a\":1}}", option), u"{\r\n    \"o\": {\r\n        \"a\": 1\r\n    }\r\n}");

  option = TJSONCreateTextOption();
  option.SetPackOneFieldObject(true);
  EXPECT_EQ(Write(u"{\"a\":{\"b\":1},\"c\":{}}", option),
            u"{\r\n    \"a\": {\"b\": 1},\r\n    \"c\": {}\r\n}");
  EXPECT_EQ(Write(u"{\"only\":[1]}", option), u"{\"only\": [\r\n    1\r\n]}");
}

TEST(JSONWriterOptions, LineLengthThresholdBreaksPackedLists) {
  TJSONCreateTextOption option;
  option.SetPackedArray(true);
  option.SetLineLengthThreshold(10);
  EXPECT_EQ(Write(u"[1,2,3,4,5,6,7,8,9,10,11,12]", option), u"[1,2,3,4,5,\r\n    6,7,8,9,10,\r\n    11,12]");
  // The threshold counts every character, so a break can fall inside a string.
  option.SetLineLengthThreshold(4);
  EXPECT_EQ(Write(u"[\"abcdefghij\"]", option), u"[\"abc\r\n    defgh\r\n    ij\"]");
  option.SetLineLengthThreshold(0);
  EXPECT_EQ(Write(u"[\"abcdefghij\"]", option), u"[\"abcdefghij\"]");
}

// A value that leaves blanks and a line end behind its text.
class TTrailingBlanks final : public TJSONValueImpl<IJSONNull> {
 public:
  void BuildJSONText(const TJSONCreateTextOption&, TJSONTextBuilder& ABuilder, bool) override {
    ABuilder.Write(u"x \t ");
    ABuilder.WriteLineBreak();
  }
};

TEST(JSONWriterOptions, TruncateTrailingWhiteSpaces) {
  const ComPtr<IJSONValue> v(new TTrailingBlanks);
  EXPECT_EQ(v->ToJSONText(), u"x \t \r\n");
  TJSONCreateTextOption option;
  option.SetTruncateTrailingWhiteSpaces(true);
  EXPECT_EQ(v->ToJSONText(option), u"x");
}

TEST(JSONWriterPacked, OneLineWithoutBlanks) {
  EXPECT_EQ(Parse(u"{ \"a\" : [ 1 , 2.5 , { } ] , \"b\" : \"x/y\" , \"n\" : null }")->ToPackedJSONText(),
            u"{\"a\":[1,2.5,{}],\"b\":\"x\\/y\",\"n\":null}");
  EXPECT_EQ(TJSONBoolFactory::CreateValue(true)->ToPackedJSONText(), u"true");
  EXPECT_EQ(TJSONStringFactory::CreateValue(u"q\"")->ToJSONText(), u"\"q\\\"\"");
}

TEST(JSONWriterBuilder, LineBreaksIndentsAndSeparators) {
  TJSONCreateTextOption option;
  TJSONTextBuilder b(option, 2);
  b.Write(u"a");
  b.WriteLineBreak();
  b.WriteLineBreak();  // a second one in a row does nothing
  b.Write(u'b');
  b.WriteNameSeparator();
  b.WriteValueSeparator();
  b.DecrIndent();
  b.WriteLineBreak();
  b.WriteJSONString(u"s");
  EXPECT_EQ(b.GetText(), u"        a\r\n        b: ,\r\n    \"s\"");
  TJSONTextBuilder big(option, 0);
  const std::u16string chunk(1000, u'z');
  for (int i = 0; i < 100; ++i) big.Write(chunk, true);
  EXPECT_EQ(big.GetText().size(), 100000u);
}

TEST(JSONWriterRoundTrip, DefaultTextParsesToTheSameTree) {
  const std::u16string source =
      u"{\"name\":\"Sample \\u00e9\\/\",\"list\":[1,-2,3.25,1E5,true,false,null,[],{}],"
      u"\"nested\":{\"deep\":[[{\"x\":\"\\t\\u0001\"}]]},\"big\":-9223372036854775808}";
  const ComPtr<IJSONValue> first = Parse(source);
  for (bool escape : {false, true}) {
    TJSONCreateTextOption option;
    option.SetEscapeUnicodeChar(escape);
    const ComPtr<IJSONValue> second = Parse(first->ToJSONText(option));
    EXPECT_EQ(second->ToPackedJSONText(), first->ToPackedJSONText());
  }
  EXPECT_EQ(first->ToPackedJSONText(),
            u"{\"name\":\"Sample \u00e9\\/\",\"list\":[1,-2,3.25,100000,true,false,null,[],{}],"
            u"\"nested\":{\"deep\":[[{\"x\":\"\\t\\u0001\"}]]},\"big\":-9223372036854775808}");
}

}  // namespace
}  // namespace qx
