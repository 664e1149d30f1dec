#include "text/JSONParser.h"

#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <system_error>

#include "base/FilePath.h"
#include "base/Text.h"
#include "text/JSONNumberText.h"
#include "text/JSONValueImpl.h"

namespace qx {
namespace {

constexpr std::int32_t kFirstSavePoints = 16;
constexpr std::size_t kFirstStringBuffer = 16;
// Mantissas longer than this are cut before conversion: the digits beyond cannot change
// an 80-bit result, and a conversion of millions of digits would take far too long.
constexpr std::size_t kMaxMantissaDigits = 60;

bool IsWhiteSpace(char16_t c) { return c == u'\t' || c == u'\n' || c == u'\r' || c == u' '; }
bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
bool IsHexDigit(char16_t c) { return IsDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F'); }

void Increment(std::int32_t& v, std::size_t by = 1) {
  const auto room = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() - v);
  v = by > room ? std::numeric_limits<std::int32_t>::max() : v + static_cast<std::int32_t>(by);
}

std::string FormatLocation(std::int32_t line, std::int32_t column) {
  return "Error at line " + std::to_string(line) + " column " + std::to_string(column) + ": ";
}

// The same number with at most kMaxMantissaDigits significant digits.
std::string ShortenMantissa(const std::string& text) {
  std::size_t i = 0;
  std::string out;
  if (text[i] == '-') out += text[i++];
  std::string digits;
  long long pointShift = 0;  // digits before the point, counted from the first significant one
  bool inFraction = false;
  bool sticky = false;
  for (; i < text.size() && text[i] != 'e'; ++i) {
    if (text[i] == '.') {
      inFraction = true;
      continue;
    }
    if (digits.empty() && text[i] == '0') {
      if (inFraction) --pointShift;
      continue;
    }
    if (!inFraction) ++pointShift;
    if (digits.size() < kMaxMantissaDigits)
      digits += text[i];
    else if (text[i] != '0')
      sticky = true;
  }
  if (digits.empty()) return out + "0";
  if (sticky) digits += '1';
  long long exponent = 0;
  if (i < text.size()) {
    ++i;
    bool negative = false;
    if (text[i] == '-' || text[i] == '+') negative = text[i++] == '-';
    for (; i < text.size(); ++i) {
      if (exponent < 1000000000LL) exponent = exponent * 10 + (text[i] - '0');
    }
    if (negative) exponent = -exponent;
  }
  exponent += pointShift - static_cast<long long>(digits.size());
  return out + digits + "e" + std::to_string(exponent);
}

std::string ReadFileBytes(const std::u16string& name) {
  const std::filesystem::path path = FilePathOf(name);
  std::error_code ec;
  if (std::filesystem::is_directory(path, ec))
    throw EJsonFileError("Cannot read file \"" + ToUtf8(name) + "\".");
  std::ifstream in(path, std::ios::binary);
  if (!in) throw EJsonFileError("Cannot open file \"" + ToUtf8(name) + "\".");
  std::ostringstream bytes;
  bytes << in.rdbuf();
  if (in.bad()) throw EJsonFileError("Cannot read file \"" + ToUtf8(name) + "\".");
  return std::move(bytes).str();
}

}  // namespace

// --- EJsonParseError ---

EJsonParseError::EJsonParseError(std::u16string message, std::int32_t line, std::int32_t column)
    : std::runtime_error(FormatLocation(line, column) + ToUtf8(message)),
      FMessage(FromUtf8(FormatLocation(line, column)) + message),
      FLine(line),
      FColumn(column) {}

// --- TJSONParseContext: reading ---

TJSONParseContext::TJSONParseContext(std::u16string_view data) : FData(data.data()), FDataLen(data.size()) {
  FStringBuffer.reserve(kFirstStringBuffer);
}

char16_t TJSONParseContext::GetChar() {
  if (FCurrent >= FDataLen) return 0;
  const char16_t ch = FData[FCurrent++];
  if (FLine == 0) FLine = 1;
  // LF, CR and CR LF each end one line; the count moves with the character after.
  if (FPrevChar == u'\n' || (FPrevChar == u'\r' && ch != u'\n')) {
    Increment(FLine);
    FColumn = 0;
  }
  Increment(FColumn);
  FPrevChar = ch;
  return ch;
}

void TJSONParseContext::ConsumeWhiteSpaces() {
  while (FCurrent < FDataLen && IsWhiteSpace(FData[FCurrent])) GetChar();
}

bool TJSONParseContext::MatchKeyword(std::u16string_view word) {
  if (FDataLen - FCurrent < word.size() || std::u16string_view(FData + FCurrent, word.size()) != word)
    return false;
  // Matched in place: the previous character stays what it was.
  FCurrent += word.size();
  Increment(FColumn, word.size());
  return true;
}

bool TJSONParseContext::GetJSONNull() { return MatchKeyword(u"null"); }

bool TJSONParseContext::GetJSONBool(bool& Value) {
  if (MatchKeyword(u"true")) {
    Value = true;
    return true;
  }
  if (MatchKeyword(u"false")) {
    Value = false;
    return true;
  }
  return false;
}

bool TJSONParseContext::GetDigitStr(std::u16string& Value) {
  Value.clear();
  while (IsDigit(LookAhead())) Value += GetChar();
  return !Value.empty();
}

bool TJSONParseContext::GetJSONString(std::u16string& Value) {
  if (!ScanString(FStringBuffer)) return false;
  Value = FStringBuffer;
  return true;
}

bool TJSONParseContext::ScanString(std::u16string& result) {
  if (LookAhead() != u'"') return false;
  GetChar();
  result.clear();
  for (;;) {
    // A run of plain characters goes in at once. None of them ends a line, but the
    // character before the run may: an escaped LF or CR.
    std::size_t end = FCurrent;
    while (end < FDataLen) {
      const char16_t c = FData[end];
      if (c == u'"' || c == u'\\' || c <= 25) break;
      ++end;
    }
    result.append(FData + FCurrent, end - FCurrent);
    Take(end - FCurrent);
    char16_t c = GetChar();
    if (c == 0) ParseError(u"End quotation mark not found");
    if (c == u'"') return true;
    if (c != u'\\') {
      // 1 to 25 only: 26 to 31 are taken as they are by this scanner.
      static constexpr char16_t hex[] = u"0123456789ABCDEF";
      ParseError(std::u16string(u"Invalid charactor for JSON string: #") + hex[c >> 4] + hex[c & 0xF]);
    }
    c = GetChar();
    switch (c) {
      case u'b':
        result += u'\b';
        break;
      case u'f':
        result += u'\f';
        break;
      case u'n':
        result += u'\n';
        break;
      case u'r':
        result += u'\r';
        break;
      case u't':
        result += u'\t';
        break;
      case u'"':
      case u'/':
      case u'\\':
        result += c;
        break;
      case u'u': {
        std::u16string digits = u"$";
        for (int k = 0; k < 4; ++k) {
          const char16_t d = GetChar();
          if (!IsHexDigit(d)) return false;
          digits += d;
        }
        const std::optional<std::int64_t> code = TryStrToInt(digits);
        if (!code || *code < 0 || *code > 0xFFFF) ParseError(u"Cannot convert hexdit to JSONChar: " + digits);
        result += static_cast<char16_t>(*code);
        break;
      }
      default:
        // An unknown escape keeps its backslash and loses the letter.
        result += u'\\';
        break;
    }
  }
}

// --- save points and errors ---

void TJSONParseContext::SaveContext() {
  if (FSavePointCount == FSavePointsLen) {
    FSavePointsLen = FSavePointsLen == 0 ? kFirstSavePoints : FSavePointsLen * 2;
    FSavePoints.resize(static_cast<std::size_t>(FSavePointsLen));
  }
  FSavePoints[static_cast<std::size_t>(FSavePointCount++)] =
      TJSONParseContextSavePoint{FPrevChar, FCurrent, FLine, FColumn};
}

void TJSONParseContext::ResolveSavePoint(bool bSuccess) {
  if (FSavePointCount == 0) return;
  const TJSONParseContextSavePoint& p = FSavePoints[static_cast<std::size_t>(--FSavePointCount)];
  if (bSuccess) return;
  FPrevChar = p.PrevChar;
  FCurrent = p.Current;
  FLine = p.Line;
  FColumn = p.Column;
}

void TJSONParseContext::ParseError(std::u16string_view Message) {
  throw EJsonParseError(std::u16string(Message), FLine, FColumn);
}

// --- choosing a parser ---

bool TJSONParseContext::PeekValueType(TJSONValueType& type) const {
  std::size_t i = FCurrent;
  while (i < FDataLen && IsWhiteSpace(FData[i])) ++i;
  if (i >= FDataLen) return false;
  const char16_t c = FData[i];
  if (c == u'n')
    type = jvtNull;
  else if (c == u't' || c == u'f')
    type = jvtBool;
  else if (c == u'{')
    type = jvtObject;
  else if (c == u'[')
    type = jvtArray;
  else if (c == u'"')
    type = jvtString;
  else if (c == u'-' || IsDigit(c))
    type = jvtNumber;
  else
    return false;
  return true;
}

bool TJSONParseContext::ParseJSONValue(TJSONValueTypes ValueTypes, ComPtr<IJSONValue>& result) {
  result = nullptr;
  TJSONValueType type;
  if (!PeekValueType(type) || !ValueTypes.Contains(type)) return false;
  return JSONValueFactory(type).ParseJSONValue(*this, result);
}

bool TJSONParseContext::ParseJSONValue(TJSONValueType ValueType, ComPtr<IJSONValue>& result) {
  return ParseJSONValue(TJSONValueTypes{ValueType}, result);
}

bool TJSONParseContext::ParseJSONValue(ComPtr<IJSONValue>& result) {
  return ParseJSONValue(TJSONValueTypes::All(), result);
}

// --- scalars ---

bool TJSONParseContext::ParseStringValue(ComPtr<IJSONValue>& result) {
  ConsumeWhiteSpaces();
  if (!ScanString(FStringBuffer)) return false;
  result = MakeCom<TJSONStringImpl>(FStringBuffer);
  return true;
}

void TJSONParseContext::Take(std::size_t count) {
  if (count == 0) return;
  GetChar();  // the first one may start a new line
  if (count == 1) return;
  FCurrent += count - 1;
  Increment(FColumn, count - 1);
  FPrevChar = FData[FCurrent - 1];
}

bool TJSONParseContext::ParseNumber(ComPtr<IJSONValue>& result) {
  ConsumeWhiteSpaces();
  // The number is measured first and then taken in one step: none of its characters
  // ends a line. On an error everything up to the missing part is taken.
  const std::size_t start = FCurrent;
  auto at = [this](std::size_t k) { return k < FDataLen ? FData[k] : char16_t(0); };
  auto digitsFrom = [this](std::size_t k) {
    while (k < FDataLen && IsDigit(FData[k])) ++k;
    return k;
  };
  std::size_t i = start;
  const bool sign = at(i) == u'-';
  if (sign) ++i;
  if (at(i) == u'0') {
    ++i;  // a leading zero is the whole integer part
  } else {
    const std::size_t end = digitsFrom(i);
    if (end == i) {
      if (!sign) return false;
      Take(i - start);
      ParseError(u"Expecting number.");
    }
    i = end;
  }
  bool isFloat = false;
  if (at(i) == u'.') {
    const std::size_t end = digitsFrom(++i);
    if (end == i) {
      Take(i - start);
      ParseError(u"Expecting fraction.");
    }
    i = end;
    isFloat = true;
  }
  if (at(i) == u'e' || at(i) == u'E') {
    ++i;
    if (at(i) == u'+' || at(i) == u'-') ++i;
    const std::size_t end = digitsFrom(i);
    if (end == i) {
      Take(i - start);
      ParseError(u"Expecting exponent digit");
    }
    i = end;
    isFloat = true;
  }
  Take(i - start);
  std::string& text = FNumberText;
  text.resize(i - start);
  for (std::size_t k = start; k < i; ++k)
    text[k - start] = FData[k] == u'E' ? 'e' : static_cast<char>(FData[k]);
  if (isFloat) {
    long double value = 0;
    const bool ok = text.size() > kMaxMantissaDigits ? JSONTryStrToFloat(ShortenMantissa(text), value)
                                                     : JSONTryStrToFloat(text, value);
    if (!ok) ParseError(u"Cannot convert \"" + FromAscii(text) + u"\" to number.");
    result = MakeCom<TJSONNumberImpl>(value);
  } else {
    std::int64_t value = 0;
    if (!JSONTryStrToInt64(text, value))
      ParseError(u"Cannot convert \"" + FromAscii(text) + u"\" to number.");
    result = MakeCom<TJSONNumberImpl>(value);
  }
  return true;
}

// --- objects and arrays ---

namespace {

struct TContainerFrame {
  bool IsObject;
  bool First;
  std::size_t ValueStart;  // this container's items on the value stack start here
  std::size_t NameStart;
  std::int32_t Line;  // of the opening bracket
  std::int32_t Column;
};

}  // namespace

bool TJSONParseContext::ParseContainer(ComPtr<IJSONValue>& result) {
  ConsumeWhiteSpaces();
  if (LookAhead() != u'{' && LookAhead() != u'[') return false;
  // Items wait on two stacks shared by all levels until their container closes; then the
  // container is made with its final size in one go.
  std::vector<TContainerFrame> frames;
  std::vector<ComPtr<IJSONValue>> values;
  std::vector<std::u16string> names;
  auto open = [&]() {
    const bool isObject = GetChar() == u'{';
    const std::int32_t line = FLine, column = FColumn;
    ConsumeWhiteSpaces();
    frames.push_back(TContainerFrame{isObject, true, values.size(), names.size(), line, column});
  };
  open();
  for (;;) {
    TContainerFrame& f = frames.back();
    bool endLoop = false;
    if (!f.First) {
      if (LookAhead() != u',')
        endLoop = true;
      else {
        GetChar();
        ConsumeWhiteSpaces();
      }
    }
    if (!endLoop && f.IsObject) {
      if (!ScanString(FStringBuffer)) {
        if (!f.First) ParseError(u"Expecting field name(string).");
        endLoop = true;
      } else {
        names.emplace_back(FStringBuffer);
        ConsumeWhiteSpaces();
        if (GetChar() != u':') ParseError(u"Expecting name-separator(\":\").");
        ConsumeWhiteSpaces();
      }
    }
    if (!endLoop) {
      TJSONValueType type;
      const bool known = PeekValueType(type);
      if (known && (type == jvtObject || type == jvtArray)) {
        f.First = false;
        SaveContext();  // as the factory of a nested container would
        ConsumeWhiteSpaces();
        open();
        continue;
      }
      ComPtr<IJSONValue> value;
      if (known) JSONValueFactory(type).ParseJSONValue(*this, value);
      if (value) {
        ConsumeWhiteSpaces();
        values.push_back(std::move(value));
        f.First = false;
        continue;
      }
      if (f.IsObject) ParseError(u"Expecting value(false / null / true / object / array / number / string).");
      if (!f.First) ParseError(u"Expecting value(false/null/true/object/array/number/string).");
      endLoop = true;
    }
    const char16_t close = GetChar();
    if (f.IsObject && close != u'}') {
      ParseError(f.First ? u"Expecting field name(string) or end-object(\"}\")."
                         : u"Expecting value-sep(\",\") or end-object(\"}\").");
    }
    if (!f.IsObject && close != u']') {
      ParseError(f.First ? u"Expecting value(false/null/true/object/array/number/string) or end-array(\"]\")."
                         : u"Expecting value-sep(\",\") or end-array(\"]\").");
    }
    ConsumeWhiteSpaces();
    const std::size_t count = values.size() - f.ValueStart;
    ComPtr<IJSONValue> finished;
    if (f.IsObject) {
      auto* obj = new TJSONObjectImpl();
      finished = ComPtr<IJSONValue>(obj);
      obj->AdoptParsed(names.data() + f.NameStart, values.data() + f.ValueStart, count);
      names.resize(f.NameStart);
    } else {
      auto* arr = new TJSONArrayImpl();
      finished = ComPtr<IJSONValue>(arr);
      arr->AdoptParsed(values.data() + f.ValueStart, count);
    }
    values.resize(f.ValueStart);
    if (FContainerObserver) FContainerObserver(finished.get(), f.Line, f.Column);
    frames.pop_back();
    if (frames.empty()) {
      result = std::move(finished);
      return true;
    }
    ResolveSavePoint(true);
    ConsumeWhiteSpaces();
    values.push_back(std::move(finished));
  }
}

// --- factories ---

bool TJSONValueFactory::ParseJSONValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& result) const {
  result = nullptr;
  parseContext.SaveContext();
  const bool ok = ParseValue(parseContext, result) && result;
  parseContext.ResolveSavePoint(ok);
  if (!ok) result = nullptr;
  return ok;
}

