#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/FilePath.h"
#include "host/WrapFixture.h"

namespace qx {

// A fake browser whose directories are real folders of a temporary root.
class SmartSearchFixture : public WrapFixture {
 protected:
  SmartSearchFixture() : root_(MakeTempDir()) { host_.UseFolder(root_); }
  ~SmartSearchFixture() override {
    std::error_code error;
    std::filesystem::remove_all(root_, error);
  }

  std::filesystem::path Folder(std::u16string_view key) {
    return FilePathOf(host_.Directories().Path(key));
  }
  static void WriteFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  static std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }
  void SetProperty(std::u16string_view key, std::u16string_view value) { host_.Properties().Set(key, value); }

  std::filesystem::path root_;
};

}  // namespace qx
