// System information, message boxes, locale, URLs and the knobs that set them.

#include <algorithm>

#include "platform/portable/PortableOsHelpers.h"
#include "platform/portable/PortableOsImpl.h"
#include "platform/portable/UrlCrack.h"

namespace qx {

using namespace win;
using namespace portable_os;

bool TPortableOs::InternetCrackUrlW(const char16_t* url, std::uint32_t urlLength, std::uint32_t flags,
                                    UrlComponentsW* components) {
  if (!url) return false;
  const std::u16string_view text = urlLength ? std::u16string_view(url, urlLength) : std::u16string_view(url);
  return CrackUrl(text, flags, components);
}

bool TPortableOs::CheckWin32Version(std::int32_t major, std::int32_t minor) {
  TLock lock(FLock);
  return FVersionMajor > major || (FVersionMajor == major && FVersionMinor >= minor);
}

void TPortableOs::SetWin32Version(std::int32_t major, std::int32_t minor) {
  TLock lock(FLock);
  FVersionMajor = major;
  FVersionMinor = minor;
}

std::int32_t TPortableOs::GetSystemMetrics(std::int32_t index) {
  TLock lock(FLock);
  auto it = FMetrics.find(index);
  return it == FMetrics.end() ? 0 : it->second;
}

void TPortableOs::SetSystemMetric(std::int32_t index, std::int32_t value) {
  TLock lock(FLock);
  FMetrics[index] = value;
  if (index == SM_CXSCREEN) Find(FDesktop)->rect.Right = value;
  if (index == SM_CYSCREEN) Find(FDesktop)->rect.Bottom = value;
}

std::int32_t TPortableOs::GetLogPixelsY() {
  TLock lock(FLock);
  return FLogPixelsY;
}

void TPortableOs::SetLogPixelsY(std::int32_t dpi) {
  TLock lock(FLock);
  FLogPixelsY = dpi;
}

bool TPortableOs::GetMessageFont(char16_t* faceName, std::int32_t maxCount, std::int32_t* height) {
  if (!faceName || maxCount <= 0 || !height) return false;
  TLock lock(FLock);
  const std::size_t units = std::min(FMessageFontFace.size(), static_cast<std::size_t>(maxCount - 1));
  std::copy_n(FMessageFontFace.data(), units, faceName);
  faceName[units] = 0;
  *height = FMessageFontHeight;
  return true;
}

void TPortableOs::SetMessageFont(std::u16string faceName, std::int32_t height) {
  TLock lock(FLock);
  FMessageFontFace = std::move(faceName);
  FMessageFontHeight = height;
}

std::int32_t TPortableOs::MessageBoxW(HWnd hwnd, const char16_t* text, const char16_t* caption,
                                      std::uint32_t type) {
  TLock lock(FLock);
  FMessageBoxCalls.push_back(TMessageBoxCall{hwnd, FromZ(text), FromZ(caption), type});
  return FMessageBoxAnswer;
}

void TPortableOs::SetMessageBoxAnswer(std::int32_t answer) {
  TLock lock(FLock);
  FMessageBoxAnswer = answer;
}

std::vector<TMessageBoxCall> TPortableOs::MessageBoxCalls() {
  TLock lock(FLock);
  return FMessageBoxCalls;
}

std::int32_t TPortableOs::GetLocaleInfoW(std::uint32_t, std::uint32_t type, char16_t* buffer,
                                         std::int32_t maxCount) {
  TLock lock(FLock);
  // The high bits are options (no user override, ANSI code page, number); the text is the same.
  auto it = FLocale.find(type & 0x0FFFFFFFu);
  if (it == FLocale.end() || maxCount < 0) return 0;
  const auto needed = static_cast<std::int32_t>(it->second.size() + 1);
  if (maxCount == 0) return needed;
  if (!buffer || maxCount < needed) return 0;
  std::copy(it->second.begin(), it->second.end(), buffer);
  buffer[needed - 1] = 0;
  return needed;
}

void TPortableOs::SetLocaleInfo(std::uint32_t type, std::u16string value) {
  TLock lock(FLock);
  FLocale[type] = std::move(value);
}

bool TPortableOs::SetWindowProcessId(HWnd hwnd, std::uint32_t processId) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return false;
  w->processId = processId;
  return true;
}

std::size_t TPortableOs::WindowCount() {
  TLock lock(FLock);
  return FWindows.size() - 1;
}

std::vector<std::u16string> TPortableOs::RegisteredClassNames() {
  TLock lock(FLock);
  std::vector<std::u16string> names;
  for (const auto& [key, cls] : FClasses)
    if (!cls.system) names.push_back(cls.name);
  return names;
}

std::size_t TPortableOs::TimerCount() {
  TLock lock(FLock);
  return FWindowTimers.size() + FMMTimers.size();
}

std::size_t TPortableOs::HookCount() {
  TLock lock(FLock);
  return FHooks.size();
}

}  // namespace qx
