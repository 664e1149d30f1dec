#include "resources/ResourceFiles.h"

#include <atomic>
#include <exception>
#include <filesystem>

namespace qx {
namespace {

std::atomic<std::uint64_t> gFileCalls{0};

std::filesystem::path ToPath(std::u16string_view path) { return std::filesystem::path(std::u16string(path)); }

}  // namespace

TString IncludeTrailingPathDelimiter(std::u16string_view path) {
  TString result(path);
  if (result.empty() || (result.back() != u'/' && result.back() != u'\\')) result += kPathDelim;
  return result;
}

bool ResourceFileExists(std::u16string_view path) {
  ++gFileCalls;
  if (path.empty()) return false;
  std::error_code error;
  return std::filesystem::is_regular_file(ToPath(path), error);
}

std::unique_ptr<TBitmap> LoadResourceBitmap(std::u16string_view path) {
  ++gFileCalls;
  if (path.empty()) return nullptr;
  try {
    auto bitmap = std::make_unique<TBitmap>();
    bitmap->LoadFromFile(ToPath(path));
    if (bitmap->IsEmpty()) return nullptr;
    return bitmap;
  } catch (const std::exception&) {
    // A broken skin file must not take the strip down: the picture is simply absent.
    return nullptr;
  }
}

std::uint64_t ResourceFileCallCount() { return gFileCalls.load(); }
void ResetResourceFileCallCount() { gFileCalls.store(0); }

}  // namespace qx