ComPtr<IJSONBool> TJSONBoolFactory::CreateValue(bool result) { return MakeCom<TJSONBoolImpl>(result); }

bool TJSONBoolFactory::ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& result) const {
  parseContext.ConsumeWhiteSpaces();
  bool value = false;
  if (!parseContext.GetJSONBool(value)) return false;
  result = CreateValue(value);
  return true;
}

ComPtr<IJSONNull> TJSONNullFactory::CreateValue() { return MakeCom<TJSONNullImpl>(); }

bool TJSONNullFactory::ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& result) const {
  parseContext.ConsumeWhiteSpaces();
  if (!parseContext.GetJSONNull()) return false;
  result = CreateValue();
  return true;
}

ComPtr<IJSONObject> TJSONObjectFactory::CreateValue() { return MakeCom<TJSONObjectImpl>(); }

bool TJSONObjectFactory::ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& result) const {
  parseContext.ConsumeWhiteSpaces();
  return parseContext.LookAhead() == u'{' && parseContext.ParseContainer(result);
}

ComPtr<IJSONArray> TJSONArrayFactory::CreateValue() { return MakeCom<TJSONArrayImpl>(); }

bool TJSONArrayFactory::ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& result) const {
  parseContext.ConsumeWhiteSpaces();
  return parseContext.LookAhead() == u'[' && parseContext.ParseContainer(result);
}

