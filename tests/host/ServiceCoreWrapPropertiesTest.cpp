#include "WrapFixture.h"
#include "host/HostKeys.h"
#include "host/ServiceIds.h"

namespace qx {
namespace {

using ServiceCoreWrapPropertiesTest = WrapFixture;

TEST_F(ServiceCoreWrapPropertiesTest, ReadsTrimDefaultAndIncrementAndDeleteByPrefix) {
  host_.Properties().Set(u"a", u" True ");
  host_.Properties().Set(u"b", u"FALSE");
  host_.Properties().Set(u"c", u"yes");
  EXPECT_TRUE(wrap_->GetPropertyBool(u"a", false));
  EXPECT_FALSE(wrap_->GetPropertyBool(u"b", true));
  EXPECT_TRUE(wrap_->GetPropertyBool(u"c", true));
  EXPECT_FALSE(wrap_->GetPropertyBool(u"c", false));
  EXPECT_TRUE(wrap_->GetPropertyBool(u"missing", true));

  host_.Properties().Set(u"k", u"v");
  TString text = u"before";
  wrap_->GetPropertyText(u"missing", u"fallback", text);
  EXPECT_EQ(text, u"fallback");
  wrap_->GetPropertyText(u"k", u"fallback", text);
  EXPECT_EQ(text, u"v");

  host_.Properties().Set(u"n", u"41");
  host_.Properties().Set(u"bad", u"4x");
  EXPECT_EQ(wrap_->GetPropertyInteger(u"n", 0), 41);
  EXPECT_EQ(wrap_->GetPropertyInteger(u"bad", 7), 7);
  wrap_->IncrementProperty(u"n");
  wrap_->IncrementProperty(u"counter");
  EXPECT_EQ(host_.Properties().Get(u"n"), u"42");
  EXPECT_EQ(host_.Properties().Get(u"counter"), u"1");
  EXPECT_TRUE(wrap_->SetPropertyBool(u"flag", true));
  EXPECT_EQ(host_.Properties().Get(u"flag"), u"true");

  host_.Properties().Set(u"client.SmartSearch-A", u"1");
  host_.Properties().Set(u"client.SmartSearch-B", u"2");
  host_.Properties().Set(u"client.Other", u"3");
  wrap_->DeletePropertiesByPrefix(u"client.SmartSearch-");
  EXPECT_FALSE(host_.Properties().Get(u"client.SmartSearch-A"));
  EXPECT_FALSE(host_.Properties().Get(u"client.SmartSearch-B"));
  EXPECT_EQ(host_.Properties().Get(u"client.Other"), u"3");
}

// A property service that answers success with no value, or a status other than "missing".
class OddPropertyService : public TInterfacedObject<IQxIPropertyService> {
 public:
  HResult QX_STDCALL GetProperty(Text key, IQxIString** value) override {
    *value = nullptr;
    return std::u16string_view(key) == u"nil" ? kOk : kFail;
  }
  HResult QX_STDCALL SetProperty(Text, Text) override { return kFail; }
  HResult QX_STDCALL DeleteProperty(Text) override { return kFail; }
  HResult QX_STDCALL EnumerateKeys(Text, IQxIStringArray**) override { return kFail; }
  HResult QX_STDCALL SetPropertyAlternate(Text, Text) override { return kFail; }
};

TEST_F(ServiceCoreWrapPropertiesTest, NilValueOrOtherFailureLeavesTheOutArgument) {
  ComPtr<OddPropertyService> odd = MakeCom<OddPropertyService>();
  host_.Core().RegisterService(ServiceId("PropertyService"), odd->Identity());
  TString text = u"untouched";
  wrap_->GetPropertyText(u"nil", u"fallback", text);
  EXPECT_EQ(text, u"untouched");
  wrap_->GetPropertyText(u"other", u"fallback", text);
  EXPECT_EQ(text, u"untouched");
  EXPECT_FALSE(wrap_->SetPropertyText(u"x", u"y"));
}

TEST_F(ServiceCoreWrapPropertiesTest, MissingServiceIsSkippedSilently) {
  host_.RemoveService("PropertyService");
  TString text = u"kept";
  wrap_->GetPropertyText(u"k", u"d", text);
  EXPECT_EQ(text, u"kept");
  EXPECT_TRUE(wrap_->GetPropertyBool(u"k", true));
  EXPECT_FALSE(wrap_->SetPropertyText(u"k", u"v"));
}

TEST_F(ServiceCoreWrapPropertiesTest, DirectoriesGetATrailingDelimiterWhereAsked) {
  const auto root = MakeTempDir();
  host_.UseFolder(root);
  const TString client = wrap_->UserSettingClientDirectory();
  ASSERT_FALSE(client.empty());
  EXPECT_EQ(client.back(), u'/');
  const TString tabJson = wrap_->TabJsonFile();
  ASSERT_FALSE(tabJson.empty());
  EXPECT_NE(tabJson.back(), u'/');
  TString raw;
  EXPECT_TRUE(wrap_->DirectoryPath(dir_key::UserTemp, false, raw));
  EXPECT_NE(raw.back(), u'/');
  EXPECT_FALSE(wrap_->DirectoryPath(u"no.such.key", true, raw));
  std::filesystem::remove_all(root);
}

TEST_F(ServiceCoreWrapPropertiesTest, LocaleIdFromTranslatorElseSystemLanguageAndInTheRelocateUrl) {
  host_.Translator().SetLocale(u"1041");
  EXPECT_EQ(wrap_->LocaleId(), 1041);
  const TString url = wrap_->RelocateUrl(42);
  EXPECT_NE(url.find(u"/relocate.php?id=000042&lang=1041"), TString::npos) << ToUtf8(url);
  host_.Translator().SetLocale(u"ja-JP");
  os_->SetLocaleInfo(1, u"0411");
  EXPECT_EQ(wrap_->LocaleId(), 0x411);
  os_->SetLocaleInfo(1, u"");
  EXPECT_EQ(wrap_->LocaleId(), 1033);
  host_.RemoveService("TranslatorService");
  EXPECT_EQ(wrap_->LocaleId(), 0);
}

TEST_F(ServiceCoreWrapPropertiesTest, GlobalStorageItemIsConsumedByReading) {
  auto& store = host_.GlobalStorage().Store();
  store.PutItem(u"PassConnectImage", {1, 2, 3});
  auto stream = wrap_->PassConnectImage();
  ASSERT_TRUE(stream);
  std::string bytes((std::istreambuf_iterator<char>(*stream)), std::istreambuf_iterator<char>());
  EXPECT_EQ(bytes, std::string("\x01\x02\x03", 3));
  EXPECT_FALSE(store.HasItem(u"PassConnectImage"));

  store.PutItem(u"empty", {});
  EXPECT_FALSE(wrap_->GlobalStorageStream(u"empty"));
  EXPECT_FALSE(store.HasItem(u"empty"));
  EXPECT_FALSE(wrap_->GlobalStorageStream(u"never there"));
}

TEST_F(ServiceCoreWrapPropertiesTest, FactoryObjectsAndConversions) {
  ComPtr<IQxIString> text;
  ASSERT_TRUE(wrap_->CreateString(u"h\u00e9llo", text));
  EXPECT_EQ(StringText(text.get()), u"h\u00e9llo");
  ComPtr<IQxIVariant> number;
  ASSERT_TRUE(wrap_->CreateVariantInt64(-5000000000LL, number));
  std::int64_t value = 0;
  number->AsInt64(&value, 0, 0);
  EXPECT_EQ(value, -5000000000LL);
  ComPtr<IUnknown> none;
  wrap_->CreateObject(u"", none);
  EXPECT_FALSE(none);
  ComPtr<IQxIHandle> handle;
  ASSERT_TRUE(wrap_->CreateHandle(0x1234, handle));
  std::uintptr_t raw = 0;
  handle->GetValue(&raw);
  EXPECT_EQ(raw, 0x1234u);
}

}  // namespace
}  // namespace qx
