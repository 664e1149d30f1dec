// JSON parse and serialise throughput of the module's own library beside RapidJSON and
// nlohmann::json, and charset detection beside uchardet, on the same inputs.

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <uchardet.h>

#include <cstdio>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "BenchDocuments.h"
#include "base/Text.h"
#include "tests/text/JapaneseSamples.h"
#include "text/EncodeDetect.h"
#include "text/JSONLibrary.h"

namespace qx::bench {
namespace {

struct TDocument {
  std::string Utf8;
  std::u16string Utf16;
};

const TDocument& Document(int AIndex) {
  static const std::vector<TDocument> docs = [] {
    std::vector<TDocument> out;
    for (const std::string& text : {SmallEngineItem(), SiteList(1000), MixedDocument(5 * 1024 * 1024)}) {
      out.push_back(TDocument{text, FromUtf8(text)});
    }
    return out;
  }();
  return docs[static_cast<std::size_t>(AIndex)];
}

const char* const kDocumentNames[] = {"engine_item", "site_list_1000", "mixed_5MB"};

void SetBytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(bytes));
}

// --- parse ---

void ParseQx(benchmark::State& state) {
  const TDocument& doc = Document(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    ComPtr<IJSONValue> value;
    TJSONParser::ParseJSONText(doc.Utf16, value);
    benchmark::DoNotOptimize(value.get());
  }
  SetBytes(state, doc.Utf8.size());
}

// The same with the UTF-8 to UTF-16 conversion a file load adds.
void ParseQxFromUtf8(benchmark::State& state) {
  const TDocument& doc = Document(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    ComPtr<IJSONValue> value;
    TJSONParser::ParseJSONText(FromUtf8(doc.Utf8), value);
    benchmark::DoNotOptimize(value.get());
  }
  SetBytes(state, doc.Utf8.size());
}

void ParseRapidJSON(benchmark::State& state) {
  const TDocument& doc = Document(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    rapidjson::Document d;
    d.Parse(doc.Utf8.c_str(), doc.Utf8.size());
    if (d.HasParseError()) state.SkipWithError("rapidjson parse error");
    benchmark::DoNotOptimize(&d);
  }
  SetBytes(state, doc.Utf8.size());
}

void ParseNlohmann(benchmark::State& state) {
  const TDocument& doc = Document(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    nlohmann::json j = nlohmann::json::parse(doc.Utf8);
    benchmark::DoNotOptimize(&j);
  }
  SetBytes(state, doc.Utf8.size());
}

// --- serialise (compact text) ---

void WriteQx(benchmark::State& state) {
  const TDocument& doc = Document(static_cast<int>(state.range(0)));
  ComPtr<IJSONValue> value;
  TJSONParser::ParseJSONText(doc.Utf16, value);
  for (auto _ : state) {
    std::u16string text = value->ToPackedJSONText();
    benchmark::DoNotOptimize(text.data());
  }
  SetBytes(state, doc.Utf8.size());
}

void WriteQxIndented(benchmark::State& state) {
  const TDocument& doc = Document(static_cast<int>(state.range(0)));
  ComPtr<IJSONValue> value;
  TJSONParser::ParseJSONText(doc.Utf16, value);
  for (auto _ : state) {
    std::u16string text = value->ToJSONText();
    benchmark::DoNotOptimize(text.data());
  }
  SetBytes(state, doc.Utf8.size());
}

void WriteRapidJSON(benchmark::State& state) {
  const TDocument& doc = Document(static_cast<int>(state.range(0)));
  rapidjson::Document d;
  d.Parse(doc.Utf8.c_str(), doc.Utf8.size());
  for (auto _ : state) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    d.Accept(writer);
    benchmark::DoNotOptimize(buffer.GetString());
  }
  SetBytes(state, doc.Utf8.size());
}

void WriteNlohmann(benchmark::State& state) {
  const TDocument& doc = Document(static_cast<int>(state.range(0)));
  const nlohmann::json j = nlohmann::json::parse(doc.Utf8);
  for (auto _ : state) {
    std::string text = j.dump();
    benchmark::DoNotOptimize(text.data());
  }
  SetBytes(state, doc.Utf8.size());
}

// --- charset detection ---

enum TSample { kUtf8, kShiftJIS, kEucJP, kIso2022JP, kAscii, kSampleCount };
const char* const kSampleNames[] = {"utf8_ja", "shift_jis_ja", "euc_jp_ja", "iso2022jp_ja", "ascii_page"};
const char* const kExpected[] = {"UTF-8", "SHIFT-JIS", "EUC-JP", "ISO-2022-JP", "unknown (ASCII)"};

const std::string& Sample(int ASample, std::size_t ABytes) {
  static std::map<std::pair<int, std::size_t>, std::string> cache;
  auto& slot = cache[{ASample, ABytes}];
  if (slot.empty()) {
    const std::string japanese(test::kJapaneseUtf8);
    std::string base;
    switch (ASample) {
      case kUtf8:
        base = japanese;
        break;
      case kShiftJIS:
        base = Iconv(japanese, "SHIFT_JIS");
        break;
      case kEucJP:
        base = Iconv(japanese, "EUC-JP");
        break;
      case kIso2022JP:
        base = Iconv(japanese, "ISO-2022-JP");
        break;
      default:
        base = AsciiPageText();
        break;
    }
    slot = Repeat(base, ABytes);
  }
  return slot;
}

int QxDetect(const std::string& bytes) {
  return DetectEncoding(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                        static_cast<std::int32_t>(bytes.size()) - 1, 0);
}

