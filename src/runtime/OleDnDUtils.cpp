#include "runtime/OleDnDUtils.h"

#include <array>

#include "base/Text.h"
#include "platform/Platform.h"

namespace qx {

namespace {

// Addresses through this redirector stand for the address after it.
constexpr std::u16string_view kRedirectorPrefix = u"http://jmp.x/?";
static_assert(kRedirectorPrefix.size() == 14);

constexpr std::size_t kMaxUrl = 4096;

bool StartsWithText(std::u16string_view text, std::u16string_view prefix) {
  return text.size() >= prefix.size() && SameText(text.substr(0, prefix.size()), prefix);
}

bool EndsWithText(std::u16string_view text, std::u16string_view suffix) {
  return text.size() >= suffix.size() && SameText(text.substr(text.size() - suffix.size()), suffix);
}

std::u16string ShellText(bool (IPlatform::*read)(const char16_t*, char16_t*, std::int32_t),
                         std::u16string_view fileName) {
  const std::u16string name(fileName);
  std::array<char16_t, kMaxUrl> buffer{};
  if (!(Platform().*read)(name.c_str(), buffer.data(), static_cast<std::int32_t>(buffer.size()))) return {};
  return std::u16string(buffer.data());
}

}  // namespace

const std::vector<TClipboardFormatName>& ClipboardFormatNames() {
  static const std::vector<TClipboardFormatName> names = {
      {u"CF_BITMAP", 2},
      {u"CF_DIB", 8},
      {u"CF_DIF", 5},
      {u"CF_DSPBITMAP", 0x82},
      {u"CF_DSPENHMETAFILE", 0x8E},
      {u"CF_DSPMETAFILEPICT", 0x83},
      {u"CF_DSPTEXT", 0x81},
      {u"CF_ENHMETAFILE", 14},
      {u"CF_HDROP", 15},
      {u"CF_LOCALE", 16},
      {u"CF_MAX", 17},
      {u"CF_METAFILEPICT", 3},
      {u"CF_OEMTEXT", 7},
      {u"CF_OWNERDISPLAY", 0x80},
      {u"CF_PALETTE", 9},
      {u"CF_PENDATA", 10},
      {u"CF_RIFF", 11},
      {u"CF_SYLK", 4},
      {u"CF_TEXT", 1},
      {u"CF_TIFF", 6},
      {u"CF_UNICODETEXT", 13},
      {u"CF_WAVE", 12},
      {u"Shell IDList Array", 0},
      {u"Shell Object Offsets", 0},
      {u"Net Resource", 0},
      {u"FileGroupDescriptor", 0},
      {u"FileGroupDescriptorW", 0},
      {u"FileContents", 0},
      {u"FileName", 0},
      {u"FileNameW", 0},
      {u"PrinterFriendlyName", 0},
      {u"FileNameMap", 0},
      {u"FileNameMapW", 0},
      {u"UniformResourceLocator", 0},
      {u"UniformResourceLocatorW", 0},
      {u"Rich Text Format", 0},
      {u"Embed Source", 0},
      {u"Embedded Object", 0},
      {u"Link Source", 0},
      {u"Object Descriptor", 0},
      {u"Link Source Descriptor", 0},
      {u"Netscape Bookmark", 0},
  };
  return names;
}

std::uint32_t ClipboardFormatOf(std::u16string_view name) {
  for (const TClipboardFormatName& entry : ClipboardFormatNames()) {
    if (entry.Name != name) continue;
    if (entry.Id) return entry.Id;
    const std::u16string text(name);
    return Platform().RegisterClipboardFormatW(text.c_str());
  }
  return 0;
}

std::u16string ResolveDroppedUrl(std::u16string_view fileName) {
  if (EndsWithText(fileName, u".url")) return ShellText(&IPlatform::GetInternetShortcutUrl, fileName);
  if (EndsWithText(fileName, u".lnk")) return ShellText(&IPlatform::GetShellLinkPath, fileName);
  if (StartsWithText(fileName, u"ttp:")) return u"h" + std::u16string(fileName);
  if (StartsWithText(fileName, u"http:")) {
    if (StartsWithText(fileName, kRedirectorPrefix))
      return u"http://" + std::u16string(fileName.substr(kRedirectorPrefix.size()));
    return std::u16string(fileName);
  }
  for (std::u16string_view scheme : {u"https:", u"mailto:", u"ftp:", u"file:"})
    if (StartsWithText(fileName, scheme)) return std::u16string(fileName);
  return {};
}

}  // namespace qx
