#pragma once

// A tab strip frame over a fake browser, on the manual clock, with a fresh
// temporary folder per test and a skin whose pictures each have a colour of
// their own.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "fakehost/FakeHost.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"
#include "tabbar/TabbarForm.h"
#include "toolkit/Application.h"

namespace qx {

inline std::filesystem::path MakeFrameTempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-frame-XXXXXX").string();
  const char* made = mkdtemp(pattern.data());
  if (!made) throw std::runtime_error("mkdtemp failed");
  return made;
}

// A colour per skin key, so tests can tell which picture a control shows.
inline TAlphaColor SkinColour(std::size_t keyIndex) {
  return 0xFF000000u | static_cast<TAlphaColor>((keyIndex * 2654435761u) & 0x00FFFFFFu);
}

class FrameTest : public ::testing::Test {
 protected:
  FrameTest() : dir_(MakeFrameTempDir()) {
    TToolkit::Finalize();
    host_.UseFolder(dir_ / "host");
    wrap_ = MakeCom<TServiceCoreWrapImpl>(host_.ServiceCore().get(), true);
    group_ = host_.Model().AddGroup(u"main").get();
    host_.Model().SwitchGroup(group_);
    WriteSkin();
    imageRes_ = std::make_unique<TTabbarImageRes>((dir_ / "skin").u16string());
  }
  ~FrameTest() override {
    frame_.reset();
    imageRes_.reset();
    TTabImage::ReleaseBlankPicture();
    TToolkit::Finalize();
    std::error_code ignored;
    std::filesystem::remove_all(dir_, ignored);
  }

  void WriteSkin() {
    const auto skin = dir_ / "skin";
    std::filesystem::create_directories(skin);
    const auto& keys = TTabbarImageRes::Keys();
    for (std::size_t i = 0; i < keys.size(); ++i) {
      TBitmap bitmap(4, 4);
      bitmap.Clear(SkinColour(i));
      bitmap.SaveToFile(skin / (std::u16string(keys[i]) + u".png"));
    }
  }
  static TAlphaColor ColourOfKey(std::u16string_view key) {
    const auto& keys = TTabbarImageRes::Keys();
    for (std::size_t i = 0; i < keys.size(); ++i)
      if (keys[i] == key) return SkinColour(i);
    return 0;
  }
  static TAlphaColor Colour(const TBitmap& bitmap) {
    return bitmap.Width() > 0 ? bitmap.PixelColor(0, 0) : 0;
  }

  TTabbarFrame& MakeFrame(IServiceCoreWrap* serviceCore, float width = 1000) {
    frame_ = std::make_unique<TTabbarFrame>(nullptr, imageRes_.get(), nullptr, serviceCore, nullptr);
    frame_->SetBounds(0, 0, width, 54);
    return *frame_;
  }
  TTabbarFrame& MakeFrame(float width = 1000) { return MakeFrame(wrap_.get(), width); }

  TFakeTab* Open(std::u16string_view uri = u"about:blank", std::int32_t section = -1, bool activate = true) {
    TFakeOpenTab how;
    how.Group = group_;
    how.Section = section;
    how.Activate = activate;
    return host_.Model().OpenTab(uri, how).get();
  }
  std::u16string GuidOf(TFakeTab* tab) { return wrap_->TabGuid(tab); }

  // The mirror as text: sections separated by '|', tabs by their GUIDs.
  std::u16string MirrorText(const TTabbarFrame* frame = nullptr) const {
    std::u16string text;
    for (TTabImageSection* section : *(frame ? frame : frame_.get())->TabList()) {
      text += u"|";
      for (TTabImageItem* tab : *section) text += tab->TabGuid() + u",";
    }
    return text;
  }
  std::u16string HostText() const {
    std::u16string text;
    for (const auto& section : group_->Sections()) {
      // The strip mirrors the filtered group, which leaves empty sections out.
      if (section->Tabs().empty()) continue;
      text += u"|";
      for (const auto& tab : section->Tabs()) text += wrap_->TabGuid(tab.get()) + u",";
    }
    return text;
  }

  void Advance(std::uint64_t ms) { os_->AdvanceClock(ms); }

  TScopedPortableOs os_;
  std::filesystem::path dir_;
  TFakeHost host_;
  ComPtr<TServiceCoreWrapImpl> wrap_;
  TFakeTabGroup* group_ = nullptr;
  std::unique_ptr<TTabbarImageRes> imageRes_;
  std::unique_ptr<TTabbarFrame> frame_;
};

}  // namespace qx
