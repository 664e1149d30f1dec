#pragma once

// What the shell reads from its shortcut files, for the emulation: the URL of an
// internet shortcut ("[InternetShortcut]" with "URL=") and the target path of a
// shell link (the binary link format's local base path).

#include <optional>
#include <string>
#include <string_view>

namespace qx::portable_os {

std::optional<std::u16string> InternetShortcutUrl(std::string_view contents);
std::optional<std::u16string> ShellLinkPath(std::string_view contents);

}  // namespace qx::portable_os
