// Parse, write, parse again: the second tree equals the first, for packed, indented and
// escaped text.

#include <cstdlib>
#include <utility>
#include <vector>

#include "FuzzInput.h"
#include "text/JSONLibrary.h"

namespace {

using namespace qx;

// Compared on explicit stacks, since trees can be as deep as the input is long.
bool SameTree(IJSONValue* a, IJSONValue* b) {
  std::vector<std::pair<IJSONValue*, IJSONValue*>> work{{a, b}};
  while (!work.empty()) {
    auto [x, y] = work.back();
    work.pop_back();
    if (!x || !y) {
      if (x != y) return false;
      continue;
    }
    if (x->IsObject() != y->IsObject() || x->IsArray() != y->IsArray() || x->IsString() != y->IsString() ||
        x->IsNumber() != y->IsNumber() || x->IsBool() != y->IsBool() || x->IsNull() != y->IsNull()) {
      return false;
    }
    if (x->IsObject()) {
      const ComPtr<IJSONObject> ox = x->AsObject(), oy = y->AsObject();
      if (ox->GetCount() != oy->GetCount()) return false;
      for (std::int32_t i = 0; i < ox->GetCount(); ++i) {
        const std::u16string name = ox->GetName(i);
        if (name != oy->GetName(i)) return false;
        work.emplace_back(ox->GetValue(name).get(), oy->GetValue(name).get());
      }
    } else if (x->IsArray()) {
      const ComPtr<IJSONArray> ax = x->AsArray(), ay = y->AsArray();
      if (ax->GetCount() != ay->GetCount()) return false;
      for (std::int32_t i = 0; i < ax->GetCount(); ++i)
        work.emplace_back(ax->GetItem(i).get(), ay->GetItem(i).get());
    } else if (x->GetText() != y->GetText()) {
      return false;
    }
  }
  return true;
}

std::int32_t Depth(IJSONValue* v) {
  std::int32_t depth = 0;
  WalkJSONValues(v, [&depth](IJSONValue* x) { depth += (x->IsObject() || x->IsArray()) ? 1 : 0; });
  return depth;  // container count: an upper bound of the depth
}

void Check(IJSONValue* first, const std::u16string& text) {
  std::u16string message;
  ComPtr<IJSONValue> second;
  if (!TJSONParser::ParseJSONText(text, message, second)) std::abort();
  if (!SameTree(first, second.get())) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  std::u16string message;
  ComPtr<IJSONValue> first;
  if (!TJSONParser::ParseJSONText(text, message, first)) return 0;
  const std::u16string packed = first->ToPackedJSONText();
  Check(first.get(), packed);
  ComPtr<IJSONValue> again;
  TJSONParser::ParseJSONText(packed, again);
  if (again->ToPackedJSONText() != packed) std::abort();
  // Indented text grows with the square of the depth; keep it to modest trees.
  if (Depth(first.get()) <= 200) {
    Check(first.get(), first->ToJSONText());
    TJSONCreateTextOption option;
    option.SetEscapeUnicodeChar(true);
    option.SetEscapeSlash(false);
    option.SetPackOneFieldObject(true);
    option.SetArrayElementPack(true);
    option.SetIndentString(u"\t");
    Check(first.get(), first->ToJSONText(option));
    // A length threshold may break a line inside a string, so that text need not parse.
    option.SetLineLengthThreshold(7);
    option.SetTruncateTrailingWhiteSpaces(true);
    if (first->ToJSONText(option).empty()) std::abort();
  }
  first->SortObjectMembers();
  Check(first.get(), first->ToPackedJSONText());
  return 0;
}
