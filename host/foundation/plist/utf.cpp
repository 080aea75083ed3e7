#include "host/foundation/plist/utf.hpp"

#include "host/foundation/plist/byte_scan.hpp"

namespace wispen::plist {

namespace {

std::uint8_t byteAt(const char* text) { return static_cast<std::uint8_t>(*text); }

bool isContinuation(const char* text) { return (byteAt(text) & 0xC0) == 0x80; }

char16_t unitAt(std::string_view bytes, std::size_t offset, ByteOrder order) {
  const auto first = static_cast<std::uint8_t>(bytes[offset]);
  const auto second = static_cast<std::uint8_t>(bytes[offset + 1]);
  return static_cast<char16_t>(order == ByteOrder::Big ? first << 8 | second : second << 8 | first);
}

bool isHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool isLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

/// False when something had to be replaced.
bool convert(std::string_view bytes, ByteOrder order, std::string& text) {
  bool exact = bytes.size() % 2 == 0;
  text.reserve(bytes.size() / 2);
  const std::size_t whole = bytes.size() & ~std::size_t{1};
  for (std::size_t offset = 0; offset < whole; offset += 2) {
    const char16_t unit = unitAt(bytes, offset, order);
    if (unit < 0x80) {
      text.push_back(static_cast<char>(unit));
    } else if (isHighSurrogate(unit) && offset + 2 < whole &&
               isLowSurrogate(unitAt(bytes, offset + 2, order))) {
      const char16_t low = unitAt(bytes, offset + 2, order);
      appendUtf8(text, 0x10000U + ((unit & 0x3FFU) << 10 | (low & 0x3FFU)));
      offset += 2;
    } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
      appendUtf8(text, kReplacementCharacter);
      exact = false;
    } else {
      appendUtf8(text, unit);
    }
  }
  return exact;
}

void appendUnit(std::string& bytes, std::uint32_t unit, ByteOrder order) {
  const char high = static_cast<char>(unit >> 8 & 0xFF);
  const char low = static_cast<char>(unit & 0xFF);
  bytes.push_back(order == ByteOrder::Big ? high : low);
  bytes.push_back(order == ByteOrder::Big ? low : high);
}

}  // namespace

std::size_t utf8SequenceLength(const char* text) {
  const std::uint8_t first = byteAt(text);
  if (first < 0xC2) return 0;  // a continuation, or an overlong form of ASCII
  if (!isContinuation(text + 1)) return 0;
  if (first < 0xE0) return 2;
  const std::uint8_t second = byteAt(text + 1);
  if (first < 0xF0) {
    if (first == 0xE0 && second < 0xA0) return 0;   // overlong
    if (first == 0xED && second >= 0xA0) return 0;  // a surrogate
    return isContinuation(text + 2) ? 3 : 0;
  }
  if (first > 0xF4 || (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90)) return 0;
  return isContinuation(text + 2) && isContinuation(text + 3) ? 4 : 0;
}

std::size_t utf8ErrorOffset(std::string_view text) {
  std::size_t offset = 0;
  while (offset < text.size()) {
    if (byteAt(&text[offset]) < 0x80) {
      ++offset;
      continue;
    }
    // The view may not end in a zero: the last bytes are looked at in a copy that does.
    char tail[5] = {};
    const std::size_t left = text.size() - offset;
    const char* sequence = &text[offset];
    if (left < 4) {
      text.copy(tail, left, offset);
      sequence = tail;
    }
    const std::size_t length = utf8SequenceLength(sequence);
    if (length == 0) break;
    offset += length;
  }
  return offset;
}

bool isUtf8(std::string_view text) { return isAscii(text) || utf8ErrorOffset(text) == text.size(); }

char32_t nextCharacter(std::string_view text, std::size_t& offset) {
  const std::uint8_t first = byteAt(&text[offset++]);
  if (first < 0x80) return first;
  const int more = first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
  char32_t character = first & (0x3FU >> more);
  for (int i = 0; i < more; ++i) character = character << 6 | (byteAt(&text[offset++]) & 0x3FU);
  return character;
}

void appendUtf8(std::string& text, char32_t character) {
  const auto push = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (character < 0x80) {
    push(character);
  } else if (character < 0x800) {
    push(0xC0 | character >> 6);
    push(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    push(0xE0 | character >> 12);
    push(0x80 | (character >> 6 & 0x3F));
    push(0x80 | (character & 0x3F));
  } else {
    push(0xF0 | character >> 18);
    push(0x80 | (character >> 12 & 0x3F));
    push(0x80 | (character >> 6 & 0x3F));
    push(0x80 | (character & 0x3F));
  }
}

std::optional<std::string> utf8FromUtf16Strict(std::string_view bytes, ByteOrder order) {
  std::string text;
  if (!convert(bytes, order, text)) return std::nullopt;
  return text;
}

std::string utf8FromUtf16(std::string_view bytes, ByteOrder order) {
  std::string text;
  convert(bytes, order, text);
  return text;
}

void appendUtf16(std::string& bytes, std::string_view text, ByteOrder order) {
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t character = nextCharacter(text, offset);
    if (character < 0x10000) {
      appendUnit(bytes, character, order);
    } else {
      appendUnit(bytes, 0xD800U | (character - 0x10000) >> 10, order);
      appendUnit(bytes, 0xDC00U | (character & 0x3FFU), order);
    }
  }
}

}  // namespace wispen::plist
