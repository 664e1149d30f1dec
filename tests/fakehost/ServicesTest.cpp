#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "fakehost/FakeBrowser.h"
#include "fakehost/FakeStringArray.h"
#include "fakehost/FakeXmlParser.h"
#include "host/HostKeys.h"
#include "host/ServiceIds.h"

namespace qx {
namespace {

std::filesystem::path PathOf(IQxIString* text) { return ToUtf8(ReadString(text)); }

// The attribute's text, or the fallback when the element has none.
std::u16string Attribute(IQxIXmlElement* element, const char16_t* name, const char16_t* fallback = nullptr) {
  ComPtr<IQxIString> value;
  element->GetAttribute(name, value.put(), fallback);
  return ReadString(value.get());
}

class FakeServices : public ::testing::Test {
 protected:
  void SetUp() override {
    root_ = std::filesystem::temp_directory_path() /
            ("qx_fakehost_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::filesystem::remove_all(root_);
    browser_.Host().UseFolder(root_);
  }
  void TearDown() override { std::filesystem::remove_all(root_); }

  template <class I>
  ComPtr<I> Core(std::string_view shortName) {
    ComPtr<IUnknown> object;
    browser_.ServiceCore()->QueryService(ServiceId(shortName).c_str(), object.put());
    return object.As<I>();
  }
  template <class I>
  ComPtr<I> Plugin(std::string_view shortName) {
    auto plugins = Core<IQxIPluginService>("PluginService");
    ComPtr<IUnknown> object;
    if (plugins) plugins->GetPlugin(ServiceId(shortName).c_str(), browser_.ServiceCore().get(), object.put());
    return object.As<I>();
  }

  std::filesystem::path root_;
  TFakeBrowser browser_;
};

TEST_F(FakeServices, EveryServiceOfTheTableIsFoundUnderItsIdWithItsInterface) {
  auto core = browser_.ServiceCore();
  auto plugins = Core<IQxIPluginService>("PluginService");
  ASSERT_TRUE(plugins);
  for (const auto& entry : ServiceTable()) {
    ComPtr<IUnknown> object;
    const auto id = ServiceId(entry.ShortName);
    const HResult status = entry.Kind == ServiceKind::Core
                               ? core->QueryService(id.c_str(), object.put())
                               : plugins->GetPlugin(id.c_str(), core.get(), object.put());
    ASSERT_EQ(status, kOk) << id;
    ComPtr<IUnknown> typed;
    EXPECT_EQ(object->QueryInterface(entry.Iid, typed.put_void()), kOk) << id;
    // The other kind does not answer for it.
    ComPtr<IUnknown> wrong;
    const HResult other = entry.Kind == ServiceKind::Core
                              ? plugins->GetPlugin(id.c_str(), core.get(), wrong.put())
                              : core->QueryService(id.c_str(), wrong.put());
    EXPECT_EQ(other, kFail) << id;
  }
}

TEST_F(FakeServices, UnknownIdsAndNullArgumentsFailWithNil) {
  auto core = browser_.ServiceCore();
  ComPtr<IUnknown> object;
  EXPECT_EQ(core->QueryService("NoSuchService.QxV3", object.put()), kFail);
  EXPECT_FALSE(object);
  EXPECT_EQ(core->QueryService("TabManager", object.put()), kFail);  // without suffix
  EXPECT_EQ(core->QueryService(nullptr, object.put()), kFail);
  EXPECT_EQ(core->QueryService("EventService.QxV3", nullptr), kInvalidArg);
  auto plugins = Core<IQxIPluginService>("PluginService");
  EXPECT_EQ(plugins->GetPlugin("PreviewStripPlugin.QxV3", core.get(), object.put()), kFail);
  EXPECT_EQ(plugins->GetPlugin(nullptr, nullptr, object.put()), kFail);
  EXPECT_FALSE(object);
}

TEST_F(FakeServices, RemovedServicesAreMissingUntilRestoredAndRegisteredPluginsFindEachOther) {
  browser_.Host().RemoveService("TabManager");
  EXPECT_FALSE(Plugin<IQxITabManager>("TabManager"));
  browser_.Host().RemoveService("PropertyService");
  EXPECT_FALSE(Core<IQxIPropertyService>("PropertyService"));
  browser_.Host().RestoreService("TabManager");
  browser_.Host().RestoreService("PropertyService");
  EXPECT_TRUE(Plugin<IQxITabManager>("TabManager"));
  EXPECT_TRUE(Core<IQxIPropertyService>("PropertyService"));

  auto control = MakeCom<TFakeStringArray>();  // any object stands for a module plug-in
  browser_.Host().RegisterPlugin("CabinetIconBarControl", static_cast<IQxIStringArray*>(control.get()));
  auto found = Plugin<IQxIStringArray>("CabinetIconBarControl");
  EXPECT_EQ(found.get(), static_cast<IQxIStringArray*>(control.get()));
  browser_.Host().RegisterPlugin("CabinetIconBarControl", nullptr);
  EXPECT_FALSE(Plugin<IQxIStringArray>("CabinetIconBarControl"));
}

TEST_F(FakeServices, PropertiesAnswerInvalidArgForMissingKeys) {
  auto properties = Core<IQxIPropertyService>("PropertyService");
  ComPtr<IQxIString> value;
  EXPECT_EQ(properties->GetProperty(u"client.Missing", value.put()), kInvalidArg);
  EXPECT_FALSE(value);
  ASSERT_EQ(properties->SetProperty(u"client.SmartSearch-Search", u"3"), kOk);
  ASSERT_EQ(properties->SetPropertyAlternate(u"client.SmartSearch-Site", u"4"), kOk);
  properties->SetProperty(u"client.Other", u"x");
  ASSERT_EQ(properties->GetProperty(u"client.SmartSearch-Search", value.put()), kOk);
  EXPECT_EQ(ReadString(value.get()), u"3");

  ComPtr<IQxIStringArray> keys;
  ASSERT_EQ(properties->EnumerateKeys(u"client.SmartSearch-", keys.put()), kOk);
  std::int32_t count = 0;
  keys->GetCount(&count);
  EXPECT_EQ(count, 2);

  EXPECT_EQ(properties->DeleteProperty(u"client.SmartSearch-Search"), kOk);
  EXPECT_EQ(properties->GetProperty(u"client.SmartSearch-Search", value.put()), kInvalidArg);
  EXPECT_EQ(properties->DeleteProperty(u"client.SmartSearch-Search"), kInvalidArg);
  const auto& writes = browser_.Host().Properties().Writes();
  ASSERT_EQ(writes.size(), 4u);
  EXPECT_TRUE(writes[1].Alternate);
  EXPECT_FALSE(writes[3].Value.has_value());
}

TEST_F(FakeServices, DirectoriesAreMadeUnderTheFixturesFolder) {
  auto directories = Core<IQxIDirectoryService>("DirectoryService");
  for (const auto key :
       {dir_key::UserSettingClient, dir_key::UserTemp, dir_key::CurrentSkin, dir_key::UserSettingBase}) {
    ComPtr<IQxIString> path;
    ASSERT_EQ(directories->GetPath(std::u16string(key).c_str(), path.put()), kOk);
    const std::filesystem::path folder = PathOf(path.get());
    EXPECT_TRUE(std::filesystem::is_directory(folder)) << folder;
    EXPECT_EQ(folder.string().rfind(root_.string(), 0), 0u);
  }
  ComPtr<IQxIString> file;
  ASSERT_EQ(directories->GetPath(u"file.tab.json", file.put()), kOk);
  EXPECT_EQ(PathOf(file.get()).filename(), "tab.json");
  EXPECT_EQ(directories->GetPath(u"no.such.key", file.put()), kFail);
  EXPECT_FALSE(file);
}

TEST_F(FakeServices, ResourceUrlsResolveUnderTheirRoots) {
  auto resources = Core<IQxIGraphicResourceService>("GraphicResourceService");
  ComPtr<IQxIString> path;
  ASSERT_EQ(resources->ResolvePath(u"skin://widget/toolbar/PreviewStrip/TabBack.png", path.put(), 0), kOk);
  EXPECT_EQ(PathOf(path.get()), root_ / "rc/skins/current/widget/toolbar/PreviewStrip/TabBack.png");
  ASSERT_EQ(resources->ResolvePath(u"MENU://toolbar/TabBar/NewTabButtonPopupMenu.xml", path.put(), 0), kOk);
  EXPECT_EQ(PathOf(path.get()), root_ / "rc/menu/toolbar/TabBar/NewTabButtonPopupMenu.xml");
  EXPECT_EQ(resources->ResolvePath(u"http://example.com/a.png", path.put(), 0), kFail);
  EXPECT_EQ(resources->ResolvePath(u"no scheme", path.put(), 0), kFail);

  // A site without an icon resolves to the default icon until its icon arrives.
  ComPtr<IQxIString> site, fallback;
  resources->ResolvePath(u"favicon://https://a.example/", site.put(), 0);
  resources->ResolvePath(u"favicon://default.ico", fallback.put(), 0);
  EXPECT_EQ(ReadString(site.get()), ReadString(fallback.get()));
  browser_.FaviconArrives(u"https://a.example/", {1, 2, 3});
  resources->ResolvePath(u"favicon://https://a.example/", site.put(), 0);
  EXPECT_NE(ReadString(site.get()), ReadString(fallback.get()));
  EXPECT_EQ(std::filesystem::file_size(PathOf(site.get())), 3u);
}

TEST_F(FakeServices, TranslatorGivesLocaleAndTable) {
  auto translator = Core<IQxITranslatorService>("TranslatorService");
  ComPtr<IQxIString> text;
  ASSERT_EQ(translator->GetLocale(text.put()), kOk);
  EXPECT_EQ(ReadString(text.get()), u"1041");
  browser_.Host().Translator().SetTranslation(u"Close", u"\u9589\u3058\u308b");
  ASSERT_EQ(translator->Translate(u"Close", text.put()), kOk);
  EXPECT_EQ(ReadString(text.get()), u"\u9589\u3058\u308b");
  EXPECT_EQ(translator->Translate(u"Open", text.put()), kFail);
}

TEST_F(FakeServices, XmlServiceParsesAttributesChildrenAndRejectsBrokenText) {
  auto xml = Core<IQxIXmlService>("XmlService");
  ComPtr<IQxIXmlElement> root;
  ASSERT_EQ(xml->Parse(u"<?xml version='1.0'?><!-- menu --><menu id=\"m\" title='A &amp; B'>"
                       u"<item id=\"i1\"/><item id=\"i2\">t&#233;xt</item></menu>",
                       root.put()),
            kOk);
  EXPECT_EQ(Attribute(root.get(), u"title"), u"A & B");
  EXPECT_EQ(Attribute(root.get(), u"missing", u"fallback"), u"fallback");
  std::int32_t count = 0;
  root->GetChildCount(&count);
  ASSERT_EQ(count, 2);
  ComPtr<IQxIXmlElement> second;
  root->GetChild(1, second.put());
  EXPECT_EQ(Attribute(second.get(), u"id"), u"i2");
  EXPECT_EQ(static_cast<TFakeXmlElement*>(second.get())->InnerText(), u"t\u00e9xt");
  EXPECT_EQ(root->GetChild(2, second.put()), kInvalidArg);

  for (const char16_t* broken :
       {u"", u"<a>", u"<a></b>", u"<a x=1/>", u"<a/><b/>", u"<a>&bogus;</a>", u"<a x='1' x='2'/>", u"text"}) {
    ComPtr<IQxIXmlElement> none;
    EXPECT_EQ(xml->Parse(broken, none.put()), kFail) << ToUtf8(broken);
    EXPECT_FALSE(none);
  }
  std::u16string deep;
  for (int i = 0; i < 100000; ++i) deep += u"<a>";
  EXPECT_FALSE(ParseFakeXml(deep));
}

TEST_F(FakeServices, GlobalStoreItemsAreBytesUntilRemoved) {
  browser_.Host().GlobalStorage().Store().PutItem(u"PassConnectImage", {9, 8, 7});
  auto storage = Core<IQxIGlobalStorageService>("GlobalStorageService");
  ComPtr<IQxIGlobalStore> store;
  ASSERT_EQ(storage->GetStore(store.put()), kOk);
  ComPtr<IUnknown> item;
  ASSERT_EQ(store->GetItem(u"PassConnectImage", item.put()), kOk);
  auto bytes = item.As<IQxIGlobalStoreItem>();
  ASSERT_TRUE(bytes);
  std::int32_t size = 0;
  const void* data = nullptr;
  bytes->GetSize(&size);
  bytes->GetData(&data);
  ASSERT_EQ(size, 3);
  EXPECT_EQ(static_cast<const std::uint8_t*>(data)[2], 7);
  EXPECT_EQ(store->RemoveItem(u"PassConnectImage"), kOk);
  EXPECT_EQ(store->GetItem(u"PassConnectImage", item.put()), kFail);
  EXPECT_EQ(store->RemoveItem(u"PassConnectImage"), kFail);
}

TEST_F(FakeServices, BookmarkStatusAndActions) {
  auto bookmarks = Plugin<IQxIBookmarkManagerV3>("BookmarkManagerV3");
  ComPtr<IQxIString> status;
  ASSERT_EQ(bookmarks->GetStatus(u"status", status.put()), kOk);
  EXPECT_EQ(ReadString(status.get()), u"connected");
  browser_.Host().Bookmarks().SetStatus(u"status", u"disconnected");
  bookmarks->GetStatus(u"status", status.put());
  EXPECT_EQ(ReadString(status.get()), u"disconnected");
  EXPECT_EQ(bookmarks->GetStatus(u"other", status.put()), kFail);
  // The toolbar manager is another object with the same identity.
  auto toolbar = Plugin<IQxIBookmarkManagerV3>("BasicToolBarManager");
  ASSERT_TRUE(toolbar);
  EXPECT_NE(toolbar.get(), bookmarks.get());

  struct TAction : TInterfacedObject<IQxIAction> {
    HResult QX_STDCALL Execute(IQxIStringDictionary* parameters) override {
      seen = ReadStringDictionary(parameters);
      return kOk;
    }
    TFakeParams seen;
  };
  auto action = MakeCom<TAction>();
  auto actions = Plugin<IQxIActionManager>("ActionManager");
  ASSERT_EQ(actions->AddAction(1, u"PreviewStrip.Refresh", action.get(), 0), kOk);
  ASSERT_EQ(browser_.Host().Actions().Execute(u"PreviewStrip.Refresh", {{u"k", u"v"}}), kOk);
  EXPECT_EQ(ParamValue(action->seen, u"k"), u"v");
  EXPECT_EQ(actions->RemoveAction(u"PreviewStrip.Refresh"), kOk);
  EXPECT_EQ(actions->RemoveAction(u"PreviewStrip.Refresh"), kFail);
  EXPECT_EQ(browser_.Host().Actions().Execute(u"PreviewStrip.Refresh"), kFail);
}

TEST_F(FakeServices, PageDataAndUriAction) {
  auto pages = Plugin<IQxIPageDataManager>("PageDataManager");
  ASSERT_EQ(pages->SetData(u"{0A1B2C3D-0000-0000-0000-000000000001}", u"client.Security", u"5"), kOk);
  ComPtr<IQxIString> value;
  ASSERT_EQ(pages->GetData(u"{0a1b2c3d-0000-0000-0000-000000000001}", u"client.Security", value.put()), kOk);
  EXPECT_EQ(ReadString(value.get()), u"5");
  EXPECT_EQ(pages->DeleteData(u"{0A1B2C3D-0000-0000-0000-000000000001}", u"client.Security"), kOk);
  EXPECT_EQ(pages->GetData(u"{0A1B2C3D-0000-0000-0000-000000000001}", u"client.Security", value.put()),
            kFail);

  browser_.Host().UriAction().SetBrowserGuid(u"https://intranet.", u"{11111111-2222-3333-4444-555555555555}");
  auto uris = Plugin<IQxIUriAction>("UriAction");
  ComPtr<IQxIStringDictionary> info;
  ASSERT_EQ(uris->GetBrowserInfo(u"https://intranet.example/page", info.put()), kOk);
  ASSERT_EQ(info->GetValue(u"browser-guid", value.put()), kOk);
  EXPECT_EQ(ReadString(value.get()), u"{11111111-2222-3333-4444-555555555555}");
  ASSERT_EQ(uris->GetBrowserInfo(u"https://other.example/", info.put()), kOk);
  EXPECT_EQ(info->GetValue(u"browser-guid", value.put()), kFail);
}

TEST_F(FakeServices, HostOutlivedByTheModulesReferencesStaysSafe) {
  ComPtr<IQxITab> tab;
  ComPtr<IQxITabManager> manager;
  {
    TFakeBrowser local;
    tab = local.OpenTab(u"https://a.example/");
    ComPtr<IUnknown> object;
    ComPtr<IQxIPluginService> plugins;
    local.ServiceCore()->QueryService("PluginService.QxV3", object.put());
    plugins = object.As<IQxIPluginService>();
    plugins->GetPlugin("TabManager.QxV3", nullptr, object.put());
    manager = object.As<IQxITabManager>();
  }
  ComPtr<IQxITabGroup> group;
  EXPECT_EQ(tab->GetTabGroup(group.put()), kFail);
  EXPECT_EQ(manager->CreateTab(tab.put()), kFail);
  std::int32_t count = -1;
  EXPECT_EQ(manager->GetTabGroupCount(&count), kFail);
}

}  // namespace
}  // namespace qx
