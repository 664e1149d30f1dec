#pragma once

#include <filesystem>
#include <string_view>

namespace qx {

// A UTF-16 file name as a path the C++ file API opens: wide on Windows, UTF-8 elsewhere.
std::filesystem::path FilePathOf(std::u16string_view name);

}  // namespace qx
