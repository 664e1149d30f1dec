#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "base/Text.h"
#include "fakehost/FakeHost.h"
#include "host/ServiceCoreWrap.h"
#include "platform/portable/ScopedPortableOs.h"
#include "toolkit/Bitmap.h"
#include "toolkit/Canvas.h"
#include "toolkit/Application.h"
#include "toolkit/TimerService.h"

namespace qx::test {

inline std::filesystem::path NewTempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "qx-res-XXXXXX").string();
  return mkdtemp(pattern.data());
}

inline void WriteBytes(const std::filesystem::path& path, const std::vector<std::uint8_t>& bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

inline std::vector<std::uint8_t> ReadBytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// A PNG of one colour, as bytes.
inline std::vector<std::uint8_t> SolidPng(int width, int height, TAlphaColor colour) {
  TBitmap bitmap(width, height);
  bitmap.Clear(colour);
  std::ostringstream out;
  bitmap.SaveToStream(out);
  const std::string text = out.str();
  return {text.begin(), text.end()};
}

inline void WritePng(const std::filesystem::path& path, int width, int height, TAlphaColor colour) {
  WriteBytes(path, SolidPng(width, height, colour));
}

inline std::filesystem::path ToPathOf(const TString& text) { return std::filesystem::path(text); }

// A fresh emulated system on the manual clock, a fresh toolkit, a fake browser using a
// temporary folder, and the wrapper over its service core.
class ResourcesTest : public ::testing::Test {
 protected:
  ResourcesTest() : root_(NewTempDir()) {
    TToolkit::Finalize();
    host_.UseFolder(root_);
    wrap_ = MakeCom<TServiceCoreWrapImpl>(host_.ServiceCore().get(), true);
    host_.Model().SwitchGroup(host_.Model().AddGroup(u"main").get());
  }
  ~ResourcesTest() override {
    wrap_ = nullptr;
    TToolkit::Finalize();
    std::error_code error;
    std::filesystem::remove_all(root_, error);
  }

  std::filesystem::path SkinRoot() { return host_.Resources().SkinRoot(); }
  std::filesystem::path StripFolder() { return SkinRoot() / "widget/toolbar/PreviewStrip"; }
  TManualTimerService& Clock() { return *ManualTimerService(); }

  TScopedPortableOs os_;
  std::filesystem::path root_;
  TFakeHost host_;
  ComPtr<TServiceCoreWrapImpl> wrap_;
};

}  // namespace qx::test
