#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "base/Text.h"
#include "cabinet/CabinetIconBarPlugin.h"
#include "fakehost/FakeHost.h"
#include "host/HostKeys.h"
#include "host/ServiceCoreWrap.h"
#include "module/PluginTable.h"
#include "module/PreviewStripExtension.h"
#include "platform/portable/ScopedPortableOs.h"
#include "smartsearch/SmartSearchForm.h"
#include "smartsearch/SmartSearchMain.h"

namespace qx {
namespace {

class PluginTest : public ::testing::Test {
 protected:
  ComPtr<IUnknown> Make(std::size_t index) { return kPluginClasses[index](host_.ServiceCore().get()); }

  TScopedPortableOs os_;
  TFakeHost host_;
};

TEST_F(PluginTest, ClientEventsAreRegisteredAndFinalizeDropsEveryHandlerAnyObjectRegistered) {
  host_.Events().ClearEventLog();
  ComPtr<IUnknown> plugin = Make(0);
  for (const char16_t* id :
       {u"Client.Loaded", u"Client.Finalize", u"Client.Closing", u"Client.Initialize", u"Client.Visible"})
    EXPECT_EQ(host_.Events().ListenerCount(id), 1u) << ToUtf8(id);

  auto* impl = static_cast<TPrevewStripPluginImpl*>(plugin.As<IQxIPlugin>().get());
  ComPtr<IQxIEventListener> extra;
  impl->ServiceCoreWrap()->AddEventHandler(0, u"Tab.Changed", extra, false,
                                           [](const TString&, IQxIEvent*) { return kOk; });
  host_.Events().FireFromHost(u"Client.Finalize", {});
  EXPECT_TRUE(impl->ServiceCoreWrap()->GetFinalizing());
  for (const char16_t* id : {u"Client.Loaded", u"Client.Finalize", u"Client.Closing", u"Client.Initialize",
                             u"Client.Visible", u"Tab.Changed"})
    EXPECT_EQ(host_.Events().ListenerCount(id), 0u) << ToUtf8(id);
  // A second finalize, or the other client events, find nothing and harm nothing.
  host_.Events().FireFromHost(u"Client.Finalize", {});
  EXPECT_EQ(impl->DestroyControl(), kOk);
  EXPECT_EQ(impl->DestroyControl(), kOk);
}

TEST_F(PluginTest, GuidsVersionsChildFramesAndTheAbstractAnswers) {
  ComPtr<IQxIPlugin> strip = Make(0).As<IQxIPlugin>();
  ComPtr<IQxIPlugin> bar = Make(1).As<IQxIPlugin>();
  ComPtr<IQxIString> text;
  ASSERT_EQ(strip->GetVersion(text.put()), kOk);
  EXPECT_EQ(StringText(text.get()), u"0.1");
  ASSERT_EQ(strip->GetGuid(text.put()), kOk);
  EXPECT_EQ(StringText(text.get()), u"{B44F6CDA-9925-40E8-9B8F-9227DA15ED4C}");
  EXPECT_EQ(bar->GetGuid(text.put()), kFail);
  EXPECT_FALSE(text);
  EXPECT_EQ(bar->GetVersion(text.put()), kFail);
  ASSERT_EQ(bar.As<IQxIControl>()->GetControlGuid(text.put()), kOk);
  EXPECT_EQ(StringText(text.get()), u"{24EFC42F-EFBA-48E1-BD98-02D213D883DD}");

  for (std::size_t index : {0u, 1u}) {
    ComPtr<IQxIControl> control = Make(index).As<IQxIControl>();
    for (auto op : {&IQxIControl::GetChildFrameLeft, &IQxIControl::GetChildFrameRight,
                    &IQxIControl::GetChildFrameTop, &IQxIControl::GetChildFrameBottom}) {
      std::int32_t value = 99;
      EXPECT_EQ((control.get()->*op)(&value), kOk);
      EXPECT_EQ(value, 0);
    }
    EXPECT_EQ(control->ControlReservedA(), kOk);
    EXPECT_EQ(control->ControlReservedB(), kOk);
  }

  ComPtr<ICabinetIconBar> icons = Make(1).As<ICabinetIconBar>();
  ASSERT_TRUE(icons);
  EXPECT_FALSE(icons->ExistIcon(nullptr));
  EXPECT_FALSE(icons->MouseInCabinetBar());
  ComPtr<IPreviewStrip> preview = Make(0).As<IPreviewStrip>();
  ASSERT_TRUE(preview);
  EXPECT_EQ(preview->GetTabList(), nullptr);
  TRectF rect{1, 2, 3, 4};
  preview->TabScrollBoxScreenRect(rect);
  EXPECT_EQ(rect, TRectF{});
}

TEST_F(PluginTest, PluginsFindEachOtherThroughThePluginService) {
  ComPtr<IUnknown> strip = Make(0);
  ComPtr<IUnknown> bar = Make(1);
  host_.RegisterPlugin("CabinetIconBarControl", bar.get());
  auto* impl = static_cast<TPrevewStripPluginImpl*>(strip.As<IQxIPlugin>().get());
  ComPtr<IQxIControl> partner;
  ASSERT_EQ(
      impl->ServiceCoreWrap()->GetPluginObject("CabinetIconBarControl", IQxIControl::IID, partner.put_void()),
      kOk);
  EXPECT_TRUE(SameInterface(partner.get(), bar.get()));
  EXPECT_TRUE(partner.As<ICabinetIconBar>());
  host_.RegisterPlugin("CabinetIconBarControl", nullptr);
}

// Each named operation sits at its stated position among the interface's own slots.
template <class I, class R, class... A>
R CallSlot(I* object, int position, A... args) {
  using Fn = R(QX_STDCALL*)(I*, A...);
  void** vtable = *reinterpret_cast<void***>(object);
  return reinterpret_cast<Fn>(vtable[3 + position - 1])(object, args...);
}

TEST_F(PluginTest, ControlAndPluginOperationsSitAtTheirSlots) {
  ComPtr<IUnknown> strip = Make(0);
  ComPtr<IQxIControl> control = strip.As<IQxIControl>();
  IQxIString* raw = nullptr;
  ASSERT_EQ((CallSlot<IQxIControl, HResult, IQxIString**>(control.get(), 5, &raw)), kOk);
  ComPtr<IQxIString> guid;
  guid.attach(raw);
  EXPECT_EQ(StringText(guid.get()), u"{B44F6CDA-9925-40E8-9B8F-9227DA15ED4C}");
  std::int32_t value = 7;
  EXPECT_EQ((CallSlot<IQxIControl, HResult, std::int32_t*>(control.get(), 9, &value)), kOk);
  EXPECT_EQ(value, 0);

  ComPtr<IQxIPlugin> plugin = strip.As<IQxIPlugin>();
  raw = nullptr;
  ASSERT_EQ((CallSlot<IQxIPlugin, HResult, IQxIString**>(plugin.get(), 2, &raw)), kOk);
  guid.attach(raw);
  EXPECT_EQ(StringText(guid.get()), u"0.1");
}

// The smart search popup goes with the control: no window of it stays up, and later input
// in the page finds nobody listening.
TEST_F(PluginTest, DestroyControlLeavesNoSmartSearchPopupOpen) {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-test-XXXXXX").string();
  const std::filesystem::path root = mkdtemp(pattern.data());
  host_.UseFolder(root);  // the popup writes its default site list there
  host_.Properties().Set(prop_key::SearchBarShowSmartSearch, u"true");
  host_.Widgets().SetWidgetRect(u"BrowserAreaWidget", 0, 85, 1280, 800);
  host_.Model().SwitchGroup(host_.Model().AddGroup(u"main").get());
  TFakeOpenTab how;
  how.EngineId = std::u16string(kChromiumEngineClassGuid);
  TFakeTab* tab = host_.Model().OpenTab(u"https://news.example/a", how).get();
  ComPtr<IUnknown> plugin = Make(0);
  auto* impl = static_cast<TPrevewStripPluginImpl*>(plugin.As<IQxIPlugin>().get());
  auto release = [&](std::u16string_view text) {
    tab->Browser()->Page().Selection = text;
    host_.Events().FireFromHost(u"QxInputHandler.IPC", {{u"Action", u"#LU 600 300"}});
    for (int i = 0; i < 5; ++i) {
      os_.Os().ProcessMessages();
      os_.Os().AdvanceClock(20);
    }
    os_.Os().ProcessMessages();
  };
  release(u"word");
  TSmartSearchForm* form = impl->SmartSearch()->Form();
  ASSERT_TRUE(form && form->Visible());
  const HWnd popup = form->FormHandle();
  ASSERT_TRUE(os_.Os().IsWindowVisible(popup));

  EXPECT_EQ(impl->DestroyControl(), kOk);
  EXPECT_FALSE(os_.Os().IsWindow(popup));
  EXPECT_EQ(LiveSmartSearchForm(), nullptr);
  EXPECT_EQ(host_.Events().ListenerCount(u"QxInputHandler.IPC"), 0u);
  release(u"another word");
  EXPECT_EQ(LiveSmartSearchForm(), nullptr);
  std::error_code error;
  std::filesystem::remove_all(root, error);
}

}  // namespace
}  // namespace qx
