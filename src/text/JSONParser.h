#pragma once

// JSON text to values: the parse context with its save points, one factory per value
// type, and the parser's entry points.

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/ComPtr.h"
#include "text/JSONFileText.h"
#include "text/JSONValue.h"

namespace qx {

// Raised for malformed text; the message reads "Error at line L column C: ...".
class EJsonParseError : public std::runtime_error {
 public:
  EJsonParseError(std::u16string message, std::int32_t line, std::int32_t column);
  const std::u16string& Message() const { return FMessage; }
  std::int32_t Line() const { return FLine; }
  std::int32_t Column() const { return FColumn; }

 private:
  std::u16string FMessage;
  std::int32_t FLine;
  std::int32_t FColumn;
};

// Raised by LoadJSONFromFile when the file cannot be read at all.
class EJsonFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct TJSONParseContextSavePoint {
  char16_t PrevChar;
  std::size_t Current;
  std::int32_t Line;
  std::int32_t Column;
};

class TJSONParseContext {
 public:
  // The text is not copied and must outlive the context.
  explicit TJSONParseContext(std::u16string_view data);
  TJSONParseContext(const TJSONParseContext&) = delete;
  TJSONParseContext& operator=(const TJSONParseContext&) = delete;

  bool GetJSONNull();
  bool GetJSONBool(bool& Value);
  // False with nothing consumed when no string starts here; false after a bad \u escape.
  bool GetJSONString(std::u16string& Value);
  bool GetDigitStr(std::u16string& Value);
  char16_t LookAhead() const { return FCurrent < FDataLen ? FData[FCurrent] : char16_t(0); }
  char16_t GetChar();
  void ConsumeWhiteSpaces();
  void SaveContext();
  [[noreturn]] void ParseError(std::u16string_view Message);
  void ResolveSavePoint(bool bSuccess);
  bool ParseJSONValue(TJSONValueType ValueType, ComPtr<IJSONValue>& value);
  bool ParseJSONValue(TJSONValueTypes ValueTypes, ComPtr<IJSONValue>& value);
  bool ParseJSONValue(ComPtr<IJSONValue>& value);

  std::int32_t Line() const { return FLine; }
  std::int32_t Column() const { return FColumn; }
  std::size_t Current() const { return FCurrent; }
  std::size_t DataLen() const { return FDataLen; }
  std::int32_t SavePointCount() const { return FSavePointCount; }
  std::int32_t SavePointsLen() const { return FSavePointsLen; }

  // Told of every object and array once it is complete, with the line and column of its
  // opening bracket, so that a reader of the tree can say where in the text an item stood.
  using TContainerObserver =
      std::function<void(IJSONValue* container, std::int32_t line, std::int32_t column)>;
  void SetContainerObserver(TContainerObserver observer) { FContainerObserver = std::move(observer); }

  // The object and array parsers; the factories call them. Nested containers are
  // parsed on an explicit stack, so depth is bounded by memory, not by the call stack.
  bool ParseContainer(ComPtr<IJSONValue>& value);
  bool ParseNumber(ComPtr<IJSONValue>& value);
  bool ParseStringValue(ComPtr<IJSONValue>& value);

 private:
  // The type the next non-blank character announces; false for none.
  bool PeekValueType(TJSONValueType& type) const;
  bool MatchKeyword(std::u16string_view word);
  // Consumes characters that do not end a line.
  void Take(std::size_t count);
  bool ScanString(std::u16string& value);
  bool ParseScalar(TJSONValueType type, ComPtr<IJSONValue>& value);

  std::int32_t FLine = 0;
  std::int32_t FColumn = 0;
  const char16_t* FData;
  std::size_t FDataLen;
  std::size_t FCurrent = 0;
  char16_t FPrevChar = 0;
  std::int32_t FSavePointsLen = 0;
  std::int32_t FSavePointCount = 0;
  std::vector<TJSONParseContextSavePoint> FSavePoints;
  std::u16string FStringBuffer;  // reused by every string of the text
  std::string FNumberText;
  TContainerObserver FContainerObserver;
};

class TJSONValueFactory {
 public:
  virtual ~TJSONValueFactory() = default;
  // Saves the context, parses, and rewinds when no value came.
  bool ParseJSONValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& value) const;

 protected:
  virtual bool ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& value) const = 0;
};

class TJSONBoolFactory final : public TJSONValueFactory {
 public:
  static ComPtr<IJSONBool> CreateValue(bool value = false);

 protected:
  bool ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& value) const override;
};

class TJSONNullFactory final : public TJSONValueFactory {
 public:
  static ComPtr<IJSONNull> CreateValue();

 protected:
  bool ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& value) const override;
};

class TJSONObjectFactory final : public TJSONValueFactory {
 public:
  static ComPtr<IJSONObject> CreateValue();

 protected:
  bool ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& value) const override;
};

class TJSONArrayFactory final : public TJSONValueFactory {
 public:
  static ComPtr<IJSONArray> CreateValue();

 protected:
  bool ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& value) const override;
};

class TJSONNumberFactory final : public TJSONValueFactory {
 public:
  static ComPtr<IJSONNumber> CreateValue(std::int64_t value);
  static ComPtr<IJSONNumber> CreateValue(long double value);

 protected:
  bool ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& value) const override;
};

class TJSONStringFactory final : public TJSONValueFactory {
 public:
  static ComPtr<IJSONString> CreateValue(std::u16string_view value = {});

 protected:
  bool ParseValue(TJSONParseContext& parseContext, ComPtr<IJSONValue>& value) const override;
};

// The factory of each value type.
const TJSONValueFactory& JSONValueFactory(TJSONValueType type);

class TJSONParser {
 public:
  static void ParseJSONText(TJSONParseContext& parseContext, ComPtr<IJSONValue>& value);
  // Raises EJsonParseError.
  static void ParseJSONText(std::u16string_view text, ComPtr<IJSONValue>& value);
  // Never raises a parse error: ErrorMsg is empty on success, else the error's message.
  static bool ParseJSONText(std::u16string_view text, std::u16string& ErrorMsg, ComPtr<IJSONValue>& value);
  // Decoding by byte order mark, else as the platform's ANSI text. Raises
  // EJsonFileError for an unreadable file and EJsonParseError for bad text.
  static void LoadJSONFromFile(const std::u16string& FileName, ComPtr<IJSONValue>& value);
  static void LoadJSONFromFile(const std::u16string& FileName, TJSONFileEncoding encoding,
                               ComPtr<IJSONValue>& value);
};

}  // namespace qx
