#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "base/Text.h"
#include "text/JSONLibrary.h"

namespace qx {
namespace {

class JSONFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    FDir = std::filesystem::temp_directory_path() / ("qx_json_" + std::string(info->name()) + "_" +
                                                     std::to_string(reinterpret_cast<std::uintptr_t>(this)));
    std::filesystem::create_directories(FDir);
  }
  void TearDown() override { std::filesystem::remove_all(FDir); }

  std::u16string WriteFile(const std::string& name, const std::string& bytes) {
    std::ofstream(FDir / name, std::ios::binary) << bytes;
    return FromUtf8((FDir / name).string());
  }

  static std::string Utf16(std::u16string_view text, bool bigEndian) {
    std::string out;
    for (char16_t c : text) {
      const char hi = static_cast<char>(c >> 8), lo = static_cast<char>(c & 0xFF);
      out += bigEndian ? hi : lo;
      out += bigEndian ? lo : hi;
    }
    return out;
  }

  std::filesystem::path FDir;
};

const std::u16string kDocument = u"{\"k\":\"\u65e5\u672c\",\"n\":1}";

TEST_F(JSONFileTest, ByteOrderMarksChooseTheEncodingElseTheTextIsAnsi) {
  ComPtr<IJSONValue> v;
  // The first file's name is not ASCII: it must reach the file system unchanged.
  TJSONParser::LoadJSONFromFile(
      WriteFile("\xE6\x97\xA5\xE6\x9C\xAC.json", "\xEF\xBB\xBF" + ToUtf8(kDocument)), v);
  EXPECT_EQ(v->AsObject()->GetString(u"k"), u"\u65e5\u672c");
  TJSONParser::LoadJSONFromFile(WriteFile("le.json", "\xFF\xFE" + Utf16(kDocument, false)), v);
  EXPECT_EQ(v->AsObject()->GetString(u"k"), u"\u65e5\u672c");
  TJSONParser::LoadJSONFromFile(WriteFile("be.json", "\xFE\xFF" + Utf16(kDocument, true)), v);
  EXPECT_EQ(v->AsObject()->GetString(u"k"), u"\u65e5\u672c");

  TJSONParser::LoadJSONFromFile(WriteFile("ansi.json", "{\"k\":\"caf\xE9\"}"), v);
  EXPECT_EQ(v->AsObject()->GetString(u"k"), u"caf\u00e9");
}

TEST_F(JSONFileTest, GivenEncodingSkipsOnlyItsOwnMark) {
  ComPtr<IJSONValue> v;
  TJSONParser::LoadJSONFromFile(WriteFile("plain.json", ToUtf8(kDocument)), TJSONFileEncoding::UTF8, v);
  EXPECT_EQ(v->AsObject()->GetString(u"k"), u"\u65e5\u672c");
  TJSONParser::LoadJSONFromFile(WriteFile("bom.json", "\xEF\xBB\xBF" + ToUtf8(kDocument)),
                                TJSONFileEncoding::UTF8, v);
  EXPECT_EQ(v->AsObject()->GetInt(u"n"), 1);
  TJSONParser::LoadJSONFromFile(WriteFile("le.json", Utf16(kDocument, false)), TJSONFileEncoding::UTF16LE, v);
  EXPECT_EQ(v->AsObject()->GetString(u"k"), u"\u65e5\u672c");
  TJSONParser::LoadJSONFromFile(WriteFile("be.json", "\xFE\xFF" + Utf16(kDocument, true)),
                                TJSONFileEncoding::UTF16BE, v);
  EXPECT_EQ(v->AsObject()->GetString(u"k"), u"\u65e5\u672c");
  // UTF-16 read as UTF-8 is no JSON text.
  const std::u16string wrong = WriteFile("wrong.json", "\xFF\xFE" + Utf16(kDocument, false));
  EXPECT_THROW(TJSONParser::LoadJSONFromFile(wrong, TJSONFileEncoding::UTF8, v), EJsonParseError);
  EXPECT_FALSE(v);
}

TEST_F(JSONFileTest, ParseAndFileErrors) {
  ComPtr<IJSONValue> v;
  const std::u16string path = WriteFile("bad.json", "[\r\n  1,\r\n  2\r\n  3\r\n]");
  try {
    TJSONParser::LoadJSONFromFile(path, TJSONFileEncoding::UTF8, v);
    FAIL() << "no error";
  } catch (const EJsonParseError& e) {
    EXPECT_STREQ(e.what(), "Error at line 4 column 3: Expecting value-sep(\",\") or end-array(\"]\").");
  }

  const std::u16string missing = FromUtf8((FDir / "missing.json").string());
  EXPECT_THROW(TJSONParser::LoadJSONFromFile(missing, v), EJsonFileError);
  EXPECT_THROW(TJSONParser::LoadJSONFromFile(FromUtf8(FDir.string()), TJSONFileEncoding::UTF8, v),
               EJsonFileError);
  EXPECT_THROW(TJSONParser::LoadJSONFromFile(WriteFile("empty.json", ""), v), EJsonParseError);
}

TEST(JSONFileText, Decoding) {
  EXPECT_EQ(DecodeJSONFileText(std::string_view("\xFF\xFE\x41\x00\x42", 5)), u"A");  // odd last byte dropped
  EXPECT_EQ(DecodeJSONFileText("\xEF\xBB"), u"\u00ef\u00bb");                        // a cut mark is no mark
  EXPECT_EQ(DecodeJSONFileText("\xEF\xBB\xBF\xE2\x82\xAC"), u"\u20ac");
  EXPECT_EQ(DecodeJSONFileText("\xC3", TJSONFileEncoding::UTF8), u"\ufffd");
  EXPECT_EQ(DecodeJSONFileText(std::string_view("\xFE\xFF\x00\x41", 4), TJSONFileEncoding::UTF16LE),
            u"\ufffe\u4100");
}

}  // namespace
}  // namespace qx
