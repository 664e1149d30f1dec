#include "text/JSONTextBuilder.h"

namespace qx {
namespace {

constexpr std::size_t kInitialCapacity = 256;
constexpr char16_t kHexDigits[] = u"0123456789abcdef";

// The escape of one character, or an empty result when it is written plain.
struct TEscape {
  char16_t Text[6];
  std::size_t Length = 0;
};

TEscape EscapeOf(char16_t ch, const TJSONCreateTextOption& opt) {
  TEscape e;
  auto unicode = [&e](char16_t c) {
    e.Text[0] = u'\\';
    e.Text[1] = u'u';
    e.Text[2] = kHexDigits[(c >> 12) & 0xF];
    e.Text[3] = kHexDigits[(c >> 8) & 0xF];
    e.Text[4] = kHexDigits[(c >> 4) & 0xF];
    e.Text[5] = kHexDigits[c & 0xF];
    e.Length = 6;
  };
  auto shortEscape = [&e](char16_t c) {
    e.Text[0] = u'\\';
    e.Text[1] = c;
    e.Length = 2;
  };
  if (opt.FEscapeUnicodeChar && ch >= 127) {
    unicode(ch);
    return e;
  }
  switch (ch) {
    case u'\b':
      shortEscape(u'b');
      return e;
    case u'\t':
      shortEscape(u't');
      return e;
    case u'\n':
      shortEscape(u'n');
      return e;
    case u'\f':
      shortEscape(u'f');
      return e;
    case u'\r':
      shortEscape(u'r');
      return e;
    case u'"':
      shortEscape(u'"');
      return e;
    case u'\\':
      shortEscape(u'\\');
      return e;
    case u'/':
      if (opt.FEscapeSlash) shortEscape(u'/');
      return e;
    default:
      if (ch < 32) unicode(ch);
      return e;
  }
}

bool NeedsEscape(char16_t ch, const TJSONCreateTextOption& opt) {
  if (ch < 32 || ch == u'"' || ch == u'\\') return true;
  if (ch == u'/') return opt.FEscapeSlash;
  return ch >= 127 && opt.FEscapeUnicodeChar;
}

}  // namespace

TJSONTextBuilder::TJSONTextBuilder(const TJSONCreateTextOption& option, std::int32_t startIndent)
    : FOption(&option), FIndent(startIndent) {
  FCapacity = kInitialCapacity;
  FBuffer.reserve(FCapacity);
}

void TJSONTextBuilder::Append(const char16_t* text, std::size_t length) {
  if (FSize + length > FCapacity) {
    while (FSize + length > FCapacity) FCapacity *= 2;
    FBuffer.reserve(FCapacity);
  }
  FBuffer.append(text, length);
  FSize += length;
}

void TJSONTextBuilder::Append(char16_t ch) { Append(&ch, 1); }

void TJSONTextBuilder::BeforeWrite(bool NoAutoLineBreak) {
  if (!NoAutoLineBreak && FOption->FLineLengthThreshold >= 1 && FOption->FLineLengthThreshold < FLineLength)
    WriteLineBreak();
  if (FNewLine && FIndent > 0 && !FOption->FNoIndent) {
    for (std::int32_t i = 0; i < FIndent; ++i)
      Append(FOption->FIndentString.data(), FOption->FIndentString.size());
  }
}

void TJSONTextBuilder::Write(std::u16string_view text, bool NoAutoLineBreak) {
  BeforeWrite(NoAutoLineBreak);
  Append(text.data(), text.size());
  FLineLength += static_cast<std::int32_t>(text.size());
  FNewLine = false;
}

void TJSONTextBuilder::Write(char16_t ch, bool NoAutoLineBreak) {
  Write(std::u16string_view(&ch, 1), NoAutoLineBreak);
}

void TJSONTextBuilder::WriteEscaped(char16_t ch) {
  const TEscape e = EscapeOf(ch, *FOption);
  if (e.Length)
    Write(std::u16string_view(e.Text, e.Length));
  else
    Write(ch);
}

void TJSONTextBuilder::WriteJSONString(std::u16string_view text) {
  if (FOption->FLineLengthThreshold >= 1) {
    // A line break may fall anywhere, even inside the string: every character is a write.
    Write(u'"');
    for (char16_t ch : text) WriteEscaped(ch);
    Write(u'"');
    return;
  }
  // Without a threshold only the first write can add anything (the indent), so the
  // string goes in as runs.
  Write(u'"');
  std::size_t written = 0;
  std::size_t runStart = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t ch = text[i];
    if (!NeedsEscape(ch, *FOption)) continue;
    Append(text.data() + runStart, i - runStart);
    written += i - runStart;
    const TEscape e = EscapeOf(ch, *FOption);
    Append(e.Text, e.Length);
    written += e.Length;
    runStart = i + 1;
  }
  Append(text.data() + runStart, text.size() - runStart);
  written += text.size() - runStart;
  Append(u'"');
  FLineLength += static_cast<std::int32_t>(written + 1);
}

void TJSONTextBuilder::WriteLineBreak() {
  if (FNewLine || FOption->FNoLineBreak || FOption->FLineBreak.empty()) return;
  Append(FOption->FLineBreak.data(), FOption->FLineBreak.size());
  FNewLine = true;
  FLineLength = 0;
}

void TJSONTextBuilder::WriteNameSeparator() {
  Write(FOption->FSpaceAfterNameSeparator ? std::u16string_view(u": ") : std::u16string_view(u":"), true);
}

void TJSONTextBuilder::WriteValueSeparator() {
  Write(FOption->FSpaceAfterValueSeparator ? std::u16string_view(u", ") : std::u16string_view(u","), true);
}

std::u16string TJSONTextBuilder::GetText() const { return FBuffer.substr(0, FSize); }

}  // namespace qx