ComPtr<IJSONNumber> TJSONNumberFactory::CreateValue(std::int64_t result) {
  return MakeCom<TJSONNumberImpl>(result);
}
ComPtr<IJSONNumber> TJSONNumberFactory::CreateValue(long double result) {
  return MakeCom<TJSONNumberImpl>(result);
}

bool TJSONNumberFactory::ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& result) const {
  return parseContext.ParseNumber(result);
}

ComPtr<IJSONString> TJSONStringFactory::CreateValue(std::u16string_view result) {
  return MakeCom<TJSONStringImpl>(std::u16string(result));
}

bool TJSONStringFactory::ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& result) const {
  return parseContext.ParseStringValue(result);
}

const TJSONValueFactory& JSONValueFactory(TJSONValueType type) {
  // Stateless, so one table serves every thread.
  static const TJSONBoolFactory boolFactory;
  static const TJSONNullFactory nullFactory;
  static const TJSONObjectFactory objectFactory;
  static const TJSONArrayFactory arrayFactory;
  static const TJSONNumberFactory numberFactory;
  static const TJSONStringFactory stringFactory;
  static const TJSONValueFactory* const table[] = {&boolFactory,  &nullFactory,   &objectFactory,
                                                   &arrayFactory, &numberFactory, &stringFactory};
  return *table[type];
}

