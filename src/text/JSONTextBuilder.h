#pragma once

// Option record and text builder of the JSON writer.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace qx {

struct TJSONCreateTextOption {
  bool FEscapeUnicodeChar = false;
  std::u16string FIndentString = u"    ";
  std::u16string FLineBreak = u"\r\n";
  bool FEscapeSlash = true;
  bool FNoIndent = false;
  bool FNoLineBreak = false;
  bool FPackedArray = false;
  bool FPackedObject = false;
  bool FSpaceAfterNameSeparator = true;
  bool FSpaceAfterValueSeparator = false;
  // A line longer than this breaks before the next write; below 1 never.
  std::int32_t FLineLengthThreshold = 0;
  bool FPackEmptyArray = false;
  bool FArrayElementPack = false;
  bool FTruncateTrailingWhiteSpaces = false;
  bool FPackOneFieldObject = false;

  bool EscapeUnicodeChar() const { return FEscapeUnicodeChar; }
  void SetEscapeUnicodeChar(bool v) { FEscapeUnicodeChar = v; }
  const std::u16string& IndentString() const { return FIndentString; }
  void SetIndentString(std::u16string v) { FIndentString = std::move(v); }
  const std::u16string& LineBreak() const { return FLineBreak; }
  void SetLineBreak(std::u16string v) { FLineBreak = std::move(v); }
  bool EscapeSlash() const { return FEscapeSlash; }
  void SetEscapeSlash(bool v) { FEscapeSlash = v; }
  bool NoIndent() const { return FNoIndent; }
  void SetNoIndent(bool v) { FNoIndent = v; }
  bool NoLineBreak() const { return FNoLineBreak; }
  void SetNoLineBreak(bool v) { FNoLineBreak = v; }
  bool PackedArray() const { return FPackedArray; }
  void SetPackedArray(bool v) { FPackedArray = v; }
  bool PackedObject() const { return FPackedObject; }
  void SetPackedObject(bool v) { FPackedObject = v; }
  bool SpaceAfterNameSeparator() const { return FSpaceAfterNameSeparator; }
  void SetSpaceAfterNameSeparator(bool v) { FSpaceAfterNameSeparator = v; }
  bool SpaceAfterValueSeparator() const { return FSpaceAfterValueSeparator; }
  void SetSpaceAfterValueSeparator(bool v) { FSpaceAfterValueSeparator = v; }
  std::int32_t LineLengthThreshold() const { return FLineLengthThreshold; }
  void SetLineLengthThreshold(std::int32_t v) { FLineLengthThreshold = v; }
  bool PackEmptyArray() const { return FPackEmptyArray; }
  void SetPackEmptyArray(bool v) { FPackEmptyArray = v; }
  bool ArrayElementPack() const { return FArrayElementPack; }
  void SetArrayElementPack(bool v) { FArrayElementPack = v; }
  bool TruncateTrailingWhiteSpaces() const { return FTruncateTrailingWhiteSpaces; }
  void SetTruncateTrailingWhiteSpaces(bool v) { FTruncateTrailingWhiteSpaces = v; }
  bool PackOneFieldObject() const { return FPackOneFieldObject; }
  void SetPackOneFieldObject(bool v) { FPackOneFieldObject = v; }
};

// Pending containers of the tree being written (see JSONValueImpl.h).
struct TJSONBuildQueue;

class TJSONTextBuilder {
 public:
  // The option record is not copied and must outlive the builder.
  TJSONTextBuilder(const TJSONCreateTextOption& option, std::int32_t startIndent);
  TJSONTextBuilder(const TJSONTextBuilder&) = delete;
  TJSONTextBuilder& operator=(const TJSONTextBuilder&) = delete;

  void Write(std::u16string_view text, bool NoAutoLineBreak = false);
  void Write(char16_t ch, bool NoAutoLineBreak = false);
  void WriteJSONString(std::u16string_view text);
  void WriteLineBreak();
  void WriteNameSeparator();
  void WriteValueSeparator();
  std::u16string GetText() const;
  void IncrIndent() { ++FIndent; }
  void DecrIndent() { --FIndent; }

  const TJSONCreateTextOption& Option() const { return *FOption; }
  // Set while a tree is being written: containers queue themselves there instead of
  // writing their children by recursion.
  TJSONBuildQueue* FBuildQueue = nullptr;

 private:
  void BeforeWrite(bool NoAutoLineBreak);
  void Append(const char16_t* text, std::size_t length);
  void Append(char16_t ch);
  void WriteEscaped(char16_t ch);

  const TJSONCreateTextOption* FOption;
  bool FNewLine = true;
  std::int32_t FLineLength = 0;
  std::u16string FBuffer;
  std::size_t FCapacity = 0;
  std::size_t FSize = 0;
  std::int32_t FIndent = 0;
};

}  // namespace qx
