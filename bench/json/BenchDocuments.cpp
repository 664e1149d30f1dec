#include "BenchDocuments.h"

#include <iconv.h>

#include <cstdint>
#include <cstdio>
#include <random>

namespace qx::bench {

std::string SmallEngineItem() {
  return R"({"Guid":"{59C21CFA-639D-47DE-9642-E6EA065A4E2B}","ActionName":"QuillmarSearch",)"
         R"("Request":"https:\/\/search.example.com\/search?q={searchTerms}&ie=utf-8&oe=utf-8",)"
         R"("Encode":"UTF-8","Method":"GET","SmartSearch":"true","Icon":"QuillmarSearch.ico",)"
         R"("Name":"Quillmar \u691c\u7d22"})";
}

std::string SiteList(int AEntries) {
  std::string out = "[\r\n";
  char buf[512];
  for (int i = 0; i < AEntries; ++i) {
    std::snprintf(buf, sizeof buf,
                  "    {\r\n        \"name\":  \"Site %d\",\r\n"
                  "        \"query\": \"https://site%d.example.com/search?q={searchTerms}&page=%d\",\r\n"
                  "        \"encode\": \"%s\",\r\n        \"site_list\" : [\r\n"
                  "            \"https?:\\\\/\\\\/(www\\\\.)?site%d\\\\.example\\\\.com\\\\/.*\",\r\n"
                  "            \"https?:\\\\/\\\\/m\\\\.site%d\\\\.example\\\\.com\\\\/.*\"\r\n        ]\r\n "
                  "   }%s\r\n",
                  i, i, i % 7,
                  i % 3 == 0   ? "utf-8"
                  : i % 3 == 1 ? "shift_jis"
                               : "euc-jp",
                  i, i, i + 1 < AEntries ? "," : "");
    out += buf;
  }
  return out + "]";
}

std::string MixedDocument(std::size_t ABytes) {
  std::mt19937 rng(20261122);
  auto pick = [&rng](int n) { return static_cast<int>(rng() % static_cast<unsigned>(n)); };
  static const char* const kWords[] = {"tab",          "preview",        "strip",
                                       "cabinet",      "search",         "engine",
                                       "favicon",      "\\u30bf\\u30d6", "\xe6\x97\xa5\xe6\x9c\xac",
                                       "line\\nbreak", "quote\\\"d",     "path\\/to",
                                       "caf\xc3\xa9"};
  std::string out = "{\"items\":[";
  char buf[256];
  for (int item = 0; out.size() < ABytes; ++item) {
    if (item) out += ',';
    std::snprintf(buf, sizeof buf, "{\"id\":%d,\"guid\":\"{%08X-%04X-4%03X-8%03X-%012X}\",\"score\":%d.%03d,",
                  item, static_cast<unsigned>(rng()), pick(0x10000), pick(0x1000), pick(0x1000),
                  static_cast<unsigned>(rng()), pick(100000) - 50000, pick(1000));
    out += buf;
    out += "\"title\":\"";
    for (int w = 0, n = 3 + pick(8); w < n; ++w) {
      if (w) out += ' ';
      out += kWords[pick(13)];
    }
    out += "\",\"visible\":";
    out += pick(2) ? "true" : "false";
    out += ",\"parent\":null,\"bounds\":[";
    for (int k = 0; k < 4; ++k) {
      std::snprintf(buf, sizeof buf, "%s%d", k ? "," : "", pick(4000) - 100);
      out += buf;
    }
    std::snprintf(buf, sizeof buf, "],\"ratio\":%.6e,\"tags\":[", static_cast<double>(rng()) / 3.7e7);
    out += buf;
    for (int t = 0, n = pick(4); t < n; ++t) {
      if (t) out += ',';
      out += "{\"k\":\"";
      out += kWords[pick(13)];
      std::snprintf(buf, sizeof buf, "\",\"v\":%d}", pick(1000));
      out += buf;
    }
    out += "]}";
  }
  return out + "],\"count\":0}";
}

std::string Repeat(const std::string& AText, std::size_t ABytes) {
  std::string out;
  out.reserve(ABytes + AText.size());
  while (out.size() < ABytes) out += AText;
  out.resize(ABytes);
  return out;
}

std::string AsciiPageText() {
  return "Welcome to the example news page. Today the city council met to discuss the new park, "
         "the library hours and a plan for more bicycle lanes. Residents asked questions about "
         "parking, noise and the schedule of the works. The mayor said the first part will open "
         "in the spring, and the rest before the end of next year. Read more in our local section.\n";
}

std::string Iconv(const std::string& AText, const char* ATo) {
  iconv_t cd = iconv_open(ATo, "UTF-8");
  if (cd == reinterpret_cast<iconv_t>(-1)) return {};
  std::string out(AText.size() * 4 + 16, '\0');
  char* in = const_cast<char*>(AText.data());
  std::size_t inLeft = AText.size();
  char* dst = out.data();
  std::size_t outLeft = out.size();
  const bool ok = iconv(cd, &in, &inLeft, &dst, &outLeft) != static_cast<std::size_t>(-1) &&
                  iconv(cd, nullptr, nullptr, &dst, &outLeft) != static_cast<std::size_t>(-1);
  iconv_close(cd);
  if (!ok) return {};
  out.resize(out.size() - outLeft);
  return out;
}

}  // namespace qx::bench
