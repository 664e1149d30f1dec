// Clipboard format names and the shell's shortcut files.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/Text.h"
#include "platform/portable/PortableOsImpl.h"
#include "platform/portable/ShortcutFiles.h"

namespace qx {

namespace {

constexpr std::uint32_t kFirstRegisteredFormat = 0xC000;

std::optional<std::string> ReadWholeFile(const char16_t* fileName) {
  if (!fileName || !*fileName) return std::nullopt;
  std::error_code error;
  const std::filesystem::path path(fileName);
  if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool CopyOut(const std::optional<std::u16string>& text, char16_t* buffer, std::int32_t maxCount) {
  if (!text || !buffer || maxCount <= 0) return false;
  const auto n = std::min<std::size_t>(text->size(), static_cast<std::size_t>(maxCount - 1));
  std::copy_n(text->data(), n, buffer);
  buffer[n] = 0;
  return true;
}

}  // namespace

std::uint32_t TPortableOs::RegisterClipboardFormatW(const char16_t* formatName) {
  if (!formatName || !*formatName) return 0;
  TLock lock(FLock);
  const std::u16string key = LowerCase(formatName);
  auto it = FClipboardFormats.find(key);
  if (it != FClipboardFormats.end()) return it->second;
  const auto id = kFirstRegisteredFormat + static_cast<std::uint32_t>(FClipboardFormats.size());
  FClipboardFormats.emplace(key, id);
  return id;
}

bool TPortableOs::GetInternetShortcutUrl(const char16_t* fileName, char16_t* buffer, std::int32_t maxCount) {
  const auto contents = ReadWholeFile(fileName);
  return contents && CopyOut(portable_os::InternetShortcutUrl(*contents), buffer, maxCount);
}

bool TPortableOs::GetShellLinkPath(const char16_t* fileName, char16_t* buffer, std::int32_t maxCount) {
  const auto contents = ReadWholeFile(fileName);
  return contents && CopyOut(portable_os::ShellLinkPath(*contents), buffer, maxCount);
}

}  // namespace qx
