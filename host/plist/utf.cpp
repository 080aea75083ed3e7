#include "host/plist/utf.hpp"

#include "host/plist/byte_scan.hpp"

namespace wispen::plist {

namespace {

std::uint8_t byte_at(const char* text) { return static_cast<std::uint8_t>(*text); }

bool is_continuation(const char* text) { return (byte_at(text) & 0xC0) == 0x80; }

char16_t unit_at(std::string_view bytes, std::size_t offset, ByteOrder order) {
  const auto first = static_cast<std::uint8_t>(bytes[offset]);
  const auto second = static_cast<std::uint8_t>(bytes[offset + 1]);
  return static_cast<char16_t>(order == ByteOrder::Big ? first << 8 | second : second << 8 | first);
}

bool is_high_surrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool is_low_surrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

/// False when something had to be replaced.
bool convert(std::string_view bytes, ByteOrder order, std::string& text) {
  bool exact = bytes.size() % 2 == 0;
  text.reserve(bytes.size() / 2);
  const std::size_t whole = bytes.size() & ~std::size_t{1};
  for (std::size_t offset = 0; offset < whole; offset += 2) {
    const char16_t unit = unit_at(bytes, offset, order);
    if (unit < 0x80) {
      text.push_back(static_cast<char>(unit));
    } else if (is_high_surrogate(unit) && offset + 2 < whole &&
               is_low_surrogate(unit_at(bytes, offset + 2, order))) {
      const char16_t low = unit_at(bytes, offset + 2, order);
      append_utf8(text, 0x10000U + ((unit & 0x3FFU) << 10 | (low & 0x3FFU)));
      offset += 2;
    } else if (is_high_surrogate(unit) || is_low_surrogate(unit)) {
      append_utf8(text, kReplacementCharacter);
      exact = false;
    } else {
      append_utf8(text, unit);
    }
  }
  return exact;
}

void append_unit(std::string& bytes, std::uint32_t unit, ByteOrder order) {
  const char high = static_cast<char>(unit >> 8 & 0xFF);
  const char low = static_cast<char>(unit & 0xFF);
  bytes.push_back(order == ByteOrder::Big ? high : low);
  bytes.push_back(order == ByteOrder::Big ? low : high);
}

}  // namespace

std::size_t utf8_sequence_length(const char* text) {
  const std::uint8_t first = byte_at(text);
  if (first < 0xC2) return 0;  // a continuation, or an overlong form of ASCII
  if (!is_continuation(text + 1)) return 0;
  if (first < 0xE0) return 2;
  const std::uint8_t second = byte_at(text + 1);
  if (first < 0xF0) {
    if (first == 0xE0 && second < 0xA0) return 0;   // overlong
    if (first == 0xED && second >= 0xA0) return 0;  // a surrogate
    return is_continuation(text + 2) ? 3 : 0;
  }
  if (first > 0xF4 || (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90)) return 0;
  return is_continuation(text + 2) && is_continuation(text + 3) ? 4 : 0;
}

std::size_t utf8_error_offset(std::string_view text) {
  std::size_t offset = 0;
  while (offset < text.size()) {
    if (byte_at(&text[offset]) < 0x80) {
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
    const std::size_t length = utf8_sequence_length(sequence);
    if (length == 0) break;
    offset += length;
  }
  return offset;
}

bool is_utf8(std::string_view text) { return is_ascii(text) || utf8_error_offset(text) == text.size(); }

char32_t next_character(std::string_view text, std::size_t& offset) {
  const std::uint8_t first = byte_at(&text[offset++]);
  if (first < 0x80) return first;
  const int more = first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
  char32_t character = first & (0x3FU >> more);
  for (int i = 0; i < more; ++i) character = character << 6 | (byte_at(&text[offset++]) & 0x3FU);
  return character;
}

void append_utf8(std::string& text, char32_t character) {
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

std::optional<std::string> utf8_from_utf16_strict(std::string_view bytes, ByteOrder order) {
  std::string text;
  if (!convert(bytes, order, text)) return std::nullopt;
  return text;
}

std::string utf8_from_utf16(std::string_view bytes, ByteOrder order) {
  std::string text;
  convert(bytes, order, text);
  return text;
}

void append_utf16(std::string& bytes, std::string_view text, ByteOrder order) {
  for (std::size_t offset = 0; offset < text.size();) {
    const char32_t character = next_character(text, offset);
    if (character < 0x10000) {
      append_unit(bytes, character, order);
    } else {
      append_unit(bytes, 0xD800U | (character - 0x10000) >> 10, order);
      append_unit(bytes, 0xDC00U | (character & 0x3FFU), order);
    }
  }
}

}  // namespace wispen::plist
