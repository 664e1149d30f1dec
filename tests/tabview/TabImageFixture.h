#pragma once

// A fake browser behind the service core wrapper, on the manual clock, with a
// fresh temporary folder per test.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "base/Text.h"
#include "fakehost/FakeHost.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"
#include "toolkit/Bitmap.h"
#include "toolkit/Canvas.h"

namespace qx {

inline std::filesystem::path MakeTabImageTempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-tabimage-XXXXXX").string();
  const char* made = mkdtemp(pattern.data());
  if (!made) throw std::runtime_error("mkdtemp failed");
  return made;
}

// A picture with a colour of its own, so that copies and files can be told apart.
inline std::unique_ptr<TBitmap> MakeThumbnail(TAlphaColor color, int width = 96, int height = 47) {
  auto bitmap = std::make_unique<TBitmap>(width, height);
  bitmap->Clear(color);
  return bitmap;
}

inline std::vector<std::uint8_t> ReadBytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::filesystem::path& path, const std::vector<std::uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

class TabImageHostFixture : public ::testing::Test {
 protected:
  TabImageHostFixture()
      : dir_(MakeTabImageTempDir()), wrap_(MakeCom<TServiceCoreWrapImpl>(host_.ServiceCore().get(), true)) {
    mainGroup_ = host_.Model().AddGroup(u"main").get();
    host_.Model().SwitchGroup(mainGroup_);
  }
  ~TabImageHostFixture() override {
    std::error_code ignored;
    std::filesystem::permissions(dir_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(dir_, ignored);
  }

  TFakeTab* Open(std::u16string_view uri, TFakeTabGroup* group = nullptr) {
    TFakeOpenTab how;
    how.Group = group;
    return host_.Model().OpenTab(uri, how).get();
  }
  std::u16string GuidOf(TFakeTab* tab) { return wrap_->TabGuid(tab); }
  std::filesystem::path FileOf(std::u16string_view guid) const {
    return dir_ / std::filesystem::path(std::u16string(guid) + u".png");
  }
  std::u16string DirText() const { return dir_.u16string(); }

  TScopedPortableOs os_;
  std::filesystem::path dir_;
  TFakeHost host_;
  ComPtr<TServiceCoreWrapImpl> wrap_;
  TFakeTabGroup* mainGroup_ = nullptr;
};

}  // namespace qx
