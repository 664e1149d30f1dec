#pragma once

#include <string_view>

#include "platform/Platform.h"

namespace qx {

// Splits a URL the way the system's InternetCrackUrlW does: scheme, user, password,
// host, port, path and the query or fragment as extra info.
bool CrackUrl(std::u16string_view url, std::uint32_t flags, UrlComponentsW* components);

}  // namespace qx
