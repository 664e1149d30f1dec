#pragma once

// The one place where the resources layer touches the file system. Every call is
// counted, so that tests and benchmarks can prove that a hot path stays off the disk.

#include <cstdint>
#include <memory>
#include <string_view>

#include "base/PathDelim.h"
#include "base/Text.h"
#include "toolkit/Bitmap.h"

namespace qx {

TString IncludeTrailingPathDelimiter(std::u16string_view path);

bool ResourceFileExists(std::u16string_view path);
// A missing, unreadable or damaged picture gives null; nothing is thrown.
std::unique_ptr<TBitmap> LoadResourceBitmap(std::u16string_view path);

// File-system calls made through this helper since start (or the last reset).
std::uint64_t ResourceFileCallCount();
void ResetResourceFileCallCount();

}  // namespace qx
