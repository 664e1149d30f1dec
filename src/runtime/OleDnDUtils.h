#pragma once

// Clipboard formats by name (the standard ones by their fixed ids, the shell's and
// the browsers' registered by name) and what a dropped name stands for as a URL.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

struct TClipboardFormatName {
  std::u16string_view Name;
  std::uint32_t Id;  // 0 for a format that is registered by name
};

// Every format the module knows, standard ones first, in their table order.
const std::vector<TClipboardFormatName>& ClipboardFormatNames();

// The format id of a name of the table: the fixed id, or the system's id for a
// registered name (registering it on first use); 0 for an unknown name.
std::uint32_t ClipboardFormatOf(std::u16string_view name);

// The URL a dropped name stands for: the target of a shortcut file, or the text itself
// when it is an address of a known scheme; empty when it stands for none.
std::u16string ResolveDroppedUrl(std::u16string_view fileName);

}  // namespace qx
