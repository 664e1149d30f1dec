#include "platform/portable/ShortcutFiles.h"

#include <cstdint>
#include <cstring>

#include "base/Text.h"

namespace qx::portable_os {

namespace {

std::string_view Trim(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

bool SameAscii(std::string_view a, std::string_view b) { return SameText(FromUtf8(a), FromUtf8(b)); }

std::uint32_t Read32(std::string_view data, std::size_t at) {
  std::uint32_t v = 0;
  for (int i = 3; i >= 0; --i)
    v = (v << 8) | static_cast<unsigned char>(data[at + static_cast<std::size_t>(i)]);
  return v;
}

std::uint16_t Read16(std::string_view data, std::size_t at) {
  return static_cast<std::uint16_t>(static_cast<unsigned char>(data[at]) |
                                    (static_cast<unsigned char>(data[at + 1]) << 8));
}

}  // namespace

std::optional<std::u16string> InternetShortcutUrl(std::string_view contents) {
  if (contents.size() >= 3 && contents.substr(0, 3) == "\xEF\xBB\xBF") contents.remove_prefix(3);
  bool inSection = false;
  while (!contents.empty()) {
    const std::size_t end = contents.find('\n');
    std::string_view line = Trim(contents.substr(0, end));
    contents = end == std::string_view::npos ? std::string_view() : contents.substr(end + 1);
    if (!line.empty() && line.front() == '[') {
      inSection = SameAscii(line, "[InternetShortcut]");
      continue;
    }
    const std::size_t equals = line.find('=');
    if (inSection && equals != std::string_view::npos && SameAscii(Trim(line.substr(0, equals)), "URL"))
      return FromUtf8(Trim(line.substr(equals + 1)));
  }
  return std::nullopt;
}

// Header (0x4C bytes), then the item id list when flagged, then the link info whose
// local base path is the target.
std::optional<std::u16string> ShellLinkPath(std::string_view data) {
  constexpr std::uint32_t kHeaderSize = 0x4C;
  constexpr std::uint32_t kHasIdList = 0x1, kHasLinkInfo = 0x2;
  if (data.size() < kHeaderSize || Read32(data, 0) != kHeaderSize) return std::nullopt;
  const std::uint32_t flags = Read32(data, 0x14);
  std::size_t at = kHeaderSize;
  if (flags & kHasIdList) {
    if (at + 2 > data.size()) return std::nullopt;
    at += 2 + Read16(data, at);
  }
  if (!(flags & kHasLinkInfo) || at + 0x1C > data.size()) return std::nullopt;
  const std::string_view info = data.substr(at);
  const std::uint32_t infoSize = Read32(info, 0), infoHeaderSize = Read32(info, 4);
  if (infoSize > info.size() || infoSize < 0x1C) return std::nullopt;
  const std::string_view block = info.substr(0, infoSize);
  constexpr std::uint32_t kVolumeIdAndLocalBasePath = 0x1;
  if (!(Read32(block, 8) & kVolumeIdAndLocalBasePath)) return std::nullopt;
  if (infoHeaderSize >= 0x24 && block.size() >= 0x24) {
    const std::uint32_t offset = Read32(block, 0x1C);
    if (offset >= block.size()) return std::nullopt;
    std::u16string path;
    for (std::size_t i = offset; i + 1 < block.size(); i += 2) {
      const char16_t c = Read16(block, i);
      if (c == 0) return path;
      path.push_back(c);
    }
    return std::nullopt;
  }
  const std::uint32_t offset = Read32(block, 0x10);
  if (offset >= block.size()) return std::nullopt;
  const std::string_view rest = block.substr(offset);
  const std::size_t zero = rest.find('\0');
  if (zero == std::string_view::npos) return std::nullopt;
  return FromUtf8(rest.substr(0, zero));
}

}  // namespace qx::portable_os
