#pragma once

// Test documents of the JSON and detection benchmarks, made the same on every run.

#include <string>

namespace qx::bench {

// One search engine item as the smart search keeps it.
std::string SmallEngineItem();
// A site search list of that many entries.
std::string SiteList(int AEntries);
// Objects, arrays, numbers, strings with escapes and non-ASCII text, to at least ABytes.
std::string MixedDocument(std::size_t ABytes);

// AText repeated and cut to exactly ABytes.
std::string Repeat(const std::string& AText, std::size_t ABytes);
// English page text without markup.
std::string AsciiPageText();
// AText (UTF-8) in another encoding through iconv; empty when iconv cannot do it.
std::string Iconv(const std::string& AText, const char* ATo);

}  // namespace qx::bench