// --- TJSONParser ---

void TJSONParser::ParseJSONText(TJSONParseContext& parseContext, ComPtr<IJSONValue>& result) {
  result = nullptr;
  ComPtr<IJSONValue> value;
  // Only an object or an array may be the root of a text.
  if (!parseContext.ParseJSONValue(TJSONValueTypes{jvtObject, jvtArray}, value)) {
    parseContext.ParseError(u"Parse Error. Cannot parse text.");
  }
  parseContext.ConsumeWhiteSpaces();
  if (parseContext.Current() < parseContext.DataLen()) {
    parseContext.ParseError(u"Parse Error. There is an unnecessary charactor after JSON text.");
  }
  result = std::move(value);
}

void TJSONParser::ParseJSONText(std::u16string_view text, ComPtr<IJSONValue>& result) {
  TJSONParseContext context(text);
  ParseJSONText(context, result);
}

bool TJSONParser::ParseJSONText(std::u16string_view text, std::u16string& ErrorMsg,
                                ComPtr<IJSONValue>& result) {
  ErrorMsg.clear();
  try {
    ParseJSONText(text, result);
    return true;
  } catch (const EJsonParseError& e) {
    ErrorMsg = e.Message();
    result = nullptr;
    return false;
  }
}

void TJSONParser::LoadJSONFromFile(const std::u16string& FileName, ComPtr<IJSONValue>& result) {
  result = nullptr;
  const std::u16string text = DecodeJSONFileText(ReadFileBytes(FileName));
  ParseJSONText(text, result);
}

void TJSONParser::LoadJSONFromFile(const std::u16string& FileName, TJSONFileEncoding encoding,
                                   ComPtr<IJSONValue>& result) {
  result = nullptr;
  const std::u16string text = DecodeJSONFileText(ReadFileBytes(FileName), encoding);
  ParseJSONText(text, result);
}

}  // namespace qx
