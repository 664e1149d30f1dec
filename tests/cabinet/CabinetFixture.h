#pragma once

// Both plug-ins of the module over a fake browser, each registered with the host's
// plug-in service as the browser does, on the manual clock, with a small skin of
// plain pictures in a fresh folder.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "cabinet/CabinetBarIcon.h"
#include "cabinet/CabinetIconBarForm.h"
#include "cabinet/CabinetIconBarFrame.h"
#include "cabinet/CabinetIconBarPlugin.h"
#include "fakehost/FakeHandle.h"
#include "fakehost/FakeHost.h"
#include "fakehost/FakeTabModel.h"
#include "module/PluginTable.h"
#include "platform/portable/ScopedPortableOs.h"
#include "resources/CabinetIconBarImageRes.h"
#include "resources/FMXDllResourceFinalizer.h"
#include "toolkit/Application.h"

namespace qx::test {

inline std::filesystem::path NewCabinetFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-cabinet-XXXXXX").string();
  const char* made = mkdtemp(pattern.data());
  if (!made) throw std::runtime_error("mkdtemp failed");
  return made;
}

inline void WritePicture(const std::filesystem::path& path, int width, int height, TAlphaColor colour) {
  std::filesystem::create_directories(path.parent_path());
  TBitmap bitmap(width, height);
  bitmap.Clear(colour);
  bitmap.SaveToFile(path);
}

inline std::vector<std::uint8_t> PngBytes(int width, int height, TAlphaColor colour) {
  TBitmap bitmap(width, height);
  bitmap.Clear(colour);
  std::ostringstream out;
  bitmap.SaveToStream(out);
  const std::string text = out.str();
  return {text.begin(), text.end()};
}

class CabinetTest : public ::testing::Test {
 protected:
  static constexpr int kFaviconBase = 18;

  CabinetTest() : root_(NewCabinetFolder()) {
    TToolkit::Finalize();
    host_.UseFolder(root_);
    const auto skin = root_ / "rc/skins/current/widget/toolbar/CabinetBar";
    for (std::u16string_view key : TCabinetIconBarImageRes::Keys())
      WritePicture(skin / (std::u16string(key) + u".png"),
                   key.starts_with(u"CabinetbarItem") ? 12 : kFaviconBase, kFaviconBase, 0xFF336699u);
    host_.Favicons().StoreDefaultIcon(PngBytes(16, 16, 0xFF000000u));
    main_ = host_.HostWindows().CreateMainWindow(TRect{0, 0, 1200, 200});
    group_ = host_.Model().AddGroup(u"main").get();
    host_.Model().SwitchGroup(group_);
  }
  ~CabinetTest() override {
    for (auto* control : {bar_.get(), strip_.get()})
      if (control) control->DestroyControl();
    bar_ = nullptr;
    strip_ = nullptr;
    host_.RegisterPlugin("PreviewStripPlugin", nullptr);
    host_.RegisterPlugin("CabinetIconBarControl", nullptr);
    TToolkit::Finalize();
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }

  // Makes the plug-in object, registers it and creates its control in the main window.
  ComPtr<IQxIControl> CreateControl(std::size_t index, int top, int height) {
    ComPtr<IUnknown> plugin = kPluginClasses[index](host_.ServiceCore().get());
    host_.RegisterPlugin(kPluginIds[index], plugin.get());
    ComPtr<IQxIControl> control = plugin.As<IQxIControl>();
    ComPtr<IQxIHandle> parent = MakeCom<TFakeHandle>(reinterpret_cast<std::uintptr_t>(main_));
    ComPtr<IQxIHandle> handle;
    EXPECT_EQ(control->CreateControl(parent.get(), handle.put()), kOk);
    std::uintptr_t value = 0;
    if (handle) handle->GetValue(&value);
    const auto window = reinterpret_cast<HWnd>(value);
    EXPECT_TRUE(window);
    os_->SetWindowPos(window, nullptr, 0, top, 1000, height, win::SWP_NOZORDER | win::SWP_NOACTIVATE);
    os_->ShowWindow(window, win::SW_SHOWNOACTIVATE);
    return control;
  }
  void CreateStrip() {
    strip_ = CreateControl(0, 24, 53);
    // The browser comes up around its plug-ins' controls.
    for (const char16_t* id : {u"Client.Initialize", u"Client.Visible", u"Client.Loaded", u"Client.Initialized"})
      host_.Events().FireFromHost(id, {});
  }
  void CreateBar() { bar_ = CreateControl(1, 0, 24); }

  TCabinetIconBarPluginImpl& BarImpl() { return *static_cast<TCabinetIconBarPluginImpl*>(bar_.get()); }
  TCabinetIconBarFrame& Frame() { return *BarImpl().CabinetIconBarForm()->CabinetIconBarFrame(); }
  const std::vector<TCabinetIcon2*>& Icons() { return Frame().IconList().Items(); }
  std::vector<TCabinetIcon2*> VisibleIcons() {
    std::vector<TCabinetIcon2*> shown;
    for (TCabinetIcon2* icon : Icons())
      if (icon->Visible()) shown.push_back(icon);
    return shown;
  }

  TFakeTab* Open(std::u16string_view uri, std::u16string title = {}) {
    TFakeOpenTab how;
    how.Group = group_;
    how.Activate = false;
    how.Title = std::move(title);
    TFakeTab* tab = host_.Model().OpenTab(uri, how).get();
    Advance(20);
    return tab;
  }
  void Advance(std::uint64_t ms) { os_->AdvanceClock(ms); }

  TScopedPortableOs os_;
  std::filesystem::path root_;
  TFakeHost host_;
  HWnd main_ = nullptr;
  TFakeTabGroup* group_ = nullptr;
  ComPtr<IQxIControl> strip_;
  ComPtr<IQxIControl> bar_;
};

}  // namespace qx::test
