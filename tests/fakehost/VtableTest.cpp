// Calls named operations through the raw table of an object's interface, at index
// 3 + position - 1, to prove that each operation sits where the host expects it.

#include <gtest/gtest.h>

#include "fakehost/FakeStringDictionary.h"
#include "fakehost/FakeTestUtil.h"
#include "fakehost/FakeXmlParser.h"

namespace qx {
namespace {

template <class Fn, class I>
Fn Slot(I* object, int position) {
  void** table = *reinterpret_cast<void***>(object);
  return reinterpret_cast<Fn>(table[3 + position - 1]);
}

template <class I>
ComPtr<I> Service(TFakeBrowser& browser, const char* id, bool plugin) {
  ComPtr<IUnknown> object;
  if (plugin) {
    ComPtr<IUnknown> pluginService;
    browser.ServiceCore()->QueryService("PluginService.QxV3", pluginService.put());
    pluginService.As<IQxIPluginService>()->GetPlugin(id, nullptr, object.put());
  } else {
    browser.ServiceCore()->QueryService(id, object.put());
  }
  return object.As<I>();
}

TEST(FakeHostVtable, PropertyServiceGetAndSetAtTwoAndFive) {
  TFakeBrowser browser;
  auto properties = Service<IQxIPropertyService>(browser, "PropertyService.QxV3", false);
  IQxIPropertyService* raw = properties.get();
  using TSet = HResult(QX_STDCALL*)(IQxIPropertyService*, Text, Text);
  using TGet = HResult(QX_STDCALL*)(IQxIPropertyService*, Text, IQxIString**);
  ASSERT_EQ(Slot<TSet>(raw, 5)(raw, u"client.Key", u"value"), kOk);
  IQxIString* value = nullptr;
  ASSERT_EQ(Slot<TGet>(raw, 2)(raw, u"client.Key", &value), kOk);
  EXPECT_EQ(ReadString(value), u"value");
  value->Release();
  EXPECT_EQ(Slot<TGet>(raw, 2)(raw, u"client.None", &value), kInvalidArg);
  using TEnumerate = HResult(QX_STDCALL*)(IQxIPropertyService*, Text, IQxIStringArray**);
  IQxIStringArray* keys = nullptr;
  ASSERT_EQ(Slot<TEnumerate>(raw, 10)(raw, u"client.", &keys), kOk);
  std::int32_t count = 0;
  keys->GetCount(&count);
  EXPECT_EQ(count, 1);
  keys->Release();
}

TEST(FakeHostVtable, TabGroupGetTabAtFourteenAndSectionsAtEighteenAndNineteen) {
  TFakeBrowser browser;
  browser.OpenTab(u"a");
  auto b = browser.OpenTab(u"b");
  IQxITabGroup* raw = browser.ActiveGroup();
  using TGetTab = HResult(QX_STDCALL*)(IQxITabGroup*, std::int32_t, IQxITab**);
  IQxITab* tab = nullptr;
  ASSERT_EQ(Slot<TGetTab>(raw, 14)(raw, 1, &tab), kOk);
  EXPECT_EQ(tab, static_cast<IQxITab*>(b.get()));
  tab->Release();
  using TCount = HResult(QX_STDCALL*)(IQxITabGroup*, std::int32_t*);
  std::int32_t count = 0;
  ASSERT_EQ(Slot<TCount>(raw, 8)(raw, &count), kOk);
  EXPECT_EQ(count, 2);
  ASSERT_EQ(Slot<TCount>(raw, 18)(raw, &count), kOk);
  EXPECT_EQ(count, 1);
  using TSection = HResult(QX_STDCALL*)(IQxITabGroup*, std::int32_t, IQxITabSection**);
  IQxITabSection* section = nullptr;
  ASSERT_EQ(Slot<TSection>(raw, 19)(raw, 0, &section), kOk);
  using TSectionCount = HResult(QX_STDCALL*)(IQxITabSection*, std::int32_t*);
  ASSERT_EQ(Slot<TSectionCount>(section, 8)(section, &count), kOk);
  EXPECT_EQ(count, 2);
  section->Release();
}

TEST(FakeHostVtable, TabDockOperationsAtTheirPositions) {
  TFakeBrowser browser;
  auto a = browser.OpenTab(u"a");
  browser.HideTab(a.get());
  browser.Host().Dock().SetNewTabGroup(browser.ActiveGroup());
  IQxITabDock* raw = &browser.Host().Dock();
  using TNewGroup = HResult(QX_STDCALL*)(IQxITabDock*, IQxITabGroup**);
  IQxITabGroup* group = nullptr;
  ASSERT_EQ(Slot<TNewGroup>(raw, 60)(raw, &group), kOk);
  EXPECT_EQ(group, static_cast<IQxITabGroup*>(browser.ActiveGroup()));
  group->Release();
  using THidden = std::int32_t(QX_STDCALL*)(IQxITabDock*, IQxITab*);
  EXPECT_EQ(Slot<THidden>(raw, 49)(raw, a.get()), 1);
  using TLock = HResult(QX_STDCALL*)(IQxITabDock*, std::int32_t);
  ASSERT_EQ(Slot<TLock>(raw, 59)(raw, 2), kOk);
  EXPECT_TRUE(browser.Host().Dock().Locked());
  using TNavigate = HResult(QX_STDCALL*)(IQxITabDock*, Text, IQxITabGroup*, IQxIStringDictionary*, IQxITab**);
  auto options = MakeCom<TFakeStringDictionary>(TFakeParams{{u"new", u"true"}});
  IQxITab* opened = nullptr;
  ASSERT_EQ(Slot<TNavigate>(raw, 11)(raw, u"https://n.example/", nullptr, options.get(), &opened), kOk);
  ASSERT_NE(opened, nullptr);
  using TIdOf = HResult(QX_STDCALL*)(IQxITabDock*, IQxITab*, std::int32_t*);
  std::int32_t id = 0;
  ASSERT_EQ(Slot<TIdOf>(raw, 1)(raw, opened, &id), kOk);
  EXPECT_EQ(id, browser.Model().FindTab(opened)->DockId());
  opened->Release();
}

TEST(FakeHostVtable, XmlElementChildCountAtFortyEightAndAttributeAtFour) {
  auto root = ParseFakeXml(u"<a k=\"v\"><b/><c/><d/></a>");
  ASSERT_TRUE(root);
  IQxIXmlElement* raw = root.get();
  using TCount = HResult(QX_STDCALL*)(IQxIXmlElement*, std::int32_t*);
  std::int32_t count = 0;
  ASSERT_EQ(Slot<TCount>(raw, 48)(raw, &count), kOk);
  EXPECT_EQ(count, 3);
  using TChild = HResult(QX_STDCALL*)(IQxIXmlElement*, std::int32_t, IQxIXmlElement**);
  IQxIXmlElement* child = nullptr;
  ASSERT_EQ(Slot<TChild>(raw, 47)(raw, 2, &child), kOk);
  EXPECT_EQ(static_cast<TFakeXmlElement*>(child)->Name(), u"d");
  child->Release();
  using TAttribute = HResult(QX_STDCALL*)(IQxIXmlElement*, Text, IQxIString**, Text);
  IQxIString* value = nullptr;
  ASSERT_EQ(Slot<TAttribute>(raw, 4)(raw, u"k", &value, u""), kOk);
  EXPECT_EQ(ReadString(value), u"v");
  value->Release();
}

TEST(FakeHostVtable, ManagerEventServiceBrowserAndBookmarkSlots) {
  TFakeBrowser browser;
  auto tab = browser.OpenTab(u"https://a.example/");

  auto manager = Service<IQxITabManager>(browser, "TabManager.QxV3", true);
  using TDock = HResult(QX_STDCALL*)(IQxITabManager*, IQxITabDock**);
  IQxITabDock* dock = nullptr;
  ASSERT_EQ(Slot<TDock>(manager.get(), 24)(manager.get(), &dock), kOk);
  EXPECT_EQ(dock, static_cast<IQxITabDock*>(&browser.Host().Dock()));
  dock->Release();
  using TGroup = HResult(QX_STDCALL*)(IQxITabManager*, IQxITabGroup**);
  IQxITabGroup* group = nullptr;
  ASSERT_EQ(Slot<TGroup>(manager.get(), 16)(manager.get(), &group), kOk);
  EXPECT_EQ(group, static_cast<IQxITabGroup*>(browser.ActiveGroup()));
  group->Release();

  auto events = Service<IQxIEventService>(browser, "EventService.QxV3", false);
  using TFire = HResult(QX_STDCALL*)(IQxIEventService*, Text, IQxIStringDictionary*, IQxIStringArray**);
  browser.ClearEventLog();
  ASSERT_EQ(Slot<TFire>(events.get(), 5)(events.get(), u"Probe.Event", nullptr, nullptr), kOk);
  ASSERT_EQ(browser.EventLog().size(), 1u);
  EXPECT_EQ(browser.EventLog()[0].Id, u"Probe.Event");

  IQxIBrowser* view = tab->Browser();
  using TExecute = HResult(QX_STDCALL*)(IQxIBrowser*, Text, IQxIStringDictionary*, std::int32_t);
  ASSERT_EQ(Slot<TExecute>(view, 4)(view, u"focus", nullptr, 0), kOk);
  EXPECT_EQ(browser.Model().FocusedBrowser(), tab->Browser());

  auto bookmarks = Service<IQxIBookmarkManagerV3>(browser, "BookmarkManagerV3.QxV3", true);
  using TStatus = HResult(QX_STDCALL*)(IQxIBookmarkManagerV3*, Text, IQxIString**);
  IQxIString* status = nullptr;
  ASSERT_EQ(Slot<TStatus>(bookmarks.get(), 23)(bookmarks.get(), u"status", &status), kOk);
  EXPECT_EQ(ReadString(status), u"connected");
  status->Release();

  using TQuery = HResult(QX_STDCALL*)(IQxIServiceCore*, AnsiText, IUnknown**);
  auto core = browser.ServiceCore();
  IUnknown* found = nullptr;
  ASSERT_EQ(Slot<TQuery>(core.get(), 1)(core.get(), "XmlService.QxV3", &found), kOk);
  found->Release();
}

}  // namespace
}  // namespace qx