std::string UchardetDetect(const std::string& bytes) {
  uchardet_t ud = uchardet_new();
  uchardet_handle_data(ud, bytes.data(), bytes.size());
  uchardet_data_end(ud);
  std::string charset = uchardet_get_charset(ud);
  uchardet_delete(ud);
  return charset.empty() ? "(none)" : charset;
}

const char* QxName(int code) {
  switch (code) {
    case kEncodeShiftJIS:
      return "SHIFT-JIS";
    case kEncodeEUCJP:
      return "EUC-JP";
    case kEncodeISO2022JP:
      return "ISO-2022-JP";
    case kEncodeUTF16LE:
      return "UTF-16LE (mark)";
    case kEncodeUTF16BE:
      return "UTF-16BE (mark)";
    case kEncodeUTF8:
      return "UTF-8";
    case kEncodeUTF8BOM:
      return "UTF-8 (mark)";
    case kEncodeUTF32LE:
      return "UTF-32LE (mark)";
    case kEncodeUTF32BE:
      return "UTF-32BE (mark)";
    case kEncodeUTF7:
      return "UTF-7";
    default:
      return "unknown";
  }
}

void DetectQx(benchmark::State& state) {
  const std::string& bytes =
      Sample(static_cast<int>(state.range(0)), static_cast<std::size_t>(state.range(1)));
  for (auto _ : state) benchmark::DoNotOptimize(QxDetect(bytes));
  SetBytes(state, bytes.size());
  state.SetLabel(QxName(QxDetect(bytes)));
}

void DetectUchardet(benchmark::State& state) {
  const std::string& bytes =
      Sample(static_cast<int>(state.range(0)), static_cast<std::size_t>(state.range(1)));
  uchardet_t ud = uchardet_new();
  for (auto _ : state) {
    uchardet_reset(ud);
    uchardet_handle_data(ud, bytes.data(), bytes.size());
    uchardet_data_end(ud);
    benchmark::DoNotOptimize(uchardet_get_charset(ud));
  }
  uchardet_delete(ud);
  SetBytes(state, bytes.size());
  state.SetLabel(UchardetDetect(bytes));
}

void DetectQuery(benchmark::State& state) {
  const std::u16string query = u"%93%FA%96%7B%8C%EA%82%CC%83e%83L%83X%83g hello";
  std::u16string charset;
  for (auto _ : state) {
    DetectQueryCharset(query, charset);
    benchmark::DoNotOptimize(charset.data());
  }
}

constexpr std::int64_t kSizes[] = {1024, 64 * 1024, 1024 * 1024};

void RegisterAll() {
  struct TJsonCase {
    const char* name;
    void (*fn)(benchmark::State&);
  };
  const TJsonCase parses[] = {{"parse/qx", ParseQx},
                              {"parse/rapidjson", ParseRapidJSON},
                              {"parse/nlohmann", ParseNlohmann},
                              {"parse/qx_from_utf8", ParseQxFromUtf8}};
  const TJsonCase writes[] = {{"write/qx_packed", WriteQx},
                              {"write/rapidjson", WriteRapidJSON},
                              {"write/nlohmann", WriteNlohmann},
                              {"write/qx_indented", WriteQxIndented}};
  // Side by side: all libraries on one document, then the next document.
  for (const auto* group : {parses, writes}) {
    for (int doc = 0; doc < 3; ++doc) {
      for (int k = 0; k < 4; ++k) {
        benchmark::RegisterBenchmark((std::string(group[k].name) + "/" + kDocumentNames[doc]).c_str(),
                                     group[k].fn)
            ->Arg(doc)
            ->Unit(benchmark::kMicrosecond);
      }
    }
  }
  for (int sample = 0; sample < kSampleCount; ++sample) {
    for (std::int64_t size : kSizes) {
      const std::string suffix =
          std::string("/") + kSampleNames[sample] + "/" + std::to_string(size / 1024) + "KB";
      benchmark::RegisterBenchmark(("detect/qx" + suffix).c_str(), DetectQx)->Args({sample, size});
      benchmark::RegisterBenchmark(("detect/uchardet" + suffix).c_str(), DetectUchardet)
          ->Args({sample, size});
    }
  }
  benchmark::RegisterBenchmark("detect/query_charset", DetectQuery);
}

void PrintVerdictTable() {
  std::printf("Charset verdicts (module detector | uchardet), expected in brackets:\n");
  std::printf("%-14s %-6s %-18s %-16s %s\n", "sample", "size", "expected", "qx", "uchardet");
  bool allRight = true;
  for (int sample = 0; sample < kSampleCount; ++sample) {
    for (std::int64_t size : kSizes) {
      const std::string& bytes = Sample(sample, static_cast<std::size_t>(size));
      const char* qx = QxName(QxDetect(bytes));
      const std::string expected = kExpected[sample];
      allRight = allRight && (expected.rfind(qx, 0) == 0);
      std::printf("%-14s %-6s %-18s %-16s %s\n", kSampleNames[sample],
                  (std::to_string(size / 1024) + "KB").c_str(), kExpected[sample], qx,
                  UchardetDetect(bytes).c_str());
    }
  }
  std::printf("Module detector right on every sample: %s\n\n", allRight ? "yes" : "NO");
  std::fflush(stdout);
}

}  // namespace
}  // namespace qx::bench

int main(int argc, char** argv) {
  qx::bench::PrintVerdictTable();
  qx::bench::RegisterAll();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
